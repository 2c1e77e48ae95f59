#include "codec/checks.hpp"
#include "support/wire.hpp"

namespace {

using namespace test;

constexpr const char *utf_8 = MMS_CHARSET_UTF_8;

Answer decode_encoded_string(const uint8_t *input, uint32_t length) {
    const char *charset = "stale";
    char stale = 0;
    char *result = &stale;
    uint32_t count = 77;
    const uint32_t status = DecodeEncodedStringValue(input, length, &charset, &result, &count);
    const TextPtr owned(result);
    EXPECT_EQ(owned != nullptr, status == MMS_STATUS_OK);
    return {status, count, owned != nullptr ? owned.get() + in_braces(charset) : ""};
}

TEST(EncodedString, Decode) {
    check_decoder(decode_encoded_string,
                  {ok("Hi", text("Hi")), ok("H{US-ASCII}", {3, 0x83, 'H', 0}),
                   ok("Hi{ISO-10646-UCS-2}", {6, 2, 3, 0xE8, 'H', 'i', 0}),
                   ok("Hi{UNKNOWN}", {4, 0x8F, 'H', 'i', 0}),
                   // 0x1006A: the low 16 bits of a number count.
                   ok("H{UTF-8}", {6, 3, 1, 0, 0x6A, 'H', 0}),
                   ok("\xE9{UTF-8}", {0x1F, 4, 0xEA, 0x7F, 0xE9, 0}),
                   bad(2, {5, 0xEA, 'H', 'i', 0}), bad(2, {3, 0xEA, 'H', 'i', 0}),
                   bad(2, {5, 0xEA, 'H', 'i', 0, 0}), bad(6, {3, 'H', 'i', 0}), // no character set
                   bad(6, {2, 0xEA, 0x80}),                                     // no text
                   bad(7, {6, 5, 0, 0, 0, 0, 0}), // a character set of five octets
                   bad(6, "1F9080808000"_wire), bad(6, {0xEA, 'H', 0}), bad(2, {'H', 'i'})});
}

EncodeCall encoded_string(const char *charset, const char *value) {
    return [=](uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only) {
        return EncodeEncodedStringValue(output, room, charset, value, count, size_only);
    };
}

TEST(EncodedString, Encode) {
    const std::string long_text(40, 'x');
    check_encoder(
        {writes(text("Hi"), encoded_string(nullptr, "Hi")),
         writes(text("Hi"), encoded_string("", "Hi")),
         writes({0}, encoded_string(nullptr, nullptr)),
         writes({2, 0xEA, 0}, encoded_string(utf_8, nullptr)),
         writes({4, 0xEA, 'H', 'i', 0}, encoded_string("utf-8", "Hi")),
         writes({6, 2, 3, 0xE8, 'H', 'i', 0}, encoded_string("ISO-10646-UCS-2", "Hi")),
         writes({5, 0xEA, 0x7F, 0xC3, 0xA9, 0}, encoded_string(utf_8, "\xC3\xA9")),
         writes("1F2AEA"_wire + text(long_text), encoded_string(utf_8, long_text.c_str())),
         refuses(5, encoded_string("UNKNOWN", "Hi")), refuses(6, encoded_string(utf_8, "\x7Fx")),
         refuses(6, encoded_string(nullptr, "\x01x"))});
}

// "Name=value{charset}"; a star stands before what the caller owns.
Answer decode_parameter(const uint8_t *input, uint32_t length) {
    char stale = 0;
    char *name = &stale;
    char *value = &stale;
    const char *charset = nullptr;
    uint8_t value_owned = 77;
    uint8_t name_owned = 77;
    uint32_t count = 77;
    const uint32_t status =
        DecodeParameter(input, length, &name, &value, &charset, &value_owned, &name_owned, &count);
    if (name == nullptr || status != MMS_STATUS_OK) {
        EXPECT_EQ(name, nullptr);
        EXPECT_EQ(value, nullptr);
        EXPECT_EQ(value_owned + name_owned, 0);
        return {status, count, status == MMS_STATUS_OK ? "dropped" : ""};
    }
    const TextPtr owned_name(name_owned != 0 ? name : nullptr);
    const TextPtr owned_value(value_owned != 0 ? value : nullptr);
    std::string all = (name_owned != 0 ? "*" : "") + std::string(name);
    if (value != nullptr) {
        all += (value_owned != 0 ? "=*" : "=") + std::string(value);
    }
    return {status, count, all + in_braces(charset)};
}

TEST(Parameter, Decode) {
    const std::string cafe = "caf\xC3\xA9{UTF-8}";
    check_decoder(
        decode_parameter,
        {ok("Charset=UTF-8", "81EA"_wire), ok("Charset=UNKNOWN", "818F"_wire),
         ok("Charset=ISO-10646-UCS-2", "810203E8"_wire), ok("Charset=*utf-8", "81'utf-8'"_wire),
         ok("Type=application/vnd.wap.wmlc", "8994"_wire), ok("Type=*/*", "8980"_wire),
         ok("Type=*55", "89B7"_wire),            // no such media type
         ok("Type=image/jpeg", "8902011E"_wire), // the low octet counts
         ok("Type=*20", "8394"_wire),            // token 3 is another Type
         ok("Type=*a/b", "89'a/b'"_wire),
         ok("Charset=UTF-8", "0101EA"_wire), // a token as a Long-integer
         ok("Q=*5", "8085"_wire), ok("Padding=*4294967295", "8804FFFFFFFF"_wire),
         ok("Filename", "8600"_wire), ok("Start=*<s>", "8A'<s>'"_wire),
         ok("Start=*<s>", "8A22'<s>'"_wire), ok("Name=*" + cafe, "85'=?UTF-8?Q?caf=C3=A9?='"_wire),
         ok("Filename=*" + cafe, "8622'=?UTF-8?Q?caf=C3=A9?='"_wire),
         ok("*filename=*" + cafe, "'filename''=?UTF-8?Q?caf=C3=A9?='"_wire),
         ok("*NAME=*" + cafe, "'NAME''=?UTF-8?Q?caf=C3=A9?='"_wire),
         ok("Comment=*=?UTF-8?Q?a?=", "8C'=?UTF-8?Q?a?='"_wire),
         ok("Name=*=?KOI8-R?Q?a?=", "85'=?KOI8-R?Q?a?='"_wire), ok("Name=*\xE9", "857FE900"_wire),
         ok("*X-Extra=*yes", "'X-Extra''yes'"_wire), ok("*X-Extra=*5", "'X-Extra'85"_wire),
         ok("*Charset=*106", "'Charset'EA"_wire), // untyped: a mere number
         ok("*X-Extra", "'X-Extra'00"_wire),
         // Unknown token; value of no form; name of no form: passed over.
         ok("dropped", "FF03010203"_wire), ok("dropped", "FF'abc'"_wire),
         ok("dropped", "851F020707"_wire), ok("dropped", "'X'1F0107"_wire),
         ok("dropped", "1F0107020707"_wire), ok("dropped", "05000000000185"_wire),
         // Failures.
         bad(7, "85050000000000"_wire), bad(7, "'X'050000000000"_wire),
         bad(6, "FF1F9080808000"_wire), bad(6, "851F9080808000"_wire),
         bad(6, "1F908080800085"_wire), bad(2, "85030102"_wire), bad(2, "FF030102"_wire)});
    // Only text values say anything about the character set.
    char *name = nullptr;
    char *value = nullptr;
    const char *charset = "before";
    uint8_t value_owned = 0;
    uint8_t name_owned = 0;
    uint32_t count = 0;
    const Octets number = {0x81, 0xEA};
    DecodeParameter(number.data(), 2, &name, &value, &charset, &value_owned, &name_owned, &count);
    EXPECT_STREQ(charset, "before");
}

EncodeCall parameter(const char *name, const char *value, const char *charset = nullptr) {
    return [=](uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only) {
        return EncodeParameter(output, room, name, value, charset, count, size_only);
    };
}

TEST(Parameter, Encode) {
    const std::string id(33, 'x');
    const char *id_32 = id.c_str() + 1;
    const std::string most(251, '\xE9'); // 753 octets as a word
    const std::string too_many(252, '\xE9');
    const char *cafe = "caf\xC3\xA9";
    const Octets cafe_word = text("=?UTF-8?Q?caf=C3=A9?=");
    check_encoder({writes({0x81, 0xEA}, parameter("Charset", "utf-8")),
                   writes({0x81, 2, 3, 0xF7}, parameter("CHARSET", "UTF-16")),
                   writes({0x81, 0xEA}, parameter("Charset", "KOI8-R")),
                   writes({0x89, 0x94}, parameter("type", "Application/vnd.wap.WMLC")),
                   writes("89'a/b'"_wire, parameter("Type", "a/b")),
                   writes("89'*/*'"_wire, parameter("Type", "*/*")),
                   writes({0x88, 1, 200}, parameter("Padding", "200x")),
                   writes("80'0.5'"_wire, parameter("q", "0.5")),
                   writes({0x86, 0}, parameter("Filename", nullptr)),
                   writes({0x81, 0}, parameter("Charset", nullptr)),
                   writes("'X-Extra''yes'"_wire, parameter("X-Extra", "yes")),
                   writes("'X-Extra'00"_wire, parameter("X-Extra", nullptr)),
                   writes(Octets{0x85} + cafe_word, parameter("Name", cafe, utf_8)),
                   writes(Octets{0x86} + cafe_word, parameter("filename", cafe, utf_8)),
                   writes("85'cafe'"_wire, parameter("Name", "cafe", utf_8)),
                   writes(Octets{0x85} + text(cafe), parameter("Name", cafe)),
                   writes(Octets{0x85} + text(cafe), parameter("Name", cafe, "UTF-16")),
                   writes(Octets{0x8C} + text(cafe), parameter("Comment", cafe, utf_8)),
                   writes(text("X-Name") + text(cafe), parameter("X-Name", cafe, utf_8)),
                   writes(Octets{0x85} + raw("=?UTF-8?Q?") + repeated(251, raw("=E9")) + text("?="),
                          parameter("Name", most.c_str(), utf_8)),
                   writes({0x85, 0}, parameter("Name", too_many.c_str(), utf_8)),
                   refuses(6, parameter("Start", "\x01")),
                   refuses(6, parameter("\x02", "x")),
                   writes(text("application-id") + text(id_32), parameter("application-id", id_32)),
                   refuses(6, parameter("Application-ID", id.c_str())),
                   refuses(6, parameter("Reply-To-Application-ID", id.c_str())),
                   writes(text("X-ID") + text(id), parameter("X-ID", id.c_str()))});
}

TEST(Address, Split) {
    struct Row {
        const char *input;
        uint32_t status;
        const char *name;
        const char *address;
    };
    const Row rows[] = {
        {" \t+491/TYPE=PLMN rest", 1, nullptr, "+491/TYPE=PLMN"},
        {"+491\nrest", 1, nullptr, "+491"},
        {" <+491>rest", 1, nullptr, "+491"},
        {"<+491 x", 1, nullptr, "+491"},
        {"Bob <+4912345/TYPE=PLMN>", 1, "Bob", "+4912345/TYPE=PLMN"},
        {"Bob B. \t<+491>", 1, "Bob B.", "+491"},
        {"Bob <+491", 0, "Bob", nullptr},
        {"\"B<o\" x <+491>", 1, "B<o", "+491"},
        {"\"\"<+491>", 1, "", "+491"},
        {"\"B<o\" +491", 0, "B<o", nullptr},
        {"Bob \nx <+491>", 1, "Bob", "+491"},
        {"\n<+491>", 1, "", "+491"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.input);
        for (const bool stale : {false, true}) {
            char *name = stale ? heap_text("old name") : nullptr;
            char *address = stale ? heap_text("old address") : nullptr;
            EXPECT_EQ(ParseNameAndAddress(row.input, &name, &address), row.status);
            const TextPtr owned_name(name);
            const TextPtr owned_address(address);
            // What is not found stays as it was.
            EXPECT_EQ(shown(name), stale && row.name == nullptr ? "old name" : shown(row.name));
            EXPECT_EQ(shown(address),
                      stale && row.address == nullptr ? "old address" : shown(row.address));
        }
    }
}

} // namespace
