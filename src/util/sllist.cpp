// The generic list. All access to an element goes through its link field, a pointer at a fixed
// offset that is read and written octet-wise, since the element's type is not known here.
#undef NDEBUG
#include <cassert>
#include <cstring>

#include "util/util.h"

namespace {

constexpr uint16_t full = UINT16_MAX;

// The assertions guard against misuse by the calling program, so they stay in every build.
void require(bool condition, const char *expression, const char *operation) {
    if (!condition) {
        __assert_fail(expression, "sllist", 0, operation);
    }
}

void *next_of(const slList *list, const void *element) {
    void *next = nullptr;
    std::memcpy(&next, static_cast<const char *>(element) + list->linkOffset, sizeof next);
    return next;
}

void link(const slList *list, void *element, void *next) {
    std::memcpy(static_cast<char *>(element) + list->linkOffset, &next, sizeof next);
}

void *first_of(const slList *list) {
    return list->pLast != nullptr ? next_of(list, list->pLast) : nullptr;
}

// Links the element between two neighbours.
void insert_between(slList *list, void *previous, void *element, void *next) {
    link(list, element, next);
    link(list, previous, element);
    ++list->nElement;
}

void unlink(slList *list, void *previous, void *element) {
    if (previous == element) {
        list->pLast = nullptr;
    } else {
        if (element == list->pLast) {
            list->pLast = previous;
        }
        link(list, previous, next_of(list, element));
    }
    --list->nElement;
}

void *find_remove(slList *list, const void *key, slList_CmpFn compare) {
    void *previous = list->pLast;
    for (uint32_t left = list->nElement; left != 0; --left) {
        void *element = next_of(list, previous);
        if (compare(element, key) == 0) {
            unlink(list, previous, element);
            return element;
        }
        previous = element;
    }
    return nullptr;
}

// The element before the iterator's current one. At the first element it is always the last, also
// when elements were appended since the iterator came there.
void *previous_of(const slIterator *iterator) {
    return iterator->position == 0 ? iterator->pList->pLast : iterator->pPrevious;
}

} // namespace

int32_t _slList_void_cmp(const void *pElement, const void *pKey) {
    const auto element = reinterpret_cast<uintptr_t>(pElement);
    const auto key = reinterpret_cast<uintptr_t>(pKey);
    const auto difference = static_cast<int32_t>(static_cast<uint32_t>(element - key));
    if (difference != 0 || element == key) {
        return difference;
    }
    return element > key ? 1 : -1;
}

void slList_Init(slList *pList, slList_CmpFn pCmpFn, uint16_t linkOffset) {
    *pList = {nullptr, pCmpFn != nullptr ? pCmpFn : _slList_void_cmp, 0, linkOffset};
}

slList *slList_InsertFirst(slList *pList, void *pElement) {
    if (pList->nElement == full) {
        return nullptr;
    }
    if (pList->pLast == nullptr) {
        pList->pLast = pElement;
        link(pList, pElement, pElement);
        pList->nElement = 1;
    } else {
        insert_between(pList, pList->pLast, pElement, first_of(pList));
    }
    return pList;
}

slList *slList_InsertLast(slList *pList, void *pElement) {
    if (slList_InsertFirst(pList, pElement) == nullptr) {
        return nullptr;
    }
    pList->pLast = pElement;
    return pList;
}

slList *slList_InsertSorted(slList *pList, void *pElement) {
    void *previous = pList->pLast;
    for (uint32_t left = pList->nElement; left != 0; --left) {
        void *element = next_of(pList, previous);
        if (pList->pCmpFn(element, pElement) >= 0) {
            if (pList->nElement == full) {
                return nullptr;
            }
            insert_between(pList, previous, pElement, element);
            return pList;
        }
        previous = element;
    }
    return slList_InsertLast(pList, pElement);
}

void *slList_RemoveFirst(slList *pList) {
    void *first = first_of(pList);
    if (first != nullptr) {
        unlink(pList, pList->pLast, first);
    }
    return first;
}

void slList_RemoveAll(slList *pList) {
    pList->nElement = 0;
    pList->pLast = nullptr;
}

