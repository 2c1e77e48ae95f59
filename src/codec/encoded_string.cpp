#include "codec/adapter.hpp"
#include "codec/codec.h"
#include "codec/values.hpp"

namespace mms {
namespace {

const char *charset_name(uint32_t number) {
    const char *name = MMS_SearchMapForText(CHAR_SET_MAP, static_cast<uint16_t>(number));
    return name != nullptr ? name : unknown_name;
}

} // namespace

MMS_Status read_encoded_string(Reader &in, const char *&charset, TextView &text) {
    charset = nullptr;
    MMS_Status status = read_text(in, text);
    if (status != MMS_STATUS_WRONG_FORM) {
        return status;
    }
    Reader at = in;
    Reader value = in;
    status = read_sized(at, value);
    if (failed(status)) {
        return status;
    }
    const Reader start = at;
    uint32_t number = 0;
    status = read_integer(at, number);
    if (failed(status)) {
        return status;
    }
    TextView read;
    status = read_text(at, read);
    if (failed(status)) {
        return status;
    }
    if (at.consumed_since(start) != value.left()) {
        return MMS_STATUS_NO_ROOM;
    }
    charset = charset_name(number);
    text = read;
    in = at;
    return MMS_STATUS_OK;
}

MMS_Status read_encoded_string(Reader &in, OwnedEncodedString &string) {
    Reader at = in;
    const char *charset = nullptr;
    TextView text;
    const MMS_Status status = read_encoded_string(at, charset, text);
    if (failed(status)) {
        return status;
    }
    string = make_encoded_string(text, charset);
    if (!string) {
        return MMS_STATUS_NO_ROOM;
    }
    in = at;
    return MMS_STATUS_OK;
}

void write_encoded_string(Writer &out, const char *charset, std::span<const TextView> pieces) {
    if (charset == nullptr || *charset == '\0') {
        write_text(out, pieces);
        return;
    }
    uint16_t number = 0;
    if (MMS_SearchMapForInteger(CHAR_SET_MAP, charset, &number) != MMS_STATUS_OK) {
        out.fail(MMS_STATUS_MISSING);
        return;
    }
    write_sized(out, [&](Writer &value) {
        write_integer(value, number);
        write_text(value, pieces);
    });
}

} // namespace mms

uint32_t DecodeEncodedStringValue(const uint8_t *pInput, uint32_t length, const char **ppCharset,
                                  char **ppText, uint32_t *pConsumed) {
    return mms::run_decoder_of<mms::OwnedText>(
        pInput, length, pConsumed, ppText, [&](mms::Reader &in, mms::OwnedText &copy) {
            mms::TextView text;
            return mms::copy_read(mms::read_encoded_string(in, *ppCharset, text), text, copy);
        });
}

uint32_t EncodeEncodedStringValue(uint8_t *pCursor, uint32_t remaining, const char *pCharset,
                                  const char *pText, uint32_t *pWritten, uint8_t sizeOnly) {
    return mms::run_encoder(pCursor, remaining, sizeOnly, pWritten, [&](mms::Writer &out) {
        const mms::TextView text = mms::view_of(pText);
        mms::write_encoded_string(out, pCharset, {&text, 1});
    });
}
