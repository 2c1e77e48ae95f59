#include "model/model.hpp"

using mms::FieldId;
using mms::OwnedOctets;

MMS_Entity *MMS_Entity_Create(void) {
    mms::OwnedEntity entity(mms::allocate<MMS_Entity>());
    if (entity) {
        entity->pFieldList = MMS_LinkedList_CreateFieldList();
    }
    return entity && entity->pFieldList != nullptr ? entity.release() : nullptr;
}

void MMS_Entity_Destroy(MMS_Entity *pEntity) {
    if (pEntity != nullptr) {
        std::free(pEntity->pContent);
        MMS_LinkedList_DestroyFieldList(pEntity->pFieldList);
        std::free(pEntity);
    }
}

uint32_t MMS_SetField(MMS_Entity *pEntity, const char *pName, void *pValue) {
    return mms::set_field(pEntity, mms::field_id(pName), pValue) ? 1 : 0;
}

MMS_Field *MMS_FindField(const MMS_Entity *pEntity, const char *pName) {
    return mms::find_field(pEntity, mms::field_id(pName));
}

uint32_t MMS_DelField(MMS_Entity *pEntity, const char *pName) {
    return mms::delete_field(pEntity, mms::field_id(pName)) ? 1 : 0;
}

uint32_t MMS_SetContentType(MMS_Entity *pEntity, MMS_ContentType *pContentType) {
    return mms::set_field(pEntity, FieldId::content_type, pContentType) ? 1 : 0;
}
MMS_ContentType *MMS_GetContentType(const MMS_Entity *pEntity) {
    return static_cast<MMS_ContentType *>(mms::find_value(pEntity, FieldId::content_type));
}
uint32_t MMS_DelContentType(MMS_Entity *pEntity) {
    return mms::delete_field(pEntity, FieldId::content_type) ? 1 : 0;
}

uint32_t MMS_SetContentDisposition(MMS_Entity *pEntity, MMS_ContentDisposition *pDisposition) {
    return mms::set_field(pEntity, FieldId::content_disposition, pDisposition) ? 1 : 0;
}
MMS_ContentDisposition *MMS_GetContentDisposition(const MMS_Entity *pEntity) {
    return static_cast<MMS_ContentDisposition *>(
        mms::find_value(pEntity, FieldId::content_disposition));
}
uint32_t MMS_DelContentDisposition(MMS_Entity *pEntity) {
    return mms::delete_field(pEntity, FieldId::content_disposition) ? 1 : 0;
}

uint32_t MMS_SetContentId(MMS_Entity *pEntity, const char *pContentId) {
    return mms::set_text(pEntity, FieldId::content_id, pContentId) ? 1 : 0;
}
const char *MMS_GetContentId(const MMS_Entity *pEntity) {
    return static_cast<const char *>(mms::find_value(pEntity, FieldId::content_id));
}
uint32_t MMS_DelContentId(MMS_Entity *pEntity) {
    return mms::delete_field(pEntity, FieldId::content_id) ? 1 : 0;
}

uint32_t MMS_SetContentLocation(MMS_Entity *pEntity, const char *pContentLocation) {
    return mms::set_text(pEntity, FieldId::content_location, pContentLocation) ? 1 : 0;
}
const char *MMS_GetContentLocation(const MMS_Entity *pEntity) {
    return static_cast<const char *>(mms::find_value(pEntity, FieldId::content_location));
}
uint32_t MMS_DelContentLocation(MMS_Entity *pEntity) {
    return mms::delete_field(pEntity, FieldId::content_location) ? 1 : 0;
}

