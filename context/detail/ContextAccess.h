// SPDX-License-Identifier: MIT
// What the library itself may do with a context beyond its public operations.
#pragma once

#include "context/VELDyadContext.h"
#include "context/detail/FriendList.h"
#include "platform/detail/Prefetch.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace dyadctx {

using ContextPtr = std::unique_ptr<VELDyadContext>;

struct ContextTexts {
    VELUnicodeString name;
    VELUnicodeString parameter;
    VELUnicodeString parameterType;
};

struct ContextAccess {
    // Like the constructor, but moves the texts. Throws std::bad_alloc.
    static ContextPtr Make(ContextTexts&& texts) {
        return ContextPtr(new VELDyadContext(std::move(texts)));
    }

    // The trace lines of GetFriends and of GetAssociatedContext. A host's sink may change the
    // context, so its links are read after them.
    static void TraceFriends(const VELDyadContext& context);
    static void TraceAssociated(const VELDyadContext& context);
    // The friends themselves, instead of the copy GetFriends makes.
    static FriendView Friends(const VELDyadContext& context) noexcept;
    // Those of a context that may be null.
    static FriendView FriendsOf(const VELDyadContext* context) noexcept {
        return context == nullptr ? FriendView() : Friends(*context);
    }
    // Adds a friend, which may be null, without trace. False without memory.
    static bool AppendFriend(VELDyadContext& context, VELDyadContext* added) noexcept;
    // Prefetches a context, which may be null, and once that is there its friends.
    static void Prefetch(const VELDyadContext* context) noexcept {
        dyadctx::Prefetch(context);
        dyadctx::Prefetch(context == nullptr ? nullptr : &context->friends_);
    }
    static void PrefetchFriends(const VELDyadContext* context) noexcept {
        if (context != nullptr)
            dyadctx::Prefetch(context->friends_.get());
    }
    static VELDyadContext* Associated(const VELDyadContext& context) noexcept;
    static void ClearAssociated(VELDyadContext& context) noexcept;
    // The provider the context keeps, not one made from it.
    static const VELIDyadDbProvider_var& KeptProvider(const VELDyadContext& context) noexcept;
    // The number of sites, and whether that one has a provider. Without trace and without memory,
    // for lack of which the public operations find fewer.
    static int SiteCount(const VELDyadContext& context) noexcept;
    static bool HasSiteProvider(const VELDyadContext& context,
                                const VELUnicodeString& site) noexcept;

    // Removes every link to `target` from `context`, without trace.
    static void RemoveLinksTo(VELDyadContext& context, const VELDyadContext* target) noexcept;

    // Grows with every assignment to any context. Names never change otherwise, so cached names are
    // valid while this number is the same.
    static std::uint64_t AssignmentCount() noexcept;

    // A context that was never handed to a collector is in none. Once marked it stays marked; a
    // copy begins unmarked.
    static bool WasRegistered(const VELDyadContext& context) noexcept;
    static void MarkRegistered(VELDyadContext& context) noexcept;
};

} // namespace dyadctx
