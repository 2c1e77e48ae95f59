// The MMS header block: one octet of header code, then a value of the form that the header table
// gives.
#include "decoder/field_index.hpp"
#include "decoder/session.hpp"

namespace mms {
namespace {

constexpr uint16_t most_addresses = 1500;

// A decoded value on its way to its field.
class FieldValue {
public:
    explicit FieldValue(FieldId id) : id_(id) {}
    FieldValue(const FieldValue &) = delete;
    FieldValue &operator=(const FieldValue &) = delete;
    ~FieldValue() { release_value(id_, value_); }

    void hold(uint32_t integer) { value_ = slot_of(integer); }
    template <typename Record, typename Deleter>
    void hold(std::unique_ptr<Record, Deleter> record) {
        value_ = record.release();
    }
    MMS_Status store_in(FieldIndex &fields) {
        const MMS_Status status = fields.set(id_, value_);
        if (!failed(status)) {
            value_ = nullptr;
        }
        return status;
    }

private:
    FieldId id_;
    void *value_ = nullptr;
};

template <typename Value, typename Read>
MMS_Status read_into(FieldValue &field, Reader &in, Read read) {
    Value value{};
    const MMS_Status status = read(in, value);
    if (!failed(status)) {
        field.hold(std::move(value));
    }
    return status;
}

MMS_Status read_value(Reader &in, const Header &header, FieldValue &field) {
    switch (header.form) {
    case WireForm::octet:
        return read_into<uint8_t>(field, in, [&](Reader &at, uint8_t &value) {
            return read_enumerated(at, header, value);
        });
    case WireForm::version:
        return read_into<uint8_t>(field, in, read_version);
    case WireForm::date:
        return read_into<uint32_t>(field, in, read_long_integer);
    case WireForm::long_integer:
        return read_into<uint32_t>(field, in, read_number);
    case WireForm::special_time:
        return read_into<OwnedSpecialTime>(field, in, read_special_time);
    case WireForm::text:
        return read_into<OwnedText>(field, in, [&](Reader &at, OwnedText &text) {
            return read_mms_text(at, header.mms_code, text);
        });
    case WireForm::encoded_string:
        return read_into<OwnedEncodedString>(field, in, [](Reader &at, OwnedEncodedString &string) {
            return read_encoded_string(at, string);
        });
    case WireForm::content_type:
        return read_into<OwnedContentType>(field, in, read_content_type);
    case WireForm::none:
    case WireForm::recipient:
    case WireForm::sender:
        break;
    }
    return MMS_STATUS_OUT_OF_RANGE;
}

MMS_Status decode_value(MMS_Decoder &session, FieldIndex &fields, const Header &header) {
    uint32_t length = 0;
    MMS_Status status = measure_field(rest_of(session), length);
    if (failed(status)) {
        return status;
    }
    Reader value = rest_of(session).first(length);
    FieldValue field(header.id);
    status = read_value(value, header, field);
    advance(session, length);
    if (!value.empty()) {
        return MMS_STATUS_MALFORMED;
    }
    if (failed(status)) {
        // Only a version out of range consumes its field all the same: the header is dropped.
        return concerns_value_alone(status) ? MMS_STATUS_OK : status;
    }
    status = field.store_in(fields);
    if (!failed(status)) {
        session.keep = 1;
    }
    return status;
}

bool add_mailbox(MMS_Group &group, OwnedMailbox mailbox) {
    if (!mailbox || MMS_AddMailbox(&group, mailbox.get()) == 0) {
        return false;
    }
    static_cast<void>(mailbox.release());
    return true;
}

// Adds the address to the group that the header has, or stores it in a new group.
MMS_Status store_address(FieldIndex &fields, FieldId id, OwnedMailbox mailbox) {
    auto *group = static_cast<MMS_Group *>(fields.find_value(id));
    OwnedGroup created;
    if (group == nullptr) {
        created.reset(MMS_Group_Create());
        group = created.get();
    }
    if (group == nullptr || !add_mailbox(*group, std::move(mailbox))) {
        return MMS_STATUS_NO_ROOM;
    }
    return created ? fields.set(id, std::move(created)) : MMS_STATUS_OK;
}

// Counts an address header; false beyond the limit, where the count stays.
bool count_address(uint16_t &count) {
    if (count <= most_addresses) {
        ++count;
    }
    return count <= most_addresses;
}

MMS_Status decode_address(MMS_Decoder &session, FieldIndex &fields, const Header &header) {
    const bool sender = header.form == WireForm::sender;
    uint32_t length = 0;
    MMS_Status status = measure_field(rest_of(session), length);
    if (failed(status)) {
        return status;
    }
    Reader value = rest_of(session).first(length);
    if (!count_address(sender ? session.fromCount : session.recipientCount)) {
        advance(session, length);
        return MMS_STATUS_OK;
    }
    OwnedMailbox mailbox;
    status = sender ? read_sender(value, mailbox) : read_recipient(value, mailbox);
    if (sender) {
        advance(session, length);
        if (failed(status)) {
            return concerns_value_alone(status) ? MMS_STATUS_OK : status;
        }
    }
    if (!value.empty()) {
        return MMS_STATUS_MALFORMED;
    }
    if (!sender) {
        advance(session, length);
    }
    status = store_address(fields, header.id, std::move(mailbox));
    if (!failed(status)) {
        session.keep = 1;
    }
    return status;
}

MMS_Status skip_value(MMS_Decoder &session) {
    Reader in = rest_of(session);
    const MMS_Status status = skip_field(in);
    advance_to(session, in);
    return status;
}

MMS_Status skip_application_header(MMS_Decoder &session) {
    Reader in = rest_of(session);
    TextView name;
    const MMS_Status status = read_text(in, name);
    advance_to(session, in);
    return failed(status) ? status : skip_value(session);
}

// Decodes one header; `last` is set by Content-Type, which ends the block.
MMS_Status decode_header(MMS_Decoder &session, FieldIndex &fields, bool &last) {
    Reader in = rest_of(session);
    uint8_t code = 0;
    if (failed(read_short_integer(in, code))) {
        return skip_application_header(session);
    }
    advance_to(session, in);
    const Header &header = header_of_mms_code(code);
    switch (header.form) {
    case WireForm::none:
        return skip_value(session);
    case WireForm::recipient:
    case WireForm::sender:
        return decode_address(session, fields, header);
    default:
        last = header.id == FieldId::content_type;
        return decode_value(session, fields, header);
    }
}

MMS_Status decode_block(MMS_Decoder &session, FieldIndex &fields) {
    session.fromCount = 0;
    session.recipientCount = 0;
    if (session.remaining == 0) {
        return MMS_STATUS_NO_ROOM;
    }
    bool last = false;
    while (session.remaining != 0 && !last) {
        const MMS_Status status = decode_header(session, fields, last);
        if (failed(status)) {
            return status;
        }
    }
    return MMS_STATUS_OK;
}

constexpr uint32_t send_req = 0x80;
constexpr uint32_t retrieve_conf = 0x84;

// What a header is taken to say when a PDU of that type leaves it out.
struct Default {
    uint32_t message_type;
    FieldId id;
    uint32_t octet; // 0: the class "Personal"
};

constexpr Default defaults[] = {
    {send_req, FieldId::x_mms_message_class, 0},
    {send_req, FieldId::x_mms_sender_visibility, 0x80},
    {send_req, FieldId::x_mms_priority, 0x81},
    {retrieve_conf, FieldId::x_mms_message_class, 0},
    {retrieve_conf, FieldId::x_mms_delivery_report, 0x81},
    {retrieve_conf, FieldId::x_mms_priority, 0x81},
    {retrieve_conf, FieldId::x_mms_read_report, 0x81},
};

bool set_default(MMS_Container *container, const Default &row) {
    if (find_value(container, row.id) != nullptr) {
        return true;
    }
    MMS_Entity *entity = entity_for(container, row.id);
    return row.octet == 0 ? set_text(entity, row.id, MMS_PERSONAL_STRING)
                          : set_field(entity, row.id, slot_of(row.octet));
}

// `fields` are those that the container's last entity got from the block.
MMS_Status set_defaults(MMS_Container *container, const FieldIndex &fields) {
    const uint32_t type = integer_of(find_value(container, FieldId::x_mms_message_type));
    for (const Default &row : defaults) {
        if (row.message_type == type && fields.find_value(row.id) == nullptr &&
            !set_default(container, row)) {
            return MMS_STATUS_NO_ROOM;
        }
    }
    return MMS_STATUS_OK;
}

} // namespace
} // namespace mms

uint32_t DecodeMmsHeaders(MMS_Decoder *pDecoder) {
    MMS_Container *container = pDecoder->pMessage->pContainer;
    uint16_t position = 0;
    mms::OwnedEntity entity(MMS_Entity_Create());
    if (!entity || MMS_AddEntity(container, entity.get(), &position) == 0) {
        return MMS_STATUS_NO_ROOM;
    }
    mms::FieldIndex fields(*entity.release());
    const MMS_Status status = mms::decode_block(*pDecoder, fields);
    return mms::failed(status) ? status : mms::set_defaults(container, fields);
}
