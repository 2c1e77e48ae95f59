#include "api/api.h"
#include "util/heap.hpp"

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
    uint32_t size = 0;
    uint32_t status = MMS_Encoder_GetEncodedMessageSize(pMessage, &size, validate);
    if (status != MMS_STATUS_OK) {
        return status;
    }
    // A message without headers is a PDU without octets, and still a block of its own.
    mms::OwnedOctets pdu(static_cast<uint8_t *>(std::malloc(size != 0 ? size : 1)));
    if (!pdu) {
        return MMS_STATUS_NO_ROOM;
    }
    uint32_t written = 0;
    status = MMS_Encoder_Encode(pMessage, pdu.get(), size, &written, validate);
    if (status == MMS_STATUS_OK) {
        *ppPdu = pdu.release();
        *pLength = written;
    }
    return status;
}

uint32_t MMSLib_GetSize(const MMSLib_Message *pMessage) {
    uint32_t size = 0;
    if (pMessage != nullptr) {
        MMS_Encoder_GetEncodedMessageSize(pMessage, &size, 1);
    }
    return size;
}
