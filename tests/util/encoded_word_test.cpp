#include <cctype>
#include <cstdio>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::shown;
using test::TextPtr;
using namespace std::string_literals;

std::string q_word(const std::string &encoded) { return "=?UTF-8?Q?" + encoded + "?="; }

std::string q_encode(const std::string &text) {
    const uint32_t count = MMSUtilQEncode(text.c_str(), nullptr);
    const TextPtr output(test::heap_text(std::string(count, '#')));
    EXPECT_EQ(MMSUtilQEncode(text.c_str(), output.get()), count);
    return {output.get(), count};
}

struct Word {
    uint32_t status;
    uint32_t consumed;
    std::string text;
};

Word parse(const std::string &input) {
    const TextPtr text(test::heap_text(input));
    const TextPtr output(test::heap_text(std::string(753, '#')));
    const char *charset = nullptr;
    uint32_t consumed = 99;
    const uint32_t status =
        MMSUtilParseSingleEncodedWord(text.get(), &charset, &consumed, output.get());
    EXPECT_TRUE(status != MMS_STATUS_OK || charset == MMS_CHARSET_UTF_8);
    return {status, consumed, status == MMS_STATUS_OK ? output.get() : ""};
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

TEST(EncodedWord, QEncoding) {
    for (int value = 1; value < 256; ++value) {
        const char character = static_cast<char>(value);
        char escape[4];
        std::snprintf(escape, sizeof escape, "=%02X", static_cast<unsigned>(value));
        const bool plain = value < 128 && std::isalnum(value) != 0;
        EXPECT_EQ(q_encode(std::string(1, character)), plain          ? std::string(1, character)
                                                       : value == ' ' ? "_"
                                                                      : escape);
    }
    EXPECT_EQ(q_encode(""), "");
    EXPECT_EQ(q_encode("caf\xC3\xA9 _?"), "caf=C3=A9_=5F=3F");
}

TEST(EncodedWord, EncodesOneWordUpToTheLimit) {
    const auto encode = [](const std::string &text, const char *charset) {
        const TextPtr word(MMSUtilEncodeEncodedWord(text.c_str(), charset));
        return shown(word.get());
    };
    EXPECT_EQ(encode("caf\xC3\xA9", MMS_CHARSET_UTF_8), "=?UTF-8?Q?caf=C3=A9?=");
    EXPECT_EQ(encode("a b", "X"), "=?X?Q?a_b?=");
    EXPECT_EQ(encode("", MMS_CHARSET_UTF_8), "(null)");
    EXPECT_EQ(MMSUtilEncodeEncodedWord(nullptr, MMS_CHARSET_UTF_8), nullptr);
    EXPECT_EQ(encode(std::string(753, 'a'), "UTF-8"), q_word(std::string(753, 'a')));
    EXPECT_EQ(encode(std::string(754, 'a'), "UTF-8"), "(null)");
    EXPECT_EQ(encode(std::string(251, '?'), "UTF-8").size(), 765U);
    EXPECT_EQ(encode(std::string(251, '?') + "a", "UTF-8"), "(null)");
    EXPECT_EQ(encode(std::string(757, 'a'), "X").size(), 765U);
    EXPECT_EQ(encode(std::string(758, 'a'), "X"), "(null)");

    std::string all;
    for (int value = 1; value < 256; ++value) {
        all += static_cast<char>(value);
    }
    EXPECT_EQ(decode_run(encode(all, "UTF-8")), all);
}

TEST(EncodedWord, ParsesOneWord) {
    const struct {
        std::string input;
        uint32_t consumed;
        std::string text;
    } rows[] = {
        {"=?utf-8?q?a_b?=", 15, "a b"},
        {"=?UTF-8?B?w6k=?=", 16, "\xC3\xA9"},
        {"=?UTF-8?b?QUJD?= x", 16, "ABC"},
        {"=?UTF-8?B?QQ==?=", 16, "A"},
        {"=?UTF-8?Q?a?=b", 14, "a"},
        {"=?UTF-8?Q?a?=\tb c", 15, "a"},
        {"=?UTF-8?Q?a\tb?=", 15, "a\tb"},
        {"=?UTF-8?Q?a?=41?=", 17, "a?A"},
        {"=?UTF-8?Q?a?\r\n", 0, ""},
        {"=?UTF-8?Q?a?=\r\nb", 13, "a"},
        {"=?UTF-8?Q?a=00b?=", 17, "a"},
        {"=?UTF-8?B?AA==?=", 16, ""},
        {"=?UTF-8?Q?a=?=", 14, "a"},
        {q_word(std::string(753, 'a')), 765, std::string(753, 'a')},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.input.substr(0, 40));
        const Word word = parse(row.input);
        EXPECT_EQ(word.status, row.consumed == 0 ? MMS_STATUS_MALFORMED : MMS_STATUS_OK);
        EXPECT_EQ(word.consumed, row.consumed);
        EXPECT_EQ(word.text, row.text);
    }
    EXPECT_EQ(parse("=?UTF-8?B?" + std::string(752, 'V') + "?=").text.size(), 752U / 4 * 3);
    for (const std::string &input : {""s,
                                     "plain"s,
                                     "=?"s,
                                     "?="s,
                                     "=?="s,
                                     "=?UTF-8?Q?"s,
                                     "=?UTF-8?Q?="s,
                                     "=?UTF-8?Q?\?="s,
                                     "=?UTF-8?Q?=?="s,
                                     "=?UTF-8?Qxab?="s,
                                     "=?UTF-8xQ?a?="s,
                                     "=?UTF-8?X?a?="s,
                                     "=?UTF-7?Q?a?="s,
                                     "=?ISO-8859-1?Q?a?="s,
                                     "x?UTF-8?Q?a?="s,
                                     "=xUTF-8?Q?a?="s,
                                     " =?UTF-8?Q?a?="s,
                                     "=?UTF-8?Q?a b?="s,
                                     "=?UTF-8?Q?=c3=a9?="s,
                                     "=?UTF-8?B?QUJ?="s,
                                     "=?UTF-8?B?QU!D?="s,
                                     "=?UTF-8?Q?a?=\t=?UTF-8?Q?b?="s,
                                     q_word(std::string(754, 'a'))}) {
        SCOPED_TRACE(input.substr(0, 40));
        const Word word = parse(input);
        EXPECT_EQ(word.status, MMS_STATUS_MALFORMED);
        EXPECT_EQ(word.consumed, 0U);
    }
}

