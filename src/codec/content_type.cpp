#include "codec/adapter.hpp"
#include "codec/codec.h"
#include "codec/values.hpp"

namespace mms {
namespace {

constexpr size_t longest_type_part = 19;
constexpr uint16_t most_parameters_written = 255;
constexpr uint8_t disposition_form_data = 128;
constexpr uint8_t disposition_attachment = 129;

const char *media_name(uint32_t number) {
    const char *name =
        number <= UINT8_MAX ? name_of(media_types, static_cast<uint8_t>(number)) : nullptr;
    return name != nullptr ? name : "application/octet-stream";
}

// The media type as it is kept: an overlong type part is replaced.
OwnedText media_text(TextView media, size_t slash) {
    if (slash <= longest_type_part) {
        return copy_text(media);
    }
    constexpr TextView truncated{"TRUNCATED", 9};
    const TextView rest = media.after(slash);
    OwnedText text(static_cast<char *>(std::malloc(truncated.size + rest.size + 1)));
    if (text) {
        std::memcpy(text.get(), truncated.data, truncated.size);
        std::memcpy(text.get() + truncated.size, rest.data, rest.size);
        text.get()[truncated.size + rest.size] = '\0';
    }
    return text;
}

MMS_Status read_media(Reader &in, OwnedContentType &content_type) {
    uint32_t number = 0;
    TextView media;
    MMS_Status status = read_integer(in, number);
    if (status == MMS_STATUS_OK) {
        media = view_of(media_name(number));
    } else if (status == MMS_STATUS_WRONG_FORM) {
        status = read_text(in, media);
    }
    if (failed(status)) {
        return status;
    }
    const size_t slash = media.find('/');
    if (slash == media.size) {
        return MMS_STATUS_WRONG_FORM;
    }
    OwnedText text = media_text(media, slash);
    if (!text) {
        return MMS_STATUS_NO_ROOM;
    }
    content_type = make_content_type(std::move(text));
    return content_type ? MMS_STATUS_OK : MMS_STATUS_NO_ROOM;
}

MMS_Status keep_parameter(ReadParameter &read, MMS_ParameterList *list) {
    if (list->nElement == UINT16_MAX) {
        return MMS_STATUS_OUT_OF_RANGE;
    }
    if (read.known_value != nullptr) {
        read.value = copy_text(read.known_value);
        if (!read.value) {
            return MMS_STATUS_NO_ROOM;
        }
    }
    OwnedParameter parameter =
        make_parameter(read.known_name, read.name, std::move(read.value), read.charset);
    if (!parameter || MMS_LinkedList_AddParameter(list, parameter.get()) == 0) {
        return MMS_STATUS_NO_ROOM;
    }
    static_cast<void>(parameter.release());
    return MMS_STATUS_OK;
}

MMS_Status read_parameters(Reader in, MMS_ParameterList *list) {
    while (!in.empty()) {
        ReadParameter read;
        MMS_Status status = read_parameter(in, read);
        if (!failed(status) && read.named) {
            status = keep_parameter(read, list);
        }
        if (failed(status)) {
            return status;
        }
    }
    return MMS_STATUS_OK;
}

// The general form: Value-length, media, parameters.
MMS_Status read_general_form(Reader &in, uint32_t length, OwnedContentType &content_type) {
    if (length > in.left()) {
        // The media of a value that is not all there is looked for in nothing.
        return !in.empty() && in.front() == length_quote ? MMS_STATUS_WRONG_FORM
                                                         : MMS_STATUS_NO_ROOM;
    }
    Reader value = in.first(length);
    MMS_Status status = read_media(value, content_type);
    if (!failed(status)) {
        status = read_parameters(value, content_type->pParameters);
    }
    in.skip(length);
    return status;
}

bool is_filename(const ReadParameter &parameter) {
    const char *known = parameter.known_name;
    return parameter.named &&
           equal_ignoring_case(known != nullptr ? view_of(known) : parameter.name,
                               MMS_FILENAME_STRING);
}

MMS_Status read_disposition_value(Reader in, OwnedDisposition &disposition) {
    uint8_t token = 0;
    MMS_Status status = read_octet(in, disposition_form_data, disposition_attachment, token);
    OwnedText filename;
    const char *charset = nullptr;
    while (!failed(status) && !in.empty()) {
        ReadParameter read;
        status = read_parameter(in, read);
        if (!failed(status) && is_filename(read)) {
            filename = std::move(read.value);
            charset = read.charset;
        }
    }
    if (failed(status)) {
        return status;
    }
    disposition = make_disposition(MMS_SearchMapForString(WSP_DISPOSITION_MAP, token),
                                   std::move(filename), charset);
    return disposition ? MMS_STATUS_OK : MMS_STATUS_NO_ROOM;
}

void write_media(Writer &out, TextView media) {
    const MMS_MapEntry *known = find(media_types, media);
    if (known != nullptr) {
        write_short_integer(out, known->number);
    } else {
        write_text(out, {&media, 1});
    }
}

void write_general_form(Writer &out, TextView media, const MMS_ParameterList *parameters) {
    write_media(out, media);
    for (const MMS_Parameter *parameter : Parameters(parameters)) {
        write_parameter(out, parameter->pName, parameter->pValue, parameter->pCharset);
    }
}

} // namespace

MMS_Status read_content_type(Reader &in, OwnedContentType &content_type) {
    Reader at = in;
    uint32_t length = 0;
    OwnedContentType read;
    MMS_Status status = read_value_length(at, length);
    if (status == MMS_STATUS_OK) {
        status = read_general_form(at, length, read);
    } else if (status == MMS_STATUS_WRONG_FORM) {
        status = read_media(at, read);
    }
    if (!failed(status)) {
        content_type = std::move(read);
        in = at;
    }
    return status;
}

MMS_Status read_disposition(Reader &in, OwnedDisposition &disposition) {
    Reader at = in;
    Reader value = in;
    MMS_Status status = read_sized(at, value);
    if (failed(status)) {
        return status;
    }
    status = read_disposition_value(value, disposition);
    if (!failed(status)) {
        at.skip(value.left());
        in = at;
    }
    return status;
}

void write_content_type(Writer &out, const MMS_ContentType &content_type) {
    const TextView media = view_of(content_type.pMediaType);
    const MMS_ParameterList *parameters = content_type.pParameters;
    if (media.find('/') == media.size) {
        out.fail(MMS_STATUS_MISSING);
    } else if (parameters->nElement > most_parameters_written) {
        out.fail(MMS_STATUS_OUT_OF_RANGE);
    } else if (parameters->nElement == 0) {
        write_media(out, media);
    } else {
        write_sized(out, [&](Writer &value) { write_general_form(value, media, parameters); });
    }
}

void write_disposition(Writer &out, const MMS_ContentDisposition &disposition) {
    if (disposition.pDisposition == nullptr) {
        out.fail(MMS_STATUS_MISSING);
        return;
    }
    uint8_t token = 0;
    if (MMS_SearchMapForToken(WSP_DISPOSITION_MAP, disposition.pDisposition, &token) !=
        MMS_STATUS_OK) {
        token = disposition_attachment;
    }
    write_sized(out, [&](Writer &value) {
        value.octet(token);
        if (disposition.pFilename != nullptr) {
            write_parameter(value, MMS_FILENAME_STRING, disposition.pFilename,
                            disposition.pCharset);
        }
    });
}

} // namespace mms

