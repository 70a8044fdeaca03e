// Look-up help of a collector: which declared contexts have a name, and which contexts it owns.
//
// Derived from the collector's lists and never part of what it holds: built when first needed,
// extended when contexts are appended, dropped when anything else changes. Every operation takes
// the list it answers for; null entries are skipped. Operations throw std::bad_alloc and are then
// ready to be tried again.
#pragma once

#include "context/VELListPtrVELDyadContext.h"
#include "platform/VELUnicodeString.h"

#include <cstdint>
#include <memory>
#include <unordered_set>
#include <vector>

namespace dyadctx {

class CollectorIndex {
public:
    // The first position above `after` in `declared` whose context has that name; 0 without one.
    int PositionOfName(const VELListPtrVELDyadContext& declared, const VELUnicodeString& name,
                       int after = 0);
    // The next position above `pos` whose context has the name of the one at `pos`; 0 without one.
    // `pos` holds a context.
    int NextNamesake(const VELListPtrVELDyadContext& declared, int pos);

    // Whether `owned` holds the context.
    bool Owns(const VELListPtrVELDyadContext& owned, const VELDyadContext* context);

    // For changes other than appending.
    void Forget() noexcept;
};

} // namespace dyadctx
