#include "platform/AllocationFailure.h"

#include <cstdlib>
#include <new>

namespace {

// Allocations still allowed; none are counted while it is negative.
thread_local int remaining = -1;
thread_local bool hasFailed = false;

void* Allocate(std::size_t size) noexcept {
    if (remaining == 0) {
        hasFailed = true;
        return nullptr;
    }
    if (remaining > 0)
        --remaining;
    return std::malloc(size > 0 ? size : 1);
}

void* AllocateOrThrow(std::size_t size) {
    if (void* block = Allocate(size))
        return block;
    throw std::bad_alloc();
}

} // namespace

// All forms, as a sanitizer's runtime brings each of its own.
void* operator new(std::size_t size) {
    return AllocateOrThrow(size);
}

void* operator new[](std::size_t size) {
    return AllocateOrThrow(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete[](void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

void operator delete[](void* block, std::size_t) noexcept {
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
