#include "model/model.hpp"

#include <cstddef>

namespace {

using mms::FieldId;

slList *create_list(slList_CmpFn compare, size_t link_offset) {
    auto *list = mms::allocate<slList>();
    if (list != nullptr) {
        slList_Init(list, compare, static_cast<uint16_t>(link_offset));
    }
    return list;
}

slList *create_node_list() { return create_list(nullptr, offsetof(MMS_ListNode, pNext)); }

template <typename Node>
void destroy_list(slList *list, void (*dispose)(Node *)) {
    if (list == nullptr) {
        return;
    }
    auto at = mms::Nodes<Node>(list).begin();
    for (uint32_t left = list->nElement; left != 0; --left) {
        Node *node = *at;
        ++at;
        dispose(node);
    }
    std::free(list);
}

bool append_node(slList *list, void *record) {
    auto *node = mms::allocate<MMS_ListNode>();
    if (node == nullptr) {
        return false;
    }
    node->pValue = record;
    if (!mms::append(list, node)) {
        std::free(node);
        return false;
    }
    return true;
}

// The element at that position, or null.
template <typename Node>
Node *node_at(const slList *list, uint32_t position) {
    if (position >= list->nElement) {
        return nullptr;
    }
    if (position + 1U == list->nElement) {
        return static_cast<Node *>(list->pLast);
    }
    auto node = mms::Nodes<Node>(list).begin();
    for (; position != 0; --position) {
        ++node;
    }
    return *node;
}

template <typename Record>
Record *record_at(const slList *list, uint32_t position) {
    const auto *node = node_at<MMS_ListNode>(list, position);
    return node != nullptr ? static_cast<Record *>(node->pValue) : nullptr;
}

bool delete_at(slList *list, uint32_t position, slList_DispFn dispose) {
    if (position >= list->nElement) {
        return false;
    }
    slIterator iterator;
    slIterator_Init(&iterator, list);
    slIterator_Go(&iterator, position);
    dispose(slIterator_RemoveCurrent(&iterator));
    return true;
}

// A field that holds the value but does not yet own it.
MMS_Field *create_field(FieldId id, void *value) {
    auto *field = mms::allocate<MMS_Field>();
    if (field != nullptr) {
        field->pValue = value;
        field->fieldId = mms::number(id);
    }
    return field;
}

void dispose_field(MMS_Field *field) {
    mms::release_value(mms::id_of(field), field->pValue);
    std::free(field);
}

template <typename Record, void (*destroy)(Record *)>
void dispose_node(MMS_ListNode *node) {
    destroy(static_cast<Record *>(node->pValue));
    std::free(node);
}

constexpr auto dispose_entity = dispose_node<MMS_Entity, MMS_Entity_Destroy>;
constexpr auto dispose_mailbox = dispose_node<MMS_Mailbox, MMS_DestroyMailbox>;
constexpr auto dispose_parameter = dispose_node<MMS_Parameter, MMS_DestroyParameter>;

// As the callbacks of the generic list have it: nothing happens to null.
template <typename Node>
void dispose_element(void *element, void (*dispose)(Node *)) {
    if (element != nullptr) {
        dispose(static_cast<Node *>(element));
    }
}

} // namespace

MMS_FieldList *MMS_LinkedList_CreateFieldList(void) {
    return create_list(Compare_FieldList, offsetof(MMS_Field, pNext));
}
MMS_EntityList *MMS_LinkedList_CreateEntityList(void) { return create_node_list(); }
MMS_MailboxList *MMS_LinkedList_CreateMailboxList(void) { return create_node_list(); }
MMS_ParameterList *MMS_LinkedList_CreateParameterList(void) { return create_node_list(); }

void MMS_LinkedList_DestroyFieldList(MMS_FieldList *pList) { destroy_list(pList, dispose_field); }
void MMS_LinkedList_DestroyEntityList(MMS_EntityList *pList) {
    destroy_list(pList, dispose_entity);
}
void MMS_LinkedList_DestroyMailboxList(MMS_MailboxList *pList) {
    destroy_list(pList, dispose_mailbox);
}
void MMS_LinkedList_DestroyParameterList(MMS_ParameterList *pList) {
    destroy_list(pList, dispose_parameter);
}

uint16_t MMS_LinkedList_GetFieldCount(const MMS_FieldList *pList) { return pList->nElement; }
uint16_t MMS_LinkedList_GetEntityCount(const MMS_EntityList *pList) { return pList->nElement; }
uint16_t MMS_LinkedList_GetMailboxCount(const MMS_MailboxList *pList) { return pList->nElement; }
uint16_t MMS_LinkedList_GetParameterCount(const MMS_ParameterList *pList) {
    return pList->nElement;
}

uint32_t MMS_LinkedList_AddField(MMS_FieldList *pList, const char *pName, void *pValue) {
    return mms::append_field(pList, mms::field_id(pName), pValue) != nullptr ? 1 : 0;
}

uint32_t MMS_LinkedList_AddFieldToPos(MMS_FieldList *pList, const char *pName, void *pValue,
                                      uint32_t position) {
    if (position > pList->nElement) {
        return 0;
    }
    MMS_Field *field = create_field(mms::field_id(pName), pValue);
    if (field == nullptr) {
        return 0;
    }
    slIterator iterator;
    slIterator_Init(&iterator, pList);
    slIterator_Go(&iterator, position);
    if (slIterator_InsertBefore(&iterator, field) == nullptr) {
        std::free(field);
        return 0;
    }
    return 1;
}

