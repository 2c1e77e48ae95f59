#include "text_output.hpp"

#include "charset.hpp"

#include <cstring>
#include <langinfo.h>
#include <locale.h>

namespace mmspdu {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Characters above ASCII that show nothing, change what stands next to them, or are not characters.
// The variation selectors U+FE00 to U+FE0F are not here: they belong to emoji.
constexpr Range escaped_ranges[] = {
    {0x80, 0x9F},     {0xAD, 0xAD},       {0x34F, 0x34F},     {0x61C, 0x61C},     {0x115F, 0x1160},
    {0x17B4, 0x17B5}, {0x180B, 0x180F},   {0x200B, 0x200F},   {0x2028, 0x202E},   {0x2060, 0x206F},
    {0x3164, 0x3164}, {0xD800, 0xDFFF},   {0xFDD0, 0xFDEF},   {0xFEFF, 0xFEFF},   {0xFFA0, 0xFFA0},
    {0xFFF0, 0xFFFB}, {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0xE0FFF},
};

bool is_escaped(char32_t code) {
    if ((code & 0xFFFEU) == 0xFFFE) {
        return true;
    }
    for (const Range &range : escaped_ranges) {
        if (code >= range.first && code <= range.last) {
            return true;
        }
    }
    return false;
}

constexpr char digits[] = "0123456789ABCDEF";

void append_utf8(std::string &out, char32_t code) {
    if (code < 0x800) {
        out += static_cast<char>(0xC0U | code >> 6U);
    } else {
        if (code < 0x10000) {
            out += static_cast<char>(0xE0U | code >> 12U);
        } else {
            out += static_cast<char>(0xF0U | code >> 18U);
            out += static_cast<char>(0x80U | (code >> 12U & 0x3FU));
        }
        out += static_cast<char>(0x80U | (code >> 6U & 0x3FU));
    }
    out += static_cast<char>(0x80U | (code & 0x3FU));
}

void append_code_escape(std::string &out, char32_t code) {
    uint32_t shift = 20;
    while (shift != 0 && code >> shift == 0) {
        shift -= 4;
    }
    out += "\\u{";
    for (;; shift -= 4) {
        out += digits[code >> shift & 0xFU];
        if (shift == 0) {
            break;
        }
    }
    out += '}';
}

void append_ascii(std::string &out, char32_t code) {
    constexpr std::string_view named = "\n\t\r\\";
    constexpr std::string_view names = "ntr\\";
    const char character = static_cast<char>(code);
    const size_t found = named.find(character);
    if (found != std::string_view::npos) {
        out += '\\';
        out += names[found];
    } else if (code >= 0x20 && code < 0x7F) {
        out += character;
    } else {
        append_code_escape(out, code);
    }
}

// Appends the printable form to a string.
class PrintableSink final : public CharacterSink {
public:
    PrintableSink(std::string &out, bool utf8) : out_(out), utf8_(utf8) {}

    void character(char32_t code) override {
        if (code < 0x80) {
            append_ascii(out_, code);
        } else if (utf8_ && !is_escaped(code)) {
            append_utf8(out_, code);
        } else {
            append_code_escape(out_, code);
        }
    }

    void invalid(uint8_t octet) override {
        out_ += "\\x";
        out_ += digits[octet >> 4U];
        out_ += digits[octet & 0xFU];
    }

private:
    std::string &out_;
    bool utf8_;
};

// Splits a text into lines, keeping the first ones.
class LineSink final : public CharacterSink {
public:
    LineSink(TextLines &lines, uint64_t limit, bool utf8)
        : lines_(lines), limit_(limit), printable_(line_, utf8) {}

    void character(char32_t code) override {
        if (code == '\n') {
            // A CR in front of it is part of the line's end.
            carriage_return_ = false;
            end_line();
            return;
        }
        flush();
        open_ = true;
        carriage_return_ = code == '\r';
        if (!carriage_return_ && wanted()) {
            printable_.character(code);
        }
    }

    void invalid(uint8_t octet) override {
        flush();
        open_ = true;
        if (wanted()) {
            printable_.invalid(octet);
        }
    }

    void finish() {
        flush();
        if (open_) {
            end_line();
        }
    }

private:
    [[nodiscard]] bool wanted() const { return lines_.count < limit_; }

    void flush() {
        if (carriage_return_ && wanted()) {
            printable_.character('\r');
        }
        carriage_return_ = false;
    }

    void end_line() {
        if (wanted()) {
            lines_.first.push_back(line_);
        }
        line_.clear();
        open_ = false;
        ++lines_.count;
    }

    TextLines &lines_;
    uint64_t limit_;
    std::string line_;
    PrintableSink printable_;
    bool open_ = false;
    bool carriage_return_ = false;
};

} // namespace

TextPrinter TextPrinter::for_environment() {
    // The process itself stays in the C locale, in which names are compared as ASCII.
    locale_t environment = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (environment == nullptr) {
        return TextPrinter(false);
    }
    const bool utf8 = std::strcmp(nl_langinfo_l(CODESET, environment), "UTF-8") == 0;
    freelocale(environment);
    return TextPrinter(utf8);
}

std::string TextPrinter::text(std::string_view octets, std::string_view charset) const {
    std::string out;
    PrintableSink sink(out, utf8_);
    decode_text(octets, charset, sink);
    return out;
}

TextLines TextPrinter::lines(std::string_view octets, std::string_view charset,
                             uint64_t limit) const {
    TextLines lines;
    LineSink sink(lines, limit, utf8_);
    decode_text(octets, charset, sink);
    sink.finish();
    return lines;
}

} // namespace mmspdu
