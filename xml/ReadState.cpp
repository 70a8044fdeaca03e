// SPDX-License-Identifier: MIT
#include "xml/detail/ReadState.h"

#include "context/detail/ParameterTypes.h"
#include "platform/detail/DomAccess.h"
#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/TraceLine.h"
#include "trace/detail/UserMessage.h"

#include <algorithm>
#include <string_view>

namespace dyadctx {

namespace {

void Log(const char* method, const char* key, VELUnicodeString& message,
         const VELUnicodeString* parameters, int count) {
    AppendCatalogText(message, key, parameters, count, 1);
    TRACE_WARNING("VELDyadCtxXml:LogError Method <%s> Error <%s>", method, message.ConvertToChar());
}

Fault MakeFault(const char* method, const char* key, const VELUnicodeString* parameters,
                int count) {
    Fault fault;
    fault.method = method;
    fault.key = key;
    fault.parameterCount = count;
    std::copy_n(parameters, count, fault.parameters.begin());
    return fault;
}

} // namespace

void LogReaderError(const ReadState& state, const char* method, const char* key,
                    const VELIDOMNode& where, const VELUnicodeString* parameters, int count,
                    LogText text) {
    if (state.observer != nullptr) {
        state.observer->OnFault(MakeFault(method, key, parameters, count), where);
    } else if (text == LogText::Alone) {
        VELUnicodeString alone;
        Log(method, key, alone, parameters, count);
        state.message.Append(alone);
    } else {
        Log(method, key, state.message, parameters, count);
    }
}

bool ReadAttribute(const VELIDOMElement& element, std::uint32_t name, VELUnicodeString& value) {
    const DomAttribute* attribute = DomAccess::FindAttribute(element, name);
    if (attribute == nullptr)
        return false;
    value = VELUnicodeString(attribute->Value());
    return true;
}

bool ReadAttribute(const VELIDOMElement& element, const VELUnicodeString& name,
                   VELUnicodeString& value) {
    return ReadAttribute(element, DomAccess::NameId(element, name.AsView()), value);
}

VELUnicodeString AttributeOrEmpty(const VELIDOMElement& element, std::uint32_t name) {
    const DomAttribute* attribute = DomAccess::FindAttribute(element, name);
    return VELUnicodeString(attribute != nullptr ? attribute->Value() : std::string_view());
}

bool ReadTag(const VELIDOMNode& node, std::uint32_t& tag) {
    return DomAccess::GetTagId(node, tag);
}

// ---- The nodes of a pass ------------------------------------------------------------------------

namespace {

constexpr const char* Method = "VELDyadCtxXml::GetNodeListByTagName";

bool IsOutermost(ContextLevels levels) {
    return levels.friendLevel == 0 && levels.associatedLevel == 0;
}

bool IsLookedUpByName(const VELUnicodeString& tag, ContextLevels levels) {
    if (!IsDbEnvironmentOn())
        return levels.friendLevel == 0;
    return IsOutermost(levels) || (tag == Names().friends && levels.friendLevel == 0) ||
           (tag == Names().associated && levels.associatedLevel == 0);
}

// Null unless exactly one descendant has the name.
VELIDOMNode OnlyDescendant(const VELIDOMElement& parent, const VELUnicodeString& tag,
                           const ReadState& state) {
    VELIDOMNodeList found;
    VELIDOMNode container;
    if (parent.GetElementsByTagName(tag, found, 2) < 0) {
        TRACE_WARNING("VELDyadCtxXml:GetNodeListByTagName - ispRootElement fails");
        LogReaderError(state, Method, key::InternalError, parent);
        return container;
    }
    if (found.GetLength() == 1 && found.Item(0, container) < 0) {
        TRACE_WARNING("VELDyadCtxXml:GetNodeListByTagName - Item fails");
        return {};
    }
    return container;
}

// Whether one of the nodes is a Context or has the name.
VELResult HoldsTag(const VELIDOMNodeList& nodes, int count, std::uint32_t tag,
                   std::uint32_t context, bool& found) {
    found = false;
    std::uint32_t nodeTag = 0;
    VELIDOMNode node;
    for (int index = 0; index < count; ++index) {
        const VELResult result = nodes.Item(index, node);
        if (result < 0)
            return result;
        if (node.IsNull())
            return E_FAIL;
        if (ReadTag(node, nodeTag) && (nodeTag == tag || nodeTag == context))
            found = true;
    }
    return S_OK;
}

VELIDOMNode FindContainer(const VELIDOMElement& parent, const VELUnicodeString& tag,
                          ContextLevels levels, const ReadState& state) {
    if (!IsLookedUpByName(tag, levels))
        return parent;
    return OnlyDescendant(parent, tag, state);
}

// Empties the list when none of the nodes concerns the pass.
VELResult KeepIfTagIsHeld(const VELUnicodeString& tag, const VELIDOMNode& container,
                          VELIDOMNodeList& nodes, int& count, const ReadState& state) {
    bool found = false;
    const std::uint32_t tagId = DomAccess::NameId(container, tag.AsView());
    const VELResult result = HoldsTag(nodes, count, tagId, state.ids->context, found);
    if (result < 0) {
        LogReaderError(state, Method, key::InternalError, container);
        TRACE_WARNING("VELDyadCtxXml:GetNodeListByTagName - Failed(hr)");
        return result;
    }
    if (found)
        return S_OK;
    TRACE_WARNING("VELDyadCtxXml:GetNodeListByTagName - Null TagYes");
    nodes = VELIDOMNodeList();
    count = 0;
    return S_OK;
}

} // namespace

VELResult GetNodeListByTagName(const VELIDOMElement& parent, const VELUnicodeString& tag,
                               ContextLevels levels, VELIDOMNodeList& nodes, int& count,
                               const ReadState& state) {
    count = 0;
    nodes = VELIDOMNodeList();
    TRACE_ENTER("VELDyadCtxXml:GetNodeListByTagName <%s>", tag.ConvertToChar());
    const VELIDOMNode container = FindContainer(parent, tag, levels, state);
    if (container.IsNull()) {
        TRACE_WARNING("VELDyadCtxXml:GetNodeListByTagName - spNodeElements issue");
        TRACE_ERROR("VELDyadCtxXml:GetNodeListByTagName <%s> find %d Nodes", tag.ConvertToChar(),
                    count);
        return E_FAIL;
    }
    if (container.GetChildNodes(nodes) < 0) {
        TRACE_WARNING("VELDyadCtxXml:GetNodeListByTagName - GetChildNodes Internal error");
        LogReaderError(state, Method, key::InternalError, container);
        return E_FAIL;
    }
    count = nodes.GetLength();
    TRACE_LOG("VELDyadCtxXml:GetNodeListByTagName - oNbNodes=%d", count);
    if (!IsOutermost(levels)) {
        const VELResult result = KeepIfTagIsHeld(tag, container, nodes, count, state);
        if (result < 0)
            return result;
    }
    TRACE_LEAVE("VELDyadCtxXml:GetNodeListByTagName <%s> find %d Nodes", tag.ConvertToChar(),
                count);
    return S_OK;
}

WalksBelow FindWalksBelow(const VELIDOMElement& context, const FormatIds& ids) {
    WalksBelow found{false, false, false};
    VELIDOMNodeList nodes;
    if (context.GetChildNodes(nodes) < 0)
        return {};
    std::uint32_t tag = 0;
    VELIDOMNode node;
    const int count = nodes.GetLength();
    for (int index = 0; index < count; ++index) {
        if (nodes.Item(index, node) < 0 || node.IsNull())
            return {};
        if (!ReadTag(node, tag))
            continue;
        const bool isContext = tag == ids.context;
        found.associated = found.associated || isContext || tag == ids.associated;
        found.friends = found.friends || isContext || tag == ids.friends;
        found.scenarios =
            found.scenarios || tag == ids.scenario || tag == ids.scenarioId || tag == ids.option;
    }
    return found;
}

} // namespace dyadctx
