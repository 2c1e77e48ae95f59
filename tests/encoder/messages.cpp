#include "encoder/messages.hpp"

#include <gtest/gtest.h>

namespace test {
namespace {

constexpr const char *anna = "+15550101/TYPE=PLMN";
constexpr const char *bert = "+15550102/TYPE=PLMN";

unsigned digit(char c) { return static_cast<unsigned>(c <= '9' ? c - '0' : c - 'A' + 10); }

// Messages that differ from the one before in their headers alone.
Example example(const char *name, uint8_t type, std::function<void(MMS_Container *)> fill,
                std::string_view notation, std::string_view again = {}) {
    return {name,
            [=] {
                MessagePtr message = new_message(type);
                fill(message->pContainer);
                return message;
            },
            wire(notation), wire(again.empty() ? notation : again)};
}

std::vector<Example> make_examples() {
    const auto set_octet = [](MMS_Container *container, const char *name, uint32_t octet) {
        MMS_SetField(MMS_GetEntity(container, 0), name, slot(octet));
    };
    return {
        example(
            "m-send-req", 0x80,
            [](MMS_Container *c) {
                MMSLib_SetTo(c, new_group(anna));
                MMSLib_SetSubject(c, MMS_CreateEncodedString("Hi", MMS_CHARSET_UTF_8));
                MMSLib_SetXMmsMessageClass(c, "personal");
                MMSLib_SetXMmsPriority(c, 0x81);
                MMSLib_SetXMmsExpiry(c, MMS_CreateSpecialTime(0, UINT32_MAX));
                MMSLib_SetXMmsDeliveryTime(c, MMS_CreateSpecialTime(0, 0));
                MMSLib_SetXMmsDeliveryReport(c, 0x80);
                MMSLib_SetContentType(c, new_type("text/plain", {{"charset", "utf-8"}}));
                MMS_SetContent(MMS_GetEntity(c, 0), reinterpret_cast<const uint8_t *>("hi"), 2, 0);
            },
            "8C80 98'T1' 8D92 890181 97'+15550101/TYPE=PLMN' 9604EA'Hi' 8680 84 038381EA \"hi\"",
            "8C80 98'T1' 8D92 890181 97'+15550101/TYPE=PLMN' 9604EA'Hi' 8680 9480 84 038381EA "
            "\"hi\""),
        example(
            "m-send-conf", 0x81,
            [](MMS_Container *c) {
                MMSLib_SetXMmsResponseStatus(c, 0xE2);
                MMSLib_SetXMmsResponseText(c, MMS_CreateEncodedString("no", nullptr));
                MMSLib_SetMessageId(c, "id1");
            },
            "8C81 98'T1' 8D92 92E2 93'no' 8B'id1'"),
        example(
            "m-notification-ind", 0x82,
            [](MMS_Container *c) {
                MMSLib_SetFrom(c, new_group(anna, nullptr, "Anna"));
                MMSLib_SetXMmsMessageClass(c, "PERSONAL");
                MMSLib_SetXMmsMessageSize(c, 300);
                MMSLib_SetXMmsExpiry(c, MMS_CreateSpecialTime(0, 3600));
                MMSLib_SetXMmsContentLocation(c, "http://m/1");
            },
            "8C82 98'T1' 8D92 891C80'Anna <+15550101/TYPE=PLMN>' 8A80 8E02012C 880481020E10 "
            "83'http://m/1'"),
        example(
            "m-notifyresp-ind", 0x83,
            [=](MMS_Container *c) {
                MMSLib_SetXMmsStatus(c, 0x81);
                set_octet(c, X_MMS_REPORT_ALLOWED_FIELD_NAME, 0x81);
            },
            "8C83 98'T1' 8D92 9581 9181", "8C83 98'T1' 8D92 9581"),
        example(
            "m-retrieve-conf", 0x84,
            [](MMS_Container *c) {
                MMSLib_SetDate(c, 0);
                MMSLib_SetXMmsMessageClass(c, "x-class");
                MMSLib_SetXMmsPriority(c, 0x81);
                MMSLib_SetContentType(c, new_type("multipart/mixed"));
                MMS_SetContentLocation(add_part(c, "text/plain", "hi"), "a.txt");
                MMS_Container *nested = add_multipart(c, "multipart/alternative");
                MMS_SetContentId(add_part(nested, "text/x-own", ""), "<b>");
            },
            "8C84 98'T1' 8D92 850100 8A'x-class' 8F81 84 A3 02"
            "0802 83 8E'a.txt' \"hi\""
            "0114 A6 01 1100 'text/x-own' C022'<b>'",
            "8C84 98'T1' 8D92 850100 8A'x-class' 8F81 8681 9081 84 A3 02"
            "0802 83 8E'a.txt' \"hi\""
            "0114 A6 01 1100 'text/x-own' C022'<b>'"),
        example(
            "m-acknowledge-ind", 0x85, [](MMS_Container *) {}, "8C85 98'T1' 8D92"),
        example(
            "m-delivery-ind", 0x86,
            [](MMS_Container *c) {
                MMSLib_SetXMmsStatus(c, 0x86);
                MMSLib_SetMessageId(c, "id1");
                MMSLib_SetTo(c, new_group(anna, MMS_CHARSET_UTF_8));
                MMSLib_SetDate(c, 0x3B9ACA00);
            },
            "8C86 8D92 8B'id1' 9586 9715EA'+15550101/TYPE=PLMN' 85043B9ACA00"),
        example(
            "m-read-rec-ind", 0x87,
            [](MMS_Container *c) {
                MMSLib_SetTo(c, new_group(anna));
                MMSLib_SetMessageId(c, "id1");
                MMSLib_SetXMmsReadStatus(c, 0x81);
            },
            "8C87 8D92 8B'id1' 890181 97'+15550101/TYPE=PLMN' 9B81"),
        example(
            "m-read-orig-ind", 0x88,
            [](MMS_Container *c) {
                MMSLib_SetMessageId(c, "id1");
                MMSLib_SetTo(c, new_group(anna));
                MMSLib_SetFrom(c, new_group(bert, MMS_CHARSET_ISO_10646_UCS_2));
                MMSLib_SetDate(c, 255);
                MMSLib_SetXMmsReadStatus(c, 0x80);
            },
            "8C88 8D92 8B'id1' 97'+15550101/TYPE=PLMN' 89198017 0203E8'+15550102/TYPE=PLMN' "
            "8501FF 9B80"),
        example(
            "m-forward-req", 0x89,
            [](MMS_Container *c) {
                MMS_Group *group = new_group(anna);
                MMS_AddMailbox(group, MMS_CreateMailbox(128, heap_text("B"),
                                                        MMS_CreateEncodedString(bert, nullptr)));
                MMSLib_SetCc(c, group);
                MMSLib_SetXMmsDeliveryTime(c, MMS_CreateSpecialTime(1, 0));
                MMSLib_SetXMmsReadReport(c, 0x81);
            },
            "8C89 98'T1' 8D92 890181 82'+15550101/TYPE=PLMN' 82'B <+15550102/TYPE=PLMN>' "
            "8703800100 9081"),
        example(
            "m-forward-conf", 0x8A, [](MMS_Container *c) { MMSLib_SetXMmsResponseStatus(c, 0x80); },
            "8C8A 98'T1' 8D92 9280"),
        example(
            "m-mbox-store-req", 0x8B,
            [=](MMS_Container *c) { set_octet(c, X_MMS_MM_STATE_FIELD_NAME, 0x84); },
            "8C8B 98'T1' 8D92 A384", "8C8B 98'T1' 8D92"),
        example(
            "m-mbox-store-conf", 0x8C,
            [=](MMS_Container *c) { set_octet(c, X_MMS_STORE_STATUS_FIELD_NAME, 0xE4); },
            "8C8C 98'T1' 8D92 A5E4", "8C8C 98'T1' 8D92"),
        example(
            "m-mbox-view-req", 0x8D,
            [](MMS_Container *c) { MMSLib_SetXMmsGenericTextField(c, "X-Mms-Applic-ID", "a.b"); },
            "8C8D 98'T1' 8D92 B7'a.b'"),
        example(
            "m-mbox-view-conf", 0x8E,
            [](MMS_Container *c) { MMSLib_SetContentType(c, new_type("multipart/related")); },
            "8C8E 98'T1' 8D92 84 B3 00"),
        example(
            "m-mbox-upload-req", 0x8F,
            [=](MMS_Container *c) {
                set_octet(c, X_MMS_REPLY_CHARGING_FIELD_NAME, 0x83);
                MMSLib_SetContentType(c, new_type("image/jpeg"));
            },
            "8C8F 98'T1' 8D92 9C83 84 9E", "8C8F 98'T1' 8D92 84 9E"),
        example(
            "m-mbox-upload-conf", 0x90, [](MMS_Container *c) { MMSLib_SetMessageId(c, "\xE9"); },
            "8C90 98'T1' 8D92 8B7FE900"),
        example(
            "m-mbox-delete-req", 0x91, [](MMS_Container *c) { MMSLib_SetXMmsVersion(c, 1, 3); },
            "8C91 98'T1' 8D93"),
        example(
            "m-mbox-delete-conf", 0x92,
            [](MMS_Container *c) { MMSLib_SetXMmsRetrieveStatus(c, 0xC2); },
            "8C92 98'T1' 8D92 99C2"),
        example(
            "m-mbox-descr", 0x93,
            [](MMS_Container *c) {
                MMSLib_SetXMmsSenderVisibility(c, 0x81);
                MMSLib_SetXMmsDrmContent(c, 0x80);
                MMSLib_SetBcc(c, new_group(anna));
            },
            "8C93 98'T1' 8D92 9481 BB80 81'+15550101/TYPE=PLMN'"),
    };
}

void fill_headers(MMS_Container *c) {
    MMSLib_SetXMmsMessageClass(c, "Informational");
    MMSLib_SetXMmsPriority(c, 0x82);
    MMSLib_SetXMmsSenderVisibility(c, 0x81);
    MMSLib_SetXMmsDeliveryReport(c, 0x80);
    MMSLib_SetXMmsReadReport(c, 0x80);
    MMS_Group *to = new_group(anna, MMS_CHARSET_UTF_8, "Zo\xC3\xAB");
    MMS_AddMailbox(to, MMS_CreateMailbox(128, nullptr, MMS_CreateEncodedString(bert, nullptr)));
    MMSLib_SetTo(c, to);
    MMSLib_SetCc(c, new_group("carl@example.org", MMS_CHARSET_US_ASCII));
    MMSLib_SetBcc(c, new_group(""));
    MMSLib_SetFrom(c, new_group(anna, MMS_CHARSET_UTF_16, "A"));
    MMSLib_SetSubject(c, MMS_CreateEncodedString("\xC3\xA9t\xC3\xA9", MMS_CHARSET_UTF_8));
    MMSLib_SetXMmsStatus(c, 0x87);
    MMSLib_SetXMmsContentLocation(c, "http://mmsc.example/?id=1");
    MMSLib_SetDate(c, UINT32_MAX);
    MMSLib_SetXMmsDeliveryTime(c, MMS_CreateSpecialTime(1, 1700000000));
    MMSLib_SetXMmsExpiry(c, MMS_CreateSpecialTime(0, 604800));
    MMSLib_SetMessageId(c, "id@host");
    MMSLib_SetXMmsMessageSize(c, 0x10000);
    MMSLib_SetXMmsResponseStatus(c, 0xC4);
    MMSLib_SetXMmsResponseText(c, MMS_CreateEncodedString("later", MMS_CHARSET_ISO_8859_1));
    MMSLib_SetXMmsRetrieveStatus(c, 0xE3);
    MMSLib_SetXMmsReadStatus(c, 0x80);
    MMSLib_SetXMmsDrmContent(c, 0x81);
    MMSLib_SetXMmsGenericTextField(c, "X-Mms-Applic-ID", "app");
    MMSLib_SetXMmsGenericTextField(c, "X-Mms-Reply-Applic-ID", "reply");
    MMSLib_SetContentType(
        c, new_type("multipart/related", {{"Start", "<smil>"}, {"Type", "application/smil"}}));
}

} // namespace

Octets wire(std::string_view notation) {
    Octets result;
    for (size_t i = 0; i < notation.size();) {
        const char c = notation[i];
        if (c == ' ') {
            ++i;
        } else if (c == '\'' || c == '"') {
            const size_t end = notation.find(c, i + 1);
            result = result + raw(notation.substr(i + 1, end - i - 1));
            if (c == '\'') {
                result.push_back(0);
            }
            i = end + 1;
        } else {
            result.push_back(static_cast<uint8_t>(digit(c) << 4 | digit(notation.at(i + 1))));
            i += 2;
        }
    }
    return result;
}

MessagePtr new_message(uint8_t type) {
    MessagePtr message(MMSLib_Message_Create());
    add_entity(message->pContainer);
    MMSLib_SetXMmsMessageType(message->pContainer, type);
    MMSLib_SetXMmsTransactionId(message->pContainer, "T1");
    MMSLib_SetXMmsVersion(message->pContainer, 1, 2);
    return message;
}

MMS_Group *new_group(std::string_view address, const char *charset, const char *display_name) {
    MMS_Group *group = MMS_Group_Create();
    MMS_AddMailbox(
        group, MMS_CreateMailbox(128, display_name != nullptr ? heap_text(display_name) : nullptr,
                                 MMS_CreateEncodedString(std::string(address).c_str(), charset)));
    return group;
}

MMS_ContentType *new_type(const char *media,
                          std::vector<std::pair<const char *, const char *>> parameters) {
    MMS_ContentType *type = MMS_CreateContentType(media);
    for (const auto &[name, value] : parameters) {
        MMS_LinkedList_AddParameter(type->pParameters, MMS_CreateParameter(name, value));
    }
    return type;
}

MMS_Entity *add_part(MMS_Container *container, const char *media, std::string_view content) {
    MMS_Entity *part = add_entity(container);
    MMS_SetContentType(part, new_type(media));
    MMS_SetContent(part, reinterpret_cast<const uint8_t *>(content.data()),
                   static_cast<uint32_t>(content.size()), 0);
    return part;
}

MMS_Container *add_multipart(MMS_Container *container, const char *media) {
    MMS_Entity *part = add_entity(container);
    MMS_Container *nested = MMS_Container_Create();
    MMS_SetContentType(part, new_type(media));
    MMS_SetField(part, INTERNAL_NESTED_MULTIPART_FIELD_NAME, nested);
    part->isMultipart = 1;
    return nested;
}

const std::vector<Example> &examples() {
    static const std::vector<Example> all = make_examples();
    return all;
}

MessagePtr everything() {
    MessagePtr message = new_message(0x84);
    MMS_Container *c = message->pContainer;
    fill_headers(c);
    MMS_Entity *smil = add_part(c, "application/smil", "<smil/>");
    MMS_SetContentId(smil, "<smil>");
    MMSLib_SetGenericTextField(smil, "X-Foo", "bar");
    MMSLib_SetGenericTextField(smil, "X-Empty", "");
    MMS_SetContentDuration(smil, 90);
    MMS_Container *nested = add_multipart(c, "multipart/alternative");
    MMS_Entity *text = add_part(nested, "text/plain", "hello");
    MMS_SetContentLocation(text, "caf\xC3\xA9.txt");
    MMS_ContentType *type = MMS_GetContentType(text);
    for (const auto &[name, value] : std::vector<std::pair<const char *, const char *>>{
             {"Charset", "ISO-10646-UCS-2"},
             {"Q", "0.5"},
             {"Level", nullptr},
             {"Padding", "300"},
             {"Type", "text/html"},
             {"Type", "x/y"},
             {"Start-info", "i"},
             {"X-Own", "v"},
             {"X-None", nullptr},
             {"Application-ID", "12345678901234567890123456789012"}}) {
        MMS_LinkedList_AddParameter(type->pParameters, MMS_CreateParameter(name, value));
    }
    MMS_Parameter *file = MMS_CreateParameter("Name", "gr\xC3\xBC\xC3\x9F"
                                                      "e \x01.txt");
    file->pCharset = MMS_CHARSET_UTF_8;
    MMS_LinkedList_AddParameter(type->pParameters, file);
    MMS_Container *inner = add_multipart(nested, "multipart/mixed");
    MMS_Entity *picture = add_part(inner, "image/gif", std::string(200, '\x80'));
    MMS_ContentDisposition *disposition = MMS_CreateContentDisposition("Attachment", "b\xC3\xA4r");
    disposition->pCharset = MMS_CHARSET_UTF_8;
    MMS_SetContentDisposition(picture, disposition);
    MMS_SetContentDisposition(add_part(inner, "a/b", ""),
                              MMS_CreateContentDisposition("Form-data", nullptr));
    return message;
}

Octets encode(const MMSLib_Message *message, uint8_t validate, uint32_t expected_status) {
    uint8_t untouched = 0;
    uint8_t *pdu = &untouched;
    uint32_t length = 77;
    const uint32_t status = MMSLib_EncodeMessage(message, &pdu, &length, validate);
    EXPECT_EQ(expected_status, status);
    if (status != MMS_STATUS_OK) {
        EXPECT_EQ(&untouched, pdu);
        EXPECT_EQ(77U, length);
        return {};
    }
    Octets octets(pdu, pdu + length);
    std::free(pdu);
    return octets;
}

} // namespace test
