// The one way octets are written.
#pragma once

#include "util/base.h"
#include "util/heap.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace mms {

// A heap block that grows with what a Writer puts into it, once that is more than the room which
// the Writer was given to begin with.
class GrowingBlock {
public:
    explicit GrowingBlock(size_t first_size) : first_size_(first_size) {}

    // Takes in what was written elsewhere, with room for `needed` octets and more: where it stands
    // now and how much room there is, or null without memory.
    uint8_t *grow(const uint8_t *written, uint32_t count, size_t needed, uint32_t &room);

    // What was written, in a block of that size (of one octet if there is none), or null without
    // memory. A block that is not much larger stays as it is: malloc maps large ones on their own,
    // and keeps one that is freed for the next only if that asks for no more.
    OwnedOctets take(const uint8_t *written, uint32_t count, uint32_t room);

private:
    uint8_t *resize(const uint8_t *written, uint32_t count, size_t size);

    OwnedOctets octets_;
    size_t first_size_;
};

// Writes octets one after the other: into a given space, into a GrowingBlock, or, when sizing,
// nowhere, only counting them.
//
// Codecs take a Writer by reference and write their parts in order; they need not look at the
// outcome of each. The first failure stays: after it nothing is written any more, and the Writer
// only serves to tell its status.
class Writer {
public:
    // A Writer that only counts.
    Writer() : Writer(nullptr, 0, true) {}

    Writer(uint8_t *output, uint32_t space, bool sizing)
        : base_(sizing ? nullptr : output), limit_(sizing ? UINT32_MAX : space), sizing_(sizing) {}

    // A Writer into a block, after the given room is used up.
    Writer(uint8_t *room, uint32_t space, GrowingBlock &block)
        : base_(room), limit_(space), block_(&block) {}

    [[nodiscard]] MMS_Status status() const { return status_; }
    [[nodiscard]] bool ok() const { return status_ == MMS_STATUS_OK; }
    [[nodiscard]] bool sizing() const { return sizing_; }
    // Octets written, or counted; 0 after a failure.
    [[nodiscard]] uint32_t count() const { return count_; }

    void fail(MMS_Status status) {
        if (ok()) {
            status_ = status;
            base_ = nullptr;
            count_ = 0;
            limit_ = 0;
        }
    }

    // Takes the next octets of the space: where to write them, or null when sizing or failed.
    uint8_t *claim(size_t size) {
        if (size > limit_ - count_ && !make_room(size)) {
            return nullptr;
        }
        uint8_t *place = at(count_);
        count_ += static_cast<uint32_t>(size);
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

    // Moves what stands from that position on to make room for more octets before it.
    void insert(uint32_t position, uint32_t size) {
        const uint32_t behind = count_ - position;
        if (size != 0 && claim(size) != nullptr) {
            std::memmove(at(position + size), at(position), behind);
        }
    }

    // Writes over octets that were written.
    void overwrite(uint32_t position, const uint8_t *data, uint32_t size) {
        uint8_t *place = at(position);
        if (place != nullptr) {
            std::memcpy(place, data, size);
        }
    }

    // Within a span the lack of room waits for its end: a value in it that cannot be written at all
    // is the failure that is told.
    class Span {
    public:
        explicit Span(Writer &out) : out_(out) { ++out.spans_; }
        Span(const Span &) = delete;
        Span &operator=(const Span &) = delete;
        ~Span() {
            --out_.spans_;
            if (out_.short_ && out_.spans_ == 0) {
                out_.fail(MMS_STATUS_NO_ROOM);
            }
        }

    private:
        Writer &out_;
    };

    // What a Writer into a block has written, as `GrowingBlock::take` gives it.
    OwnedOctets take() { return block_->take(base_, count_, limit_); }

private:
    // Where the octet of that position is; null when nothing is written.
    [[nodiscard]] uint8_t *at(uint32_t position) const {
        return base_ != nullptr ? base_ + position : nullptr;
    }
    bool make_room(size_t size);

    uint8_t *base_;
    uint32_t count_ = 0;
    uint32_t limit_;
    GrowingBlock *block_ = nullptr;
    MMS_Status status_ = MMS_STATUS_OK;
    uint32_t spans_ = 0;
    bool sizing_ = false;
    bool short_ = false;
};

} // namespace mms
