#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::octets;
using test::Octets;
using test::operator+;
using test::raw;
using test::text;

uint32_t size_of(const Octets &data) { return static_cast<uint32_t>(data.size()); }

// The octets written, and the zero after them.
Octets decode_qp(const Octets &input) {
    const auto block = test::exact(input);
    EXPECT_EQ(coreQPDecode_data_size(block.get(), size_of(input)), input.size());
    const auto output = test::exact(Octets(input.size() + 1, 0xEE));
    const uint32_t count = coreQPDecode(block.get(), size_of(input), output.get());
    return {output.get(), output.get() + count + 1};
}

Octets decode_base64(const Octets &input) {
    const auto block = test::exact(input);
    const auto output = test::exact(Octets(input.size() / 4 * 3, 0xEE));
    const uint32_t count = coreBase64Decode(block.get(), size_of(input), output.get());
    return {output.get(), output.get() + count};
}

TEST(Transfer, QuotedPrintable) {
    const char *const rows[][2] = {
        {"a=3Db", "a=b"},       {"=C3=A9", "\xC3\xA9"}, {"abc=", "abc"},          {"a=\r\nb", "ab"},
        {"a\r\nb_", "a\r\nb_"}, {"a=\r\n", "a"},        {"\xE9\x01", "\xE9\x01"},
    };
    for (const auto &[input, expected] : rows) {
        EXPECT_EQ(decode_qp(raw(input)), text(expected)) << input;
    }
    // Nothing of what was decoded stays.
    for (const char *input : {"", "=", "ab=4", "ab=\r", "ab=4a", "ab=a4", "ab=\rX", "ab=\n\r",
                              "ab=G0", "ab==41", "ab=/0", "ab=:0", "ab=@0", "ab=4 c"}) {
        EXPECT_EQ(decode_qp(raw(input)), octets({0})) << input;
    }
    Octets escaped;
    Octets all;
    for (int value = 0; value < 256; ++value) {
        constexpr char digits[] = "0123456789ABCDEF";
        escaped = escaped + octets({'=', digits[value / 16], digits[value % 16]});
        all.push_back(static_cast<uint8_t>(value));
    }
    EXPECT_EQ(decode_qp(escaped), all + octets({0}));
}

TEST(Transfer, Base64) {
    const uint32_t sizes[][2] = {{0, 1}, {8, 7}, {6, 0}, {1, 0}, {0xFFFFFFFC, 0xBFFFFFFE}};
    for (const auto &[length, size] : sizes) {
        EXPECT_EQ(coreBase64Decode_data_size(nullptr, length), size) << length;
    }
    const std::pair<const char *, Octets> rows[] = {
        {"QQ==", {0x41, 0, 0}},
        {"w6k=", {0xC3, 0xA9, 0}},
        {"====", {0, 0, 0}},
        {"Q=JD", {0x40, 0x02, 0x43}},
        {"QUJDQQ==", raw("ABCA") + octets({0, 0})},
    };
    for (const auto &[input, expected] : rows) {
        EXPECT_EQ(decode_base64(raw(input)), expected) << input;
    }
    for (const char *refused : {"", "QUI", "QUJDQ", "QU!D", "QUJDQUJ-", "QUJ\xE9", "QU\nD"}) {
        EXPECT_EQ(decode_base64(raw(refused)), Octets()) << refused;
    }
    // The alphabet stands for 0 to 63, six bits each.
    const Octets decoded =
        decode_base64(raw("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"));
    ASSERT_EQ(decoded.size(), 48U);
    for (size_t i = 0; i < 64; ++i) {
        const size_t at = i / 4 * 3;
        const unsigned group =
            static_cast<unsigned>(decoded[at] << 16 | decoded[at + 1] << 8 | decoded[at + 2]);
        EXPECT_EQ(group >> (18 - 6 * (i % 4)) & 63U, i);
    }
}

} // namespace
