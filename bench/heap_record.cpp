#include "heap_record.hpp"

#include <algorithm>
#include <cstdlib>

namespace {

struct Block {
    void *address;
    size_t size;
};

// Allocates with operator new, which is not redirected.
class Recorder {
public:
    void allocated(void *address, size_t size) {
        if (address != nullptr) {
            ++allocations_;
            blocks_.push_back({address, size});
        }
    }

    void freed(void *address) {
        const auto block = find(address);
        if (block != blocks_.end()) {
            blocks_.erase(block);
        }
        freed_.push_back(address);
    }

    [[nodiscard]] bench::HeapRecord contents() const {
        bench::HeapRecord record;
        record.allocations = allocations_;
        for (const Block &block : blocks_) {
            const auto *octets = static_cast<const uint8_t *>(block.address);
            record.sizes.push_back(block.size);
            record.contents.insert(record.contents.end(), octets, octets + block.size);
        }
        return record;
    }

    [[nodiscard]] const std::vector<Block> &blocks() const { return blocks_; }
    [[nodiscard]] const std::vector<void *> &freed() const { return freed_; }

private:
    // Blocks mostly die young.
    std::vector<Block>::iterator find(void *address) {
        const auto newest = std::find_if(blocks_.rbegin(), blocks_.rend(), [=](const Block &block) {
            return block.address == address;
        });
        return newest == blocks_.rend() ? blocks_.end() : std::prev(newest.base());
    }

    size_t allocations_ = 0;
    std::vector<Block> blocks_;
    std::vector<void *> freed_;
};

Recorder *recorder = nullptr;

// Runs an action under a recorder.
template <typename Action>
void recorded(Recorder &with, const Action &action) {
    recorder = &with;
    action();
    recorder = nullptr;
}

} // namespace

// Both the library and the floor pass through these, so that one test more weighs on both.
extern "C" {
void *__real_malloc(size_t size);
void *__real_calloc(size_t number, size_t size);
void *__real_realloc(void *block, size_t size);
void __real_free(void *block);

void *__wrap_malloc(size_t size) {
    if (recorder == nullptr) [[likely]] {
        return __real_malloc(size);
    }
    void *block = __real_malloc(size);
    recorder->allocated(block, size);
    return block;
}

void *__wrap_calloc(size_t number, size_t size) {
    if (recorder == nullptr) [[likely]] {
        return __real_calloc(number, size);
    }
    void *block = __real_calloc(number, size);
    recorder->allocated(block, number * size);
    return block;
}

void *__wrap_realloc(void *block, size_t size) {
    if (recorder == nullptr) [[likely]] {
        return __real_realloc(block, size);
    }
    recorder->freed(block);
    void *moved = __real_realloc(block, size);
    recorder->allocated(moved, size);
    return moved;
}

void __wrap_free(void *block) {
    if (recorder != nullptr && block != nullptr) [[unlikely]] {
        recorder->freed(block);
    }
    __real_free(block);
}
}

namespace bench {

HeapRecord record_heap(const std::function<void *()> &make,
                       const std::function<void(void *)> &release) {
    void *object = nullptr;
    Recorder making;
    recorded(making, [&] { object = make(); });
    HeapRecord record = making.contents();
    Recorder releasing;
    recorded(releasing, [&] { release(object); });
    for (const void *address : releasing.freed()) {
        const auto &blocks = making.blocks();
        const auto block = std::find_if(blocks.begin(), blocks.end(), [=](const Block &candidate) {
            return candidate.address == address;
        });
        record.release_order.push_back(static_cast<size_t>(block - blocks.begin()));
    }
    return record;
}

} // namespace bench
