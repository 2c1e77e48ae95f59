/**
 * @file
 * The values of headers as mmslib.hpp gives and takes them.
 *
 * Texts are as received or to be sent, without conversion. A `charset` names their character set by
 * one of the constants `MMS_CHARSET_UTF_8` and so on, "UNKNOWN" for a received one of another
 * number, or is null. Setters take null and the constants, in any letter case, and refuse all
 * others.
 */
#ifndef MMSLIB_API_CXX_VALUES_HPP
#define MMSLIB_API_CXX_VALUES_HPP

#include "../mmslib.h"

#include <chrono>
#include <compare>
#include <cstdint>
#include <string_view>
#include <variant>

/** The library for C++20; mmslib.hpp says what its operations have in common. */
namespace mms {
/* The inner namespace keeps the names apart from those inside of the static library. */
inline namespace api {

/** How decoding or encoding ended; see `MMS_Status`. */
enum class status : std::uint8_t {
    refused = MMS_STATUS_REFUSED,               /**< an empty message was to be encoded */
    ok = MMS_STATUS_OK,                         /**< encoded, or decoded to the end */
    no_room = MMS_STATUS_NO_ROOM,               /**< memory ran out */
    malformed = MMS_STATUS_MALFORMED,           /**< the PDU was not decoded to its end */
    missing = MMS_STATUS_MISSING,               /**< something that a PDU needs is missing */
    wrong_form = MMS_STATUS_WRONG_FORM,         /**< a value cannot take its wire form */
    out_of_range = MMS_STATUS_OUT_OF_RANGE,     /**< a count or a size is above its limit */
    too_many_parts = MMS_STATUS_TOO_MANY_PARTS, /**< only from the decoder's steps in C */
};

/* Enumerated headers; the numbers are those on the wire. */

/** X-Mms-Message-Type: which PDU a message is. */
enum class message_type : std::uint8_t {
    send_req = 128,   /**< m-send-req, a message to be sent */
    send_conf,        /**< m-send-conf, the answer to it */
    notification_ind, /**< m-notification-ind, a message waits to be fetched */
    notifyresp_ind,   /**< m-notifyresp-ind, the answer to it */
    retrieve_conf,    /**< m-retrieve-conf, a message that is fetched */
    acknowledge_ind,  /**< m-acknowledge-ind, the answer to it */
    delivery_ind,     /**< m-delivery-ind, a delivery report */
    read_rec_ind,     /**< m-read-rec-ind, a read report as the recipient sends it */
    read_orig_ind,    /**< m-read-orig-ind, a read report as the sender gets it */
    forward_req,      /**< m-forward-req, a message is to be forwarded without being fetched */
    forward_conf,     /**< m-forward-conf, the answer to it */
    /** Of a mailbox in the network: m-mbox-store-req and so on. @{ */
    mbox_store_req,
    mbox_store_conf,
    mbox_view_req,
    mbox_view_conf,
    mbox_upload_req,
    mbox_upload_conf,
    mbox_delete_req,
    mbox_delete_conf,
    mbox_descr,
    /** @} */
};

/** X-Mms-Status: what became of a message. */
enum class delivery_status : std::uint8_t {
    expired = 128, /**< nobody fetched it in time */
    retrieved,     /**< it was fetched */
    rejected,      /**< it was refused */
    deferred,      /**< it will be fetched later */
    unrecognised,  /**< the PDU was not understood */
    indeterminate, /**< nobody knows */
    forwarded,     /**< it was forwarded */
    unreachable,   /**< the recipient could not be reached */
};

/** X-Mms-Response-Status: the answer to a request. */
enum class response_status : std::uint8_t {
    ok = 128, /**< accepted */
    /** Refused. @{ */
    error_unspecified,
    error_service_denied,
    error_message_format_corrupt,
    error_sending_address_unresolved,
    error_message_not_found,
    error_network_problem,
    error_content_not_accepted,
    error_unsupported_message,
    /** @} */
    /** Refused for now: the same request may be accepted later. @{ */
    transient_failure = 192,
    transient_sending_address_unresolved,
    transient_message_not_found,
    transient_network_problem,
    transient_partial_success,
    /** @} */
    /** Refused for good. @{ */
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
    /** @} */
};

/** X-Mms-Retrieve-Status: whether an m-retrieve-conf has the message. */
enum class retrieve_status : std::uint8_t {
    ok = 128, /**< it has */
    /** Not now: it may be fetched later. @{ */
    transient_failure = 192,
    transient_message_not_found,
    transient_network_problem,
    /** @} */
    /** Not at all. @{ */
    permanent_failure = 224,
    permanent_service_denied,
    permanent_message_not_found,
    permanent_content_unsupported,
    /** @} */
};

/** X-Mms-Read-Status: whether a message was read. */
enum class read_status : std::uint8_t {
    read = 128,                 /**< it was */
    deleted_without_being_read, /**< it was not, and will not be */
};

/** X-Mms-Priority: how urgent a message is. */
enum class priority : std::uint8_t {
    low = 128, /**< it can wait */
    normal,    /**< the default */
    high,      /**< it is urgent */
};

/** X-Mms-Sender-Visibility: whether the recipient may see the sender's address. */
enum class visibility : std::uint8_t {
    hide = 128, /**< it may not */
    show,       /**< it may */
};

/** A header that asks for something or not. */
enum class yes_no : std::uint8_t {
    yes = 128, /**< yes */
    no,        /**< no */
};

/** X-Mms-Mms-Version. */
struct version {
    std::uint8_t major; /**< 1 to 7 */
    std::uint8_t minor; /**< 0 to 14; 15 stands for none, which setters refuse */
    /** By all members. */
    bool operator==(const version &) const = default;
};

/** Subject and X-Mms-Response-Text. */
struct encoded_text {
    std::string_view text;         /**< null is sent as an empty text */
    std::string_view charset = {}; /**< of the text, see values.hpp; null for none */
    /** By all members. */
    bool operator==(const encoded_text &) const = default;
};

/** One address of To, Cc, Bcc or From. */
struct address {
    /** Null when a received value had a display name and no usable address; such an address cannot
     *  be encoded. */
    std::string_view text;
    std::string_view charset = {};      /**< of both, see values.hpp; null for none */
    std::string_view display_name = {}; /**< null for none */
    /** By all members. */
    bool operator==(const address &) const = default;
};

/** One parameter of a content type. A Name or Filename outside of ASCII is sent with the character
 *  set "UTF-8" alone. */
struct parameter {
    std::string_view name;         /**< setters refuse null */
    std::string_view value = {};   /**< null for a parameter without one */
    std::string_view charset = {}; /**< of the value, see values.hpp; null for none */
    /** By all members. */
    bool operator==(const parameter &) const = default;
};

/** Content-Disposition. */
struct disposition {
    std::string_view kind;          /**< "Attachment" or "Form-data"; setters refuse null */
    std::string_view filename = {}; /**< null for none */
    std::string_view charset = {};  /**< of the file name, see values.hpp; null for none */
    /** By all members. */
    bool operator==(const disposition &) const = default;
};

/** A header of a part that has no field of its own. */
struct generic_header {
    std::string_view name;  /**< in the letter case received or stored */
    std::string_view value; /**< as received or to be sent */
    /** By all members. */
    bool operator==(const generic_header &) const = default;
};

/** A moment, or a time from now. Seconds below 0 and from 2^32 on are refused by setters. */
using special_time = std::variant<std::chrono::sys_seconds, std::chrono::seconds>;

} // namespace api
} // namespace mms

#endif
