#include <gtest/gtest.h>

#include "encoder/messages.hpp"

namespace {

using namespace test;

uint32_t size_status(const MMSLib_Message *message, uint8_t validate = 0) {
    uint32_t size = 77;
    const uint32_t status = MMS_Encoder_GetEncodedMessageSize(message, &size, validate);
    EXPECT_EQ(status == 1, size != 0);
    return status;
}

// Every mandatory header, missing alone, is missed; the same message without the check is written.
TEST(Validate, MandatoryHeaders) {
    const std::vector<const char *> with_id = {"X-Mms-Mms-Version", "Message-Id", "To"};
    const std::vector<const char *> with_transaction = {"X-Mms-Mms-Version",
                                                        "X-Mms-Transaction-Id"};
    std::vector<std::pair<uint8_t, std::vector<const char *>>> types;
    for (int type = 0x80; type <= 0x93; ++type) {
        types.emplace_back(static_cast<uint8_t>(type), with_transaction);
    }
    types[0x80 - 0x80].second.insert(types[0].second.end(), {"Content-Type", "To"});
    types[0x83 - 0x80].second.push_back("X-Mms-Status");
    types[0x86 - 0x80].second = with_id;
    types[0x86 - 0x80].second.insert(types[6].second.end(), {"Date", "X-Mms-Status"});
    types[0x87 - 0x80].second = with_id;
    types[0x87 - 0x80].second.push_back("X-Mms-Read-Status");
    types[0x88 - 0x80].second = types[0x87 - 0x80].second;
    types[0x88 - 0x80].second.insert(types[8].second.end(), {"Date", "From"});
    for (const auto &[type, headers] : types) {
        const MessagePtr message = everything();
        MMS_Container *container = message->pContainer;
        MMSLib_DelCc(container);
        MMSLib_DelBcc(container);
        MMSLib_SetXMmsMessageType(container, type);
        EXPECT_EQ(1U, size_status(message.get(), 1));
        for (const char *header : headers) {
            SCOPED_TRACE(std::to_string(type) + " " + header);
            MMS_Entity *entity = MMS_GetEntity(container, 0);
            const Decoded other = decode(encode(message.get()));
            MMS_Entity *without = MMS_GetEntity(other.message->pContainer, 0);
            MMS_DelField(without, header);
            for (uint32_t i = MMS_GetEntityCount(other.message->pContainer); i > 1; --i) {
                MMS_DelEntity(other.message->pContainer, i - 1);
            }
            EXPECT_EQ(5U, size_status(other.message.get(), 1));
            EXPECT_EQ(0U, MMSLib_GetSize(other.message.get()));
            encode(other.message.get(), 1, 5);
            EXPECT_FALSE(encode(other.message.get()).empty());
            EXPECT_NE(nullptr, MMS_FindField(entity, header));
        }
    }
}

TEST(Validate, OtherRules) {
    MessagePtr message = new_message(0x80);
    MMS_Container *container = message->pContainer;
    MMSLib_SetContentType(container, new_type("text/plain"));
    encode(message.get(), 1, 5);
    MMSLib_SetBcc(container, new_group("a"));
    EXPECT_FALSE(encode(message.get(), 1).empty());
    MMSLib_DelXMmsMessageType(container);
    encode(message.get(), 1, 5);
    // Without a type the Content-Type still gets its code, so that what is written can be read.
    EXPECT_EQ(wire("98'T1' 8D92 81'a' 84 83"), encode(message.get()));
    EXPECT_EQ(0U, MMSLib_GetSize(nullptr));
}

TEST(Refused, Messages) {
    struct {
        const char *name;
        uint32_t status;
        std::function<void(MMS_Container *)> fill;
    } const cases[] = {
        {"no entity", 5, [](MMS_Container *c) { MMS_DelEntity(c, 0); }},
        {"group without mailboxes", 5,
         [](MMS_Container *c) { MMSLib_SetTo(c, MMS_Group_Create()); }},
        {"mailbox without address", 5,
         [](MMS_Container *c) {
             MMS_Group *group = MMS_Group_Create();
             MMS_AddMailbox(group, MMS_CreateMailbox(128, heap_text("Name"), nullptr));
             MMSLib_SetFrom(c, group);
         }},
        {"unknown character set", 5,
         [](MMS_Container *c) { MMSLib_SetSubject(c, MMS_CreateEncodedString("s", "KOI8-R")); }},
        {"unknown character set of the sender", 5,
         [](MMS_Container *c) { MMSLib_SetFrom(c, new_group("a", "UNKNOWN")); }},
        {"text that starts with a control character", 6,
         [](MMS_Container *c) { MMSLib_SetMessageId(c, "\x01"); }},
        {"display name that starts with DEL", 6,
         [](MMS_Container *c) { MMSLib_SetTo(c, new_group("a", nullptr, "\x7F")); }},
        {"generic entity header among the MMS headers", 6,
         [](MMS_Container *c) { MMSLib_SetGenericTextField(MMS_GetEntity(c, 0), "a", "b"); }},
        {"header without a codec", 6,
         [](MMS_Container *c) { MMS_SetField(MMS_GetEntity(c, 0), "X-Mms-Store", slot(0x80)); }},
        {"octet outside a header's set", 6,
         [](MMS_Container *c) {
             MMS_SetField(MMS_GetEntity(c, 0), "X-Mms-Store-Status", slot(0xC2));
         }},
        {"media type without a slash", 5,
         [](MMS_Container *c) { MMSLib_SetContentType(c, new_type("text")); }},
        {"null media type", 5,
         [](MMS_Container *c) { MMSLib_SetContentType(c, new_type(nullptr)); }},
        {"part without a content type", 5,
         [](MMS_Container *c) {
             MMSLib_SetContentType(c, new_type("multipart/mixed"));
             add_entity(c);
         }},
        {"multipart entity without a container", 5,
         [](MMS_Container *c) {
             MMSLib_SetContentType(c, new_type("multipart/mixed"));
             add_part(c, "multipart/mixed", "")->isMultipart = 1;
         }},
        {"application id of 33 characters", 6,
         [](MMS_Container *c) {
             MMSLib_SetContentType(
                 c, new_type("a/b", {{"application-id", "123456789012345678901234567890123"}}));
         }},
        {"256 parameters", 7,
         [](MMS_Container *c) {
             MMSLib_SetContentType(
                 c, new_type("a/b", {256, std::pair<const char *, const char *>{"Q", "1"}}));
         }},
        {"failure deep inside", 5,
         [](MMS_Container *c) {
             MMSLib_SetContentType(c, new_type("multipart/mixed"));
             add_entity(add_multipart(add_multipart(c, "multipart/mixed"), "multipart/mixed"));
         }},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.name);
        const MessagePtr message = new_message(0x81);
        row.fill(message->pContainer);
        EXPECT_EQ(row.status, size_status(message.get()));
        uint8_t buffer[2000];
        uint32_t written = 77;
        EXPECT_EQ(row.status,
                  MMS_Encoder_Encode(message.get(), buffer, sizeof buffer, &written, 0));
        EXPECT_EQ(0U, written);
        encode(message.get(), 0, row.status);
    }
}

