// SPDX-License-Identifier: MIT
#include "xml/detail/ContextReader.h"

#include "collector/detail/CollectorAccess.h"
#include "context/detail/ParameterTypes.h"
#include "platform/detail/DomAccess.h"
#include "platform/detail/HostCode.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/TraceLine.h"
#include "xml/detail/FormatNames.h"

#include <utility>

namespace dyadctx {

namespace {

constexpr const char* Method = "VELDyadCtxXml::ParseXMLNodes";

} // namespace

VELResult ContextReader::ParseXMLNodes(const VELIDOMElement& root) {
    VELResult result = Begin(root, Names().data, ContextLevels());
    // Contexts are mostly separated by line breaks.
    if (!passes_.empty())
        CollectorAccess::Reserve(state_.collector, (passes_.back().nodeCount + 1) / 2);
    while (!passes_.empty())
        result = Advance(result);
    return result;
}

// Pushes a new pass, unless it ends at once.
VELResult ContextReader::Begin(const VELIDOMElement& parent, const VELUnicodeString& tag,
                               ContextLevels levels) {
    TRACE_ENTER("VELDyadCtxXml:ParseXMLNodes <%s>", tag.ConvertToChar());
    Pass pass;
    pass.tag = &tag;
    pass.levels = levels;
    const VELResult result =
        GetNodeListByTagName(parent, tag, levels, pass.nodes, pass.nodeCount, state_);
    if (pass.nodeCount == 0)
        return EndWithoutNodes(parent, tag, levels);
    if (result < 0 || pass.nodes.IsNull()) {
        TRACE_ERROR("VELDyadCtxXml:ParseXMLNodes <%s>", tag.ConvertToChar());
        return E_FAIL;
    }
    passes_.push_back(std::move(pass));
    return S_OK;
}

VELResult ContextReader::EndWithoutNodes(const VELIDOMElement& parent, const VELUnicodeString& tag,
                                         ContextLevels levels) {
    if (!IsDbEnvironmentOn()) {
        if (levels.friendLevel == 0) {
            LogNotFound(parent, tag);
            TRACE_ERROR("VELDyadCtxXml:ParseXMLNodes <%s> not found - Case02", tag.ConvertToChar());
            return E_FAIL;
        }
        TRACE_LEAVE("VELDyadCtxXml:ParseXMLNodes");
        return S_OK;
    }
    if (levels.friendLevel == 0 && levels.associatedLevel == 0) {
        LogNotFound(parent, tag);
        TRACE_ERROR("VELDyadCtxXml:ParseXMLNodes <%s> not found - Case01", tag.ConvertToChar());
        return E_FAIL;
    }
    TRACE_LEAVE("VELDyadCtxXml:ParseXMLNodes - no Friend context");
    return S_OK;
}

void ContextReader::LogNotFound(const VELIDOMElement& parent, const VELUnicodeString& tag) {
    LogReaderError(state_, Method, key::TagNotFound, parent, &tag, 1);
}

// Continues the innermost pass with the result of what it waited for.
VELResult ContextReader::Advance(VELResult result) {
    Pass& pass = passes_.back();
    if (result < 0)
        return FailAfter(pass.step);
    switch (pass.step) {
    case Step::NextNode:
        return pass.nodeIndex < pass.nodeCount ? ReadNode() : End();
    case Step::AssociatedOfContext:
        return BeginFriends();
    case Step::FriendsOfContext:
        return ReadScenarios();
    case Step::AssociatedContainer:
    case Step::FriendsContainer:
        break;
    }
    return GoToNextNode();
}

VELResult ContextReader::ReadNode() {
    Pass& pass = passes_.back();
    if (pass.nodes.Item(pass.nodeIndex, node_) < 0 || node_.IsNull())
        return Reject(key::InternalError, node_);
    std::uint32_t tag = 0;
    if (!ReadTag(node_, tag))
        return GoToNextNode();
    pass.element = VELIDOMElement(node_);
    // A declared context is read once; only an observer comes back to it.
    if (passes_.size() == 1 && state_.observer == nullptr)
        DomAccess::ForgetBefore(pass.element);
    const FormatIds& ids = *state_.ids;
    if (tag == ids.context)
        return ReadContext();
    if (tag == ids.associated)
        return ReadAssociatedContainer();
    if (tag == ids.friends)
        return ReadFriendsContainer();
    return GoToNextNode();
}

VELResult ContextReader::ReadContext() {
    Pass& pass = passes_.back();
    const bool associated = *pass.tag == Names().associated && IsDbEnvironmentOn();
    if (entry_.AddContext(pass.element, pass.levels, associated) < 0) {
        TRACE_ERROR("VELDyadCtxXml:ParseXMLNodes: Add Context problem, node index=%d",
                    pass.nodeIndex);
        if (!state_.ContinuesAfterFault() || entry_.IsOverLimit())
            return Abandon();
    }
    pass.step = Step::AssociatedOfContext;
    // A walk that reads nothing still shows in the trace and asks for the DB context environment.
    pass.walks = HostCodeCanRun() ? WalksBelow() : FindWalksBelow(pass.element, *state_.ids);
    if (!pass.walks.associated || !IsDbEnvironmentOn())
        return S_OK;
    return Begin(pass.element, Names().associated, {0, pass.levels.associatedLevel + 1});
}

VELResult ContextReader::BeginFriends() {
    Pass& pass = passes_.back();
    pass.step = Step::FriendsOfContext;
    if (!pass.walks.friends)
        return S_OK;
    return Begin(pass.element, Names().friends, {pass.levels.friendLevel + 1, 0});
}

VELResult ContextReader::ReadScenarios() {
    const Pass& pass = passes_.back();
    if (!pass.walks.scenarios)
        return GoToNextNode();
    const VELUnicodeString name = AttributeOrEmpty(pass.element, state_.ids->name);
    if (scenarios_.ParseXMLExchangeScenarioNodes(pass.element, name) >= 0)
        return GoToNextNode();
    TRACE_ERROR("VELDyadCtxXml:ParseXMLNodes : scenario parsing problem, node index=%d",
                pass.nodeIndex);
    return Abandon();
}

VELResult ContextReader::ReadAssociatedContainer() {
    Pass& pass = passes_.back();
    if (*pass.tag == Names().friends || !IsDbEnvironmentOn())
        return GoToNextNode();
    const int level = pass.levels.associatedLevel;
    if (level == 1) {
        pass.step = Step::AssociatedContainer;
        return Begin(pass.element, Names().associated, {0, 1});
    }
    if (level > 1)
        return Reject(key::CtxAssociatedWithAssociated, pass.element);
    TRACE_WARNING("VELDyadCtxXml:ParseXMLNodes : Non supported RootTagName <%s> for CtxAssociated",
                  pass.tag->ConvertToChar());
    LogReaderError(state_, Method, key::NoCtxDefinedForAssociated, pass.element);
    return state_.ContinuesAfterFault() ? GoToNextNode() : Abandon();
}

VELResult ContextReader::ReadFriendsContainer() {
    Pass& pass = passes_.back();
    if (*pass.tag == Names().associated && IsDbEnvironmentOn())
        return GoToNextNode();
    const int level = pass.levels.friendLevel;
    if (level == 1) {
        pass.step = Step::FriendsContainer;
        return Begin(pass.element, Names().friends, {1, 0});
    }
    return Reject(level > 1 ? key::CtxFriendWithFriend : key::NoCtxDefinedForFriend, pass.element);
}

VELResult ContextReader::GoToNextNode() {
    Pass& pass = passes_.back();
    pass.step = Step::NextNode;
    ++pass.nodeIndex;
    return S_OK;
}

VELResult ContextReader::End() {
    TRACE_LEAVE("VELDyadCtxXml:ParseXMLNodes <%s>", passes_.back().tag->ConvertToChar());
    passes_.pop_back();
    return S_OK;
}

VELResult ContextReader::FailAfter(Step step) {
    const int index = passes_.back().nodeIndex;
    switch (step) {
    case Step::AssociatedOfContext:
        TRACE_ERROR(
            "VELDyadCtxXml:ParseXMLNodes : Associated context parsing problem, node index=%d",
            index);
        break;
    case Step::AssociatedContainer:
        TRACE_WARNING(
            "VELDyadCtxXml:ParseXMLNodes : associated context parsing problem, node index=%d",
            index);
        break;
    case Step::FriendsOfContext:
    case Step::FriendsContainer:
        TRACE_ERROR("VELDyadCtxXml:ParseXMLNodes : friends parsing problem, node index=%d", index);
        break;
    case Step::NextNode:
        break;
    }
    return Abandon();
}

VELResult ContextReader::Reject(const char* key, const VELIDOMNode& where) {
    LogReaderError(state_, Method, key, where);
    TRACE_ERROR("VELDyadCtxXml:ParseXMLNodes <%s>", passes_.back().tag->ConvertToChar());
    return state_.ContinuesAfterFault() ? GoToNextNode() : Abandon();
}

VELResult ContextReader::Abandon() {
    passes_.pop_back();
    return E_FAIL;
}

} // namespace dyadctx
