// The checks of the collector: how rules are applied, to which contexts, and the searches shared
// with the reader. The rules themselves are in collector/detail/ContextRules.cpp.
#include "collector/VELDyadCtxCollector.h"

#include "collector/detail/CheckRun.h"
#include "collector/detail/CollectorAccess.h"
#include "collector/detail/CollectorInternals.h"
#include "collector/detail/CollectorState.h"
#include "collector/detail/LookAhead.h"
#include "context/detail/ContextAccess.h"
#include "context/detail/DbEnvironment.h"
#include "platform/detail/HostCode.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/TraceLine.h"

#include <optional>
#include <utility>

namespace dyadctx {

CheckRun::CheckRun(VELDyadCtxCollector& collector, CheckExtent extent, FaultReporter& reporter)
    : collector_(collector), watches_(CollectorAccess::Watches(collector)),
      lookups_(CollectorAccess::Declared(collector), CollectorInternals::State(collector).index,
               watches_, extent),
      reporter_(reporter) {}

bool CheckRun::CheckContext(VELDyadContext* context, int index) {
    if (context == nullptr || index < 0 || index > collector_.GetNbCtxs())
        return false;
    // A host that assigns to the context meanwhile would destroy its texts.
    std::optional<ContextTexts> kept;
    if (HostCodeCanRun())
        kept =
            ContextTexts{context->GetName(), context->GetParameter(), context->GetParameterType()};
    const VELUnicodeString& name = kept ? kept->name : context->GetName();
    const VELUnicodeString& parameter = kept ? kept->parameter : context->GetParameter();
    const VELUnicodeString& type = kept ? kept->parameterType : context->GetParameterType();
    TRACE_ENTER("VELDyadCtxCollector:CheckContext <%s>", name.ConvertToChar());
    TRACE_LOG("VELDyadCtxCollector:CheckContext <%s> of Prov <%s> of Type <%s>",
              name.ConvertToChar(), parameter.ConvertToChar(), type.ConvertToChar());
    RuleSubject subject{name, parameter, type, context, index, nullptr, &lookups_};
    const ContextWatch watch(watches_, subject.other);
    const bool valid = ApplyAll(subject);
    if (valid)
        TRACE_LEAVE("VELDyadCtxCollector:CheckContext <%s> OK", name.ConvertToChar());
    else
        TRACE_ERROR("VELDyadCtxCollector:CheckContext <%s> KO", name.ConvertToChar());
    return valid;
}

bool CheckRun::CheckDefaultContext(const VELUnicodeString& name, const VELUnicodeString& parameter,
                                   const VELUnicodeString& parameterType) {
    RuleSubject subject{name, parameter, parameterType, nullptr, 0, nullptr, &lookups_};
    return Apply(DefaultContextRules(), subject);
}

bool CheckRun::ApplyAll(RuleSubject& subject) {
    bool valid = true;
    for (const RuleGroup& group : {OwnRules(), DefaultContextRules(), DuplicateRules()})
        valid = Apply(group, subject) && valid;
    valid = ApplyToFriends(subject) && valid;
    return ApplyToAssociated(subject) && valid;
}

bool CheckRun::Apply(const RuleGroup& group, RuleSubject& subject) {
    bool valid = true;
    for (const ContextRule& rule : group.rules)
        valid = ApplyRule(group.method, rule, subject) && valid;
    return valid;
}

bool CheckRun::ApplyRule(const char* method, const ContextRule& rule, RuleSubject& subject) {
    const int breaches = rule.breaches(subject);
    if (breaches == 0)
        return true;
    Fault fault = MakeFault(method, rule, subject);
    fault.times = breaches;
    reporter_.Report(fault);
    if (rule.trace != nullptr)
        rule.trace(subject);
    return false;
}

bool CheckRun::ApplyToFriends(RuleSubject& subject) {
    bool valid = true;
    ContextAccess::TraceFriends(*subject.context);
    const FriendWalk friends(watches_, ContextAccess::Friends(*subject.context));
    for (int pos = 1; pos <= friends.Size(); ++pos) {
        subject.other = friends[pos];
        subject.friendPosition = pos;
        if (friends.IsNull(pos)) {
            ReportNullFriend(subject);
            return false;
        }
        valid = Apply(FriendRules(), subject) && valid;
    }
    subject.friendPosition = 0;
    return valid;
}

// Checks and traces only while the DB context environment is on.
bool CheckRun::ApplyToAssociated(RuleSubject& subject) {
    const bool mustAsk = ContextAccess::Associated(*subject.context) != nullptr || HostCodeCanRun();
    if (!mustAsk || !IsDbEnvironmentOn())
        return true;
    ContextAccess::TraceAssociated(*subject.context);
    subject.other = ContextAccess::Associated(*subject.context);
    return Apply(AssociatedRules(), subject);
}

void CheckRun::ReportNullFriend(const RuleSubject& subject) {
    Fault fault;
    fault.method = CheckMethod;
    fault.key = key::InternalError;
    fault.context = subject.context;
    reporter_.Report(fault);
}

} // namespace dyadctx

