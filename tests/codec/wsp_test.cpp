#include "codec/checks.hpp"
#include "support/wire.hpp"

namespace {

using namespace test;

template <typename Value>
EncodeCall with(uint32_t (*encode)(uint8_t *, uint32_t, Value, uint32_t *, uint8_t), Value value) {
    return [=](uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only) {
        return encode(output, room, value, count, size_only);
    };
}

template <typename Value>
DecodeCall number(uint32_t (*decode)(const uint8_t *, uint32_t, Value *, uint32_t *)) {
    return [decode](const uint8_t *input, uint32_t length) {
        Value value = 0;
        uint32_t count = 77;
        const uint32_t status = decode(input, length, &value, &count);
        return Answer{status, count, status == MMS_STATUS_OK ? std::to_string(value) : ""};
    };
}

// Values and what is written for them, which reads as the values.
template <typename Value>
void check_both(uint32_t (*encode)(uint8_t *, uint32_t, Value, uint32_t *, uint8_t),
                uint32_t (*decode)(const uint8_t *, uint32_t, Value *, uint32_t *),
                const std::vector<std::pair<Value, Octets>> &rows) {
    for (const auto &[value, octets] : rows) {
        SCOPED_TRACE(value);
        expect_written(octets, with(encode, value));
        check_decoder(number(decode), {ok(std::to_string(value), octets)});
    }
}

TEST(Wsp, Numbers) {
    check_both<uint8_t>(EncodeShortInteger, DecodeShortInteger, {{0, {0x80}}, {127, {0xFF}}});
    check_both<uint8_t>(EncodeShortLength, DecodeShortLength, {{0, {0}}, {30, {0x1E}}});
    check_both<uint32_t>(EncodeLongInteger, DecodeLongInteger,
                         {{0, "0100"_wire},
                          {0xFF, "01FF"_wire},
                          {0x100, "020100"_wire},
                          {0x10000, "03010000"_wire},
                          {0x1000000, "0401000000"_wire}});
    check_both<uint32_t>(EncodeIntegerValue, DecodeIntegerValue,
                         {{127, {0xFF}}, {128, {1, 0x80}}, {0x12345, {3, 1, 0x23, 0x45}}});
    check_both<uint32_t>(EncodeUintvarInteger, DecodeUintvarInteger,
                         {{0x7F, "7F"_wire},
                          {0x80, "8100"_wire},
                          {0x4000, "818000"_wire},
                          {0x200000, "81808000"_wire},
                          {0x10000000, "8180808000"_wire},
                          {UINT32_MAX, "8FFFFFFF7F"_wire}});
    check_both<uint32_t>(EncodeValueLength, DecodeValueLength,
                         {{30, {0x1E}}, {31, {0x1F, 0x1F}}, {256, {0x1F, 0x82, 0}}});
    check_encoder({writes({0xFF}, with<uint8_t>(EncodeOctet, 255)),
                   refuses(6, with<uint8_t>(EncodeShortInteger, 128)),
                   refuses(6, with<uint8_t>(EncodeShortLength, 31))});
    uint32_t count = 77;
    EXPECT_EQ(EncodeShortInteger(nullptr, 0, 200, &count, 0), MMS_STATUS_WRONG_FORM)
        << "the value is looked at before the space";
}

TEST(Wsp, OtherFormsOfNumbers) {
    const DecodeCall octet = [](const uint8_t *input, uint32_t length) {
        uint8_t value = 0;
        uint32_t count = 77;
        const uint32_t status = DecodeOctet(input, length, &value, &count, 0x10, 0x90);
        return Answer{status, count, status == MMS_STATUS_OK ? std::to_string(value) : ""};
    };
    check_decoder(octet, {bad(7, {0x0F}), ok("16", {0x10}), ok("144", {0x90}), bad(7, {0x91})});
    check_decoder(number(DecodeShortInteger), {bad(6, {0x7F})});
    check_decoder(number(DecodeShortLength), {bad(6, {0x1F}), bad(6, {0xFF})});
    check_decoder(number(DecodeLongInteger), {ok("0", {0}), ok("7", {3, 0, 0, 7}), bad(7, {5}),
                                              bad(6, {0x1F}), bad(6, {0x80})});
    check_decoder(number(DecodeIntegerValue), {bad(7, {5, 0, 0, 0, 0, 0}), bad(6, {0x41})});
    check_decoder(number(DecodeUintvarInteger),
                  {ok("1", {0x80, 0x01}), bad(6, "9080808000"_wire), bad(2, "8180808080"_wire),
                   bad(6, "818080808000"_wire), bad(6, "9080808080"_wire)});
    check_decoder(number(DecodeValueLength),
                  {ok("5", {0x1F, 0x05}), bad(6, "1F9080808000"_wire), bad(6, {0x20})});
}

DecodeCall text_of(uint32_t (*decode)(const uint8_t *, uint32_t, char **, uint32_t *)) {
    return [decode](const uint8_t *input, uint32_t length) {
        char stale = 0;
        char *result = &stale;
        uint32_t count = 77;
        const uint32_t status = decode(input, length, &result, &count);
        const TextPtr owned(result);
        EXPECT_EQ(owned != nullptr, status == MMS_STATUS_OK);
        return Answer{status, count, owned != nullptr ? owned.get() : ""};
    };
}

TEST(Wsp, Texts) {
    check_encoder({writes({0}, with<const char *>(EncodeTextString, nullptr)),
                   writes({'a', 1, 0x7F, 0}, with(EncodeTextString, "a\x01\x7F")),
                   writes({0}, with<const char *>(EncodeTokenText, nullptr)),
                   writes({0x22, 0x7F, 0xC3, 0xA9, 0}, with(EncodeQuotedString, "\xC3\xA9")),
                   writes({0x22, 0}, with<const char *>(EncodeQuotedString, nullptr)),
                   refuses(6, with(EncodeQuotedString, "\x01"))});
    for (const auto decode : {DecodeTextString, DecodeTokenText, DecodeQuotedString}) {
        check_decoder(text_of(decode),
                      {ok("", {0}), ok("a\xE9\x01", {'a', 0xE9, 1, 0}), ok("\xE9", {0x7F, 0xE9, 0}),
                       ok("", {0x7F, 0}), ok("\r\nx", {'\r', '\n', 'x', 0}),
                       ok("\t\x7Fx", {'\t', 0x7F, 'x', 0}), bad(2, {'\r', '\n'}),
                       bad(6, {'\n', 0x80, 0})});
    }
    check_decoder(
        text_of(DecodeQuotedString),
        {ok("\xC3", {0x22, 0x7F, 0xC3, 0}), ok("\"", {0x22, 0x22, 0}), bad(6, {0x22, 0x80, 0})});
    // Every octet at the start of a text, and inside of a token.
    const std::string separators = "()<>@,;:\\\"/[]?={} ";
    for (int octet = 1; octet < 256; ++octet) {
        SCOPED_TRACE(octet);
        const auto character = static_cast<uint8_t>(octet);
        const char first[] = {static_cast<char>(octet), 'a', 0};
        const char second[] = {'a', static_cast<char>(octet), 0};
        const bool control = octet < 0x20 || octet == 0x7F;
        const bool starts = !control || octet == '\t' || octet == '\n' || octet == '\r';
        const Octets quote = octet >= 0x80 ? Octets{0x7F} : Octets{};
        const bool token = !control && separators.find(second[1]) == std::string::npos;
        const EncodeCall text = with(EncodeTextString, first + 0);
        const EncodeCall name = with(EncodeTokenText, second + 0);
        check_encoder({starts ? writes(quote + Octets{character, 'a', 0}, text) : refuses(6, text),
                       token ? writes({'a', character, 0}, name) : refuses(6, name)});
        EXPECT_EQ(run_on(text_of(DecodeTextString), {character, 'a', 0}).status,
                  (starts && octet < 0x80) || octet == 0x7F ? 1U : 6U);
    }
}

TEST(Wsp, FieldLength) {
    const DecodeCall run = [](const uint8_t *input, uint32_t length) {
        uint32_t field_length = 77;
        const uint32_t status = GetFieldLength(input, length, &field_length);
        return Answer{status, field_length, ""};
    };
    check_decoder(run, {ok("", {0}), ok("", "1F8100"_wire + Octets(128)), ok("", "'ab'"_wire),
                        ok("", {0x80}), ok("", {0xFF}), bad(2, {5, 0, 0}),
                        bad(6, "1F9080808000"_wire), bad(2, "1F8FFFFFFF7F"_wire),
                        // 6 + 0xFFFFFFFA does not wrap to a small length.
                        bad(2, "1F8FFFFFFF7A00000000"_wire)});
}

} // namespace
