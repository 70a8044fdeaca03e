// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/GraphModel.h"

#include "check/detail/StrongComponents.h"
#include "tools/dyadctx/Words.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <unordered_map>

namespace dyadctx::tool {

namespace {

std::string TextOf(const VELUnicodeString& text) {
    return std::string(text.AsView());
}

NodeKind KindOf(std::string_view type) {
    if (type == "Default")
        return NodeKind::Default;
    if (type == "Path")
        return NodeKind::Path;
    if (type == "File")
        return NodeKind::File;
    return type == "Database" ? NodeKind::Database : NodeKind::Other;
}

GraphNode NodeOf(const VELDyadContext& context, const std::string& id) {
    GraphNode node;
    node.id = id;
    node.name = TextOf(context.GetName());
    node.parameter = TextOf(context.GetParameter());
    node.type = TextOf(context.GetParameterType());
    node.kind = KindOf(node.type);
    return node;
}

class Builder {
public:
    explicit Builder(const std::vector<VELDyadContext*>& declared) : declared_(declared) {}

    Graph Build() {
        for (const VELDyadContext* context : declared_)
            AddDeclared(*context);
        for (std::size_t i = 0; i < declared_.size(); ++i)
            AddLinksOf(static_cast<int>(i));
        return std::move(graph_);
    }

private:
    void AddDeclared(const VELDyadContext& context) {
        const int node = static_cast<int>(graph_.nodes.size());
        graph_.nodes.push_back(NodeOf(context, "n" + std::to_string(node + 1)));
        byContext_.emplace(&context, node);
        byName_.emplace(graph_.nodes.back().name, node);
    }

    void AddLinksOf(int from) {
        VELDyadContext& context = *declared_[static_cast<std::size_t>(from)];
        VELListPtrVELDyadContext friends;
        const int count = context.GetFriends(friends);
        for (int i = 1; i <= count; ++i)
            AddLink(from, friends[i], LinkKind::Friend);
        VELDyadContext* associated = nullptr;
        context.GetAssociatedContext(associated);
        AddLink(from, associated, LinkKind::Associated);
    }

    void AddLink(int from, const VELDyadContext* target, LinkKind kind) {
        if (target == nullptr)
            return;
        const int to = NodeFor(*target);
        if (!taken_.emplace(from, to, kind).second)
            return;
        const bool unresolved = graph_.nodes[static_cast<std::size_t>(to)].isUnresolved;
        graph_.links.push_back({from, to, kind, unresolved, false});
    }

    int NodeFor(const VELDyadContext& context) {
        const auto known = byContext_.find(&context);
        if (known != byContext_.end())
            return known->second;
        const int next = static_cast<int>(graph_.nodes.size());
        const auto [place, isNew] = byName_.emplace(TextOf(context.GetName()), next);
        if (isNew) {
            graph_.nodes.push_back(NodeOf(context, "u" + std::to_string(++unresolved_)));
            graph_.nodes.back().isUnresolved = true;
        }
        return place->second;
    }

