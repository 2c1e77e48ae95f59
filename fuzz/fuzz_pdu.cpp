// Any octets as a PDU: decoded, read through the getters, encoded, decoded and encoded again. Then
// the same octets as a multipart body and as the headers of a part.
#include "accessors.hpp"

namespace {

using namespace fuzz;

void read(MMS_Container *container) {
    read_through_getters(container, message_headers);
    each_carried<MMS_Entity>(container->pEntityList, [&](const MMS_Entity *part) {
        read_through_getters(part, part_headers);
        const char *id = part->isMultipart == 0 ? MMS_GetContentId(part) : nullptr;
        require(id == nullptr ||
                StrCaseCmp(MMS_GetContentId(MMS_FindEntityByContentId(container, id, 0)), id) == 0);
    });
}

// Whether the value alone, in a message or in a part, comes back as it is: the others have no wire
// form, or one that is read as something else.
bool comes_back(const MMS_Field *field, bool in_part) {
    const MessagePtr message(MMSLib_Message_Create());
    MMS_Entity *entity = add_entity(message->pContainer);
    if (in_part && kind_of(field->fieldId) != Kind::content_type) {
        MMS_SetContentType(entity, MMS_CreateContentType("multipart/mixed"));
        entity = add_entity(message->pContainer);
        MMS_SetContentType(entity, MMS_CreateContentType("text/plain"));
    }
    const char *name = MMS_SearchFieldMapForName(field->fieldId);
    MMS_SetField(entity, name, field->pValue);
    const auto [sent, received] = there_and_back(message.get());
    MMS_FindField(entity, name)->pValue = nullptr; // not this message's
    return sent == received;
}

bool comes_back(const MMS_Container *container, bool in_part) {
    bool all = MMS_GetEntityCount(container) != 0;
    each_carried<MMS_Entity>(container->pEntityList, [&](const MMS_Entity *entity) {
        each<MMS_Field>(entity->pFieldList, [&](const MMS_Field *field) {
            const bool nested = kind_of(field->fieldId) == Kind::container;
            all = all && (nested ? comes_back(static_cast<MMS_Container *>(field->pValue), true)
                                 : comes_back(field, in_part));
        });
        in_part = true; // all but the first of a message
    });
    return all;
}

void as_pdu(const Octets &octets) {
    const Decoded decoded = decode(octets);
    require(decoded.status == MMS_STATUS_OK || decoded.status == MMS_STATUS_MALFORMED);
    if (decoded.message) {
        MMS_Container *container = decoded.message->pContainer;
        read(container);
        const auto [sent, received] = there_and_back(decoded.message.get());
        if (sent != received && comes_back(container, false)) {
            require_same(sent, received);
        }
    }
}

// One step of decoding, in a session of its own, which stays inside of the octets.
template <typename Run>
void step(const Octets &octets, Run run) {
    const Session session(octets);
    MMS_Decoder *decoder = session.decoder.get();
    const uint32_t status = run(decoder);
    require(status != MMS_STATUS_REFUSED && decoder->depth == 0);
    require(decoder->remaining <= octets.size() && decoder->pCursor >= session.octets.get());
    require(decoder->pCursor + decoder->remaining <= session.octets.get() + octets.size());
}

uint32_t as_multipart(MMS_Decoder *decoder) {
    const ContainerPtr parts(MMS_Container_Create());
    const uint32_t status = DecodeMultipart(decoder, parts.get());
    require(MMS_GetEntityCount(parts.get()) <= 999);
    shown(parts.get());
    written([&](uint8_t *place, uint32_t room, uint32_t *count, uint8_t only) {
        return EncodeMultipart(parts.get(), 0, place, room, only, count);
    });
    return status;
}

uint32_t as_part(MMS_Decoder *decoder) {
    MMS_Entity *result = nullptr;
    const uint32_t status = DecodeMultipartEntity(decoder, &result);
    const EntityPtr part(result);
    require(part != nullptr || status != MMS_STATUS_OK || decoder->skipped == 1);
    return status;
}

uint32_t as_part_headers(MMS_Decoder *decoder) {
    const EntityPtr entity(MMS_Entity_Create());
    const uint32_t status = DecodeWspHeaders(decoder, decoder->remaining, entity.get());
    require(status != MMS_STATUS_OK || decoder->remaining == 0);
    contents(entity.get());
    return status;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const Octets octets(data, data + size);
    as_pdu(octets);
    step(octets, as_multipart);
    step(octets, as_part);
    step(octets, as_part_headers);
    return 0;
}
