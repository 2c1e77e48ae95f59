// Going through the fields and parts of a message.
#pragma once

#include "mmslib.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mmspdu {

// What the value of a field is.
enum class ValueKind : uint8_t {
    octet,
    version,
    text,
    encoded_string,
    date,
    time,
    size,
    duration,
    group,
    content_type,
    disposition,
    generic,
    container,
};

ValueKind value_kind(std::string_view header);

inline uint32_t integer_of(const MMS_Field &field) {
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(field.pValue));
}

// Calls visit(element) for every element of the list.
template <typename Element, typename Visit>
void for_each_element(const slList *list, Visit visit) {
    slIterator at;
    slIterator_Init(&at, const_cast<slList *>(list));
    for (uint16_t i = 0; i < list->nElement; ++i, slIterator_Next(&at)) {
        visit(*static_cast<const Element *>(slIterator_Current(&at)));
    }
}

// Calls visit(record) for every record that the list carries.
template <typename Record, typename Visit>
void for_each_record(const slList *list, Visit visit) {
    for_each_element<MMS_ListNode>(
        list, [&](const MMS_ListNode &node) { visit(*static_cast<const Record *>(node.pValue)); });
}

// The parts of a part that is multipart itself, or null.
const MMS_Container *nested_container(const MMS_Entity &entity);

struct NumberedPart {
    std::string number; // "2/1"; empty for the entity with the headers of the message
    const MMS_Entity *entity;
};

// All entities of a message, nested ones behind the one that they are in.
std::vector<NumberedPart> parts_of(const MMSLib_Message &message);

} // namespace mmspdu
