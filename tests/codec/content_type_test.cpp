#include "codec/checks.hpp"

namespace {

using namespace test;

TEST(ContentType, IsMultipart) {
    const std::pair<const char *, uint32_t> rows[] = {
        {"multipart/mixed", 1},
        {"MULTIPART/x", 1},
        {"multipart/", 1},
        {"multipart", 0},
        {"multipartx/mixed", 0},
        {"multi/part", 0},
        {"/multipart", 0},
        {"", 0},
        {nullptr, 0},
    };
    for (const auto &[media, expected] : rows) {
        const ContentTypePtr type(MMS_CreateContentType(media));
        EXPECT_EQ(MMS_IsMultipart(type.get()), expected) << shown(media);
    }
}

TEST(ContentType, Decode) {
    const std::string nineteen(19, 'a');
    check_decoder(record<ContentTypePtr>(MMSDecodeContentType),
                  {ok("text/plain", {0x83}), ok("*/*", {0x80}), ok("multipart/mixed", {0x8C}),
                   ok("multipart/mixed", {0xA3}), ok("application/octet-stream", {0xB7}),
                   ok("text/x-foo", text("text/x-foo")), ok("/", text("/")),
                   ok(nineteen + "/x", text(nineteen + "/x")),
                   ok("TRUNCATED/x/y", text(nineteen + "a/x/y")),
                   ok("TRUNCATED/", text(std::string(21, 'a') + "/")), bad(6, text("text")),
                   bad(2, text("")), // a value of length 0
                   ok("text/plain", sized({0x83})), ok("image/jpeg", sized({1, 0x1E})),
                   ok("application/octet-stream", sized({2, 1, 0x1E})), // 286
                   ok("application/octet-stream", sized({4, 1, 0, 0, 3})),
                   ok("a/b;Charset=UTF-8", sized(text("a/b") + Octets{0x81, 0xEA})),
                   ok("TRUNCATED/b", sized(text(nineteen + "a/b")))},
                  {MMS_STATUS_NO_ROOM});
    const Octets word = text("=?UTF-8?B?w6k=?=");
    check_decoder(
        record<ContentTypePtr>(MMSDecodeContentType),
        {ok("text/plain;Charset=UTF-8;Name=\xC3\xA9{UTF-8}",
            sized(Octets{0x83, 0x81, 0xEA, 0x85} + word)),
         ok("multipart/related;Start=<s>;Type=a/b",
            sized(Octets{0xB3, 0x8A} + text("<s>") + Octets{0x89} + text("a/b"))),
         ok("image/jpeg;Filename;Name=x;X=5",
            sized(Octets{0x9E, 0x86, 0} + text("name") + text("x") + text("X") + Octets{0x85})),
         ok("text/plain", sized({0x83, 0xFF, 0x85, 0xF0, 2, 1, 2})),
         ok("text/plain;Charset=UTF-8", {0x1F, 0x03, 0x83, 0x81, 0xEA}),
         // The length is more than there is.
         bad(2, {5, 0x83}), bad(2, {5}), bad(6, {5, 0x1F, 0x83}), bad(2, {0, 0x83}),
         bad(2, {0x1F, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 0x83}),
         bad(6, {0x1F, 0x90, 0x80, 0x80, 0x80, 0x00}),
         // Media of no form, or without "/".
         bad(6, {1, 0x1F}), bad(7, {6, 5, 0, 0, 0, 0, 1}), bad(6, sized(text("text"))),
         bad(2, {3, 'a', '/', 'b', 0}),
         // A parameter that fails after one that does not.
         bad(2, sized(Octets{0x83, 0x85} + text("x") + Octets{0x81})),
         bad(7, sized(Octets{0x83, 0x85} + text("x") + Octets{0x85, 5, 0, 0, 0, 0, 0})),
         bad(6, sized(text("a/b") + text("X") + Octets{0x1F, 0x90, 0x80, 0x80, 0x80, 0}))},
        {MMS_STATUS_NO_ROOM, MMS_STATUS_WRONG_FORM});
}

// A content type with parameters given as name, value and character set.
struct Parameter {
    const char *name;
    const char *value;
    const char *charset = nullptr;
};

ContentTypePtr make(const char *media, const std::vector<Parameter> &parameters = {}) {
    ContentTypePtr type(MMS_CreateContentType(media));
    for (const Parameter &row : parameters) {
        MMS_Parameter *parameter = MMS_CreateParameter(row.name, row.value);
        parameter->pCharset = row.charset;
        EXPECT_EQ(MMS_LinkedList_AddParameter(type->pParameters, parameter), 1U);
    }
    return type;
}

EncodeCall encoding(const ContentTypePtr &type) {
    return [&type](uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only) {
        return MMSEncodeContentType(type.get(), output, size_only, room, count);
    };
}

TEST(ContentType, Encode) {
    const auto written = [](const Octets &expected, const ContentTypePtr &type) {
        SCOPED_TRACE(shown(type.get()));
        expect_written(expected, encoding(type));
    };
    const auto refused = [](uint32_t status, const ContentTypePtr &type) {
        SCOPED_TRACE(shown(type.get()));
        expect_refused(status, encoding(type));
    };
    written({0x9E}, make("image/jpeg"));
    written({0xA3}, make("Multipart/Mixed"));
    written({0x80}, make("*/*"));
    written(text("text/x-foo"), make("text/x-foo"));
    written(sized({0x83, 0x81, 0xEA}), make("text/plain", {{"Charset", "utf-8"}}));
    written(sized(text("a/b") + Octets{0x86, 0}), make("a/b", {{"filename", nullptr}}));
    written(sized(Octets{0x83, 0x85} + text("=?UTF-8?Q?=C3=A9?=") + text("X") + text("y")),
            make("text/plain", {{"Name", "\xC3\xA9", "UTF-8"}, {"X", "y"}}));
    const std::string name(40, 'n');
    written(Octets{0x1F, 43, 0x83, 0x85} + text(name),
            make("text/plain", {{"Name", name.c_str()}}));
    refused(5, make(nullptr));
    refused(5, make(""));
    refused(5, make("text"));
    refused(6, make("\x01/x"));
    refused(6, make("a/b", {{"Start", "\x01"}, {"Name", "x"}}));
    refused(6, make("a/b", {{"Name", "x"}, {"Start", "\x01"}}));
}

TEST(ContentType, ManyParameters) {
    ContentTypePtr type = make("text/plain", std::vector<Parameter>(255, {"Filename", nullptr}));
    Octets parameters;
    for (int i = 0; i < 255; ++i) {
        parameters = parameters + Octets{0x86, 0};
    }
    expect_written(sized(Octets{0x83} + parameters), encoding(type));
    ASSERT_EQ(MMS_LinkedList_AddParameter(type->pParameters, MMS_CreateParameter("Q", "1")), 1U);
    expect_refused(MMS_STATUS_OUT_OF_RANGE, encoding(type));

    // 65535 parameters fit into a list; 65536 fail the value.
    for (const uint32_t count : {65535U, 65536U}) {
        SCOPED_TRACE(count);
        const Octets value = sized(Octets{0x83} + Octets(size_t{2} * count)); // Q without a value
        uint32_t consumed = 77;
        MMS_ContentType *decoded = nullptr;
        const uint32_t status = MMSDecodeContentType(
            value.data(), static_cast<uint32_t>(value.size()), &consumed, &decoded);
        const ContentTypePtr owned(decoded);
        EXPECT_EQ(status, count == 65535 ? 1U : 7U);
        EXPECT_EQ(consumed, count == 65535 ? value.size() : 0);
        ASSERT_EQ(owned != nullptr, count == 65535);
        if (owned) {
            EXPECT_EQ(MMS_LinkedList_GetParameterCount(owned->pParameters), 65535);
        }
    }
}

TEST(Disposition, Decode) {
    const Octets word = text("=?UTF-8?Q?=C3=A9?=");
    check_decoder(
        record<ContentDispositionPtr>(MMSDecodeContentDisposition),
        {ok("Form-data", {1, 0x80}), ok("Attachment", {1, 0x81}), ok("Attachment", {0x1F, 1, 0x81}),
         bad(7, {1, 0x82}), bad(7, {1, 0x7F}), bad(2, {0}), bad(2, {2, 0x81}), bad(6, {0x81}),
         bad(6, {0x1F, 0x90, 0x80, 0x80, 0x80, 0x00}),
         ok("Attachment a.b", sized(Octets{0x81, 0x86} + text("a.b"))),
         ok("Attachment \xC3\xA9{UTF-8}", sized(Octets{0x81, 0x86} + word)),
         ok("Form-data a", sized(Octets{0x80} + text("FILENAME") + text("a"))),
         ok("Attachment 2", sized(Octets{0x81, 0x86} + word + Octets{0x86} + text("2"))),
         ok("Attachment", sized(Octets{0x81, 0x86} + text("1") + Octets{0x86, 0})),
         ok("Attachment 5", sized(Octets{0x81, 0x86, 0x85, 0x85} + text("x") + Octets{0xFF, 0x80})),
         ok("Attachment", sized(Octets{0x81, 0x85} + text("x"))),
         bad(2, sized(Octets{0x81, 0x86} + text("a") + Octets{0x86})),
         bad(7, sized(Octets{0x81, 0x86} + text("a") + Octets{0x86, 5, 0, 0, 0, 0, 0})),
         bad(2, sized({0x81, 0x86, 'a'}))});
}

TEST(Disposition, Encode) {
    const auto encode = [](const char *name, const char *filename,
                           const char *charset) -> EncodeCall {
        return [=](uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only) {
            const ContentDispositionPtr disposition(MMS_CreateContentDisposition(name, filename));
            disposition->pCharset = charset;
            return MMSEncodeContentDisposition(output, size_only, room, count, disposition.get());
        };
    };
    const std::string name(30, 'n');
    check_encoder(
        {writes({1, 0x81}, encode("attachment", nullptr, nullptr)),
         writes({1, 0x80}, encode("form-DATA", nullptr, nullptr)),
         writes({1, 0x81}, encode("inline", nullptr, nullptr)),
         writes(sized(Octets{0x81, 0x86} + text("a.b")), encode("Attachment", "a.b", nullptr)),
         writes({3, 0x80, 0x86, 0}, encode("Form-data", "", nullptr)),
         writes(sized(Octets{0x81, 0x86} + text("=?UTF-8?Q?=C3=A9?=")),
                encode("Attachment", "\xC3\xA9", "UTF-8")),
         writes(Octets{0x1F, 33, 0x81, 0x86} + text(name),
                encode("Attachment", name.c_str(), nullptr)),
         refuses(5, encode(nullptr, "a", nullptr)),
         refuses(6, encode("Attachment", "\x01", nullptr))});
}

} // namespace
