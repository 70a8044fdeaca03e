// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/MermaidWriter.h"

#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/graph/PictureStyle.h"
#include "tools/dyadctx/graph/PictureText.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace dyadctx::tool {

namespace {

using namespace std::string_literals;

bool IsLetterOrDigit(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9');
}

// Slashes mean nothing to Mermaid within a quoted text, other punctuation only between two letters
// or digits. Elsewhere it may start a list or an emphasis.
bool IsHarmless(std::string_view text, std::size_t at) {
    constexpr std::string_view harmless = "-_.,";
    if (text[at] == '/')
        return true;
    return harmless.find(text[at]) != std::string_view::npos && at > 0 && at + 1 < text.size() &&
           IsLetterOrDigit(text[at - 1]) && IsLetterOrDigit(text[at + 1]);
}

// Without quotes; line feeds become `lineBreak`.
std::string Escaped(std::string_view text, std::string_view lineBreak) {
    std::string escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char letter = text[i];
        const bool isAscii = static_cast<unsigned char>(letter) < 0x80;
        if (letter == '\n')
            escaped += lineBreak;
        else if (!isAscii || letter == ' ' || IsLetterOrDigit(letter) || IsHarmless(text, i))
            escaped += letter;
        else
            escaped += "#" + std::to_string(static_cast<int>(letter)) + ";";
    }
    return escaped;
}

std::pair<const char*, const char*> BracketsOf(NodeKind kind) {
    switch (kind) {
    case NodeKind::Default:
        return {"([", "])"};
    case NodeKind::Path:
        return {"[", "]"};
    case NodeKind::File:
        return {"[/", "/]"};
    case NodeKind::Database:
        return {"[(", ")]"};
    case NodeKind::Other:
        break;
    }
    return {"{{", "}}"};
}

std::string Boxed(NodeKind kind, const std::string& text) {
    const auto [open, close] = BracketsOf(kind);
    return open + MermaidQuoted(text) + close;
}

const char* ClassOf(const GraphNode& node) {
    return node.isUnresolved ? "unresolved" : StyleOf(node.kind).name;
}

// The full name is in a comment if the box has only a part of it.
std::string Statement(const GraphNode& node) {
    const std::string name = HeadLine(node);
    std::string text;
    if (!node.name.empty() && name != Traceable(node.name))
        text = "  %% " + node.id + " is " + Escaped(Traceable(node.name), " ") + "\n";
    const NodeKind kind = node.isUnresolved ? NodeKind::Path : node.kind;
    const std::string faults = node.faults.empty() ? "" : "\n" + FaultLine(node);
    return text + "  " + node.id + Boxed(kind, name + "\n" + SubLine(node) + faults) +
           ":::" + ClassOf(node) + "\n";
}

class Links {
public:
    std::string Add(const std::string& from, const std::string& to, const GraphLink& link) {
        Note(link);
        const char* arrow = link.kind == LinkKind::Friend ? " --> " : " ==> ";
        return from + arrow + to + "\n";
    }
    std::string AddSample(const std::string& id, const std::string& words, const GraphLink& link) {
        Note(link);
        const char* arrow = link.kind == LinkKind::Friend ? " -->|" : " ==>|";
        return "    " + id + "_from[\" \"]:::sample" + arrow + words + "| " + id +
               "_to[\" \"]:::sample\n";
    }
    std::string Styles() const {
        return StyleOf("stroke:"s + AssociatedColor, associated_) +
               StyleOf("stroke-dasharray:6 4", unresolved_) +
               StyleOf("stroke:"s + CycleColor, onCycle_);
    }
    int Count() const { return count_; }

private:
    void Note(const GraphLink& link) {
        const int number = count_++;
        if (link.isOnCycle)
            onCycle_.push_back(number);
        else if (link.kind == LinkKind::Associated)
            associated_.push_back(number);
        if (link.isUnresolved)
            unresolved_.push_back(number);
    }
    static std::string StyleOf(const std::string& style, const std::vector<int>& numbers) {
        std::string list;
        for (const int number : numbers)
            list += (list.empty() ? "" : ",") + std::to_string(number);
        return list.empty() ? "" : "  linkStyle " + list + " " + style + "\n";
    }

