#include <algorithm>
#include <cctype>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::shown;

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

// The numbers that real PDUs carry, and those where two rows share a name or a number.
TEST(Vocabulary, AssignedNumbers) {
    const struct {
        const MMS_MapEntry *map;
        uint16_t number;
        const char *name;
    } rows[] = {
        {MMS_HEADER_MAP, 1, "Bcc"},
        {MMS_HEADER_MAP, 4, "Content-Type"},
        {MMS_HEADER_MAP, 9, "From"},
        {MMS_HEADER_MAP, 12, "X-Mms-Message-Type"},
        {MMS_HEADER_MAP, 22, "Subject"},
        {MMS_HEADER_MAP, 24, "X-Mms-Transaction-Id"},
        {MMS_HEADER_MAP, 51, "X-Mms-Limit"},
        {MMS_HEADER_MAP, 55, "X-Mms-Applic-ID"},
        {MMS_HEADER_MAP, 59, "X-Mms-Drm-Content"},
        {MMS_HEADER_MAP, 254, "INTERNAL_Generic-Entity-Header"},
        {WSP_HEADER_MAP, 12, "Content-Language"},
        {WSP_HEADER_MAP, 14, "Content-Location"},
        {WSP_HEADER_MAP, 17, "Content-Type"},
        {WSP_HEADER_MAP, 46, "Content-Disposition"},
        {WSP_HEADER_MAP, 64, "Content-Id"},
        {CONTENT_TYPE_MAP, 3, "text/plain"},
        {CONTENT_TYPE_MAP, 30, "image/jpeg"},
        {CONTENT_TYPE_MAP, 34, "multipart/*"},
        {CONTENT_TYPE_MAP, 35, "multipart/mixed"},
        {CONTENT_TYPE_MAP, 36, "multipart/form-data"},
        {CONTENT_TYPE_MAP, 37, "multipart/byteranges"},
        {CONTENT_TYPE_MAP, 38, "multipart/alternative"},
        {CONTENT_TYPE_MAP, 51, "multipart/related"},
        {CONTENT_TYPE_MAP, 54, "application/vnd.wap.connectivity-wbxml"},
        {CONTENT_TYPE_MAP, 0, "*/*"},
        {CHAR_SET_MAP, 3, "US-ASCII"},
        {CHAR_SET_MAP, 12, "ISO-8859-9"},
        {CHAR_SET_MAP, 106, "UTF-8"},
        {CHAR_SET_MAP, 1000, "ISO-10646-UCS-2"},
        {CHAR_SET_MAP, 1014, "UTF-16LE"},
        {WSP_PARAMETER_MAP, 0, "Q"},
        {WSP_PARAMETER_MAP, 5, "Name"},
        {WSP_PARAMETER_MAP, 9, "Type"},
        {WSP_PARAMETER_MAP, 16, "Secure"},
        {WSP_DISPOSITION_MAP, 128, "Form-data"},
        {WSP_DISPOSITION_MAP, 129, "Attachment"},
        {MMS_MESSAGE_CLASS_MAP, 131, "Auto"},
        {MMS_FIELDNAME_MAP, 19, "X-Mms-Message-Type"},
        {MMS_FIELDNAME_MAP, 58, "Content-Language"},
        {MMS_FIELDNAME_MAP, 61, "X-Mms-Drm-Content"},
    };
    for (const auto &row : rows) {
        uint16_t number = 99;
        EXPECT_EQ(MMS_SearchMapForInteger(row.map, row.name, &number), 1U) << row.name;
        EXPECT_EQ(number, row.number) << row.name;
        EXPECT_STREQ(row.map == CHAR_SET_MAP
                         ? MMS_SearchMapForText(row.map, row.number)
                         : MMS_SearchMapForString(row.map, static_cast<uint8_t>(row.number)),
                     row.name);
    }
}

TEST(Vocabulary, RowsPointToTheExportedConstants) {
    const struct {
        const MMS_MapEntry *map;
        const char *constant;
    } rows[] = {
        {FieldNameMap, SUBJECT_FIELD_NAME},          {FieldNameMap, X_MMS_START_H_FIELD_NAME},
        {CHAR_SET_MAP, MMS_CHARSET_UTF_8},           {CHAR_SET_MAP, MMS_CHARSET_UTF_16BE},
        {WSP_PARAMETER_MAP, MMS_TYPE_STRING},        {WSP_PARAMETER_MAP, MMS_START_INFO_STRING},
        {MMS_MESSAGE_CLASS_MAP, MMS_PERSONAL_STRING}};
    for (const auto &row : rows) {
        uint16_t number = 0;
        MMS_SearchMapForInteger(row.map, row.constant, &number);
        EXPECT_EQ(MMS_SearchMapForText(row.map, number), row.constant);
    }
    EXPECT_STREQ(MMS_SearchMapForString(WSP_PARAMETER_MAP, 3), MMS_HTTP_TYPE_STRING);
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
