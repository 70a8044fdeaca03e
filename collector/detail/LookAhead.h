// SPDX-License-Identifier: MIT
// Prefetches for walks over the declared contexts, whose friends lie anywhere in memory.
#pragma once

#include "context/VELListPtrVELDyadContext.h"
#include "context/detail/ContextAccess.h"

namespace dyadctx {

// To be called for each position of a walk. Each step needs what an earlier one has prefetched: the
// context itself, the list of its friends, and then what `first` and later `second` prefetch for
// each friend.
template<class First, class Second>
void LookAhead(const VELListPtrVELDyadContext& declared, int pos, First first, Second second) {
    constexpr int Distance = 8;
    ContextAccess::Prefetch(declared[pos + 4 * Distance]);
    ContextAccess::PrefetchFriends(declared[pos + 3 * Distance]);
    for (const VELDyadContext* one : ContextAccess::FriendsOf(declared[pos + 2 * Distance])) {
        if (one != nullptr)
            first(*one);
    }
    for (const VELDyadContext* one : ContextAccess::FriendsOf(declared[pos + Distance])) {
        if (one != nullptr)
            second(*one);
    }
}

} // namespace dyadctx
