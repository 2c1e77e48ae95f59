/**
 * @file
 * mmslib for C++20: messages that release themselves, headers as typed values, parts, addresses and
 * parameters as ranges. It is enough to include this header alone.
 *
 * All of it is inline and stands on the C interface. A `message` holds the C record and nothing
 * else; `part`, `part_view`, the ranges and the views that getters give point into that record. C
 * functions may be called on the records behind them at any time.
 *
 * @par Values
 * A getter gives a value, or nothing where the header is absent. Texts are `std::string_view`s into
 * the message. A view without data, as `std::string_view()` is, stands for a null text: a text that
 * is not there. Setters copy what they are given; it may come from the same message.
 *
 * @par Failures
 * Every operation that changes a message answers true, or false with nothing changed: for a value
 * that the library refuses, for a text with a zero octet in it, for an empty `message` or `part`,
 * and when the library is out of memory. What makes a record gives an empty one then, `decode` and
 * `encode` a status. Nothing is thrown but std::bad_alloc, by the std::string that carries a text
 * to the library and the std::vector of an encoded PDU; it changes nothing either. Getters and
 * ranges throw nothing.
 *
 * @par Lifetime
 * Views, `part`s and iterators are good until what they point to is changed or deleted, or the
 * message ends. A message is for one thread at a time while it is changed.
 */
#ifndef MMSLIB_MMSLIB_HPP
#define MMSLIB_MMSLIB_HPP

#include "cxx/bridge.hpp"

#include <cstddef>
#include <iterator>
#include <ranges>
#include <span>
#include <vector>

