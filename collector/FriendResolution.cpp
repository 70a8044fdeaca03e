// SPDX-License-Identifier: MIT
// Links friends and associated contexts, read as names, to the declared contexts of these names.
#include "collector/VELDyadCtxCollector.h"

#include "collector/detail/CollectorAccess.h"
#include "collector/detail/CollectorInternals.h"
#include "collector/detail/LookAhead.h"
#include "context/detail/ContextAccess.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/TraceLine.h"

#include <utility>

namespace {

using dyadctx::CollectorAccess;
using dyadctx::CollectorIndex;
using dyadctx::CollectorInternals;
using dyadctx::ContextAccess;
using dyadctx::Fault;
using dyadctx::FaultReporter;
using dyadctx::LinkExtent;

constexpr const char* LinkMethod = "VELDyadCtxCollector::SetFriendsAndAssociated";

class LinkRun {
public:
    LinkRun(VELDyadCtxCollector& collector, LinkExtent extent, FaultReporter& reporter)
        : declared_(CollectorAccess::Declared(collector)),
          index_(CollectorInternals::State(collector).index),
          watches_(CollectorAccess::Watches(collector)), reporter_(reporter),
          goesOn_(extent == LinkExtent::Everything) {}

    // Whether everything is linked. A friend that cannot be linked ends the collector's walk only
    // after the next context whose associated context could be, or at an empty position.
    bool Link(int count) {
        for (int pos = 1; pos <= count; ++pos) {
            dyadctx::LookAhead(
                declared_, pos,
                [this](const VELDyadContext& one) { index_.Prefetch(one.GetName()); },
                [this](const VELDyadContext& one) {
                    index_.PrefetchContext(declared_, one.GetName());
                });
            VELDyadContext* context = declared_[pos];
            const AssociatedLink link =
                context == nullptr ? AssociatedLink::Made : LinkOne(*context, pos);
            associatedLinked_ = associatedLinked_ && link != AssociatedLink::Failed;
            if (!goesOn_ && MustEnd(link))
                return false;
        }
        return friendsLinked_ && associatedLinked_;
    }

private:
    enum class AssociatedLink { NothingToDo, Made, Failed };

    bool MustEnd(AssociatedLink link) const {
        return link == AssociatedLink::Failed || (link == AssociatedLink::Made && !friendsLinked_);
    }

    AssociatedLink LinkOne(VELDyadContext& context, int pos) {
        friendsLinked_ = LinkFriends(context, pos) && friendsLinked_;
        return LinkAssociated(context, pos);
    }

    // The collector's walk stops at the first friend that cannot be linked; later ones stay as they
    // are.
    bool LinkFriends(VELDyadContext& context, int pos) {
        ContextAccess::TraceFriends(context);
        // Linking replaces the friend just visited, so the list can be walked in place.
        const dyadctx::FriendWalk friends(watches_, ContextAccess::Friends(context));
        bool linked = true;
        for (int slot = 1; (linked || goesOn_) && slot <= friends.Size(); ++slot) {
            const VELDyadContext* placeholder = friends[slot];
            if (HasName(placeholder) && !LinkFriend(context, pos, *placeholder, slot))
                linked = false;
        }
        return linked;
    }

    bool LinkFriend(VELDyadContext& context, int pos, const VELDyadContext& placeholder, int slot) {
        VELDyadContext* match = Resolve(placeholder);
        if (match == nullptr) {
            ReportUnknown(dyadctx::key::CtxFriendNoMatchingCtx, context, placeholder);
            TRACE_ERROR("VELDyadCtxCollector::SetFriendsAndAssociated : Context number=%d, friend "
                        "number=%d Context not defined",
                        pos, slot);
            return false;
        }
        if (context.SetFriend(slot, match) < 0) {
            ReportInternalError(context, match);
            TRACE_ERROR("VELDyadCtxCollector::SetFriendsAndAssociated : Context number=%d, friend "
                        "number=%d can't be set",
                        pos, slot);
            return false;
        }
        return true;
    }

    AssociatedLink LinkAssociated(VELDyadContext& context, int pos) {
        VELDyadContext* placeholder = nullptr;
        context.GetAssociatedContext(placeholder);
        if (!HasName(placeholder))
            return AssociatedLink::NothingToDo;
        VELDyadContext* match = Resolve(*placeholder);
        if (match == nullptr) {
            const VELUnicodeString name = placeholder->GetName();
            ReportUnknown(dyadctx::key::CtxAssocNoMatchingCtx, context, *placeholder);
            TRACE_ERROR("VELDyadCtxCollector::SetFriendsAndAssociated : Context number=%d, "
                        "associated =%s Context not defined",
                        pos, name.ConvertToChar());
            return AssociatedLink::Failed;
        }
        if (context.SetAssociated(match) < 0) {
            const VELUnicodeString name = match->GetName();
            ReportInternalError(context, match);
            TRACE_ERROR("VELDyadCtxCollector::SetFriendsAndAssociated : Context number=%d, assoc "
                        "context=%s can't be set",
                        pos, name.ConvertToChar());
            return AssociatedLink::Failed;
        }
        return AssociatedLink::Made;
    }

    static bool HasName(const VELDyadContext* context) {
        return context != nullptr && !context->GetName().IsEmpty();
    }

    VELDyadContext* Resolve(const VELDyadContext& placeholder) {
        const int pos = index_.PositionOfName(declared_, placeholder.GetName());
        return pos == 0 ? nullptr : declared_[pos];
    }

    void ReportUnknown(const char* key, const VELDyadContext& context,
                       const VELDyadContext& placeholder) {
        Fault fault;
        fault.method = LinkMethod;
        fault.key = key;
        fault.parameters = {context.GetName(), placeholder.GetName()};
        fault.parameterCount = 2;
        fault.context = &context;
        fault.other = &placeholder;
        reporter_.Report(fault);
    }

    void ReportInternalError(const VELDyadContext& context, const VELDyadContext* other) {
        Fault fault;
        fault.method = LinkMethod;
        fault.key = dyadctx::key::InternalError;
        fault.context = &context;
        fault.other = other;
        reporter_.Report(fault);
    }

    const VELListPtrVELDyadContext& declared_;
    CollectorIndex& index_;
    dyadctx::ContextWatches& watches_;
    FaultReporter& reporter_;
    bool goesOn_;
    bool friendsLinked_ = true;
    bool associatedLinked_ = true;
};

} // namespace

bool dyadctx::LinkFriendsAndAssociated(VELDyadCtxCollector& collector, int count, LinkExtent extent,
                                       FaultReporter& reporter) {
    return LinkRun(collector, extent, reporter).Link(count);
}

VELResult VELDyadCtxCollector::SetFriendsAndAssociated(VELUnicodeString& message) {
    const int count = GetNbCtxs();
    if (count == 0) {
        TRACE_LOG("VELDyadCtxCollector:SetFriendsAndAssociated : no Context defined");
        return S_OK;
    }
    TRACE_ENTER("VELDyadCtxCollector:SetFriendsAndAssociated");
    dyadctx::MessageReporter reporter(message);
    const bool linked =
        dyadctx::LinkFriendsAndAssociated(*this, count, LinkExtent::AsCollector, reporter);
    TRACE_LEAVE("VELDyadCtxCollector:SetFriendsAndAssociated");
    return linked ? S_OK : E_FAIL;
}
