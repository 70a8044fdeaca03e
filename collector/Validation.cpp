// SPDX-License-Identifier: MIT
// The checks of the collector: how rules are applied, to which contexts, and the searches shared
// with the reader. The rules themselves are in collector/detail/ContextRules.cpp.
#include "collector/VELDyadCtxCollector.h"

#include "collector/detail/CheckRun.h"
#include "collector/detail/CollectorAccess.h"
#include "collector/detail/CollectorInternals.h"
#include "collector/detail/LookAhead.h"
#include "context/detail/ContextAccess.h"
#include "context/detail/ParameterTypes.h"
#include "platform/detail/HostCode.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/TraceLine.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <optional>
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