// Two parts that are 4 GiB together, of which no octet is read when only sizes are wanted.
TEST(Refused, SizeAbove32Bits) {
    const MessagePtr message = new_message(0x84);
    MMSLib_SetContentType(message->pContainer, new_type("multipart/mixed"));
    MMS_Container *nested = add_multipart(message->pContainer, "multipart/mixed");
    for (int i = 0; i < 2; ++i) {
        add_part(nested, "text/plain", "x")->contentLength = 0x80000000;
    }
    EXPECT_EQ(7U, size_status(message.get()));
    MMS_GetEntity(nested, 1)->contentLength = 0x7FFFFF00;
    EXPECT_EQ(1U, size_status(message.get()));
}

TEST(LeftOut, HeadersWithoutAPlace) {
    const MessagePtr message = new_message(0x85);
    MMS_Entity *entity = MMS_GetEntity(message->pContainer, 0);
    MMS_SetContentId(entity, "id");
    MMS_SetContentLocation(entity, "loc");
    MMS_SetContentDisposition(entity, MMS_CreateContentDisposition("Attachment", nullptr));
    MMS_SetField(entity, "Content-Language", slot(1));
    MMS_SetField(entity, "no header at all", slot(1));
    EXPECT_EQ(wire("8C85 98'T1' 8D92"), encode(message.get(), 1));

    // An empty display name is none; a part's MMS headers are not written.
    MMSLib_SetXMmsMessageType(message->pContainer, 0x84);
    MMSLib_SetTo(message->pContainer, new_group("a", nullptr, ""));
    MMSLib_SetContentType(message->pContainer, new_type("multipart/mixed"));
    MMS_Entity *part = add_part(message->pContainer, "text/plain", "x");
    MMS_SetField(part, "Subject", MMS_CreateEncodedString("s", nullptr));
    MMS_SetContentLocation(part, std::string(400, '\xE9').c_str());
    EXPECT_EQ(wire("8C84 98'T1' 8D92 97'a' 84 A3 01 0301 83 8E00 \"x\""), encode(message.get(), 1));
}

} // namespace
