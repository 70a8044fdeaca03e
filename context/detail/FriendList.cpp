// SPDX-License-Identifier: MIT
#include "context/detail/FriendList.h"

#include <algorithm>
#include <new>

namespace dyadctx {

namespace {

// With the list's header they fill the smallest block of common allocators.
constexpr std::uint32_t FewestFriends = 2;

} // namespace

FriendList::Ptr FriendList::WithRoomFor(std::uint32_t capacity) noexcept {
    constexpr std::size_t Slot = sizeof(VELDyadContext*); // NOLINT(bugprone-sizeof-expression)
    void* block = ::operator new(sizeof(FriendList) + capacity * Slot, std::nothrow);
    return Ptr(block == nullptr ? nullptr : ::new (block) FriendList(capacity));
}

FriendList::Ptr FriendList::CopyOf(const Ptr& list) {
    if (list == nullptr || list->size_ == 0)
        return nullptr;
    Ptr copy = WithRoomFor(list->size_);
    if (copy == nullptr)
        throw std::bad_alloc();
    std::copy_n(list->Items(), list->size_, copy->Items());
    copy->size_ = list->size_;
    return copy;
}

bool FriendList::Append(Ptr& list, VELDyadContext* context) noexcept {
    if (list == nullptr || list->size_ == list->capacity_) {
        Ptr larger = WithRoomFor(list == nullptr ? FewestFriends : 2 * list->capacity_);
        if (larger == nullptr)
            return false;
        if (list != nullptr)
            std::copy_n(list->Items(), list->size_, larger->Items());
        larger->size_ = list == nullptr ? 0 : list->size_;
        list = std::move(larger);
    }
    list->Items()[list->size_++] = context;
    return true;
}

void FriendList::RemovePosition(int pos) noexcept {
    std::copy(Items() + pos, Items() + size_, Items() + pos - 1);
    --size_;
}

void FriendList::RemoveAll(const VELDyadContext* context) noexcept {
    VELDyadContext** end = std::remove(Items(), Items() + size_, context);
    size_ = static_cast<std::uint32_t>(end - Items());
}

} // namespace dyadctx
