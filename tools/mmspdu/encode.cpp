#include "encode.hpp"

#include "diagnose.hpp"
#include "fields.hpp"
#include "wording.hpp"

#include <cstring>
#include <new>
#include <string_view>
#include <vector>

namespace mmspdu {
namespace {

enum MessageType : uint8_t {
    send_req = 0x80,
    notifyresp_ind = 0x83,
    delivery_ind = 0x86,
    read_rec_ind = 0x87,
    read_orig_ind = 0x88,
};

// --- mandatory headers -----------------------------------------------------------------------

// Null: any recipient.
using HeaderNames = std::span<const char *const>;

constexpr const char *of_send_req[] = {X_MMS_MMS_VERSION_FIELD_NAME,
                                       X_MMS_TRANSACTION_ID_FIELD_NAME, CONTENT_TYPE_FIELD_NAME,
                                       nullptr};
constexpr const char *of_notifyresp_ind[] = {
    X_MMS_MMS_VERSION_FIELD_NAME, X_MMS_TRANSACTION_ID_FIELD_NAME, X_MMS_STATUS_FIELD_NAME};
constexpr const char *of_delivery_ind[] = {X_MMS_MMS_VERSION_FIELD_NAME, MESSAGE_ID_FIELD_NAME,
                                           TO_FIELD_NAME, DATE_FIELD_NAME, X_MMS_STATUS_FIELD_NAME};
constexpr const char *of_read_rec_ind[] = {X_MMS_MMS_VERSION_FIELD_NAME, MESSAGE_ID_FIELD_NAME,
                                           TO_FIELD_NAME, X_MMS_READ_STATUS_FIELD_NAME};
constexpr const char *of_read_orig_ind[] = {
    X_MMS_MMS_VERSION_FIELD_NAME, MESSAGE_ID_FIELD_NAME, TO_FIELD_NAME,
    X_MMS_READ_STATUS_FIELD_NAME, DATE_FIELD_NAME,       FROM_FIELD_NAME};
constexpr const char *of_others[] = {X_MMS_MMS_VERSION_FIELD_NAME, X_MMS_TRANSACTION_ID_FIELD_NAME};
// Without a type, which headers are missing cannot be told.
constexpr const char *of_no_type[] = {X_MMS_MESSAGE_TYPE_FIELD_NAME};

struct MandatoryRow {
    uint8_t type;
    HeaderNames names;
};

const MandatoryRow mandatory_rows[] = {
    {0, of_no_type},
    {send_req, of_send_req},
    {notifyresp_ind, of_notifyresp_ind},
    {delivery_ind, of_delivery_ind},
    {read_rec_ind, of_read_rec_ind},
    {read_orig_ind, of_read_orig_ind},
};

HeaderNames mandatory_headers(uint8_t type) {
    for (const MandatoryRow &row : mandatory_rows) {
        if (row.type == type) {
            return row.names;
        }
    }
    return of_others;
}

bool has_header(const MMSLib_Message &message, const char *name) {
    return MMS_FindEntityByFieldName(message.pContainer->pEntityList, name) != nullptr;
}

bool has_recipient(const MMSLib_Message &message) {
    return has_header(message, TO_FIELD_NAME) || has_header(message, CC_FIELD_NAME) ||
           has_header(message, BCC_FIELD_NAME);
}

// --- what cannot be encoded ------------------------------------------------------------------

// Each answers why a value cannot be encoded, or nothing when it can or the reason is not known.

std::string text_fault(const char *text) {
    uint32_t length = 0;
    const bool writable =
        text == nullptr || EncodeTextString(nullptr, 0, text, &length, 1) == MMS_STATUS_OK;
    return writable ? "" : "the text begins with " + octet_name(static_cast<uint8_t>(*text));
}

std::string labelled_text_fault(const char *text, const char *charset) {
    uint16_t number = 0;
    if (charset != nullptr && *charset != '\0' &&
        MMS_SearchMapForInteger(CHAR_SET_MAP, charset, &number) == 0) {
        return "there is no number for the character set " + printable_name(charset);
    }
    return text_fault(text);
}

std::string text_field_fault(const MMS_Field &field) {
    return text_fault(static_cast<const char *>(field.pValue));
}

std::string string_field_fault(const MMS_Field &field) {
    const auto *string = static_cast<const MMS_EncodedString *>(field.pValue);
    return labelled_text_fault(string->pText, string->pCharset);
}

std::string mailbox_fault(const MMS_Mailbox &mailbox) {
    const MMS_EncodedString *address = mailbox.pAddress;
    if (address == nullptr) {
        return "it was too long to be kept";
    }
    const bool named = mailbox.pDisplayName != nullptr && *mailbox.pDisplayName != '\0';
    return labelled_text_fault(named ? mailbox.pDisplayName : address->pText, address->pCharset);
}

std::string group_fault(const MMS_Field &field) {
    const auto *group = static_cast<const MMS_Group *>(field.pValue);
    std::string fault;
    uint32_t number = 0;
    for_each_record<MMS_Mailbox>(group->pMailboxList, [&](const MMS_Mailbox &mailbox) {
        ++number;
        const std::string why = fault.empty() ? mailbox_fault(mailbox) : "";
        if (!why.empty()) {
            fault = "address " + std::to_string(number) + ": " + why;
        }
    });
    return fault;
}

std::string parameter_fault(const char *name, const char *value, const char *charset) {
    uint32_t length = 0;
    if (EncodeParameter(nullptr, 0, name, value, charset, &length, 1) == MMS_STATUS_OK) {
        return "";
    }
    std::string why = text_fault(name);
    if (why.empty()) {
        why = text_fault(value);
    }
    if (why.empty() && value != nullptr) {
        // The only limit that a parameter's value has.
        why = "the value is too long, it has " + counted(std::strlen(value), "octet");
    }
    return "parameter " + printable_name(name) + ": " + why;
}

std::string content_type_fault(const MMS_Field &field) {
    constexpr uint16_t most_parameters = 255;
    const auto *type = static_cast<const MMS_ContentType *>(field.pValue);
    const uint16_t count = MMS_LinkedList_GetParameterCount(type->pParameters);
    if (count > most_parameters) {
        return "it has " + std::to_string(count) + " parameters, more than " +
               std::to_string(most_parameters);
    }
    std::string fault = text_fault(type->pMediaType);
    for_each_record<MMS_Parameter>(type->pParameters, [&](const MMS_Parameter &parameter) {
        if (fault.empty()) {
            fault = parameter_fault(parameter.pName, parameter.pValue, parameter.pCharset);
        }
    });
    return fault;
}

std::string disposition_fault(const MMS_Field &field) {
    const auto *disposition = static_cast<const MMS_ContentDisposition *>(field.pValue);
    return disposition->pFilename == nullptr
               ? ""
               : parameter_fault(MMS_FILENAME_STRING, disposition->pFilename,
                                 disposition->pCharset);
}

std::string generic_fault(const MMS_Field &field) {
    const auto *data = static_cast<const MMS_GenericData *>(field.pValue);
    const std::string name = printable_name(data->pHeaderName);
    const std::string why = text_fault(data->pHeaderName);
    return name + ": " + (why.empty() ? text_fault(data->pHeaderValue) : "the name: " + why);
}

struct FaultRow {
    ValueKind kind;
    std::string (*fault)(const MMS_Field &field);
};

constexpr FaultRow fault_rows[] = {
    {ValueKind::text, text_field_fault},
    {ValueKind::encoded_string, string_field_fault},
    {ValueKind::group, group_fault},
    {ValueKind::content_type, content_type_fault},
    {ValueKind::disposition, disposition_fault},
    {ValueKind::generic, generic_fault},
};

// A field that cannot be encoded, as "Header: why".
std::string field_fault(const MMS_Field &field) {
    const char *name = MMS_SearchFieldMapForName(field.fieldId);
    const std::string_view header = name != nullptr ? name : "";
    const ValueKind kind = value_kind(header);
    std::string why;
    for (const FaultRow &row : fault_rows) {
        if (row.kind == kind) {
            why = row.fault(field);
        }
    }
    // A generic header brings its own name.
    std::string fault(kind == ValueKind::generic ? "" : header);
    append_phrase(fault, why, ": ");
    return fault;
}

bool is_encodable(const MMS_Field &field, bool in_part) {
    if (field.fieldId == MMS_SearchFieldMapForId(CONTENT_TYPE_FIELD_NAME)) {
        uint32_t length = 0;
        const auto *type = static_cast<const MMS_ContentType *>(field.pValue);
        return MMSEncodeContentType(type, nullptr, 1, 0, &length) == MMS_STATUS_OK;
    }
    uint32_t length = 0;
    return EncodeHeader(&field, nullptr, 0, 1, in_part ? 1 : 0, &length) == MMS_STATUS_OK;
}

// Whether no PDU of that type has the field.
bool is_never_written(const MMS_Field &field, uint8_t type) {
    return type >= delivery_ind && type <= read_orig_ind &&
           field.fieldId == MMS_SearchFieldMapForId(X_MMS_TRANSACTION_ID_FIELD_NAME);
}

// The first field of the entity that cannot be encoded; empty when all can.
std::string entity_fault(const NumberedPart &part, uint8_t type) {
    std::string fault;
    const bool in_part = !part.number.empty();
    for_each_element<MMS_Field>(part.entity->pFieldList, [&](const MMS_Field &field) {
        if (fault.empty() && !is_encodable(field, in_part) &&
            (in_part || !is_never_written(field, type))) {
            fault = field_fault(field);
        }
    });
    return in_part && !fault.empty() ? "part " + part.number + ": " + fault : fault;
}

std::string message_fault(const MMSLib_Message &message) {
    const uint8_t type = MMSLib_GetXMmsMessageType(message.pContainer);
    for (const NumberedPart &part : parts_of(message)) {
        std::string fault = entity_fault(part, type);
        if (!fault.empty()) {
            return fault;
        }
    }
    return "";
}

const char *status_words(uint32_t status) {
    switch (status) {
    case MMS_STATUS_MISSING:
        return "something required is missing";
    case MMS_STATUS_WRONG_FORM:
        return "a value cannot take its wire form";
    case MMS_STATUS_OUT_OF_RANGE:
        return "a value is out of range";
    default:
        return "encoding failed";
    }
}

std::string encoding_fault(const MMSLib_Message &message, uint32_t status, bool validate) {
    const std::string missing =
        validate && status == MMS_STATUS_MISSING ? missing_headers(message) : "";
    std::string fault = status_words(status);
    append_phrase(fault, missing.empty() ? message_fault(message) : missing, ": ");
    return fault;
}

} // namespace

EncodedPdu encode_message(const MMSLib_Message &message, bool validate) {
    uint8_t *block = nullptr;
    uint32_t length = 0;
    const uint32_t status = MMSLib_EncodeMessage(&message, &block, &length, validate ? 1 : 0);
    EncodedPdu encoded{std::unique_ptr<uint8_t, FreeOctets>(block), length, {}};
    if (status == MMS_STATUS_NO_ROOM) {
        throw std::bad_alloc();
    }
    if (status != MMS_STATUS_OK) {
        encoded.fault = encoding_fault(message, status, validate);
    }
    return encoded;
}

std::string missing_headers(const MMSLib_Message &message) {
    std::string missing;
    for (const char *name : mandatory_headers(MMSLib_GetXMmsMessageType(message.pContainer))) {
        if (name == nullptr && !has_recipient(message)) {
            append_phrase(missing, "one of To, Cc and Bcc", ", ");
        } else if (name != nullptr && !has_header(message, name)) {
            append_phrase(missing, name, ", ");
        }
    }
    return missing;
}

} // namespace mmspdu
