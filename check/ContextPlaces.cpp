// SPDX-License-Identifier: MIT
#include "check/detail/ContextPlaces.h"

#include "context/detail/ContextAccess.h"

#include <algorithm>

namespace dyadctx {

namespace {

struct ByAddress {
    bool operator()(const ContextPlaces::Entry& left,
                    const ContextPlaces::Entry& right) const noexcept {
        return std::less<>()(left.first, right.first);
    }
};

} // namespace

const VELPlace* ContextPlaces::Find(const VELDyadContext* context) const noexcept {
    if (!isSorted_) {
        std::sort(entries_.begin(), entries_.end(), ByAddress());
        isSorted_ = true;
    }
    const auto found =
        std::lower_bound(entries_.begin(), entries_.end(), Entry(context, {}), ByAddress());
    return found != entries_.end() && found->first == context ? &found->second : nullptr;
}

ReferencePlaces::ReferencePlaces(const VELListPtrVELDyadContext& declared) {
    references_.reserve(static_cast<std::size_t>(declared.Size()) + 1);
    for (int pos = 1; pos <= declared.Size(); ++pos) {
        const VELDyadContext* context = declared[pos];
        references_.push_back({friends_.size(), nullptr});
        if (context == nullptr)
            continue;
        references_.back().associated = ContextAccess::Associated(*context);
        const FriendView friends = ContextAccess::Friends(*context);
        for (int slot = 1; slot <= friends.Size(); ++slot)
            friends_.push_back(friends[slot]);
    }
    references_.push_back({friends_.size(), nullptr});
}

bool ReferencePlaces::Holds(int context) const noexcept {
    return context >= 1 && static_cast<std::size_t>(context) < references_.size();
}

const VELDyadContext* ReferencePlaces::FriendAt(int context, int position) const noexcept {
    if (!Holds(context) || position < 1)
        return nullptr;
    const auto at = static_cast<std::size_t>(context) - 1;
    const std::size_t place = references_[at].firstFriend + static_cast<std::size_t>(position) - 1;
    return place < references_[at + 1].firstFriend ? friends_[place] : nullptr;
}

const VELDyadContext* ReferencePlaces::AssociatedAt(int context) const noexcept {
    return Holds(context) ? references_[static_cast<std::size_t>(context) - 1].associated : nullptr;
}

const VELDyadContext* ReferencePlaces::FriendNamed(int context, const VELUnicodeString& name) {
    if (!Holds(context))
        return nullptr;
    if (indexed_ != context)
        Index(context);
    const auto found = byName_.find(name.AsView());
    return found != byName_.end() ? found->second : nullptr;
}

void ReferencePlaces::Index(int context) {
    byName_.clear();
    indexed_ = context;
    for (int slot = 1; const VELDyadContext* placeholder = FriendAt(context, slot); ++slot)
        byName_.emplace(placeholder->GetName().AsView(), placeholder);
}

} // namespace dyadctx
