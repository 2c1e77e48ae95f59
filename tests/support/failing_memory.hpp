// Allocations that fail, for programs that the linker has send malloc, calloc and realloc here.
#pragma once

namespace test {

// Lets the library's n-th allocation from here on fail, counted from 0, while it lives.
class FailingAllocation {
public:
    explicit FailingAllocation(long n);
    FailingAllocation(const FailingAllocation &) = delete;
    FailingAllocation &operator=(const FailingAllocation &) = delete;
    ~FailingAllocation();

    // Whether there were as many.
    [[nodiscard]] static bool happened();
};

} // namespace test
