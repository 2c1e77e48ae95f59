#include "charset.hpp"

#include "mmslib.h"

#include <array>
#include <charconv>
#include <iconv.h>
#include <string>

namespace mmspdu {
namespace {

uint8_t octet_at(std::string_view octets, size_t index) {
    return static_cast<uint8_t>(octets[index]);
}

void pass_invalid(std::string_view octets, CharacterSink &sink) {
    for (const char octet : octets) {
        sink.invalid(static_cast<uint8_t>(octet));
    }
}

void decode_ascii(std::string_view octets, CharacterSink &sink) {
    for (size_t i = 0; i < octets.size(); ++i) {
        const uint8_t octet = octet_at(octets, i);
        if (octet < 0x80) {
            sink.character(octet);
        } else {
            sink.invalid(octet);
        }
    }
}

// --- UTF-8 -----------------------------------------------------------------------------------

// The forms of a character above 0x7F. The limits of the second octet keep out overlong forms,
// surrogates and what lies above U+10FFFF.
struct Utf8Form {
    uint8_t first_low;
    uint8_t first_high;
    uint8_t second_low;
    uint8_t second_high;
    uint8_t octets;
    uint8_t first_mask;
};

constexpr Utf8Form utf8_forms[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 2, 0x1F}, {0xE0, 0xE0, 0xA0, 0xBF, 3, 0x0F},
    {0xE1, 0xEC, 0x80, 0xBF, 3, 0x0F}, {0xED, 0xED, 0x80, 0x9F, 3, 0x0F},
    {0xEE, 0xEF, 0x80, 0xBF, 3, 0x0F}, {0xF0, 0xF0, 0x90, 0xBF, 4, 0x07},
    {0xF1, 0xF3, 0x80, 0xBF, 4, 0x07}, {0xF4, 0xF4, 0x80, 0x8F, 4, 0x07},
};

const Utf8Form *utf8_form(uint8_t first) {
    for (const Utf8Form &form : utf8_forms) {
        if (first >= form.first_low && first <= form.first_high) {
            return &form;
        }
    }
    return nullptr;
}

// The octets of the character above 0x7F at the start, with the character; 0 when there is none.
size_t read_utf8(std::string_view octets, char32_t &code) {
    const Utf8Form *form = utf8_form(octet_at(octets, 0));
    if (form == nullptr || octets.size() < form->octets) {
        return 0;
    }
    const uint8_t second = octet_at(octets, 1);
    if (second < form->second_low || second > form->second_high) {
        return 0;
    }
    code = octet_at(octets, 0) & form->first_mask;
    for (size_t i = 1; i < form->octets; ++i) {
        const uint8_t octet = octet_at(octets, i);
        if ((octet & 0xC0U) != 0x80) {
            return 0;
        }
        code = code << 6U | (octet & 0x3FU);
    }
    return form->octets;
}

void decode_utf8(std::string_view octets, CharacterSink &sink) {
    while (!octets.empty()) {
        const uint8_t first = octet_at(octets, 0);
        char32_t code = first;
        const size_t length = first < 0x80 ? 1 : read_utf8(octets, code);
        if (length != 0) {
            sink.character(code);
        } else {
            sink.invalid(first);
        }
        octets.remove_prefix(length != 0 ? length : 1);
    }
}

// --- UTF-16 and UCS-2 ------------------------------------------------------------------------

// Joins 16-bit units to characters; a surrogate without its partner stays what it is.
class UnitJoiner {
public:
    explicit UnitJoiner(CharacterSink &sink) : sink_(sink) {}

    void unit(char32_t unit) {
        const bool low = unit >= 0xDC00 && unit <= 0xDFFF;
        if (low && high_ != 0) {
            sink_.character(0x10000 + ((high_ - 0xD800) << 10U) + (unit - 0xDC00));
            high_ = 0;
            return;
        }
        flush();
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            high_ = unit;
        } else {
            sink_.character(unit);
        }
    }

    void flush() {
        if (high_ != 0) {
            sink_.character(high_);
            high_ = 0;
        }
    }

private:
    CharacterSink &sink_;
    char32_t high_ = 0;
};

void decode_units(std::string_view octets, bool little_endian, CharacterSink &sink) {
    UnitJoiner joiner(sink);
    const size_t low = little_endian ? 0 : 1;
    for (; octets.size() >= 2; octets.remove_prefix(2)) {
        joiner.unit(static_cast<char32_t>(octet_at(octets, 1 - low) << 8 | octet_at(octets, low)));
    }
    joiner.flush();
    pass_invalid(octets, sink);
}

void decode_utf16be(std::string_view octets, CharacterSink &sink) {
    decode_units(octets, false, sink);
}

void decode_utf16le(std::string_view octets, CharacterSink &sink) {
    decode_units(octets, true, sink);
}

// Big-endian, unless a byte-order mark says otherwise.
void decode_utf16(std::string_view octets, CharacterSink &sink) {
    const bool little_endian = octets.starts_with("\xFF\xFE");
    if (little_endian || octets.starts_with("\xFE\xFF")) {
        octets.remove_prefix(2);
    }
    decode_units(octets, little_endian, sink);
}

// --- UTF-7 -----------------------------------------------------------------------------------

constexpr uint32_t no_digit = 64;

