#include <algorithm>
#include <cctype>
#include <sstream>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::shown;

// Maps as "number name number name ...".
constexpr char field_rows[] =
    "1 Bcc 2 Cc 3 Content-Disposition 4 Content-Duration 5 Content-Id 6 Content-Location "
    "7 Content-Type 8 Date 9 From 10 Message-Id 11 Subject 12 To 13 X-Mms-Content-Location "
    "14 X-Mms-Delivery-Report 15 X-Mms-Delivery-Time 16 X-Mms-Expiry 17 X-Mms-Message-Class "
    "18 X-Mms-Message-Size 19 X-Mms-Message-Type 20 X-Mms-Mms-Version 21 X-Mms-Priority "
    "22 X-Mms-Read-Report 23 X-Mms-Report-Allowed 24 X-Mms-Response-Status 25 X-Mms-Response-Text "
    "26 X-Mms-Sender-Visibility 27 X-Mms-Status 28 X-Mms-Transaction-Id 29 X-Mms-Retrieve-Status "
    "30 X-Mms-Retrieve-Text 31 X-Mms-Read-Status 32 X-Mms-Reply-Charging "
    "33 X-Mms-Reply-Charging-Deadline 34 X-Mms-Reply-Charging-ID 35 X-Mms-Reply-Charging-Size "
    "36 X-Mms-Previously-Sent-By 37 X-Mms-Previously-Sent-Date 38 X-Mms-Store 39 X-Mms-MM-State "
    "40 X-Mms-MM-Flags 41 X-Mms-Store-Status 42 X-Mms-Store-Status-Text 43 X-Mms-Stored "
    "44 X-Mms-Attributes 45 X-Mms-Totals 46 X-Mms-Mbox-Totals 47 X-Mms-Quotas "
    "48 X-Mms-Mbox-Quotas 49 X-Mms-Message-Count 50 Content 51 X-Mms-Start 52 Additional-headers "
    "53 X-Mms-Distribution-Indicator 54 X-Mms-Element-Descriptor 55 X-Mms-Limit "
    "58 Content-Language 56 X-Mms-Applic-ID 57 X-Mms-Reply-Applic-ID 59 INTERNAL_Nested-Multipart "
    "60 INTERNAL_Generic-Entity-Header 61 X-Mms-Drm-Content ";

constexpr char content_type_rows[] =
    "29 image/gif 30 image/jpeg 3 text/plain 35 multipart/mixed 1 text/* 2 text/html "
    "4 text/x-hdml 5 text/x-ttml 6 text/x-vCalendar 7 text/x-vCard 8 text/vnd.wap.wml "
    "9 text/vnd.wap.wmlscript 10 text/vnd.wap.channel 16 application/* 17 application/java-vm "
    "18 application/x-www-form-urlencoded 19 application/x-hdmlc 20 application/vnd.wap.wmlc "
    "21 application/vnd.wap.wmlscriptc 22 application/vnd.wap.channelc "
    "23 application/vnd.wap.uaprof 24 application/vnd.wap.wtls-ca-certificate "
    "25 application/vnd.wap.wtls-user-certificate 26 application/x-x509-ca-cert "
    "27 application/x-x509-user-cert 28 image/* 31 image/tiff 32 image/png 33 image/vnd.wap.wbmp "
    "34 multipart/* 36 multipart/form-data 37 multipart/byteranges 38 multipart/alternative "
    "11 multipart/* 12 multipart/mixed 13 multipart/form-data 14 multipart/byteranges "
    "15 multipart/alternative 39 application/xml 40 text/xml 41 application/vnd.wap.wbxml "
    "42 application/x-x968-cross-cert 43 application/x-x968-ca-cert "
    "44 application/x-x968-user-cert 45 text/vnd.wap.si 46 application/vnd.wap.sic "
    "47 text/vnd.wap.sl 48 application/vnd.wap.slc 49 text/vnd.wap.co 50 application/vnd.wap.coc "
    "51 multipart/related 52 application/vnd.wap.sia 53 text/vnd.wap.connectivity-xml "
    "54 application/vnd.wap.connectivity-wbxml 0 */* ";

constexpr char wsp_header_rows[] =
    "12 Content-Language 14 Content-Location 17 Content-Type 46 Content-Disposition 64 Content-Id";

