#include "codec/adapter.hpp"
#include "codec/codec.h"
#include "codec/values.hpp"
#include "util/encoded_word.hpp"

#include <charconv>

namespace mms {
namespace {

// Well-known parameters whose values have forms of their own.
enum Token : uint8_t {
    token_charset = 1,
    token_name = 5,
    token_filename = 6,
    token_padding = 8,
    token_type = 9,
};

constexpr uint8_t no_token = UINT8_MAX; // the name is a text
constexpr uint32_t utf_8_number = 106;
constexpr size_t longest_application_id = 32;

bool is_file_name(const ReadParameter &parameter) {
    const char *known = parameter.known_name;
    const TextView name = known != nullptr ? view_of(known) : parameter.name;
    return equal_ignoring_case(name, MMS_FILENAME_STRING) ||
           equal_ignoring_case(name, MMS_NAME_STRING);
}

MMS_Status keep_text(TextView text, ReadParameter &parameter) {
    parameter.is_text = true;
    if (is_file_name(parameter)) {
        const MMS_Status status = decode_encoded_words(text, parameter.value);
        if (status != MMS_STATUS_MALFORMED) {
            parameter.charset = status == MMS_STATUS_OK ? MMS_CHARSET_UTF_8 : nullptr;
            return status;
        }
    }
    parameter.value = copy_text(text);
    return parameter.value ? MMS_STATUS_OK : MMS_STATUS_NO_ROOM;
}

OwnedText decimal_text(uint32_t number) {
    char digits[10];
    const char *end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return copy_text(digits, static_cast<size_t>(end - digits));
}

MMS_Status keep_number(uint8_t token, uint32_t number, ReadParameter &parameter) {
    if (token == token_charset) {
        parameter.known_value = MMS_SearchMapForText(CHAR_SET_MAP, static_cast<uint16_t>(number));
        if (parameter.known_value == nullptr) {
            parameter.known_value = unknown_name;
        }
        return MMS_STATUS_OK;
    }
    if (token == token_type) {
        parameter.known_value = name_of(media_types, static_cast<uint8_t>(number));
        if (parameter.known_value != nullptr) {
            return MMS_STATUS_OK;
        }
    }
    parameter.value = decimal_text(number);
    return parameter.value ? MMS_STATUS_OK : MMS_STATUS_NO_ROOM;
}

MMS_Status read_parameter_value(Reader &in, uint8_t token, ReadParameter &parameter) {
    if (!in.empty() && in.front() == 0) {
        in.skip(1);
        return MMS_STATUS_OK;
    }
    TextView text;
    MMS_Status status = read_quoted(in, text);
    if (status == MMS_STATUS_OK) {
        return keep_text(text, parameter);
    }
    uint32_t number = 0;
    if (status == MMS_STATUS_WRONG_FORM) {
        status = read_integer(in, number);
    }
    if (status == MMS_STATUS_OK) {
        return keep_number(token, number, parameter);
    }
    if (status == MMS_STATUS_WRONG_FORM) {
        parameter.named = false;
        return skip_field(in);
    }
    return status;
}

MMS_Status read_from(Reader &in, ReadParameter &parameter) {
    uint8_t token = no_token;
    uint32_t number = 0;
    if (read_integer(in, number) == MMS_STATUS_OK) {
        token = static_cast<uint8_t>(number);
        parameter.known_name = name_of(parameter_names, token);
        if (parameter.known_name == nullptr) {
            return skip_field(in);
        }
    } else if (read_text(in, parameter.name) != MMS_STATUS_OK) {
        const MMS_Status status = skip_field(in);
        return failed(status) ? status : skip_field(in);
    }
    parameter.named = true;
    return read_parameter_value(in, token, parameter);
}

uint16_t charset_number(const char *name) {
    uint16_t number = 0;
    const bool known = MMS_SearchMapForInteger(CHAR_SET_MAP, name, &number) == MMS_STATUS_OK;
    return known ? number : utf_8_number;
}

void write_text_value(Writer &out, uint8_t token, const char *value, const char *charset) {
    const bool file_name = token == token_name || token == token_filename;
    if (file_name && StrCaseCmp(charset, MMS_CHARSET_UTF_8) == 0 && isASCII(value) == 0) {
        write_encoded_word(out, value, charset);
    } else {
        write_text(out, value);
    }
}

void write_known(Writer &out, uint8_t token, const char *value, const char *charset) {
    write_integer(out, token);
    if (value == nullptr) {
        out.octet(0);
        return;
    }
    const MMS_MapEntry *media = token == token_type ? find(media_types, view_of(value)) : nullptr;
    if (token == token_padding) {
        write_integer(out, static_cast<uint32_t>(std::strtol(value, nullptr, 10)));
    } else if (token == token_charset) {
        write_integer(out, charset_number(value));
    } else if (media != nullptr && media->number != 0) {
        write_integer(out, media->number & 0xFFU);
    } else {
        write_text_value(out, token, value, charset);
    }
}

bool is_application_id(const char *name) {
    return StrCaseCmp(name, MMS_APPLICATION_ID_STRING) == 0 ||
           StrCaseCmp(name, MMS_REPLY_TO_APPLICATION_ID_STRING) == 0;
}

void write_named(Writer &out, const char *name, const char *value) {
    write_text(out, name);
    if (value == nullptr) {
        out.octet(0);
        return;
    }
    if (is_application_id(name) && std::strlen(value) > longest_application_id) {
        out.fail(MMS_STATUS_WRONG_FORM);
    }
    write_text(out, value);
}

} // namespace

MMS_Status read_parameter(Reader &in, ReadParameter &parameter) {
    Reader at = in;
    parameter = {};
    const MMS_Status status = read_from(at, parameter);
    if (failed(status)) {
        parameter = {};
        return status;
    }
    in = at;
    return status;
}

void write_parameter(Writer &out, const char *name, const char *value, const char *charset) {
    const MMS_MapEntry *known = find(parameter_names, view_of(name));
    if (known != nullptr) {
        write_known(out, static_cast<uint8_t>(known->number), value, charset);
    } else {
        write_named(out, name, value);
    }
}

void write_encoded_word(Writer &out, const char *text, const char *charset) {
    const uint32_t size = encoded_word_size(text, charset);
    uint8_t *word = out.claim(size);
    if (word != nullptr && size != 0) {
        encode_word(text, charset, reinterpret_cast<char *>(word));
    }
    out.octet(0);
}

} // namespace mms

