// SPDX-License-Identifier: MIT
// Lets an allocation of the test's own choice fail.
//
// A test executable that links dyadctx_failing_allocation has its operator new replaced, for itself
// and for the shared library. It only fails while a FailingAllocation exists.
#pragma once

namespace dyadctx::test {

// Which allocations find no memory: one, or that one and all after it.
enum class FailingAllocations { One, FromThatOneOn };

// From construction to destruction the allocation number `number`, counted from 1 on this thread,
// finds no memory; those before it do. One at a time per thread.
class FailingAllocation {
public:
    explicit FailingAllocation(int number,
                               FailingAllocations which = FailingAllocations::One) noexcept;
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    // Whether that allocation was reached.
    bool HasFailed() const noexcept;
};

// Calls `attempt(number)` with the first, then the second, ... allocation failing, until none is
// left to fail; returns how many could. The attempt makes a FailingAllocation from `number` for the
// operation under test, checks what the operation left, and returns whether it failed.
template<class Attempt>
int ForEachAllocation(const Attempt& attempt) {
    constexpr int Most = 100000;
    int number = 1;
    while (number < Most && attempt(number))
        ++number;
    return number - 1;
}

} // namespace dyadctx::test
