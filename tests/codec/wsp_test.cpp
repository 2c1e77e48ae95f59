#include "codec/checks.hpp"

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

TEST(WspEncoders, Numbers) {
    const auto octet = [](uint8_t value) { return with(EncodeOctet, value); };
    const auto small = [](uint8_t value) { return with(EncodeShortInteger, value); };
    const auto length = [](uint8_t value) { return with(EncodeShortLength, value); };
    const auto wide = [](uint32_t value) { return with(EncodeLongInteger, value); };
    const auto integer = [](uint32_t value) { return with(EncodeIntegerValue, value); };
    const auto var = [](uint32_t value) { return with(EncodeUintvarInteger, value); };
    const auto value_length = [](uint32_t value) { return with(EncodeValueLength, value); };
    check_encoder({writes({0x00}, octet(0)),
                   writes({0xFF}, octet(255)),
                   writes({0x80}, small(0)),
                   writes({0xFF}, small(127)),
                   refuses(6, small(128)),
                   writes({0x00}, length(0)),
                   writes({0x1E}, length(30)),
                   refuses(6, length(31)),
                   writes({1, 0}, wide(0)),
                   writes({1, 0xFF}, wide(0xFF)),
                   writes({2, 1, 0}, wide(0x100)),
                   writes({3, 0xFF, 0xFF, 0xFF}, wide(0xFFFFFF)),
                   writes({4, 1, 0, 0, 0}, wide(0x1000000)),
                   writes({0xFF}, integer(127)),
                   writes({1, 0x80}, integer(128)),
                   writes({2, 1, 0}, integer(256)),
                   writes({3, 1, 0x23, 0x45}, integer(0x12345)),
                   writes({0}, var(0)),
                   writes({0x7F}, var(0x7F)),
                   writes({0x81, 0}, var(0x80)),
                   writes({0x81, 0x80, 0x80, 0x80, 0x00}, var(0x10000000)),
                   writes({0x8F, 0xFF, 0xFF, 0xFF, 0x7F}, var(UINT32_MAX)),
                   writes({0x1E}, value_length(30)),
                   writes({0x1F, 0x1F}, value_length(31)),
                   writes({0x1F, 0x81, 0x48}, value_length(200)),
                   writes({0x1F, 0x82, 0x00}, value_length(256))});
    uint32_t count = 77;
    EXPECT_EQ(EncodeShortInteger(nullptr, 0, 200, &count, 0), MMS_STATUS_WRONG_FORM)
        << "the value is looked at before the space";
    EXPECT_EQ(count, 0U);
}

TEST(WspEncoders, Texts) {
    check_encoder({writes({0}, with<const char *>(EncodeTextString, nullptr)),
                   writes({0}, with(EncodeTextString, "")),
                   writes({0x7F, 0xE9, 0x62, 0}, with(EncodeTextString, "\xE9\x62")),
                   writes({'a', 1, 0x7F, 0}, with(EncodeTextString, "a\x01\x7F")),
                   writes({0}, with<const char *>(EncodeTokenText, nullptr)),
                   writes({0}, with(EncodeTokenText, "")),
                   writes({0x7F, 0x80, 'x', 0}, with(EncodeTokenText, "\x80x")),
                   writes({0x22, 'a', 'b', 'c', 0}, with(EncodeQuotedString, "abc")),
                   writes({0x22, 0x7F, 0xC3, 0xA9, 0}, with(EncodeQuotedString, "\xC3\xA9")),
                   writes({0x22, 0}, with<const char *>(EncodeQuotedString, nullptr)),
                   refuses(6, with(EncodeQuotedString, "\x01"))});
    const std::string no_token = "()<>@,;:\\\"/[]?={} \x7F";
    for (int octet = 1; octet < 256; ++octet) {
        SCOPED_TRACE(octet);
        const auto character = static_cast<uint8_t>(octet);
        const char first[] = {static_cast<char>(octet), 'a', 0};
        const char second[] = {'a', static_cast<char>(octet), 0};
        if (octet == 0x7F || (octet < 0x20 && octet != '\t' && octet != '\n' && octet != '\r')) {
            expect_refused(MMS_STATUS_WRONG_FORM, with(EncodeTextString, first + 0));
        } else {
            const Octets quote = octet >= 0x80 ? Octets{0x7F} : Octets{};
            expect_written(quote + Octets{character, 'a', 0}, with(EncodeTextString, first + 0));
        }
        if (octet < 0x20 || no_token.find(static_cast<char>(octet)) != std::string::npos) {
            expect_refused(MMS_STATUS_WRONG_FORM, with(EncodeTokenText, second + 0));
        } else {
            expect_written({'a', character, 0}, with(EncodeTokenText, second + 0));
        }
    }
}

