#include "model/model.hpp"

namespace {

using mms::FieldId;
using mms::OwnedText;

// The text that a search compares: `MMS_GetContentId` or `MMS_GetContentLocation`.
using EntityText = const char *(*)(const MMS_Entity *);

MMS_Container *parts_of(const MMS_Entity *entity) {
    return entity->isMultipart != 0 ? mms::nested_container(entity) : nullptr;
}

// Depth first: the nested entities of a multipart entity stand in its place.
MMS_Entity *find_by_text(const MMS_Container *container, EntityText text_of, const char *text) {
    for (MMS_Entity *entity : mms::Entities(container->pEntityList)) {
        const MMS_Container *parts = parts_of(entity);
        if (parts != nullptr) {
            entity = find_by_text(parts, text_of, text);
        }
        if (entity != nullptr && StrCaseCmp(text_of(entity), text) == 0) {
            return entity;
        }
    }
    return nullptr;
}

// Moves the first match of a container, with its node, to `erased`; an enclosing container goes on
// after a nested one. Nothing is released meanwhile, since the text may be that of a match.
void erase_by_text(const MMS_Container *container, EntityText text_of, const char *text,
                   MMS_EntityList *erased) {
    slIterator iterator;
    slIterator_Init(&iterator, container->pEntityList);
    for (; slIterator_Current(&iterator) != nullptr; slIterator_Next(&iterator)) {
        const auto *node = static_cast<const MMS_ListNode *>(slIterator_Current(&iterator));
        const auto *entity = static_cast<const MMS_Entity *>(node->pValue);
        const MMS_Container *parts = parts_of(entity);
        if (parts != nullptr) {
            erase_by_text(parts, text_of, text, erased);
        } else if (StrCaseCmp(text_of(entity), text) == 0) {
            void *match = slIterator_RemoveCurrent(&iterator);
            if (slList_InsertLast(erased, match) == nullptr) {
                Dispose_EntityList(match);
            }
            return;
        }
    }
}

MMS_Entity *search(MMS_Container *container, EntityText text_of, const char *text, uint32_t erase) {
    if (erase != 1) {
        return find_by_text(container, text_of, text);
    }
    MMS_EntityList erased;
    slList_Init(&erased, nullptr, container->pEntityList->linkOffset);
    erase_by_text(container, text_of, text, &erased);
    slList_Dispose(&erased, Dispose_EntityList);
    return nullptr;
}

bool uses_content_id(const MMS_Container *container, const char *content_id) {
    for (const MMS_Entity *entity : mms::Entities(container->pEntityList)) {
        const MMS_Container *parts = parts_of(entity);
        if (StrCaseCmp(MMS_GetContentId(entity), content_id) == 0 ||
            (parts != nullptr && uses_content_id(parts, content_id))) {
            return true;
        }
    }
    return false;
}

// A letter or digit: draws from the characters "0" to "z" until one is drawn.
char random_character() {
    constexpr int characters = 'z' - '0' + 1;
    for (;;) {
        // An identifier, not a secret; an application that wants other sequences seeds rand.
        const int drawn = std::rand() % characters + '0'; // NOLINT(cert-msc30-c,cert-msc50-cpp)
        if (drawn <= '9' || (drawn >= 'A' && drawn <= 'Z') || drawn >= 'a') {
            return static_cast<char>(drawn);
        }
    }
}

} // namespace

MMS_Container *MMS_Container_Create(void) {
    mms::OwnedContainer container(mms::allocate<MMS_Container>());
    if (container) {
        container->pEntityList = MMS_LinkedList_CreateEntityList();
    }
    return container && container->pEntityList != nullptr ? container.release() : nullptr;
}

void MMS_Container_Destroy(MMS_Container *pContainer) {
    if (pContainer != nullptr) {
        MMS_LinkedList_DestroyEntityList(pContainer->pEntityList);
        std::free(pContainer);
    }
}

uint32_t MMS_AddEntity(MMS_Container *pContainer, MMS_Entity *pEntity, uint16_t *pPosition) {
    return MMS_LinkedList_AddEntity(pContainer->pEntityList, pEntity, pPosition);
}

MMS_Entity *MMS_GetEntity(const MMS_Container *pContainer, uint32_t position) {
    return MMS_LinkedList_FindEntityByPos(pContainer->pEntityList, position);
}

MMS_Entity *MMS_GetFirstEntity(const MMS_EntityList *pList) {
    return MMS_LinkedList_FindEntityByPos(pList, 0);
}

uint32_t MMS_DelEntity(MMS_Container *pContainer, uint32_t position) {
    return MMS_LinkedList_DelEntityByPos(pContainer->pEntityList, position);
}

uint16_t MMS_GetEntityCount(const MMS_Container *pContainer) {
    return MMS_LinkedList_GetEntityCount(pContainer->pEntityList);
}

MMS_Entity *MMS_FindEntityByFieldName(const MMS_EntityList *pList, const char *pName) {
    return mms::find_entity(pList, mms::field_id(pName));
}

MMS_Container *MMS_GetContainer(const MMS_Container *pContainer) {
    const MMS_Entity *entity =
        mms::find_entity(pContainer->pEntityList, FieldId::internal_nested_multipart);
    return entity != nullptr ? mms::nested_container(entity) : nullptr;
}

MMS_Entity *MMS_FindEntityByContentId(MMS_Container *pContainer, const char *pContentId,
                                      uint32_t erase) {
    return search(pContainer, MMS_GetContentId, pContentId, erase);
}

MMS_Entity *MMS_FindEntityByContentLocation(MMS_Container *pContainer, const char *pContentLocation,
                                            uint32_t erase) {
    return search(pContainer, MMS_GetContentLocation, pContentLocation, erase);
}

char *GenerateUniqueId(uint32_t size) {
    if (size == 0) {
        return nullptr;
    }
    char *id = static_cast<char *>(std::malloc(size));
    if (id != nullptr) {
        for (uint32_t i = 0; i + 1 < size; ++i) {
            id[i] = random_character();
        }
        id[size - 1] = '\0';
    }
    return id;
}

char *CreateUniqueContentId(const MMS_Container *pContainer) {
    constexpr uint32_t id_size = 6;
    OwnedText id(GenerateUniqueId(id_size));
    while (id && uses_content_id(pContainer, id.get())) {
        id.reset(GenerateUniqueId(id_size));
    }
    return id.release();
}

namespace mms {

MMS_Entity *find_entity(const MMS_EntityList *list, FieldId id) {
    for (MMS_Entity *entity : Entities(list)) {
        for (const MMS_Field *field : Fields(entity->pFieldList)) {
            if (id_of(field) == id) {
                return entity;
            }
        }
    }
    return nullptr;
}

MMS_Field *find_field(const MMS_Container *container, FieldId id) {
    for (const MMS_Entity *entity : Entities(container->pEntityList)) {
        MMS_Field *field = find_field(entity, id);
        if (field != nullptr) {
            return field;
        }
    }
    return nullptr;
}

void *find_value(const MMS_Container *container, FieldId id) {
    const MMS_Field *field = find_field(container, id);
    return field != nullptr ? field->pValue : nullptr;
}

MMS_Entity *entity_for(const MMS_Container *container, FieldId id) {
    MMS_Entity *entity = find_entity(container->pEntityList, id);
    return entity != nullptr ? entity : MMS_GetFirstEntity(container->pEntityList);
}

} // namespace mms
