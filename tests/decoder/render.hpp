// Decoded messages as texts, which reads all of what they hold, and the pieces of a multipart body.
#pragma once

#include <set>

#include "codec/checks.hpp"

namespace test {

inline std::string shown(const MMS_Container *container);

inline std::string shown(const MMS_Group *group) {
    std::string all;
    EXPECT_NE(MMS_GetMailboxCount(group), 0);
    for (uint32_t i = 0; i < MMS_GetMailboxCount(group); ++i) {
        const MMS_Mailbox *mailbox = MMS_GetMailbox(group, i);
        EXPECT_TRUE(mailbox->pAddress != nullptr || mailbox->pDisplayName != nullptr);
        all += (i == 0 ? "" : " & ") + shown(mailbox);
    }
    return all;
}

inline std::string shown_value(const MMS_Field *field, const char *name) {
    const void *value = field->pValue;
    switch (field->fieldId) {
    case 1: // Bcc, Cc, From, To
    case 2:
    case 9:
    case 12:
        return shown(static_cast<const MMS_Group *>(value));
    case 3: // Content-Disposition
        return shown(static_cast<const MMS_ContentDisposition *>(value));
    case 5: // Content-Id, Content-Location, Message-Id, X-Mms-Content-Location and so on
    case 6:
    case 10:
    case 13:
    case 17:
    case 28:
    case 56:
    case 57:
        return static_cast<const char *>(value);
    case 7: // Content-Type
        return shown(static_cast<const MMS_ContentType *>(value));
    case 11: // Subject, X-Mms-Response-Text
    case 25:
        return shown(static_cast<const MMS_EncodedString *>(value));
    case 15: // X-Mms-Delivery-Time, X-Mms-Expiry
    case 16:
        return shown(static_cast<const MMS_SpecialTime *>(value));
    case 59: // INTERNAL_Nested-Multipart
        return shown(static_cast<const MMS_Container *>(value));
    default: {
        const MMS_EnumeratedRange range = MMSGetEnumeratedRangeByFieldName(name);
        const uint32_t number = slot_value(field);
        EXPECT_TRUE(range.highest == 0 || (number >= range.lowest && number <= range.highest));
        return std::to_string(number);
    }
    }
}

// "Name=value, Name=value #body#"; long bodies are left out.
inline std::string shown(const MMS_Entity *entity) {
    std::string all;
    bool nested = false;
    for (uint32_t i = 0; i < MMS_LinkedList_GetFieldCount(entity->pFieldList); ++i) {
        const MMS_Field *field = MMS_LinkedList_FindFieldByPos(entity->pFieldList, i);
        const char *name = MMS_SearchFieldMapForName(field->fieldId);
        nested = nested || field->fieldId == 59;
        all += i == 0 ? "" : ", ";
        if (field->fieldId == 60) {
            const auto *data = static_cast<const MMS_GenericData *>(field->pValue);
            all += "'" + shown(data->pHeaderName) + "'=" + shown(data->pHeaderValue);
        } else {
            all += shown(name) + "=" + shown_value(field, name);
        }
    }
    const uint8_t *content = MMS_GetContent(entity);
    const uint32_t length = MMS_GetContentLength(entity);
    EXPECT_EQ(content != nullptr, length != 0);
    EXPECT_EQ(entity->isMultipart, nested ? 1 : 0);
    EXPECT_FALSE(nested && length != 0);
    if (length != 0) {
        const std::string body(content, content + length);
        all += " #" + (length < 100 ? body : std::to_string(length)) + "#";
    }
    return all;
}

// "(entity)(entity)"
inline std::string shown(const MMS_Container *container) {
    std::string all;
    for (uint32_t i = 0; i < MMS_GetEntityCount(container); ++i) {
        all += "(" + shown(MMS_GetEntity(container, i)) + ")";
    }
    return all;
}

// The fields and bodies of what `shown` gives, whatever their order.
inline std::multiset<std::string> pieces(const std::string &shown) {
    std::multiset<std::string> all;
    std::string piece;
    for (const char c : shown + ",") {
        if (c == ',' || c == '(' || c == ')' || c == '#') {
            all.insert(piece);
            piece.clear();
        } else {
            piece += c;
        }
    }
    return all;
}

inline std::string shown(const Decoded &decoded) {
    const std::string status = std::to_string(decoded.status) + " ";
    return status + (decoded.message ? shown(decoded.message->pContainer) : "no message");
}

// A session at the start of the PDU, with a message of its own.
struct Session {
    explicit Session(const Octets &pdu)
        : octets(exact(pdu)), message(MMSLib_Message_Create()), decoder(MMS_Decoder_Create()) {
        decoder->pCursor = octets.get();
        decoder->remaining = static_cast<uint32_t>(pdu.size());
        decoder->pMessage = message.get();
    }

    std::unique_ptr<uint8_t[]> octets;
    MessagePtr message;
    DecoderPtr decoder;
};

// A part: its two lengths, its headers (content type first), its data.
inline Octets part(const Octets &headers, const Octets &data = {}) {
    return uintvar(headers.size()) + uintvar(data.size()) + headers + data;
}

// A body of that many parts.
inline Octets body(size_t count, const Octets &parts) { return uintvar(count) + parts; }

} // namespace test
