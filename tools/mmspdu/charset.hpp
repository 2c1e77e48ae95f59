// Texts of the wire as Unicode characters.
#pragma once

#include <cstdint>
#include <string_view>

namespace mmspdu {

// Receives a text piece by piece.
class CharacterSink {
public:
    CharacterSink() = default;
    CharacterSink(const CharacterSink &) = delete;
    CharacterSink &operator=(const CharacterSink &) = delete;
    virtual ~CharacterSink() = default;

    // A code point, which may be a lone surrogate.
    virtual void character(char32_t code) = 0;
    // An octet that is not valid where it stands.
    virtual void invalid(uint8_t octet) = 0;
};

// Decodes a text in the character set of that name, in any letter case. Texts of other character
// sets than the decoder knows, and of none (an empty name), are taken for UTF-8.
void decode_text(std::string_view octets, std::string_view charset, CharacterSink &sink);

} // namespace mmspdu
