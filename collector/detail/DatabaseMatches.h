// SPDX-License-Identifier: MIT
// Which declared contexts are on the same database.
#pragma once

#include "collector/detail/ContextWatch.h"
#include "collector/detail/PositionChains.h"
#include "context/VELDyadContext.h"
#include "context/VELListPtrVELDyadContext.h"

#include <optional>

namespace dyadctx {

// Providers of this type are never compared.
inline constexpr const char* UncomparedProviderType = "STEP";

// Sets `found`, which is watched, to the first context after position `index` of `declared` on the
// database of `context`; it stays null when there is none or `context` is not compared. Calls the
// providers and writes the trace lines of that search.
void FindLaterOnSameDatabase(const VELListPtrVELDyadContext& declared, ContextWatches& watches,
                             VELDyadContext* context, int index, VELDyadContext*& found);

// The same results for all contexts of `declared`, computed in one pass. Calls no provider and
// writes no trace, so it replaces the search only where that makes no visible difference. The
// contexts must not change while it is used.
class DatabaseMatches {
public:
    // Nothing when it may not replace the search: the trace is on, or not all providers are built
    // in. Throws std::bad_alloc.
    static std::optional<DatabaseMatches> InPlaceOfSearch(const VELListPtrVELDyadContext& declared);

    // `index` is the position of a declared context.
    VELDyadContext* LaterOnSameDatabase(int index) const;

private:
    explicit DatabaseMatches(const VELListPtrVELDyadContext& declared) : declared_(declared) {}

    // False at a provider that is not built in.
    bool AppendAll();

    const VELListPtrVELDyadContext& declared_;
    // The positions of each database that is compared.
    PositionChains chains_;
};

} // namespace dyadctx
