// SPDX-License-Identifier: MIT
// One check of a collector: applies every rule to the given contexts, reports what is broken and
// traces as the collector's Check does. A host's code may run meanwhile: a context is checked by
// the texts it had at first, and deleted contexts are left alone.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "collector/detail/CollectorIndex.h"
#include "collector/detail/ContextRules.h"
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

// What the rules ask about contexts other than the one they examine. Results are cached for the
// contexts as they are, so an object lives no longer than one check.
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

class CheckRun {
public:
    // With CheckExtent::AllContexts each context is passed with its own position.
    CheckRun(VELDyadCtxCollector& collector, CheckExtent extent, FaultReporter& reporter);

    // Whether the context keeps all rules. False without report for a null context or an index
    // outside the current view; index 0 means not registered.
    bool CheckContext(VELDyadContext* context, int index);
    // Applies only the rules on the default context.
    bool CheckDefaultContext(const VELUnicodeString& name, const VELUnicodeString& parameter,
                             const VELUnicodeString& parameterType);

private:
    // Each returns whether all its rules are kept, and always applies all of them.
    bool ApplyAll(RuleSubject& subject);
    bool Apply(const RuleGroup& group, RuleSubject& subject);
    bool ApplyRule(const char* method, const ContextRule& rule, RuleSubject& subject);
    bool ApplyToFriends(RuleSubject& subject);
    bool ApplyToAssociated(RuleSubject& subject);
    void ReportNullFriend(const RuleSubject& subject);

    VELDyadCtxCollector& collector_;
    ContextWatches& watches_;
    RuleLookups lookups_;
    FaultReporter& reporter_;
};

} // namespace dyadctx
