// SPDX-License-Identifier: MIT
#include "collector/detail/ContextRules.h"

#include "collector/detail/CheckRun.h"
#include "context/detail/ContextAccess.h"
#include "context/detail/ParameterTypes.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/TraceLine.h"

namespace dyadctx {

namespace {

constexpr int LongestName = 125;
constexpr const char* DefaultContextMethod = "VELDyadCtxCollector::CheckDefaultContext";

bool IsDefaultName(const RuleSubject& subject) {
    return subject.name.AsView() == DefaultContextName;
}

bool IsDefaultType(const RuleSubject& subject) {
    return subject.parameterType.AsView() == DefaultType;
}

int HasNoName(RuleSubject& subject) {
    return subject.name.IsEmpty();
}

void TraceNoName(const RuleSubject&) {
    TRACE_WARNING("VELDyadCtxCollector:CheckContext Null context name");
}

int HasLongName(RuleSubject& subject) {
    // There are never more characters than bytes, so most names need not be counted.
    return subject.name.AsView().size() > LongestName &&
           subject.name.GetLengthInChar() > LongestName;
}

void TraceLongName(const RuleSubject& subject) {
    TRACE_WARNING("VELDyadCtxCollector:CheckContext Context name too lng (%d > 125 car)",
                  subject.name.GetLengthInChar());
}

int HasForbiddenCharacter(RuleSubject& subject) {
    return subject.name.AsView().find('!') != std::string_view::npos;
}

void TraceForbiddenCharacter(const RuleSubject&) {
    TRACE_WARNING("VELDyadCtxCollector:CheckContext Name with '!' character");
}

int LacksParameter(RuleSubject& subject) {
    return subject.parameter.IsEmpty() && !IsDefaultName(subject);
}

int HasUnknownType(RuleSubject& subject) {
    return !subject.lookups->IsKnownType(subject.parameterType);
}

int IsDefaultOfWrongType(RuleSubject& subject) {
    return IsDefaultName(subject) && !IsDefaultType(subject);
}

int HasDefaultTypeUnderWrongName(RuleSubject& subject) {
    return !IsDefaultName(subject) && IsDefaultType(subject);
}

int IsDefaultWithParameter(RuleSubject& subject) {
    return IsDefaultName(subject) && !subject.parameter.IsEmpty();
}

int HasLaterNamesake(RuleSubject& subject) {
    subject.other = subject.lookups->LaterNamesake(subject.name, subject.index);
    return subject.other != nullptr;
}

int HasLaterTwinDatabase(RuleSubject& subject) {
    subject.lookups->FindLaterOnSameDatabase(subject.context, subject.index, subject.other);
    return subject.other != nullptr;
}

int OtherHasNoName(RuleSubject& subject) {
    return subject.other != nullptr && subject.other->GetName().IsEmpty();
}

int OtherHasSameName(RuleSubject& subject) {
    return subject.other != nullptr && subject.other->GetName() == subject.name;
}

int IsFriendOfFriend(RuleSubject& subject) {
    return subject.lookups->CountFriendsNamed(subject.other, subject.name);
}

int IsAssociatedOfAssociated(RuleSubject& subject) {
    if (subject.other != nullptr)
        ContextAccess::TraceAssociated(*subject.other);
    const VELDyadContext* next =
        subject.other == nullptr ? nullptr : ContextAccess::Associated(*subject.other);
    return next != nullptr && !next->GetName().IsEmpty() && next->GetName() == subject.name;
}

using enum RuleText;

constexpr std::array OwnTable{
    ContextRule{key::CtxEmptyName, HasNoName, {}, TraceNoName},
    ContextRule{key::CtxNameTooLong, HasLongName, {Name}, TraceLongName},
    ContextRule{key::CtxNameWithInvalidChar, HasForbiddenCharacter, {}, TraceForbiddenCharacter},
    ContextRule{key::CtxEmptyParam, LacksParameter, {Name}, nullptr},
    ContextRule{key::CtxUnknownParamType, HasUnknownType, {Name, ParameterType}, nullptr},
};

constexpr std::array DefaultContextTable{
    ContextRule{key::CtxDefaultInvalidParamType,
                IsDefaultOfWrongType,
                {Name, ParameterType, RuleText::DefaultType},
                nullptr},
    ContextRule{key::CtxDefaultInvalidName,
                HasDefaultTypeUnderWrongName,
                {Name, ParameterType, DefaultName},
                nullptr},
    ContextRule{key::CtxDefaultInvalidParam, IsDefaultWithParameter, {Name, Parameter}, nullptr},
};

constexpr std::array DuplicateTable{
    ContextRule{key::CtxAlreadyDefined, HasLaterNamesake, {Name}, nullptr},
    ContextRule{key::CtxDatabaseAlreadyDefined, HasLaterTwinDatabase, {Name, OtherName}, nullptr},
};

constexpr std::array FriendTable{
    ContextRule{key::CtxFriendNoName, OtherHasNoName, {Name}, nullptr},
    ContextRule{key::CtxAndFriendWithSameName, OtherHasSameName, {Name, OtherName}, nullptr},
    ContextRule{key::CtxAndFriendWithCyclicity, IsFriendOfFriend, {Name, OtherName}, nullptr},
};

constexpr std::array AssociatedTable{
    ContextRule{key::CtxAssocNoName, OtherHasNoName, {Name}, nullptr},
    ContextRule{key::CtxAndAssocWithSameName, OtherHasSameName, {Name, OtherName}, nullptr},
    ContextRule{
        key::CtxAndAssocWithCyclicity, IsAssociatedOfAssociated, {Name, OtherName}, nullptr},
};

VELUnicodeString TextOf(RuleText what, const RuleSubject& subject) {
    switch (what) {
    case Name:
        return subject.name;
    case Parameter:
        return subject.parameter;
    case ParameterType:
        return subject.parameterType;
    case OtherName:
        return subject.other->GetName();
    case RuleText::DefaultType:
        return dyadctx::DefaultType;
    case DefaultName:
        return DefaultContextName;
    case None:
        break;
    }
    return {};
}

} // namespace

RuleGroup OwnRules() noexcept {
    return {CheckMethod, OwnTable};
}

RuleGroup DefaultContextRules() noexcept {
    return {DefaultContextMethod, DefaultContextTable};
}

RuleGroup DuplicateRules() noexcept {
    return {CheckMethod, DuplicateTable};
}

RuleGroup FriendRules() noexcept {
    return {CheckMethod, FriendTable};
}

RuleGroup AssociatedRules() noexcept {
    return {CheckMethod, AssociatedTable};
}

Fault MakeFault(const char* method, const ContextRule& rule, const RuleSubject& subject) {
    Fault fault;
    fault.method = method;
    fault.key = rule.key;
    fault.context = subject.context;
    fault.other = subject.other;
    fault.friendPosition = subject.friendPosition;
    for (const RuleText what : rule.parameters) {
        if (what != None)
            fault.parameters[static_cast<std::size_t>(fault.parameterCount++)] =
                TextOf(what, subject);
    }
    return fault;
}

} // namespace dyadctx
