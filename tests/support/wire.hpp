// Octets in a notation close to the wire.
#pragma once

#include "support/support.hpp"

namespace test {

inline unsigned hex_digit(char c) {
    return static_cast<unsigned>(c <= '9' ? c - '0' : c - 'A' + 10);
}

// Hexadecimal digits are octets, 'text' is the characters with a terminating zero, |text| the
// characters alone; spaces are ignored.
inline Octets wire(std::string_view notation) {
    Octets result;
    for (size_t i = 0; i < notation.size();) {
        const char c = notation[i];
        if (c == ' ') {
            ++i;
        } else if (c == '\'' || c == '|') {
            const size_t end = notation.find(c, i + 1);
            const std::string_view characters = notation.substr(i + 1, end - i - 1);
            result = result + (c == '\'' ? text(characters) : raw(characters));
            i = end + 1;
        } else {
            result.push_back(
                static_cast<uint8_t>(hex_digit(c) << 4 | hex_digit(notation.at(i + 1))));
            i += 2;
        }
    }
    return result;
}

inline Octets operator""_wire(const char *notation, size_t size) { return wire({notation, size}); }

inline Octets repeated(size_t count, const Octets &piece) {
    Octets all;
    for (size_t i = 0; i < count; ++i) {
        all.insert(all.end(), piece.begin(), piece.end());
    }
    return all;
}

} // namespace test