    std::vector<int> associated_;
    std::vector<int> unresolved_;
    std::vector<int> onCycle_;
    int count_ = 0;
};

std::string LegendText(const Legend& legend, Links& links) {
    std::string text;
    for (const NodeKind kind : legend.kinds)
        text += "    legend_"s + StyleOf(kind).name + Boxed(kind, TitleOf(kind)) +
                ":::" + StyleOf(kind).name + "\n";
    if (legend.hasUnresolved)
        text += "    legend_unresolved["s + MermaidQuoted(Words("picture.undeclared")) +
                "]:::unresolved\n";
    if (legend.hasFaults)
        text += "    legend_faulty["s + MermaidQuoted(Words("picture.faulty")) + "]:::faulty\n";
    GraphLink sample;
    if (legend.hasFriends)
        text += links.AddSample("legend_friend", Words("picture.friend"), sample);
    if (legend.hasAssociated) {
        sample.kind = LinkKind::Associated;
        text += links.AddSample("legend_associated", Words("picture.associated"), sample);
    }
    if (legend.hasCycles) {
        sample.kind = LinkKind::Friend;
        sample.isOnCycle = true;
        text += links.AddSample("legend_cycle", Words("picture.cycle"), sample);
    }
    return text.empty() ? ""
                        : "  subgraph legend [" + MermaidQuoted(Words("picture.legend")) + "]\n" +
                              text + "  end\n";
}

std::string ClassDefinition(const std::string& name, const std::string& style) {
    return "  classDef " + name + " " + style + "\n";
}

// What a box has beside the look of its class.
std::string StyleOfItsOwn(const GraphNode& node) {
    std::string style;
    if (node.isOnCycle || !node.faults.empty())
        style = "stroke:"s + (node.faults.empty() ? CycleColor : FaultColor);
    const char* width = node.isInFocus ? "4px" : node.faults.empty() ? "" : "3px";
    if (*width != '\0')
        style += (style.empty() ? "" : ",") + "stroke-width:"s + width;
    return style.empty() ? "" : "  style " + node.id + " " + style + "\n";
}

std::string Classes(const Graph& graph, const Legend& legend) {
    const std::string text = ",color:"s + TextColor;
    std::string classes;
    for (const NodeKind kind : legend.kinds)
        classes += ClassDefinition(StyleOf(kind).name, "fill:"s + StyleOf(kind).fill +
                                                           ",stroke:" + StyleOf(kind).line + text);
    if (legend.hasUnresolved)
        classes +=
            ClassDefinition("unresolved", "fill:"s + UnresolvedFill + ",stroke:" + UnresolvedColor +
                                              ",stroke-dasharray:6 4" + text);
    if (legend.hasFaults)
        classes += ClassDefinition("faulty", "fill:"s + UnresolvedFill + ",stroke:" + FaultColor +
                                                 ",stroke-width:3px" + text);
    if (!graph.links.empty())
        classes += ClassDefinition("sample", "fill:none,stroke:none");
    for (const GraphNode& node : graph.nodes)
        classes += StyleOfItsOwn(node);
    return classes;
}

} // namespace

std::string WriteMermaid(const Graph& graph, std::string_view title) {
    Links links;
    const Legend legend = LegendOf(graph);
    std::string text =
        "flowchart TD\n  %% " + Escaped(Traceable(title), " ") + " - " + Summary(graph) + "\n";
    for (const GraphNode& node : graph.nodes)
        text += Statement(node);
    for (const GraphLink& link : graph.links)
        text += "  " + links.Add(graph.nodes[static_cast<std::size_t>(link.from)].id,
                                 graph.nodes[static_cast<std::size_t>(link.to)].id, link);
    text += LegendText(legend, links);
    return text + Classes(graph, legend) + links.Styles();
}

int MermaidLinkCount(const Graph& graph) {
    Links links;
    LegendText(LegendOf(graph), links);
    return static_cast<int>(graph.links.size()) + links.Count();
}

std::string MermaidQuoted(std::string_view text) {
    return "\"" + Escaped(text, "<br/>") + "\"";
}

} // namespace dyadctx::tool
