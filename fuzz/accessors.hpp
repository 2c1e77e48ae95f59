// The accessors of all headers in one shape: the value is what the slot of a field holds.
#pragma once

#include <type_traits>

#include "fuzz.hpp"

namespace fuzz {

template <typename Owner>
struct Header {
    const char *name;
    const void *(*get)(const Owner *);
    uint32_t (*set)(Owner *, const void *);
    uint32_t (*del)(Owner *);
    uint32_t highest; // of the integers that the setter takes
};

template <auto get, typename Owner>
const void *get_slot(const Owner *owner) {
    if constexpr (std::is_invocable_v<decltype(get), const Owner *, uint32_t *>) {
        uint32_t number = 0;
        require(get(owner, &number) == 1 || number == 0);
        return slot(number);
    } else if constexpr (std::is_pointer_v<decltype(get(owner))>) {
        return get(owner);
    } else {
        return slot(get(owner));
    }
}

// By what an accessor takes.
template <typename Owner>
Owner owner_of(uint32_t (*)(Owner *));
template <typename Owner>
Owner owner_of(uint32_t (*)(Owner *, const char *));
template <typename Owner, typename Value>
Value value_of(uint32_t (*)(Owner *, Value));

template <auto set, typename Owner>
uint32_t set_slot(Owner *owner, const void *value) {
    using Value = decltype(value_of(set));
    if constexpr (std::is_pointer_v<Value>) {
        return set(owner, static_cast<Value>(const_cast<void *>(value)));
    } else {
        return set(owner, static_cast<Value>(reinterpret_cast<uintptr_t>(value)));
    }
}

template <auto get, auto set, auto del>
constexpr auto header(const char *name) {
    using Owner = decltype(owner_of(del));
    return Header<Owner>{name, get_slot<get, Owner>, set_slot<set, Owner>, del,
                         sizeof(decltype(value_of(set))) == 1 ? UINT8_MAX : UINT32_MAX};
}

inline uint8_t get_version(const MMS_Container *container) {
    uint8_t major = 0;
    uint8_t minor = 0;
    const uint8_t version = MMSLib_GetXMmsVersion(container, &major, &minor);
    require(version == (major << 4 | minor));
    return version;
}
inline uint32_t set_version(MMS_Container *container, uint8_t version) {
    return MMSLib_SetXMmsVersion(container, version >> 4, version & 0x0F);
}

// Accessors that take the name.
template <const auto &name, auto get, auto set, auto del>
constexpr auto named_header() {
    using Owner = decltype(owner_of(del));
    return Header<Owner>{name, [](const Owner *owner) -> const void * { return get(owner, name); },
                         [](Owner *owner, const void *text) {
                             return set(owner, name, static_cast<const char *>(text));
                         },
                         [](Owner *owner) { return del(owner, name); }, 0};
}

// The same name in two letter cases.
constexpr char own_name[] = "X-Own";
constexpr char own_name_again[] = "x-oWN";

#define ACCESSORS(name) MMSLib_Get##name, MMSLib_Set##name, MMSLib_Del##name
#define PART_ACCESSORS(name) MMS_Get##name, MMS_Set##name, MMS_Del##name

constexpr Header<MMS_Container> message_headers[] = {
    header<ACCESSORS(XMmsMessageType)>("X-Mms-Message-Type"),
    header<ACCESSORS(XMmsTransactionId)>("X-Mms-Transaction-Id"),
    header<get_version, set_version, MMSLib_DelXMmsVersion>("X-Mms-Mms-Version"),
    header<ACCESSORS(ContentType)>("Content-Type"),
    header<ACCESSORS(To)>("To"),
    header<ACCESSORS(Cc)>("Cc"),
    header<ACCESSORS(Bcc)>("Bcc"),
    header<ACCESSORS(From)>("From"),
    header<ACCESSORS(Subject)>("Subject"),
    header<ACCESSORS(XMmsStatus)>("X-Mms-Status"),
    header<ACCESSORS(XMmsMessageClass)>("X-Mms-Message-Class"),
    header<ACCESSORS(XMmsPriority)>("X-Mms-Priority"),
    header<ACCESSORS(XMmsContentLocation)>("X-Mms-Content-Location"),
    header<ACCESSORS(Date)>("Date"),
    header<ACCESSORS(XMmsDeliveryReport)>("X-Mms-Delivery-Report"),
    header<ACCESSORS(XMmsDeliveryTime)>("X-Mms-Delivery-Time"),
    header<ACCESSORS(XMmsExpiry)>("X-Mms-Expiry"),
    header<ACCESSORS(MessageId)>("Message-Id"),
    header<ACCESSORS(XMmsMessageSize)>("X-Mms-Message-Size"),
    header<ACCESSORS(XMmsReadReport)>("X-Mms-Read-Report"),
    header<ACCESSORS(XMmsResponseStatus)>("X-Mms-Response-Status"),
    header<ACCESSORS(XMmsResponseText)>("X-Mms-Response-Text"),
    header<ACCESSORS(XMmsSenderVisibility)>("X-Mms-Sender-Visibility"),
    header<ACCESSORS(XMmsRetrieveStatus)>("X-Mms-Retrieve-Status"),
    header<ACCESSORS(XMmsReadStatus)>("X-Mms-Read-Status"),
    header<ACCESSORS(XMmsDrmContent)>("X-Mms-Drm-Content"),
    named_header<X_MMS_APPLIC_ID_FIELD_NAME, ACCESSORS(XMmsGenericTextField)>(),
    named_header<X_MMS_REPLY_APPLIC_ID_FIELD_NAME, ACCESSORS(XMmsGenericTextField)>(),
};

constexpr Header<MMS_Entity> part_headers[] = {
    header<PART_ACCESSORS(ContentType)>("Content-Type"),
    header<PART_ACCESSORS(ContentDisposition)>("Content-Disposition"),
    header<PART_ACCESSORS(ContentId)>("Content-Id"),
    header<PART_ACCESSORS(ContentLocation)>("Content-Location"),
    header<PART_ACCESSORS(ContentDuration)>("Content-Duration"),
    named_header<own_name, ACCESSORS(GenericTextField)>(),
    named_header<own_name_again, ACCESSORS(GenericTextField)>(),
};

inline const void *value_in(const MMS_Entity *entity, const char *name) {
    const MMS_Field *field = MMS_FindField(entity, name);
    return field != nullptr ? field->pValue : nullptr;
}

inline const void *value_in(const MMS_Container *container, const char *name) {
    const MMS_Entity *entity = MMS_FindEntityByFieldName(container->pEntityList, name);
    return entity != nullptr ? value_in(entity, name) : nullptr;
}

// Each getter gives what the first field of its header holds.
template <typename Owner, size_t count>
void read_through_getters(const Owner *owner, const Header<Owner> (&headers)[count]) {
    for (const Header<Owner> &header : headers) {
        const void *value = header.get(owner);
        require(MMS_SearchFieldMapForId(header.name) == 0 || value == value_in(owner, header.name));
    }
}

} // namespace fuzz