using dyadctx::CheckExtent;
using dyadctx::CheckRun;
using dyadctx::ContextAccess;
using dyadctx::MessageReporter;

namespace {

void StoreMatch(VELDyadContext* found, VELDyadContext** match) {
    if (found != nullptr && match != nullptr)
        *match = found;
}

} // namespace

VELResult VELDyadCtxCollector::Check(VELUnicodeString& message) {
    TRACE_ENTER("VELDyadCtxCollector:Check");
    const int count = GetNbCtxs();
    if (count == 0) {
        LogError(dyadctx::CheckMethod, dyadctx::key::NoCtxDefined, message, nullptr, 0, 1);
        return E_FAIL;
    }
    MessageReporter reporter(message);
    CheckRun run(*this, CheckExtent::AllContexts, reporter);
    bool valid = true;
    for (int pos = 1; valid && pos <= count; ++pos) {
        dyadctx::LookAhead(
            _MainContexts, pos, [](const VELDyadContext& one) { ContextAccess::Prefetch(&one); },
            [](const VELDyadContext& one) { ContextAccess::PrefetchFriends(&one); });
        VELDyadContext* context = std::as_const(_MainContexts)[pos];
        if (context == nullptr)
            LogError(dyadctx::CheckMethod, dyadctx::key::InternalError, message, nullptr, 0, 1);
        valid = context != nullptr && run.CheckContext(context, pos);
    }
    TRACE_LEAVE("VELDyadCtxCollector:Check");
    return valid ? S_OK : E_FAIL;
}

unsigned char VELDyadCtxCollector::CheckContext(VELDyadContext* context, VELUnicodeString& message,
                                                int index) {
    try {
        MessageReporter reporter(message);
        CheckRun run(*this, CheckExtent::OneContext, reporter);
        return run.CheckContext(context, index) ? 1 : 0;
    } catch (...) {
        return 0;
    }
}

unsigned char VELDyadCtxCollector::CheckDefaultContext(const VELUnicodeString& name,
                                                       const VELUnicodeString& parameter,
                                                       const VELUnicodeString& parameterType,
                                                       VELUnicodeString& message) {
    MessageReporter reporter(message);
    CheckRun run(*this, CheckExtent::OneContext, reporter);
    return run.CheckDefaultContext(name, parameter, parameterType) ? 1 : 0;
}

unsigned char VELDyadCtxCollector::IsAValidParamType(const VELUnicodeString& parameterType) {
    return dyadctx::RuleLookups::IsKnownType(parameterType) ? 1 : 0;
}

unsigned char VELDyadCtxCollector::FindMatchingCtx(int index, VELDyadContext* context,
                                                   VELDyadContext** match) {
    if (context == nullptr)
        return 0;
    VELDyadContext* found =
        dyadctx::FindLaterNamesake(_MainContexts, state_->index, context->GetName(), index);
    StoreMatch(found, match);
    return found != nullptr ? 1 : 0;
}

unsigned char VELDyadCtxCollector::FindMatchingDatabase(int index, VELDyadContext* context,
                                                        VELDyadContext** match) {
    VELDyadContext* found = nullptr;
    const dyadctx::ContextWatch watch(state_->watches, found);
    dyadctx::FindLaterOnSameDatabase(_MainContexts, state_->watches, context, index, found);
    StoreMatch(found, match);
    return found != nullptr ? 1 : 0;
}
