// Memory for the contexts of a file: many of them in one block, which goes when the last of them
// does.
#pragma once

#include "context/VELDyadContext.h"
#include "context/detail/ContextAccess.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace dyadctx {

class ContextSlab {
public:
    // With one user, the maker of contexts. Throws std::bad_alloc.
    static ContextSlab* WithRoomFor(std::uint16_t capacity);
    // The slab of a context that stands at a place of one, counted from 1.
    static ContextSlab* Of(VELDyadContext* context, std::size_t place) noexcept;

    // Makes a context, another user, at the next place.
    VELDyadContext* Make(ContextTexts&& texts);
    bool IsFull() const noexcept { return made_ == capacity_; }
    // Takes the memory of a context back that has been destroyed.
    void Reclaim(VELDyadContext* context) noexcept;
    // One user less; the last one takes the slab along.
    void Release() noexcept;

private:
    explicit ContextSlab(std::uint16_t capacity) noexcept : capacity_(capacity) {}
    ~ContextSlab() = default;

    // The memory of the contexts follows the object.
    std::byte* At(std::size_t place) noexcept;
    std::size_t SizeOfContexts() const noexcept { return capacity_ * sizeof(VELDyadContext); }

    // Contexts of one slab may be deleted by different threads.
    std::atomic<std::uint32_t> users_{1};
    std::uint16_t made_ = 0;
    std::uint16_t capacity_;
};

// Makes contexts in slabs.
class ContextMaker {
public:
    ContextMaker() noexcept = default;
    ~ContextMaker() { LeaveSlab(); }
    ContextMaker(const ContextMaker&) = delete;
    ContextMaker& operator=(const ContextMaker&) = delete;

    // What the constructor makes, out of texts that are no longer needed. Throws std::bad_alloc.
    ContextPtr Make(ContextTexts&& texts);

private:
    void LeaveSlab() noexcept;

    // Shared with its contexts.
    ContextSlab* slab_ = nullptr;
    std::uint16_t nextCapacity_ = 16;
};

} // namespace dyadctx
