/* The values of headers as mmslib.hpp gives and takes them. */
#ifndef MMSLIB_API_CXX_VALUES_HPP
#define MMSLIB_API_CXX_VALUES_HPP

#include "../mmslib.h"

#include <chrono>
#include <compare>
#include <cstdint>
#include <string_view>
#include <variant>

/* The inner namespace keeps the names apart from those inside of the static library. */
namespace mms {
inline namespace api {

/** How decoding or encoding ended; see `MMS_Status`. */
enum class status : std::uint8_t {
    refused = MMS_STATUS_REFUSED,
    ok = MMS_STATUS_OK,
    no_room = MMS_STATUS_NO_ROOM,
    malformed = MMS_STATUS_MALFORMED,
    missing = MMS_STATUS_MISSING,
    wrong_form = MMS_STATUS_WRONG_FORM,
    out_of_range = MMS_STATUS_OUT_OF_RANGE,
    too_many_parts = MMS_STATUS_TOO_MANY_PARTS,
};

/* Enumerated headers; the numbers are those on the wire. */

enum class message_type : std::uint8_t {
    send_req = 128,
    send_conf,
    notification_ind,
    notifyresp_ind,
    retrieve_conf,
    acknowledge_ind,
    delivery_ind,
    read_rec_ind,
    read_orig_ind,
    forward_req,
    forward_conf,
    mbox_store_req,
    mbox_store_conf,
    mbox_view_req,
    mbox_view_conf,
    mbox_upload_req,
    mbox_upload_conf,
    mbox_delete_req,
    mbox_delete_conf,
    mbox_descr,
};

enum class delivery_status : std::uint8_t {
    expired = 128,
    retrieved,
    rejected,
    deferred,
    unrecognised,
    indeterminate,
    forwarded,
    unreachable,
};

enum class response_status : std::uint8_t {
    ok = 128,
    error_unspecified,
    error_service_denied,
    error_message_format_corrupt,
    error_sending_address_unresolved,
    error_message_not_found,
    error_network_problem,
    error_content_not_accepted,
    error_unsupported_message,
    transient_failure = 192,
    transient_sending_address_unresolved,
    transient_message_not_found,
    transient_network_problem,
    transient_partial_success,
    permanent_failure = 224,
    permanent_service_denied,
    permanent_message_format_corrupt,
    permanent_sending_address_unresolved,
    permanent_message_not_found,
    permanent_content_not_accepted,
    permanent_reply_charging_limitations_not_met,
    permanent_reply_charging_request_not_accepted,
    permanent_reply_charging_forwarding_denied,
    permanent_reply_charging_not_supported,
    permanent_address_hiding_not_supported,
};

enum class retrieve_status : std::uint8_t {
    ok = 128,
    transient_failure = 192,
    transient_message_not_found,
    transient_network_problem,
    permanent_failure = 224,
    permanent_service_denied,
    permanent_message_not_found,
    permanent_content_unsupported,
};

enum class read_status : std::uint8_t { read = 128, deleted_without_being_read };
enum class priority : std::uint8_t { low = 128, normal, high };
enum class visibility : std::uint8_t { hide = 128, show };
enum class yes_no : std::uint8_t { yes = 128, no };

/** X-Mms-Mms-Version. A minor version of 15 stands for none; setters refuse it. */
struct version {
    std::uint8_t major;
    std::uint8_t minor;
    bool operator==(const version &) const = default;
};

/* Texts are as received or to be sent, without conversion; `charset` names their character set by
 * one of the `MMS_CHARSET_` constants, "UNKNOWN" for a received one of another number, or null.
 * Setters take null and the constants, in any letter case, and refuse all others. */

/** Subject and X-Mms-Response-Text. */
struct encoded_text {
    std::string_view text;
    std::string_view charset = {};
    bool operator==(const encoded_text &) const = default;
};

/** One address of To, Cc, Bcc or From. The text is null when a received value had a display name
 *  and no usable address; such an address cannot be encoded. */
struct address {
    std::string_view text;
    std::string_view charset = {};
    std::string_view display_name = {};
    bool operator==(const address &) const = default;
};

/** One parameter of a content type; the value is null for a parameter without one. A Name or
 *  Filename outside of ASCII is sent with the character set "UTF-8" alone. */
struct parameter {
    std::string_view name;
    std::string_view value = {};
    std::string_view charset = {};
    bool operator==(const parameter &) const = default;
};

/** Content-Disposition: "Attachment" or "Form-data", with a file name or null. */
struct disposition {
    std::string_view kind;
    std::string_view filename = {};
    std::string_view charset = {};
    bool operator==(const disposition &) const = default;
};

/** A header of a part that has no field of its own. */
struct generic_header {
    std::string_view name;
    std::string_view value;
    bool operator==(const generic_header &) const = default;
};

/** A moment, or a time from now. Seconds below 0 and from 2^32 on are refused by setters. */
using special_time = std::variant<std::chrono::sys_seconds, std::chrono::seconds>;

} // namespace api
} // namespace mms

#endif
