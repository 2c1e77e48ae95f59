#include <cstring>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::shown;
using test::TextPtr;

TextPtr owned(std::string_view characters) { return TextPtr(test::heap_text(characters)); }

TEST(Text, Constants) {
    EXPECT_STREQ(mmsutil_SP, " ");
    EXPECT_STREQ(mmsutil_CRLF, "\r\n");
    EXPECT_EQ(mmsutil_HT, 9);
    EXPECT_EQ(mmsutil_CR, 13);
    EXPECT_EQ(mmsutil_LF, 10);
}

TEST(Text, SkipsLeadingSpace) {
    const struct {
        const char *text, *after_white, *after_line;
    } rows[] = {
        {"", "", ""},
        {"a ", "a ", "a "},
        {" \t a", "a", "a"},
        {" \t ", "", ""},
        {" \r\n\t a", "\r\n\t a", "a"},
        {"\n\va", "\n\va", "\va"},
    };
    for (const auto &row : rows) {
        const char *white = row.text;
        SkipWhiteSpace(&white);
        EXPECT_STREQ(white, row.after_white);
        const char *line = row.text;
        Skip_CRLF_SPACE_HT(&line);
        EXPECT_STREQ(line, row.after_line);
    }
}

TEST(Text, TrimsTrailingSpace) {
    const char *const rows[][2] = {{"", ""},       {"   ", ""},       {"name\t ", "name"},
                                   {"a b", "a b"}, {" a\n ", " a\n"}, {"\t", ""}};
    for (const auto &row : rows) {
        const TextPtr text = owned(row[0]);
        removeWSFromStringEnd(text.get());
        EXPECT_STREQ(text.get(), row[1]);
    }
}

TEST(Text, IsAscii) {
    EXPECT_EQ(isASCII(nullptr), 0U);
    EXPECT_EQ(isASCII(""), 0U);
    EXPECT_EQ(isASCII("\x01 ~\x7F"), 1U);
    EXPECT_EQ(isASCII("caf\xC3\xA9"), 0U);
    EXPECT_EQ(isASCII("\x80"), 0U);
}

TEST(Text, StringCopyFillsAndTerminates) {
    const struct {
        const char *source;
        uint32_t n;
        std::string_view expected; // n + 1 octets
    } rows[] = {{"abcdef", 3, {"abc\0", 4}}, {"ab", 4, {"ab\0\0\0", 5}}, {"x", 0, {"\0", 1}}};
    for (const auto &row : rows) {
        const TextPtr to = owned(std::string(row.n, '#'));
        EXPECT_EQ(StringCopy(row.source, to.get(), row.n), to.get());
        EXPECT_EQ(std::string_view(to.get(), row.n + 1), row.expected);
    }
}

TEST(Text, StringToken) {
    const struct {
        const char *text, *delimiters;
        const char *token; // null: none
        int next;          // offset; -1: unchanged
    } rows[] = {
        {"media/type", "/", "media", 6},
        {"media", "/", nullptr, -1},
        {"", "/", nullptr, -1},
        {"abc", " \n", "abc", 3},
        {"", "<\n", "", 0},
        {"a<b>z", "> ", "a<b", 4},
        {"/x", "/", "", 1},
        {"ab\ncd", " \n", "ab", 3},
        {"ab\ncd", "/", nullptr, -1},
        {"x/", "/", "x", 2},
        {"a\xE9/b", "\xE9", "a", 2},
        {"abc", "", nullptr, -1},
        {"Name <a@b>", "<\n", "Name ", 6},
        {"a b", "> ", "a", 2},
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
        {"", "", 0},
        {nullptr, nullptr, 0},
        {"x", nullptr, 1},
        {"", nullptr, 1},
        {nullptr, "x", -1},
        {"abc", "ABD", -1},
        {"Zoo", "apple", 25},
        {"ab", "a", 'b'},
        {"", "A", -'a'},
        {"[", "{", -32},
        {"@", "`", -32},
        {"\xE9", "a", -120},
        {"a", "\xE9", 120},
        {"\xC9", "\xE9", -32},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(StrCaseCmp(row.a, row.b), row.expected) << shown(row.a) << " " << shown(row.b);
        EXPECT_EQ(StrnCaseCmp(row.a, row.b, 100), row.expected);
    }
    EXPECT_EQ(StrnCaseCmp("UTF-8", "utf-8xyz", 5), 0);
    EXPECT_EQ(StrnCaseCmp("UTF-8", "utf-8xyz", 6), -'x');
    EXPECT_EQ(StrnCaseCmp("abX", "ABy", 2), 0);
    const auto unterminated = test::exact(test::raw("QB"));
    const char *const two = reinterpret_cast<const char *>(unterminated.get());
    EXPECT_EQ(StrnCaseCmp(two, "qbc", 2), 0);
}

TEST(Text, SetStringReplacesTheOwnedText) {
    char *owned_text = nullptr;
    SetString(&owned_text, "first", 1);
    EXPECT_STREQ(owned_text, "first");
    SetString(&owned_text, owned_text + 2, 1);
    EXPECT_STREQ(owned_text, "rst") << "a piece of the old text may be handed back";
    char *const adopted = test::heap_text("adopted");
    SetString(&owned_text, adopted, 0);
    EXPECT_EQ(owned_text, adopted);
    SetString(&owned_text, nullptr, 1);
    EXPECT_EQ(owned_text, nullptr);
    SetString(&owned_text, "again", 1);
    SetString(&owned_text, nullptr, 0);
    EXPECT_EQ(owned_text, nullptr);
}

} // namespace
