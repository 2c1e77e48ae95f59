#include "codec/wsp.hpp"

#include "codec/adapter.hpp"
#include "codec/codec.h"

namespace mms {

namespace {

constexpr uint8_t continues = 0x80;
// The first octet of the largest five-octet Uintvar that fits into 32 bits.
constexpr uint8_t last_first_octet = 0x8F;

constexpr bool starts_text(uint8_t octet) {
    return octet == 0 || (octet >= 0x20 && octet <= text_quote);
}

constexpr bool is_line_white(uint8_t octet) {
    return octet == '\t' || octet == '\r' || octet == '\n';
}

constexpr bool is_separator(char octet) {
    constexpr const char *separators = "()<>@,;:\\\"/[]?={} ";
    for (const char *separator = separators; *separator != '\0'; ++separator) {
        if (octet == *separator) {
            return true;
        }
    }
    return false;
}

constexpr bool is_control(unsigned char octet) { return octet < 0x20 || octet == text_quote; }

bool is_token(TextView text) {
    for (size_t i = 0; i < text.size; ++i) {
        if (is_control(static_cast<unsigned char>(text.data[i])) || is_separator(text.data[i])) {
            return false;
        }
    }
    return true;
}

} // namespace

MMS_Status read_long_integer(Reader &in, uint32_t &value) {
    Reader at = in;
    uint8_t length = 0;
    const MMS_Status status = read_short_length(at, length);
    if (failed(status)) {
        return status;
    }
    if (length > sizeof value) {
        return MMS_STATUS_OUT_OF_RANGE;
    }
    if (length > at.left()) {
        return MMS_STATUS_NO_ROOM;
    }
    value = 0;
    for (; length != 0; --length) {
        value = value << 8 | at.front();
        at.skip(1);
    }
    in = at;
    return MMS_STATUS_OK;
}

MMS_Status read_integer(Reader &in, uint32_t &value) {
    uint8_t small = 0;
    const MMS_Status status = read_short_integer(in, small);
    if (status == MMS_STATUS_WRONG_FORM) {
        return read_long_integer(in, value);
    }
    if (!failed(status)) {
        value = small;
    }
    return status;
}

MMS_Status read_uintvar(Reader &in, uint32_t &value) {
    Reader at = in;
    uint32_t read = 0;
    for (uint32_t count = 1; !at.empty(); ++count) {
        const uint8_t octet = at.front();
        if (count == longest_uintvar && in.front() > last_first_octet) {
            return MMS_STATUS_WRONG_FORM;
        }
        read = read << 7 | (octet & 0x7FU);
        at.skip(1);
        if ((octet & continues) == 0) {
            value = read;
            in = at;
            return MMS_STATUS_OK;
        }
        if (count == longest_uintvar) {
            return at.empty() ? MMS_STATUS_NO_ROOM : MMS_STATUS_WRONG_FORM;
        }
    }
    return MMS_STATUS_NO_ROOM;
}

MMS_Status read_value_length(Reader &in, uint32_t &value) {
    if (!in.empty() && in.front() == length_quote) {
        Reader at = in;
        at.skip(1);
        const MMS_Status status = read_uintvar(at, value);
        if (!failed(status)) {
            in = at;
        }
        return status;
    }
    uint8_t length = 0;
    const MMS_Status status = read_short_length(in, length);
    if (!failed(status)) {
        value = length;
    }
    return status;
}

MMS_Status read_sized(Reader &in, Reader &value) {
    Reader at = in;
    uint32_t length = 0;
    const MMS_Status status = read_value_length(at, length);
    if (failed(status)) {
        return status;
    }
    if (length > at.left()) {
        return MMS_STATUS_NO_ROOM;
    }
    value = at.first(length);
    in = at;
    return MMS_STATUS_OK;
}

MMS_Status read_text(Reader &in, TextView &text) {
    Reader start = in;
    while (!start.empty() && is_line_white(start.front())) {
        start.skip(1);
    }
    if (start.empty()) {
        return MMS_STATUS_NO_ROOM;
    }
    if (!starts_text(start.front())) {
        return MMS_STATUS_WRONG_FORM;
    }
    const uint32_t length = start.until_zero();
    if (length == start.left()) {
        return MMS_STATUS_NO_ROOM;
    }
    start.skip(length);
    const uint32_t quote = in.front() == text_quote ? 1 : 0;
    text = {reinterpret_cast<const char *>(in.data()) + quote, start.consumed_since(in) - quote};
    start.skip(1);
    in = start;
    return MMS_STATUS_OK;
}

MMS_Status read_quoted(Reader &in, TextView &text) {
    Reader at = in;
    if (!at.empty() && at.front() == string_quote) {
        at.skip(1);
    }
    const MMS_Status status = read_text(at, text);
    if (!failed(status)) {
        in = at;
    }
    return status;
}

MMS_Status copy_read(MMS_Status status, TextView text, OwnedText &copy) {
    if (failed(status)) {
        return status;
    }
    copy = copy_text(text);
    return copy ? MMS_STATUS_OK : MMS_STATUS_NO_ROOM;
}

MMS_Status measure_field(Reader in, uint32_t &length) {
    length = 0;
    if (in.empty()) {
        return MMS_STATUS_NO_ROOM;
    }
    const Reader start = in;
    MMS_Status status = MMS_STATUS_OK;
    const uint8_t first = in.front();
    if (first >= 0x80) {
        in.skip(1);
    } else if (first <= length_quote) {
        Reader value = in;
        status = read_sized(in, value);
        in.skip(failed(status) ? 0 : value.left());
    } else {
        TextView text;
        status = read_text(in, text);
    }
    length = in.consumed_since(start);
    return status;
}

MMS_Status skip_field(Reader &in) {
    uint32_t length = 0;
    const MMS_Status status = measure_field(in, length);
    in.skip(length);
    return status;
}

void write_long_integer(Writer &out, uint32_t value) {
    uint32_t length = 1;
    while (length < sizeof value && value >> (8 * length) != 0) {
        ++length;
    }
    write_short_length(out, length);
    while (length != 0) {
        --length;
        out.octet(static_cast<uint8_t>(value >> (8 * length)));
    }
}

void write_integer(Writer &out, uint32_t value) {
    if (value <= 0x7F) {
        write_short_integer(out, value);
    } else {
        write_long_integer(out, value);
    }
}

void write_long_uintvar(Writer &out, uint32_t value) {
    uint32_t left = uintvar_size(value);
    uint8_t *place = out.claim(left);
    for (; place != nullptr && left != 0; ++place) {
        --left;
        *place = static_cast<uint8_t>((value >> (7 * left) & 0x7F) | (left != 0 ? continues : 0));
    }
}

void write_value_length(Writer &out, uint32_t value) {
    if (value <= longest_short_length) {
        out.octet(static_cast<uint8_t>(value));
    } else {
        out.octet(length_quote);
        write_uintvar(out, value);
    }
}

void write_text(Writer &out, std::span<const TextView> pieces) {
    unsigned char first = 0;
    size_t length = 0;
    for (const TextView &piece : pieces) {
        if (length == 0 && !piece.empty()) {
            first = static_cast<unsigned char>(piece.front());
        }
        length += piece.size;
    }
    if (length != 0 && is_control(first) && !is_line_white(first)) {
        out.fail(MMS_STATUS_WRONG_FORM);
        return;
    }
    const uint32_t quote = first >= 0x80 ? 1 : 0;
    uint8_t *place = out.claim(quote + length + 1);
    if (place == nullptr) {
        return;
    }
    *place = text_quote; // stays only where it is needed
    place += quote;
    for (const TextView &piece : pieces) {
        std::memcpy(place, piece.data, piece.size);
        place += piece.size;
    }
    *place = 0;
}

void write_text(Writer &out, const char *text) {
    const TextView piece = view_of(text);
    write_text(out, {&piece, 1});
}

void write_quoted(Writer &out, const char *text) {
    out.octet(string_quote);
    write_text(out, text);
}

} // namespace mms

