#include "check/detail/ContextPlaces.h"

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

} // namespace dyadctx
