#include <gtest/gtest.h>

#include "encoder/messages.hpp"

namespace {

using namespace test;

uint32_t size_status(const MMSLib_Message *message) {
    uint32_t size = 77;
    const uint32_t status = MMS_Encoder_GetEncodedMessageSize(message, &size, 0);
    EXPECT_EQ(status == 1, size != 0);
    return status;
}

TEST(Refused, MandatoryHeadersMissing) {
    for (const Octets &recipient : {"97'a'"_wire, "82'a'"_wire, "81'a'"_wire}) {
        encode(decode("8C80 98'T1' 8D92"_wire + recipient + "8483"_wire).message.get(), 1);
    }
    encode(decode("8C88 8D92 8B'm' 97'a' 9B80 8500 890380'a'"_wire).message.get(), 1);
    for (const Octets &lacking : {"8C80 98'T1' 8D92 8483"_wire, "98'T1' 8D92"_wire,
                                  "8C88 8D92 8B'm' 97'a' 9B80 8500"_wire}) {
        const Decoded decoded = decode(lacking);
        encode(decoded.message.get(), 1, 5);
        EXPECT_EQ(0U, MMSLib_GetSize(decoded.message.get()));
    }
    EXPECT_EQ(0U, MMSLib_GetSize(nullptr));
}

TEST(Refused, Messages) {
    struct {
        uint32_t status;
        std::function<void(MMS_Container *)> fill;
    } const cases[] = {
        {5, [](MMS_Container *c) { MMS_DelEntity(c, 0); }},
        {5, [](MMS_Container *c) { MMSLib_SetTo(c, MMS_Group_Create()); }},
        {5, [](MMS_Container *c) { MMSLib_SetSubject(c, MMS_CreateEncodedString("s", "KOI8-R")); }},
        {6, [](MMS_Container *c) { MMSLib_SetTo(c, new_group("a", nullptr, "\x7F")); }},
        {6, [](MMS_Container *c) { MMSLib_SetGenericTextField(MMS_GetEntity(c, 0), "a", "b"); }},
        {6, [](MMS_Container *c) { MMS_SetField(MMS_GetEntity(c, 0), "X-Mms-Store", slot(128)); }},
        {6, [](MMS_Container *c) { MMS_SetField(MMS_GetEntity(c, 0), "X-Mms-MM-State", slot(9)); }},
        {5, [](MMS_Container *c) { MMS_SetField(MMS_GetEntity(c, 0), "Subject", nullptr); }},
        {5, [](MMS_Container *c) { MMSLib_SetContentType(c, new_type("text")); }},
        {5,
         [](MMS_Container *c) { // a part without a content type
             MMSLib_SetContentType(c, new_type("multipart/mixed"));
             add_entity(c);
         }},
        {5,
         [](MMS_Container *c) { // a multipart entity without a container
             MMSLib_SetContentType(c, new_type("multipart/mixed"));
             add_part(c, "multipart/mixed", "")->isMultipart = 1;
         }},
        {5,
         [](MMS_Container *c) { // deep inside
             MMSLib_SetContentType(c, new_type("multipart/mixed"));
             add_entity(add_multipart(add_multipart(c, "multipart/mixed"), "multipart/mixed"));
         }},
        {7,
         [](MMS_Container *c) { // 4 GiB, of which no octet is read when sizes are wanted
             MMSLib_SetContentType(c, new_type("multipart/mixed"));
             MMS_Container *nested = add_multipart(c, "multipart/mixed");
             add_part(nested, "text/plain", "x")->contentLength = 0x80000000;
             add_part(nested, "text/plain", "x")->contentLength = 0x80000000;
         }},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(i);
        const MessagePtr message = new_message(0x81);
        cases[i].fill(message->pContainer);
        EXPECT_EQ(cases[i].status, size_status(message.get()));
        encode(message.get(), 0, cases[i].status);
        if (cases[i].status != MMS_STATUS_OUT_OF_RANGE) {
            uint8_t buffer[2000];
            uint32_t written = 77;
            EXPECT_EQ(cases[i].status,
                      MMS_Encoder_Encode(message.get(), buffer, sizeof buffer, &written, 0));
            EXPECT_EQ(0U, written);
        }
    }
}

TEST(Encode, HeadersWithoutAPlaceAreLeftOut) {
    const MessagePtr message = new_message(0x85);
    MMS_Container *container = message->pContainer;
    MMS_Entity *entity = MMS_GetEntity(container, 0);
    MMS_SetContentId(entity, "id");
    MMS_SetContentLocation(entity, "loc");
    MMS_SetContentDisposition(entity, MMS_CreateContentDisposition("Attachment", nullptr));
    MMS_SetField(entity, "no header at all", slot(1));
    // These have no codec but a set of octets.
    MMS_SetField(entity, "X-Mms-Report-Allowed", slot(0x81));
    MMS_SetField(entity, "X-Mms-Store-Status", slot(0xE4));
    EXPECT_EQ("8C85 98'T1' 8D92 9181 A5E4"_wire, encode(message.get(), 1));

    // An empty display name is none; a part's MMS headers are not written; a text that no encoded
    // word can hold becomes empty; without a type the Content-Type still gets its code.
    MMS_SetField(entity, "X-Mms-Report-Allowed", slot(0x80));
    MMSLib_DelXMmsMessageType(container);
    MMSLib_SetTo(container, new_group("a", nullptr, ""));
    MMSLib_SetContentType(container, new_type("multipart/mixed"));
    MMS_Entity *part = add_part(container, "text/plain", "x");
    MMS_SetField(part, "Subject", MMS_CreateEncodedString("s", nullptr));
    MMS_SetContentLocation(part, std::string(400, '\xE9').c_str());
    EXPECT_EQ("98'T1' 8D92 9180 A5E4 97'a' 84 A3 01 0301 83 8E00 |x|"_wire, encode(message.get()));
}

} // namespace
