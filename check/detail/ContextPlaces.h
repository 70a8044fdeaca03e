// The places of a file's contexts, by address. Columns count bytes, as the document's nodes do.
// Adding is cheap; the list is sorted at the first look-up.
#pragma once

#include "context/VELDyadContext.h"
#include "platform/VELIXMLDOM.h"
#include "platform/VELPlace.h"

#include <functional>
#include <utility>
#include <vector>

namespace dyadctx {

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

} // namespace dyadctx
