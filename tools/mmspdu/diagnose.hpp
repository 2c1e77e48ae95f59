// Decoding of a PDU, with the place and the reason where it is not understood.
#pragma once

#include "mmslib.h"

#include <bitset>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace mmspdu {

struct DestroyMessage {
    void operator()(MMSLib_Message *message) const { MMSLib_Message_Destroy(message); }
};
using OwnedMessage = std::unique_ptr<MMSLib_Message, DestroyMessage>;

// MMS headers by their codes.
using HeaderCodes = std::bitset<128>;

struct DecodedPdu {
    OwnedMessage message; // what was understood; null when that is nothing
    std::string fault;    // what was not, printable anywhere; empty when all was understood
    HeaderCodes present;  // the headers that the PDU has; the others of the message are defaults
};

// The octets have to outlive the message.
DecodedPdu decode_pdu(std::span<const uint8_t> octets);

} // namespace mmspdu
