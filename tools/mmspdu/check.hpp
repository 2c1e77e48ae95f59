// What there is to say about a PDU: whether it is understood and complete, and what encoding its
// message gives.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace mmspdu {

struct CheckReport {
    std::string title;   // the message type
    std::string text;    // lines, each indented; printable anywhere
    std::string trouble; // what is wrong with the PDU, in one line; empty for nothing
};

CheckReport check_pdu(std::span<const uint8_t> octets);

} // namespace mmspdu
