// SPDX-License-Identifier: MIT
// Where contexts are in a file, and where they name their friends and associated contexts.
#pragma once

#include "context/VELDyadContext.h"
#include "context/VELListPtrVELDyadContext.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELPlace.h"
#include "platform/VELUnicodeString.h"

#include <cstddef>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace dyadctx {

// The places of a file's contexts, by address. Columns count bytes, as the document's nodes do.
// Adding is cheap; the list is sorted at the first look-up.
class ContextPlaces {
public:
    using Entry = std::pair<const VELDyadContext*, VELPlace>;

    // No context is added twice.
    void Add(const VELDyadContext* context, const VELPlace& place) {
        isSorted_ =
            isSorted_ && (entries_.empty() || std::less<>()(entries_.back().first, context));
        entries_.emplace_back(context, place);
    }
    std::vector<Entry>::iterator begin() noexcept { return entries_.begin(); }
    std::vector<Entry>::iterator end() noexcept { return entries_.end(); }
    // Null for a context that was not added.
    const VELPlace* Find(const VELDyadContext* context) const noexcept;

private:
    mutable std::vector<Entry> entries_;
    mutable bool isSorted_ = true;
};

// All zero for a null node.
inline VELPlace PlaceOf(const VELIDOMNode& node) {
    return node.IsNull() ? VELPlace() : VELPlace{node.GetLine(), node.GetColumn()};
}

// The placeholder of each friend and associated context before linking: only it has the place where
// the friend is written.
class ReferencePlaces {
public:
    // Records the placeholders of the declared contexts, which are not linked yet.
    explicit ReferencePlaces(const VELListPtrVELDyadContext& declared);

    // The placeholder of a friend; both positions run from 1. Null outside.
    const VELDyadContext* FriendAt(int context, int position) const noexcept;
    // Null without one.
    const VELDyadContext* AssociatedAt(int context) const noexcept;
    // The first placeholder of that name among the friends of a context. Null without one.
    const VELDyadContext* FriendNamed(int context, const VELUnicodeString& name);

private:
    struct References {
        std::size_t firstFriend = 0;
        const VELDyadContext* associated = nullptr;
    };

    void Index(int context);
    bool Holds(int context) const noexcept;

    std::vector<const VELDyadContext*> friends_;
    // One per declared context and one after the last.
    std::vector<References> references_;
    // The context whose friends are in byName_.
    int indexed_ = 0;
    std::unordered_map<std::string_view, const VELDyadContext*> byName_;
};

} // namespace dyadctx
