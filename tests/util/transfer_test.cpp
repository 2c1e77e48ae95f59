#include <cstring>
#include <random>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::octets;
using test::Octets;
using test::operator+;
using test::raw;

uint32_t size_of(const Octets &data) { return static_cast<uint32_t>(data.size()); }

struct Result {
    uint32_t count;
    Octets output; // the octets written, and the zero after them
};

Result decode_qp(const Octets &input) {
    const auto block = test::exact(input);
    EXPECT_EQ(coreQPDecode_data_size(block.get(), size_of(input)), input.size());
    const auto output = test::exact(Octets(input.size() + 1, 0xEE));
    const uint32_t count = coreQPDecode(block.get(), size_of(input), output.get());
    EXPECT_LE(count, input.size());
    return {count, Octets(output.get(), output.get() + count + 1)};
}

Result decode_base64(const Octets &input) {
    const auto block = test::exact(input);
    const auto output = test::exact(Octets(input.size() / 4 * 3, 0xEE));
    const uint32_t count = coreBase64Decode(block.get(), size_of(input), output.get());
    EXPECT_LE(count, input.size() / 4 * 3);
    return {count, Octets(output.get(), output.get() + count)};
}

TEST(Transfer, QuotedPrintable) {
    const struct {
        const char *input, *expected;
    } rows[] = {
        {"a=3Db", "a=b"},  {"=41=42", "AB"}, {"=C3=A9", "\xC3\xA9"}, {"abc=", "abc"},
        {"a=\r\nb", "ab"}, {"a=\r\n", "a"},  {"a\r\nb_", "a\r\nb_"}, {"\xE9\x01", "\xE9\x01"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.input);
        const Result result = decode_qp(raw(row.input));
        EXPECT_EQ(result.count, std::strlen(row.expected));
        EXPECT_EQ(result.output, test::text(row.expected));
    }
    // Nothing of what was decoded stays.
    for (const char *input : {"", "=", "ab=4", "ab=\r", "ab=4a", "ab=a4", "ab=\rX", "ab=\n\r",
                              "ab=G0", "ab=0G", "ab==41", "ab=/0", "ab=:0", "ab=@0", "ab=4 c"}) {
        SCOPED_TRACE(input);
        const Result result = decode_qp(raw(input));
        EXPECT_EQ(result.count, 0U);
        EXPECT_EQ(result.output, octets({0}));
    }
    Octets escaped;
    Octets all;
    for (int value = 0; value < 256; ++value) {
        constexpr char digits[] = "0123456789ABCDEF";
        escaped = escaped + octets({'=', digits[value / 16], digits[value % 16]});
        all.push_back(static_cast<uint8_t>(value));
    }
    EXPECT_EQ(decode_qp(escaped).output, all + octets({0}));
}

TEST(Transfer, Base64Size) {
    const uint32_t rows[][2] = {
        {0, 1}, {4, 4}, {8, 7}, {6, 0}, {1, 0}, {4092, 3070}, {0xFFFFFFFC, 0xBFFFFFFE}};
    for (const auto &row : rows) {
        EXPECT_EQ(coreBase64Decode_data_size(nullptr, row[0]), row[1]) << row[0];
    }
}

// Base64 with padding, written from the alphabet.
Octets encode_base64(const Octets &data) {
    constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    Octets result;
    for (size_t i = 0; i < data.size(); i += 3) {
        uint32_t group = 0;
        for (size_t j = i; j < i + 3; ++j) {
            group = group * 256 + (j < data.size() ? data[j] : 0U);
        }
        for (size_t j = 0; j < 4; ++j) {
            const char digit = alphabet[group >> (18 - 6 * j) & 63U];
            result.push_back(static_cast<uint8_t>(i + j > data.size() ? '=' : digit));
        }
    }
    return result;
}

TEST(Transfer, Base64) {
    const struct {
        const char *input;
        Octets expected; // empty: refused
    } rows[] = {
        {"QUJD", raw("ABC")},
        {"QQ==", octets({0x41, 0, 0})},
        {"w6k=", octets({0xC3, 0xA9, 0})},
        {"+/+/", octets({0xFB, 0xFF, 0xBF})},
        {"====", octets({0, 0, 0})},
        {"Q=JD", octets({0x40, 0x02, 0x43})},
        {"QUJDQQ==", octets({0x41, 0x42, 0x43, 0x41, 0, 0})},
        {"", {}},
        {"QUI", {}},
        {"QUJDQ", {}},
        {"QU!D", {}},
        {"QUJDQUJ-", {}},
        {"QUJ\xE9", {}},
        {"QU\nD", {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.input);
        const Result result = decode_base64(raw(row.input));
        EXPECT_EQ(result.count, row.expected.size());
        EXPECT_EQ(result.output, row.expected);
    }
    std::mt19937 random(1);
    for (size_t length = 1; length < 300 && !testing::Test::HasFailure(); ++length) {
        Octets data(length);
        for (uint8_t &value : data) {
            value = static_cast<uint8_t>(random());
        }
        Octets padded = data;
        padded.resize((length + 2) / 3 * 3);
        EXPECT_EQ(decode_base64(encode_base64(data)).output, padded) << length;
    }
}

} // namespace