using mms::OwnedText;
using mms::Reader;
using mms::TextView;
using mms::Writer;

uint32_t EncodeOctet(uint8_t *pBuffer, uint32_t length, uint8_t value, uint32_t *pCount,
                     uint8_t sizeOnly) {
    return mms::run_encoder(pBuffer, length, sizeOnly, pCount,
                            [&](Writer &out) { out.octet(value); });
}

uint32_t EncodeShortInteger(uint8_t *pBuffer, uint32_t length, uint8_t value, uint32_t *pCount,
                            uint8_t sizeOnly) {
    return mms::run_encoder(pBuffer, length, sizeOnly, pCount,
                            [&](Writer &out) { mms::write_short_integer(out, value); });
}

uint32_t EncodeShortLength(uint8_t *pBuffer, uint32_t length, uint8_t value, uint32_t *pCount,
                           uint8_t sizeOnly) {
    return mms::run_encoder(pBuffer, length, sizeOnly, pCount,
                            [&](Writer &out) { mms::write_short_length(out, value); });
}

uint32_t EncodeLongInteger(uint8_t *pBuffer, uint32_t length, uint32_t value, uint32_t *pCount,
                           uint8_t sizeOnly) {
    return mms::run_encoder(pBuffer, length, sizeOnly, pCount,
                            [&](Writer &out) { mms::write_long_integer(out, value); });
}

uint32_t EncodeIntegerValue(uint8_t *pBuffer, uint32_t length, uint32_t value, uint32_t *pCount,
                            uint8_t sizeOnly) {
    return mms::run_encoder(pBuffer, length, sizeOnly, pCount,
                            [&](Writer &out) { mms::write_integer(out, value); });
}

