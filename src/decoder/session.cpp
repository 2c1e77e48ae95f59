#include "decoder/decoder.h"
#include "util/heap.hpp"

MMS_Decoder *MMS_Decoder_Create(void) { return mms::allocate<MMS_Decoder>(); }

void MMS_Decoder_Destroy(MMS_Decoder *pDecoder) { std::free(pDecoder); }

void AdvanceCursor(MMS_Decoder *pDecoder, uint32_t count) {
    if (count > pDecoder->remaining) {
        pDecoder->remaining = 0;
        return;
    }
    pDecoder->pCursor += count;
    pDecoder->remaining -= count;
}
