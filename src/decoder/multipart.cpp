// The WSP multipart body: a count of parts, then for each the lengths of its headers and data, its
// content type, its other headers and its data.
#include "decoder/field_index.hpp"
#include "decoder/session.hpp"
#include "util/encoded_word.hpp"

namespace mms {
namespace {

constexpr uint16_t most_parts = 999;
constexpr uint8_t deepest_nesting = 250;

MMS_Status decode_uintvar(MMS_Decoder &session, uint32_t &value) {
    Reader in = rest_of(session);
    const MMS_Status status = read_uintvar(in, value);
    advance_to(session, in);
    return status;
}

// The headers of one part that follow its content type.
class EntityHeaders {
public:
    EntityHeaders(MMS_Decoder &session, uint32_t length, MMS_Entity &entity)
        : session_(session), left_(length), index_(entity) {}

    MMS_Status decode() {
        while (left_ != 0) {
            const MMS_Status status = decode_header();
            if (failed(status)) {
                return status;
            }
        }
        return MMS_STATUS_OK;
    }

private:
    [[nodiscard]] Reader block() const { return rest_of(session_).first(left_); }

    void advance(uint32_t count) {
        mms::advance(session_, count);
        left_ -= count;
    }

    MMS_Status decode_header() {
        Reader in = block();
        uint8_t code = 0;
        if (failed(read_short_integer(in, code))) {
            return decode_named();
        }
        advance(1);
        const FieldId id = header_of_wsp_code(code).id;
        switch (id) {
        case FieldId::content_disposition:
        case FieldId::content_id:
        case FieldId::content_location:
            return decode_well_known(id);
        default:
            return skip_value();
        }
    }

    MMS_Status skip_value() {
        uint32_t length = 0;
        const MMS_Status status = measure_field(block(), length);
        advance(length);
        return status;
    }

    // A value that cannot be measured leaves nothing to go on from.
    MMS_Status measure(uint32_t &length) const {
        const MMS_Status status = measure_field(block(), length);
        return status == MMS_STATUS_WRONG_FORM ? MMS_STATUS_MALFORMED : status;
    }

    MMS_Status decode_well_known(FieldId id) {
        uint32_t length = 0;
        MMS_Status status = measure(length);
        if (failed(status)) {
            return status;
        }
        status = store_well_known(id, block().first(length));
        if (failed(status) && !concerns_value_alone(status)) {
            return status;
        }
        advance(length);
        return MMS_STATUS_OK;
    }

    MMS_Status store_well_known(FieldId id, Reader value) {
        if (id == FieldId::content_disposition) {
            OwnedDisposition disposition;
            const MMS_Status status = read_disposition(value, disposition);
            return failed(status) ? status : index_.set(id, std::move(disposition));
        }
        TextView text;
        OwnedText copy;
        MMS_Status status =
            id == FieldId::content_id ? read_quoted(value, text) : read_text(value, text);
        if (failed(status)) {
            return status;
        }
        status = id == FieldId::content_location ? decode_encoded_words(text, copy)
                                                 : MMS_STATUS_MALFORMED;
        if (status == MMS_STATUS_MALFORMED) {
            status = copy_read(MMS_STATUS_OK, text, copy);
        }
        return failed(status) ? status : index_.set(id, std::move(copy));
    }

    MMS_Status decode_named() {
        Reader in = block();
        TextView name;
        MMS_Status status = read_text(in, name);
        if (failed(status)) {
            return status;
        }
        advance(in.consumed_since(block()));
        uint32_t length = 0;
        status = measure(length);
        if (failed(status)) {
            return status;
        }
        status = store_named(name, block().first(length));
        if (failed(status)) {
            return concerns_value_alone(status) ? MMS_STATUS_MALFORMED : status;
        }
        advance(length);
        return MMS_STATUS_OK;
    }

    MMS_Status store_named(TextView name, Reader value) {
        if (equal_ignoring_case(name, CONTENT_DURATION_FIELD_NAME)) {
            uint32_t seconds = 0;
            const MMS_Status status = read_whole(value, seconds, read_number);
            return failed(status) ? status
                                  : index_.set(FieldId::content_duration, slot_of(seconds));
        }
        TextView text;
        const MMS_Status status = read_whole(value, text, read_text);
        if (failed(status)) {
            return status;
        }
        if (equal_ignoring_case(name, CONTENT_ID_FIELD_NAME)) {
            OwnedText content_id = copy_text(text);
            return content_id ? index_.set(FieldId::content_id, std::move(content_id))
                              : MMS_STATUS_NO_ROOM;
        }
        OwnedGenericData data = make_generic_data(name, text);
        return data ? index_.set_generic(name, std::move(data)) : MMS_STATUS_NO_ROOM;
    }

    // Reads a value that has to fill its field.
    template <typename Value>
    static MMS_Status read_whole(Reader field, Value &value,
                                 MMS_Status (*read)(Reader &, Value &)) {
        const MMS_Status status = read(field, value);
        return failed(status) || field.empty() ? status : MMS_STATUS_MALFORMED;
    }