using mms::Writer;

uint32_t MMS_IsMultipart(const MMS_ContentType *pContentType) {
    constexpr const char *multipart = "multipart/";
    const char *media = pContentType->pMediaType;
    return media != nullptr && StrnCaseCmp(media, multipart, std::strlen(multipart)) == 0 ? 1 : 0;
}

uint8_t MMSEncodeContentType(const MMS_ContentType *pContentType, uint8_t *pOutput,
                             uint8_t sizeOnly, uint32_t remaining, uint32_t *pWritten) {
    return mms::run_encoder(pOutput, remaining, sizeOnly, pWritten,
                            [&](Writer &out) { mms::write_content_type(out, *pContentType); });
}

uint8_t MMSDecodeContentType(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                             MMS_ContentType **ppContentType) {
    return mms::run_decoder_of<mms::OwnedContentType>(pInput, length, pConsumed, ppContentType,
                                                      mms::read_content_type);
}

uint8_t MMSEncodeContentDisposition(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                                    uint32_t *pWritten,
                                    const MMS_ContentDisposition *pDisposition) {
    return mms::run_encoder(pOutput, remaining, sizeOnly, pWritten,
                            [&](Writer &out) { mms::write_disposition(out, *pDisposition); });
}

uint8_t MMSDecodeContentDisposition(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                    MMS_ContentDisposition **ppDisposition) {
    return mms::run_decoder_of<mms::OwnedDisposition>(pInput, length, pConsumed, ppDisposition,
                                                      mms::read_disposition);
}
