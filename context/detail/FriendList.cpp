#include "context/detail/FriendList.h"

#include <algorithm>
#include <new>

namespace dyadctx {

namespace {

// Together with the head of the list they fill the smallest block of the usual allocators.
constexpr std::uint32_t FewestFriends = 2;

} // namespace

void* FriendList::operator new(std::size_t size, std::uint32_t capacity) noexcept {
    return ::operator new(size + capacity * sizeof(VELDyadContext*), std::nothrow);
}

void FriendList::operator delete(void* block, std::uint32_t) noexcept {
    ::operator delete(block);
}

FriendList::Ptr FriendList::WithRoomFor(std::uint32_t capacity) noexcept {
    return Ptr(new (capacity) FriendList(capacity));
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
