// One getter, setter and deleter for each header of a message. What they share follows from the
// header's row in the header table.
#include "api/api.h"
#include "model/model.hpp"

namespace {

using mms::FieldId;

template <typename Record>
Record *get(const MMS_Container *container, FieldId id) {
    return static_cast<Record *>(mms::find_value(container, id));
}

uint8_t get_octet(const MMS_Container *container, FieldId id) {
    return static_cast<uint8_t>(mms::integer_of(mms::find_value(container, id)));
}

uint32_t get_number(const MMS_Container *container, FieldId id, uint32_t &value) {
    const MMS_Entity *entity = mms::find_entity(container->pEntityList, id);
    if (entity == nullptr) {
        return 0;
    }
    value = mms::integer_of(mms::find_value(entity, id));
    return 1;
}

uint32_t set_slot(MMS_Container *container, FieldId id, void *value) {
    MMS_Entity *entity = mms::entity_for(container, id);
    return entity != nullptr && mms::set_field(entity, id, value) ? 1 : 0;
}

uint32_t set_octet(MMS_Container *container, FieldId id, uint8_t value) {
    return mms::header(id).accepts(value) ? set_slot(container, id, mms::slot_of(value)) : 0;
}

uint32_t set_record(MMS_Container *container, FieldId id, void *record) {
    return record != nullptr ? set_slot(container, id, record) : 0;
}

uint32_t set_text(MMS_Container *container, FieldId id, const char *text) {
    MMS_Entity *entity = mms::entity_for(container, id);
    return entity != nullptr && mms::set_text(entity, id, text) ? 1 : 0;
}

// Moves the field of a present header to the end of its entity's fields.
void move_to_end(MMS_Entity *entity, FieldId id) {
    MMS_Field *field = mms::find_field(entity, id);
    if (field != nullptr) {
        slList_Remove(entity->pFieldList, field);
        slList_InsertLast(entity->pFieldList, field);
    }
}

uint32_t append_text(MMS_Container *container, FieldId id, const char *text) {
    MMS_Entity *entity = mms::entity_for(container, id);
    if (entity == nullptr || !mms::set_text(entity, id, text)) {
        return 0;
    }
    move_to_end(entity, id);
    return 1;
}

uint32_t del(MMS_Container *container, FieldId id) {
    MMS_Entity *entity =
        id != FieldId::unknown ? mms::find_entity(container->pEntityList, id) : nullptr;
    return entity != nullptr && mms::delete_field(entity, id) ? 1 : 0;
}

} // namespace

uint8_t MMSLib_GetXMmsMessageType(const MMS_Container *pContainer) {
    return get_octet(pContainer, FieldId::x_mms_message_type);
}
uint32_t MMSLib_SetXMmsMessageType(MMS_Container *pContainer, uint8_t value) {
    return set_octet(pContainer, FieldId::x_mms_message_type, value);
}
uint32_t MMSLib_DelXMmsMessageType(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_message_type);
}

const char *MMSLib_GetXMmsTransactionId(const MMS_Container *pContainer) {
    return get<char>(pContainer, FieldId::x_mms_transaction_id);
}
uint32_t MMSLib_SetXMmsTransactionId(MMS_Container *pContainer, const char *pText) {
    return append_text(pContainer, FieldId::x_mms_transaction_id, pText);
}
uint32_t MMSLib_DelXMmsTransactionId(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_transaction_id);
}

uint8_t MMSLib_GetXMmsVersion(const MMS_Container *pContainer, uint8_t *pMajor, uint8_t *pMinor) {
    uint32_t version = 0;
    if (get_number(pContainer, FieldId::x_mms_mms_version, version) != 0) {
        *pMajor = MMSGetMajorVersion(static_cast<uint8_t>(version));
        *pMinor = MMSGetMinorVersion(static_cast<uint8_t>(version));
    }
    return static_cast<uint8_t>(version);
}
uint32_t MMSLib_SetXMmsVersion(MMS_Container *pContainer, uint8_t major, uint8_t minor) {
    uint8_t version = 0;
    if (MMSSetMajorVersion(major, &version) == 0 || MMSSetMinorVersion(minor, &version) == 0) {
        return 0;
    }
    return set_slot(pContainer, FieldId::x_mms_mms_version, mms::slot_of(version));
}
uint32_t MMSLib_DelXMmsVersion(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_mms_version);
}

