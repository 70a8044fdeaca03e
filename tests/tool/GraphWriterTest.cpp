// SPDX-License-Identifier: MIT
// Whole pictures: what each language gets of nodes, links and marks.
#include "platform/VELIXMLDOM.h"
#include "support/TemporaryFolder.h"
#include "tools/dyadctx/graph/DotWriter.h"
#include "tools/dyadctx/graph/MermaidWriter.h"
#include "tools/dyadctx/graph/SvgWriter.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace dyadctx::test {

namespace {

using namespace dyadctx::tool;

GraphNode Node(const std::string& id, const std::string& name, NodeKind kind) {
    GraphNode node;
    node.id = id;
    node.name = name;
    node.kind = kind;
    return node;
}

// Two contexts on a cycle, and one that is not declared.
Graph SmallGraph() {
    Graph graph;
    graph.nodes = {Node("n1", "A", NodeKind::Path), Node("n2", "B", NodeKind::File),
                   Node("u1", "C", NodeKind::Other)};
    graph.nodes[0].parameter = "/a";
    graph.nodes[0].isOnCycle = graph.nodes[1].isOnCycle = true;
    graph.nodes[0].isInFocus = true;
    graph.nodes[1].type = "File";
    graph.nodes[2].isUnresolved = true;
    graph.links = {{0, 1, LinkKind::Friend, false, true},
                   {1, 0, LinkKind::Associated, false, true},
                   {0, 2, LinkKind::Associated, true, false}};
    return graph;
}

constexpr const char* SmallDot = R"X(digraph contexts {
  graph [rankdir=TB, nodesep=0.3, ranksep=0.6, labelloc=t, fontname="Helvetica,Arial,sans-serif", fontsize=14];
  node [style=filled, shape=box, fontname="Helvetica,Arial,sans-serif", fontsize=11, fontcolor="#1c2430", margin="0.15,0.06"];
  edge [arrowsize=0.8, fontname="Helvetica,Arial,sans-serif", fontsize=10];
  label="small.xml\n2 contexts, 1 friend, 2 associated, 1 not declared, 2 links in cycles";
  n1 [label="A\n/a", tooltip="A\nParameter: /a\non a cycle", id="n1", shape=folder, fillcolor="#e1eefc", color="#cf2a27", penwidth=3];
  n2 [label="B\nFile", tooltip="B\nType: File\non a cycle", id="n2", shape=note, fillcolor="#e2f4e6", color="#cf2a27"];
  u1 [label="C\nnot declared", tooltip="C\nnot declared", id="u1", shape=box, style="dashed,rounded", color="#7c838d"];
  n1 -> n2 [tooltip="'A' has the friend 'B' (part of a cycle)", color="#cf2a27", dir=both, arrowtail=dot];
  n2 -> n1 [tooltip="'B' is associated with 'A' (part of a cycle)", color="#cf2a27", penwidth=2.2, arrowhead=odiamond, dir=both, arrowtail=dot];
  n1 -> u1 [tooltip="'A' is associated with 'C', which is not declared", color="#7a4fc0", penwidth=2.2, arrowhead=odiamond, style=dashed];
  subgraph cluster_legend {
    graph [label="Legend", fontsize=11, color="#c4cad2"];
    node [fontsize=9];
    legend_path [label="Path", shape=folder, fillcolor="#e1eefc", color="#3173b8"];
    legend_file [label="File", shape=note, fillcolor="#e2f4e6", color="#338450"];
    legend_unresolved [label="not declared", shape=box, style="dashed,rounded", color="#7c838d"];
    legend_friend_from [label="", shape=plaintext, style="", width=1.6, height=0.1];
    legend_friend_to [label="has the friend", shape=plaintext, style="", width=1.6];
    legend_friend_from -> legend_friend_to [color="#5b6675"];
    legend_associated_from [label="", shape=plaintext, style="", width=1.6, height=0.1];
    legend_associated_to [label="is associated with", shape=plaintext, style="", width=1.6];
    legend_associated_from -> legend_associated_to [color="#7a4fc0", penwidth=2.2, arrowhead=odiamond];
    legend_cycle_from [label="", shape=plaintext, style="", width=1.6, height=0.1];
    legend_cycle_to [label="part of a cycle", shape=plaintext, style="", width=1.6];
    legend_cycle_from -> legend_cycle_to [color="#cf2a27", dir=both, arrowtail=dot];
  }
}
)X";

