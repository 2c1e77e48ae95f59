#include "names.hpp"

#include "mmslib.h"

#include <span>

namespace mmspdu {
namespace {

constexpr const char *message_types[] = {
    "m-send-req",         "m-send-conf",       "m-notification-ind", "m-notifyresp-ind",
    "m-retrieve-conf",    "m-acknowledge-ind", "m-delivery-ind",     "m-read-rec-ind",
    "m-read-orig-ind",    "m-forward-req",     "m-forward-conf",     "m-mbox-store-req",
    "m-mbox-store-conf",  "m-mbox-view-req",   "m-mbox-view-conf",   "m-mbox-upload-req",
    "m-mbox-upload-conf", "m-mbox-delete-req", "m-mbox-delete-conf", "m-mbox-descr",
};

constexpr const char *yes_no[] = {"Yes", "No"};
constexpr const char *priorities[] = {"Low", "Normal", "High"};
constexpr const char *visibilities[] = {"Hide", "Show"};
constexpr const char *read_statuses[] = {"Read", "Deleted without being read"};

constexpr const char *statuses[] = {
    "Expired",      "Retrieved",     "Rejected",  "Deferred",
    "Unrecognised", "Indeterminate", "Forwarded", "Unreachable",
};

constexpr const char *response_errors[] = {
    "Ok",
    "Error-unspecified",
    "Error-service-denied",
    "Error-message-format-corrupt",
    "Error-sending-address-unresolved",
    "Error-message-not-found",
    "Error-network-problem",
    "Error-content-not-accepted",
    "Error-unsupported-message",
};

constexpr const char *response_transient_errors[] = {
    "Error-transient-failure",           "Error-transient-sending-address-unresolved",
    "Error-transient-message-not-found", "Error-transient-network-problem",
    "Error-transient-partial-success",
};

constexpr const char *response_permanent_errors[] = {
    "Error-permanent-failure",
    "Error-permanent-service-denied",
    "Error-permanent-message-format-corrupt",
    "Error-permanent-sending-address-unresolved",
    "Error-permanent-message-not-found",
    "Error-permanent-content-not-accepted",
    "Error-permanent-reply-charging-limitations-not-met",
    "Error-permanent-reply-charging-request-not-accepted",
    "Error-permanent-reply-charging-forwarding-denied",
    "Error-permanent-reply-charging-not-supported",
    "Error-permanent-address-hiding-not-supported",
};

constexpr const char *retrieve_ok[] = {"Ok"};

constexpr const char *retrieve_transient_errors[] = {
    "Error-transient-failure",
    "Error-transient-message-not-found",
    "Error-transient-network-problem",
};

constexpr const char *retrieve_permanent_errors[] = {
    "Error-permanent-failure",
    "Error-permanent-service-denied",
    "Error-permanent-message-not-found",
    "Error-permanent-content-unsupported",
};

// Values of a header that follow each other.
struct Run {
    const char *header;
    uint32_t first;
    std::span<const char *const> names;
};

const Run runs[] = {
    {X_MMS_MESSAGE_TYPE_FIELD_NAME, 0x80, message_types},
    {X_MMS_DELIVERY_REPORT_FIELD_NAME, 0x80, yes_no},
    {X_MMS_READ_REPORT_FIELD_NAME, 0x80, yes_no},
    {X_MMS_DRM_CONTENT_FIELD_NAME, 0x80, yes_no},
    {X_MMS_PRIORITY_FIELD_NAME, 0x80, priorities},
    {X_MMS_SENDER_VISIBILITY_FIELD_NAME, 0x80, visibilities},
    {X_MMS_READ_STATUS_FIELD_NAME, 0x80, read_statuses},
    {X_MMS_STATUS_FIELD_NAME, 0x80, statuses},
    {X_MMS_RESPONSE_STATUS_FIELD_NAME, 0x80, response_errors},
    {X_MMS_RESPONSE_STATUS_FIELD_NAME, 0xC0, response_transient_errors},
    {X_MMS_RESPONSE_STATUS_FIELD_NAME, 0xE0, response_permanent_errors},
    {X_MMS_RETRIEVE_STATUS_FIELD_NAME, 0x80, retrieve_ok},
    {X_MMS_RETRIEVE_STATUS_FIELD_NAME, 0xC0, retrieve_transient_errors},
    {X_MMS_RETRIEVE_STATUS_FIELD_NAME, 0xE0, retrieve_permanent_errors},
};

} // namespace

const char *value_name(std::string_view header, uint32_t value) {
    for (const Run &run : runs) {
        if (header == run.header && value >= run.first && value - run.first < run.names.size()) {
            return run.names[value - run.first];
        }
    }
    return nullptr;
}

} // namespace mmspdu