    const std::vector<VELDyadContext*>& declared_;
    Graph graph_;
    std::unordered_map<const VELDyadContext*, int> byContext_;
    std::unordered_map<std::string, int> byName_;
    std::set<std::tuple<int, int, LinkKind>> taken_;
    int unresolved_ = 0;
};

void MarkCycles(Graph& graph) {
    std::vector<Arc> arcs;
    for (const GraphLink& link : graph.links)
        arcs.push_back({link.from, link.to});
    const std::vector<int> component = StrongComponents(static_cast<int>(graph.nodes.size()), arcs);
    for (GraphLink& link : graph.links) {
        const auto from = static_cast<std::size_t>(link.from);
        const auto to = static_cast<std::size_t>(link.to);
        if (component[from] != component[to])
            continue;
        link.isOnCycle = true;
        graph.nodes[from].isOnCycle = true;
        graph.nodes[to].isOnCycle = true;
    }
}

// ", 2 friends"; empty for none.
std::string Counted(std::ptrdiff_t count, const std::string& key) {
    return count == 0 ? "" : ", " + CountedWords(count, key);
}

} // namespace

std::vector<VELDyadContext*> ContextsOfView(VELDyadCtxCollector& collector) {
    std::vector<VELDyadContext*> contexts;
    const int count = collector.GetNbCtxs();
    for (int i = 1; i <= count; ++i) {
        VELDyadContext* context = nullptr;
        if (collector.GetCtxAtIndex(i, context) >= 0 && context != nullptr)
            contexts.push_back(context);
    }
    return contexts;
}

Graph GraphOf(const std::vector<VELDyadContext*>& declared) {
    Graph graph = Builder(declared).Build();
    MarkCycles(graph);
    return graph;
}

Graph PartOf(const Graph& graph, const std::vector<bool>& kept) {
    Graph part;
    std::vector<int> place(graph.nodes.size(), -1);
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        if (!kept[i])
            continue;
        place[i] = static_cast<int>(part.nodes.size());
        part.nodes.push_back(graph.nodes[i]);
    }
    for (GraphLink link : graph.links) {
        link.from = place[static_cast<std::size_t>(link.from)];
        link.to = place[static_cast<std::size_t>(link.to)];
        if (link.from >= 0 && link.to >= 0)
            part.links.push_back(link);
    }
    return part;
}

std::vector<bool> NodesFor(const Graph& graph, const std::vector<VELDyadContext*>& declared,
                           const std::vector<VELDyadContext*>& members) {
    const std::set<const VELDyadContext*> wanted(members.begin(), members.end());
    std::vector<bool> kept(graph.nodes.size(), false);
    for (std::size_t i = 0; i < declared.size(); ++i)
        kept[i] = wanted.contains(declared[i]);
    for (const GraphLink& link : graph.links) {
        if (link.isUnresolved && kept[static_cast<std::size_t>(link.from)])
            kept[static_cast<std::size_t>(link.to)] = true;
    }
    return kept;
}

std::vector<bool> Neighbourhood(const Graph& graph, std::string_view name, int depth) {
    std::vector<std::vector<int>> next(graph.nodes.size());
    for (const GraphLink& link : graph.links) {
        next[static_cast<std::size_t>(link.from)].push_back(link.to);
        next[static_cast<std::size_t>(link.to)].push_back(link.from);
    }
    std::vector<bool> reached(graph.nodes.size(), false);
    std::vector<int> front;
    const auto reach = [&](int node) {
        if (!reached[static_cast<std::size_t>(node)])
            front.push_back(node);
        reached[static_cast<std::size_t>(node)] = true;
    };
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        if (graph.nodes[i].name == name)
            reach(static_cast<int>(i));
    }
    for (int step = 0; step < depth && !front.empty(); ++step) {
        for (const int node : std::exchange(front, {})) {
            for (const int other : next[static_cast<std::size_t>(node)])
                reach(other);
        }
    }
    return reached;
}

void MarkFocus(Graph& graph, std::string_view name) {
    for (GraphNode& node : graph.nodes)
        node.isInFocus = node.name == name;
}

std::string Summary(const Graph& graph) {
    const auto links = [&graph](LinkKind kind) {
        return std::count_if(graph.links.begin(), graph.links.end(),
                             [kind](const GraphLink& link) { return link.kind == kind; });
    };
    const auto unresolved = std::count_if(graph.nodes.begin(), graph.nodes.end(),
                                          [](const GraphNode& node) { return node.isUnresolved; });
    const auto faulty = std::count_if(graph.nodes.begin(), graph.nodes.end(),
                                      [](const GraphNode& node) { return !node.faults.empty(); });
    const auto inCycles = std::count_if(graph.links.begin(), graph.links.end(),
                                        [](const GraphLink& link) { return link.isOnCycle; });
    const std::ptrdiff_t declared = std::ssize(graph.nodes) - unresolved;
    return CountedWords(declared, "count.context") +
           Counted(links(LinkKind::Friend), "count.friend") +
           Counted(links(LinkKind::Associated), "count.associated") +
           Counted(unresolved, "count.undeclared") + Counted(faulty, "count.faulty") +
           Counted(inCycles, "count.in-cycle");
}

} // namespace dyadctx::tool