MMS_ContentType *MMSLib_GetContentType(const MMS_Container *pContainer) {
    return get<MMS_ContentType>(pContainer, FieldId::content_type);
}
uint32_t MMSLib_SetContentType(MMS_Container *pContainer, MMS_ContentType *pValue) {
    MMS_Entity *entity = MMS_GetFirstEntity(pContainer->pEntityList);
    return pValue != nullptr && entity != nullptr ? MMS_SetContentType(entity, pValue) : 0;
}
uint32_t MMSLib_DelContentType(MMS_Container *pContainer) {
    return del(pContainer, FieldId::content_type);
}

MMS_Group *MMSLib_GetTo(const MMS_Container *pContainer) {
    return get<MMS_Group>(pContainer, FieldId::to);
}
uint32_t MMSLib_SetTo(MMS_Container *pContainer, MMS_Group *pValue) {
    return set_record(pContainer, FieldId::to, pValue);
}
uint32_t MMSLib_DelTo(MMS_Container *pContainer) { return del(pContainer, FieldId::to); }

MMS_Group *MMSLib_GetCc(const MMS_Container *pContainer) {
    return get<MMS_Group>(pContainer, FieldId::cc);
}
uint32_t MMSLib_SetCc(MMS_Container *pContainer, MMS_Group *pValue) {
    return set_record(pContainer, FieldId::cc, pValue);
}
uint32_t MMSLib_DelCc(MMS_Container *pContainer) { return del(pContainer, FieldId::cc); }

MMS_Group *MMSLib_GetBcc(const MMS_Container *pContainer) {
    return get<MMS_Group>(pContainer, FieldId::bcc);
}
uint32_t MMSLib_SetBcc(MMS_Container *pContainer, MMS_Group *pValue) {
    return set_record(pContainer, FieldId::bcc, pValue);
}
uint32_t MMSLib_DelBcc(MMS_Container *pContainer) { return del(pContainer, FieldId::bcc); }

MMS_Group *MMSLib_GetFrom(const MMS_Container *pContainer) {
    return get<MMS_Group>(pContainer, FieldId::from);
}
uint32_t MMSLib_SetFrom(MMS_Container *pContainer, MMS_Group *pValue) {
    return set_record(pContainer, FieldId::from, pValue);
}
uint32_t MMSLib_DelFrom(MMS_Container *pContainer) { return del(pContainer, FieldId::from); }

MMS_EncodedString *MMSLib_GetSubject(const MMS_Container *pContainer) {
    return get<MMS_EncodedString>(pContainer, FieldId::subject);
}
uint32_t MMSLib_SetSubject(MMS_Container *pContainer, MMS_EncodedString *pValue) {
    return set_record(pContainer, FieldId::subject, pValue);
}
uint32_t MMSLib_DelSubject(MMS_Container *pContainer) { return del(pContainer, FieldId::subject); }

uint8_t MMSLib_GetXMmsStatus(const MMS_Container *pContainer) {
    return get_octet(pContainer, FieldId::x_mms_status);
}
uint32_t MMSLib_SetXMmsStatus(MMS_Container *pContainer, uint8_t value) {
    return set_octet(pContainer, FieldId::x_mms_status, value);
}
uint32_t MMSLib_DelXMmsStatus(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_status);
}

const char *MMSLib_GetXMmsMessageClass(const MMS_Container *pContainer) {
    return get<char>(pContainer, FieldId::x_mms_message_class);
}
uint32_t MMSLib_SetXMmsMessageClass(MMS_Container *pContainer, const char *pText) {
    return set_text(pContainer, FieldId::x_mms_message_class, pText);
}
uint32_t MMSLib_DelXMmsMessageClass(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_message_class);
}

