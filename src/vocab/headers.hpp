// The one table of headers: what each is called, its codes, its value and the octets it accepts.
#pragma once

#include "util/text.hpp"
#include "vocab/vocab.h"

#include <array>
#include <cstdint>

namespace mms {

// The library's own identity of a header, as in FieldNameMap.
enum class FieldId : uint8_t {
    unknown = 0,
    bcc = 1,
    cc = 2,
    content_disposition = 3,
    content_duration = 4,
    content_id = 5,
    content_location = 6,
    content_type = 7,
    date = 8,
    from = 9,
    message_id = 10,
    subject = 11,
    to = 12,
    x_mms_content_location = 13,
    x_mms_delivery_report = 14,
    x_mms_delivery_time = 15,
    x_mms_expiry = 16,
    x_mms_message_class = 17,
    x_mms_message_size = 18,
    x_mms_message_type = 19,
    x_mms_mms_version = 20,
    x_mms_priority = 21,
    x_mms_read_report = 22,
    x_mms_report_allowed = 23,
    x_mms_response_status = 24,
    x_mms_response_text = 25,
    x_mms_sender_visibility = 26,
    x_mms_status = 27,
    x_mms_transaction_id = 28,
    x_mms_retrieve_status = 29,
    x_mms_retrieve_text = 30,
    x_mms_read_status = 31,
    x_mms_reply_charging = 32,
    x_mms_reply_charging_deadline = 33,
    x_mms_reply_charging_id = 34,
    x_mms_reply_charging_size = 35,
    x_mms_previously_sent_by = 36,
    x_mms_previously_sent_date = 37,
    x_mms_store = 38,
    x_mms_mm_state = 39,
    x_mms_mm_flags = 40,
    x_mms_store_status = 41,
    x_mms_store_status_text = 42,
    x_mms_stored = 43,
    x_mms_attributes = 44,
    x_mms_totals = 45,
    x_mms_mbox_totals = 46,
    x_mms_quotas = 47,
    x_mms_mbox_quotas = 48,
    x_mms_message_count = 49,
    content = 50,
    x_mms_start_h = 51,
    additional_headers = 52,
    x_mms_distribution_indicator = 53,
    x_mms_element_descriptor = 54,
    x_mms_limit = 55,
    x_mms_applic_id = 56,
    x_mms_reply_applic_id = 57,
    content_language = 58,
    internal_nested_multipart = 59,
    internal_generic_entity_header = 60,
    x_mms_drm_content = 61,
};

constexpr uint8_t field_id_limit = 62;

// What a field's value slot holds, and so how it is released.
enum class ValueKind : uint8_t {
    integer, // in the slot itself
    text,
    encoded_string,
    group,
    content_type,
    disposition,
    special_time,
    generic,
    container,
};

// How the value stands behind its code in the MMS header block.
enum class WireForm : uint8_t {
    none, // no codec: read over, and written only as an accepted octet
    octet,
    version,
    date,
    long_integer,
    special_time,
    text,
    encoded_string,
    recipient, // To, Cc, Bcc
    sender,    // From
    content_type,
};

// Octets from low to high; both 0 for an unused run.
struct Run {
    uint8_t low;
    uint8_t high;
};

struct Header {
    const char *name;
    FieldId id;
    uint8_t mms_code; // 0: none
    uint8_t wsp_code; // 0: none
    ValueKind kind;
    WireForm form;
    std::array<Run, 3> accepted;

    [[nodiscard]] constexpr bool accepts(uint32_t octet) const {
        for (const Run &run : accepted) {
            if (run.low != 0 && octet >= run.low && octet <= run.high) {
                return true;
            }
        }
        return false;
    }
    [[nodiscard]] constexpr bool enumerated() const { return accepted[0].low != 0; }
};

constexpr uint8_t number(FieldId id) { return static_cast<uint8_t>(id); }

// Indexed by field id.
extern const std::array<Header, field_id_limit> headers;
// The field ids of the headers with these codes.
extern const std::array<uint8_t, 256> id_of_mms_code;
extern const std::array<uint8_t, 256> id_of_wsp_code;

// The row of a header; ids outside the table get the row of an unknown header, an integer without a
// name.
inline const Header &header(FieldId id) {
    return headers[number(id) < field_id_limit ? number(id) : 0];
}
inline const Header &header_of_mms_code(uint8_t code) { return headers[id_of_mms_code[code]]; }
inline const Header &header_of_wsp_code(uint8_t code) { return headers[id_of_wsp_code[code]]; }

// A map with what finds its rows faster than a walk, and as a walk would: the first that fits.
struct NamedNumbers {
    const MMS_MapEntry *rows;
    const uint8_t *name_lengths;
    uint32_t count;
    const uint8_t *rows_of_numbers; // by the low octet of the number; `count` where there is none
};

extern const NamedNumbers field_names;
extern const NamedNumbers media_types;
extern const NamedNumbers parameter_names;

// The row of that name, ignoring case, or null.
const MMS_MapEntry *find(const NamedNumbers &map, TextView name);

// The name of the first row whose number has that low octet, or null.
inline const char *name_of(const NamedNumbers &map, uint8_t number) {
    return map.rows[map.rows_of_numbers[number]].name;
}

// The id of a name, ignoring case.
FieldId field_id(const char *name);

} // namespace mms
