#include "codec/checks.hpp"

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
                  {ok("Hi", text("Hi")), ok("", text(""), 1),
                   ok("Hi{UTF-8}", {4, 0xEA, 'H', 'i', 0}), ok("H{US-ASCII}", {3, 0x83, 'H', 0}),
                   ok("Hi{ISO-10646-UCS-2}", {6, 2, 3, 0xE8, 'H', 'i', 0}),
                   ok("Hi{UNKNOWN}", {4, 0x8F, 'H', 'i', 0}),
                   // 0x1006A: the low 16 bits of a number count.
                   ok("H{UTF-8}", {6, 3, 1, 0, 0x6A, 'H', 0}),
                   ok("\xE9"
                      "b{UTF-8}",
                      {0x1F, 5, 0xEA, 0x7F, 0xE9, 'b', 0}),
                   bad(2, {5, 0xEA, 'H', 'i', 0}), bad(2, {3, 0xEA, 'H', 'i', 0}),
                   bad(2, {5, 0xEA, 'H', 'i', 0, 0}), bad(2, {4, 0xEA, 'H', 'i', 'x', 0}),
                   bad(6, {3, 'H', 'i', 0}),      // no character set
                   bad(6, {2, 0xEA, 0x80}),       // no text
                   bad(6, {2, 0xEA, 0x01, 0}),    // the same
                   bad(7, {6, 5, 0, 0, 0, 0, 0}), // a character set of five octets
                   bad(6, {0x1F, 0x90, 0x80, 0x80, 0x80, 0}), bad(6, {0xEA, 'H', 0}),
                   bad(2, {'H', 'i'})});
}

EncodeCall encoded_string(const char *charset, const char *value) {
    return [=](uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only) {
        return EncodeEncodedStringValue(output, room, charset, value, count, size_only);
    };
}

