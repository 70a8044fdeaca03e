#include "collector/detail/RuleLookups.h"

#include "context/detail/ContextAccess.h"
#include "context/detail/ParameterTypes.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <string_view>
#include <utility>

namespace dyadctx {

namespace {

// Shorter lists of friends are searched unsorted.
constexpr int SortFrom = 16;

int CountInList(FriendView friends, const VELUnicodeString& name) {
    int count = 0;
    for (const VELDyadContext* candidate : friends) {
        if (candidate != nullptr && candidate->GetName() == name)
            ++count;
    }
    return count;
}

struct ByName {
    bool operator()(const VELDyadContext* left, const VELDyadContext* right) const {
        return left->GetName().AsView() < right->GetName().AsView();
    }
    bool operator()(const VELDyadContext* left, std::string_view right) const {
        return left->GetName().AsView() < right;
    }
    bool operator()(std::string_view left, const VELDyadContext* right) const {
        return left < right->GetName().AsView();
    }
};

} // namespace

bool RuleLookups::IsKnownType(const VELUnicodeString& parameterType) {
    bool known = false;
    VisitParameterTypes(
        [&](std::string_view type) { known = known || parameterType.AsView() == type; });
    return known;
}

VELDyadContext* RuleLookups::LaterNamesake(const VELUnicodeString& name, int after) {
    if (after >= declared_.Size())
        return nullptr;
    if (extent_ == CheckExtent::AllContexts) {
        const int next = index_.NextNamesake(declared_, after);
        return next == 0 ? nullptr : declared_[next];
    }
    return FindLaterNamesake(declared_, index_, name, after);
}

void RuleLookups::FindLaterOnSameDatabase(VELDyadContext* context, int after,
                                          VELDyadContext*& found) {
    found = nullptr;
    if (extent_ == CheckExtent::AllContexts && UseDatabaseMatches())
        found = matches_->LaterOnSameDatabase(after);
    else
        dyadctx::FindLaterOnSameDatabase(declared_, watches_, context, after, found);
}

bool RuleLookups::UseDatabaseMatches() {
    if (!matchesTried_) {
        matchesTried_ = true;
        if (auto matches = DatabaseMatches::InPlaceOfSearch(declared_))
            matches_.emplace(std::move(*matches));
    }
    return matches_.has_value();
}

int RuleLookups::CountFriendsNamed(VELDyadContext* const& context, const VELUnicodeString& name) {
    if (context != nullptr)
        ContextAccess::TraceFriends(*context);
    if (context == nullptr || name.IsEmpty())
        return 0;
    const FriendView friends = ContextAccess::Friends(*context);
    if (friends.Size() < SortFrom || extent_ == CheckExtent::OneContext)
        return CountInList(friends, name);
    const ContextsByName& sorted = SortedFriends(*context, friends);
    const auto [first, last] =
        std::equal_range(sorted.begin(), sorted.end(), name.AsView(), ByName());
    return static_cast<int>(last - first);
}

const RuleLookups::ContextsByName& RuleLookups::SortedFriends(const VELDyadContext& context,
                                                              FriendView friends) {
    const auto [place, isNew] = sortedFriends_.try_emplace(&context);
    ContextsByName& sorted = place->second;
    if (!isNew)
        return sorted;
    sorted.reserve(static_cast<std::size_t>(friends.Size()));
    std::remove_copy(friends.begin(), friends.end(), std::back_inserter(sorted), nullptr);
    std::sort(sorted.begin(), sorted.end(), ByName());
    return sorted;
}

VELDyadContext* FindLaterNamesake(const VELListPtrVELDyadContext& declared, CollectorIndex& index,
                                  const VELUnicodeString& name, int after) noexcept {
    after = std::max(after, 0);
    if (after >= declared.Size())
        return nullptr;
    try {
        const int found = index.PositionOfName(declared, name, after);
        return found == 0 ? nullptr : declared[found];
    } catch (const std::bad_alloc&) {
        for (int pos = after + 1; pos <= declared.Size(); ++pos) {
            if (declared[pos] != nullptr && declared[pos]->GetName() == name)
                return declared[pos];
        }
    }
    return nullptr;
}

} // namespace dyadctx
