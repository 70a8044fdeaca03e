#include "platform/AllocationFailure.h"

#include <cstdlib>
#include <new>

namespace {

// Allocations still allowed; none are counted while it is negative.
thread_local int remaining = -1;
thread_local bool hasFailed = false;

} // namespace

void* operator new(std::size_t size) {
    if (remaining == 0) {
        hasFailed = true;
        throw std::bad_alloc();
    }
    if (remaining > 0)
        --remaining;
    if (void* block = std::malloc(size > 0 ? size : 1))
        return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace dyadctx::test {

AllocationFailure::AllocationFailure(int allowed) {
    hasFailed = false;
    remaining = allowed;
}

AllocationFailure::~AllocationFailure() {
    remaining = -1;
}

bool AllocationFailure::HasHappened() const {
    return hasFailed;
}

} // namespace dyadctx::test