void *slList_Find(const slList *pList, const void *pKey) {
    void *element = first_of(pList);
    for (uint32_t left = pList->nElement; left != 0; --left) {
        if (pList->pCmpFn(element, pKey) == 0) {
            return element;
        }
        element = next_of(pList, element);
    }
    return nullptr;
}

void *slList_FindRemove(slList *pList, const void *pKey) {
    return find_remove(pList, pKey, pList->pCmpFn);
}

void *slList_Remove(slList *pList, const void *pElement) {
    return find_remove(pList, pElement, _slList_void_cmp);
}

void *slList_Traverse(const slList *pList, slList_VisitFn visit, void *pArgument) {
    void *element = first_of(pList);
    for (uint32_t left = pList->nElement; left != 0; --left) {
        if (visit(element, pArgument) != 0) {
            return element;
        }
        element = next_of(pList, element);
    }
    return nullptr;
}

void slList_Dispose(slList *pList, slList_DispFn pDispFn) {
    require(pDispFn != nullptr, "pDispFn", __func__);
    void *element = first_of(pList);
    for (uint32_t left = pList->nElement; left != 0; --left) {
        void *next = next_of(pList, element);
        pDispFn(element);
        element = next;
    }
    slList_RemoveAll(pList);
}

void slIterator_Init(slIterator *self, slList *pList) {
    self->pList = pList;
    self->position = 0;
    self->pCurrent = first_of(pList);
    if (pList->nElement != 0) {
        self->pPrevious = pList->pLast;
    }
}

void *slIterator_Current(const slIterator *self) { return self->pCurrent; }

void slIterator_Next(slIterator *self) {
    require(self->position < self->pList->nElement, "self->position < self->pList->nElement",
            __func__);
    ++self->position;
    if (self->position == self->pList->nElement) {
        self->pCurrent = nullptr;
    } else {
        self->pPrevious = self->pCurrent;
        self->pCurrent = next_of(self->pList, self->pCurrent);
    }
}

void *slIterator_Go(slIterator *self, uint32_t pos) {
    require(pos <= self->pList->nElement, "pos <= self->pList->nElement", __func__);
    const auto target = static_cast<int32_t>(pos);
    if (target < self->position) {
        slIterator_Init(self, self->pList);
    }
    while (self->position != target) {
        slIterator_Next(self);
    }
    return self->pCurrent;
}

void *slIterator_Find(slIterator *self, slList_CmpFn pCmpFn, const void *pKey) {
    const slList_CmpFn compare = pCmpFn != nullptr ? pCmpFn : self->pList->pCmpFn;
    while (self->pCurrent != nullptr && compare(self->pCurrent, pKey) != 0) {
        slIterator_Next(self);
    }
    return self->pCurrent;
}

slList *slIterator_InsertBefore(slIterator *self, void *pElement) {
    slList *list = self->pList;
    if (list->nElement == full) {
        return nullptr;
    }
    if (self->position == list->nElement) {
        slList_InsertLast(list, pElement);
    } else {
        insert_between(list, previous_of(self), pElement, self->pCurrent);
    }
    self->pPrevious = pElement;
    ++self->position;
    return list;
}

slList *slIterator_InsertAfter(slIterator *self, void *pElement) {
    require(self->pCurrent != nullptr, "self->pCurrent", __func__);
    slList *list = self->pList;
    if (list->nElement == full) {
        return nullptr;
    }
    const bool at_last = self->pCurrent == list->pLast;
    insert_between(list, self->pCurrent, pElement, next_of(list, self->pCurrent));
    if (at_last) {
        list->pLast = pElement;
    }
    return list;
}

void *slIterator_RemoveCurrent(slIterator *self) {
    void *element = self->pCurrent;
    if (element == nullptr) {
        return nullptr;
    }
    slList *list = self->pList;
    const bool was_last = element == list->pLast;
    void *next = next_of(list, element);
    unlink(list, previous_of(self), element);
    self->pCurrent = was_last ? nullptr : next;
    return element;
}
