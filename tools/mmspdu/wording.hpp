// Turns of phrase that several messages use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace mmspdu {

// "at offset 10 (0xA)"
std::string at_offset(size_t offset);
// "0x0A"
std::string octet_name(uint32_t octet);
// "1 octet", "2 octets"
std::string counted(uint64_t count, std::string_view unit);
// Appends to a list of phrases.
void append_phrase(std::string &list, std::string_view phrase, std::string_view separator = "; ");

} // namespace mmspdu
