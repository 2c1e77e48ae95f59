#include "codec/writer.hpp"

#include <algorithm>
#include <utility>

namespace mms {

// Makes the block that size; the first one takes in what was written elsewhere.
uint8_t *GrowingBlock::resize(const uint8_t *written, uint32_t count, size_t size) {
    const bool first = octets_ == nullptr;
    auto *resized = static_cast<uint8_t *>(std::realloc(octets_.get(), size));
    if (resized != nullptr) {
        static_cast<void>(octets_.release());
        octets_.reset(resized);
        if (first) {
            std::memcpy(resized, written, count);
        }
    }
    return resized;
}

uint8_t *GrowingBlock::grow(const uint8_t *written, uint32_t count, size_t needed, uint32_t &room) {
    const size_t wanted = std::max({needed, first_size_, size_t{room} * 2});
    const size_t size = std::min<size_t>(wanted, UINT32_MAX);
    uint8_t *grown = resize(written, count, size);
    if (grown != nullptr) {
        room = static_cast<uint32_t>(size);
    }
    return grown;
}

OwnedOctets GrowingBlock::take(const uint8_t *written, uint32_t count, uint32_t room) {
    const bool fits = octets_ != nullptr && room - count <= count / 4;
    const bool taken = fits || resize(written, count, count != 0 ? count : 1) != nullptr;
    return taken ? std::move(octets_) : nullptr;
}

// The space does not do: what is to be done about it; false after a failure.
bool Writer::make_room(size_t size) {
    if (!ok()) {
        return false;
    }
    if (!sizing_ && block_ == nullptr && spans_ == 0) {
        fail(MMS_STATUS_NO_ROOM);
        return false;
    }
    if (size > UINT32_MAX - count_) {
        fail(MMS_STATUS_OUT_OF_RANGE);
        return false;
    }
    if (block_ == nullptr) {
        short_ = true;
        base_ = nullptr;
        limit_ = UINT32_MAX;
        return true;
    }
    uint8_t *grown = block_->grow(base_, count_, count_ + size, limit_);
    if (grown == nullptr) {
        fail(MMS_STATUS_NO_ROOM);
        return false;
    }
    base_ = grown;
    return true;
}

} // namespace mms
