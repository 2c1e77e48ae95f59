// The MMS header block, and the one-header encoder that parts use too.
#include "codec/adapter.hpp"
#include "encoder/encoder.h"
#include "encoder/steps.hpp"

#include <array>

namespace mms {
namespace {

using Id = FieldId;

constexpr uint32_t m_send_req = 0x80;
constexpr uint32_t m_notifyresp_ind = 0x83;
constexpr uint32_t m_delivery_ind = 0x86;
constexpr uint32_t m_read_rec_ind = 0x87;
constexpr uint32_t m_read_orig_ind = 0x88;
constexpr uint32_t m_forward_req = 0x89;

constexpr uint8_t from_code = 9;
// A From that asks the network to insert the sender's address.
constexpr uint8_t insert_address_from[] = {0x89, 0x01, 0x81};

constexpr uint32_t normal_priority = 0x81;
constexpr uint32_t no_expiry = UINT32_MAX;
constexpr uint8_t absolute_time = 128;

// --- Mandatory headers ---------------------------------------------------------------------------

// The headers that a message type needs; rows of unknown ids are filled up with the unknown one.
struct Mandatory {
    uint32_t message_type;
    std::array<Id, 6> headers;
};

constexpr Mandatory mandatory[] = {
    {m_send_req, {Id::x_mms_mms_version, Id::x_mms_transaction_id, Id::content_type}},
    {m_notifyresp_ind, {Id::x_mms_mms_version, Id::x_mms_transaction_id, Id::x_mms_status}},
    {m_delivery_ind, {Id::x_mms_mms_version, Id::message_id, Id::to, Id::date, Id::x_mms_status}},
    {m_read_rec_ind, {Id::x_mms_mms_version, Id::message_id, Id::to, Id::x_mms_read_status}},
    {m_read_orig_ind,
     {Id::x_mms_mms_version, Id::message_id, Id::to, Id::x_mms_read_status, Id::date, Id::from}},
};
constexpr Mandatory mandatory_for_others = {0, {Id::x_mms_mms_version, Id::x_mms_transaction_id}};

// Whether the header's getter reports a value; a Date of 0 is one.
bool present(const MMS_Container &container, Id id) {
    const MMS_Field *field = find_field(&container, id);
    return field != nullptr && (id == Id::date || field->pValue != nullptr);
}

bool has_recipient(const MMS_Container &container) {
    return present(container, Id::to) || present(container, Id::cc) || present(container, Id::bcc);
}

const Mandatory &mandatory_of(uint32_t message_type) {
    for (const Mandatory &row : mandatory) {
        if (row.message_type == message_type) {
            return row;
        }
    }
    return mandatory_for_others;
}

bool is_complete(const MMS_Container &container, uint32_t message_type) {
    for (const Id id : mandatory_of(message_type).headers) {
        if (id != Id::unknown && !present(container, id)) {
            return false;
        }
    }
    return message_type != 0 && (message_type != m_send_req || has_recipient(container));
}

// --- Values --------------------------------------------------------------------------------------

// A record of a field; one that is null cannot be written.
template <typename Record, typename Write>
void write_record(Writer &out, const MMS_Field &field, Write write) {
    const auto *record = static_cast<const Record *>(field.pValue);
    if (record == nullptr) {
        out.fail(MMS_STATUS_MISSING);
    } else {
        write(out, *record);
    }
}

void write_string_record(Writer &out, const MMS_EncodedString &string) {
    const TextView text = view_of(string.pText);
    write_encoded_string(out, string.pCharset, {&text, 1});
}

// The octet of a header that has no codec of its own but a set of octets.
void write_accepted_octet(Writer &out, const Header &header, const MMS_Field &field) {
    const auto slot = reinterpret_cast<uintptr_t>(field.pValue);
    if (slot > UINT8_MAX || !header.accepts(static_cast<uint32_t>(slot))) {
        out.fail(MMS_STATUS_WRONG_FORM);
    }
    out.octet(static_cast<uint8_t>(slot));
}

void write_mms_value(Writer &out, const Header &header, const MMS_Field &field) {
    const uint32_t integer = integer_of(field.pValue);
    switch (header.form) {
    case WireForm::octet:
        out.octet(static_cast<uint8_t>(integer));
        break;
    case WireForm::version:
        write_short_integer(out, integer & 0xFF);
        break;
    case WireForm::date:
    case WireForm::long_integer:
        write_long_integer(out, integer);
        break;
    case WireForm::special_time:
        write_record<MMS_SpecialTime>(out, field, write_special_time);
        break;
    case WireForm::text:
        write_mms_text(out, header.mms_code, static_cast<const char *>(field.pValue));
        break;
    case WireForm::encoded_string:
        write_record<MMS_EncodedString>(out, field, write_string_record);
        break;
    case WireForm::content_type: // the value begins the body
    case WireForm::recipient:    // written with its code
    case WireForm::sender:
        break;
    case WireForm::none:
        write_accepted_octet(out, header, field);
        break;
    }
}

void write_duration_header(Writer &out, const MMS_Field &field) {
    write_text(out, CONTENT_DURATION_FIELD_NAME);
    write_content_duration(out, integer_of(field.pValue));
}

void write_mms_header(Writer &out, const MMS_Field &field) {
    const Header &header = mms::header(id_of(&field));
    if (header.id == Id::content_duration) {
        write_duration_header(out, field);
    } else if (header.id == Id::internal_nested_multipart || header.mms_code == 0) {
        return;
    } else if (header.kind == ValueKind::group) {
        write_record<MMS_Group>(out, field, [&](Writer &to, const MMS_Group &group) {
            write_group(to, header.mms_code, group);
        });
    } else {
        write_short_integer(out, header.mms_code);
        write_mms_value(out, header, field);
    }
}

void write_content_location(Writer &out, const char *location) {
    if (isASCII(location) != 0) {
        write_text(out, location);
    } else {
        write_encoded_word(out, location, MMS_CHARSET_UTF_8);
    }
}

void write_generic(Writer &out, const MMS_GenericData &generic) {
    write_text(out, generic.pHeaderName);
    write_text(out, generic.pHeaderValue);
}

void write_entity_header(Writer &out, const MMS_Field &field) {
    const Header &header = mms::header(id_of(&field));
    const auto *text = static_cast<const char *>(field.pValue);
    switch (header.id) {
    case Id::content_disposition:
        write_short_integer(out, header.wsp_code);
        write_record<MMS_ContentDisposition>(out, field, write_disposition);
        break;
    case Id::content_id:
        write_short_integer(out, header.wsp_code);
        write_quoted(out, text);
        break;
    case Id::content_location:
        write_short_integer(out, header.wsp_code);
        write_content_location(out, text);
        break;
    case Id::content_duration:
        write_duration_header(out, field);
        break;
    case Id::internal_generic_entity_header:
        write_record<MMS_GenericData>(out, field, write_generic);
        break;
    default:
        break;
    }
}

// --- The block -----------------------------------------------------------------------------------

constexpr bool identifies_by_message_id(uint32_t message_type) {
    return message_type >= m_delivery_ind && message_type <= m_read_orig_ind;
}

std::array<Id, 3> leading_headers(uint32_t message_type) {
    if (identifies_by_message_id(message_type)) {
        return {Id::x_mms_message_type, Id::x_mms_mms_version, Id::message_id};
    }
    return {Id::x_mms_message_type, Id::x_mms_transaction_id, Id::x_mms_mms_version};
}

// A header that stands at the front or the end of the block for every message type.
bool has_its_own_place(Id id, uint32_t message_type) {
    return id == Id::x_mms_message_type || id == Id::x_mms_transaction_id ||
           id == Id::x_mms_mms_version || id == Id::content_type ||
           (id == Id::message_id && identifies_by_message_id(message_type));
}

// Whether a field of an m-send-req says what its absence says.
bool holds_default(const MMS_Field &field) {
    const auto *time = static_cast<const MMS_SpecialTime *>(field.pValue);
    switch (id_of(&field)) {
    case Id::x_mms_message_class:
        return StrCaseCmp(static_cast<const char *>(field.pValue), MMS_PERSONAL_STRING) == 0;
    case Id::x_mms_expiry:
        return time != nullptr && time->value == no_expiry;
    case Id::x_mms_delivery_time:
        return time != nullptr && time->token != absolute_time && time->value == 0;
    case Id::x_mms_priority:
        return integer_of(field.pValue) == normal_priority;
    default:
        return false;
    }
}

void write_leading_headers(Writer &out, const MMS_Container &container, uint32_t message_type) {
    for (const Id id : leading_headers(message_type)) {
        const MMS_Field *field = find_field(&container, id);
        if (field != nullptr) {
            write_mms_header(out, *field);
        }
    }
}

bool needs_sender(const MMS_Container &container, uint32_t message_type) {
    return (message_type == m_send_req || message_type == m_read_rec_ind ||
            message_type == m_forward_req) &&
           !present(container, Id::from);
}

void write_other_headers(Writer &out, const MMS_Entity &entity, uint32_t message_type) {
    for (const MMS_Field *field : Fields(entity.pFieldList)) {
        if (!out.ok()) {
            return;
        }
        const bool left_out = message_type == m_send_req && holds_default(*field);
        if (!left_out && !has_its_own_place(id_of(field), message_type)) {
            write_mms_header(out, *field);
        }
    }
}

// The mailbox as one text: the address, or the display name and the address in angle brackets.
void write_mailbox(Writer &out, const MMS_Mailbox &mailbox) {
    if (mailbox.pAddress == nullptr) {
        out.fail(MMS_STATUS_MISSING);
        return;
    }
    const TextView name = view_of(mailbox.pDisplayName);
    const TextView address = view_of(mailbox.pAddress->pText);
    const TextView pieces[] = {name, {" <", 2}, address, {">", 1}};
    const std::span<const TextView> bare(&address, 1);
    write_encoded_string(out, mailbox.pAddress->pCharset, name.empty() ? bare : pieces);
}

void write_sender(Writer &out, const MMS_Mailbox &mailbox) {
    write_sized(out, [&](Writer &value) {
        value.octet(address_present);
        write_mailbox(value, mailbox);
    });
}

} // namespace

void write_group(Writer &out, uint8_t header_code, const MMS_Group &group) {
    if (group.pMailboxList->nElement == 0) {
        out.fail(MMS_STATUS_MISSING);
    }
    for (const MMS_Mailbox *mailbox : Mailboxes(group.pMailboxList)) {
        write_short_integer(out, header_code);
        if (header_code == from_code) {
            write_sender(out, *mailbox);
        } else {
            write_mailbox(out, *mailbox);
        }
        if (!out.ok()) {
            return;
        }
    }
}

void write_header(Writer &out, const MMS_Field &field, Block block) {
    if (block == Block::mms) {
        write_mms_header(out, field);
    } else {
        write_entity_header(out, field);
    }
}

void write_mms_headers(Writer &out, const MMS_Container &container, bool validate) {
    const MMS_Entity *first = MMS_GetFirstEntity(container.pEntityList);
    const uint32_t type = integer_of(find_value(&container, Id::x_mms_message_type));
    if (first == nullptr || (validate && !is_complete(container, type))) {
        out.fail(MMS_STATUS_MISSING);
        return;
    }
    write_leading_headers(out, container, type);
    if (needs_sender(container, type)) {
        out.octets(insert_address_from, sizeof insert_address_from);
    }
    write_other_headers(out, *first, type);
    const MMS_Field *content_type = find_field(first, Id::content_type);
    if (content_type != nullptr) {
        write_mms_header(out, *content_type);
    }
}

} // namespace mms

using mms::Writer;

uint32_t EncodeMmsHeaders(const MMSLib_Message *pMessage, uint8_t *pCursor, uint32_t remaining,
                          uint8_t sizeOnly, uint32_t *pWritten, uint8_t validate) {
    return mms::run_encoder(pCursor, remaining, sizeOnly, pWritten, [&](Writer &out) {
        mms::write_mms_headers(out, *pMessage->pContainer, validate != 0);
    });
}

uint32_t EncodeHeader(const MMS_Field *pField, uint8_t *pCursor, uint32_t remaining,
                      uint8_t sizeOnly, uint8_t entityHeader, uint32_t *pWritten) {
    return mms::run_encoder(pCursor, remaining, sizeOnly, pWritten, [&](Writer &out) {
        mms::write_header(out, *pField, entityHeader != 0 ? mms::Block::entity : mms::Block::mms);
    });
}

uint32_t MMSEncodeGroup(uint8_t *pCursor, uint8_t sizeOnly, uint32_t remaining, uint32_t *pWritten,
                        uint8_t headerCode, const MMS_Group *pGroup) {
    return mms::run_encoder(pCursor, remaining, sizeOnly, pWritten,
                            [&](Writer &out) { mms::write_group(out, headerCode, *pGroup); });
}
