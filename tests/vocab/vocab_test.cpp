#include <algorithm>
#include <cctype>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::shown;

const MMS_MapEntry *const maps[][2] = {
    {FieldNameMap, MMS_FIELDNAME_MAP},
    {MMS_HEADER_MAP_ARRAY, MMS_HEADER_MAP},
    {WSP_HEADER_MAP_ARRAY, WSP_HEADER_MAP},
    {CONTENT_TYPE_MAP_ARRAY, CONTENT_TYPE_MAP},
    {CHAR_SET_MAP_ARRAY, CHAR_SET_MAP},
    {WSP_PARAMETER_MAP_ARRAY, WSP_PARAMETER_MAP},
    {WSP_DISPOSITION_MAP_ARRAY, WSP_DISPOSITION_MAP},
    {MMS_MESSAGE_CLASS_MAP_ARRAY, MMS_MESSAGE_CLASS_MAP},
};

// Where two rows share a name or a number, and which constants the rows point to.
TEST(Vocabulary, RowsOfAName) {
    uint16_t number = 99;
    EXPECT_EQ(MMS_SearchMapForInteger(CONTENT_TYPE_MAP, "multipart/mixed", &number), 1U);
    EXPECT_EQ(number, 35);
    EXPECT_STREQ(MMS_SearchMapForString(CONTENT_TYPE_MAP, 12), "multipart/mixed");
    EXPECT_EQ(MMS_SearchMapForText(CHAR_SET_MAP, 106), MMS_CHARSET_UTF_8);
    EXPECT_EQ(MMS_SearchMapForString(WSP_PARAMETER_MAP, 9), MMS_TYPE_STRING);
    EXPECT_EQ(MMS_SearchMapForString(WSP_HEADER_MAP, 17), CONTENT_TYPE_FIELD_NAME);
    EXPECT_EQ(MMS_SearchMapForString(MMS_HEADER_MAP, 59), X_MMS_DRM_CONTENT_FIELD_NAME);
}

TEST(Vocabulary, LookupsFindTheFirstRow) {
    for (const auto &[array, map] : maps) {
        ASSERT_EQ(map, array);
        const MMS_MapEntry *end = map;
        while (end->name != nullptr) {
            ++end;
        }
        EXPECT_EQ(end->number, 0U);
        for (const MMS_MapEntry *row = map; row != end; ++row) {
            std::string other_case = row->name;
            std::transform(other_case.begin(), other_case.end(), other_case.begin(), [](int c) {
                return static_cast<char>(std::isupper(c) != 0 ? std::tolower(c) : std::toupper(c));
            });
            const auto *const named = std::find_if(map, end, [&](const MMS_MapEntry &r) {
                return std::string_view(r.name) == row->name;
            });
            uint8_t octet = 99;
            uint16_t integer = 99;
            EXPECT_EQ(MMS_SearchMapForToken(map, other_case.c_str(), &octet), 1U);
            EXPECT_EQ(MMS_SearchMapForInteger(map, other_case.c_str(), &integer), 1U);
            EXPECT_EQ(octet, static_cast<uint8_t>(named->number)) << row->name;
            EXPECT_EQ(integer, named->number) << row->name;

            const auto low = [&](const MMS_MapEntry &r) {
                return static_cast<uint8_t>(r.number) == static_cast<uint8_t>(row->number);
            };
            EXPECT_EQ(MMS_SearchMapForString(map, static_cast<uint8_t>(row->number)),
                      std::find_if(map, end, low)->name);
            // The 16-bit lookup does not reach a row of number 0 behind the first.
            const bool reached = row->number != 0 || row == map;
            EXPECT_EQ(MMS_SearchMapForText(map, static_cast<uint16_t>(row->number)),
                      reached ? row->name : nullptr);
        }
        for (const char *name : {"", "X", "Subjects", static_cast<const char *>(nullptr)}) {
            uint8_t octet = 99;
            uint16_t integer = 99;
            EXPECT_EQ(MMS_SearchMapForToken(map, name, &octet), 0U);
            EXPECT_EQ(MMS_SearchMapForInteger(map, name, &integer), 0U);
            EXPECT_EQ(octet + integer, 0);
        }
        EXPECT_EQ(MMS_SearchMapForString(map, 250), nullptr);
        EXPECT_EQ(MMS_SearchMapForText(map, 0x4321), nullptr);
    }
    EXPECT_EQ(MMS_SearchMapForString(MMS_HEADER_MAP, 0), nullptr) << "the terminator is no row";
}

TEST(Vocabulary, FieldIds) {
    for (int id = 0; id < 256; ++id) {
        const char *const name = MMS_SearchFieldMapForName(static_cast<uint8_t>(id));
        ASSERT_EQ(name != nullptr, id >= 1 && id <= 61) << id;
        EXPECT_EQ(MMS_SearchFieldMapForId(name), name != nullptr ? id : 0) << shown(name);
    }
    EXPECT_EQ(MMS_SearchFieldMapForId("x-mms-message-type"), 19);
    EXPECT_EQ(MMS_SearchFieldMapForId("X-Mms-Message-Typ"), 0);
}

} // namespace