uint32_t MMS_LinkedList_AddEntity(MMS_EntityList *pList, MMS_Entity *pEntity, uint16_t *pPosition) {
    *pPosition = pList->nElement;
    return append_node(pList, pEntity) ? 1 : 0;
}
uint32_t MMS_LinkedList_AddMailbox(MMS_MailboxList *pList, MMS_Mailbox *pMailbox) {
    return append_node(pList, pMailbox) ? 1 : 0;
}
uint32_t MMS_LinkedList_AddParameter(MMS_ParameterList *pList, MMS_Parameter *pParameter) {
    return append_node(pList, pParameter) ? 1 : 0;
}

MMS_Field *MMS_LinkedList_FindFieldByPos(const MMS_FieldList *pList, uint32_t position) {
    return node_at<MMS_Field>(pList, position);
}
MMS_Entity *MMS_LinkedList_FindEntityByPos(const MMS_EntityList *pList, uint32_t position) {
    return record_at<MMS_Entity>(pList, position);
}
MMS_Mailbox *MMS_LinkedList_FindMailboxByPos(const MMS_MailboxList *pList, uint32_t position) {
    return record_at<MMS_Mailbox>(pList, position);
}
MMS_Parameter *MMS_LinkedList_FindParameterByPos(const MMS_ParameterList *pList,
                                                 uint32_t position) {
    return record_at<MMS_Parameter>(pList, position);
}

uint32_t MMS_LinkedList_DelFieldByPos(MMS_FieldList *pList, uint32_t position) {
    return delete_at(pList, position, Dispose_FieldList) ? 1 : 0;
}
uint32_t MMS_LinkedList_DelEntityByPos(MMS_EntityList *pList, uint32_t position) {
    return delete_at(pList, position, Dispose_EntityList) ? 1 : 0;
}
uint32_t MMS_LinkedList_DelMailboxByPos(MMS_MailboxList *pList, uint32_t position) {
    return delete_at(pList, position, Dispose_MailboxList) ? 1 : 0;
}
uint32_t MMS_LinkedList_DelParameterByPos(MMS_ParameterList *pList, uint32_t position) {
    return delete_at(pList, position, Dispose_ParameterList) ? 1 : 0;
}

uint8_t MMS_LinkedList_FindFieldByName(const MMS_FieldList *pList, const char *pName,
                                       uint16_t *pPosition) {
    const uint8_t id = mms::number(mms::field_id(pName));
    *pPosition = 0;
    for (const MMS_Field *field : mms::Fields(pList)) {
        if (field->fieldId == id) {
            return id;
        }
        ++*pPosition;
    }
    return 0;
}

MMS_Parameter *MMS_LinkedList_FindParameterByAttribute(const MMS_ParameterList *pList,
                                                       const char *pName) {
    for (MMS_Parameter *parameter : mms::Parameters(pList)) {
        if (StrCaseCmp(parameter->pName, pName) == 0) {
            return parameter;
        }
    }
    return nullptr;
}

int32_t Compare_FieldList(const void *pField, const void *pOther) {
    return int32_t{static_cast<const MMS_Field *>(pField)->fieldId} -
           int32_t{static_cast<const MMS_Field *>(pOther)->fieldId};
}

void Dispose_FieldList(void *pField) { dispose_element(pField, dispose_field); }
void Dispose_EntityList(void *pNode) { dispose_element(pNode, dispose_entity); }
void Dispose_MailboxList(void *pNode) { dispose_element(pNode, dispose_mailbox); }
void Dispose_ParameterList(void *pNode) { dispose_element(pNode, dispose_parameter); }

namespace mms {

MMS_Field *append_field(MMS_FieldList *list, FieldId id, void *value) {
    MMS_Field *field = create_field(id, value);
    if (field != nullptr && !append(list, field)) {
        std::free(field);
        return nullptr;
    }
    return field;
}

void release_value(FieldId id, void *value) {
    switch (header(id).kind) {
    case ValueKind::integer:
        break;
    case ValueKind::text:
        std::free(value);
        break;
    case ValueKind::encoded_string:
        MMS_DestroyEncodedString(static_cast<MMS_EncodedString *>(value));
        break;
    case ValueKind::group:
        MMS_Group_Destroy(static_cast<MMS_Group *>(value));
        break;
    case ValueKind::content_type:
        MMS_DestroyContentType(static_cast<MMS_ContentType *>(value));
        break;
    case ValueKind::disposition:
        MMS_DestroyContentDisposition(static_cast<MMS_ContentDisposition *>(value));
        break;
    case ValueKind::special_time:
        MMS_DestroySpecialTime(static_cast<MMS_SpecialTime *>(value));
        break;
    case ValueKind::generic:
        MMS_DestroyGenericData(static_cast<MMS_GenericData *>(value));
        break;
    case ValueKind::container:
        MMS_Container_Destroy(static_cast<MMS_Container *>(value));
        break;
    }
}

} // namespace mms