TEST(EncodedWord, DecodesRuns) {
    const std::string nothing = "=?UTF-8?B?AA==?=";
    const std::string longest = q_word(std::string(753, 'a'));
    const std::string rows[][2] = {
        {"=?UTF-8?Q?a?=\r\n =?UTF-8?Q?b?=", "ab"},
        {"=?UTF-8?Q?a?= \t=?utf-8?b?w6k=?= \r\n", "a\xC3\xA9"},
        {"=?UTF-8?Q?a?= plain", "a"},
        {"=?UTF-8?Q?a?= =?UTF-7?Q?b?= =?UTF-8?Q?c?=", "a"},
        {"=?UTF-8?Q?a?= =?UTF-8?Q?\?=", "a"},
        {longest + " " + longest + "\n" + longest, std::string(3 * 753, 'a')},
        {nothing, ""},
        {nothing + " " + nothing + "\r\n", ""},
        {nothing + " =?UTF-8?Q?a?=", "a"},
        {"=?UTF-8?Q?a?= " + nothing, "a"},
        {nothing + " plain", "(null)"},
        {"", "(null)"},
        {" ", "(null)"},
        {"plain =?UTF-8?Q?a?=", "(null)"},
        {" =?UTF-8?Q?a?=", "(null)"},
        {"=?ISO-8859-1?Q?a?=", "(null)"},
        {"=?UTF-8?Q?\?=", "(null)"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(decode_run(row[0]), row[1]) << row[0].substr(0, 60);
    }
}

} // namespace
