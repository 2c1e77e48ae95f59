#include "decoder/session.hpp"

namespace mms {
namespace {

// The remaining octets are the body of the header entity.
MMS_Status decode_single_body(MMS_Decoder &session, MMS_Entity &entity) {
    const Reader body = rest_of(session);
    if (!body.empty() && MMS_SetContent(&entity, body.data(), body.left(), 0) == 0) {
        return MMS_STATUS_NO_ROOM;
    }
    advance(session, body.left());
    return MMS_STATUS_OK;
}

MMS_Status decode_body(MMS_Decoder &session, MMS_Container &container) {
    MMS_Entity *entity = find_entity(container.pEntityList, FieldId::content_type);
    if (entity == nullptr) {
        return MMS_STATUS_OK;
    }
    return MMS_IsMultipart(MMS_GetContentType(entity)) != 0
               ? static_cast<MMS_Status>(DecodeMultipart(&session, &container))
               : decode_single_body(session, *entity);
}

} // namespace
} // namespace mms

uint32_t MMS_Decoder_Decode(MMS_Decoder *pDecoder, const uint8_t *pPdu, uint32_t length,
                            MMSLib_Message **ppMessage) {
    *ppMessage = nullptr;
    mms::OwnedMessage message(mms::create_message());
    if (!message) {
        return MMS_STATUS_NO_ROOM;
    }
    message->pPdu = pPdu;
    message->pduLength = length;
    pDecoder->pCursor = pPdu;
    pDecoder->remaining = length;
    pDecoder->keep = 0;
    pDecoder->pMessage = message.get();
    auto status = static_cast<MMS_Status>(DecodeMmsHeaders(pDecoder));
    if (status == MMS_STATUS_OK) {
        status = mms::decode_body(*pDecoder, *message->pContainer);
    }
    pDecoder->pMessage = nullptr;
    if (pDecoder->keep != 0) {
        *ppMessage = message.release();
    }
    const bool understood = status == MMS_STATUS_OK && pDecoder->remaining == 0;
    return understood ? MMS_STATUS_OK : MMS_STATUS_MALFORMED;
}
