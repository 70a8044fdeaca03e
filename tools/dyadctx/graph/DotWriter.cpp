// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/DotWriter.h"

#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/graph/PictureStyle.h"
#include "tools/dyadctx/graph/PictureText.h"

namespace dyadctx::tool {

namespace {

using namespace std::string_literals;

constexpr const char* Head = R"(digraph contexts {
  graph [rankdir=TB, nodesep=0.3, ranksep=0.6, labelloc=t, fontname="Helvetica,Arial,sans-serif", fontsize=14];
  node [style=filled, shape=box, fontname="Helvetica,Arial,sans-serif", fontsize=11, fontcolor="#1c2430", margin="0.15,0.06"];
  edge [arrowsize=0.8, fontname="Helvetica,Arial,sans-serif", fontsize=10];
)";

const char* ShapeOf(NodeKind kind) {
    switch (kind) {
    case NodeKind::Default:
        return "ellipse";
    case NodeKind::Path:
        return "folder";
    case NodeKind::File:
        return "note";
    case NodeKind::Database:
        return "cylinder";
    case NodeKind::Other:
        break;
    }
    return "hexagon";
}

std::string LookOf(NodeKind kind, const char* line) {
    return "shape="s + ShapeOf(kind) + ", fillcolor=" + DotQuoted(StyleOf(kind).fill) +
           ", color=" + DotQuoted(line);
}

std::string LookOfUnresolved(const char* line) {
    return "shape=box, style=\"dashed,rounded\", color=" + DotQuoted(line);
}

std::string LookOfFaulty() {
    return "shape=box, fillcolor="s + DotQuoted(UnresolvedFill) +
           ", color=" + DotQuoted(FaultColor) + ", penwidth=2.2";
}

std::string LookOf(const GraphNode& node) {
    const char* line = node.isUnresolved ? UnresolvedColor : StyleOf(node.kind).line;
    if (node.isOnCycle)
        line = CycleColor;
    if (!node.faults.empty())
        line = FaultColor;
    const std::string look = node.isUnresolved ? LookOfUnresolved(line) : LookOf(node.kind, line);
    if (node.isInFocus)
        return look + ", penwidth=3";
    return node.faults.empty() ? look : look + ", penwidth=2.2";
}

std::string LookOf(const GraphLink& link) {
    std::string look = "color="s + DotQuoted(ColorOf(link));
    if (link.kind == LinkKind::Associated)
        look += ", penwidth=2.2, arrowhead=odiamond";
    if (link.isUnresolved)
        look += ", style=dashed";
    if (link.isOnCycle)
        look += ", dir=both, arrowtail=dot";
    return look;
}

std::string Statement(const GraphNode& node) {
    const std::string faults = node.faults.empty() ? "" : "\n" + FaultLine(node);
    return "  " + node.id + " [label=" + DotQuoted(HeadLine(node) + "\n" + SubLine(node) + faults) +
           ", tooltip=" + DotQuoted(FullText(node)) + ", id=" + DotQuoted(node.id) + ", " +
           LookOf(node) + "];\n";
}

std::string Statement(const Graph& graph, const GraphLink& link) {
    return "  " + graph.nodes[static_cast<std::size_t>(link.from)].id + " -> " +
           graph.nodes[static_cast<std::size_t>(link.to)].id +
           " [tooltip=" + DotQuoted(FullText(graph, link)) + ", " + LookOf(link) + "];\n";
}

// Both ends have the same width, so the line is upright.
std::string LegendLine(const std::string& id, const std::string& words, const GraphLink& link) {
    const std::string start = id + "_from";
    const std::string end = id + "_to";
    return "    " + start +
           " [label=\"\", shape=plaintext, style=\"\", width=1.6, height=0.1];\n    " + end +
           " [label=" + DotQuoted(words) + ", shape=plaintext, style=\"\", width=1.6];\n    " +
           start + " -> " + end + " [" + LookOf(link) + "];\n";
}

std::string LegendBox(const std::string& id, const std::string& words, const std::string& look) {
    return "    " + id + " [label=" + DotQuoted(words) + ", " + look + "];\n";
}

std::string LegendText(const Legend& legend) {
    std::string text;
    for (const NodeKind kind : legend.kinds)
        text += LegendBox("legend_"s + StyleOf(kind).name, TitleOf(kind),
                          LookOf(kind, StyleOf(kind).line));
    if (legend.hasUnresolved)
        text += LegendBox("legend_unresolved", Words("picture.undeclared"),
                          LookOfUnresolved(UnresolvedColor));
    if (legend.hasFaults)
        text += LegendBox("legend_faulty", Words("picture.faulty"), LookOfFaulty());
    GraphLink sample;
    if (legend.hasFriends)
        text += LegendLine("legend_friend", Words("picture.friend"), sample);
    if (legend.hasAssociated) {
        sample.kind = LinkKind::Associated;
        text += LegendLine("legend_associated", Words("picture.associated"), sample);
    }
    if (legend.hasCycles) {
        sample.kind = LinkKind::Friend;
        sample.isOnCycle = true;
        text += LegendLine("legend_cycle", Words("picture.cycle"), sample);
    }
    if (text.empty())
        return text;
    return "  subgraph cluster_legend {\n    graph [label=" + DotQuoted(Words("picture.legend")) +
           ", fontsize=11, color=\"#c4cad2\"];\n    node [fontsize=9];\n" + text + "  }\n";
}

} // namespace

std::string WriteDot(const Graph& graph, std::string_view title) {
    std::string text = Head;
    text += "  label=" + DotQuoted(Traceable(title) + "\n" + Summary(graph)) + ";\n";
    for (const GraphNode& node : graph.nodes)
        text += Statement(node);
    for (const GraphLink& link : graph.links)
        text += Statement(graph, link);
    return text + LegendText(LegendOf(graph)) + "}\n";
}

std::string DotQuoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char letter : text) {
        switch (letter) {
        case '"':
            quoted += "\\\"";
            break;
        case '\\':
            quoted += "\\\\";
            break;
        case '\n':
            quoted += "\\n";
            break;
        case '&':
            // Graphviz reads entities also in quoted strings.
            quoted += "&amp;";
            break;
        default:
            quoted += letter;
        }
    }
    return quoted + "\"";
}

} // namespace dyadctx::tool
