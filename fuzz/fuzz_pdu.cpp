// Any octets as a PDU: decoded, read through the getters, encoded, decoded and encoded again. Then
// the same octets as a multipart body and as the headers of a part.
#include <algorithm>
#include <cctype>
#include <set>

#include "fuzz.hpp"

namespace {

using namespace fuzz;

// --- getters -------------------------------------------------------------------------------------

template <auto get>
const void *pointer(const MMS_Container *container) {
    return get(container);
}

template <auto get>
const void *octet(const MMS_Container *container) {
    return reinterpret_cast<const void *>(static_cast<uintptr_t>(get(container)));
}

template <auto get>
const void *number(const MMS_Container *container) {
    uint32_t value = 0;
    REQUIRE(get(container, &value) == 1 || value == 0);
    return reinterpret_cast<const void *>(static_cast<uintptr_t>(value));
}

const void *version(const MMS_Container *container) {
    uint8_t major = 0;
    uint8_t minor = 0;
    const uint8_t octet = MMSLib_GetXMmsVersion(container, &major, &minor);
    REQUIRE(octet == (major << 4 | minor));
    return reinterpret_cast<const void *>(static_cast<uintptr_t>(octet));
}

struct Getter {
    const char *name;
    const void *(*get)(const MMS_Container *);
};

const Getter getters[] = {
    {"X-Mms-Message-Type", octet<MMSLib_GetXMmsMessageType>},
    {"X-Mms-Transaction-Id", pointer<MMSLib_GetXMmsTransactionId>},
    {"X-Mms-Mms-Version", version},
    {"Content-Type", pointer<MMSLib_GetContentType>},
    {"To", pointer<MMSLib_GetTo>},
    {"Cc", pointer<MMSLib_GetCc>},
    {"Bcc", pointer<MMSLib_GetBcc>},
    {"From", pointer<MMSLib_GetFrom>},
    {"Subject", pointer<MMSLib_GetSubject>},
    {"X-Mms-Status", octet<MMSLib_GetXMmsStatus>},
    {"X-Mms-Message-Class", pointer<MMSLib_GetXMmsMessageClass>},
    {"X-Mms-Priority", octet<MMSLib_GetXMmsPriority>},
    {"X-Mms-Content-Location", pointer<MMSLib_GetXMmsContentLocation>},
    {"Date", number<MMSLib_GetDate>},
    {"X-Mms-Delivery-Report", octet<MMSLib_GetXMmsDeliveryReport>},
    {"X-Mms-Delivery-Time", pointer<MMSLib_GetXMmsDeliveryTime>},
    {"X-Mms-Expiry", pointer<MMSLib_GetXMmsExpiry>},
    {"Message-Id", pointer<MMSLib_GetMessageId>},
    {"X-Mms-Message-Size", number<MMSLib_GetXMmsMessageSize>},
    {"X-Mms-Read-Report", octet<MMSLib_GetXMmsReadReport>},
    {"X-Mms-Response-Status", octet<MMSLib_GetXMmsResponseStatus>},
    {"X-Mms-Response-Text", pointer<MMSLib_GetXMmsResponseText>},
    {"X-Mms-Sender-Visibility", octet<MMSLib_GetXMmsSenderVisibility>},
    {"X-Mms-Retrieve-Status", octet<MMSLib_GetXMmsRetrieveStatus>},
    {"X-Mms-Read-Status", octet<MMSLib_GetXMmsReadStatus>},
    {"X-Mms-Drm-Content", octet<MMSLib_GetXMmsDrmContent>},
};

// Each getter gives what the first field of its header holds.
void read_through_getters(const MMS_Container *container) {
    for (const Getter &getter : getters) {
        const MMS_Entity *entity = MMS_FindEntityByFieldName(container->pEntityList, getter.name);
        const MMS_Field *field = entity != nullptr ? MMS_FindField(entity, getter.name) : nullptr;
        REQUIRE((entity != nullptr) == (field != nullptr));
        REQUIRE(getter.get(container) == (field != nullptr ? field->pValue : nullptr));
    }
    for (const char *name : {"X-Mms-Applic-ID", "x-mms-reply-applic-id", "Content-Id"}) {
        const char *text = MMSLib_GetXMmsGenericTextField(container, name);
        REQUIRE(text == nullptr || show(text).size() > 1);
    }
}

// Each header stands once in an entity, and each name among its generic headers, in any letter
// case.
void require_unique(const MMS_Container *container) {
    each_carried<MMS_Entity>(container->pEntityList, [](const MMS_Entity *entity) {
        std::set<std::string> names;
        each<MMS_Field>(entity->pFieldList, [&](const MMS_Field *field) {
            std::string name = std::to_string(field->fieldId);
            if (field->fieldId == 60) {
                name = static_cast<const MMS_GenericData *>(field->pValue)->pHeaderName;
                std::transform(name.begin(), name.end(), name.begin(),
                               [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
                name += ":";
            } else if (field->fieldId == 59) {
                require_unique(static_cast<const MMS_Container *>(field->pValue));
            }
            REQUIRE(names.insert(name).second);
        });
    });
}

// --- what has a faithful wire form ---------------------------------------------------------------

// A text that begins with one of these is written as it is and read as a length.
constexpr const char *line_white = "\t\n\r";

bool faithful(const char *text) { return !begins_with(text, line_white); }

// A quote at the start is taken for that of a Quoted-string; the text of an encoded word is decoded
// where file names and locations are read.
bool faithful_name(const char *text) {
    return faithful(text) && !begins_with(text, "\"") && !begins_as_word(text);
}

bool faithful(const MMS_Mailbox *mailbox) {
    const char *name = mailbox->pDisplayName;
    const char *address = mailbox->pAddress != nullptr ? mailbox->pAddress->pText : "<";
    if (std::strpbrk(address, "<> \t\n") != nullptr || !faithful(address)) {
        return false;
    }
    return name == nullptr || *name == '\0' ||
           (std::strpbrk(name, "<\n") == nullptr && !begins_with(name, "\" \t\r") &&
            std::strchr(" \t", name[std::strlen(name) - 1]) == nullptr);
}

bool faithful(const MMS_Parameter *parameter) {
    return *parameter->pName != '\0' && faithful(parameter->pName) &&
           faithful_name(parameter->pValue);
}

bool faithful(const MMS_Entity *entity);

template <typename Record>
bool all_faithful(slList *list) {
    bool all = true;
    each_carried<Record>(list, [&](const Record *record) { all = all && faithful(record); });
    return all;
}

bool faithful(const MMS_Field *field) {
    const auto *text = static_cast<const char *>(field->pValue);
    switch (field->fieldId) {
    case 1: // Bcc, Cc, From, To
    case 2:
    case 9:
    case 12:
        return all_faithful<MMS_Mailbox>(
            static_cast<const MMS_Group *>(field->pValue)->pMailboxList);
    case 3: {
        // A file name that no text stands for is sent without a value, and read as none at all.
        const char *name = static_cast<const MMS_ContentDisposition *>(field->pValue)->pFilename;
        return faithful_name(name) &&
               (name == nullptr || (*name != '\0' && MMSUtilQEncode(name, nullptr) <= 753));
    }
    case 6: // Content-Location
        return faithful(text) && !begins_as_word(text);
    case 5: // Content-Id and the other texts
    case 10:
    case 13:
    case 17:
    case 28:
    case 56:
    case 57:
        return faithful(text);
    case 7: {
        const auto *type = static_cast<const MMS_ContentType *>(field->pValue);
        return faithful(type->pMediaType) && all_faithful<MMS_Parameter>(type->pParameters);
    }
    case 11: // Subject, X-Mms-Response-Text
    case 25:
        return faithful(static_cast<const MMS_EncodedString *>(field->pValue)->pText);
    case 59: {
        // A nested body without parts is written as no octet at all, not even their number.
        const auto *nested = static_cast<const MMS_Container *>(field->pValue);
        return MMS_GetEntityCount(nested) != 0 && all_faithful<MMS_Entity>(nested->pEntityList);
    }
    case 60: {
        const auto *data = static_cast<const MMS_GenericData *>(field->pValue);
        return faithful(data->pHeaderName) && faithful(data->pHeaderValue);
    }
    default:
        return true;
    }
}

bool faithful(const MMS_Entity *entity) {
    bool all = true;
    each<MMS_Field>(entity->pFieldList,
                    [&](const MMS_Field *field) { all = all && faithful(field); });
    return all;
}

// Whether reading has nothing to add; a PDU whose header block broke off has not got its defaults.
bool has_defaults(const MMS_Container *container) {
    const auto has = [&](const char *name) {
        return MMS_FindEntityByFieldName(container->pEntityList, name) != nullptr;
    };
    switch (MMSLib_GetXMmsMessageType(container)) {
    case 0x80:
        return has("X-Mms-Message-Class") && has("X-Mms-Sender-Visibility") &&
               has("X-Mms-Priority");
    case 0x84:
        return has("X-Mms-Message-Class") && has("X-Mms-Delivery-Report") &&
               has("X-Mms-Priority") && has("X-Mms-Read-Report");
    default:
        return true;
    }
}

// --- round trips ---------------------------------------------------------------------------------

// Encodes the message and decodes that. A message whose values all have a faithful wire form has to
// come back so that it gives the same octets.
test::Decoded round_trip(const MMSLib_Message *message) {
    const MMS_Container *container = message->pContainer;
    const Encoded encoded = encode(message);
    if (encoded.status != MMS_STATUS_OK) {
        REQUIRE(encoded.status == MMS_STATUS_MISSING || encoded.status == MMS_STATUS_WRONG_FORM ||
                encoded.status == MMS_STATUS_OUT_OF_RANGE);
        return {MMS_STATUS_MALFORMED, nullptr};
    }
    test::Decoded back = decode(encoded.octets);
    if (back.message) {
        read_through_getters(back.message->pContainer);
        show(back.message->pContainer);
    }
    if (all_faithful<MMS_Entity>(container->pEntityList)) {
        REQUIRE(back.status == MMS_STATUS_OK && back.message);
        const Encoded again = encode(back.message.get());
        REQUIRE(again.status == MMS_STATUS_OK);
        if (has_defaults(container)) {
            REQUIRE_SAME(again.octets, encoded.octets);
        }
    }
    return back;
}

void as_pdu(const uint8_t *data, size_t size) {
    const test::Decoded first = decode(data, size);
    if (!first.message) {
        return;
    }
    read_through_getters(first.message->pContainer);
    require_unique(first.message->pContainer);
    show(first.message->pContainer);
    const test::Decoded second = round_trip(first.message.get());
    if (second.message) {
        round_trip(second.message.get());
    }
}

// --- steps ---------------------------------------------------------------------------------------

// A session at the start of the octets.
struct Session {
    Session(const uint8_t *data, size_t size)
        : block(data, size), message(MMSLib_Message_Create()), decoder(MMS_Decoder_Create()) {
        decoder->pCursor = block.data();
        decoder->remaining = block.size();
        decoder->pMessage = message.get();
    }
    void require_inside() const {
        REQUIRE(decoder->remaining <= block.size());
        REQUIRE(decoder->pCursor >= block.data());
        REQUIRE(decoder->pCursor + decoder->remaining <= block.data() + block.size());
        REQUIRE(decoder->depth == 0);
    }

    Block block;
    MessagePtr message;
    test::DecoderPtr decoder;
};

using Write = uint32_t (*)(const void *, uint8_t *, uint32_t, uint8_t, uint32_t *);

void require_passes_agree(const void *record, Write write) {
    uint32_t size = 77;
    uint32_t written = 77;
    const uint32_t status = write(record, nullptr, 0, 1, &size);
    const Block block(size);
    if (status == MMS_STATUS_OK) {
        REQUIRE(write(record, block.data(), size, 0, &written) == status && written == size);
    } else {
        REQUIRE(size == 0);
    }
}

void as_multipart(const uint8_t *data, size_t size) {
    const Session session(data, size);
    const test::ContainerPtr container(MMS_Container_Create());
    const uint32_t status = DecodeMultipart(session.decoder.get(), container.get());
    session.require_inside();
    REQUIRE(status != MMS_STATUS_REFUSED || size != 0);
    REQUIRE(status != MMS_STATUS_OK || MMS_GetEntityCount(container.get()) <= 999);
    show(container.get());
    require_passes_agree(container.get(), [](const void *record, uint8_t *place, uint32_t room,
                                             uint8_t size_only, uint32_t *count) {
        return EncodeMultipart(static_cast<const MMS_Container *>(record), 0, place, room,
                               size_only, count);
    });
}

void as_part(const uint8_t *data, size_t size) {
    const Session session(data, size);
    MMS_Entity *result = nullptr;
    const uint32_t status = DecodeMultipartEntity(session.decoder.get(), &result);
    const test::EntityPtr part(result);
    session.require_inside();
    REQUIRE(part != nullptr || status != MMS_STATUS_OK || session.decoder->skipped == 1);
    if (part) {
        std::string all;
        show(all, part.get());
    }
}

void as_entity_headers(const uint8_t *data, size_t size) {
    const Session session(data, size);
    const test::EntityPtr entity(MMS_Entity_Create());
    const uint32_t status =
        DecodeWspHeaders(session.decoder.get(), session.block.size(), entity.get());
    session.require_inside();
    REQUIRE(status != MMS_STATUS_OK || session.decoder->remaining == 0);
    std::string all;
    show(all, entity.get());
    each<MMS_Field>(entity->pFieldList, [](const MMS_Field *field) {
        require_passes_agree(field, [](const void *record, uint8_t *place, uint32_t room,
                                       uint8_t size_only, uint32_t *count) {
            return EncodeHeader(static_cast<const MMS_Field *>(record), place, room, size_only, 1,
                                count);
        });
    });
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    as_pdu(data, size);
    as_multipart(data, size);
    as_part(data, size);
    as_entity_headers(data, size);
    return 0;
}