uint32_t DecodeParameter(const uint8_t *pInput, uint32_t length, char **ppName, char **ppValue,
                         const char **ppCharset, uint8_t *pValueOwned, uint8_t *pNameOwned,
                         uint32_t *pConsumed) {
    *ppName = nullptr;
    *ppValue = nullptr;
    *pValueOwned = 0;
    *pNameOwned = 0;
    mms::ReadParameter parameter;
    mms::OwnedText name;
    const MMS_Status status = mms::run_decoder(pInput, length, pConsumed, [&](mms::Reader &in) {
        const MMS_Status read = mms::read_parameter(in, parameter);
        const bool copies = parameter.named && parameter.known_name == nullptr;
        return copies ? mms::copy_read(read, parameter.name, name) : read;
    });
    if (mms::failed(status) || !parameter.named) {
        return status;
    }
    *pNameOwned = name ? 1 : 0;
    *ppName = name ? name.release() : const_cast<char *>(parameter.known_name);
    *pValueOwned = parameter.value ? 1 : 0;
    *ppValue =
        parameter.value ? parameter.value.release() : const_cast<char *>(parameter.known_value);
    if (parameter.is_text) {
        *ppCharset = parameter.charset;
    }
    return status;
}

uint32_t EncodeParameter(uint8_t *pCursor, uint32_t remaining, const char *pName,
                         const char *pValue, const char *pCharset, uint32_t *pWritten,
                         uint8_t sizeOnly) {
    return mms::run_encoder(pCursor, remaining, sizeOnly, pWritten, [&](mms::Writer &out) {
        mms::write_parameter(out, pName, pValue, pCharset);
    });
}
