// The exported names and maps, and the header table behind them.
#include "vocab/headers.hpp"

#include <string_view>

constexpr char BCC_FIELD_NAME[4] = "Bcc";
constexpr char CC_FIELD_NAME[3] = "Cc";
constexpr char CONTENT_DISPOSITION_FIELD_NAME[20] = "Content-Disposition";
constexpr char CONTENT_DURATION_FIELD_NAME[17] = "Content-Duration";
constexpr char CONTENT_ID_FIELD_NAME[11] = "Content-Id";
constexpr char CONTENT_LOCATION_FIELD_NAME[17] = "Content-Location";
constexpr char CONTENT_TYPE_FIELD_NAME[13] = "Content-Type";
constexpr char DATE_FIELD_NAME[5] = "Date";
constexpr char FROM_FIELD_NAME[5] = "From";
constexpr char MESSAGE_ID_FIELD_NAME[11] = "Message-Id";
constexpr char SUBJECT_FIELD_NAME[8] = "Subject";
constexpr char TO_FIELD_NAME[3] = "To";
constexpr char X_MMS_CONTENT_LOCATION_FIELD_NAME[23] = "X-Mms-Content-Location";
constexpr char X_MMS_DELIVERY_REPORT_FIELD_NAME[22] = "X-Mms-Delivery-Report";
constexpr char X_MMS_DELIVERY_TIME_FIELD_NAME[20] = "X-Mms-Delivery-Time";
constexpr char X_MMS_EXPIRY_FIELD_NAME[13] = "X-Mms-Expiry";
constexpr char X_MMS_MESSAGE_CLASS_FIELD_NAME[20] = "X-Mms-Message-Class";
constexpr char X_MMS_MESSAGE_SIZE_FIELD_NAME[19] = "X-Mms-Message-Size";
constexpr char X_MMS_MESSAGE_TYPE_FIELD_NAME[19] = "X-Mms-Message-Type";
constexpr char X_MMS_MMS_VERSION_FIELD_NAME[18] = "X-Mms-Mms-Version";
constexpr char X_MMS_PRIORITY_FIELD_NAME[15] = "X-Mms-Priority";
constexpr char X_MMS_READ_REPORT_FIELD_NAME[18] = "X-Mms-Read-Report";
constexpr char X_MMS_REPORT_ALLOWED_FIELD_NAME[21] = "X-Mms-Report-Allowed";
constexpr char X_MMS_RESPONSE_STATUS_FIELD_NAME[22] = "X-Mms-Response-Status";
constexpr char X_MMS_RESPONSE_TEXT_FIELD_NAME[20] = "X-Mms-Response-Text";
constexpr char X_MMS_SENDER_VISIBILITY_FIELD_NAME[24] = "X-Mms-Sender-Visibility";
constexpr char X_MMS_STATUS_FIELD_NAME[13] = "X-Mms-Status";
constexpr char X_MMS_TRANSACTION_ID_FIELD_NAME[21] = "X-Mms-Transaction-Id";
constexpr char X_MMS_RETRIEVE_STATUS_FIELD_NAME[22] = "X-Mms-Retrieve-Status";
constexpr char X_MMS_RETRIEVE_TEXT_FIELD_NAME[20] = "X-Mms-Retrieve-Text";
constexpr char X_MMS_READ_STATUS_FIELD_NAME[18] = "X-Mms-Read-Status";
constexpr char X_MMS_REPLY_CHARGING_FIELD_NAME[21] = "X-Mms-Reply-Charging";
constexpr char X_MMS_REPLY_CHARGING_DEADLINE_FIELD_NAME[30] = "X-Mms-Reply-Charging-Deadline";
constexpr char X_MMS_REPLY_CHARGING_ID_FIELD_NAME[24] = "X-Mms-Reply-Charging-ID";
constexpr char X_MMS_REPLY_CHARGING_SIZE_FIELD_NAME[26] = "X-Mms-Reply-Charging-Size";
constexpr char X_MMS_PREVIOUSLY_SENT_BY_FIELD_NAME[25] = "X-Mms-Previously-Sent-By";
constexpr char X_MMS_PREVIOUSLY_SENT_DATE_FIELD_NAME[27] = "X-Mms-Previously-Sent-Date";
constexpr char X_MMS_STORE_FIELD_NAME[12] = "X-Mms-Store";
constexpr char X_MMS_MM_STATE_FIELD_NAME[15] = "X-Mms-MM-State";
constexpr char X_MMS_MM_FLAGS_FIELD_NAME[15] = "X-Mms-MM-Flags";
constexpr char X_MMS_STORE_STATUS_FIELD_NAME[19] = "X-Mms-Store-Status";
constexpr char X_MMS_STORE_STATUS_TEXT_FIELD_NAME[24] = "X-Mms-Store-Status-Text";
constexpr char X_MMS_STORED_FIELD_NAME[13] = "X-Mms-Stored";
constexpr char X_MMS_ATTRIBUTES_FIELD_NAME[17] = "X-Mms-Attributes";
constexpr char X_MMS_TOTALS_FIELD_NAME[13] = "X-Mms-Totals";
constexpr char X_MMS_MBOX_TOTALS_FIELD_NAME[18] = "X-Mms-Mbox-Totals";
constexpr char X_MMS_QUOTAS_FIELD_NAME[13] = "X-Mms-Quotas";
constexpr char X_MMS_MBOX_QUOTAS_FIELD_NAME[18] = "X-Mms-Mbox-Quotas";
constexpr char X_MMS_MESSAGE_COUNT_FIELD_NAME[20] = "X-Mms-Message-Count";
constexpr char CONTENT_FIELD_NAME[8] = "Content";
constexpr char X_MMS_START_H_FIELD_NAME[12] = "X-Mms-Start";
constexpr char ADDITIONAL_HEADERS_FIELD_NAME[19] = "Additional-headers";
constexpr char X_MMS_DISTRIBUTION_INDICATOR_FIELD_NAME[29] = "X-Mms-Distribution-Indicator";
constexpr char X_MMS_ELEMENT_DESCRIPTOR_FIELD_NAME[25] = "X-Mms-Element-Descriptor";
constexpr char X_MMS_LIMIT_FIELD_NAME[12] = "X-Mms-Limit";
constexpr char CONTENT_LANGUAGE_FIELD_NAME[17] = "Content-Language";
constexpr char X_MMS_APPLIC_ID_FIELD_NAME[16] = "X-Mms-Applic-ID";
constexpr char X_MMS_REPLY_APPLIC_ID_FIELD_NAME[22] = "X-Mms-Reply-Applic-ID";
constexpr char INTERNAL_NESTED_MULTIPART_FIELD_NAME[26] = "INTERNAL_Nested-Multipart";
constexpr char INTERNAL_GENERIC_ENTITY_HEADER_FIELD_NAME[31] = "INTERNAL_Generic-Entity-Header";
constexpr char X_MMS_DRM_CONTENT_FIELD_NAME[18] = "X-Mms-Drm-Content";
constexpr char MMS_CHARSET_US_ASCII[9] = "US-ASCII";
constexpr char MMS_CHARSET_ISO_8859_1[11] = "ISO-8859-1";
constexpr char MMS_CHARSET_ISO_8859_9[11] = "ISO-8859-9";
constexpr char MMS_CHARSET_ISO_8859_7[11] = "ISO-8859-7";
constexpr char MMS_CHARSET_ISO_10646_UCS_2[16] = "ISO-10646-UCS-2";
constexpr char MMS_CHARSET_UTF_7[6] = "UTF-7";
constexpr char MMS_CHARSET_UTF_16BE[9] = "UTF-16BE";
constexpr char MMS_CHARSET_UTF_16LE[9] = "UTF-16LE";
constexpr char MMS_CHARSET_UTF_16[7] = "UTF-16";
constexpr char MMS_Q_STRING[2] = "Q";
constexpr char MMS_CHARSET_STRING[8] = "Charset";
constexpr char MMS_LEVEL_STRING[6] = "Level";
constexpr char MMS_TYPE_STRING[5] = "Type";
constexpr char MMS_HTTP_TYPE_STRING[5] = "Type";
constexpr char MMS_NAME_STRING[5] = "Name";
constexpr char MMS_FILENAME_STRING[9] = "Filename";
constexpr char MMS_DIFFERENCES_STRING[12] = "Differences";
constexpr char MMS_PADDING_STRING[8] = "Padding";
constexpr char MMS_START_STRING[6] = "Start";
constexpr char MMS_START_INFO_STRING[11] = "Start-info";
constexpr char MMS_COMMENT_STRING[8] = "Comment";
constexpr char MMS_DOMAIN_STRING[7] = "Domain";
constexpr char MMS_MAX_AGE_STRING[8] = "Max-age";
constexpr char MMS_PATH_STRING[5] = "Path";
constexpr char MMS_SECURE_STRING[7] = "Secure";
constexpr char MMS_APPLICATION_ID_STRING[15] = "Application-ID";
constexpr char MMS_REPLY_TO_APPLICATION_ID_STRING[24] = "Reply-To-Application-ID";
constexpr char MMS_PERSONAL_STRING[9] = "Personal";
constexpr char MMS_ADVERTISEMENT_STRING[14] = "Advertisement";
constexpr char MMS_INFORMATIONAL_STRING[14] = "Informational";
constexpr char MMS_AUTO_STRING[5] = "Auto";
constexpr char DRM_SEPARATE_DELIVERY_STRING[28] = "X-Oma-Drm-Separate-Delivery";

