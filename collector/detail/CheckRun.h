// One check of a collector: applies every rule to the contexts it is given and reports what is
// broken. It traces as the collector's Check does. A host's code may run meanwhile: the texts a
// context is checked by are those it had at first, and contexts that are gone are left alone.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "collector/detail/ContextRules.h"
#include "collector/detail/RuleLookups.h"

namespace dyadctx {

class CheckRun {
public:
    // With CheckExtent::AllContexts each context is given with its own position.
    CheckRun(VELDyadCtxCollector& collector, CheckExtent extent, FaultReporter& reporter);

    // What checking the declared context at a position soon takes.
    void Prefetch(int pos) const noexcept { lookups_.Prefetch(pos); }
    // Whether the context keeps all rules. False without report for a null context or an index
    // outside the current view; index 0 is a context that is not registered.
    bool CheckContext(VELDyadContext* context, int index);
    // The rules on the default context alone.
    bool CheckDefaultContext(const VELUnicodeString& name, const VELUnicodeString& parameter,
                             const VELUnicodeString& parameterType);

private:
    // Each answers whether all its rules are kept, and applies all of them whatever the answer.
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
