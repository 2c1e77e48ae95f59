// What encoding makes of a PDU. All texts are printable anywhere.
#pragma once

#include "diagnose.hpp"

#include <cstdint>
#include <span>
#include <string>

namespace mmspdu {

// A PDU and what decoding it gave.
struct PduView {
    std::span<const uint8_t> octets;
    const DecodedPdu &decoded;
};

// The first difference between a PDU and the one that encoding its message gave; empty when they
// are equal.
std::string first_difference(const PduView &pdu, const PduView &encoded);

// Why the two differ there; empty when that cannot be told.
std::string difference_reason(const PduView &pdu, const PduView &encoded);

// What becomes of the message: "stays the same", or how it changes.
std::string message_change(const PduView &pdu, const PduView &encoded);

} // namespace mmspdu
