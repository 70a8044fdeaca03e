// One check of a collector: applies every rule to the given contexts, reports what is broken and
// traces as the collector's Check does. A host's code may run meanwhile: a context is checked by
// the texts it had at first, and deleted contexts are left alone.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "collector/detail/ContextRules.h"
#include "collector/detail/RuleLookups.h"

namespace dyadctx {

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
