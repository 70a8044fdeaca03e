// SPDX-License-Identifier: MIT
// Reads the exchange scenarios below one Context element into the collector.
//
// Scenario elements are recognised by name, however deep they are nested. The walk has its own
// stack, so nesting does not use the thread's.
#pragma once

#include "platform/VELIXMLDOM.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"
#include "xml/detail/ReadState.h"

#include <vector>

namespace dyadctx {

class ScenarioReader {
public:
    explicit ScenarioReader(const ReadState& state) : state_(state) {}

    // E_FAIL when an option has no name; rows of scenarios that ended before it stay.
    VELResult ParseXMLExchangeScenarioNodes(const VELIDOMElement& context,
                                            const VELUnicodeString& contextName);

private:
    // What a pass over the children of one element has read when it ends.
    enum class Kind { Container, ScenarioId };
    struct Pass {
        Kind kind = Kind::Container;
        VELUnicodeString ident;
        VELUnicodeString profile;
        VELListValVELUnicodeString optionNames;
        VELListValVELUnicodeString optionValues;
        VELIDOMNodeList nodes;
        int nodeCount = 0;
        int nodeIndex = 0;
        // The kind of the child whose pass is open.
        Kind childKind = Kind::Container;
    };

    VELResult Begin(const VELIDOMNode& element, const VELUnicodeString& tag, Pass pass);
    VELResult Advance(VELResult childResult);
    VELResult ReadNode();
    VELResult ReadElement(const VELIDOMElement& element, std::uint32_t tag);
    VELResult ReadScenario(const VELIDOMElement& element);
    VELResult ReadScenarioId(const VELIDOMElement& element);
    VELResult ReadOption(const VELIDOMElement& element);
    VELResult End();
    VELResult Abandon();
    void AddRows(const Pass& scenarioId);
    void AddRow(const Pass& scenarioId, const VELUnicodeString& optionName,
                const VELUnicodeString& optionValue);

    ReadState state_;
    const VELUnicodeString* contextName_ = nullptr;
    std::vector<Pass> passes_;
};

} // namespace dyadctx
