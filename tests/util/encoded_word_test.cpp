#include <cctype>
#include <cstdio>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::shown;
using test::TextPtr;

std::string q_word(const std::string &encoded) { return "=?UTF-8?Q?" + encoded + "?="; }

std::string q_encode(const std::string &text) {
    const uint32_t count = MMSUtilQEncode(text.c_str(), nullptr);
    const TextPtr output(test::heap_text(std::string(count, '#')));
    EXPECT_EQ(MMSUtilQEncode(text.c_str(), output.get()), count);
    return {output.get(), count};
}

// "consumed:text" of one word, or "" with status 3.
std::string parse(const std::string &input) {
    const TextPtr text(test::heap_text(input));
    const TextPtr output(test::heap_text(std::string(753, '#')));
    const char *charset = nullptr;
    uint32_t consumed = 99;
    const uint32_t status =
        MMSUtilParseSingleEncodedWord(text.get(), &charset, &consumed, output.get());
    EXPECT_EQ(status, consumed != 0 ? MMS_STATUS_OK : MMS_STATUS_MALFORMED);
    EXPECT_TRUE(consumed == 0 || charset == MMS_CHARSET_UTF_8);
    return consumed != 0 ? std::to_string(consumed) + ":" + output.get() : "";
}

// The decoded run, or nothing ("(null)") with status 3.
std::string decode_run(const std::string &input) {
    const TextPtr text(test::heap_text(input));
    const char *charset = nullptr;
    char *result = nullptr;
    const uint32_t status = MMSUtilDecodeEncodedWord(text.get(), &charset, &result);
    const TextPtr owner(result);
    EXPECT_EQ(status, result != nullptr ? MMS_STATUS_OK : MMS_STATUS_MALFORMED);
    EXPECT_TRUE(result == nullptr || charset == MMS_CHARSET_UTF_8);
    return shown(result);
}

std::string encode(const std::string &text, const char *charset = MMS_CHARSET_UTF_8) {
    const TextPtr word(MMSUtilEncodeEncodedWord(text.c_str(), charset));
    return shown(word.get());
}

TEST(EncodedWord, QEncoding) {
    std::string all;
    for (int value = 1; value < 256; ++value) {
        const std::string character(1, static_cast<char>(value));
        char escape[4];
        std::snprintf(escape, sizeof escape, "=%02X", static_cast<unsigned>(value));
        const bool plain = value < 128 && std::isalnum(value) != 0;
        EXPECT_EQ(q_encode(character), plain ? character : value == ' ' ? "_" : escape);
        all += character;
    }
    EXPECT_EQ(decode_run(encode(all)), all);
}

TEST(EncodedWord, EncodesOneWordUpToTheLimit) {
    EXPECT_EQ(encode("caf\xC3\xA9"), "=?UTF-8?Q?caf=C3=A9?=");
    EXPECT_EQ(encode("a b", "X"), "=?X?Q?a_b?=");
    EXPECT_EQ(encode(""), "(null)");
    EXPECT_EQ(MMSUtilEncodeEncodedWord(nullptr, MMS_CHARSET_UTF_8), nullptr);
    EXPECT_EQ(encode(std::string(753, 'a')), q_word(std::string(753, 'a')));
    EXPECT_EQ(encode(std::string(754, 'a')), "(null)");
    EXPECT_EQ(encode(std::string(251, '?') + "a"), "(null)");
    EXPECT_EQ(encode(std::string(757, 'a'), "X").size(), 765U);
    EXPECT_EQ(encode(std::string(758, 'a'), "X"), "(null)");
}

// What one word is, and the run of words that it begins.
TEST(EncodedWord, WordsAndRuns) {
    const std::string nothing = "=?UTF-8?B?AA==?=";
    const std::string longest = q_word(std::string(753, 'a'));
    const std::string as(753, 'a');
    const std::string rows[][3] = {
        {"=?utf-8?q?a_b?=", "15:a b", "a b"},
        {"=?UTF-8?b?QUJD?= x", "16:ABC", "ABC"},
        {"=?UTF-8?B?QQ==?=", "16:A", "A"},
        {"=?UTF-8?Q?a?=\tb c", "15:a", "a"},
        {"=?UTF-8?Q?a?=41?=", "17:a?A", "a?A"},
        {"=?UTF-8?Q?a=00b?=", "17:a", "a"},
        {"=?UTF-8?Q?a?=\r\n =?UTF-8?Q?b?=", "13:a", "ab"},
        {"=?UTF-8?Q?a?= \t=?utf-8?b?w6k=?= \r\n", "13:a", "a\xC3\xA9"},
        {"=?UTF-8?Q?a?= =?UTF-7?Q?b?= =?UTF-8?Q?c?=", "13:a", "a"},
        {"=?UTF-8?Q?a?= =?UTF-8?Q?\?=", "13:a", "a"},
        {longest + " " + longest, "765:" + as, as + as},
        {nothing + " " + nothing + "\r\n", "16:", ""},
        {nothing + " =?UTF-8?Q?a?=", "16:", "a"},
        {nothing + " plain", "16:", "(null)"},
    };
    for (const auto &[input, word, run] : rows) {
        EXPECT_EQ(parse(input), word) << input.substr(0, 60);
        EXPECT_EQ(decode_run(input), run) << input.substr(0, 60);
    }
    for (const std::string input : {"",
                                    "plain =?UTF-8?Q?a?=",
                                    "=?",
                                    "?=",
                                    "=?=",
                                    "=?UTF-8?Q?",
                                    "=?UTF-8?Q?=",
                                    "=?UTF-8?Q?\?=",
                                    "=?UTF-8?Q?a?\r\n",
                                    "=?UTF-8?Q?=?=",
                                    "=?UTF-8?Qxab?=",
                                    "=?UTF-8xQ?a?=",
                                    "=?UTF-8?X?a?=",
                                    "=?UTF-7?Q?a?=",
                                    "x?UTF-8?Q?a?=",
                                    "=xUTF-8?Q?a?=",
                                    " =?UTF-8?Q?a?=",
                                    "=?UTF-8?Q?a b?=",
                                    "=?UTF-8?Q?=c3=a9?=",
                                    "=?UTF-8?B?QUJ?=",
                                    "=?UTF-8?B?QU!D?="}) {
        EXPECT_EQ(parse(input) + decode_run(input), "(null)") << input;
    }
    EXPECT_EQ(parse(q_word(std::string(754, 'a'))), "");
    EXPECT_EQ(decode_run("=?UTF-8?B?" + std::string(752, 'V') + "?=").size(), 752U / 4 * 3);
}

} // namespace