constexpr MMS_MapEntry FieldNameMap[62] = {
    {1, BCC_FIELD_NAME},
    {2, CC_FIELD_NAME},
    {3, CONTENT_DISPOSITION_FIELD_NAME},
    {4, CONTENT_DURATION_FIELD_NAME},
    {5, CONTENT_ID_FIELD_NAME},
    {6, CONTENT_LOCATION_FIELD_NAME},
    {7, CONTENT_TYPE_FIELD_NAME},
    {8, DATE_FIELD_NAME},
    {9, FROM_FIELD_NAME},
    {10, MESSAGE_ID_FIELD_NAME},
    {11, SUBJECT_FIELD_NAME},
    {12, TO_FIELD_NAME},
    {13, X_MMS_CONTENT_LOCATION_FIELD_NAME},
    {14, X_MMS_DELIVERY_REPORT_FIELD_NAME},
    {15, X_MMS_DELIVERY_TIME_FIELD_NAME},
    {16, X_MMS_EXPIRY_FIELD_NAME},
    {17, X_MMS_MESSAGE_CLASS_FIELD_NAME},
    {18, X_MMS_MESSAGE_SIZE_FIELD_NAME},
    {19, X_MMS_MESSAGE_TYPE_FIELD_NAME},
    {20, X_MMS_MMS_VERSION_FIELD_NAME},
    {21, X_MMS_PRIORITY_FIELD_NAME},
    {22, X_MMS_READ_REPORT_FIELD_NAME},
    {23, X_MMS_REPORT_ALLOWED_FIELD_NAME},
    {24, X_MMS_RESPONSE_STATUS_FIELD_NAME},
    {25, X_MMS_RESPONSE_TEXT_FIELD_NAME},
    {26, X_MMS_SENDER_VISIBILITY_FIELD_NAME},
    {27, X_MMS_STATUS_FIELD_NAME},
    {28, X_MMS_TRANSACTION_ID_FIELD_NAME},
    {29, X_MMS_RETRIEVE_STATUS_FIELD_NAME},
    {30, X_MMS_RETRIEVE_TEXT_FIELD_NAME},
    {31, X_MMS_READ_STATUS_FIELD_NAME},
    {32, X_MMS_REPLY_CHARGING_FIELD_NAME},
    {33, X_MMS_REPLY_CHARGING_DEADLINE_FIELD_NAME},
    {34, X_MMS_REPLY_CHARGING_ID_FIELD_NAME},
    {35, X_MMS_REPLY_CHARGING_SIZE_FIELD_NAME},
    {36, X_MMS_PREVIOUSLY_SENT_BY_FIELD_NAME},
    {37, X_MMS_PREVIOUSLY_SENT_DATE_FIELD_NAME},
    {38, X_MMS_STORE_FIELD_NAME},
    {39, X_MMS_MM_STATE_FIELD_NAME},
    {40, X_MMS_MM_FLAGS_FIELD_NAME},
    {41, X_MMS_STORE_STATUS_FIELD_NAME},
    {42, X_MMS_STORE_STATUS_TEXT_FIELD_NAME},
    {43, X_MMS_STORED_FIELD_NAME},
    {44, X_MMS_ATTRIBUTES_FIELD_NAME},
    {45, X_MMS_TOTALS_FIELD_NAME},
    {46, X_MMS_MBOX_TOTALS_FIELD_NAME},
    {47, X_MMS_QUOTAS_FIELD_NAME},
    {48, X_MMS_MBOX_QUOTAS_FIELD_NAME},
    {49, X_MMS_MESSAGE_COUNT_FIELD_NAME},
    {50, CONTENT_FIELD_NAME},
    {51, X_MMS_START_H_FIELD_NAME},
    {52, ADDITIONAL_HEADERS_FIELD_NAME},
    {53, X_MMS_DISTRIBUTION_INDICATOR_FIELD_NAME},
    {54, X_MMS_ELEMENT_DESCRIPTOR_FIELD_NAME},
    {55, X_MMS_LIMIT_FIELD_NAME},
    {58, CONTENT_LANGUAGE_FIELD_NAME},
    {56, X_MMS_APPLIC_ID_FIELD_NAME},
    {57, X_MMS_REPLY_APPLIC_ID_FIELD_NAME},
    {59, INTERNAL_NESTED_MULTIPART_FIELD_NAME},
    {60, INTERNAL_GENERIC_ENTITY_HEADER_FIELD_NAME},
    {61, X_MMS_DRM_CONTENT_FIELD_NAME},
    {0, nullptr},
};

