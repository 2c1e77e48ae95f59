#include "encoder/messages.hpp"

#include "decoder/render.hpp"

namespace test {

MessagePtr new_message(uint8_t type) {
    MessagePtr message(MMSLib_Message_Create());
    add_entity(message->pContainer);
    MMSLib_SetXMmsMessageType(message->pContainer, type);
    MMSLib_SetXMmsTransactionId(message->pContainer, "T1");
    MMSLib_SetXMmsVersion(message->pContainer, 1, 2);
    return message;
}

MMS_Group *new_group(const char *address, const char *charset, const char *display_name) {
    MMS_Group *group = MMS_Group_Create();
    char *name = display_name != nullptr ? heap_text(display_name) : nullptr;
    MMS_AddMailbox(group, MMS_CreateMailbox(128, name, MMS_CreateEncodedString(address, charset)));
    return group;
}

MMS_ContentType *new_type(const char *media,
                          const std::vector<std::pair<const char *, const char *>> &parameters) {
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
    MMS_Entity *part = add_part(container, media, "");
    MMS_Container *nested = MMS_Container_Create();
    MMS_SetField(part, INTERNAL_NESTED_MULTIPART_FIELD_NAME, nested);
    part->isMultipart = 1;
    return nested;
}

Octets everything() {
    const Octets smil = part("'application/smil' C022'<smil>' 'X-Foo''bar' 'X-Empty'00 "
                             "'Content-Duration''90'"_wire,
                             raw("<smil/>"));
    const Octets type = "83 810203E8 80'0.5' 8200 8802012C 8982 89'x/y' 8B'i' 'X-Own''v' 'X-None'00"
                        "'Application-ID''12345678901234567890123456789012'"
                        "85'=?UTF-8?Q?gr=C3=BC=C3=9Fe_=01=2Etxt?='"_wire;
    const Octets text = part(sized(type) + "8E'=?UTF-8?Q?caf=C3=A9=2Etxt?='"_wire, raw("hello"));
    const Octets picture =
        part("9D AE"_wire + sized("8186'=?UTF-8?Q?b=C3=A4r?='"_wire), Octets(200, 0x80));
    const Octets inner = body(2, picture + part("'a/b' AE0180"_wire));
    return concat({
        "8C84 98'T1' 8D92 8A82 8F82 9481 8680 9080 97"_wire,
        sized("EA'Zo\xC3\xAB <+15550101/TYPE=PLMN>'"_wire),
        "97'+15550102/TYPE=PLMN' 82"_wire,
        sized("83'carl@example.org'"_wire),
        "8100 89"_wire,
        sized("80"_wire + sized("0203F7'A <+15550101/TYPE=PLMN>'"_wire)),
        "96"_wire,
        sized("EA7F'\xC3\xA9t\xC3\xA9'"_wire),
        "9587 83'http://mmsc.example/?id=1' 8504FFFFFFFF 870680046553F100 88058103093A80"_wire,
        "8B'id@host' 8E03010000 92C4 930784'later' 99E3 9B80 BB81 B7'app' B8'reply' 84"_wire,
        sized("B3 8A'<smil>' 89'application/smil'"_wire),
        body(2, smil + part({0xA6}, body(2, text + part({0xA3}, inner)))),
    });
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
