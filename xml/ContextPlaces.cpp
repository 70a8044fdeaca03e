#include "xml/detail/ContextPlaces.h"

#include <algorithm>
#include <stdexcept>

namespace dyadctx {

namespace {

struct ByAddress {
    bool operator()(const PlaceList::Entry& left, const PlaceList::Entry& right) const noexcept {
        return std::less<>()(left.first, right.first);
    }
};

} // namespace

const Place* PlaceList::find(const VELDyadContext* context) const noexcept {
    if (!isSorted_) {
        std::sort(entries_.begin(), entries_.end(), ByAddress());
        isSorted_ = true;
    }
    const auto found =
        std::lower_bound(entries_.begin(), entries_.end(), Entry(context, {}), ByAddress());
    return found != entries_.end() && found->first == context ? &found->second : nullptr;
}

const Place& PlaceList::at(const VELDyadContext* context) const {
    const Place* place = find(context);
    if (place == nullptr)
        throw std::out_of_range("a context without place");
    return *place;
}

} // namespace dyadctx
