// Messages as a person reads them.
#pragma once

#include "diagnose.hpp"
#include "text_output.hpp"

#include <cstdint>
#include <ostream>

namespace mmspdu {

// Prints headers, parts and the first `lines` lines of each text of a PDU with a message.
void show_message(std::ostream &out, const TextPrinter &printer, const DecodedPdu &pdu,
                  uint32_t lines);

} // namespace mmspdu