uint32_t EncodeUintvarInteger(uint8_t *pBuffer, uint32_t length, uint32_t value, uint32_t *pCount,
                              uint8_t sizeOnly) {
    return mms::run_encoder(pBuffer, length, sizeOnly, pCount,
                            [&](Writer &out) { mms::write_uintvar(out, value); });
}

uint32_t EncodeValueLength(uint8_t *pBuffer, uint32_t length, uint32_t value, uint32_t *pCount,
                           uint8_t sizeOnly) {
    return mms::run_encoder(pBuffer, length, sizeOnly, pCount,
                            [&](Writer &out) { mms::write_value_length(out, value); });
}

uint32_t EncodeTextString(uint8_t *pBuffer, uint32_t length, const char *pText, uint32_t *pCount,
                          uint8_t sizeOnly) {
    return mms::run_encoder(pBuffer, length, sizeOnly, pCount,
                            [&](Writer &out) { mms::write_text(out, pText); });
}

uint32_t EncodeTokenText(uint8_t *pBuffer, uint32_t length, const char *pText, uint32_t *pCount,
                         uint8_t sizeOnly) {
    return mms::run_encoder(pBuffer, length, sizeOnly, pCount, [&](Writer &out) {
        if (!mms::is_token(mms::view_of(pText))) {
            out.fail(MMS_STATUS_WRONG_FORM);
        }
        mms::write_text(out, pText);
    });
}

uint32_t EncodeQuotedString(uint8_t *pBuffer, uint32_t length, const char *pText, uint32_t *pCount,
                            uint8_t sizeOnly) {
    return mms::run_encoder(pBuffer, length, sizeOnly, pCount,
                            [&](Writer &out) { mms::write_quoted(out, pText); });
}

uint32_t DecodeOctet(const uint8_t *pBuffer, uint32_t length, uint8_t *pValue, uint32_t *pCount,
                     uint8_t lowest, uint8_t highest) {
    return mms::run_decoder(pBuffer, length, pCount, [&](Reader &in) {
        return mms::read_octet(in, lowest, highest, *pValue);
    });
}

uint32_t DecodeShortInteger(const uint8_t *pBuffer, uint32_t length, uint8_t *pValue,
                            uint32_t *pCount) {
    return mms::run_decoder(pBuffer, length, pCount,
                            [&](Reader &in) { return mms::read_short_integer(in, *pValue); });
}

uint32_t DecodeShortLength(const uint8_t *pBuffer, uint32_t length, uint8_t *pValue,
                           uint32_t *pCount) {
    return mms::run_decoder(pBuffer, length, pCount,
                            [&](Reader &in) { return mms::read_short_length(in, *pValue); });
}

uint32_t DecodeLongInteger(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                           uint32_t *pCount) {
    return mms::run_decoder(pBuffer, length, pCount,
                            [&](Reader &in) { return mms::read_long_integer(in, *pValue); });
}

uint32_t DecodeIntegerValue(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                            uint32_t *pCount) {
    return mms::run_decoder(pBuffer, length, pCount,
                            [&](Reader &in) { return mms::read_integer(in, *pValue); });
}

uint32_t DecodeUintvarInteger(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                              uint32_t *pCount) {
    return mms::run_decoder(pBuffer, length, pCount,
                            [&](Reader &in) { return mms::read_uintvar(in, *pValue); });
}

uint32_t DecodeValueLength(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                           uint32_t *pCount) {
    return mms::run_decoder(pBuffer, length, pCount,
                            [&](Reader &in) { return mms::read_value_length(in, *pValue); });
}

uint32_t DecodeTextString(const uint8_t *pBuffer, uint32_t length, char **ppText,
                          uint32_t *pCount) {
    return mms::run_decoder_of<OwnedText>(
        pBuffer, length, pCount, ppText, [&](Reader &in, OwnedText &copy) {
            TextView text;
            return mms::copy_read(mms::read_text(in, text), text, copy);
        });
}

uint32_t DecodeTokenText(const uint8_t *pBuffer, uint32_t length, char **ppText, uint32_t *pCount) {
    return DecodeTextString(pBuffer, length, ppText, pCount);
}

uint32_t DecodeQuotedString(const uint8_t *pBuffer, uint32_t length, char **ppText,
                            uint32_t *pCount) {
    return mms::run_decoder_of<OwnedText>(
        pBuffer, length, pCount, ppText, [&](Reader &in, OwnedText &copy) {
            TextView text;
            return mms::copy_read(mms::read_quoted(in, text), text, copy);
        });
}

uint32_t GetFieldLength(const uint8_t *pBuffer, uint32_t length, uint32_t *pFieldLength) {
    return mms::measure_field(Reader(pBuffer, length), *pFieldLength);
}
