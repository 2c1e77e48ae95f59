// Encoding of a message, with the reason where it is not possible.
#pragma once

#include "mmslib.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>

namespace mmspdu {

struct FreeOctets {
    void operator()(uint8_t *octets) const { std::free(octets); }
};

struct EncodedPdu {
    std::unique_ptr<uint8_t, FreeOctets> block;
    uint32_t length;
    std::string fault; // why there is no PDU, printable anywhere; empty when there is one

    [[nodiscard]] std::span<const uint8_t> octets() const { return {block.get(), length}; }
};

// With `validate`, a message without the mandatory headers of its type is not encoded.
EncodedPdu encode_message(const MMSLib_Message &message, bool validate);

// The mandatory headers of its type that the message lacks, listed; empty when it has all.
std::string missing_headers(const MMSLib_Message &message);

} // namespace mmspdu