constexpr MMS_MapEntry MMS_HEADER_MAP_ARRAY[57] = {
    {12, X_MMS_MESSAGE_TYPE_FIELD_NAME},
    {24, X_MMS_TRANSACTION_ID_FIELD_NAME},
    {13, X_MMS_MMS_VERSION_FIELD_NAME},
    {4, CONTENT_TYPE_FIELD_NAME},
    {23, TO_FIELD_NAME},
    {21, X_MMS_STATUS_FIELD_NAME},
    {22, SUBJECT_FIELD_NAME},
    {9, FROM_FIELD_NAME},
    {10, X_MMS_MESSAGE_CLASS_FIELD_NAME},
    {15, X_MMS_PRIORITY_FIELD_NAME},
    {3, X_MMS_CONTENT_LOCATION_FIELD_NAME},
    {5, DATE_FIELD_NAME},
    {6, X_MMS_DELIVERY_REPORT_FIELD_NAME},
    {7, X_MMS_DELIVERY_TIME_FIELD_NAME},
    {8, X_MMS_EXPIRY_FIELD_NAME},
    {11, MESSAGE_ID_FIELD_NAME},
    {14, X_MMS_MESSAGE_SIZE_FIELD_NAME},
    {1, BCC_FIELD_NAME},
    {2, CC_FIELD_NAME},
    {16, X_MMS_READ_REPORT_FIELD_NAME},
    {17, X_MMS_REPORT_ALLOWED_FIELD_NAME},
    {18, X_MMS_RESPONSE_STATUS_FIELD_NAME},
    {19, X_MMS_RESPONSE_TEXT_FIELD_NAME},
    {20, X_MMS_SENDER_VISIBILITY_FIELD_NAME},
    {25, X_MMS_RETRIEVE_STATUS_FIELD_NAME},
    {26, X_MMS_RETRIEVE_TEXT_FIELD_NAME},
    {27, X_MMS_READ_STATUS_FIELD_NAME},
    {28, X_MMS_REPLY_CHARGING_FIELD_NAME},
    {29, X_MMS_REPLY_CHARGING_DEADLINE_FIELD_NAME},
    {30, X_MMS_REPLY_CHARGING_ID_FIELD_NAME},
    {31, X_MMS_REPLY_CHARGING_SIZE_FIELD_NAME},
    {32, X_MMS_PREVIOUSLY_SENT_BY_FIELD_NAME},
    {33, X_MMS_PREVIOUSLY_SENT_DATE_FIELD_NAME},
    {34, X_MMS_STORE_FIELD_NAME},
    {35, X_MMS_MM_STATE_FIELD_NAME},
    {36, X_MMS_MM_FLAGS_FIELD_NAME},
    {37, X_MMS_STORE_STATUS_FIELD_NAME},
    {38, X_MMS_STORE_STATUS_TEXT_FIELD_NAME},
    {39, X_MMS_STORED_FIELD_NAME},
    {40, X_MMS_ATTRIBUTES_FIELD_NAME},
    {41, X_MMS_TOTALS_FIELD_NAME},
    {42, X_MMS_MBOX_TOTALS_FIELD_NAME},
    {43, X_MMS_QUOTAS_FIELD_NAME},
    {44, X_MMS_MBOX_QUOTAS_FIELD_NAME},
    {45, X_MMS_MESSAGE_COUNT_FIELD_NAME},
    {46, CONTENT_FIELD_NAME},
    {47, X_MMS_START_H_FIELD_NAME},
    {48, ADDITIONAL_HEADERS_FIELD_NAME},
    {49, X_MMS_DISTRIBUTION_INDICATOR_FIELD_NAME},
    {50, X_MMS_ELEMENT_DESCRIPTOR_FIELD_NAME},
    {51, X_MMS_LIMIT_FIELD_NAME},
    {55, X_MMS_APPLIC_ID_FIELD_NAME},
    {56, X_MMS_REPLY_APPLIC_ID_FIELD_NAME},
    {255, INTERNAL_NESTED_MULTIPART_FIELD_NAME},
    {254, INTERNAL_GENERIC_ENTITY_HEADER_FIELD_NAME},
    {59, X_MMS_DRM_CONTENT_FIELD_NAME},
    {0, nullptr},
};

