// Finds the fields of one entity in constant time while headers are added to it.
#pragma once

#include "model/model.hpp"

namespace mms {

// An entity's headers as they arrive: `set` and `set_generic` do what the setters of the model do,
// without a walk over the fields for each header, so that a part with very many headers costs no
// more for each of them. The entity must not be changed by others meanwhile.
//
// Generic headers are found through a hash table once they are many. Its key differs from process
// to process, so that nobody can choose names that collide.
class FieldIndex {
public:
    explicit FieldIndex(MMS_Entity &entity);
    FieldIndex(const FieldIndex &) = delete;
    FieldIndex &operator=(const FieldIndex &) = delete;
    ~FieldIndex() { std::free(slots_); }

    // The value of that header, or null (0).
    [[nodiscard]] void *find_value(FieldId id) const {
        return holds(id) ? known_[number(id)]->pValue : nullptr;
    }

    // Store the value, which passes to the field. OK; REFUSED when the field list is full; NO_ROOM
    // without memory.
    MMS_Status set(FieldId id, void *value);
    template <typename Record, typename Deleter>
    MMS_Status set(FieldId id, std::unique_ptr<Record, Deleter> value) {
        const MMS_Status status = set(id, static_cast<void *>(value.get()));
        if (status == MMS_STATUS_OK) {
            static_cast<void>(value.release());
        }
        return status;
    }
    MMS_Status set_generic(TextView name, OwnedGenericData data);

private:
    struct Slot {
        MMS_Field *field;
        uint32_t hash;
    };

    [[nodiscard]] bool holds(FieldId id) const { return (held_ >> number(id) & 1) != 0; }
    void hold(MMS_Field *field) {
        known_[field->fieldId] = field;
        held_ |= uint64_t{1} << field->fieldId;
    }
    MMS_Status append(FieldId id, void *value, MMS_Field *&field) const;
    MMS_Status put_generic(MMS_Field *&field, OwnedGenericData data) const;
    bool reserve();
    Slot *find(TextView name, uint32_t hash);

    MMS_Entity &entity_;
    uint64_t held_ = 0;                // the headers that known_ has, a bit for each id
    MMS_Field *known_[field_id_limit]; // unset where there is no bit
    Slot *slots_ = nullptr;
    uint32_t capacity_ = 0; // a power of 2, or 0
    uint32_t used_ = 0;
};

} // namespace mms
