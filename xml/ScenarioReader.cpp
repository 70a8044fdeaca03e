// SPDX-License-Identifier: MIT
#include "xml/detail/ScenarioReader.h"

#include "trace/VELDyadMessageKeys.h"
#include "trace/detail/FindingIds.h"
#include "trace/detail/TraceLine.h"
#include "xml/detail/FormatNames.h"

#include <new>
#include <utility>

namespace dyadctx {

namespace {

constexpr const char* Method = "VELDyadCtxXml::ParseXMLExchangeScenarioNodes";

} // namespace

VELResult ScenarioReader::ParseXMLExchangeScenarioNodes(const VELIDOMElement& context,
                                                        const VELUnicodeString& contextName) {
    contextName_ = &contextName;
    passes_.clear();
    VELResult result = Begin(context, Names().scenario, Pass());
    while (!passes_.empty())
        result = Advance(result);
    return result;
}

VELResult ScenarioReader::Begin(const VELIDOMNode& element, const VELUnicodeString& tag,
                                Pass pass) {
    TRACE_ENTER("VELDyadCtxXml:ParseXMLExchangeScenarioNodes <%s> for Context <%s>",
                tag.ConvertToChar(), contextName_->ConvertToChar());
    if (element.GetChildNodes(pass.nodes) < 0) {
        LogReaderError(state_, Method, key::InternalError, element);
        return E_FAIL;
    }
    pass.nodeCount = pass.nodes.GetLength();
    TRACE_LOG("VELDyadCtxXml:ParseXMLExchangeScenarioNodes find %d nodes under <%s>",
              pass.nodeCount, tag.ConvertToChar());
    passes_.push_back(std::move(pass));
    return S_OK;
}

// Continues the innermost pass with the result of the pass it waited for.
VELResult ScenarioReader::Advance(VELResult childResult) {
    Pass& pass = passes_.back();
    if (childResult >= 0)
        return pass.nodeIndex < pass.nodeCount ? ReadNode() : End();
    const int failedIndex = pass.nodeIndex - 1;
    if (pass.childKind == Kind::ScenarioId) {
        // This line bears the other operation's name on purpose.
        TRACE_ERROR("VELDyadCtxXml:ParseXMLNodes : scenarioID parsing problem, node index=%d",
                    failedIndex);
    } else {
        TRACE_ERROR("VELDyadCtxXml:ParseXMLExchangeScenarioNodes : scenario parsing problem, node "
                    "index=%d",
                    failedIndex);
    }
    return Abandon();
}

VELResult ScenarioReader::ReadNode() {
    Pass& pass = passes_.back();
    VELIDOMNode node;
    if (pass.nodes.Item(pass.nodeIndex++, node) < 0 || node.IsNull()) {
        LogReaderError(state_, Method, key::InternalError, VELIDOMNode());
        return Abandon();
    }
    std::uint32_t tag = 0;
    if (!ReadTag(node, tag))
        return S_OK;
    return ReadElement(VELIDOMElement(node), tag);
}

VELResult ScenarioReader::ReadElement(const VELIDOMElement& element, std::uint32_t tag) {
    const FormatIds& ids = *state_.ids;
    if (tag == ids.scenario)
        return ReadScenario(element);
    if (tag == ids.scenarioId)
        return ReadScenarioId(element);
    if (tag == ids.option)
        return ReadOption(element);
    return S_OK;
}

VELResult ScenarioReader::ReadScenario(const VELIDOMElement& element) {
    passes_.back().childKind = Kind::Container;
    return Begin(element, Names().scenarioId, Pass());
}

VELResult ScenarioReader::ReadScenarioId(const VELIDOMElement& element) {
    passes_.back().childKind = Kind::ScenarioId;
    Pass pass;
    pass.kind = Kind::ScenarioId;
    pass.ident = AttributeOrEmpty(element, state_.ids->scenarioIdent);
    pass.profile = AttributeOrEmpty(element, state_.ids->scenarioName);
    TRACE_LOG("VELDyadCtxXml:ParseXMLExchangeScenarioNodes of ScenarioID Ident=<%s> and name=<%s>",
              pass.ident.ConvertToChar(), pass.profile.ConvertToChar());
    return Begin(element, Names().option, std::move(pass));
}

VELResult ScenarioReader::ReadOption(const VELIDOMElement& element) {
    Pass& pass = passes_.back();
    const VELUnicodeString value = AttributeOrEmpty(element, state_.ids->optionValue);
    VELUnicodeString name;
    const bool hasName = ReadAttribute(element, state_.ids->optionName, name);
    TRACE_LOG("VELDyadCtxXml:ParseXMLExchangeScenarioNodes of Option name=<%s> and value=<%s>",
              name.ConvertToChar(), value.ConvertToChar());
    pass.optionNames.Append(name);
    pass.optionValues.Append(value);
    if (hasName)
        return S_OK;
    if (state_.ContinuesAfterFault()) {
        // The library has no message for it.
        LogReaderError(state_, Method, id::OptionWithoutName, element, contextName_, 1);
        return S_OK;
    }
    TRACE_ERROR(
        "VELDyadCtxXml:ParseXMLExchangeScenarioNodes : scenario parsing problem, node index=%d",
        pass.nodeIndex - 1);
    return Abandon();
}

VELResult ScenarioReader::End() {
    const Pass pass = std::move(passes_.back());
    passes_.pop_back();
    TRACE_LEAVE("VELDyadCtxXml:ParseXMLExchangeScenarioNodes <%d> Options",
                pass.optionValues.Size());
    if (pass.kind == Kind::ScenarioId)
        AddRows(pass);
    return S_OK;
}

VELResult ScenarioReader::Abandon() {
    passes_.pop_back();
    return E_FAIL;
}

// A scenario without options still is one row.
void ScenarioReader::AddRows(const Pass& scenarioId) {
    const VELUnicodeString none;
    if (scenarioId.optionNames.Size() == 0)
        AddRow(scenarioId, none, none);
    for (int pos = 1; pos <= scenarioId.optionNames.Size(); ++pos)
        AddRow(scenarioId, scenarioId.optionNames[pos], scenarioId.optionValues[pos]);
}

void ScenarioReader::AddRow(const Pass& scenarioId, const VELUnicodeString& optionName,
                            const VELUnicodeString& optionValue) {
    const VELUnicodeString& name = *contextName_;
    const int rowsBefore = state_.collector.GetNbScenarios();
    state_.collector.AddScenario(name, name, scenarioId.profile, scenarioId.ident, optionName,
                                 optionValue);
    // No client may get a collector that lacks a row of its file.
    if (state_.collector.GetNbScenarios() == rowsBefore)
        throw std::bad_alloc();
}

} // namespace dyadctx