constexpr MMS_MapEntry WSP_HEADER_MAP_ARRAY[6] = {
    {12, CONTENT_LANGUAGE_FIELD_NAME}, {14, CONTENT_LOCATION_FIELD_NAME},
    {17, CONTENT_TYPE_FIELD_NAME},     {46, CONTENT_DISPOSITION_FIELD_NAME},
    {64, CONTENT_ID_FIELD_NAME},       {0, nullptr},
};

// Rows of one name share one string.
constexpr char multipart_mixed[] = "multipart/mixed";
constexpr char multipart_any[] = "multipart/*";
constexpr char multipart_form_data[] = "multipart/form-data";
constexpr char multipart_byteranges[] = "multipart/byteranges";
constexpr char multipart_alternative[] = "multipart/alternative";

constexpr MMS_MapEntry CONTENT_TYPE_MAP_ARRAY[56] = {
    {29, "image/gif"},
    {30, "image/jpeg"},
    {3, "text/plain"},
    {35, multipart_mixed},
    {1, "text/*"},
    {2, "text/html"},
    {4, "text/x-hdml"},
    {5, "text/x-ttml"},
    {6, "text/x-vCalendar"},
    {7, "text/x-vCard"},
    {8, "text/vnd.wap.wml"},
    {9, "text/vnd.wap.wmlscript"},
    {10, "text/vnd.wap.channel"},
    {16, "application/*"},
    {17, "application/java-vm"},
    {18, "application/x-www-form-urlencoded"},
    {19, "application/x-hdmlc"},
    {20, "application/vnd.wap.wmlc"},
    {21, "application/vnd.wap.wmlscriptc"},
    {22, "application/vnd.wap.channelc"},
    {23, "application/vnd.wap.uaprof"},
    {24, "application/vnd.wap.wtls-ca-certificate"},
    {25, "application/vnd.wap.wtls-user-certificate"},
    {26, "application/x-x509-ca-cert"},
    {27, "application/x-x509-user-cert"},
    {28, "image/*"},
    {31, "image/tiff"},
    {32, "image/png"},
    {33, "image/vnd.wap.wbmp"},
    {34, multipart_any},
    {36, multipart_form_data},
    {37, multipart_byteranges},
    {38, multipart_alternative},
    {11, multipart_any},
    {12, multipart_mixed},
    {13, multipart_form_data},
    {14, multipart_byteranges},
    {15, multipart_alternative},
    {39, "application/xml"},
    {40, "text/xml"},
    {41, "application/vnd.wap.wbxml"},
    {42, "application/x-x968-cross-cert"},
    {43, "application/x-x968-ca-cert"},
    {44, "application/x-x968-user-cert"},
    {45, "text/vnd.wap.si"},
    {46, "application/vnd.wap.sic"},
    {47, "text/vnd.wap.sl"},
    {48, "application/vnd.wap.slc"},
    {49, "text/vnd.wap.co"},
    {50, "application/vnd.wap.coc"},
    {51, "multipart/related"},
    {52, "application/vnd.wap.sia"},
    {53, "text/vnd.wap.connectivity-xml"},
    {54, "application/vnd.wap.connectivity-wbxml"},
    {0, "*/*"},
    {0, nullptr},
};