constexpr const char* SmallMermaid = R"X(flowchart TD
  %% small.xml - 2 contexts, 1 friend, 2 associated, 1 not declared, 2 links in cycles
  n1["A<br/>/a"]:::path
  n2[/"B<br/>File"/]:::file
  u1["C<br/>not declared"]:::unresolved
  n1 --> n2
  n2 ==> n1
  n1 ==> u1
  subgraph legend ["Legend"]
    legend_path["Path"]:::path
    legend_file[/"File"/]:::file
    legend_unresolved["not declared"]:::unresolved
    legend_friend_from[" "]:::sample -->|has the friend| legend_friend_to[" "]:::sample
    legend_associated_from[" "]:::sample ==>|is associated with| legend_associated_to[" "]:::sample
    legend_cycle_from[" "]:::sample -->|part of a cycle| legend_cycle_to[" "]:::sample
  end
  classDef path fill:#e1eefc,stroke:#3173b8,color:#1c2430
  classDef file fill:#e2f4e6,stroke:#338450,color:#1c2430
  classDef unresolved fill:#ffffff,stroke:#7c838d,stroke-dasharray:6 4,color:#1c2430
  classDef sample fill:none,stroke:none
  style n1 stroke:#cf2a27,stroke-width:4px
  style n2 stroke:#cf2a27
  linkStyle 2,4 stroke:#7a4fc0
  linkStyle 2 stroke-dasharray:6 4
  linkStyle 0,1,5 stroke:#cf2a27
)X";

// Names that mean something in one of the languages.
Graph HostileGraph() {
    Graph graph;
    const std::vector<std::string> names{
        "<b>&amp;\"'</b>", "]]>",  "</svg>",         "a\nb", "\\N \\", "%%{init: {}}%%",
        "%s %n",           "end",  "\u202Eevil",     "",     "\"];",   "n1 --> n2;",
        "\xFF\xFE",        "図面", "zero\u200Bwidth"};
    for (const std::string& name : names)
        graph.nodes.push_back(
            Node("n" + std::to_string(graph.nodes.size() + 1), name, NodeKind::Path));
    for (GraphNode& node : graph.nodes)
        node.parameter = node.name;
    for (int i = 1; i < std::ssize(graph.nodes); ++i)
        graph.links.push_back({i - 1, i, LinkKind::Friend, false, false});
    return graph;
}

VELIDOMElement RootOf(const std::string& document) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("picture.xml", document);
    VELIXMLDOMDocumentBuilder builder;
    VELIDOMDocument parsed;
    VELIDOMElement root;
    EXPECT_GE(CreateVELIXMLDOMDocumentBuilder(builder, CLSID_XML4C_DOM), 0);
    EXPECT_GE(builder.Parse(VELUnicodeString(file), nullptr, nullptr, {}, {}, parsed), 0)
        << document;
    EXPECT_GE(parsed.GetDocumentElement(root), 0);
    return root;
}

std::set<std::string> WordsBehind(const std::string& text, const std::string& pattern) {
    std::set<std::string> words;
    const std::regex expression(pattern);
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
         ++match)
        words.insert((*match)[1]);
    return words;
}

} // namespace

TEST(GraphWriter, DotOfASmallGraph) {
    EXPECT_EQ(WriteDot(SmallGraph(), "small.xml"), SmallDot);
}

TEST(GraphWriter, MermaidOfASmallGraph) {
    EXPECT_EQ(WriteMermaid(SmallGraph(), "small.xml"), SmallMermaid);
    EXPECT_EQ(MermaidLinkCount(SmallGraph()), 6);
}

TEST(GraphWriter, ALongNameIsInFullInAMermaidComment) {
    Graph graph;
    graph.nodes = {Node("n1", "A name " + std::string(60, 'x') + " %%{end}", NodeKind::Path)};
    EXPECT_NE(WriteMermaid(graph, "t")
                  .find("  %% n1 is A name " + std::string(60, 'x') + " #37;#37;#123;end#125;\n"),
              std::string::npos);
}

TEST(GraphWriter, EveryKindHasAShapeAndAColourOfItsOwn) {
    Graph graph;
    for (const NodeKind kind :
         {NodeKind::Default, NodeKind::Path, NodeKind::File, NodeKind::Database, NodeKind::Other})
        graph.nodes.push_back(Node("n" + std::to_string(graph.nodes.size() + 1), "x", kind));
    const std::string dot = WriteDot(graph, "kinds");
    EXPECT_EQ(WordsBehind(dot, "id=\"n\\d\", shape=(\\w+)").size(), 5U);
    EXPECT_EQ(WordsBehind(dot, "id=\"n\\d\".*fillcolor=\"(#\\w+)\"").size(), 5U);
    const std::string svg = WriteSvg(graph, "kinds");
    EXPECT_EQ(WordsBehind(svg, "id=\"n\\d\" class=\"node (\\w+)\""),
              (std::set<std::string>{"default", "path", "file", "database", "other"}));
}

