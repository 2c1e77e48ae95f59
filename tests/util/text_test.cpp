#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::shown;
using test::TextPtr;

TextPtr owned(std::string_view characters) { return TextPtr(test::heap_text(characters)); }

TEST(Text, WhiteSpace) {
    EXPECT_EQ(mmsutil_SP + std::string(mmsutil_CRLF), " \r\n");
    EXPECT_EQ(std::string({mmsutil_HT, mmsutil_CR, mmsutil_LF}), "\t\r\n");
    const struct {
        const char *text, *after_blanks, *after_white, *without_trailing;
    } rows[] = {
        {"", "", "", ""},
        {" \t a \t", "a \t", "a \t", " \t a"},
        {" \t ", "", "", ""},
        {" \r\n\t a b", "\r\n\t a b", "a b", " \r\n\t a b"},
        {"\n\va\n ", "\n\va\n ", "\va\n ", "\n\va\n"},
    };
    for (const auto &row : rows) {
        const char *text = row.text;
        SkipWhiteSpace(&text);
        EXPECT_STREQ(text, row.after_blanks);
        text = row.text;
        Skip_CRLF_SPACE_HT(&text);
        EXPECT_STREQ(text, row.after_white);
        const TextPtr cut = owned(row.text);
        removeWSFromStringEnd(cut.get());
        EXPECT_STREQ(cut.get(), row.without_trailing);
    }
}

TEST(Text, IsAscii) {
    EXPECT_EQ(isASCII(nullptr) + isASCII("") + isASCII("caf\xC3\xA9") + isASCII("\x80"), 0U);
    EXPECT_EQ(isASCII("\x01 ~\x7F"), 1U);
}

TEST(Text, StringCopyFillsAndTerminates) {
    const std::pair<const char *, std::string_view> rows[] = {
        {"abcdef", {"abc\0", 4}}, {"ab", {"ab\0\0\0", 5}}, {"x", {"\0", 1}}};
    for (const auto &[source, expected] : rows) {
        const TextPtr to = owned(std::string(expected.size() - 1, '#'));
        const auto n = static_cast<uint32_t>(expected.size() - 1);
        EXPECT_EQ(std::string_view(StringCopy(source, to.get(), n), n + 1), expected);
    }
}

TEST(Text, StringToken) {
    const struct {
        const char *text, *delimiters;
        const char *token; // null: none
        int next;          // offset; -1: unchanged
    } rows[] = {
        {"media/type", "/", "media", 6}, {"abc", "", nullptr, -1},
        {"abc", " \n", "abc", 3},        {"", "<\n", "", 0},
        {"a<b>z", "> ", "a<b", 4},       {"a\xE9/b", "\xE9", "a", 2},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.text) + " by " + row.delimiters);
        const TextPtr text = owned(row.text);
        const char *next = nullptr;
        const TextPtr token(StringToken(text.get(), row.delimiters, &next));
        EXPECT_EQ(shown(token.get()), shown(row.token));
        EXPECT_EQ(next, row.next < 0 ? nullptr : text.get() + row.next);
    }
}

TEST(Text, ComparesIgnoringCase) {
    const struct {
        const char *a, *b;
        int expected;
    } rows[] = {
        {"multipart", "MULTIPART", 0},
        {nullptr, nullptr, 0},
        {"", nullptr, 1},
        {nullptr, "x", -1},
        {"abc", "ABD", -1},
        {"Zoo", "apple", 25},
        {"ab", "a", 'b'},
        {"", "A", -'a'},
        {"[", "{", -32},
        {"@", "`", -32},
        {"a", "\xE9", 120},
        {"\xC9", "\xE9", -32},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(StrCaseCmp(row.a, row.b), row.expected) << shown(row.a) << " " << shown(row.b);
    }
    EXPECT_EQ(StrnCaseCmp("UTF-8", "utf-8xyz", 5), 0);
    EXPECT_EQ(StrnCaseCmp("UTF-8", "utf-8xyz", 6), -'x');
    const auto unterminated = test::exact(test::raw("QB"));
    EXPECT_EQ(StrnCaseCmp(reinterpret_cast<const char *>(unterminated.get()), "qbc", 2), 0);
}

TEST(Text, SetStringReplacesTheOwnedText) {
    char *owned_text = nullptr;
    SetString(&owned_text, "first", 1);
    SetString(&owned_text, owned_text + 2, 1);
    EXPECT_STREQ(owned_text, "rst") << "a piece of the old text may be handed back";
    SetString(&owned_text, owned_text, 0);
    EXPECT_STREQ(owned_text, "rst") << "so may the old text itself";
    char *const adopted = test::heap_text("adopted");
    SetString(&owned_text, adopted, 0);
    EXPECT_EQ(owned_text, adopted);
    SetString(&owned_text, nullptr, 1);
    EXPECT_EQ(owned_text, nullptr);
}

} // namespace
