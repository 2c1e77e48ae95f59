// Texts of the wire, printed so that they cannot drive a terminal and say exactly what was there.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mmspdu {

// The beginning of a text as lines.
struct TextLines {
    std::vector<std::string> first;
    uint64_t count = 0; // of the whole text
};

// Makes texts printable. Control characters, invisible format characters, surrogates and
// noncharacters become escapes such as \n and \u{202E}, octets that are invalid in the text's
// character set \xFF, and a backslash \\. Where the output is not UTF-8, all characters outside
// of ASCII are escaped too.
class TextPrinter {
public:
    explicit TextPrinter(bool utf8) : utf8_(utf8) {}

    // For the character set of the environment's locale.
    static TextPrinter for_environment();

    [[nodiscard]] std::string text(std::string_view octets, std::string_view charset = {}) const;
    // At most `limit` lines; LF and CR LF end one.
    [[nodiscard]] TextLines lines(std::string_view octets, std::string_view charset,
                                  uint64_t limit) const;

private:
    bool utf8_;
};

} // namespace mmspdu