TEST(GraphWriter, SvgMarksWhatIsUnresolvedOnACycleOrInFocus) {
    const std::string svg = WriteSvg(SmallGraph(), "small.xml");
    EXPECT_NE(svg.find("<g id=\"n1\" class=\"node path on-cycle focus\">"), std::string::npos);
    EXPECT_NE(svg.find("<g id=\"n2\" class=\"node file on-cycle\">"), std::string::npos);
    EXPECT_NE(svg.find("<g id=\"u1\" class=\"node unresolved\">"), std::string::npos);
    EXPECT_NE(svg.find("<g class=\"link friend cycle\">"), std::string::npos);
    EXPECT_NE(svg.find("<g class=\"link associated cycle\">"), std::string::npos);
    EXPECT_NE(svg.find("<g class=\"link associated dashed\">"), std::string::npos);
    EXPECT_NE(svg.find("prefers-color-scheme: dark"), std::string::npos);
}

TEST(GraphWriter, ErrorsAreCountedInEveryLanguage) {
    Graph graph;
    graph.nodes = {Node("n1", "A", NodeKind::Path), Node("n2", "B", NodeKind::File)};
    graph.nodes[0].faults = {"first <fault>", "second"};
    graph.nodes[0].isInFocus = true;
    graph.nodes[1].faults.assign(100, "one");
    graph.nodes[1].isOnCycle = true;
    const std::string svg = WriteSvg(graph, "x");
    EXPECT_NE(svg.find("<g id=\"n1\" class=\"node path faulty focus\"><title>A\nError: first "
                       "&lt;fault&gt;\nError: second</title>"),
              std::string::npos)
        << svg;
    EXPECT_NE(svg.find("<g id=\"n2\" class=\"node file on-cycle faulty\">"), std::string::npos);
    EXPECT_EQ(WordsBehind(svg, "class=\"badge-number\"[^>]*>(\\d+)<"),
              (std::set<std::string>{"1", "2", "99"}));
    const std::string dot = WriteDot(graph, "x");
    EXPECT_NE(dot.find("label=\"A\\nno type\\n2 errors\""), std::string::npos) << dot;
    EXPECT_NE(dot.find("fillcolor=\"#e1eefc\", color=\"#cf2a27\", penwidth=3];"),
              std::string::npos);
    EXPECT_NE(dot.find("fillcolor=\"#e2f4e6\", color=\"#cf2a27\", penwidth=2.2];"),
              std::string::npos);
    EXPECT_NE(dot.find("legend_faulty [label=\"has errors\""), std::string::npos);
    const std::string mermaid = WriteMermaid(graph, "x");
    EXPECT_NE(mermaid.find("B<br/>no type<br/>100 errors"), std::string::npos) << mermaid;
    EXPECT_NE(mermaid.find("  style n1 stroke:#cf2a27,stroke-width:4px\n"
                           "  style n2 stroke:#cf2a27,stroke-width:3px\n"),
              std::string::npos);
    EXPECT_EQ(Summary(graph), "2 contexts, 2 with errors");
}

TEST(GraphWriter, SvgIsAWellFormedDocumentWithNameAndDescription) {
    for (const Graph& graph : {Graph(), SmallGraph(), HostileGraph()}) {
        const VELIDOMElement root = RootOf(WriteSvg(graph, "</title> & co.xml"));
        VELUnicodeString name;
        ASSERT_GE(root.GetTagName(name), 0);
        EXPECT_EQ(name, VELUnicodeString("svg"));
        VELIDOMNodeList children;
        ASSERT_GE(root.GetChildNodes(children), 0);
    }
}

TEST(GraphWriter, SvgRefersToNothingOutsideItself) {
    const std::string svg = WriteSvg(HostileGraph(), "x");
    EXPECT_EQ(svg.find("href"), std::string::npos);
    EXPECT_EQ(svg.find("<script"), std::string::npos);
    EXPECT_EQ(svg.find("url("), std::string::npos);
    EXPECT_EQ(svg.find("@import"), std::string::npos);
}

TEST(GraphWriter, ANameNeverLeavesItsLine) {
    const Graph graph = HostileGraph();
    const std::string mermaid = WriteMermaid(graph, "x");
    for (const GraphNode& node : graph.nodes)
        EXPECT_NE(mermaid.find("\n  " + node.id + "[\""), std::string::npos) << node.name;
    EXPECT_EQ(mermaid.find("%%{"), std::string::npos);
    EXPECT_EQ(mermaid.find("\n  n1 --> n2;"), std::string::npos);
    const std::string dot = WriteDot(graph, "x");
    EXPECT_EQ(std::count(dot.begin(), dot.end(), '\n'),
              std::ssize(graph.nodes) + std::ssize(graph.links) + 14);
}

TEST(GraphWriter, TheSameGraphProducesTheSameBytes) {
    EXPECT_EQ(WriteSvg(HostileGraph(), "x"), WriteSvg(HostileGraph(), "x"));
    EXPECT_EQ(WriteDot(HostileGraph(), "x"), WriteDot(HostileGraph(), "x"));
    EXPECT_EQ(WriteMermaid(HostileGraph(), "x"), WriteMermaid(HostileGraph(), "x"));
}

} // namespace dyadctx::test