constexpr char charset_rows[] =
    "3 US-ASCII 106 UTF-8 4 ISO-8859-1 12 ISO-8859-9 10 ISO-8859-7 1000 ISO-10646-UCS-2 "
    "1012 UTF-7 1013 UTF-16BE 1014 UTF-16LE 1015 UTF-16";

constexpr char parameter_rows[] =
    "0 Q 1 Charset 2 Level 9 Type 3 Type 5 Name 6 Filename 7 Differences 8 Padding 10 Start "
    "11 Start-info 12 Comment 13 Domain 14 Max-age 15 Path 16 Secure";

// MMS header codes with the field ids of their headers.
struct {
    uint32_t code;
    uint8_t field_id;
} constexpr mms_header_rows[] = {
    {12, 19}, {24, 28}, {13, 20}, {4, 7},   {23, 12}, {21, 27},  {22, 11},  {9, 9},
    {10, 17}, {15, 21}, {3, 13},  {5, 8},   {6, 14},  {7, 15},   {8, 16},   {11, 10},
    {14, 18}, {1, 1},   {2, 2},   {16, 22}, {17, 23}, {18, 24},  {19, 25},  {20, 26},
    {25, 29}, {26, 30}, {27, 31}, {28, 32}, {29, 33}, {30, 34},  {31, 35},  {32, 36},
    {33, 37}, {34, 38}, {35, 39}, {36, 40}, {37, 41}, {38, 42},  {39, 43},  {40, 44},
    {41, 45}, {42, 46}, {43, 47}, {44, 48}, {45, 49}, {46, 50},  {47, 51},  {48, 52},
    {49, 53}, {50, 54}, {51, 55}, {55, 56}, {56, 57}, {255, 59}, {254, 60}, {59, 61}};

using Rows = std::vector<std::pair<uint32_t, std::string>>;

Rows parse(const char *text) {
    Rows rows;
    std::istringstream stream(text);
    uint32_t number = 0;
    std::string name;
    while (stream >> number >> name) {
        rows.emplace_back(number, name);
    }
    return rows;
}

Rows rows_of(const MMS_MapEntry *map) {
    Rows rows;
    for (; map->name != nullptr; ++map) {
        rows.emplace_back(map->number, map->name);
    }
    return rows;
}

const struct {
    const char *title;
    const MMS_MapEntry *array;
    size_t size;
    const MMS_MapEntry *pointer;
} maps[] = {
    {"fields", FieldNameMap, std::size(FieldNameMap), MMS_FIELDNAME_MAP},
    {"MMS headers", MMS_HEADER_MAP_ARRAY, std::size(MMS_HEADER_MAP_ARRAY), MMS_HEADER_MAP},
    {"WSP headers", WSP_HEADER_MAP_ARRAY, std::size(WSP_HEADER_MAP_ARRAY), WSP_HEADER_MAP},
    {"content types", CONTENT_TYPE_MAP_ARRAY, std::size(CONTENT_TYPE_MAP_ARRAY), CONTENT_TYPE_MAP},
    {"character sets", CHAR_SET_MAP_ARRAY, std::size(CHAR_SET_MAP_ARRAY), CHAR_SET_MAP},
    {"parameters", WSP_PARAMETER_MAP_ARRAY, std::size(WSP_PARAMETER_MAP_ARRAY), WSP_PARAMETER_MAP},
    {"dispositions", WSP_DISPOSITION_MAP_ARRAY, std::size(WSP_DISPOSITION_MAP_ARRAY),
     WSP_DISPOSITION_MAP},
    {"classes", MMS_MESSAGE_CLASS_MAP_ARRAY, std::size(MMS_MESSAGE_CLASS_MAP_ARRAY),
     MMS_MESSAGE_CLASS_MAP},
};

TEST(Vocabulary, MapsHoldTheAssignedNumbers) {
    EXPECT_EQ(rows_of(MMS_FIELDNAME_MAP), parse(field_rows));
    EXPECT_EQ(rows_of(CONTENT_TYPE_MAP), parse(content_type_rows));
    EXPECT_EQ(rows_of(WSP_HEADER_MAP), parse(wsp_header_rows));
    EXPECT_EQ(rows_of(CHAR_SET_MAP), parse(charset_rows));
    EXPECT_EQ(rows_of(WSP_PARAMETER_MAP), parse(parameter_rows));
    EXPECT_EQ(rows_of(WSP_DISPOSITION_MAP), parse("129 Attachment 128 Form-data"));
    EXPECT_EQ(rows_of(MMS_MESSAGE_CLASS_MAP),
              parse("128 Personal 129 Advertisement 130 Informational 131 Auto"));
    Rows headers;
    for (const auto &row : mms_header_rows) {
        headers.emplace_back(row.code, shown(MMS_SearchFieldMapForName(row.field_id)));
    }
    EXPECT_EQ(rows_of(MMS_HEADER_MAP), headers);
}

