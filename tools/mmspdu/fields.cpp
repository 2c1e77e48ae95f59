#include "fields.hpp"

namespace mmspdu {
namespace {

struct Row {
    const char *header;
    ValueKind kind;
};

const Row rows[] = {
    {X_MMS_MMS_VERSION_FIELD_NAME, ValueKind::version},
    {X_MMS_TRANSACTION_ID_FIELD_NAME, ValueKind::text},
    {X_MMS_MESSAGE_CLASS_FIELD_NAME, ValueKind::text},
    {X_MMS_CONTENT_LOCATION_FIELD_NAME, ValueKind::text},
    {X_MMS_APPLIC_ID_FIELD_NAME, ValueKind::text},
    {X_MMS_REPLY_APPLIC_ID_FIELD_NAME, ValueKind::text},
    {MESSAGE_ID_FIELD_NAME, ValueKind::text},
    {SUBJECT_FIELD_NAME, ValueKind::encoded_string},
    {X_MMS_RESPONSE_TEXT_FIELD_NAME, ValueKind::encoded_string},
    {DATE_FIELD_NAME, ValueKind::date},
    {X_MMS_DELIVERY_TIME_FIELD_NAME, ValueKind::time},
    {X_MMS_EXPIRY_FIELD_NAME, ValueKind::time},
    {X_MMS_MESSAGE_SIZE_FIELD_NAME, ValueKind::size},
    {TO_FIELD_NAME, ValueKind::group},
    {CC_FIELD_NAME, ValueKind::group},
    {BCC_FIELD_NAME, ValueKind::group},
    {FROM_FIELD_NAME, ValueKind::group},
    {CONTENT_TYPE_FIELD_NAME, ValueKind::content_type},
    {CONTENT_ID_FIELD_NAME, ValueKind::text},
    {CONTENT_LOCATION_FIELD_NAME, ValueKind::text},
    {CONTENT_DURATION_FIELD_NAME, ValueKind::duration},
    {CONTENT_DISPOSITION_FIELD_NAME, ValueKind::disposition},
    {INTERNAL_GENERIC_ENTITY_HEADER_FIELD_NAME, ValueKind::generic},
    {INTERNAL_NESTED_MULTIPART_FIELD_NAME, ValueKind::container},
};

void add_parts(const MMS_Container &container, const std::string &prefix, uint32_t first_number,
               std::vector<NumberedPart> &parts) {
    uint32_t number = first_number;
    for_each_record<MMS_Entity>(container.pEntityList, [&](const MMS_Entity &entity) {
        const std::string name = number == 0 ? "" : prefix + std::to_string(number);
        parts.push_back({name, &entity});
        const MMS_Container *nested = nested_container(entity);
        if (nested != nullptr) {
            add_parts(*nested, name + "/", 1, parts);
        }
        ++number;
    });
}

} // namespace

ValueKind value_kind(std::string_view header) {
    for (const Row &row : rows) {
        if (header == row.header) {
            return row.kind;
        }
    }
    // Every header that is in no other form is one octet.
    return ValueKind::octet;
}

const MMS_Container *nested_container(const MMS_Entity &entity) {
    const MMS_Field *field = MMS_FindField(&entity, INTERNAL_NESTED_MULTIPART_FIELD_NAME);
    return field != nullptr ? static_cast<const MMS_Container *>(field->pValue) : nullptr;
}

std::vector<NumberedPart> parts_of(const MMSLib_Message &message) {
    std::vector<NumberedPart> parts;
    add_parts(*message.pContainer, "", 0, parts);
    return parts;
}

} // namespace mmspdu