uint32_t base64_digit(char character) {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const size_t digit = alphabet.find(character);
    return digit == std::string_view::npos ? no_digit : static_cast<uint32_t>(digit);
}

// The characters of the digits at the start of a shifted run; returns how many octets they are.
// Digits that make no whole unit and are more than padding are passed on as invalid.
size_t decode_shifted(std::string_view octets, CharacterSink &sink) {
    UnitJoiner joiner(sink);
    uint32_t bits = 0;
    uint32_t bit_count = 0;
    size_t end = 0;
    size_t unit_start = 0;
    for (; end < octets.size() && base64_digit(octets[end]) != no_digit; ++end) {
        bits = bits << 6U | base64_digit(octets[end]);
        bit_count += 6;
        if (bit_count >= 16) {
            bit_count -= 16;
            joiner.unit(bits >> bit_count & 0xFFFFU);
            bits &= (1U << bit_count) - 1;
            unit_start = end + 1;
        }
    }
    joiner.flush();
    if (bit_count >= 6 || bits != 0) {
        pass_invalid(octets.substr(unit_start, end - unit_start), sink);
    }
    return end;
}

void decode_utf7(std::string_view octets, CharacterSink &sink) {
    while (!octets.empty()) {
        const size_t plain = octets.find('+');
        decode_ascii(octets.substr(0, plain), sink);
        if (plain == std::string_view::npos) {
            return;
        }
        octets.remove_prefix(plain + 1);
        const size_t digits = decode_shifted(octets, sink);
        octets.remove_prefix(digits);
        const bool closed = octets.starts_with('-');
        if (digits == 0 && closed) {
            sink.character('+');
        } else if (digits == 0) {
            sink.invalid('+');
        }
        octets.remove_prefix(closed ? 1 : 0);
    }
}

// --- ISO-8859 --------------------------------------------------------------------------------

constexpr char32_t unassigned = 0xFFFFFFFF;

// One character for each octet, from the system's converter.
class OctetTable {
public:
    // Null when the system does not know the character set.
    static const OctetTable *find(const std::string &charset) {
        static OctetTable table;
        if (table.charset_ != charset && !table.fill(charset)) {
            return nullptr;
        }
        return &table;
    }

    void decode(std::string_view octets, CharacterSink &sink) const {
        for (size_t i = 0; i < octets.size(); ++i) {
            const uint8_t octet = octet_at(octets, i);
            if (characters_[octet] == unassigned) {
                sink.invalid(octet);
            } else {
                sink.character(characters_[octet]);
            }
        }
    }

private:
    bool fill(const std::string &charset) {
        iconv_t converter = iconv_open("WCHAR_T", charset.c_str());
        // NOLINTNEXTLINE(performance-no-int-to-ptr): how iconv_open tells a failure
        if (converter == reinterpret_cast<iconv_t>(-1)) {
            return false;
        }
        for (size_t octet = 0; octet < characters_.size(); ++octet) {
            characters_[octet] = convert(converter, static_cast<char>(octet));
        }
        iconv_close(converter);
        charset_ = charset;
        return true;
    }

    static char32_t convert(iconv_t converter, char octet) {
        wchar_t wide = 0;
        char *in = &octet;
        size_t in_left = 1;
        char *out = reinterpret_cast<char *>(&wide);
        size_t out_left = sizeof wide;
        const size_t result = iconv(converter, &in, &in_left, &out, &out_left);
        return result == 0 && out_left == 0 ? static_cast<char32_t>(wide) : unassigned;
    }

    std::string charset_;
    std::array<char32_t, 256> characters_{};
};

bool same_name(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           StrnCaseCmp(a.data(), b.data(), static_cast<uint32_t>(a.size())) == 0;
}

// Only names of this form reach the system's converter: a PDU may name any character set.
bool decode_iso_8859(std::string_view octets, std::string_view charset, CharacterSink &sink) {
    constexpr std::string_view prefix = "ISO-8859-";
    if (!same_name(charset.substr(0, prefix.size()), prefix)) {
        return false;
    }
    charset.remove_prefix(prefix.size());
    unsigned number = 0;
    const auto [end, error] =
        std::from_chars(charset.data(), charset.data() + charset.size(), number);
    if (error != std::errc() || end != charset.data() + charset.size() || number > 16) {
        return false;
    }
    const OctetTable *table = OctetTable::find(std::string(prefix) + std::to_string(number));
    if (table == nullptr) {
        return false;
    }
    table->decode(octets, sink);
    return true;
}

struct Decoder {
    std::string_view charset;
    void (*decode)(std::string_view octets, CharacterSink &sink);
};

constexpr Decoder decoders[] = {
    {"US-ASCII", decode_ascii},        {"UTF-8", decode_utf8},       {"UTF-7", decode_utf7},
    {"UTF-16", decode_utf16},          {"UTF-16BE", decode_utf16be}, {"UTF-16LE", decode_utf16le},
    {"ISO-10646-UCS-2", decode_utf16},
};

} // namespace

void decode_text(std::string_view octets, std::string_view charset, CharacterSink &sink) {
    for (const Decoder &decoder : decoders) {
        if (same_name(decoder.charset, charset)) {
            decoder.decode(octets, sink);
            return;
        }
    }
    if (!decode_iso_8859(octets, charset, sink)) {
        decode_utf8(octets, sink);
    }
}

} // namespace mmspdu
