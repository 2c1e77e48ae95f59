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

const MMS_MapEntry *find(const NamedNumbers &map, TextView name) {
    if (name.size > UINT8_MAX) {
        return nullptr;
    }
    const uint8_t *at = map.name_lengths;
    const uint8_t *const end = at + map.count;
    const auto next = [&] {
        return static_cast<const uint8_t *>(
            std::memchr(at, static_cast<int>(name.size), static_cast<size_t>(end - at)));
    };
    while ((at = next()) != nullptr) {
        const MMS_MapEntry &row = map.rows[at - map.name_lengths];
        // Most names are written as the map has them.
        if (std::memcmp(name.data, row.name, name.size) == 0 ||
            equal_ignoring_case(name, row.name)) {
            return &row;
        }
        ++at;
    }
    return nullptr;
}

FieldId field_id(const char *name) {
    const MMS_MapEntry *row = name != nullptr ? find(field_names, view_of(name)) : nullptr;
    return static_cast<FieldId>(row != nullptr ? row->number : 0);
}

} // namespace mms
