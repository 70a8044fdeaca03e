// SPDX-License-Identifier: MIT
// Contexts and what they name, as a graph to be drawn.
#pragma once

#include "collector/VELDyadCtxCollector.h"

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

enum class NodeKind { Default, Path, File, Database, Other };
enum class LinkKind { Friend, Associated };

struct GraphNode {
    // "n3" for the third declared context, "u1" for the first one that is named and not declared.
    std::string id;
    std::string name;
    std::string parameter;
    std::string type;
    NodeKind kind = NodeKind::Other;
    // Named by a context and not declared anywhere.
    bool isUnresolved = false;
    // On a way that leads back to this context.
    bool isOnCycle = false;
    bool isInFocus = false;
    // The texts of the errors of this context.
    std::vector<std::string> faults;
};

struct GraphLink {
    int from = 0;
    int to = 0;
    LinkKind kind = LinkKind::Friend;
    bool isUnresolved = false;
    bool isOnCycle = false;
};

struct Graph {
    std::vector<GraphNode> nodes;
    // Each once, in the order of the contexts they start from.
    std::vector<GraphLink> links;
};

// The contexts of the current view that are not null, in its order.
std::vector<VELDyadContext*> ContextsOfView(VELDyadCtxCollector& collector);

// The graph of these declared contexts. What they name leads to the very context, else to the first
// declared one of that name, else to a node of its own that stands for all mentions of the name.
Graph GraphOf(const std::vector<VELDyadContext*>& declared);

// The part with only these nodes, and the links between them. Marks stay those of the whole.
Graph PartOf(const Graph& graph, const std::vector<bool>& kept);

// Which nodes stand for one of `members`, or for an undeclared context that one of these names.
std::vector<bool> NodesFor(const Graph& graph, const std::vector<VELDyadContext*>& declared,
                           const std::vector<VELDyadContext*>& members);

// Which nodes lie within `depth` links, followed either way, from a context of that name. None when
// there is no such context.
std::vector<bool> Neighbourhood(const Graph& graph, std::string_view name, int depth);

// Sets the mark of each context of that name.
void MarkFocus(Graph& graph, std::string_view name);

// What there is, as words: "12 contexts, 8 friends, 1 associated, 1 not declared, 2 with errors, 3
// links in cycles". Only the contexts are named also when there are none.
std::string Summary(const Graph& graph);

} // namespace dyadctx::tool
