// SPDX-License-Identifier: MIT
// Walks the elements of a context file and enters what it finds into the collector.
//
// The walk is a pass over the children of one element, and below each Context further passes for
// its associated contexts and its friends. A Context is visited once per pass that meets it. Open
// passes are on a separate stack, so nesting does not use the thread's. The first failure ends the
// walk unless there is an observer; each pass around it adds its line to the trace.
#pragma once

#include "platform/VELIXMLDOM.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"
#include "xml/detail/ContextEntry.h"
#include "xml/detail/ReadState.h"
#include "xml/detail/ScenarioReader.h"

#include <vector>

namespace dyadctx {

class ContextReader {
public:
    explicit ContextReader(const ReadState& state)
        : state_(state), entry_(state), scenarios_(state) {}

    // Reads everything below the root element.
    VELResult ParseXMLNodes(const VELIDOMElement& root);

private:
    // What a pass waits for.
    enum class Step {
        NextNode,
        AssociatedOfContext,
        FriendsOfContext,
        AssociatedContainer,
        FriendsContainer
    };
    struct Pass {
        VELIDOMNodeList nodes;
        int nodeCount = 0;
        int nodeIndex = 0;
        // The current element of the pass.
        VELIDOMElement element;
        const VELUnicodeString* tag = nullptr;
        ContextLevels levels;
        Step step = Step::NextNode;
        WalksBelow walks;
    };

    VELResult Begin(const VELIDOMElement& parent, const VELUnicodeString& tag,
                    ContextLevels levels);
    VELResult EndWithoutNodes(const VELIDOMElement& parent, const VELUnicodeString& tag,
                              ContextLevels levels);
    void LogNotFound(const VELIDOMElement& parent, const VELUnicodeString& tag);
    VELResult Advance(VELResult childResult);
    VELResult ReadNode();
    VELResult ReadContext();
    VELResult BeginFriends();
    VELResult ReadScenarios();
    VELResult ReadAssociatedContainer();
    VELResult ReadFriendsContainer();
    VELResult GoToNextNode();
    VELResult End();
    VELResult FailAfter(Step step);
    VELResult Reject(const char* key, const VELIDOMNode& where);
    VELResult Abandon();

    ReadState state_;
    ContextEntry entry_;
    ScenarioReader scenarios_;
    std::vector<Pass> passes_;
    // The current node; a member, which saves reference counting per node.
    VELIDOMNode node_;
};

} // namespace dyadctx