constexpr MMS_MapEntry CHAR_SET_MAP_ARRAY[11] = {
    {3, MMS_CHARSET_US_ASCII},
    {106, MMS_CHARSET_UTF_8},
    {4, MMS_CHARSET_ISO_8859_1},
    {12, MMS_CHARSET_ISO_8859_9},
    {10, MMS_CHARSET_ISO_8859_7},
    {1000, MMS_CHARSET_ISO_10646_UCS_2},
    {1012, MMS_CHARSET_UTF_7},
    {1013, MMS_CHARSET_UTF_16BE},
    {1014, MMS_CHARSET_UTF_16LE},
    {1015, MMS_CHARSET_UTF_16},
    {0, nullptr},
};

constexpr MMS_MapEntry WSP_PARAMETER_MAP_ARRAY[17] = {
    {0, MMS_Q_STRING},
    {1, MMS_CHARSET_STRING},
    {2, MMS_LEVEL_STRING},
    {9, MMS_TYPE_STRING},
    {3, MMS_HTTP_TYPE_STRING},
    {5, MMS_NAME_STRING},
    {6, MMS_FILENAME_STRING},
    {7, MMS_DIFFERENCES_STRING},
    {8, MMS_PADDING_STRING},
    {10, MMS_START_STRING},
    {11, MMS_START_INFO_STRING},
    {12, MMS_COMMENT_STRING},
    {13, MMS_DOMAIN_STRING},
    {14, MMS_MAX_AGE_STRING},
    {15, MMS_PATH_STRING},
    {16, MMS_SECURE_STRING},
    {0, nullptr},
};

constexpr MMS_MapEntry WSP_DISPOSITION_MAP_ARRAY[3] = {
    {129, "Attachment"},
    {128, "Form-data"},
    {0, nullptr},
};

constexpr MMS_MapEntry MMS_MESSAGE_CLASS_MAP_ARRAY[5] = {
    {128, MMS_PERSONAL_STRING},
    {129, MMS_ADVERTISEMENT_STRING},
    {130, MMS_INFORMATIONAL_STRING},
    {131, MMS_AUTO_STRING},
    {0, nullptr},
};

