// SPDX-License-Identifier: MIT
// The friends of a context in one block of memory; none for the many contexts without friends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

class VELDyadContext;

namespace dyadctx {

// A view of a list that does not grow meanwhile. Positions run from 1.
class FriendView {
public:
    FriendView() noexcept = default;
    FriendView(VELDyadContext* const* first, int size) noexcept : first_(first), size_(size) {}

    int Size() const noexcept { return size_; }
    // Null outside the list.
    VELDyadContext* operator[](int pos) const noexcept {
        return pos >= 1 && pos <= size_ ? first_[pos - 1] : nullptr;
    }
    VELDyadContext* const* begin() const noexcept { return first_; }
    VELDyadContext* const* end() const noexcept { return first_ + size_; }

private:
    VELDyadContext* const* first_ = nullptr;
    int size_ = 0;
};

class FriendList {
public:
    // Null is the empty list.
    using Ptr = std::unique_ptr<FriendList>;

    // Throws std::bad_alloc.
    static Ptr CopyOf(const Ptr& list);
    // False without memory; the list is then unchanged.
    static bool Append(Ptr& list, VELDyadContext* context) noexcept;

    FriendView View() const noexcept { return {Items(), static_cast<int>(size_)}; }
    // `pos` is within the list.
    void Set(int pos, VELDyadContext* context) noexcept { Items()[pos - 1] = context; }
    void RemovePosition(int pos) noexcept;
    void RemoveAll(const VELDyadContext* context) noexcept;

    // The friends follow the object in its block, which WithRoomFor allocates as a whole.
    static void operator delete(void* block) noexcept { // NOLINT(misc-new-delete-overloads)
        ::operator delete(block);
    }

private:
    explicit FriendList(std::uint32_t capacity) noexcept : capacity_(capacity) {}
    // Null without memory.
    static Ptr WithRoomFor(std::uint32_t capacity) noexcept;

    VELDyadContext** Items() noexcept { return reinterpret_cast<VELDyadContext**>(this + 1); }
    VELDyadContext* const* Items() const noexcept {
        return reinterpret_cast<VELDyadContext* const*>(this + 1);
    }

    std::uint32_t size_ = 0;
    std::uint32_t capacity_;
};

} // namespace dyadctx