// Checks that the rows of a map point to these constants, in this order, and to no others.
template <class... Names>
void expect_constants(const MMS_MapEntry *map, const Names &...names) {
    for (const char *name : {static_cast<const char *>(names)...}) {
        EXPECT_EQ(map->name, name) << shown(map->name);
        ++map;
    }
    EXPECT_EQ(map->name, nullptr);
}

TEST(Vocabulary, RowsPointToTheExportedConstants) {
    expect_constants(
        FieldNameMap, BCC_FIELD_NAME, CC_FIELD_NAME, CONTENT_DISPOSITION_FIELD_NAME,
        CONTENT_DURATION_FIELD_NAME, CONTENT_ID_FIELD_NAME, CONTENT_LOCATION_FIELD_NAME,
        CONTENT_TYPE_FIELD_NAME, DATE_FIELD_NAME, FROM_FIELD_NAME, MESSAGE_ID_FIELD_NAME,
        SUBJECT_FIELD_NAME, TO_FIELD_NAME, X_MMS_CONTENT_LOCATION_FIELD_NAME,
        X_MMS_DELIVERY_REPORT_FIELD_NAME, X_MMS_DELIVERY_TIME_FIELD_NAME, X_MMS_EXPIRY_FIELD_NAME,
        X_MMS_MESSAGE_CLASS_FIELD_NAME, X_MMS_MESSAGE_SIZE_FIELD_NAME,
        X_MMS_MESSAGE_TYPE_FIELD_NAME, X_MMS_MMS_VERSION_FIELD_NAME, X_MMS_PRIORITY_FIELD_NAME,
        X_MMS_READ_REPORT_FIELD_NAME, X_MMS_REPORT_ALLOWED_FIELD_NAME,
        X_MMS_RESPONSE_STATUS_FIELD_NAME, X_MMS_RESPONSE_TEXT_FIELD_NAME,
        X_MMS_SENDER_VISIBILITY_FIELD_NAME, X_MMS_STATUS_FIELD_NAME,
        X_MMS_TRANSACTION_ID_FIELD_NAME, X_MMS_RETRIEVE_STATUS_FIELD_NAME,
        X_MMS_RETRIEVE_TEXT_FIELD_NAME, X_MMS_READ_STATUS_FIELD_NAME,
        X_MMS_REPLY_CHARGING_FIELD_NAME, X_MMS_REPLY_CHARGING_DEADLINE_FIELD_NAME,
        X_MMS_REPLY_CHARGING_ID_FIELD_NAME, X_MMS_REPLY_CHARGING_SIZE_FIELD_NAME,
        X_MMS_PREVIOUSLY_SENT_BY_FIELD_NAME, X_MMS_PREVIOUSLY_SENT_DATE_FIELD_NAME,
        X_MMS_STORE_FIELD_NAME, X_MMS_MM_STATE_FIELD_NAME, X_MMS_MM_FLAGS_FIELD_NAME,
        X_MMS_STORE_STATUS_FIELD_NAME, X_MMS_STORE_STATUS_TEXT_FIELD_NAME, X_MMS_STORED_FIELD_NAME,
        X_MMS_ATTRIBUTES_FIELD_NAME, X_MMS_TOTALS_FIELD_NAME, X_MMS_MBOX_TOTALS_FIELD_NAME,
        X_MMS_QUOTAS_FIELD_NAME, X_MMS_MBOX_QUOTAS_FIELD_NAME, X_MMS_MESSAGE_COUNT_FIELD_NAME,
        CONTENT_FIELD_NAME, X_MMS_START_H_FIELD_NAME, ADDITIONAL_HEADERS_FIELD_NAME,
        X_MMS_DISTRIBUTION_INDICATOR_FIELD_NAME, X_MMS_ELEMENT_DESCRIPTOR_FIELD_NAME,
        X_MMS_LIMIT_FIELD_NAME, CONTENT_LANGUAGE_FIELD_NAME, X_MMS_APPLIC_ID_FIELD_NAME,
        X_MMS_REPLY_APPLIC_ID_FIELD_NAME, INTERNAL_NESTED_MULTIPART_FIELD_NAME,
        INTERNAL_GENERIC_ENTITY_HEADER_FIELD_NAME, X_MMS_DRM_CONTENT_FIELD_NAME);
    expect_constants(CHAR_SET_MAP, MMS_CHARSET_US_ASCII, MMS_CHARSET_UTF_8, MMS_CHARSET_ISO_8859_1,
                     MMS_CHARSET_ISO_8859_9, MMS_CHARSET_ISO_8859_7, MMS_CHARSET_ISO_10646_UCS_2,
                     MMS_CHARSET_UTF_7, MMS_CHARSET_UTF_16BE, MMS_CHARSET_UTF_16LE,
                     MMS_CHARSET_UTF_16);
    expect_constants(WSP_PARAMETER_MAP, MMS_Q_STRING, MMS_CHARSET_STRING, MMS_LEVEL_STRING,
                     MMS_TYPE_STRING, MMS_HTTP_TYPE_STRING, MMS_NAME_STRING, MMS_FILENAME_STRING,
                     MMS_DIFFERENCES_STRING, MMS_PADDING_STRING, MMS_START_STRING,
                     MMS_START_INFO_STRING, MMS_COMMENT_STRING, MMS_DOMAIN_STRING,
                     MMS_MAX_AGE_STRING, MMS_PATH_STRING, MMS_SECURE_STRING);
    expect_constants(MMS_MESSAGE_CLASS_MAP, MMS_PERSONAL_STRING, MMS_ADVERTISEMENT_STRING,
                     MMS_INFORMATIONAL_STRING, MMS_AUTO_STRING);
    // The header maps share the constants of the field names; equal content types share one string.
    for (const MMS_MapEntry *map : {MMS_HEADER_MAP, WSP_HEADER_MAP}) {
        for (; map->name != nullptr; ++map) {
            EXPECT_EQ(map->name, MMS_SearchFieldMapForName(MMS_SearchFieldMapForId(map->name)));
        }
    }
    for (uint8_t number = 11; number <= 15; ++number) {
        EXPECT_EQ(MMS_SearchMapForString(CONTENT_TYPE_MAP, number),
                  MMS_SearchMapForString(CONTENT_TYPE_MAP, static_cast<uint8_t>(number + 23)));
    }
    EXPECT_STREQ(MMS_APPLICATION_ID_STRING, "Application-ID");
    EXPECT_STREQ(MMS_REPLY_TO_APPLICATION_ID_STRING, "Reply-To-Application-ID");
    EXPECT_STREQ(DRM_SEPARATE_DELIVERY_STRING, "X-Oma-Drm-Separate-Delivery");
}

