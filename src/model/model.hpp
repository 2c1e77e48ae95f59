// The model as the library's own code uses it: owners of records, walks over lists, and fields by
// id in place of header names.
#pragma once

#include "model/model.h"
#include "util/heap.hpp"
#include "util/text.hpp"
#include "vocab/headers.hpp"

namespace mms {

using OwnedEncodedString = Owned<MMS_EncodedString, MMS_DestroyEncodedString>;
using OwnedMailbox = Owned<MMS_Mailbox, MMS_DestroyMailbox>;
using OwnedParameter = Owned<MMS_Parameter, MMS_DestroyParameter>;
using OwnedContentType = Owned<MMS_ContentType, MMS_DestroyContentType>;
using OwnedDisposition = Owned<MMS_ContentDisposition, MMS_DestroyContentDisposition>;
using OwnedSpecialTime = Owned<MMS_SpecialTime, MMS_DestroySpecialTime>;
using OwnedGroup = Owned<MMS_Group, MMS_Group_Destroy>;
using OwnedGenericData = Owned<MMS_GenericData, MMS_DestroyGenericData>;
using OwnedEntity = Owned<MMS_Entity, MMS_Entity_Destroy>;
using OwnedContainer = Owned<MMS_Container, MMS_Container_Destroy>;

// Walks the elements of a list in order; the list must not change meanwhile.
template <typename Node>
class Nodes {
public:
    explicit Nodes(const slList *list)
        : first_(list->pLast != nullptr ? static_cast<Node *>(list->pLast)->pNext : nullptr),
          count_(list->nElement) {}

    class Iterator {
    public:
        Iterator(Node *node, uint32_t left) : node_(node), left_(left) {}
        Node *operator*() const { return node_; }
        Iterator &operator++() {
            node_ = node_->pNext;
            --left_;
            return *this;
        }
        bool operator!=(const Iterator &end) const { return left_ != end.left_; }

    private:
        Node *node_;
        uint32_t left_;
    };
    [[nodiscard]] Iterator begin() const { return {first_, count_}; }
    [[nodiscard]] Iterator end() const { return {nullptr, 0}; }

private:
    Node *first_;
    uint32_t count_;
};

using Fields = Nodes<MMS_Field>;

// Appends a node to a list of its type; false when the list is full.
template <typename Node>
bool append(slList *list, Node *node) {
    if (list->nElement == UINT16_MAX) {
        return false;
    }
    auto *last = static_cast<Node *>(list->pLast);
    if (last != nullptr) {
        node->pNext = last->pNext;
        last->pNext = node;
    } else {
        node->pNext = node;
    }
    list->pLast = node;
    ++list->nElement;
    return true;
}

// Walks the records that the nodes of a list carry.
template <typename Record>
class Carried {
public:
    explicit Carried(const slList *list) : nodes_(list) {}

    class Iterator : public Nodes<MMS_ListNode>::Iterator {
    public:
        using Base = Nodes<MMS_ListNode>::Iterator;
        explicit Iterator(Base base) : Base(base) {}
        Record *operator*() const { return static_cast<Record *>(Base::operator*()->pValue); }
    };
    [[nodiscard]] Iterator begin() const { return Iterator(nodes_.begin()); }
    [[nodiscard]] Iterator end() const { return Iterator(nodes_.end()); }

private:
    Nodes<MMS_ListNode> nodes_;
};

using Entities = Carried<MMS_Entity>;
using Mailboxes = Carried<MMS_Mailbox>;
using Parameters = Carried<MMS_Parameter>;

// An unsigned integer in the value slot of a field.
inline uint32_t integer_of(const void *slot) {
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(slot));
}
inline void *slot_of(uint32_t integer) {
    return reinterpret_cast<void *>(uintptr_t{integer}); // NOLINT(performance-no-int-to-ptr)
}

inline FieldId id_of(const MMS_Field *field) { return static_cast<FieldId>(field->fieldId); }

// Constructors from texts that are not NUL-terminated and from parts already made. All give null
// without memory.
OwnedEncodedString make_encoded_string(TextView text, const char *charset);
OwnedMailbox make_mailbox(OwnedText display_name, OwnedEncodedString address);
// `known_name` is a constant of the parameter map; null stands for the name `name`.
OwnedParameter make_parameter(const char *known_name, TextView name, OwnedText value,
                              const char *charset);
OwnedContentType make_content_type(OwnedText media_type);
OwnedDisposition make_disposition(const char *name, OwnedText filename, const char *charset);
OwnedGenericData make_generic_data(TextView name, TextView value);

// The constant of the parameter map that equals the name ignoring case, or null.
const char *known_parameter(TextView name);

// Releases what the slot of a field of that header owns.
void release_value(FieldId id, void *value);

// The field of that header, or null; an unknown header is never found.
inline MMS_Field *find_field(const MMS_Entity *entity, FieldId id) {
    if (id != FieldId::unknown) {
        for (MMS_Field *field : Fields(entity->pFieldList)) {
            if (id_of(field) == id) {
                return field;
            }
        }
    }
    return nullptr;
}

// The value of that header, or null (0).
inline void *find_value(const MMS_Entity *entity, FieldId id) {
    const MMS_Field *field = find_field(entity, id);
    return field != nullptr ? field->pValue : nullptr;
}

// Puts the value in the place of the field's own, which is released.
void replace_value(MMS_Field *field, void *value);

// Appends a field that adopts the value; null, with the value still the caller's, when the list is
// full or without memory.
MMS_Field *append_field(MMS_FieldList *list, FieldId id, void *value);

// Stores the value in place of the header's present one, or in a new last field. False, with the
// value still the caller's, when the list is full or without memory.
bool set_field(MMS_Entity *entity, FieldId id, void *value);

// Stores a copy of the text; false, with nothing changed, for null and where `set_field` fails.
bool set_text(MMS_Entity *entity, FieldId id, const char *text);

bool delete_field(MMS_Entity *entity, FieldId id);

// Stores a record or text that passes from its owner to the field.
template <typename Record, typename Deleter>
bool set_owned(MMS_Entity *entity, FieldId id, std::unique_ptr<Record, Deleter> value) {
    if (!value || !set_field(entity, id, value.get())) {
        return false;
    }
    value.release(); // NOLINT(bugprone-unused-return-value): the field owns it
    return true;
}

// The first entity of the list, nested containers left aside, that has a field of that header.
MMS_Entity *find_entity(const MMS_EntityList *list, FieldId id);

// The field of that header in the first entity of the container that has it, or null.
MMS_Field *find_field(const MMS_Container *container, FieldId id);

// The value of that field, or null (0).
void *find_value(const MMS_Container *container, FieldId id);

// Where a header of the container is stored: in the first entity that has it, else in the first of
// all; null when there is none.
MMS_Entity *entity_for(const MMS_Container *container, FieldId id);

// Whether a field is a generic entity header of that name.
bool is_generic_named(const MMS_Field *field, TextView name);

// The first generic entity header of that name, or null.
MMS_Field *find_generic(const MMS_Entity *entity, TextView name);

// The container with the nested parts of a multipart entity, or null.
MMS_Container *nested_container(const MMS_Entity *entity);

MMSLib_Message *create_message();
void destroy_message(MMSLib_Message *message);
using OwnedMessage = Owned<MMSLib_Message, destroy_message>;

} // namespace mms
