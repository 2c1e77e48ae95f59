#include "decoder/field_index.hpp"

#include <bit>
#include <sys/auxv.h>

namespace mms {
namespace {

constexpr FieldId generic_id = FieldId::internal_generic_entity_header;

// Below this many fields a walk is cheaper than a table.
constexpr uint32_t few_fields = 32;

// SipHash-1-3 (Aumasson and Bernstein) over the folded octets of a name.
class NameHash {
public:
    NameHash() {
        uint64_t key[2] = {0, 0};
        // The kernel hands every process 16 random octets.
        const void *random = reinterpret_cast<const void *>( // NOLINT(performance-no-int-to-ptr)
            getauxval(AT_RANDOM));
        if (random != nullptr) {
            std::memcpy(key, random, sizeof key);
        }
        v_[0] = key[0] ^ 0x736f6d6570736575U;
        v_[1] = key[1] ^ 0x646f72616e646f6dU;
        v_[2] = key[0] ^ 0x6c7967656e657261U;
        v_[3] = key[1] ^ 0x7465646279746573U;
    }

    uint32_t operator()(TextView name) {
        const CaseFold fold;
        uint64_t word = 0;
        for (size_t i = 0; i < name.size; ++i) {
            word = word << 8 | (static_cast<uint32_t>(fold(name.data[i])) & 0xFFU);
            if (i % 8 == 7) {
                absorb(word);
                word = 0;
            }
        }
        absorb(word | uint64_t{name.size} << 56);
        v_[2] ^= 0xFF;
        round();
        round();
        round();
        return static_cast<uint32_t>(v_[0] ^ v_[1] ^ v_[2] ^ v_[3]);
    }

private:
    void absorb(uint64_t word) {
        v_[3] ^= word;
        round();
        v_[0] ^= word;
    }

    void round() {
        v_[0] += v_[1];
        v_[1] = std::rotl(v_[1], 13) ^ v_[0];
        v_[0] = std::rotl(v_[0], 32);
        v_[2] += v_[3];
        v_[3] = std::rotl(v_[3], 16) ^ v_[2];
        v_[0] += v_[3];
        v_[3] = std::rotl(v_[3], 21) ^ v_[0];
        v_[2] += v_[1];
        v_[1] = std::rotl(v_[1], 17) ^ v_[2];
        v_[2] = std::rotl(v_[2], 32);
    }

    uint64_t v_[4];
};

TextView name_of(const MMS_Field *field) {
    const auto *data = static_cast<const MMS_GenericData *>(field->pValue);
    return view_of(data != nullptr ? data->pHeaderName : nullptr);
}

} // namespace

FieldIndex::FieldIndex(MMS_Entity &entity) : entity_(entity) {
    static_assert(field_id_limit <= 64);
    for (MMS_Field *field : Fields(entity.pFieldList)) {
        if (field->fieldId < field_id_limit && !holds(id_of(field))) {
            hold(field);
        }
    }
}

MMS_Status FieldIndex::append(FieldId id, void *value, MMS_Field *&field) const {
    if (entity_.pFieldList->nElement == UINT16_MAX) {
        return MMS_STATUS_REFUSED;
    }
    field = append_field(entity_.pFieldList, id, value);
    return field != nullptr ? MMS_STATUS_OK : MMS_STATUS_NO_ROOM;
}

MMS_Status FieldIndex::set(FieldId id, void *value) {
    if (holds(id)) {
        replace_value(known_[number(id)], value);
        return MMS_STATUS_OK;
    }
    MMS_Field *field = nullptr;
    const MMS_Status status = append(id, value, field);
    if (status == MMS_STATUS_OK) {
        hold(field);
    }
    return status;
}

// Stores the data in a field of that name, or in a new one if it is null.
MMS_Status FieldIndex::put_generic(MMS_Field *&field, OwnedGenericData data) const {
    MMS_Status status = MMS_STATUS_OK;
    if (field != nullptr) {
        replace_value(field, data.get());
    } else {
        status = append(generic_id, data.get(), field);
    }
    if (status == MMS_STATUS_OK) {
        static_cast<void>(data.release());
    }
    return status;
}

MMS_Status FieldIndex::set_generic(TextView name, OwnedGenericData data) {
    if (entity_.pFieldList->nElement < few_fields) {
        MMS_Field *field = find_generic(&entity_, name);
        return put_generic(field, std::move(data));
    }
    if (!reserve()) {
        return MMS_STATUS_NO_ROOM;
    }
    const uint32_t hash = NameHash()(name);
    Slot *slot = find(name, hash);
    const bool added = slot->field == nullptr;
    const MMS_Status status = put_generic(slot->field, std::move(data));
    if (added && status == MMS_STATUS_OK) {
        slot->hash = hash;
        ++used_;
    }
    return status;
}

// The slot of that name, or the empty one where it belongs.
FieldIndex::Slot *FieldIndex::find(TextView name, uint32_t hash) {
    uint32_t at = hash & (capacity_ - 1);
    while (slots_[at].field != nullptr &&
           (slots_[at].hash != hash || !is_generic_named(slots_[at].field, name))) {
        at = (at + 1) & (capacity_ - 1);
    }
    return &slots_[at];
}

// Makes sure of a table with every generic field in it and more than half of it empty.
bool FieldIndex::reserve() {
    constexpr uint32_t first_capacity = 128;
    if (capacity_ != 0 && used_ < capacity_ / 2) {
        return true;
    }
    uint32_t capacity = capacity_ != 0 ? capacity_ * 2 : first_capacity;
    while (capacity / 2 <= entity_.pFieldList->nElement && capacity_ == 0) {
        capacity *= 2;
    }
    auto *slots = static_cast<Slot *>(std::calloc(capacity, sizeof(Slot)));
    if (slots == nullptr) {
        return false;
    }
    std::free(slots_);
    slots_ = slots;
    capacity_ = capacity;
    used_ = 0;
    for (MMS_Field *field : Fields(entity_.pFieldList)) {
        if (id_of(field) == generic_id) {
            const uint32_t hash = NameHash()(name_of(field));
            Slot *slot = find(name_of(field), hash);
            if (slot->field == nullptr) {
                *slot = {field, hash};
                ++used_;
            }
        }
    }
    return true;
}

} // namespace mms
