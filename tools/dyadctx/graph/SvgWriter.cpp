// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/SvgWriter.h"

#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/graph/PictureStyle.h"
#include "tools/dyadctx/graph/PictureText.h"
#include "tools/dyadctx/graph/SvgLegend.h"
#include "tools/dyadctx/graph/SvgShapes.h"
#include "tools/dyadctx/graph/SvgStyle.h"
#include "tools/dyadctx/layout/LayeredLayout.h"

#include <algorithm>

namespace dyadctx::tool {

namespace {

constexpr double Margin = 28;
constexpr double HeadingHeight = 64;
constexpr double GapToLegend = 34;
constexpr double MinContentWidth = 420;

constexpr double TitleSize = 16;
constexpr double SummarySize = 12;
constexpr double NameSize = 13;
constexpr double DetailSize = 11;
constexpr int TitleColumns = 60;

constexpr double BoxHeight = 46;
constexpr double MinBoxWidth = 88;
constexpr double BoxPadding = 16;
constexpr double WidthPerLink = 9;
constexpr double MaxWidthForLinks = 420;
// Bold letters are wider than the others.
constexpr double Bold = 1.06;

// The greater of the numbers of links that end and that start at each node.
std::vector<int> BusiestSides(const Graph& graph) {
    std::vector<int> entering(graph.nodes.size(), 0);
    std::vector<int> leaving(graph.nodes.size(), 0);
    for (const GraphLink& link : graph.links) {
        ++entering[static_cast<std::size_t>(link.to)];
        ++leaving[static_cast<std::size_t>(link.from)];
    }
    for (std::size_t i = 0; i < entering.size(); ++i)
        entering[i] = std::max(entering[i], leaving[i]);
    return entering;
}

// Wide enough for the text, and where many links meet for these, too.
std::vector<LayoutBox> BoxesOf(const Graph& graph) {
    const std::vector<int> links = BusiestSides(graph);
    std::vector<LayoutBox> boxes;
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const GraphNode& node = graph.nodes[i];
        const double text = std::max(TextWidth(HeadLine(node), NameSize) * Bold,
                                     TextWidth(SubLine(node), DetailSize));
        const double forLinks =
            std::min(MaxWidthForLinks, links[i] * WidthPerLink + 4 * BoxPadding);
        boxes.push_back({std::max({MinBoxWidth, text + 2 * BoxPadding, forLinks}), BoxHeight, 0});
    }
    return boxes;
}

std::vector<Arc> ArcsOf(const Graph& graph) {
    std::vector<Arc> arcs;
    for (const GraphLink& link : graph.links)
        arcs.push_back({link.from, link.to});
    return arcs;
}

std::string TitleElement(const std::string& text) {
    return "<title>" + XmlEscaped(text) + "</title>";
}

std::string ClassesOf(const GraphNode& node) {
    std::string classes = "node ";
    classes += node.isUnresolved ? "unresolved" : StyleOf(node.kind).name;
    if (node.isOnCycle)
        classes += " on-cycle";
    if (!node.faults.empty())
        classes += " faulty";
    return node.isInFocus ? classes + " focus" : classes;
}

std::string ClassesOf(const GraphLink& link) {
    std::string classes = link.kind == LinkKind::Friend ? "link friend" : "link associated";
    if (link.isOnCycle)
        classes += " cycle";
    return link.isUnresolved ? classes + " dashed" : classes;
}

std::string BadgeOf(const GraphNode& node, const Rectangle& place) {
    constexpr std::size_t mostShown = 99;
    if (node.faults.empty())
        return "";
    return SvgBadge(place, std::to_string(std::min(node.faults.size(), mostShown)));
}

std::string Drawn(const GraphNode& node, const LayoutBox& box, const Point& centre) {
    const Rectangle place{centre.x - box.width / 2, centre.y - box.height / 2, box.width,
                          box.height};
    // The lid of a drum takes some of its height.
    const bool isDrum = !node.isUnresolved && node.kind == NodeKind::Database;
    const double lower = isDrum ? 4 : 0;
    return "<g id=\"" + node.id + "\" class=\"" + ClassesOf(node) + "\">" +
           TitleElement(FullText(node)) +
           (node.isUnresolved ? SvgPlainOutline(place) : SvgOutline(node.kind, place)) +
           SvgText("name", centre.x, centre.y - 3 + lower, HeadLine(node)) +
           SvgText("detail", centre.x, centre.y + 13 + lower, SubLine(node)) +
           BadgeOf(node, place) + "</g>\n";
}

class Picture {
public:
    Picture(const Graph& graph, std::string_view title)
        : graph_(graph), title_(Shortened(Traceable(title), TitleColumns)),
          summary_(Summary(graph)), boxes_(BoxesOf(graph)), layout_(LayOut(boxes_, ArcsOf(graph))) {
        content_ = std::max({layout_.width, MinContentWidth, TextWidth(title_, TitleSize) * Bold,
                             TextWidth(summary_, SummarySize)});
    }

