// Messages and their values as texts, which reads all of what they hold.
#pragma once

#include <map>
#include <string>

#include "support/support.hpp"

namespace test {

// What the value of a field is.
enum class Kind {
    integer,
    text,
    encoded_string,
    group,
    content_type,
    disposition,
    special_time,
    generic,
    container,
};

// The kind of value of the header with that number in FieldNameMap.
Kind kind_of(uint8_t field_id);

// Goes through a list of fields, and through the records that a list's nodes carry.
template <typename Element, typename Visit>
void each(slList *list, Visit visit) {
    slIterator at;
    uint32_t count = 0;
    for (slIterator_Init(&at, list); slIterator_Current(&at) != nullptr; slIterator_Next(&at)) {
        visit(static_cast<Element *>(slIterator_Current(&at)));
        ++count;
    }
    require(count == list->nElement);
}

template <typename Record, typename Visit>
void each_carried(slList *list, Visit visit) {
    each<MMS_ListNode>(list,
                       [&](MMS_ListNode *node) { visit(static_cast<Record *>(node->pValue)); });
}

// "{charset}", or nothing.
std::string in_braces(const char *charset);

std::string shown(const MMS_EncodedString *string);           // "text{charset}"
std::string shown(const MMS_Mailbox *mailbox);                // "name|text{charset}"
std::string shown(const MMS_Group *group);                    // "mailbox & mailbox"
std::string shown(const MMS_SpecialTime *time);               // "token:seconds"
std::string shown(const MMS_Parameter *parameter);            // ";Name=value{charset}"
std::string shown(const MMS_ContentType *type);               // "media;Name=value{charset}"
std::string shown(const MMS_ContentDisposition *disposition); // "Form-data name{charset}"
std::string shown(const MMS_GenericData *data);               // "'name'=value"

// The value that a field of that number holds.
std::string shown(uint8_t field_id, const void *value);

// "Name=value, Name=value #body#"; of long bodies the length.
std::string shown(const MMS_Entity *entity);

// "(entity)(entity)"
std::string shown(const MMS_Container *container);

// The values of an entity by the names of their headers, with ":" behind the name of a generic
// header; the body by "#". Every header stands once. Nested parts are left out.
using Contents = std::map<std::string, std::string>;
Contents contents(const MMS_Entity *entity);

// The name of a generic header there.
std::string generic_key(std::string name);

// A line for each value, in the order of the names; with the entities of a container from the first
// given on in brackets, whatever they hold.
std::string lines(const Contents &contents);
std::string lines(const MMS_Container *container, uint32_t first = 0);

// The container of a multipart entity, or null.
MMS_Container *nested(const MMS_Entity *entity);

} // namespace test
