#include "codec/checks.hpp"
#include "encoder/messages.hpp"

namespace {

using namespace test;

const std::string nineteen(19, 'a');

TEST(ContentType, IsMultipart) {
    for (const char *media : {"multipart/mixed", "MULTIPART/x", "multipart/"}) {
        EXPECT_EQ(MMS_IsMultipart(ContentTypePtr(MMS_CreateContentType(media)).get()), 1U) << media;
    }
    for (const char *media : {"multipart", "multipartx/mixed", "multi/part", "/multipart", "",
                              static_cast<const char *>(nullptr)}) {
        EXPECT_EQ(MMS_IsMultipart(ContentTypePtr(MMS_CreateContentType(media)).get()), 0U);
    }
}

TEST(ContentType, Decode) {
    check_decoder(record<ContentTypePtr>(MMSDecodeContentType),
                  {ok("text/plain", {0x83}), ok("*/*", {0x80}), ok("multipart/mixed", {0x8C}),
                   ok("application/octet-stream", {0xB7}), ok("/", text("/")),
                   ok(nineteen + "/x", text(nineteen + "/x")),
                   ok("TRUNCATED/x/y", text(nineteen + "a/x/y")), bad(6, text("text")),
                   bad(2, text("")), ok("text/plain", "0183"_wire), ok("image/jpeg", "02011E"_wire),
                   ok("application/octet-stream", "0302011E"_wire), // 286
                   ok("application/octet-stream", "050401000003"_wire),
                   ok("a/b;Charset=UTF-8", sized("'a/b'81EA"_wire)),
                   ok("TRUNCATED/b", sized(text(nineteen + "a/b")))});
    check_decoder(record<ContentTypePtr>(MMSDecodeContentType),
                  {ok("text/plain;Charset=UTF-8;Name=\xC3\xA9{UTF-8}",
                      sized("8381EA 85'=?UTF-8?B?w6k=?='"_wire)),
                   ok("multipart/related;Start=<s>;Type=a/b", sized("B38A'<s>'89'a/b'"_wire)),
                   ok("image/jpeg;Filename;Name=x;X=5", sized("9E8600 'name''x' 'X'85"_wire)),
                   ok("text/plain", "0783FF85F0020102"_wire),
                   ok("text/plain;Charset=UTF-8", "1F038381EA"_wire),
                   // The length is more than there is.
                   bad(2, {5, 0x83}), bad(2, {5}), bad(6, {5, 0x1F, 0x83}), bad(2, {0, 0x83}),
                   bad(2, "1F8FFFFFFF7F83"_wire), bad(6, "1F9080808000"_wire),
                   // Media of no form, or without "/".
                   bad(6, {1, 0x1F}), bad(7, {6, 5, 0, 0, 0, 0, 1}), bad(6, sized(text("text"))),
                   bad(2, {3, 'a', '/', 'b', 0}),
                   // A parameter that fails after one that does not.
                   bad(2, sized("8385'x'81"_wire)), bad(7, sized("8385'x'85050000000000"_wire)),
                   bad(6, sized("'a/b''X'1F9080808000"_wire))},
                  {MMS_STATUS_NO_ROOM, MMS_STATUS_WRONG_FORM});
}

EncodeCall encoding(const ContentTypePtr &type) {
    return [&type](uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only) {
        return MMSEncodeContentType(type.get(), output, size_only, room, count);
    };
}

TEST(ContentType, Encode) {
    using Parameters = std::vector<std::pair<const char *, const char *>>;
    const std::string name(40, 'n');
    const struct {
        const char *media;
        Parameters parameters;
        uint32_t status;
        Octets expected;
    } rows[] = {
        {"image/jpeg", {}, 1, {0x9E}},
        {"Multipart/Mixed", {}, 1, {0xA3}},
        {"*/*", {}, 1, {0x80}},
        {"text/x-foo", {}, 1, text("text/x-foo")},
        {"text/plain", {{"Charset", "utf-8"}}, 1, "038381EA"_wire},
        {"a/b", {{"filename", nullptr}, {"X", "y"}}, 1, sized("'a/b'8600'X''y'"_wire)},
        {"text/plain", {{"Name", name.c_str()}}, 1, "1F2B8385"_wire + text(name)},
        {nullptr, {}, 5, {}},
        {"", {}, 5, {}},
        {"text", {}, 5, {}},
        {"\x01/x", {}, 6, {}},
        {"a/b", {{"Start", "\x01"}, {"Name", "x"}}, 6, {}},
        {"a/b", {{"Name", "x"}, {"Start", "\x01"}}, 6, {}},
        {"a/b", Parameters(255, {"Q", nullptr}), 1, sized(text("a/b") + repeated(255, {0x80, 0}))},
        {"a/b", Parameters(256, {"Q", nullptr}), 7, {}},
    };
    for (const auto &row : rows) {
        const ContentTypePtr type(new_type(row.media, row.parameters));
        SCOPED_TRACE(shown(type.get()));
        check_encoder({{row.status, row.expected, encoding(type)}});
    }
}

// 65535 parameters fit into a list; 65536 fail the value.
TEST(ContentType, ManyParameters) {
    for (const uint32_t count : {65535U, 65536U}) {
        const Octets value = sized(Octets{0x83} + Octets(size_t{2} * count)); // Q without a value
        uint32_t consumed = 77;
        MMS_ContentType *decoded = nullptr;
        const uint32_t status = MMSDecodeContentType(
            value.data(), static_cast<uint32_t>(value.size()), &consumed, &decoded);
        const ContentTypePtr owned(decoded);
        EXPECT_EQ(status, count == 65535 ? 1U : 7U);
        EXPECT_EQ(consumed, count == 65535 ? value.size() : 0);
        ASSERT_EQ(owned != nullptr, count == 65535);
        EXPECT_TRUE(!owned || owned->pParameters->nElement == 65535);
    }
}

TEST(Disposition, Decode) {
    check_decoder(record<ContentDispositionPtr>(MMSDecodeContentDisposition),
                  {ok("Form-data", {1, 0x80}), ok("Attachment", {0x1F, 1, 0x81}), bad(7, {1, 0x82}),
                   bad(7, {1, 0x7F}), bad(2, {0}), bad(2, {2, 0x81}), bad(6, {0x81}),
                   bad(6, "1F9080808000"_wire), ok("Attachment a.b", sized("8186'a.b'"_wire)),
                   ok("Attachment \xC3\xA9{UTF-8}", sized("8186'=?UTF-8?Q?=C3=A9?='"_wire)),
                   ok("Form-data a", sized("80'FILENAME''a'"_wire)),
                   ok("Attachment 2", sized("8186'=?UTF-8?Q?=C3=A9?='86'2'"_wire)),
                   ok("Attachment", sized("8186'1'8600"_wire)),
                   ok("Attachment 5", sized("818685 85'x'FF80"_wire)),
                   ok("Attachment", sized("8185'x'"_wire)), bad(2, sized("8186'a'86"_wire)),
                   bad(7, sized("8186'a'86050000000000"_wire)), bad(2, {3, 0x81, 0x86, 'a'})});
}

TEST(Disposition, Encode) {
    const auto encode = [](const char *name, const char *filename,
                           const char *charset = nullptr) -> EncodeCall {
        return [=](uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only) {
            const ContentDispositionPtr disposition(MMS_CreateContentDisposition(name, filename));
            disposition->pCharset = charset;
            return MMSEncodeContentDisposition(output, size_only, room, count, disposition.get());
        };
    };
    const std::string name(30, 'n');
    check_encoder(
        {writes({1, 0x80}, encode("form-DATA", nullptr)),
         writes({1, 0x81}, encode("inline", nullptr)),
         writes(sized("8186'a.b'"_wire), encode("Attachment", "a.b")),
         writes({3, 0x80, 0x86, 0}, encode("Form-data", "")),
         writes(sized("8186'=?UTF-8?Q?=C3=A9?='"_wire), encode("Attachment", "\xC3\xA9", "UTF-8")),
         writes("1F218186"_wire + text(name), encode("Attachment", name.c_str())),
         refuses(5, encode(nullptr, "a")), refuses(6, encode("Attachment", "\x01"))});
}

} // namespace
