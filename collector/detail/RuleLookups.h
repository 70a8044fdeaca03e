// What the rules ask about contexts other than the one they examine.
//
// Results are cached for the contexts as they are, so an object lives no longer than one check.
#pragma once

#include "collector/detail/CollectorIndex.h"
#include "collector/detail/ContextWatch.h"
#include "collector/detail/DatabaseMatches.h"
#include "context/detail/FriendList.h"

#include <optional>
#include <unordered_map>
#include <vector>

namespace dyadctx {

// What one check covers: a single context, declared or not, or every declared context at its own
// position.
enum class CheckExtent { OneContext, AllContexts };

class RuleLookups {
public:
    RuleLookups(const VELListPtrVELDyadContext& declared, CollectorIndex& index,
                ContextWatches& watches, CheckExtent extent)
        : declared_(declared), index_(index), watches_(watches), extent_(extent) {}

    // Whether contexts may have that parameter type now.
    static bool IsKnownType(const VELUnicodeString& parameterType);
    // The first declared context of that name after position `after`, or null. With AllContexts,
    // `name` is that of the context at `after`.
    VELDyadContext* LaterNamesake(const VELUnicodeString& name, int after);
    // Sets `found`, which is watched, to the first declared context on the same database after
    // position `after`, or to null.
    void FindLaterOnSameDatabase(VELDyadContext* context, int after, VELDyadContext*& found);
    // How many friends of a watched context have that name; none once it is deleted, and none for
    // an empty name.
    int CountFriendsNamed(VELDyadContext* const& context, const VELUnicodeString& name);

private:
    using ContextsByName = std::vector<const VELDyadContext*>;

    const ContextsByName& SortedFriends(const VELDyadContext& context, FriendView friends);
    bool UseDatabaseMatches();

    const VELListPtrVELDyadContext& declared_;
    CollectorIndex& index_;
    ContextWatches& watches_;
    CheckExtent extent_;
    // Of contexts with many friends, with AllContexts.
    std::unordered_map<const VELDyadContext*, ContextsByName> sortedFriends_;
    bool matchesTried_ = false;
    std::optional<DatabaseMatches> matches_;
};

// The first context of `declared` after position `after` with that name, or null. Needs no memory:
// if `index` cannot get any, the list is searched.
VELDyadContext* FindLaterNamesake(const VELListPtrVELDyadContext& declared, CollectorIndex& index,
                                  const VELUnicodeString& name, int after) noexcept;

} // namespace dyadctx
