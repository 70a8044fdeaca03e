// SPDX-License-Identifier: MIT
#include "support/FailingAllocation.h"

#include "support/AlignedMemory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace dyadctx::test {

namespace {

// How many allocations remain until the one that fails; 0 while none is to fail.
thread_local int remaining = 0;
thread_local bool allAfterFail = false;
thread_local bool failed = false;

bool Fails() noexcept {
    if (remaining == 0 || --remaining > 0)
        return false;
    failed = true;
    remaining = allAfterFail ? 1 : 0;
    return true;
}

void* Allocate(std::size_t size) noexcept {
    return Fails() ? nullptr : std::malloc(size != 0 ? size : 1);
}

void* AllocateAligned(std::size_t size, std::align_val_t alignment) noexcept {
    return Fails() ? nullptr : TakeAligned(size, static_cast<std::size_t>(alignment));
}

void* OrThrow(void* block) {
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

} // namespace

FailingAllocation::FailingAllocation(int number, FailingAllocations which) noexcept {
    failed = false;
    allAfterFail = which == FailingAllocations::FromThatOneOn;
    remaining = number;
}

FailingAllocation::~FailingAllocation() {
    remaining = 0;
}

// Not inline: asking is a reason to link the replaced operators.
bool FailingAllocation::HasFailed() const noexcept {
    return failed;
}

} // namespace dyadctx::test

namespace test = dyadctx::test;

void* operator new(std::size_t size) {
    return test::OrThrow(test::Allocate(size));
}
void* operator new[](std::size_t size) {
    return test::OrThrow(test::Allocate(size));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return test::Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return test::Allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return test::OrThrow(test::AllocateAligned(size, alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return test::OrThrow(test::AllocateAligned(size, alignment));
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
void operator delete(void* block, std::align_val_t) noexcept {
    test::FreeAligned(block);
}
void operator delete[](void* block, std::align_val_t) noexcept {
    test::FreeAligned(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    test::FreeAligned(block);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept {
    test::FreeAligned(block);
}
