#include "api/api.h"
#include "encoder/steps.hpp"

#include <algorithm>

namespace {

// How large a block to begin with: the contents and what the headers of most parts take.
size_t expected_size(const MMSLib_Message &message) {
    size_t size = 0;
    for (const MMS_Entity *entity : mms::Entities(message.pContainer->pEntityList)) {
        const size_t length = MMS_GetContentLength(entity);
        size += length + 64 + std::min<size_t>(length, 192);
    }
    return size;
}

} // namespace

uint32_t MMSLib_DecodeMessage(const uint8_t *pPdu, uint32_t length, MMSLib_Message **ppMessage) {
    *ppMessage = nullptr;
    if (pPdu == nullptr || length == 0) {
        return MMS_STATUS_MALFORMED;
    }
    MMS_Decoder session{};
    const uint32_t status = MMS_Decoder_Decode(&session, pPdu, length, ppMessage);
    if (*ppMessage != nullptr) {
        (*ppMessage)->isDecoded = 1;
    }
    return status;
}

uint32_t MMSLib_EncodeMessage(const MMSLib_Message *pMessage, uint8_t **ppPdu, uint32_t *pLength,
                              uint8_t validate) {
    uint8_t small[512];
    mms::GrowingBlock block(expected_size(*pMessage));
    mms::Writer out(small, sizeof small, block);
    mms::write_message(out, *pMessage->pContainer, validate != 0);
    if (!out.ok()) {
        return out.status();
    }
    const uint32_t length = out.count();
    mms::OwnedOctets pdu = out.take();
    if (!pdu) {
        return MMS_STATUS_NO_ROOM;
    }
    *ppPdu = pdu.release();
    *pLength = length;
    return MMS_STATUS_OK;
}

uint32_t MMSLib_GetSize(const MMSLib_Message *pMessage) {
    uint32_t size = 0;
    if (pMessage != nullptr) {
        MMS_Encoder_GetEncodedMessageSize(pMessage, &size, 1);
    }
    return size;
}
