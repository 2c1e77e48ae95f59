#include "codec/writer.hpp"

#include <algorithm>

namespace mms {

// The space does not do: what is to be done about it; false after a failure.
bool Writer::make_room(size_t size) {
    if (!ok()) {
        return false;
    }
    if (!sizing_ && !grows_ && spans_ == 0) {
        fail(MMS_STATUS_NO_ROOM);
        return false;
    }
    if (size > UINT32_MAX - count_) {
        fail(MMS_STATUS_OUT_OF_RANGE);
        return false;
    }
    if (grows_) {
        return grow(count_ + size);
    }
    short_ = true;
    base_ = nullptr;
    limit_ = UINT32_MAX;
    return true;
}

bool Writer::grow(size_t needed) {
    const size_t wanted = std::max({needed, block_size_, size_t{limit_} * 2});
    const size_t capacity = std::min<size_t>(wanted, UINT32_MAX);
    auto *grown = static_cast<uint8_t *>(std::realloc(block_.get(), capacity));
    if (grown == nullptr) {
        fail(MMS_STATUS_NO_ROOM);
        return false;
    }
    if (block_ == nullptr) {
        std::memcpy(grown, base_, count_);
    }
    static_cast<void>(block_.release());
    block_.reset(grown);
    base_ = grown;
    limit_ = static_cast<uint32_t>(capacity);
    return true;
}

OwnedOctets Writer::take() {
    const size_t size = count_ != 0 ? count_ : 1;
    auto *exact = static_cast<uint8_t *>(std::realloc(block_.get(), size));
    if (exact == nullptr) {
        return nullptr;
    }
    if (block_ == nullptr) {
        std::memcpy(exact, base_, count_);
    }
    static_cast<void>(block_.release());
    return OwnedOctets(exact);
}

} // namespace mms