TEST(Vocabulary, LookupsFindTheFirstRow) {
    for (const auto &map : maps) {
        SCOPED_TRACE(map.title);
        ASSERT_EQ(map.pointer, map.array);
        const MMS_MapEntry *const end = map.array + map.size - 1;
        EXPECT_EQ(end->number, 0U);
        EXPECT_EQ(end->name, nullptr);
        for (const MMS_MapEntry *row = map.array; row != end; ++row) {
            std::string other_case = row->name;
            for (char &c : other_case) {
                c = static_cast<char>(std::isupper(c) != 0 ? std::tolower(c) : std::toupper(c));
            }
            const auto named = std::find_if(map.array, end, [&](const MMS_MapEntry &r) {
                return std::string_view(r.name) == row->name;
            });
            uint8_t octet = 99;
            uint16_t integer = 99;
            EXPECT_EQ(MMS_SearchMapForToken(map.pointer, other_case.c_str(), &octet), 1U);
            EXPECT_EQ(MMS_SearchMapForInteger(map.pointer, other_case.c_str(), &integer), 1U);
            EXPECT_EQ(octet, static_cast<uint8_t>(named->number)) << row->name;
            EXPECT_EQ(integer, named->number) << row->name;

            const auto low = [&](const MMS_MapEntry &r) {
                return static_cast<uint8_t>(r.number) == static_cast<uint8_t>(row->number);
            };
            EXPECT_EQ(MMS_SearchMapForString(map.pointer, static_cast<uint8_t>(row->number)),
                      std::find_if(map.array, end, low)->name);
            // The 16-bit lookup does not reach a row of number 0 behind the first.
            const bool reached = row->number != 0 || row == map.array;
            EXPECT_EQ(MMS_SearchMapForText(map.pointer, static_cast<uint16_t>(row->number)),
                      reached ? row->name : nullptr);
        }
    }
}

