// Which declared contexts are on the same database.
#pragma once

#include "context/VELDyadContext.h"
#include "context/VELListPtrVELDyadContext.h"

#include <vector>

namespace dyadctx {

// Providers of this type are never compared.
inline constexpr const char* UncomparedProviderType = "STEP";

// The first context behind position `index` of `declared` on the database of `context`; null when
// there is none or `context` is not compared. Asks the providers and writes the trace lines of that
// search.
VELDyadContext* FindLaterOnSameDatabase(const VELListPtrVELDyadContext& declared,
                                        VELDyadContext* context, int index);

// The same answers for all contexts of `declared` at once, in one sweep. Asks no provider and
// writes no line, so it stands in for the search only where nobody can tell. The contexts must stay
// as they are while it is used.
class DatabaseMatches {
public:
    // Whether it may stand in: the trace is off, and all providers are the built-in ones.
    static bool MayReplaceSearch(const VELListPtrVELDyadContext& declared);

    explicit DatabaseMatches(const VELListPtrVELDyadContext& declared);

    VELDyadContext* LaterOnSameDatabase(int index) const;

private:
    const VELListPtrVELDyadContext& declared_;
    // By position: the next position on the same database; 0 when there is none.
    std::vector<int> next_;
};

} // namespace dyadctx