    std::string Write() const {
        const SvgLegend legend = MakeSvgLegend(graph_, content_);
        const double legendTop = HeadingHeight + layout_.height + GapToLegend;
        const double height = legendTop + legend.height + Margin / 2;
        std::string text = Opening(content_ + 2 * Margin, height);
        text += Heading() + Drawings();
        if (!legend.text.empty())
            text += "<line class=\"rule\" x1=\"" + SvgNumber(Margin) + "\" y1=\"" +
                    SvgNumber(legendTop - 8) + "\" x2=\"" + SvgNumber(Margin + content_) +
                    "\" y2=\"" + SvgNumber(legendTop - 8) + "\"/>\n" +
                    Group("legend", Margin, legendTop, legend.text);
        return text + "</svg>\n";
    }

private:
    std::string Opening(double width, double height) const {
        const std::string size = "width=\"" + SvgNumber(width) + "\" height=\"" + SvgNumber(height);
        return "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" "
               "aria-labelledby=\"picture-title picture-description\" " +
               size + "\" viewBox=\"0 0 " + SvgNumber(width) + " " + SvgNumber(height) +
               "\">\n<title id=\"picture-title\">" + Words("picture.title", {XmlEscaped(title_)}) +
               "</title>\n<desc id=\"picture-description\">" + XmlEscaped(summary_) +
               "</desc>\n<style>" + SvgStyle() +
               "</style>\n<rect class=\"background\" width=\"100%\" height=\"100%\"/>\n";
    }

    std::string Heading() const {
        return "<text class=\"title\" x=\"" + SvgNumber(Margin) + "\" y=\"30\">" +
               XmlEscaped(title_) + "</text>\n<text class=\"summary\" x=\"" + SvgNumber(Margin) +
               "\" y=\"48\">" + XmlEscaped(summary_) + "</text>\n";
    }

    // Links first, so that boxes cover where they start.
    std::string Drawings() const {
        std::string text;
        for (std::size_t i = 0; i < graph_.links.size(); ++i)
            text += "<g class=\"" + ClassesOf(graph_.links[i]) + "\">" +
                    TitleElement(FullText(graph_, graph_.links[i])) +
                    SvgArc(graph_.links[i], layout_.routes[i]) + "</g>\n";
        for (std::size_t i = 0; i < graph_.nodes.size(); ++i)
            text += Drawn(graph_.nodes[i], boxes_[i], layout_.centres[i]);
        return Group("contexts", Margin + (content_ - layout_.width) / 2, HeadingHeight + 6, text);
    }

    static std::string Group(const std::string& name, double x, double y,
                             const std::string& content) {
        return "<g class=\"" + name + "\" transform=\"translate(" + SvgNumber(x) + " " +
               SvgNumber(y) + ")\">\n" + content + "</g>\n";
    }

    const Graph& graph_;
    std::string title_;
    std::string summary_;
    std::vector<LayoutBox> boxes_;
    Layout layout_;
    double content_;
};

} // namespace

std::string WriteSvg(const Graph& graph, std::string_view title) {
    return Picture(graph, title).Write();
}

} // namespace dyadctx::tool
