#include "wording.hpp"

#include <cstdio>

namespace mmspdu {

std::string at_offset(size_t offset) {
    char text[64];
    static_cast<void>(std::snprintf(text, sizeof text, "at offset %zu (0x%zX)", offset, offset));
    return text;
}

std::string octet_name(uint32_t octet) {
    char text[2 + 8 + 1];
    static_cast<void>(std::snprintf(text, sizeof text, "0x%02X", octet));
    return text;
}

std::string counted(uint64_t count, std::string_view unit) {
    return std::to_string(count) + " " + std::string(unit) + (count == 1 ? "" : "s");
}

void append_phrase(std::string &list, std::string_view phrase, std::string_view separator) {
    if (!list.empty() && !phrase.empty()) {
        list += separator;
    }
    list += phrase;
}

} // namespace mmspdu