TEST(EncodedString, Encode) {
    const std::string long_text(40, 'x');
    const Octets long_value = Octets{0x1F, 42, 0xEA} + text(long_text);
    check_encoder(
        {writes(text("Hi"), encoded_string(nullptr, "Hi")),
         writes(text("Hi"), encoded_string("", "Hi")),
         writes({0}, encoded_string(nullptr, nullptr)),
         writes({2, 0xEA, 0}, encoded_string(utf_8, nullptr)),
         writes({4, 0xEA, 'H', 'i', 0}, encoded_string(utf_8, "Hi")),
         writes({4, 0xEA, 'H', 'i', 0}, encoded_string("utf-8", "Hi")),
         writes({6, 2, 3, 0xE8, 'H', 'i', 0}, encoded_string("ISO-10646-UCS-2", "Hi")),
         writes({5, 0xEA, 0x7F, 0xC3, 0xA9, 0}, encoded_string(utf_8, "\xC3\xA9")),
         writes(long_value, encoded_string(utf_8, long_text.c_str())),
         refuses(5, encoded_string("KOI8-R", "Hi")), refuses(5, encoded_string("UNKNOWN", "Hi")),
         refuses(6, encoded_string(utf_8, "\x7Fx")), refuses(6, encoded_string(nullptr, "\x01x"))});
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
    const Octets word = text("=?UTF-8?Q?caf=C3=A9?=");
    const std::string cafe = "caf\xC3\xA9{UTF-8}";
    check_decoder(
        decode_parameter,
        {ok("Charset=UTF-8", {0x81, 0xEA}), ok("Charset=UNKNOWN", {0x81, 0x8F}),
         ok("Charset=ISO-10646-UCS-2", {0x81, 2, 3, 0xE8}),
         ok("Charset=*utf-8", Octets{0x81} + text("utf-8")),
         ok("Type=application/vnd.wap.wmlc", {0x89, 0x94}), ok("Type=*/*", {0x89, 0x80}),
         ok("Type=*55", {0x89, 0xB7}),              // no such media type
         ok("Type=image/jpeg", {0x89, 2, 1, 0x1E}), // the low octet counts
         ok("Type=*20", {0x83, 0x94}),              // token 3 is another Type
         ok("Type=*a/b", Octets{0x89} + text("a/b")),
         ok("Charset=UTF-8", {1, 1, 0xEA}), // a token as a Long-integer
         ok("Q=*5", {0x80, 0x85}), ok("Padding=*4294967295", {0x88, 4, 0xFF, 0xFF, 0xFF, 0xFF}),
         ok("Filename", {0x86, 0}), ok("Start=*<s>", Octets{0x8A} + text("<s>")),
         ok("Start=*<s>", Octets{0x8A, 0x22} + text("<s>")),
         ok("Name=*" + cafe, Octets{0x85} + word),
         ok("Filename=*" + cafe, Octets{0x86, 0x22} + word),
         ok("*filename=*" + cafe, text("filename") + word),
         ok("*NAME=*" + cafe, text("NAME") + word),
         ok("Comment=*=?UTF-8?Q?caf=C3=A9?=", Octets{0x8C} + word),
         ok("Name=*=?KOI8-R?Q?a?=", Octets{0x85} + text("=?KOI8-R?Q?a?=")),
         ok("Name=*\xE9", Octets{0x85} + text("\x7F\xE9")),
         ok("*X-Extra=*yes", text("X-Extra") + text("yes")),
         ok("*X-Extra=*5", text("X-Extra") + Octets{0x85}),
         ok("*Charset=*106", text("Charset") + Octets{0xEA}), // untyped: a mere number
         ok("*X-Extra", text("X-Extra") + Octets{0}),
         // Unknown token; value of no form; name of no form: passed over.
         ok("dropped", {0xFF, 3, 1, 2, 3}), ok("dropped", Octets{0xFF} + text("abc")),
         ok("dropped", {0x85, 0x1F, 2, 7, 7}), ok("dropped", text("X-Extra") + Octets{0x1F, 1, 7}),
         ok("dropped", {0x1F, 1, 7, 2, 7, 7}), ok("dropped", {5, 0, 0, 0, 0, 1, 0x85}),
         // Failures.
         bad(7, {0x85, 5, 0, 0, 0, 0, 0}), bad(7, text("X-Extra") + Octets{5, 0, 0, 0, 0, 0}),
         bad(6, {0xFF, 0x1F, 0x90, 0x80, 0x80, 0x80, 0}),
         bad(6, {0x85, 0x1F, 0x90, 0x80, 0x80, 0x80, 0}),
         bad(6, {0x1F, 0x90, 0x80, 0x80, 0x80, 0, 0x85}), bad(2, {0x85, 3, 1, 2}),
         bad(2, {0xFF, 3, 1, 2})});
    // Only text values say anything about the character set.
    for (const Octets &input : {Octets{0x81, 0xEA}, Octets{0x85, 0}, Octets{0x85, 'a', 0}}) {
        char *name = nullptr;
        char *value = nullptr;
        const char *charset = "before";
        uint8_t value_owned = 0;
        uint8_t name_owned = 0;
        uint32_t count = 0;
        DecodeParameter(input.data(), static_cast<uint32_t>(input.size()), &name, &value, &charset,
                        &value_owned, &name_owned, &count);
        EXPECT_EQ(shown(charset), value_owned != 0 ? "(null)" : "before");
        std::free(value_owned != 0 ? value : nullptr);
    }
}

EncodeCall parameter(const char *name, const char *value, const char *charset = nullptr) {
    return [=](uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only) {
        return EncodeParameter(output, room, name, value, charset, count, size_only);
    };
}

