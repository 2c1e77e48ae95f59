#include "api/api.h"
#include "model/model.hpp"

namespace {

using mms::TextView;

constexpr mms::FieldId generic_id = mms::FieldId::internal_generic_entity_header;

// Deletes the generic headers of that name, `kept` excepted; whether there were any. The name may
// be that of a header which is deleted, so all are unlinked before any is released.
bool delete_generic(MMS_FieldList *list, TextView name, const MMS_Field *kept) {
    MMS_FieldList unlinked;
    slList_Init(&unlinked, nullptr, list->linkOffset);
    slIterator iterator;
    slIterator_Init(&iterator, list);
    while (slIterator_Current(&iterator) != nullptr) {
        const auto *field = static_cast<const MMS_Field *>(slIterator_Current(&iterator));
        if (field != kept && mms::is_generic_named(field, name)) {
            slList_InsertLast(&unlinked, slIterator_RemoveCurrent(&iterator));
        } else {
            slIterator_Next(&iterator);
        }
    }
    const bool deleted = unlinked.nElement != 0;
    slList_Dispose(&unlinked, Dispose_FieldList);
    return deleted;
}

} // namespace

uint32_t MMSLib_SetGenericTextField(MMS_Entity *pEntity, const char *pName, const char *pValue) {
    if (pName == nullptr || pValue == nullptr) {
        return 0;
    }
    const TextView name = mms::view_of(pName);
    mms::OwnedGenericData data = mms::make_generic_data(name, mms::view_of(pValue));
    if (!data) {
        return 0;
    }
    MMS_Field *field = mms::find_generic(pEntity, name);
    if (field == nullptr) {
        field = mms::append_field(pEntity->pFieldList, generic_id, data.get());
        if (field == nullptr) {
            return 0;
        }
        static_cast<void>(data.release());
        return 1;
    }
    delete_generic(pEntity->pFieldList, name, field);
    mms::replace_value(field, data.release());
    return 1;
}

const char *MMSLib_GetGenericTextField(const MMS_Entity *pEntity, const char *pName) {
    const MMS_Field *field =
        pName != nullptr ? mms::find_generic(pEntity, mms::view_of(pName)) : nullptr;
    return field != nullptr ? static_cast<const MMS_GenericData *>(field->pValue)->pHeaderValue
                            : nullptr;
}

uint32_t MMSLib_DelGenericTextField(MMS_Entity *pEntity, const char *pName) {
    return pName != nullptr && delete_generic(pEntity->pFieldList, mms::view_of(pName), nullptr)
               ? 1
               : 0;
}
