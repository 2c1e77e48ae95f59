// Messages as a person reads them.
#pragma once

#include "diagnose.hpp"
#include "text_output.hpp"

#include <cstdint>
#include <ostream>

namespace mmspdu {

struct ShowStyle {
    uint32_t lines = 8;  // of each text
    uint32_t indent = 4; // columns
};

// Prints headers, parts and the first lines of each text of a message. With `present`, the headers
// of its PDU, the others are marked as defaults.
void show_message(std::ostream &out, const TextPrinter &printer, const MMSLib_Message &message,
                  const HeaderCodes *present, const ShowStyle &style);

} // namespace mmspdu