TEST(WspDecoders, Octet) {
    const DecodeCall run = [](const uint8_t *input, uint32_t length) {
        uint8_t value = 0;
        uint32_t count = 77;
        const uint32_t status = DecodeOctet(input, length, &value, &count, 0x10, 0x90);
        return Answer{status, count, status == MMS_STATUS_OK ? std::to_string(value) : ""};
    };
    check_decoder(run, {bad(7, {0x0F}), ok("16", {0x10}), ok("144", {0x90}), bad(7, {0x91})});
}

TEST(WspDecoders, Numbers) {
    check_decoder(number(DecodeShortInteger),
                  {bad(2, {}), bad(6, {0x7F}), ok("0", {0x80}), ok("127", {0xFF})});
    check_decoder(number(DecodeShortLength),
                  {bad(2, {}), ok("0", {0}), ok("30", {0x1E}), bad(6, {0x1F}), bad(6, {0xFF})});
    check_decoder(number(DecodeLongInteger),
                  {ok("0", {0}), ok("128", {1, 0x80}), ok("7", {3, 0, 0, 7}),
                   ok("4294967295", {4, 0xFF, 0xFF, 0xFF, 0xFF}), bad(7, {5, 0, 0, 0, 0, 1}),
                   bad(7, {5}), bad(7, {0x1E}), bad(6, {0x1F}), bad(6, {0x80})});
    check_decoder(number(DecodeIntegerValue),
                  {ok("0", {0x80}), ok("127", {0xFF}), ok("1000", {2, 3, 0xE8}),
                   bad(7, {5, 0, 0, 0, 0, 0}), bad(6, {0x41})});
    check_decoder(
        number(DecodeUintvarInteger),
        {ok("127", {0x7F}), ok("128", {0x81, 0x00}), ok("1", {0x80, 0x01}),
         ok("4294967295", {0x8F, 0xFF, 0xFF, 0xFF, 0x7F}), bad(6, {0x90, 0x80, 0x80, 0x80, 0x00}),
         bad(6, {0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0x00}), bad(2, {0x81, 0x80, 0x80, 0x80, 0x80}),
         bad(6, {0x81, 0x80, 0x80, 0x80, 0x80, 0x00}), bad(6, {0x90, 0x80, 0x80, 0x80, 0x80}),
         bad(2, {0x90, 0x80, 0x80, 0x80})});
    check_decoder(number(DecodeValueLength),
                  {ok("0", {0}), ok("30", {0x1E}), ok("5", {0x1F, 0x05}),
                   ok("128", {0x1F, 0x81, 0x00}), bad(6, {0x1F, 0x90, 0x80, 0x80, 0x80, 0x00}),
                   bad(6, {0x20}), bad(6, {0xFF})});
}

