#include "codec/adapter.hpp"
#include "codec/codec.h"
#include "codec/values.hpp"

#include <charconv>

namespace mms {
namespace {

constexpr size_t longest_address = 320;
constexpr uint8_t token_absolute = 128;
constexpr uint8_t token_relative = 129;
constexpr uint8_t first_class = 128;
constexpr uint8_t last_class = 131;

uint32_t major_of(uint32_t version) { return version >> 4 & 7; }

MMS_Status make_split_mailbox(const char *charset, const Address &split, OwnedMailbox &mailbox) {
    OwnedText name;
    OwnedEncodedString address;
    if (split.has_display_name) {
        name = copy_text(split.display_name);
        if (!name) {
            return MMS_STATUS_NO_ROOM;
        }
    }
    if (split.address.size <= longest_address) {
        address = make_encoded_string(split.address, charset);
        if (!address) {
            return MMS_STATUS_NO_ROOM;
        }
    }
    if (!name && !address) {
        return MMS_STATUS_WRONG_FORM;
    }
    mailbox = make_mailbox(std::move(name), std::move(address));
    return mailbox ? MMS_STATUS_OK : MMS_STATUS_NO_ROOM;
}

} // namespace

MMS_Status read_recipient(Reader &in, OwnedMailbox &mailbox) {
    Reader at = in;
    const char *charset = nullptr;
    TextView text;
    MMS_Status status = read_encoded_string(at, charset, text);
    if (failed(status)) {
        return status;
    }
    Address split;
    if (!split_address(text, split)) {
        return MMS_STATUS_WRONG_FORM;
    }
    status = make_split_mailbox(charset, split, mailbox);
    if (!failed(status)) {
        in = at;
    }
    return status;
}

MMS_Status read_sender(Reader &in, OwnedMailbox &mailbox) {
    Reader at = in;
    uint32_t length = 0;
    MMS_Status status = read_value_length(at, length);
    if (failed(status)) {
        return status;
    }
    Reader value = at.first(length);
    if (value.empty()) {
        return MMS_STATUS_WRONG_FORM;
    }
    uint8_t token = 0;
    status = read_octet(value, address_present, address_present, token);
    if (failed(status)) {
        return status;
    }
    status = read_recipient(value, mailbox);
    if (!failed(status)) {
        at.skip(value.consumed_since(at.first(length)));
        in = at;
    }
    return status;
}

MMS_Status read_version(Reader &in, uint8_t &version) {
    uint8_t read = 0;
    const MMS_Status status = read_short_integer(in, read);
    if (failed(status)) {
        return status;
    }
    if (major_of(read) == 0) {
        return MMS_STATUS_OUT_OF_RANGE;
    }
    version = read;
    return MMS_STATUS_OK;
}

MMS_Status read_mms_text(Reader &in, uint8_t header_code, OwnedText &text) {
    if (header_code == 0) {
        return MMS_STATUS_MISSING;
    }
    Reader at = in;
    TextView read;
    MMS_Status status = read_text(at, read);
    if (status == MMS_STATUS_WRONG_FORM && header_code == message_class_code) {
        uint8_t token = 0;
        status = read_octet(at, first_class, last_class, token);
        read = view_of(MMS_SearchMapForString(MMS_MESSAGE_CLASS_MAP, token));
    }
    status = copy_read(status, read, text);
    if (!failed(status)) {
        in = at;
    }
    return status;
}

MMS_Status read_special_time(Reader &in, OwnedSpecialTime &time) {
    Reader at = in;
    Reader value = in;
    MMS_Status status = read_sized(at, value);
    if (failed(status)) {
        return status;
    }
    const Reader start = value;
    uint8_t token = 0;
    status = read_octet(value, token_absolute, token_relative, token);
    if (failed(status)) {
        return status;
    }
    uint32_t seconds = 0;
    status = read_long_integer(value, seconds);
    if (failed(status)) {
        return status;
    }
    time.reset(MMS_CreateSpecialTime(token == token_absolute ? 1 : 0, seconds));
    if (!time) {
        return MMS_STATUS_NO_ROOM;
    }
    at.skip(value.consumed_since(start));
    in = at;
    return MMS_STATUS_OK;
}

MMS_Status read_number(Reader &in, uint32_t &value) {
    const MMS_Status status = read_long_integer(in, value);
    if (status != MMS_STATUS_WRONG_FORM) {
        return status;
    }
    TextView text;
    const MMS_Status text_status = read_text(in, text);
    if (!failed(text_status)) {
        // The zero that ends the text stands behind the view.
        value = static_cast<uint32_t>(std::strtol(text.data, nullptr, 10));
    }
    return text_status;
}

MMS_Status read_enumerated(Reader &in, const Header &header, uint8_t &value) {
    if (!in.empty() && in.front() < 0x80) {
        return MMS_STATUS_WRONG_FORM;
    }
    if (!header.enumerated()) {
        return MMS_STATUS_OUT_OF_RANGE;
    }
    if (in.empty()) {
        return MMS_STATUS_NO_ROOM;
    }
    if (!header.accepts(in.front())) {
        return MMS_STATUS_OUT_OF_RANGE;
    }
    value = in.front();
    in.skip(1);
    return MMS_STATUS_OK;
}

void write_mms_text(Writer &out, uint8_t header_code, const char *text) {
    uint8_t token = 0;
    if (header_code == 0) {
        out.fail(MMS_STATUS_MISSING);
    } else if (header_code == message_class_code &&
               MMS_SearchMapForToken(MMS_MESSAGE_CLASS_MAP, text, &token) == MMS_STATUS_OK) {
        out.octet(token);
    } else {
        write_text(out, text);
    }
}

void write_special_time(Writer &out, const MMS_SpecialTime &time) {
    write_sized(out, [&](Writer &value) {
        value.octet(time.token == token_absolute ? token_absolute : token_relative);
        write_long_integer(value, time.value);
    });
}

void write_content_duration(Writer &out, uint32_t seconds) {
    char digits[10];
    const char *end = std::to_chars(digits, digits + sizeof digits, seconds).ptr;
    const TextView text{digits, static_cast<size_t>(end - digits)};
    write_text(out, {&text, 1});
}

} // namespace mms

