#include "util/text.hpp"
#include "vocab/headers.hpp"

namespace {

const MMS_MapEntry *find_name(const MMS_MapEntry *map, const char *name) {
    if (name == nullptr) {
        return nullptr;
    }
    for (const MMS_MapEntry *row = map; row->name != nullptr; ++row) {
        if (mms::equal_ignoring_case(row->name, name)) {
            return row;
        }
    }
    return nullptr;
}

} // namespace

const char *MMS_SearchMapForString(const MMS_MapEntry *pMap, uint8_t number) {
    for (const MMS_MapEntry *row = pMap; row->name != nullptr; ++row) {
        if ((row->number & 0xFFU) == number) {
            return row->name;
        }
    }
    return nullptr;
}

const char *MMS_SearchMapForText(const MMS_MapEntry *pMap, uint16_t number) {
    for (const MMS_MapEntry *row = pMap; row->name != nullptr; ++row) {
        if ((row->number & 0xFFFFU) == number) {
            return row->name;
        }
        if (row[1].number == 0) {
            break;
        }
    }
    return nullptr;
}

uint32_t MMS_SearchMapForToken(const MMS_MapEntry *pMap, const char *pName, uint8_t *pNumber) {
    const MMS_MapEntry *row = find_name(pMap, pName);
    *pNumber = row != nullptr ? static_cast<uint8_t>(row->number) : 0;
    return row != nullptr ? MMS_STATUS_OK : MMS_STATUS_REFUSED;
}

uint32_t MMS_SearchMapForInteger(const MMS_MapEntry *pMap, const char *pName, uint16_t *pNumber) {
    const MMS_MapEntry *row = find_name(pMap, pName);
    *pNumber = row != nullptr ? static_cast<uint16_t>(row->number) : 0;
    return row != nullptr ? MMS_STATUS_OK : MMS_STATUS_REFUSED;
}

const char *MMS_SearchFieldMapForName(uint8_t fieldId) {
    return mms::header(static_cast<mms::FieldId>(fieldId)).name;
}

uint8_t MMS_SearchFieldMapForId(const char *pName) { return mms::number(mms::field_id(pName)); }

MMS_EnumeratedRange MMSGetEnumeratedRange(uint8_t headerCode) {
    const mms::Header &row = mms::header_of_mms_code(headerCode);
    const bool one_run = row.accepted[1].low == 0;
    return one_run ? MMS_EnumeratedRange{row.accepted[0].low, row.accepted[0].high}
                   : MMS_EnumeratedRange{0, 0};
}

MMS_EnumeratedRange MMSGetEnumeratedRangeByFieldName(const char *pName) {
    uint8_t code = 0;
    MMS_SearchMapForToken(MMS_HEADER_MAP, pName, &code);
    return MMSGetEnumeratedRange(code);
}

namespace mms {

FieldId field_id(const char *name) {
    const MMS_MapEntry *row = find_name(FieldNameMap, name);
    return static_cast<FieldId>(row != nullptr ? row->number : 0);
}

} // namespace mms
