#include "decoder/session.hpp"

MMS_Decoder *MMS_Decoder_Create(void) { return mms::allocate<MMS_Decoder>(); }

void MMS_Decoder_Destroy(MMS_Decoder *pDecoder) { std::free(pDecoder); }

void AdvanceCursor(MMS_Decoder *pDecoder, uint32_t count) { mms::advance(*pDecoder, count); }
