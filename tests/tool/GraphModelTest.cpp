// SPDX-License-Identifier: MIT
// Contexts as a graph: what becomes a node, what a link, what is marked.
#include "tools/dyadctx/graph/GraphModel.h"
#include "check/detail/StrongComponents.h"
#include "support/ContextFile.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using namespace dyadctx::tool;

// Whole links as texts: "Design>Parts", "Design=Vault" for an associated one; "!" after one that
// leads to an undeclared context, "*" after one on a cycle.
std::vector<std::string> LinksOf(const Graph& graph) {
    std::vector<std::string> links;
    for (const GraphLink& link : graph.links) {
        std::string text = graph.nodes[static_cast<std::size_t>(link.from)].name;
        text += link.kind == LinkKind::Friend ? ">" : "=";
        text += graph.nodes[static_cast<std::size_t>(link.to)].name;
        text += link.isUnresolved ? "!" : "";
        links.push_back(text + (link.isOnCycle ? "*" : ""));
    }
    return links;
}

std::vector<std::string> NamesOf(const Graph& graph) {
    std::vector<std::string> names;
    for (const GraphNode& node : graph.nodes)
        names.push_back(node.id + " " + node.name);
    return names;
}

using Strings = std::vector<std::string>;

class GraphModel : public testing::Test {
protected:
    VELDyadContext* Declare(const char* name, const char* type = "Path") {
        auto* context = new VELDyadContext(name, "/x", type);
        collector_->AddContext(context, nullptr, 0);
        return context;
    }
    // What the reader leaves for a friend or associated context named in a file.
    void Mention(VELDyadContext* by, const char* name, int associated = 0) {
        collector_->AddContext(new VELDyadContext(name, "", ""), by, associated);
    }
    Graph Whole() { return GraphOf(ContextsOfView(*collector_)); }

    DbEnvironment environment_{true};
    std::unique_ptr<VELDyadCtxCollector> collector_{
        VELDyadCtxCollector::CreateCollectorFromScratch()};
};

} // namespace

TEST_F(GraphModel, DeclaredContextsAreNodesInTheirOrder) {
    Declare("DYADIC", "Default");
    Declare("Design", "Path");
    Declare("Parts", "File");
    Declare("Vault", "Database");
    Declare("Odd", "path");
    const Graph graph = Whole();
    EXPECT_EQ(NamesOf(graph),
              Strings({"n1 DYADIC", "n2 Design", "n3 Parts", "n4 Vault", "n5 Odd"}));
    EXPECT_EQ(graph.nodes[0].kind, NodeKind::Default);
    EXPECT_EQ(graph.nodes[1].kind, NodeKind::Path);
    EXPECT_EQ(graph.nodes[2].kind, NodeKind::File);
    EXPECT_EQ(graph.nodes[3].kind, NodeKind::Database);
    EXPECT_EQ(graph.nodes[4].kind, NodeKind::Other);
    EXPECT_EQ(graph.nodes[1].parameter, "/x");
}

TEST_F(GraphModel, FriendsAndAssociatedContextsAreLinks) {
    VELDyadContext* design = Declare("Design");
    VELDyadContext* parts = Declare("Parts", "File");
    VELDyadContext* vault = Declare("Vault", "Database");
    design->AddFriend(parts);
    design->AddFriend(parts);
    parts->AddAssociatedContext(vault);
    EXPECT_EQ(LinksOf(Whole()), Strings({"Design>Parts", "Parts=Vault"}));
}

TEST_F(GraphModel, AnUndeclaredNameIsOneNodeHoweverOftenItIsNamed) {
    VELDyadContext* design = Declare("Design");
    VELDyadContext* parts = Declare("Parts", "File");
    Mention(design, "Librery");
    Mention(parts, "Librery");
    Mention(parts, "Valt", 1);
    const Graph graph = Whole();
    EXPECT_EQ(NamesOf(graph), Strings({"n1 Design", "n2 Parts", "u1 Librery", "u2 Valt"}));
    EXPECT_FALSE(graph.nodes[1].isUnresolved);
    EXPECT_TRUE(graph.nodes[2].isUnresolved);
    EXPECT_EQ(LinksOf(graph), Strings({"Design>Librery!", "Parts>Librery!", "Parts=Valt!"}));
}