constexpr const MMS_MapEntry *MMS_FIELDNAME_MAP = FieldNameMap;
constexpr const MMS_MapEntry *MMS_HEADER_MAP = MMS_HEADER_MAP_ARRAY;
constexpr const MMS_MapEntry *WSP_HEADER_MAP = WSP_HEADER_MAP_ARRAY;
constexpr const MMS_MapEntry *CONTENT_TYPE_MAP = CONTENT_TYPE_MAP_ARRAY;
constexpr const MMS_MapEntry *CHAR_SET_MAP = CHAR_SET_MAP_ARRAY;
constexpr const MMS_MapEntry *WSP_PARAMETER_MAP = WSP_PARAMETER_MAP_ARRAY;
constexpr const MMS_MapEntry *WSP_DISPOSITION_MAP = WSP_DISPOSITION_MAP_ARRAY;
constexpr const MMS_MapEntry *MMS_MESSAGE_CLASS_MAP = MMS_MESSAGE_CLASS_MAP_ARRAY;

namespace mms {
namespace {

using F = FieldId;
using K = ValueKind;
using W = WireForm;

} // namespace

constexpr std::array<Header, field_id_limit> headers = {{
    {nullptr, F::unknown, 0, 0, K::integer, W::none, {{}}},
    {BCC_FIELD_NAME, F::bcc, 1, 0, K::group, W::recipient, {{}}},
    {CC_FIELD_NAME, F::cc, 2, 0, K::group, W::recipient, {{}}},
    {CONTENT_DISPOSITION_FIELD_NAME,
     F::content_disposition,
     0,
     0x2E,
     K::disposition,
     W::none,
     {{}}},
    {CONTENT_DURATION_FIELD_NAME, F::content_duration, 0, 0, K::integer, W::none, {{}}},
    {CONTENT_ID_FIELD_NAME, F::content_id, 0, 0x40, K::text, W::none, {{}}},
    {CONTENT_LOCATION_FIELD_NAME, F::content_location, 0, 0x0E, K::text, W::none, {{}}},
    {CONTENT_TYPE_FIELD_NAME, F::content_type, 4, 0x11, K::content_type, W::content_type, {{}}},
    {DATE_FIELD_NAME, F::date, 5, 0, K::integer, W::date, {{}}},
    {FROM_FIELD_NAME, F::from, 9, 0, K::group, W::sender, {{}}},
    {MESSAGE_ID_FIELD_NAME, F::message_id, 11, 0, K::text, W::text, {{}}},
    {SUBJECT_FIELD_NAME, F::subject, 22, 0, K::encoded_string, W::encoded_string, {{}}},
    {TO_FIELD_NAME, F::to, 23, 0, K::group, W::recipient, {{}}},
    {X_MMS_CONTENT_LOCATION_FIELD_NAME, F::x_mms_content_location, 3, 0, K::text, W::text, {{}}},
    {X_MMS_DELIVERY_REPORT_FIELD_NAME,
     F::x_mms_delivery_report,
     6,
     0,
     K::integer,
     W::octet,
     {{{0x80, 0x81}}}},
    {X_MMS_DELIVERY_TIME_FIELD_NAME,
     F::x_mms_delivery_time,
     7,
     0,
     K::special_time,
     W::special_time,
     {{}}},
    {X_MMS_EXPIRY_FIELD_NAME, F::x_mms_expiry, 8, 0, K::special_time, W::special_time, {{}}},
    {X_MMS_MESSAGE_CLASS_FIELD_NAME, F::x_mms_message_class, 10, 0, K::text, W::text, {{}}},
    {X_MMS_MESSAGE_SIZE_FIELD_NAME,
     F::x_mms_message_size,
     14,
     0,
     K::integer,
     W::long_integer,
     {{}}},
    {X_MMS_MESSAGE_TYPE_FIELD_NAME,
     F::x_mms_message_type,
     12,
     0,
     K::integer,
     W::octet,
     {{{0x80, 0x93}}}},
    {X_MMS_MMS_VERSION_FIELD_NAME, F::x_mms_mms_version, 13, 0, K::integer, W::version, {{}}},
    {X_MMS_PRIORITY_FIELD_NAME, F::x_mms_priority, 15, 0, K::integer, W::octet, {{{0x80, 0x82}}}},
    {X_MMS_READ_REPORT_FIELD_NAME,
     F::x_mms_read_report,
     16,
     0,
     K::integer,
     W::octet,
     {{{0x80, 0x81}}}},
    {X_MMS_REPORT_ALLOWED_FIELD_NAME,
     F::x_mms_report_allowed,
     17,
     0,
     K::integer,
     W::none,
     {{{0x80, 0x81}}}},
    {X_MMS_RESPONSE_STATUS_FIELD_NAME,
     F::x_mms_response_status,
     18,
     0,
     K::integer,
     W::octet,
     {{{0x80, 0x88}, {0xC0, 0xC4}, {0xE0, 0xEA}}}},
    {X_MMS_RESPONSE_TEXT_FIELD_NAME,
     F::x_mms_response_text,
     19,
     0,
     K::encoded_string,
     W::encoded_string,
     {{}}},
    {X_MMS_SENDER_VISIBILITY_FIELD_NAME,
     F::x_mms_sender_visibility,
     20,
     0,
     K::integer,
     W::octet,
     {{{0x80, 0x81}}}},
    {X_MMS_STATUS_FIELD_NAME, F::x_mms_status, 21, 0, K::integer, W::octet, {{{0x80, 0x87}}}},
    {X_MMS_TRANSACTION_ID_FIELD_NAME, F::x_mms_transaction_id, 24, 0, K::text, W::text, {{}}},
    {X_MMS_RETRIEVE_STATUS_FIELD_NAME,
     F::x_mms_retrieve_status,
     25,
     0,
     K::integer,
     W::octet,
     {{{0x80, 0x80}, {0xC0, 0xC2}, {0xE0, 0xE3}}}},
    {X_MMS_RETRIEVE_TEXT_FIELD_NAME, F::x_mms_retrieve_text, 26, 0, K::integer, W::none, {{}}},
    {X_MMS_READ_STATUS_FIELD_NAME,
     F::x_mms_read_status,
     27,
     0,
     K::integer,
     W::octet,
     {{{0x80, 0x81}}}},
    {X_MMS_REPLY_CHARGING_FIELD_NAME,
     F::x_mms_reply_charging,
     28,
     0,
     K::integer,
     W::none,
     {{{0x80, 0x83}}}},
    {X_MMS_REPLY_CHARGING_DEADLINE_FIELD_NAME,
     F::x_mms_reply_charging_deadline,
     29,
     0,
     K::integer,
     W::none,
     {{}}},
    {X_MMS_REPLY_CHARGING_ID_FIELD_NAME,
     F::x_mms_reply_charging_id,
     30,
     0,
     K::integer,
     W::none,
     {{}}},
    {X_MMS_REPLY_CHARGING_SIZE_FIELD_NAME,
     F::x_mms_reply_charging_size,
     31,
     0,
     K::integer,
     W::none,
     {{}}},
    {X_MMS_PREVIOUSLY_SENT_BY_FIELD_NAME,
     F::x_mms_previously_sent_by,
     32,
     0,
     K::integer,
     W::none,
     {{}}},
    {X_MMS_PREVIOUSLY_SENT_DATE_FIELD_NAME,
     F::x_mms_previously_sent_date,
     33,
     0,
     K::integer,
     W::none,
     {{}}},
    {X_MMS_STORE_FIELD_NAME, F::x_mms_store, 34, 0, K::integer, W::none, {{}}},
    {X_MMS_MM_STATE_FIELD_NAME, F::x_mms_mm_state, 35, 0, K::integer, W::none, {{{0x80, 0x84}}}},
    {X_MMS_MM_FLAGS_FIELD_NAME, F::x_mms_mm_flags, 36, 0, K::integer, W::none, {{}}},
    {X_MMS_STORE_STATUS_FIELD_NAME,
     F::x_mms_store_status,
     37,
     0,
     K::integer,
     W::none,
     {{{0x80, 0x80}, {0xC0, 0xC1}, {0xE0, 0xE4}}}},
    {X_MMS_STORE_STATUS_TEXT_FIELD_NAME,
     F::x_mms_store_status_text,
     38,
     0,
     K::integer,
     W::none,
     {{}}},
    {X_MMS_STORED_FIELD_NAME, F::x_mms_stored, 39, 0, K::integer, W::none, {{}}},
    {X_MMS_ATTRIBUTES_FIELD_NAME, F::x_mms_attributes, 40, 0, K::integer, W::none, {{}}},
    {X_MMS_TOTALS_FIELD_NAME, F::x_mms_totals, 41, 0, K::integer, W::none, {{}}},
    {X_MMS_MBOX_TOTALS_FIELD_NAME, F::x_mms_mbox_totals, 42, 0, K::integer, W::none, {{}}},
    {X_MMS_QUOTAS_FIELD_NAME, F::x_mms_quotas, 43, 0, K::integer, W::none, {{}}},
    {X_MMS_MBOX_QUOTAS_FIELD_NAME, F::x_mms_mbox_quotas, 44, 0, K::integer, W::none, {{}}},
    {X_MMS_MESSAGE_COUNT_FIELD_NAME, F::x_mms_message_count, 45, 0, K::integer, W::none, {{}}},
    {CONTENT_FIELD_NAME, F::content, 46, 0, K::integer, W::none, {{}}},
    {X_MMS_START_H_FIELD_NAME, F::x_mms_start_h, 47, 0, K::integer, W::none, {{}}},
    {ADDITIONAL_HEADERS_FIELD_NAME, F::additional_headers, 48, 0, K::integer, W::none, {{}}},
    {X_MMS_DISTRIBUTION_INDICATOR_FIELD_NAME,
     F::x_mms_distribution_indicator,
     49,
     0,
     K::integer,
     W::none,
     {{}}},
    {X_MMS_ELEMENT_DESCRIPTOR_FIELD_NAME,
     F::x_mms_element_descriptor,
     50,
     0,
     K::integer,
     W::none,
     {{}}},
    {X_MMS_LIMIT_FIELD_NAME, F::x_mms_limit, 51, 0, K::integer, W::none, {{}}},
    {X_MMS_APPLIC_ID_FIELD_NAME, F::x_mms_applic_id, 55, 0, K::text, W::text, {{}}},
    {X_MMS_REPLY_APPLIC_ID_FIELD_NAME, F::x_mms_reply_applic_id, 56, 0, K::text, W::text, {{}}},
    {CONTENT_LANGUAGE_FIELD_NAME, F::content_language, 0, 0x0C, K::integer, W::none, {{}}},
    {INTERNAL_NESTED_MULTIPART_FIELD_NAME,
     F::internal_nested_multipart,
     255,
     0,
     K::container,
     W::none,
     {{}}},
    {INTERNAL_GENERIC_ENTITY_HEADER_FIELD_NAME,
     F::internal_generic_entity_header,
     254,
     0,
     K::generic,
     W::none,
     {{}}},
    {X_MMS_DRM_CONTENT_FIELD_NAME,
     F::x_mms_drm_content,
     59,
     0,
     K::integer,
     W::octet,
     {{{0x80, 0x81}}}},
}};

namespace {

template <uint8_t Header::*code>
constexpr auto index_by() {
    std::array<uint8_t, 256> index{};
    for (const Header &row : headers) {
        if (row.*code != 0) {
            index[row.*code] = number(row.id);
        }
    }
    return index;
}

} // namespace

constexpr std::array<uint8_t, 256> id_of_mms_code = index_by<&Header::mms_code>();
constexpr std::array<uint8_t, 256> id_of_wsp_code = index_by<&Header::wsp_code>();

namespace {

constexpr bool same(const char *a, const char *b) { return std::string_view(a) == b; }

// Every row of an exported header map agrees with the table, and every table row is in its maps.
constexpr bool table_agrees_with_maps() {
    uint32_t named = 0;
    for (const MMS_MapEntry *row = FieldNameMap; row->name != nullptr; ++row, ++named) {
        if (row->number >= field_id_limit || !same(headers[row->number].name, row->name) ||
            number(headers[row->number].id) != row->number) {
            return false;
        }
    }
    uint32_t with_mms_code = 0;
    for (const MMS_MapEntry *row = MMS_HEADER_MAP_ARRAY; row->name != nullptr; ++row) {
        if (!same(headers[id_of_mms_code[row->number]].name, row->name)) {
            return false;
        }
        ++with_mms_code;
    }
    uint32_t with_wsp_code = 0;
    for (const MMS_MapEntry *row = WSP_HEADER_MAP_ARRAY; row->name != nullptr; ++row) {
        if (!same(headers[id_of_wsp_code[row->number]].name, row->name)) {
            return false;
        }
        ++with_wsp_code;
    }
    for (const Header &row : headers) {
        with_mms_code -= row.mms_code != 0 ? 1 : 0;
        with_wsp_code -= row.wsp_code != 0 ? 1 : 0;
    }
    return named + 1 == headers.size() && with_mms_code == 0 && with_wsp_code == 0;
}
static_assert(table_agrees_with_maps());

} // namespace

namespace {

// The last row of a map has no name, and ends it.
template <size_t rows>
constexpr auto lengths_of_names(const MMS_MapEntry (&map)[rows]) {
    std::array<uint8_t, rows> lengths{};
    for (size_t row = 0; row + 1 < rows; ++row) {
        lengths[row] = static_cast<uint8_t>(std::string_view(map[row].name).size());
    }
    return lengths;
}

template <size_t rows>
constexpr auto rows_of_numbers(const MMS_MapEntry (&map)[rows]) {
    std::array<uint8_t, 256> index{};
    index.fill(rows - 1);
    for (size_t row = rows - 1; row-- != 0;) {
        index[map[row].number & 0xFFU] = static_cast<uint8_t>(row);
    }
    return index;
}

template <const auto &map>
constexpr auto name_lengths = lengths_of_names(map);
template <const auto &map>
constexpr auto number_index = rows_of_numbers(map);

template <const auto &map>
constexpr NamedNumbers indexed = {map, name_lengths<map>.data(), std::size(map) - 1,
                                  number_index<map>.data()};

} // namespace

constexpr NamedNumbers field_names = indexed<FieldNameMap>;
constexpr NamedNumbers media_types = indexed<CONTENT_TYPE_MAP_ARRAY>;
constexpr NamedNumbers parameter_names = indexed<WSP_PARAMETER_MAP_ARRAY>;

} // namespace mms