uint32_t MMS_SetContentDuration(MMS_Entity *pEntity, uint32_t seconds) {
    return mms::set_field(pEntity, FieldId::content_duration, mms::slot_of(seconds)) ? 1 : 0;
}
uint32_t MMS_GetContentDuration(const MMS_Entity *pEntity, uint32_t *pSeconds) {
    const MMS_Field *field = mms::find_field(pEntity, FieldId::content_duration);
    *pSeconds = field != nullptr ? mms::integer_of(field->pValue) : 0;
    return field != nullptr ? 1 : 0;
}
uint32_t MMS_DelContentDuration(MMS_Entity *pEntity) {
    return mms::delete_field(pEntity, FieldId::content_duration) ? 1 : 0;
}

MMS_Parameter *MMS_FindContentTypeParameter(const MMS_ContentType *pContentType,
                                            const char *pName) {
    return MMS_LinkedList_FindParameterByAttribute(pContentType->pParameters, pName);
}

uint32_t MMS_SetContent(MMS_Entity *pEntity, const uint8_t *pData, uint32_t length, uint8_t adopt) {
    OwnedOctets content;
    if (length != 0) {
        if (pData == nullptr) {
            return 0;
        }
        if (adopt != 0) {
            content.reset(const_cast<uint8_t *>(pData));
        } else {
            content.reset(static_cast<uint8_t *>(std::malloc(length)));
            if (!content) {
                return 0;
            }
            std::memcpy(content.get(), pData, length);
        }
    }
    if (content.get() != pEntity->pContent) {
        MMS_DelContent(pEntity);
    }
    pEntity->pContent = content.release();
    pEntity->contentLength = length;
    return 1;
}

uint8_t *MMS_GetContent(const MMS_Entity *pEntity) { return pEntity->pContent; }

uint8_t *MMS_GetCMSourceContent(const MMS_Entity *pEntity) { return pEntity->pContent; }

uint32_t MMS_GetContentLength(const MMS_Entity *pEntity) {
    return pEntity->pContent != nullptr ? pEntity->contentLength : 0;
}

uint32_t MMS_DelContent(MMS_Entity *pEntity) {
    const bool present = pEntity->pContent != nullptr;
    std::free(pEntity->pContent);
    pEntity->pContent = nullptr;
    pEntity->contentLength = 0;
    return present ? 1 : 0;
}

namespace mms {

void replace_value(MMS_Field *field, void *value) {
    if (field->pValue != value) {
        release_value(id_of(field), field->pValue);
        field->pValue = value;
    }
}

bool set_field(MMS_Entity *entity, FieldId id, void *value) {
    MMS_Field *field = find_field(entity, id);
    if (field == nullptr) {
        return append_field(entity->pFieldList, id, value) != nullptr;
    }
    replace_value(field, value);
    return true;
}

bool set_text(MMS_Entity *entity, FieldId id, const char *text) {
    return text != nullptr && set_owned(entity, id, copy_text(text));
}

bool delete_field(MMS_Entity *entity, FieldId id) {
    if (id == FieldId::unknown) {
        return false;
    }
    slIterator iterator;
    slIterator_Init(&iterator, entity->pFieldList);
    const MMS_Field wanted = {nullptr, nullptr, number(id)};
    if (slIterator_Find(&iterator, Compare_FieldList, &wanted) == nullptr) {
        return false;
    }
    Dispose_FieldList(slIterator_RemoveCurrent(&iterator));
    return true;
}

bool is_generic_named(const MMS_Field *field, TextView name) {
    if (id_of(field) != FieldId::internal_generic_entity_header) {
        return false;
    }
    const auto *data = static_cast<const MMS_GenericData *>(field->pValue);
    return data != nullptr && data->pHeaderName != nullptr &&
           equal_ignoring_case(name, data->pHeaderName);
}

MMS_Field *find_generic(const MMS_Entity *entity, TextView name) {
    for (MMS_Field *field : Fields(entity->pFieldList)) {
        if (is_generic_named(field, name)) {
            return field;
        }
    }
    return nullptr;
}

MMS_Container *nested_container(const MMS_Entity *entity) {
    return static_cast<MMS_Container *>(find_value(entity, FieldId::internal_nested_multipart));
}

} // namespace mms