    MMS_Decoder &session_;
    uint32_t left_;
    FieldIndex index_;
};

MMS_Status decode_headers(MMS_Decoder &session, uint32_t length, MMS_Entity &entity) {
    return length == 0 ? MMS_STATUS_MALFORMED : EntityHeaders(session, length, entity).decode();
}

// Content type and other headers, `length` octets or what is left of the PDU.
MMS_Status decode_part_headers(MMS_Decoder &session, uint32_t length, MMS_Entity &entity) {
    Reader in = rest_of(session).first(length);
    const Reader start = in;
    OwnedContentType content_type;
    const MMS_Status status = read_content_type(in, content_type);
    if (failed(status)) {
        return status;
    }
    const uint32_t consumed = in.consumed_since(start);
    advance(session, consumed);
    entity.isMultipart = MMS_IsMultipart(content_type.get()) != 0 ? 1 : 0;
    if (!set_owned(&entity, FieldId::content_type, std::move(content_type))) {
        return MMS_STATUS_NO_ROOM;
    }
    if (entity.isMultipart != 0 && !set_owned(&entity, FieldId::internal_nested_multipart,
                                              OwnedContainer(MMS_Container_Create()))) {
        return MMS_STATUS_NO_ROOM;
    }
    if (consumed == length) {
        return MMS_STATUS_OK;
    }
    return decode_headers(session, rest_of(session).first(length - consumed).left(), entity);
}

// The data of a part, as much of it as the PDU holds.
MMS_Status decode_data(MMS_Decoder &session, uint32_t length, MMS_Entity &entity) {
    const Reader data = rest_of(session).first(length);
    if (MMS_SetContent(&entity, data.data(), data.left(), 0) == 0) {
        return MMS_STATUS_MALFORMED;
    }
    advance(session, length);
    return MMS_STATUS_OK;
}

// The body of a multipart part; one nested too deep is passed over.
MMS_Status decode_nested(MMS_Decoder &session, uint32_t length, const MMS_Entity &entity) {
    MMS_Status status = MMS_STATUS_OK;
    ++session.depth;
    if (session.depth <= deepest_nesting) {
        status = static_cast<MMS_Status>(DecodeMultipart(&session, nested_container(&entity)));
    } else {
        advance(session, length);
        session.skipped = 1;
    }
    --session.depth;
    return status;
}

// Decodes one part into `part`, which stays null where there is none to keep.
MMS_Status decode_part(MMS_Decoder &session, OwnedEntity &part) {
    if (session.entityCount >= most_parts) {
        return MMS_STATUS_TOO_MANY_PARTS;
    }
    ++session.entityCount;
    uint32_t headers_length = 0;
    uint32_t data_length = 0;
    MMS_Status status = decode_uintvar(session, headers_length);
    if (!failed(status)) {
        status = decode_uintvar(session, data_length);
    }
    if (failed(status)) {
        return status;
    }
    OwnedEntity entity(MMS_Entity_Create());
    if (!entity) {
        return MMS_STATUS_NO_ROOM;
    }
    status = decode_part_headers(session, headers_length, *entity);
    if (failed(status)) {
        return status;
    }
    status = entity->isMultipart != 0 ? decode_nested(session, data_length, *entity)
                                      : decode_data(session, data_length, *entity);
    const bool whole = status == MMS_STATUS_OK && session.skipped == 0;
    if (whole || status == MMS_STATUS_TOO_MANY_PARTS) {
        part = std::move(entity);
    }
    return status;
}

MMS_Status add_part(MMS_Container &container, OwnedEntity part) {
    uint16_t position = 0;
    if (MMS_AddEntity(&container, part.get(), &position) == 0) {
        return MMS_STATUS_NO_ROOM;
    }
    static_cast<void>(part.release());
    return MMS_STATUS_OK;
}

} // namespace
} // namespace mms

uint32_t DecodeMultipart(MMS_Decoder *pDecoder, MMS_Container *pContainer) {
    pDecoder->skipped = 0;
    uint32_t parts = 0;
    MMS_Status status = mms::decode_uintvar(*pDecoder, parts);
    while (!mms::failed(status) && parts != 0) {
        mms::OwnedEntity part;
        status = mms::decode_part(*pDecoder, part);
        pDecoder->skipped = 0;
        if (part) {
            const MMS_Status added = mms::add_part(*pContainer, std::move(part));
            status = mms::failed(added) ? added : status;
        }
        --parts;
    }
    return status;
}

uint32_t DecodeMultipartEntity(MMS_Decoder *pDecoder, MMS_Entity **ppEntity) {
    mms::OwnedEntity part;
    const MMS_Status status = mms::decode_part(*pDecoder, part);
    *ppEntity = part.release();
    return status;
}

uint32_t DecodeWspHeaders(MMS_Decoder *pDecoder, uint32_t length, MMS_Entity *pEntity) {
    return mms::decode_headers(*pDecoder, length, *pEntity);
}
