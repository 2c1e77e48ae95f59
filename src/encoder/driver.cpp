#include "codec/adapter.hpp"
#include "encoder/encoder.h"
#include "encoder/steps.hpp"

namespace mms {

void write_message(Writer &out, const MMS_Container &container, bool validate) {
    write_mms_headers(out, container, validate);
    const auto *content_type =
        static_cast<const MMS_ContentType *>(find_value(&container, FieldId::content_type));
    if (!out.ok() || content_type == nullptr) {
        return;
    }
    if (MMS_IsMultipart(content_type) != 0) {
        write_content_type(out, *content_type);
        write_multipart(out, container, true);
    } else {
        write_entity(out, *MMS_GetFirstEntity(container.pEntityList), true);
    }
}

} // namespace mms

uint32_t MMS_Encoder_GetEncodedMessageSize(const MMSLib_Message *pMessage, uint32_t *pSize,
                                           uint8_t validate) {
    return Encode(pMessage, nullptr, 0, 1, pSize, validate);
}

uint32_t MMS_Encoder_Encode(const MMSLib_Message *pMessage, uint8_t *pBuffer, uint32_t bufferSize,
                            uint32_t *pWritten, uint8_t validate) {
    return Encode(pMessage, pBuffer, bufferSize, 0, pWritten, validate);
}

uint32_t Encode(const MMSLib_Message *pMessage, uint8_t *pBuffer, uint32_t bufferSize,
                uint8_t sizeOnly, uint32_t *pWritten, uint8_t validate) {
    return mms::run_encoder(pBuffer, bufferSize, sizeOnly, pWritten, [&](mms::Writer &out) {
        mms::write_message(out, *pMessage->pContainer, validate != 0);
    });
}