TEST(WspDecoders, Texts) {
    const std::vector<DecodeRow> texts = {ok("", {0}),
                                          ok("ab", {'a', 'b', 0}),
                                          ok("a\xE9\x01", {'a', 0xE9, 1, 0}),
                                          ok("\xE9", {0x7F, 0xE9, 0}),
                                          ok("", {0x7F, 0}),
                                          ok("\r\nx", {'\r', '\n', 'x', 0}),
                                          ok("\t\x7Fx", {'\t', 0x7F, 'x', 0}),
                                          ok("a", {'a', 0, 'b', 0}, 2),
                                          bad(2, {'\r', '\n', '\t'}),
                                          bad(6, {'\n', 0x80, 0}),
                                          bad(6, {'\n', 0x01, 0})};
    check_decoder(text_of(DecodeTextString), texts);
    check_decoder(text_of(DecodeTokenText), texts);
    check_decoder(text_of(DecodeQuotedString), texts);
    check_decoder(text_of(DecodeTokenText), {ok("a/ ", {'a', '/', ' ', 0})});
    check_decoder(text_of(DecodeQuotedString),
                  {ok("ab", {0x22, 'a', 'b', 0}), ok("\xC3", {0x22, 0x7F, 0xC3, 0}),
                   ok("\"", {0x22, 0x22, 0}), bad(6, {0x22, 0x80, 0})});
    const DecodeCall run = text_of(DecodeTextString);
    for (int octet = 1; octet < 256; ++octet) {
        SCOPED_TRACE(octet);
        const bool white = octet == '\t' || octet == '\r' || octet == '\n';
        const bool starts = white || (octet >= 0x20 && octet <= 0x7F);
        const auto first = static_cast<uint8_t>(octet);
        EXPECT_EQ(run_on(run, {first, 'a', 0}).status, starts ? 1U : 6U);
    }
}

TEST(WspDecoders, FieldLength) {
    const DecodeCall run = [](const uint8_t *input, uint32_t length) {
        uint32_t field_length = 77;
        const uint32_t status = GetFieldLength(input, length, &field_length);
        return Answer{status, field_length, ""};
    };
    check_decoder(run, {ok("", {0}), ok("", {3, 'a', 'b', 'c'}),
                        ok("", Octets{0x1F, 0x81, 0x00} + Octets(128)),
                        ok("", Octets{0x1E} + Octets(30, 0x80)), ok("", {'a', 'b', 0}),
                        ok("", {0x7F, 0xE9, 0}), ok("", {0x80}), ok("", {0xFF}), bad(2, {5, 0, 0}),
                        bad(2, {0x1F}), bad(2, {0x1F, 0x82, 0x00, 0x00}),
                        bad(6, {0x1F, 0x90, 0x80, 0x80, 0x80, 0x00}),
                        bad(6, {0x1F, 0x81, 0x80, 0x80, 0x80, 0x80, 0x00}),
                        // 6 + 0xFFFFFFFF and 6 + 0xFFFFFFFA do not wrap to a small length.
                        bad(2, {0x1F, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F}),
                        bad(2, {0x1F, 0x8F, 0xFF, 0xFF, 0xFF, 0x7A, 0, 0, 0, 0})});
}

// What the encoders write at the edges of every size, the decoders read.
TEST(WspCodec, NumbersComeBack) {
    for (uint64_t edge = 1; edge <= 1ULL << 32; edge <<= 1) {
        for (uint64_t wide : {edge - 1, edge, edge + 1}) {
            const auto value = static_cast<uint32_t>(wide);
            SCOPED_TRACE(value);
            const auto comes_back = [&](auto encode, auto decode) {
                uint8_t octets[8];
                uint32_t written = 0;
                ASSERT_EQ(encode(octets, 8, value, &written, 0), MMS_STATUS_OK);
                uint32_t read = ~value;
                uint32_t consumed = 0;
                EXPECT_EQ(decode(octets, written, &read, &consumed), MMS_STATUS_OK);
                EXPECT_EQ(read, value);
                EXPECT_EQ(consumed, written);
            };
            comes_back(EncodeLongInteger, DecodeLongInteger);
            comes_back(EncodeIntegerValue, DecodeIntegerValue);
            comes_back(EncodeUintvarInteger, DecodeUintvarInteger);
            comes_back(EncodeValueLength, DecodeValueLength);
        }
    }
}

} // namespace
