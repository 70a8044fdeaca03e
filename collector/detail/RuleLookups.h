// What the rules ask about the contexts round the one they look at.
//
// Answers are remembered for the contexts as they are, so an object of this class lives no longer
// than one check.
#pragma once

#include "collector/detail/CollectorIndex.h"
#include "collector/detail/ContextWatch.h"
#include "collector/detail/DatabaseMatches.h"
#include "context/detail/FriendList.h"

#include <optional>
#include <unordered_map>
#include <vector>

namespace dyadctx {

// How much one check looks at: a single context, which need not be a declared one, or every
// declared context at its own position.
enum class CheckExtent { OneContext, AllContexts };

class RuleLookups {
public:
    RuleLookups(const VELListPtrVELDyadContext& declared, CollectorIndex& index,
                ContextWatches& watches, CheckExtent extent)
        : declared_(declared), index_(index), watches_(watches), extent_(extent) {}

    // What looking at the declared context at a position soon takes.
    void Prefetch(int pos) const noexcept;
    // Whether contexts may have that parameter type now.
    static bool IsKnownType(const VELUnicodeString& parameterType);
    // The first declared context of that name behind position `after`, or null. When all contexts
    // are looked at, `name` is that of the context at `after`.
    VELDyadContext* LaterNamesake(const VELUnicodeString& name, int after);
    // Sets `found`, which is watched, to the first declared context on the same database after
    // position `after`, or to null.
    void FindLaterOnSameDatabase(VELDyadContext* context, int after, VELDyadContext*& found);
    // How many friends of a watched context have that name; none where it is gone. An empty name
    // counts for nothing.
    int CountFriendsNamed(VELDyadContext* const& context, const VELUnicodeString& name);

private:
    using ContextsByName = std::vector<const VELDyadContext*>;

    const ContextsByName& SortedFriends(const VELDyadContext& context, FriendView friends);
    bool UseDatabaseMatches();

    const VELListPtrVELDyadContext& declared_;
    CollectorIndex& index_;
    ContextWatches& watches_;
    CheckExtent extent_;
    // Of contexts that are friends of many, while all contexts are looked at.
    std::unordered_map<const VELDyadContext*, ContextsByName> sortedFriends_;
    bool matchesTried_ = false;
    std::optional<DatabaseMatches> matches_;
};

// The first context of `declared` behind position `after` with that name, or null. Needs no memory:
// where `index` cannot get any, the list is searched.
VELDyadContext* FindLaterNamesake(const VELListPtrVELDyadContext& declared, CollectorIndex& index,
                                  const VELUnicodeString& name, int after) noexcept;

} // namespace dyadctx
