// The one way octets are written.
#pragma once

#include "util/base.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace mms {

// Writes octets one after the other into a given space, or, when sizing, only counts them.
//
// Codecs take a Writer by reference and write their parts in order; they need not look at the
// outcome of each. The first failure stays: after it nothing is written any more, and the Writer
// only serves to tell its status.
class Writer {
public:
    // A Writer that only counts.
    Writer() : Writer(nullptr, 0, true) {}

    Writer(uint8_t *output, uint32_t space, bool sizing)
        : cursor_(output), space_(sizing ? UINT32_MAX : space), sizing_(sizing) {}

    [[nodiscard]] MMS_Status status() const { return status_; }
    [[nodiscard]] bool ok() const { return status_ == MMS_STATUS_OK; }
    [[nodiscard]] bool sizing() const { return sizing_; }
    // Octets written, or counted; 0 after a failure.
    [[nodiscard]] uint32_t count() const { return ok() ? count_ : 0; }

    void fail(MMS_Status status) {
        if (ok()) {
            status_ = status;
        }
    }

    // Takes the next octets of the space: where to write them, or null when sizing or failed.
    uint8_t *claim(size_t size) {
        if (size > space_) {
            fail(sizing_ ? MMS_STATUS_OUT_OF_RANGE : MMS_STATUS_NO_ROOM);
        }
        if (!ok()) {
            return nullptr;
        }
        const auto octets = static_cast<uint32_t>(size);
        space_ -= octets;
        count_ += octets;
        if (sizing_) {
            return nullptr;
        }
        uint8_t *place = cursor_;
        cursor_ += octets;
        return place;
    }

    void octet(uint8_t value) {
        uint8_t *place = claim(1);
        if (place != nullptr) {
            *place = value;
        }
    }

    void octets(const void *data, size_t size) {
        uint8_t *place = claim(size);
        if (place != nullptr && size != 0) {
            std::memcpy(place, data, size);
        }
    }

private:
    uint8_t *cursor_;
    uint32_t space_;
    uint32_t count_ = 0;
    MMS_Status status_ = MMS_STATUS_OK;
    bool sizing_;
};

// The outcome of sizing something: its octets, or 0 and why it cannot be written.
struct Size {
    MMS_Status status;
    uint32_t octets;
};

template <typename Write>
Size size_of(Write write) {
    Writer sizing;
    write(sizing);
    return {sizing.status(), sizing.count()};
}

} // namespace mms