uint8_t MMSLib_GetXMmsPriority(const MMS_Container *pContainer) {
    return get_octet(pContainer, FieldId::x_mms_priority);
}
uint32_t MMSLib_SetXMmsPriority(MMS_Container *pContainer, uint8_t value) {
    return set_octet(pContainer, FieldId::x_mms_priority, value);
}
uint32_t MMSLib_DelXMmsPriority(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_priority);
}

const char *MMSLib_GetXMmsContentLocation(const MMS_Container *pContainer) {
    return get<char>(pContainer, FieldId::x_mms_content_location);
}
uint32_t MMSLib_SetXMmsContentLocation(MMS_Container *pContainer, const char *pText) {
    return set_text(pContainer, FieldId::x_mms_content_location, pText);
}
uint32_t MMSLib_DelXMmsContentLocation(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_content_location);
}

uint32_t MMSLib_GetDate(const MMS_Container *pContainer, uint32_t *pValue) {
    return get_number(pContainer, FieldId::date, *pValue);
}
uint32_t MMSLib_SetDate(MMS_Container *pContainer, uint32_t value) {
    return set_slot(pContainer, FieldId::date, mms::slot_of(value));
}
uint32_t MMSLib_DelDate(MMS_Container *pContainer) { return del(pContainer, FieldId::date); }

uint8_t MMSLib_GetXMmsDeliveryReport(const MMS_Container *pContainer) {
    return get_octet(pContainer, FieldId::x_mms_delivery_report);
}
uint32_t MMSLib_SetXMmsDeliveryReport(MMS_Container *pContainer, uint8_t value) {
    return set_octet(pContainer, FieldId::x_mms_delivery_report, value);
}
uint32_t MMSLib_DelXMmsDeliveryReport(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_delivery_report);
}

MMS_SpecialTime *MMSLib_GetXMmsDeliveryTime(const MMS_Container *pContainer) {
    return get<MMS_SpecialTime>(pContainer, FieldId::x_mms_delivery_time);
}
uint32_t MMSLib_SetXMmsDeliveryTime(MMS_Container *pContainer, MMS_SpecialTime *pValue) {
    return set_record(pContainer, FieldId::x_mms_delivery_time, pValue);
}
uint32_t MMSLib_DelXMmsDeliveryTime(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_delivery_time);
}

MMS_SpecialTime *MMSLib_GetXMmsExpiry(const MMS_Container *pContainer) {
    return get<MMS_SpecialTime>(pContainer, FieldId::x_mms_expiry);
}
uint32_t MMSLib_SetXMmsExpiry(MMS_Container *pContainer, MMS_SpecialTime *pValue) {
    return set_record(pContainer, FieldId::x_mms_expiry, pValue);
}
uint32_t MMSLib_DelXMmsExpiry(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_expiry);
}

const char *MMSLib_GetMessageId(const MMS_Container *pContainer) {
    return get<char>(pContainer, FieldId::message_id);
}
uint32_t MMSLib_SetMessageId(MMS_Container *pContainer, const char *pText) {
    return set_text(pContainer, FieldId::message_id, pText);
}
uint32_t MMSLib_DelMessageId(MMS_Container *pContainer) {
    return del(pContainer, FieldId::message_id);
}

uint32_t MMSLib_GetXMmsMessageSize(const MMS_Container *pContainer, uint32_t *pValue) {
    return get_number(pContainer, FieldId::x_mms_message_size, *pValue);
}
uint32_t MMSLib_SetXMmsMessageSize(MMS_Container *pContainer, uint32_t value) {
    return set_slot(pContainer, FieldId::x_mms_message_size, mms::slot_of(value));
}
uint32_t MMSLib_DelXMmsMessageSize(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_message_size);
}