TEST(Vocabulary, LookupsMiss) {
    for (const auto &map : maps) {
        SCOPED_TRACE(map.title);
        for (const char *name : {"", "X", "Sub", "Subjects", static_cast<const char *>(nullptr)}) {
            uint8_t octet = 99;
            uint16_t integer = 99;
            EXPECT_EQ(MMS_SearchMapForToken(map.pointer, name, &octet), 0U);
            EXPECT_EQ(octet, 0);
            EXPECT_EQ(MMS_SearchMapForInteger(map.pointer, name, &integer), 0U);
            EXPECT_EQ(integer, 0);
        }
        EXPECT_EQ(MMS_SearchMapForString(map.pointer, 250), nullptr);
        EXPECT_EQ(MMS_SearchMapForText(map.pointer, 0x4321), nullptr);
        EXPECT_EQ(MMS_SearchMapForText(map.pointer, 256), nullptr);
    }
    EXPECT_EQ(MMS_SearchMapForString(WSP_PARAMETER_MAP, 4), nullptr);
    EXPECT_EQ(MMS_SearchMapForString(MMS_HEADER_MAP, 0), nullptr) << "the terminator is no row";
    EXPECT_EQ(MMS_SearchMapForText(CHAR_SET_MAP, 5), nullptr);
    EXPECT_STREQ(MMS_SearchMapForString(CHAR_SET_MAP, 1000 % 256), "ISO-10646-UCS-2");
}

TEST(Vocabulary, FieldIds) {
    for (int id = 0; id < 256; ++id) {
        const char *const name = MMS_SearchFieldMapForName(static_cast<uint8_t>(id));
        ASSERT_EQ(name != nullptr, id >= 1 && id <= 61) << id;
        if (name != nullptr) {
            EXPECT_EQ(MMS_SearchFieldMapForId(name), id);
        }
    }
    EXPECT_EQ(MMS_SearchFieldMapForId("x-mms-message-type"), 19);
    EXPECT_EQ(MMS_SearchFieldMapForId("X-Mms-Message-Typ"), 0);
    EXPECT_EQ(MMS_SearchFieldMapForId(""), 0);
    EXPECT_EQ(MMS_SearchFieldMapForId(nullptr), 0);
}

TEST(Vocabulary, EnumeratedRanges) {
    const struct {
        int code;
        const char *name;
        int highest;
    } rows[] = {
        {6, "X-Mms-Delivery-Report", 129}, {12, "X-Mms-Message-Type", 147},
        {15, "x-mms-PRIORITY", 130},       {16, "X-Mms-Read-Report", 129},
        {17, "X-Mms-Report-Allowed", 129}, {20, "X-Mms-Sender-Visibility", 129},
        {21, "X-Mms-Status", 135},         {27, "X-Mms-Read-Status", 129},
        {28, "X-Mms-Reply-Charging", 131}, {35, "X-Mms-MM-State", 132},
        {59, "X-Mms-Drm-Content", 129},
    };
    int highest[256] = {};
    for (const auto &row : rows) {
        highest[row.code] = row.highest;
        const MMS_EnumeratedRange range = MMSGetEnumeratedRangeByFieldName(row.name);
        EXPECT_EQ(range.lowest, 128) << row.name;
        EXPECT_EQ(range.highest, row.highest) << row.name;
    }
    for (int code = 0; code < 256; ++code) {
        const MMS_EnumeratedRange range = MMSGetEnumeratedRange(static_cast<uint8_t>(code));
        EXPECT_EQ(range.lowest, highest[code] != 0 ? 128 : 0) << code;
        EXPECT_EQ(range.highest, highest[code]) << code;
    }
    for (const char *name : {"Subject", "X-Mms-Response-Status", "unknown", "Content-Id",
                             static_cast<const char *>(nullptr)}) {
        EXPECT_EQ(MMSGetEnumeratedRangeByFieldName(name).highest, 0) << shown(name);
    }
}

} // namespace
