#include "context/detail/ContextSlab.h"

#include "platform/detail/MemoryAdvice.h"

#include <algorithm>
#include <new>
#include <utility>

#ifdef DYADCTX_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace dyadctx {

namespace {

// Small files get small slabs; a large one keeps at most some 90 KiB when few contexts are left.
constexpr std::uint16_t LargestCapacity = 1024;
constexpr std::size_t PreparedFrom = std::size_t{1} << 14U;

// Keeps a sanitizer as watchful over a slab as over memory of the usual kind.
void MarkAsFreed([[maybe_unused]] void* memory) noexcept {
#ifdef DYADCTX_ADDRESS_SANITIZER
    ASAN_POISON_MEMORY_REGION(memory, sizeof(VELDyadContext));
#endif
}

void MarkAsUsable([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) noexcept {
#ifdef DYADCTX_ADDRESS_SANITIZER
    ASAN_UNPOISON_MEMORY_REGION(memory, size);
#endif
}

} // namespace

ContextSlab* ContextSlab::Of(VELDyadContext* context, std::size_t place) noexcept {
    return reinterpret_cast<ContextSlab*>(context - (place - 1)) - 1;
}

std::byte* ContextSlab::At(std::size_t place) noexcept {
    return reinterpret_cast<std::byte*>(this + 1) + (place - 1) * sizeof(VELDyadContext);
}

ContextSlab* ContextSlab::WithRoomFor(std::uint16_t capacity) {
    static_assert(sizeof(ContextSlab) % alignof(VELDyadContext) == 0);
    const std::size_t size = sizeof(ContextSlab) + capacity * sizeof(VELDyadContext);
    void* memory = ::operator new(size);
    if (size >= PreparedFrom)
        PrepareForWriting(memory, size);
    return ::new (memory) ContextSlab(capacity);
}

VELDyadContext* ContextSlab::Make(ContextTexts&& texts) {
    VELDyadContext* context = ContextAccess::MakeAt(
        At(made_ + 1), static_cast<std::uint16_t>(made_ + 1), std::move(texts));
    ++made_;
    users_.fetch_add(1, std::memory_order_relaxed);
    return context;
}

void ContextSlab::Reclaim(VELDyadContext* context) noexcept {
    MarkAsFreed(context);
    Release();
}

void ContextSlab::Release() noexcept {
    if (users_.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    MarkAsUsable(At(1), SizeOfContexts());
    this->~ContextSlab();
    ::operator delete(this);
}

ContextPtr ContextMaker::Make(ContextTexts&& texts) {
    if (slab_ != nullptr && slab_->IsFull())
        LeaveSlab();
    if (slab_ == nullptr) {
        slab_ = ContextSlab::WithRoomFor(nextCapacity_);
        nextCapacity_ = std::min<std::uint16_t>(2 * nextCapacity_, LargestCapacity);
    }
    return ContextPtr(slab_->Make(std::move(texts)));
}

void ContextMaker::LeaveSlab() noexcept {
    if (slab_ != nullptr)
        slab_->Release();
    slab_ = nullptr;
}

} // namespace dyadctx
