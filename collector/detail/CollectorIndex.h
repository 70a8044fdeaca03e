// SPDX-License-Identifier: MIT
// A collector's look-up index: which declared contexts have a name, their places in a view, which
// contexts the collector owns, and which scenario rows belong to a channel.
//
// Derived from the collector's lists and never part of its state: built when first needed, extended
// when something is appended, dropped when anything else changes. Every operation takes the lists
// it searches; null entries are skipped. Operations throw std::bad_alloc and can then be tried
// again.
#pragma once

#include "collector/detail/PositionChains.h"
#include "context/VELListPtrVELDyadContext.h"
#include "platform/VELListVal.h"
#include "platform/VELUnicodeString.h"

#include <array>
#include <cstdint>
#include <limits>
#include <unordered_set>

namespace dyadctx {

// The values of a collector's type filter: which contexts the current view serves.
enum ViewType : int { AllContexts = 0, PathContexts = 1, DatabaseContexts = 2, FileContexts = 3 };

class CollectorIndex {
public:
    // Reserves for about that many declared contexts.
    void Reserve(int declaredSize) noexcept { expectedSize_ = declaredSize; }

    // Prefetches for looking up or entering a name: first the name's slot, some time later the
    // context that probably has it.
    void Prefetch(const VELUnicodeString& name) const noexcept;
    void PrefetchContext(const VELListPtrVELDyadContext& declared,
                         const VELUnicodeString& name) const noexcept;

    // The first position above `after` in `declared` whose context has that name; 0 without one.
    int PositionOfName(const VELListPtrVELDyadContext& declared, const VELUnicodeString& name,
                       int after = 0);
    // The next position above `pos` whose context has the name of the one at `pos`; 0 without one.
    // `pos` holds a context.
    int NextNamesake(const VELListPtrVELDyadContext& declared, int pos);
    // The first place of `positions`, the list of that view, whose context has that name; 0 without
    // one. Places whose position is outside `declared` are skipped. `view` is not AllContexts.
    int PlaceOfName(const VELListPtrVELDyadContext& declared, const VELRawCollint& positions,
                    ViewType view, const VELUnicodeString& name);

    // Whether `owned` holds the context.
    bool Owns(const VELListPtrVELDyadContext& owned, const VELDyadContext* context);

    // The first row of a channel context, and the next row of the same one; 0 without one.
    int RowOfChannel(const VELListValVELUnicodeString& channels, const VELUnicodeString& channel);
    int NextRowOfChannel(int row) const noexcept { return channelRows_.Next(row); }
    // The first row of a channel context and profile, and the next row of the same two.
    int RowOfProfile(const VELListValVELUnicodeString& channels,
                     const VELListValVELUnicodeString& profiles, const VELUnicodeString& channel,
                     const VELUnicodeString& profile);
    int NextRowOfProfile(int row) const noexcept { return profileRows_.Next(row); }

    // To be called after changes other than appending.
    void Forget() noexcept;

private:
    // The names of a sequence of contexts.
    struct Names {
        PositionChains chains;
        // The chains are valid while this is the number of assignments to contexts.
        std::uint64_t assignments = 0;
        // The first position that was outside the declared contexts. The chains are valid only
        // until the list reaches it.
        int firstOutside = std::numeric_limits<int>::max();
    };

    template<class PositionAt>
    static void Extend(Names& names, const VELListPtrVELDyadContext& declared, int size,
                       int expectedSize, PositionAt positionAt);
    const PositionChains& Declared(const VELListPtrVELDyadContext& declared);

    Names declared_;
    int expectedSize_ = 0;
    // By view, without AllContexts.
    std::array<Names, 3> views_;
    std::unordered_set<const VELDyadContext*> owned_;
    int ownedSize_ = 0;
    PositionChains channelRows_;
    PositionChains profileRows_;
};

} // namespace dyadctx
