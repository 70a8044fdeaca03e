// Links friends and associated contexts, which the reader enters by name, to the declared contexts
// of these names.
#include "collector/VELDyadCtxCollector.h"

#include "collector/detail/CollectorIndex.h"
#include "collector/detail/Finding.h"
#include "context/detail/ContextAccess.h"
#include "trace/detail/MessageKeys.h"
#include "trace/detail/TraceLine.h"

#include <utility>

namespace {

using dyadctx::CollectorIndex;
using dyadctx::ContextAccess;
using dyadctx::Finding;
using dyadctx::FindingReporter;

constexpr const char* LinkMethod = "VELDyadCtxCollector::SetFriendsAndAssociated";

class LinkRun {
public:
    LinkRun(const VELListPtrVELDyadContext& declared, CollectorIndex& index,
            FindingReporter& reporter)
        : declared_(declared), index_(index), reporter_(reporter) {}

    // Whether all is linked. A friend that cannot be linked ends the walk only behind the next
    // context whose associated context could be, or at an empty position.
    bool Link(int count) {
        for (int pos = 1; pos <= count; ++pos) {
            VELDyadContext* context = declared_[pos];
            const AssociatedLink link =
                context == nullptr ? AssociatedLink::Made : LinkOne(*context, pos);
            if (link == AssociatedLink::Failed)
                return false;
            if (link == AssociatedLink::Made && !friendsLinked_)
                return false;
        }
        return friendsLinked_;
    }

private:
    enum class AssociatedLink { NothingToDo, Made, Failed };

    AssociatedLink LinkOne(VELDyadContext& context, int pos) {
        friendsLinked_ = LinkFriends(context, pos) && friendsLinked_;
        return LinkAssociated(context, pos);
    }

    // Stops at the first friend that cannot be linked; the ones behind it stay as they are.
    bool LinkFriends(VELDyadContext& context, int pos) {
        // Linking replaces the friend just visited, so the list can be walked in place.
        const VELListPtrVELDyadContext& friends = ContextAccess::VisitFriends(context);
        for (int slot = 1; slot <= friends.Size(); ++slot) {
            const VELDyadContext* placeholder = friends[slot];
            if (HasName(placeholder) && !LinkFriend(context, pos, *placeholder, slot))
                return false;
        }
        return true;
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
            ReportUnknown(dyadctx::key::CtxAssocNoMatchingCtx, context, *placeholder);
            TRACE_ERROR("VELDyadCtxCollector::SetFriendsAndAssociated : Context number=%d, "
                        "associated =%s Context not defined",
                        pos, placeholder->GetName().ConvertToChar());
            return AssociatedLink::Failed;
        }
        if (context.SetAssociated(match) < 0) {
            ReportInternalError(context, match);
            TRACE_ERROR("VELDyadCtxCollector::SetFriendsAndAssociated : Context number=%d, assoc "
                        "context=%s can't be set",
                        pos, match->GetName().ConvertToChar());
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
        Finding finding;
        finding.method = LinkMethod;
        finding.key = key;
        finding.parameters = {context.GetName(), placeholder.GetName()};
        finding.parameterCount = 2;
        finding.context = &context;
        finding.other = &placeholder;
        reporter_.Report(finding);
    }

    void ReportInternalError(const VELDyadContext& context, const VELDyadContext* other) {
        Finding finding;
        finding.method = LinkMethod;
        finding.key = dyadctx::key::InternalError;
        finding.context = &context;
        finding.other = other;
        reporter_.Report(finding);
    }

    const VELListPtrVELDyadContext& declared_;
    CollectorIndex& index_;
    FindingReporter& reporter_;
    bool friendsLinked_ = true;
};

} // namespace

VELResult VELDyadCtxCollector::SetFriendsAndAssociated(VELUnicodeString& message) {
    const int count = GetNbCtxs();
    if (count == 0) {
        TRACE_LOG("VELDyadCtxCollector:SetFriendsAndAssociated : no Context defined");
        return S_OK;
    }
    TRACE_ENTER("VELDyadCtxCollector:SetFriendsAndAssociated");
    dyadctx::MessageReporter reporter(message);
    const bool linked = LinkRun(_MainContexts, *index_, reporter).Link(count);
    TRACE_LEAVE("VELDyadCtxCollector:SetFriendsAndAssociated");
    return linked ? S_OK : E_FAIL;
}
