// SPDX-License-Identifier: MIT
// The rules a declared context must keep, as tables: what breaks a rule, its message and what the
// message names. CheckRun applies them; another kind of report needs only another reporter.
#pragma once

#include "collector/detail/Fault.h"
#include "context/VELDyadContext.h"
#include "platform/VELUnicodeString.h"

#include <array>
#include <span>

namespace dyadctx {

class RuleLookups;

// What a rule examines.
struct RuleSubject {
    const VELUnicodeString& name;
    const VELUnicodeString& parameter;
    const VELUnicodeString& parameterType;
    // Null only for the rules on the default context, which use only the three texts.
    VELDyadContext* context = nullptr;
    // Its position among the declared contexts; 0 when it is not registered.
    int index = 0;
    // The friend or associated context being examined; a rule that searches sets it to what it
    // found. Null, which breaks no rule, once that context is deleted.
    VELDyadContext* other = nullptr;
    RuleLookups* lookups = nullptr;
    // The position of `other` among the friends; 0 while no friend is examined.
    int friendPosition = 0;
};

// What a message names.
enum class RuleText { None, Name, Parameter, ParameterType, OtherName, DefaultType, DefaultName };

struct ContextRule {
    const char* key;
    // How many times the rule is broken, each with its own message; 0 when it is kept.
    int (*breaches)(RuleSubject& subject);
    std::array<RuleText, Fault::MaxParameters> parameters;
    // Writes a trace line after the message; may be null.
    void (*trace)(const RuleSubject& subject);
};

// Rules reported under one method name. All are applied, whether or not an earlier one is broken.
struct RuleGroup {
    const char* method;
    std::span<const ContextRule> rules;
};

inline constexpr const char* CheckMethod = "VELDyadCtxCollector::Check";

// Rules on the context alone.
RuleGroup OwnRules() noexcept;
// Rules on the name and type reserved for the default context.
RuleGroup DefaultContextRules() noexcept;
// Later contexts that repeat this one.
RuleGroup DuplicateRules() noexcept;
// Applied to each friend.
RuleGroup FriendRules() noexcept;
// Applied to the associated context.
RuleGroup AssociatedRules() noexcept;

// What `rule` reports of `subject`.
Fault MakeFault(const char* method, const ContextRule& rule, const RuleSubject& subject);

} // namespace dyadctx
