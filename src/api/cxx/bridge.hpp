/* What mmslib.hpp is made of: values from C records, C records from values, and what C functions
 * take and answer. Nothing here is for applications. */
#ifndef MMSLIB_API_CXX_BRIDGE_HPP
#define MMSLIB_API_CXX_BRIDGE_HPP

#include "values.hpp"

#include <concepts>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace mms {
inline namespace api {
namespace detail {

template <auto release>
struct releaser {
    template <class Record>
    void operator()(Record *record) const noexcept {
        release(record);
    }
};

/* A C record on its way to the record that adopts it. */
template <class Record, auto release>
using owner = std::unique_ptr<Record, releaser<release>>;

using owned_text = owner<char, std::free>;
using owned_octets = owner<std::uint8_t, std::free>;
using owned_encoded_string = owner<MMS_EncodedString, MMS_DestroyEncodedString>;
using owned_mailbox = owner<MMS_Mailbox, MMS_DestroyMailbox>;
using owned_group = owner<MMS_Group, MMS_Group_Destroy>;
using owned_parameter = owner<MMS_Parameter, MMS_DestroyParameter>;
using owned_content_type = owner<MMS_ContentType, MMS_DestroyContentType>;
using owned_disposition = owner<MMS_ContentDisposition, MMS_DestroyContentDisposition>;
using owned_special_time = owner<MMS_SpecialTime, MMS_DestroySpecialTime>;
using owned_entity = owner<MMS_Entity, MMS_Entity_Destroy>;
using owned_container = owner<MMS_Container, MMS_Container_Destroy>;

/* Hands the record over by adopt(record), a C function that answers 0 when it does not take it. */
template <class Record, class Release, class Adopt>
bool hand_over(std::unique_ptr<Record, Release> record, Adopt adopt) {
    if (!record || adopt(record.get()) == 0) {
        return false;
    }
    static_cast<void>(record.release());
    return true;
}

/* A text as the C interface takes it: with a zero at its end, or null. */
class c_text {
public:
    explicit c_text(std::string_view text) : text_(text), null_(text.data() == nullptr) {}
    /* C code would take a zero inside for the end. */
    [[nodiscard]] bool valid() const noexcept { return text_.find('\0') == std::string::npos; }
    [[nodiscard]] const char *get() const noexcept { return null_ ? nullptr : text_.c_str(); }

private:
    std::string text_;
    bool null_;
};

/* Calls a C function with texts; its answer, or 0 or null for a text that C cannot take. */
template <class Function, std::convertible_to<c_text>... Texts>
auto call_with_texts(Function function, const Texts &...texts) {
    return (texts.valid() && ...) ? function(texts.get()...) : decltype(function(texts.get()...)){};
}

inline std::string_view view_of(const char *text) noexcept {
    return text != nullptr ? std::string_view(text) : std::string_view();
}

/* Records to values. */

inline encoded_text value_of(const MMS_EncodedString *string) noexcept {
    return {view_of(string->pText), view_of(string->pCharset)};
}

inline special_time value_of(const MMS_SpecialTime *time) noexcept {
    constexpr std::uint8_t absolute = 128;
    const std::chrono::seconds seconds(time->value);
    return time->token == absolute ? special_time(std::chrono::sys_seconds(seconds))
                                   : special_time(seconds);
}

inline disposition value_of(const MMS_ContentDisposition *record) noexcept {
    return {view_of(record->pDisposition), view_of(record->pFilename), view_of(record->pCharset)};
}

inline address value_of(const MMS_Mailbox *mailbox) noexcept {
    const encoded_text text =
        mailbox->pAddress != nullptr ? value_of(mailbox->pAddress) : encoded_text{};
    return {text.text, text.charset, view_of(mailbox->pDisplayName)};
}

inline parameter value_of(const MMS_Parameter *record) noexcept {
    return {view_of(record->pName), view_of(record->pValue), view_of(record->pCharset)};
}

/* Values to new records; null for what is refused and without memory. */

/* Writes the library's constant of that name, which records borrow, or null; false when there is
 * none. */
inline bool find_charset(std::string_view name, const char *&constant) {
    std::uint16_t number = 0;
    constant = nullptr;
    if (name.data() != nullptr &&
        call_with_texts(
            [&](const char *text) { return MMS_SearchMapForInteger(CHAR_SET_MAP, text, &number); },
            c_text(name)) != 0) {
        constant = MMS_SearchMapForText(CHAR_SET_MAP, number);
    }
    return (name.data() != nullptr) == (constant != nullptr);
}

inline owned_encoded_string record_of(const encoded_text &value) {
    const char *charset = nullptr;
    if (!find_charset(value.charset, charset)) {
        return nullptr;
    }
    return owned_encoded_string(
        call_with_texts([=](const char *text) { return MMS_CreateEncodedString(text, charset); },
                        c_text(value.text)));
}

/* Records with two texts and a character set. */
template <class Owner>
Owner record_of(auto create, std::string_view first, std::string_view second,
                std::string_view charset_name) {
    const char *charset = nullptr;
    if (first.data() == nullptr || !find_charset(charset_name, charset)) {
        return nullptr;
    }
    Owner record(call_with_texts(create, c_text(first), c_text(second)));
    if (record) {
        record->pCharset = charset;
    }
    return record;
}

inline owned_disposition record_of(const disposition &value) {
    return record_of<owned_disposition>(MMS_CreateContentDisposition, value.kind, value.filename,
                                        value.charset);
}

inline owned_parameter record_of(const parameter &value) {
    return record_of<owned_parameter>(MMS_CreateParameter, value.name, value.value, value.charset);
}

inline std::optional<std::uint32_t> count_of(std::chrono::seconds seconds) noexcept {
    return std::in_range<std::uint32_t>(seconds.count())
               ? std::optional(static_cast<std::uint32_t>(seconds.count()))
               : std::nullopt;
}
inline std::optional<std::uint32_t> count_of(std::chrono::sys_seconds time) noexcept {
    return count_of(time.time_since_epoch());
}
inline std::optional<std::uint32_t> count_of(std::uint32_t number) noexcept { return number; }

inline owned_special_time record_of(const special_time &value) {
    const auto count = std::visit([](auto time) { return count_of(time); }, value);
    return owned_special_time(count ? MMS_CreateSpecialTime(value.index() == 0 ? 1 : 0, *count)
                                    : nullptr);
}

inline owned_mailbox record_of(const address &value) {
    constexpr std::uint8_t address_present = 128;
    owned_encoded_string text =
        value.text.data() != nullptr ? record_of(encoded_text{value.text, value.charset}) : nullptr;
    owned_text name(call_with_texts(
        [](const char *display_name) {
            char *copy = nullptr;
            SetString(&copy, display_name, 1);
            return copy;
        },
        c_text(value.display_name)));
    if ((value.text.data() != nullptr) != (text != nullptr) ||
        (value.display_name.data() != nullptr) != (name != nullptr)) {
        return nullptr;
    }
    owned_mailbox mailbox(MMS_CreateMailbox(address_present, name.get(), text.get()));
    if (mailbox) {
        static_cast<void>(name.release());
        static_cast<void>(text.release());
    }
    return mailbox;
}

inline bool append(MMS_Group *group, const address &value) {
    return hand_over(record_of(value),
                     [=](MMS_Mailbox *mailbox) { return MMS_AddMailbox(group, mailbox); });
}

inline bool append(MMS_ContentType *type, const parameter &value) {
    return hand_over(record_of(value), [=](MMS_Parameter *record) {
        return MMS_LinkedList_AddParameter(type->pParameters, record);
    });
}

/* Appends all values to a new record. */
template <class Owner, class Value>
Owner filled(Owner record, std::initializer_list<Value> values) {
    for (const Value &value : values) {
        if (!record || !append(record.get(), value)) {
            return nullptr;
        }
    }
    return record;
}

inline owned_group record_of(std::initializer_list<address> addresses) {
    return filled(owned_group(addresses.size() != 0 ? MMS_Group_Create() : nullptr), addresses);
}

inline bool set_content_type(MMS_Entity *entity, std::string_view media_type,
                             std::initializer_list<parameter> parameters) {
    owned_content_type type(media_type.data() != nullptr
                                ? call_with_texts(MMS_CreateContentType, c_text(media_type))
                                : nullptr);
    return hand_over(filled(std::move(type), parameters),
                     [=](MMS_ContentType *record) { return MMS_SetContentType(entity, record); });
}

inline MMS_Entity *append_entity(MMS_Container *container, owned_entity entity) {
    MMS_Entity *const appended = entity.get();
    std::uint16_t position = 0;
    const bool done = hand_over(std::move(entity), [&](MMS_Entity *record) {
        return MMS_AddEntity(container, record, &position);
    });
    return done ? appended : nullptr;
}

inline MMS_Entity *append_part(MMS_Container *container, std::string_view media_type,
                               std::initializer_list<parameter> parameters) {
    owned_entity entity(MMS_Entity_Create());
    return entity && set_content_type(entity.get(), media_type, parameters)
               ? append_entity(container, std::move(entity))
               : nullptr;
}

inline MMS_Container *nested_container(const MMS_Entity *entity) noexcept {
    const MMS_Field *const field = entity->isMultipart != 0
                                       ? MMS_FindField(entity, INTERNAL_NESTED_MULTIPART_FIELD_NAME)
                                       : nullptr;
    return field != nullptr ? static_cast<MMS_Container *>(field->pValue) : nullptr;
}

/* A part in a new container of its own, which the entity adopts with it. */
inline MMS_Entity *append_first_part(MMS_Entity *entity, std::string_view media_type,
                                     std::initializer_list<parameter> parameters) {
    owned_container container(MMS_Container_Create());
    MMS_Entity *const part =
        container ? append_part(container.get(), media_type, parameters) : nullptr;
    if (part == nullptr || !hand_over(std::move(container), [=](MMS_Container *nested) {
            return MMS_SetField(entity, INTERNAL_NESTED_MULTIPART_FIELD_NAME, nested);
        })) {
        return nullptr;
    }
    entity->isMultipart = 1;
    return part;
}

/* The signature of a C getter or setter says how a header's value is passed. */

template <class Value, class Carrier>
std::optional<Value> fetch(std::uint8_t (*get)(const Carrier *), const Carrier *carrier) noexcept {
    const std::uint8_t octet = get(carrier);
    return octet != 0 ? std::optional(Value{octet}) : std::nullopt;
}

template <class Value, class Carrier>
std::optional<Value> fetch(std::uint32_t (*get)(const Carrier *, std::uint32_t *),
                           const Carrier *carrier) noexcept {
    std::uint32_t number = 0;
    if (get(carrier, &number) == 0) {
        return std::nullopt;
    }
    if constexpr (std::same_as<Value, std::chrono::sys_seconds>) {
        return Value(std::chrono::seconds(number));
    } else {
        return Value(number);
    }
}

template <class Value, class Carrier>
std::optional<Value> fetch(const char *(*get)(const Carrier *), const Carrier *carrier) noexcept {
    const char *const text = get(carrier);
    return text != nullptr ? std::optional<Value>(text) : std::nullopt;
}

template <class Value, class Carrier, class Record>
std::optional<Value> fetch(Record *(*get)(const Carrier *), const Carrier *carrier) noexcept {
    const Record *const record = get(carrier);
    return record != nullptr ? std::optional<Value>(value_of(record)) : std::nullopt;
}

template <class Value, class Carrier>
bool store(std::uint32_t (*set)(Carrier *, std::uint8_t), Carrier *carrier, Value value) {
    return set(carrier, static_cast<std::uint8_t>(value)) != 0;
}

template <class Value, class Carrier>
bool store(std::uint32_t (*set)(Carrier *, std::uint32_t), Carrier *carrier, Value value) {
    const std::optional<std::uint32_t> number = count_of(value);
    return number && set(carrier, *number) != 0;
}

template <class Carrier>
bool store(std::uint32_t (*set)(Carrier *, const char *), Carrier *carrier,
           std::string_view value) {
    return call_with_texts([=](const char *text) { return set(carrier, text); }, c_text(value)) !=
           0;
}

template <class Value, class Carrier, class Record>
bool store(std::uint32_t (*set)(Carrier *, Record *), Carrier *carrier, const Value &value) {
    return hand_over(record_of(value), [=](Record *record) { return set(carrier, record); });
}

} // namespace detail

} // namespace api
} // namespace mms

#endif
