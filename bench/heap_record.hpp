// A record of the heap blocks of an object: what the floor of the comparison is made of.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace bench {

// The blocks that an object consists of, in the order of their allocation.
struct HeapRecord {
    std::vector<size_t> sizes;
    std::vector<uint8_t> contents;     // of all blocks, one after the other
    std::vector<size_t> release_order; // indices
    size_t allocations = 0;            // made on the way, the blocks' own among them
};

// Records the blocks that are left when `make` returns, with what they hold then, and the order in
// which `release` frees them. Only allocations that the linker redirects are seen: those of this
// program and of the static libraries in it.
HeapRecord record_heap(const std::function<void *()> &make,
                       const std::function<void(void *)> &release);

} // namespace bench