TEST(Parameter, Encode) {
    const std::string id_32(32, 'x');
    const std::string id_33(33, 'x');
    const std::string most(251, '\xE9'); // 753 octets as a word
    const std::string too_many(252, '\xE9');
    std::string word = "=?UTF-8?Q?";
    for (size_t i = 0; i < most.size(); ++i) {
        word += "=E9";
    }
    const char *cafe = "caf\xC3\xA9";
    const Octets cafe_word = text("=?UTF-8?Q?caf=C3=A9?=");
    check_encoder(
        {writes({0x81, 0xEA}, parameter("Charset", "utf-8")),
         writes({0x81, 2, 3, 0xF7}, parameter("CHARSET", "UTF-16")),
         writes({0x81, 0xEA}, parameter("Charset", "KOI8-R")),
         writes({0x89, 0x94}, parameter("type", "Application/vnd.wap.WMLC")),
         writes(Octets{0x89} + text("a/b"), parameter("Type", "a/b")),
         writes(Octets{0x89} + text("*/*"), parameter("Type", "*/*")),
         writes({0x88, 1, 200}, parameter("Padding", "200x")),
         writes(Octets{0x80} + text("0.5"), parameter("q", "0.5")),
         writes(Octets{0x8E} + text("60"), parameter("Max-age", "60")),
         writes(Octets{0x85} + text("photo.jpg"), parameter("Name", "photo.jpg")),
         writes({0x86, 0}, parameter("Filename", nullptr)),
         writes({0x81, 0}, parameter("Charset", nullptr)),
         writes({0x88, 0}, parameter("Padding", nullptr)),
         writes(text("X-Extra") + text("yes"), parameter("X-Extra", "yes")),
         writes(text("X-Extra") + Octets{0}, parameter("X-Extra", nullptr)),
         writes(Octets{0x85} + cafe_word, parameter("Name", cafe, utf_8)),
         writes(Octets{0x86} + cafe_word, parameter("filename", cafe, utf_8)),
         writes(Octets{0x85} + text("cafe"), parameter("Name", "cafe", utf_8)),
         writes(Octets{0x85} + text(cafe), parameter("Name", cafe)),
         writes(Octets{0x85} + text(cafe), parameter("Name", cafe, "UTF-16")),
         writes(Octets{0x8C} + text(cafe), parameter("Comment", cafe, utf_8)),
         writes(text("X-Name") + text(cafe), parameter("X-Name", cafe, utf_8)),
         writes({0x85, 0}, parameter("Name", "", utf_8)),
         writes(Octets{0x85} + text(word + "?="), parameter("Name", most.c_str(), utf_8)),
         writes({0x85, 0}, parameter("Name", too_many.c_str(), utf_8)),
         writes({0x8A, 0x7F, 0xE9, 0}, parameter("Start", "\xE9")),
         refuses(6, parameter("Start", "\x01")),
         refuses(6, parameter("\x02", "x")),
         writes(text("application-id") + text(id_32), parameter("application-id", id_32.c_str())),
         refuses(6, parameter("Application-ID", id_33.c_str())),
         refuses(6, parameter("Reply-To-Application-ID", id_33.c_str())),
         writes(text("X-ID") + text(id_33), parameter("X-ID", id_33.c_str()))});
}

TEST(Address, Split) {
    struct Row {
        const char *input;
        uint32_t status;
        const char *name;
        const char *address;
    };
    const Row rows[] = {
        {"+491", 1, nullptr, "+491"},
        {" \t+491/TYPE=PLMN rest", 1, nullptr, "+491/TYPE=PLMN"},
        {"+491\nrest", 1, nullptr, "+491"},
        {"a\tb", 1, nullptr, "a\tb"},
        {"", 1, nullptr, ""},
        {" \t ", 1, nullptr, ""},
        {"a>b", 1, nullptr, "a>b"},
        {"\"Bob\" x", 1, nullptr, "\"Bob\""},
        {" <+491>rest", 1, nullptr, "+491"},
        {"<+491 x", 1, nullptr, "+491"},
        {"<>", 1, nullptr, ""},
        {"<abc", 0, nullptr, nullptr},
        {"Bob <+4912345/TYPE=PLMN>", 1, "Bob", "+4912345/TYPE=PLMN"},
        {"Bob B. \t<+491>", 1, "Bob B.", "+491"},
        {"Bob<+491 x>", 1, "Bob", "+491"},
        {"Bob <+491", 0, "Bob", nullptr},
        {"\"Bob B\" <+491>", 1, "Bob B", "+491"},
        {"\"B<o\" x <+491>", 1, "B<o", "+491"},
        {"\"\"<+491>", 1, "", "+491"},
        {"\"Bob <+491>", 0, nullptr, nullptr},
        {"\"B<o\" +491", 0, "B<o", nullptr},
        {"\"Bob\" <+491", 0, "Bob", nullptr},
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
