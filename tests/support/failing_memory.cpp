#include "support/failing_memory.hpp"

#include <cstddef>

namespace {

constexpr long all_succeed = -1;

// How many more allocations succeed.
long left = all_succeed;

bool fails() { return left >= 0 && left-- == 0; }

} // namespace

extern "C" {
void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void *__real_realloc(void *block, size_t size);
void *__wrap_malloc(size_t size) { return fails() ? nullptr : __real_malloc(size); }
void *__wrap_calloc(size_t count, size_t size) {
    return fails() ? nullptr : __real_calloc(count, size);
}
void *__wrap_realloc(void *block, size_t size) {
    return fails() ? nullptr : __real_realloc(block, size);
}
}

namespace test {

FailingAllocation::FailingAllocation(long n) { left = n; }
FailingAllocation::~FailingAllocation() { left = all_succeed; }
bool FailingAllocation::happened() { return left < 0; }

} // namespace test