namespace mms {
inline namespace api {

/* ------------------------------------------------------------------------------------------- */
/* Ranges                                                                                      */
/* ------------------------------------------------------------------------------------------- */

namespace detail {

struct every_node {
    bool operator()(const void * /*node*/) const noexcept { return true; }
};

struct generic_headers_only {
    bool operator()(const MMS_Field *field) const noexcept {
        constexpr std::uint8_t generic_header_id = 60; /* its number in FieldNameMap */
        return field->fieldId == generic_header_id;
    }
};

} // namespace detail

/** The elements of a C list as values: a forward range and a view. It points to the list, and its
 *  iterators outlive it. Accept chooses the nodes that count. */
template <class Value, class Node, Value (*read)(const Node *), class Accept = detail::every_node>
class list_range : public std::ranges::view_base {
public:
    /** A forward iterator that gives values: `read` makes one of the node at each dereferencing. */
    class iterator {
    public:
        /** As every forward iterator has it. @{ */
        using value_type = Value;
        using difference_type = std::ptrdiff_t;
        using iterator_concept = std::forward_iterator_tag;
        using iterator_category = std::input_iterator_tag; /* dereferencing gives a value */

        iterator() = default;
        iterator(const Node *node, std::uint32_t left) noexcept : node_(node), left_(left) {
            skip();
        }
        [[nodiscard]] Value operator*() const noexcept { return read(node_); }
        iterator &operator++() noexcept {
            step();
            skip();
            return *this;
        }
        iterator operator++(int) noexcept { // NOLINT(cert-dcl21-cpp): the concept has it non-const
            const iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const iterator &other) const noexcept { return left_ == other.left_; }
        /** @} */

    private:
        void step() noexcept {
            node_ = node_->pNext;
            --left_;
        }
        void skip() noexcept {
            while (left_ != 0 && !Accept()(node_)) {
                step();
            }
        }

        const Node *node_ = nullptr;
        std::uint32_t left_ = 0; /* the list is a ring: its end is no node */
    };

    /** An empty range. */
    list_range() = default;
    /** The elements of that list, which may be null, or those behind the first. */
    explicit list_range(const slList *list, bool skip_first = false) noexcept {
        if (list != nullptr && list->nElement != 0) {
            first_ = static_cast<const Node *>(list->pLast)->pNext;
            count_ = list->nElement;
            if (skip_first) {
                first_ = first_->pNext;
                --count_;
            }
        }
    }

    /** As every range has it; `size` only where all nodes count. @{ */
    [[nodiscard]] iterator begin() const noexcept { return {first_, count_}; }
    [[nodiscard]] iterator end() const noexcept { return {}; }
    [[nodiscard]] bool empty() const noexcept { return begin() == end(); }
    [[nodiscard]] std::size_t
    size() const noexcept requires std::same_as<Accept, detail::every_node> {
        return count_;
    }
    /** @} */

private:
    const Node *first_ = nullptr;
    std::uint32_t count_ = 0;
};

class part;
class part_view;

namespace detail {

/* What a list's node carries, as a value. */
template <class Value, class Record>
Value carried(const MMS_ListNode *node) noexcept {
    return value_of(static_cast<const Record *>(node->pValue));
}

template <class Part>
Part carried_part(const MMS_ListNode *node) noexcept {
    return Part(static_cast<MMS_Entity *>(node->pValue));
}

inline generic_header carried_generic(const MMS_Field *field) noexcept {
    const auto *data = static_cast<const MMS_GenericData *>(field->pValue);
    return {view_of(data->pHeaderName), view_of(data->pHeaderValue)};
}

} // namespace detail

/** The addresses of a header in their order, as `address`. */
using address_range = list_range<address, MMS_ListNode, detail::carried<address, MMS_Mailbox>>;
/** The parameters of a content type in wire order, as `parameter`. */
using parameter_range =
    list_range<parameter, MMS_ListNode, detail::carried<parameter, MMS_Parameter>>;
/** The parts of a message or a multipart part, to be read. */
using part_view_range = list_range<part_view, MMS_ListNode, detail::carried_part<part_view>>;
/** The parts of a message or a multipart part, to be changed. */
using part_range = list_range<part, MMS_ListNode, detail::carried_part<part>>;
/** The generic headers of a part in their order, as `generic_header`. */
using generic_range =
    list_range<generic_header, MMS_Field, detail::carried_generic, detail::generic_headers_only>;

/* ------------------------------------------------------------------------------------------- */
/* Headers                                                                                     */
/* ------------------------------------------------------------------------------------------- */

namespace detail {

/* One header by its C functions: what `get`, `set` and `erase` of messages and parts take. */
template <class Value, auto getter, auto setter, auto deleter>
struct single {
    using value_type = Value;
    static auto get(const auto *carrier) -> decltype(fetch<Value>(getter, carrier)) {
        return fetch<Value>(getter, carrier);
    }
    static auto set(auto *carrier, const Value &value) -> decltype(store(setter, carrier, value)) {
        return store(setter, carrier, value);
    }
    static bool erase(auto *carrier) { return deleter(carrier) != 0; }
};

template <auto getter, auto setter, auto deleter>
struct address_header {
    using value_type = std::initializer_list<address>;
    static address_range get(const MMS_Container *container) noexcept {
        const MMS_Group *const group = getter(container);
        return address_range(group != nullptr ? group->pMailboxList : nullptr);
    }
    static bool set(MMS_Container *container, value_type addresses) {
        return store(setter, container, addresses);
    }
    static bool add(MMS_Container *container, const address &address) {
        MMS_Group *const group = getter(container);
        return group != nullptr ? append(group, address) : set(container, {address});
    }
    static bool erase(MMS_Container *container) { return deleter(container) != 0; }
};

struct version_header {
    using value_type = version;
    static std::optional<version> get(const MMS_Container *container) noexcept {
        version value{};
        return MMSLib_GetXMmsVersion(container, &value.major, &value.minor) != 0
                   ? std::optional(value)
                   : std::nullopt;
    }
    static bool set(MMS_Container *container, version value) {
        return MMSLib_SetXMmsVersion(container, value.major, value.minor) != 0;
    }
    static bool erase(MMS_Container *container) { return MMSLib_DelXMmsVersion(container) != 0; }
};

template <class Header, class Carrier>
concept header_of = requires(const Carrier *carrier) {
    Header::get(carrier);
};

} // namespace detail

/** The headers that messages and parts have, for their `get`, `set` and `erase`: `get` gives an
 *  optional value, empty where the header is absent, `set` takes a value. A header's name is that
 *  on the wire, without X-Mms: `status` is X-Mms-Status. */
namespace header {

using detail::address_header;
using detail::single;

/** X-Mms-Mms-Version of a message, a `version`. */
inline constexpr detail::version_header mms_version;

/** A header of a message with a value of an enumeration; others are refused. @{ */
inline constexpr single<mms::message_type, MMSLib_GetXMmsMessageType, MMSLib_SetXMmsMessageType,
                        MMSLib_DelXMmsMessageType>
    message_type;
inline constexpr single<mms::priority, MMSLib_GetXMmsPriority, MMSLib_SetXMmsPriority,
                        MMSLib_DelXMmsPriority>
    priority;
inline constexpr single<delivery_status, MMSLib_GetXMmsStatus, MMSLib_SetXMmsStatus,
                        MMSLib_DelXMmsStatus>
    status;
inline constexpr single<mms::response_status, MMSLib_GetXMmsResponseStatus,
                        MMSLib_SetXMmsResponseStatus, MMSLib_DelXMmsResponseStatus>
    response_status;
inline constexpr single<mms::retrieve_status, MMSLib_GetXMmsRetrieveStatus,
                        MMSLib_SetXMmsRetrieveStatus, MMSLib_DelXMmsRetrieveStatus>
    retrieve_status;
inline constexpr single<mms::read_status, MMSLib_GetXMmsReadStatus, MMSLib_SetXMmsReadStatus,
                        MMSLib_DelXMmsReadStatus>
    read_status;
inline constexpr single<yes_no, MMSLib_GetXMmsDeliveryReport, MMSLib_SetXMmsDeliveryReport,
                        MMSLib_DelXMmsDeliveryReport>
    delivery_report;
inline constexpr single<yes_no, MMSLib_GetXMmsReadReport, MMSLib_SetXMmsReadReport,
                        MMSLib_DelXMmsReadReport>
    read_report;
inline constexpr single<yes_no, MMSLib_GetXMmsDrmContent, MMSLib_SetXMmsDrmContent,
                        MMSLib_DelXMmsDrmContent>
    drm_content;
inline constexpr single<visibility, MMSLib_GetXMmsSenderVisibility, MMSLib_SetXMmsSenderVisibility,
                        MMSLib_DelXMmsSenderVisibility>
    sender_visibility;
/** @} */

/** A header of a message with a text; null is refused. @{ */
inline constexpr single<std::string_view, MMSLib_GetXMmsTransactionId, MMSLib_SetXMmsTransactionId,
                        MMSLib_DelXMmsTransactionId>
    transaction_id;
inline constexpr single<std::string_view, MMSLib_GetMessageId, MMSLib_SetMessageId,
                        MMSLib_DelMessageId>
    message_id;
inline constexpr single<std::string_view, MMSLib_GetXMmsMessageClass, MMSLib_SetXMmsMessageClass,
                        MMSLib_DelXMmsMessageClass>
    message_class;
inline constexpr single<std::string_view, MMSLib_GetXMmsContentLocation,
                        MMSLib_SetXMmsContentLocation, MMSLib_DelXMmsContentLocation>
    content_location;
/** @} */

/** A header of a message with an `encoded_text`. @{ */
inline constexpr single<encoded_text, MMSLib_GetSubject, MMSLib_SetSubject, MMSLib_DelSubject>
    subject;
inline constexpr single<encoded_text, MMSLib_GetXMmsResponseText, MMSLib_SetXMmsResponseText,
                        MMSLib_DelXMmsResponseText>
    response_text;
/** @} */

/** Date of a message. Seconds below 0 and from 2^32 on are refused. */
inline constexpr single<std::chrono::sys_seconds, MMSLib_GetDate, MMSLib_SetDate, MMSLib_DelDate>
    date;

/** X-Mms-Message-Size of a message, in octets. */
inline constexpr single<std::uint32_t, MMSLib_GetXMmsMessageSize, MMSLib_SetXMmsMessageSize,
                        MMSLib_DelXMmsMessageSize>
    message_size;

/** A header of a message with a `special_time`. @{ */
inline constexpr single<special_time, MMSLib_GetXMmsExpiry, MMSLib_SetXMmsExpiry,
                        MMSLib_DelXMmsExpiry>
    expiry;
inline constexpr single<special_time, MMSLib_GetXMmsDeliveryTime, MMSLib_SetXMmsDeliveryTime,
                        MMSLib_DelXMmsDeliveryTime>
    delivery_time;
/** @} */

/** A header of a message with addresses: `get` gives an `address_range`, empty where the header is
 *  absent, `set` takes a list with at least one `address`, `add` appends one. @{ */
inline constexpr address_header<MMSLib_GetTo, MMSLib_SetTo, MMSLib_DelTo> to;
inline constexpr address_header<MMSLib_GetCc, MMSLib_SetCc, MMSLib_DelCc> cc;
inline constexpr address_header<MMSLib_GetBcc, MMSLib_SetBcc, MMSLib_DelBcc> bcc;
inline constexpr address_header<MMSLib_GetFrom, MMSLib_SetFrom, MMSLib_DelFrom> from;
/** @} */

/** Content-Id of a part, with its angle brackets; null is refused. */
inline constexpr single<std::string_view, MMS_GetContentId, MMS_SetContentId, MMS_DelContentId>
    content_id;

/** Content-Location of a part, another header than `content_location`; null is refused. */
inline constexpr single<std::string_view, MMS_GetContentLocation, MMS_SetContentLocation,
                        MMS_DelContentLocation>
    part_location;

/** Content-Duration of a part. Seconds below 0 and from 2^32 on are refused. */
inline constexpr single<std::chrono::seconds, MMS_GetContentDuration, MMS_SetContentDuration,
                        MMS_DelContentDuration>
    content_duration;

/** Content-Disposition of a part: a `disposition`. */
inline constexpr single<disposition, MMS_GetContentDisposition, MMS_SetContentDisposition,
                        MMS_DelContentDisposition>
    content_disposition;

} // namespace header

/* ------------------------------------------------------------------------------------------- */
/* Parts                                                                                       */
/* ------------------------------------------------------------------------------------------- */

/** A part of a message, to be read. It points to the part and is copied like a pointer; an empty
 *  one has no headers, no content and no parts. */
class part_view {
public:
    /** An empty one. */
    part_view() = default;
    /** The part of that record, which stays its owner's; null gives an empty one. */
    explicit part_view(const MMS_Entity *entity) noexcept : entity_(entity) {}

    /** Whether it is not empty. */
    explicit operator bool() const noexcept { return entity_ != nullptr; }
    /** The C record, owned by the message; null for an empty part. */
    [[nodiscard]] const MMS_Entity *get() const noexcept { return entity_; }

    /** The header's value: `part.get(mms::header::content_id)`. */
    template <detail::header_of<MMS_Entity> Header>
    [[nodiscard]] std::optional<typename Header::value_type> get(Header /*header*/) const noexcept {
        return entity_ != nullptr ? Header::get(entity_) : std::nullopt;
    }

    /** The type/subtype of the content type; nothing where there is no content type. */
    [[nodiscard]] std::optional<std::string_view> media_type() const noexcept {
        const MMS_ContentType *const type = content_type();
        return type != nullptr ? std::optional(detail::view_of(type->pMediaType)) : std::nullopt;
    }
    /** The parameters of the content type, none where there is no content type. */
    [[nodiscard]] parameter_range parameters() const noexcept {
        const MMS_ContentType *const type = content_type();
        return parameter_range(type != nullptr ? type->pParameters : nullptr);
    }
    /** The first parameter of that name, ignoring case, or nothing. */
    [[nodiscard]] std::optional<mms::parameter> parameter(const char *name) const noexcept {
        const MMS_ContentType *const type = content_type();
        const MMS_Parameter *const found =
            type != nullptr ? MMS_FindContentTypeParameter(type, name) : nullptr;
        return found != nullptr ? std::optional(detail::value_of(found)) : std::nullopt;
    }

    /** The octets of the body; none for a multipart, which has `parts`. */
    [[nodiscard]] std::span<const std::uint8_t> content() const noexcept {
        return entity_ != nullptr
                   ? std::span<const std::uint8_t>(entity_->pContent, MMS_GetContentLength(entity_))
                   : std::span<const std::uint8_t>();
    }
    /** The parts of a multipart, none for any other. */
    [[nodiscard]] part_view_range parts() const noexcept {
        return part_view_range(nested_entities());
    }

    /** The headers that have no field of their own. */
    [[nodiscard]] generic_range generic_headers() const noexcept {
        return generic_range(entity_ != nullptr ? entity_->pFieldList : nullptr);
    }
    /** The value of the first generic header of that name, ignoring case, or nothing. */
    [[nodiscard]] std::optional<std::string_view> generic(const char *name) const noexcept {
        const char *const text =
            entity_ != nullptr ? MMSLib_GetGenericTextField(entity_, name) : nullptr;
        return text != nullptr ? std::optional<std::string_view>(text) : std::nullopt;
    }

private:
    friend class part;

    [[nodiscard]] MMS_ContentType *content_type() const noexcept {
        return entity_ != nullptr ? MMS_GetContentType(entity_) : nullptr;
    }
    [[nodiscard]] const MMS_EntityList *nested_entities() const noexcept {
        const MMS_Container *const container =
            entity_ != nullptr ? detail::nested_container(entity_) : nullptr;
        return container != nullptr ? container->pEntityList : nullptr;
    }

    const MMS_Entity *entity_ = nullptr;
};

/** A part of a message, to be changed. What changes it answers true, or false with nothing changed
 *  (see mmslib.hpp). */
class part : public part_view {
public:
    /** An empty one. */
    part() = default;
    /** The part of that record, which stays its owner's; null gives an empty one. */
    explicit part(MMS_Entity *entity) noexcept : part_view(entity), entity_(entity) {}

    using part_view::get;
    /** The C record, owned by the message; null for an empty part. */
    [[nodiscard]] MMS_Entity *get() const noexcept { return entity_; }

    /** Stores a value in place of the old one: `part.set(mms::header::content_id, "<smil>")`. */
    template <detail::header_of<MMS_Entity> Header>
    [[nodiscard]] bool set(Header /*header*/, const typename Header::value_type &value) const {
        return entity_ != nullptr && Header::set(entity_, value);
    }
    /** Deletes a header; false also when it is absent. */
    template <detail::header_of<MMS_Entity> Header>
    bool erase(Header /*header*/) const noexcept {
        return entity_ != nullptr && Header::erase(entity_);
    }

    /** Replaces the content type with its parameters, in their order. */
    [[nodiscard]] bool
    set_content_type(std::string_view media_type,
                     std::initializer_list<mms::parameter> parameters = {}) const {
        return entity_ != nullptr && detail::set_content_type(entity_, media_type, parameters);
    }
    /** Appends a parameter to the content type; false also when there is no content type. */
    [[nodiscard]] bool add(const mms::parameter &parameter) const {
        MMS_ContentType *const type = content_type();
        return type != nullptr && detail::append(type, parameter);
    }
    /** Deletes the content type with its parameters; false also when there is none. */
    bool erase_content_type() const noexcept {
        return entity_ != nullptr && MMS_DelContentType(entity_) != 0;
    }

    /** Stores a copy of the octets as the body; with none the part has no body. 4 GiB and more are
     *  refused. @{ */
    [[nodiscard]] bool set_content(std::span<const std::uint8_t> octets) const {
        return entity_ != nullptr && std::in_range<std::uint32_t>(octets.size()) &&
               MMS_SetContent(entity_, octets.data(), static_cast<std::uint32_t>(octets.size()),
                              0) != 0;
    }
    [[nodiscard]] bool set_content(std::string_view text) const {
        return set_content(
            std::span(reinterpret_cast<const std::uint8_t *>(text.data()), text.size()));
    }
    /** @} */

    /** The parts of a multipart, none for any other. */
    [[nodiscard]] part_range parts() const noexcept { return part_range(nested_entities()); }
    /** Appends a part to this one, which becomes a multipart by it; not for the root of a message.
     *  Gives the new part, or an empty one. */
    [[nodiscard]] part add_part(std::string_view media_type,
                                std::initializer_list<mms::parameter> parameters = {}) const {
        if (entity_ == nullptr) {
            return {};
        }
        MMS_Container *const nested = detail::nested_container(entity_);
        return part(nested != nullptr ? detail::append_part(nested, media_type, parameters)
                                      : detail::append_first_part(entity_, media_type, parameters));
    }

    /** Stores a generic header in the place of the first of that name, ignoring case, of which one
     *  is left, or at the end. */
    [[nodiscard]] bool set_generic(std::string_view name, std::string_view value) const {
        const auto set_texts = [this](const char *name_text, const char *value_text) {
            return MMSLib_SetGenericTextField(entity_, name_text, value_text);
        };
        return entity_ != nullptr &&
               detail::call_with_texts(set_texts, detail::c_text(name), detail::c_text(value)) != 0;
    }
    /** Deletes every generic header of that name; false when there is none. */
    bool erase_generic(const char *name) const noexcept {
        return entity_ != nullptr && MMSLib_DelGenericTextField(entity_, name) != 0;
    }

private:
    MMS_Entity *entity_ = nullptr;
};

/* ------------------------------------------------------------------------------------------- */
/* Messages                                                                                    */
/* ------------------------------------------------------------------------------------------- */

/** What encoding checks before it begins. */
enum class validation : std::uint8_t {
    none,              /**< nothing: headers may be missing */
    mandatory_headers, /**< that the message has the mandatory headers of its type */
};

/** What encoding gives: the PDU, empty unless the status is `ok`. */
struct encoded {
    std::vector<std::uint8_t> pdu;        /**< the octets */
    mms::status status = status::refused; /**< why it is empty, or `ok` */
};

/**
 * A message, which owns the C record and releases it.
 *
 * A message is empty when it holds no record: by default, when it was moved from, after `release`,
 * and when memory ran out as it was made. It has no headers and no parts then, and cannot be
 * changed or encoded.
 */
class message {
public:
    /** An empty one. */
    message() = default;
    /** Takes over the record, which may be null. */
    explicit message(MMSLib_Message *record) noexcept : record_(record) {}

    /** A message with its type, its version and nothing else; empty without memory or for a refused
     *  type or version. */
    [[nodiscard]] static message create(message_type type, version version = {1, 2}) {
        message made(MMSLib_Message_Create());
        return made.container() != nullptr &&
                       detail::append_entity(made.container(),
                                             detail::owned_entity(MMS_Entity_Create())) &&
                       made.set(header::message_type, type) &&
                       made.set(header::mms_version, version)
                   ? std::move(made)
                   : message();
    }

    /** Whether it is not empty. */
    explicit operator bool() const noexcept { return record_ != nullptr; }
    /** The C record, still owned by the message; null for an empty one. Of a decoded message, its
     *  `pPdu` is the caller's PDU, which need not exist any more. @{ */
    [[nodiscard]] MMSLib_Message *get() noexcept { return record_.get(); }
    [[nodiscard]] const MMSLib_Message *get() const noexcept { return record_.get(); }
    /** @} */
    /** Gives up the record, which the caller releases with `MMSLib_Message_Destroy`. */
    [[nodiscard]] MMSLib_Message *release() noexcept { return record_.release(); }

    /** The header's value: `message.get(mms::header::subject)`. What it gives points into the
     *  message, so a message that ends with the expression has no `get`, `root` and `parts`. @{ */
    template <detail::header_of<MMS_Container> Header>
    [[nodiscard]] auto get(Header /*header*/) const &noexcept {
        return record_ ? Header::get(container()) : decltype(Header::get(container())){};
    }
    template <class Header>
    void get(Header /*header*/) const && = delete;
    /** @} */

    /** Stores a value in place of the old one: `message.set(mms::header::priority,
     *  mms::priority::high)`, or, for addresses, `message.set(mms::header::to, {{"a@example.net"},
     *  {"b@example.net"}})` with at least one. */
    template <detail::header_of<MMS_Container> Header>
    [[nodiscard]] bool set(Header /*header*/, const typename Header::value_type &value) {
        return record_ && Header::set(container(), value);
    }
    /** Appends an address to those of the header. */
    template <class Header>
    requires requires { &Header::add; }
    [[nodiscard]] bool add(Header /*header*/, const address &address) {
        return record_ && Header::add(container(), address);
    }
    /** Deletes a header; false also when it is absent. */
    template <detail::header_of<MMS_Container> Header>
    bool erase(Header /*header*/) noexcept {
        return record_ && Header::erase(container());
    }

    /** Where the message's own headers are stored, its content type among them, and the body of a
     *  message that is not multipart; empty for an empty message. @{ */
    [[nodiscard]] part root() &noexcept { return part(first_entity()); }
    [[nodiscard]] part_view root() const &noexcept { return part_view(first_entity()); }
    void root() const && = delete;
    /** @} */

    /** The parts of a multipart message, none for any other. @{ */
    [[nodiscard]] part_range parts() &noexcept { return part_range(entities(), true); }
    [[nodiscard]] part_view_range parts() const &noexcept {
        return part_view_range(entities(), true);
    }
    void parts() const && = delete;
    /** @} */
    /** Appends a part, whose content type `root` has to match by a multipart type of its own. Gives
     *  the new part, or an empty one. */
    [[nodiscard]] part add_part(std::string_view media_type,
                                std::initializer_list<parameter> parameters = {}) & {
        return part(first_entity() != nullptr
                        ? detail::append_part(container(), media_type, parameters)
                        : nullptr);
    }

    /** Encodes the message, by default if it has the mandatory headers of its type (see
     *  `EncodeMmsHeaders`). The status is `missing`, `wrong_form`, `out_of_range` or `no_room` as
     *  the library gives it, and `refused` for an empty message. */
    [[nodiscard]] encoded encode(validation checks = validation::mandatory_headers) const {
        encoded result;
        if (record_) {
            std::uint8_t *octets = nullptr;
            std::uint32_t size = 0;
            result.status = static_cast<mms::status>(MMSLib_EncodeMessage(
                get(), &octets, &size, checks == validation::mandatory_headers ? 1 : 0));
            const detail::owned_octets pdu(octets);
            result.pdu.assign(octets, octets + size);
        }
        return result;
    }

private:
    [[nodiscard]] MMS_Container *container() const noexcept {
        return record_ ? record_->pContainer : nullptr;
    }
    [[nodiscard]] const MMS_EntityList *entities() const noexcept {
        return record_ ? record_->pContainer->pEntityList : nullptr;
    }
    [[nodiscard]] MMS_Entity *first_entity() const noexcept {
        return record_ ? MMS_GetFirstEntity(entities()) : nullptr;
    }

    detail::owner<MMSLib_Message, MMSLib_Message_Destroy> record_;
};

/** What decoding gives: the message as far as it was understood, empty when nothing was. */
struct decoded {
    mms::message message;                 /**< owns what was decoded */
    mms::status status = status::refused; /**< whether that is all */
};

/** Decodes a PDU, any octets at all; the message does not need them afterwards. The status is `ok`
 *  when all of it was understood, `malformed` when not, which goes for 4 GiB and more too, and
 *  `no_room` when decoding could not begin for lack of memory. */
[[nodiscard]] inline decoded decode(std::span<const std::uint8_t> pdu) noexcept {
    if (!std::in_range<std::uint32_t>(pdu.size())) {
        return {message(), status::malformed};
    }
    MMSLib_Message *record = nullptr;
    const std::uint32_t outcome =
        MMSLib_DecodeMessage(pdu.data(), static_cast<std::uint32_t>(pdu.size()), &record);
    return {message(record), static_cast<status>(outcome)};
}

} // namespace api
} // namespace mms

/* The reference has no place for a template of the standard library. */
/** @cond */
template <class Value, class Node, Value (*read)(const Node *), class Accept>
inline constexpr bool
    std::ranges::enable_borrowed_range<mms::list_range<Value, Node, read, Accept>> = true;
/** @endcond */

#endif