uint8_t MMSLib_GetXMmsReadReport(const MMS_Container *pContainer) {
    return get_octet(pContainer, FieldId::x_mms_read_report);
}
uint32_t MMSLib_SetXMmsReadReport(MMS_Container *pContainer, uint8_t value) {
    return set_octet(pContainer, FieldId::x_mms_read_report, value);
}
uint32_t MMSLib_DelXMmsReadReport(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_read_report);
}

uint8_t MMSLib_GetXMmsResponseStatus(const MMS_Container *pContainer) {
    return get_octet(pContainer, FieldId::x_mms_response_status);
}
uint32_t MMSLib_SetXMmsResponseStatus(MMS_Container *pContainer, uint8_t value) {
    return set_octet(pContainer, FieldId::x_mms_response_status, value);
}
uint32_t MMSLib_DelXMmsResponseStatus(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_response_status);
}

MMS_EncodedString *MMSLib_GetXMmsResponseText(const MMS_Container *pContainer) {
    return get<MMS_EncodedString>(pContainer, FieldId::x_mms_response_text);
}
uint32_t MMSLib_SetXMmsResponseText(MMS_Container *pContainer, MMS_EncodedString *pValue) {
    return set_record(pContainer, FieldId::x_mms_response_text, pValue);
}
uint32_t MMSLib_DelXMmsResponseText(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_response_text);
}

uint8_t MMSLib_GetXMmsSenderVisibility(const MMS_Container *pContainer) {
    return get_octet(pContainer, FieldId::x_mms_sender_visibility);
}
uint32_t MMSLib_SetXMmsSenderVisibility(MMS_Container *pContainer, uint8_t value) {
    return set_octet(pContainer, FieldId::x_mms_sender_visibility, value);
}
uint32_t MMSLib_DelXMmsSenderVisibility(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_sender_visibility);
}

uint8_t MMSLib_GetXMmsRetrieveStatus(const MMS_Container *pContainer) {
    return get_octet(pContainer, FieldId::x_mms_retrieve_status);
}
uint32_t MMSLib_SetXMmsRetrieveStatus(MMS_Container *pContainer, uint8_t value) {
    return set_octet(pContainer, FieldId::x_mms_retrieve_status, value);
}
uint32_t MMSLib_DelXMmsRetrieveStatus(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_retrieve_status);
}

uint8_t MMSLib_GetXMmsReadStatus(const MMS_Container *pContainer) {
    return get_octet(pContainer, FieldId::x_mms_read_status);
}
uint32_t MMSLib_SetXMmsReadStatus(MMS_Container *pContainer, uint8_t value) {
    return set_octet(pContainer, FieldId::x_mms_read_status, value);
}
uint32_t MMSLib_DelXMmsReadStatus(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_read_status);
}

uint8_t MMSLib_GetXMmsDrmContent(const MMS_Container *pContainer) {
    return get_octet(pContainer, FieldId::x_mms_drm_content);
}
uint32_t MMSLib_SetXMmsDrmContent(MMS_Container *pContainer, uint8_t value) {
    return set_octet(pContainer, FieldId::x_mms_drm_content, value);
}
uint32_t MMSLib_DelXMmsDrmContent(MMS_Container *pContainer) {
    return del(pContainer, FieldId::x_mms_drm_content);
}

const char *MMSLib_GetXMmsGenericTextField(const MMS_Container *pContainer, const char *pName) {
    return get<char>(pContainer, mms::field_id(pName));
}

uint32_t MMSLib_SetXMmsGenericTextField(MMS_Container *pContainer, const char *pName,
                                        const char *pText) {
    const FieldId id = mms::field_id(pName);
    return mms::header(id).kind == mms::ValueKind::text ? set_text(pContainer, id, pText) : 0;
}

uint32_t MMSLib_DelXMmsGenericTextField(MMS_Container *pContainer, const char *pName) {
    return del(pContainer, mms::field_id(pName));
}