TEST_F(GraphModel, APlaceholderOfADeclaredNameLeadsToTheFirstDeclaredContext) {
    VELDyadContext* design = Declare("Design");
    Mention(design, "Library");
    Declare("Library");
    Declare("Library");
    const Graph graph = Whole();
    EXPECT_EQ(graph.nodes.size(), 3U);
    ASSERT_EQ(graph.links.size(), 1U);
    EXPECT_EQ(graph.links[0].to, 1);
    EXPECT_FALSE(graph.links[0].isUnresolved);
}

TEST_F(GraphModel, ExactlyTheLinksOfACycleAreMarked) {
    VELDyadContext* a = Declare("A");
    VELDyadContext* b = Declare("B");
    VELDyadContext* c = Declare("C");
    VELDyadContext* d = Declare("D");
    a->AddFriend(b);
    b->AddFriend(c);
    c->AddFriend(a);
    c->AddFriend(d);
    d->AddFriend(d);
    const Graph graph = Whole();
    EXPECT_EQ(LinksOf(graph), Strings({"A>B*", "B>C*", "C>A*", "C>D", "D>D*"}));
    EXPECT_TRUE(graph.nodes[3].isOnCycle);
    EXPECT_EQ(Summary(graph), "4 contexts, 5 friends, 4 links in cycles");
}

TEST_F(GraphModel, AChainOfAnyLengthIsWalkedWithoutRecursion) {
    constexpr int length = 200000;
    std::vector<Arc> arcs;
    for (int i = 0; i + 1 < length; ++i)
        arcs.push_back({i, i + 1});
    const std::vector<int> apart = StrongComponents(length, arcs);
    EXPECT_NE(apart.front(), apart.back());
    arcs.push_back({length - 1, 0});
    const std::vector<int> together = StrongComponents(length, arcs);
    EXPECT_EQ(together, std::vector<int>(length, together.front()));
}

TEST_F(GraphModel, TheNeighbourhoodReachesBothWays) {
    VELDyadContext* a = Declare("A");
    VELDyadContext* b = Declare("B");
    VELDyadContext* c = Declare("C");
    VELDyadContext* d = Declare("D");
    a->AddFriend(b);
    b->AddFriend(c);
    c->AddFriend(d);
    const Graph graph = Whole();
    using Marks = std::vector<bool>;
    EXPECT_EQ(Neighbourhood(graph, "B", 0), Marks({false, true, false, false}));
    EXPECT_EQ(Neighbourhood(graph, "B", 1), Marks({true, true, true, false}));
    EXPECT_EQ(Neighbourhood(graph, "B", 9), Marks({true, true, true, true}));
    EXPECT_EQ(Neighbourhood(graph, "b", 9), Marks({false, false, false, false}));
}

TEST_F(GraphModel, APartKeepsNamesAndMarksOfTheWhole) {
    VELDyadContext* a = Declare("A");
    VELDyadContext* b = Declare("B");
    VELDyadContext* c = Declare("C");
    b->AddFriend(c);
    c->AddFriend(b);
    c->AddFriend(a);
    const Graph part = PartOf(Whole(), {true, false, true});
    EXPECT_EQ(NamesOf(part), Strings({"n1 A", "n3 C"}));
    EXPECT_EQ(LinksOf(part), Strings({"C>A"}));
    EXPECT_TRUE(part.nodes[1].isOnCycle);
}

TEST_F(GraphModel, AViewShowsItsContextsAndWhatTheyNameInVain) {
    VELDyadContext* design = Declare("Design");
    VELDyadContext* parts = Declare("Parts", "File");
    Mention(design, "Librery");
    Mention(parts, "Valt", 1);
    const std::vector<VELDyadContext*> declared = ContextsOfView(*collector_);
    const Graph graph = GraphOf(declared);
    EXPECT_EQ(NamesOf(PartOf(graph, NodesFor(graph, declared, {design}))),
              Strings({"n1 Design", "u1 Librery"}));
}

TEST_F(GraphModel, TheSummaryCounts) {
    EXPECT_EQ(Summary(Graph()), "0 contexts");
    VELDyadContext* design = Declare("Design");
    EXPECT_EQ(Summary(Whole()), "1 context");
    Mention(design, "Librery");
    Mention(design, "Valt", 1);
    EXPECT_EQ(Summary(Whole()), "1 context, 1 friend, 1 associated, 2 not declared");
}

} // namespace dyadctx::test
