// SPDX-License-Identifier: MIT
#include "collector/PlainWalk.h"

namespace dyadctx::test {

void PlainWalk::Say(const std::string& message) {
    message_ += message + "\n";
    valid_ = false;
}

// ---- Linking ----------------------------------------------------------------------------------

int PlainWalk::FirstNamed(const std::string& name) const {
    for (std::size_t i = 0; i < contexts_.size(); ++i) {
        if (contexts_[i] && contexts_[i]->name == name)
            return static_cast<int>(i) + 1;
    }
    return 0;
}

bool PlainWalk::LinkFriends(PlainContext& context) {
    for (PlainLink& link : context.friends) {
        if (link.name.empty())
            continue;
        link.target = FirstNamed(link.name);
        if (link.target == 0) {
            Say("Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx(" + context.name + "|" +
                link.name + ")");
            return false;
        }
    }
    return true;
}

bool PlainWalk::Link() {
    bool status = true;
    for (std::optional<PlainContext>& place : contexts_) {
        if (place) {
            if (!LinkFriends(*place))
                status = false;
            if (!place->associated || place->associated->name.empty())
                continue;
            place->associated->target = FirstNamed(place->associated->name);
            if (place->associated->target == 0) {
                Say("Ctx.SetFriendsAndAssociated..CtxAssocNoMatchingCtx(" + place->name + "|" +
                    place->associated->name + ")");
                return false;
            }
        }
        if (!status)
            return false;
    }
    return status;
}

// ---- Checking ---------------------------------------------------------------------------------

bool PlainWalk::Check() {
    if (contexts_.empty()) {
        Say("Ctx.Check.NoCtxDefined()");
        return false;
    }
    for (int pos = 1; pos <= static_cast<int>(contexts_.size()); ++pos) {
        if (!contexts_[static_cast<std::size_t>(pos) - 1]) {
            Say("Ctx.Collector.InternalError()");
            return false;
        }
        if (!CheckOne(pos))
            return false;
    }
    return true;
}

bool PlainWalk::CheckOne(int pos) {
    const PlainContext& context = *contexts_[static_cast<std::size_t>(pos) - 1];
    valid_ = true;
    CheckOwn(context);
    CheckDefault(context);
    CheckDuplicates(context, pos);
    CheckFriends(context);
    if (environment_)
        CheckAssociated(context);
    return valid_;
}

void PlainWalk::CheckOwn(const PlainContext& context) {
    if (context.name.empty())
        Say("Ctx.Check.CtxEmptyName()");
    if (context.name.size() > 125)
        Say("Ctx.Check.CtxNameTooLong(" + context.name + ")");
    if (context.name.find('!') != std::string::npos)
        Say("Ctx.Check.CtxNameWithInvalidChar()");
    if (context.parameter.empty() && context.name != "DYADIC")
        Say("Ctx.Check.CtxEmptyParam(" + context.name + ")");
    const bool known = context.type == "Path" || context.type == "Default" ||
                       (environment_ && (context.type == "File" || context.type == "Database"));
    if (!known)
        Say("Ctx.Check.CtxUnknownParamType(" + context.name + "|" + context.type + ")");
}

void PlainWalk::CheckDefault(const PlainContext& context) {
    if (context.name == "DYADIC" && context.type != "Default")
        Say("Ctx.Check.CtxDefaultInvalidParamType(" + context.name + "|" + context.type +
            "|Default)");
    if (context.name != "DYADIC" && context.type == "Default")
        Say("Ctx.Check.CtxDefaultInvalidName(" + context.name + "|" + context.type + "|DYADIC)");
    if (context.name == "DYADIC" && !context.parameter.empty())
        Say("Ctx.Check.CtxDefaultInvalidParam(" + context.name + "|" + context.parameter + ")");
}

void PlainWalk::CheckDuplicates(const PlainContext& context, int pos) {
    const auto after = static_cast<std::size_t>(pos);
    for (std::size_t i = after; i < contexts_.size(); ++i) {
        if (contexts_[i] && contexts_[i]->name == context.name) {
            Say("Ctx.Check.CtxAlreadyDefined(" + context.name + ")");
            break;
        }
    }
    if (context.type != "Database" || !context.provider || context.provider->connector == "STEP")
        return;
    for (std::size_t i = after; i < contexts_.size(); ++i) {
        if (!contexts_[i] || !contexts_[i]->provider)
            continue;
        const PlainProvider& other = *contexts_[i]->provider;
        if (other.connector == context.provider->connector &&
            other.server == context.provider->server) {
            Say("Ctx.Check.CtxDatabaseAlreadyDefined(" + context.name + "|" + contexts_[i]->name +
                ")");
            return;
        }
    }
}

const PlainContext* PlainWalk::Declared(const PlainLink& link) const {
    return link.target == 0 ? nullptr : &*contexts_[static_cast<std::size_t>(link.target) - 1];
}

void PlainWalk::CheckFriends(const PlainContext& context) {
    for (const PlainLink& link : context.friends) {
        if (link.name.empty())
            Say("Ctx.Parse.CtxFriendNoName(" + context.name + ")");
        if (link.name == context.name)
            Say("Ctx.Check.CtxAndFriendWithSameName(" + context.name + "|" + link.name + ")");
        const PlainContext* declared = Declared(link);
        if (declared == nullptr)
            continue;
        for (const PlainLink& further : declared->friends) {
            if (!further.name.empty() && further.name == context.name)
                Say("Ctx.Check.CtxAndFriendWithCyclicity(" + context.name + "|" + link.name + ")");
        }
    }
}

void PlainWalk::CheckAssociated(const PlainContext& context) {
    if (!context.associated)
        return;
    const PlainLink& link = *context.associated;
    if (link.name.empty())
        Say("Ctx.Parse.CtxAssocNoName(" + context.name + ")");
    if (link.name == context.name)
        Say("Ctx.Check.CtxAndAssocWithSameName(" + context.name + "|" + link.name + ")");
    const PlainContext* declared = Declared(link);
    if (declared != nullptr && declared->associated && !declared->associated->name.empty() &&
        declared->associated->name == context.name)
        Say("Ctx.Check.CtxAndAssocWithCyclicity(" + context.name + "|" + link.name + ")");
}

} // namespace dyadctx::test