using mms::OwnedMailbox;
using mms::OwnedSpecialTime;
using mms::OwnedText;
using mms::Reader;
using mms::Writer;

uint8_t MMSGetMajorVersion(uint8_t version) { return version >> 4 & 7; }

uint8_t MMSGetMinorVersion(uint8_t version) { return version & 0x0F; }

uint8_t MMSSetMajorVersion(uint32_t major, uint8_t *pVersion) {
    // Only the low octet of the number counts.
    if (((major - 1) & 0xFF) > 6) {
        return 0;
    }
    const uint32_t minor = *pVersion & 0x0FU;
    *pVersion = static_cast<uint8_t>(major << 4 | (minor != 0 ? minor : 0x0FU));
    return 1;
}

uint8_t MMSSetMinorVersion(uint32_t minor, uint8_t *pVersion) {
    if (minor > 14) {
        return 0;
    }
    *pVersion = static_cast<uint8_t>((*pVersion & 0x70U) | minor);
    return 1;
}

uint8_t MMSDecodeVersion(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                         uint8_t *pVersion) {
    const MMS_Status status = mms::run_decoder(
        pInput, length, pConsumed, [&](Reader &in) { return mms::read_version(in, *pVersion); });
    if (status == MMS_STATUS_OUT_OF_RANGE) {
        *pConsumed = 1;
    }
    return status;
}

uint8_t MMSDecodeTextString(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                            char **ppText, uint8_t headerCode) {
    return mms::run_decoder_of<OwnedText>(
        pInput, length, pConsumed, ppText,
        [&](Reader &in, OwnedText &text) { return mms::read_mms_text(in, headerCode, text); });
}

uint8_t MMSEncodeTextString(uint8_t *pOutput, uint32_t remaining, uint32_t *pWritten,
                            uint8_t sizeOnly, uint8_t headerCode, const char *pText) {
    return mms::run_encoder(pOutput, remaining, sizeOnly, pWritten,
                            [&](Writer &out) { mms::write_mms_text(out, headerCode, pText); });
}

uint8_t MMSDecodeDate(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                      uint32_t *pDate) {
    return mms::run_decoder(pInput, length, pConsumed,
                            [&](Reader &in) { return mms::read_long_integer(in, *pDate); });
}

uint8_t MMSEncodeDate(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining, uint32_t *pWritten,
                      uint32_t date) {
    return MMSEncodeLongInteger(pOutput, sizeOnly, remaining, pWritten, date);
}

uint8_t MMSDecodeSpecialTime(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                             MMS_SpecialTime **ppTime) {
    return mms::run_decoder_of<OwnedSpecialTime>(pInput, length, pConsumed, ppTime,
                                                 mms::read_special_time);
}

uint8_t MMSEncodeSpecialTime(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                             uint32_t *pWritten, const MMS_SpecialTime *pTime) {
    return mms::run_encoder(pOutput, remaining, sizeOnly, pWritten,
                            [&](Writer &out) { mms::write_special_time(out, *pTime); });
}

uint8_t MMSDecodeToCc(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                      MMS_Mailbox **ppMailbox) {
    return mms::run_decoder_of<OwnedMailbox>(pInput, length, pConsumed, ppMailbox,
                                             mms::read_recipient);
}

uint8_t MMSDecodeFrom(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                      MMS_Mailbox **ppMailbox) {
    return mms::run_decoder_of<OwnedMailbox>(pInput, length, pConsumed, ppMailbox,
                                             mms::read_sender);
}

uint8_t MMSDecodeLongInteger(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                             uint32_t *pValue) {
    return mms::run_decoder(pInput, length, pConsumed,
                            [&](Reader &in) { return mms::read_number(in, *pValue); });
}

uint8_t MMSEncodeLongInteger(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                             uint32_t *pWritten, uint32_t value) {
    return mms::run_encoder(pOutput, remaining, sizeOnly, pWritten,
                            [&](Writer &out) { mms::write_long_integer(out, value); });
}

uint8_t MMSEncodeContentDuration(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                                 uint32_t *pWritten, uint32_t seconds) {
    return mms::run_encoder(pOutput, remaining, sizeOnly, pWritten,
                            [&](Writer &out) { mms::write_content_duration(out, seconds); });
}

uint8_t MMSDecodeEnumerated(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                            const char *pName, uint8_t *pValue) {
    const mms::Header &header = mms::header(mms::field_id(pName));
    return mms::run_decoder(pInput, length, pConsumed,
                            [&](Reader &in) { return mms::read_enumerated(in, header, *pValue); });
}
