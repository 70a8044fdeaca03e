// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/SvgLegend.h"

#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/graph/PictureStyle.h"
#include "tools/dyadctx/graph/PictureText.h"
#include "tools/dyadctx/graph/SvgShapes.h"
#include "tools/dyadctx/layout/LayeredLayout.h"

namespace dyadctx::tool {

namespace {

constexpr double SampleWidth = 34;
constexpr double SampleHeight = 20;
constexpr double RowHeight = 40;
constexpr double GapToWords = 8;
constexpr double GapOfEntries = 26;
constexpr double WordSize = 12;

// Puts one entry after the other, in a new row where the width is used up.
class Entries {
public:
    explicit Entries(double width) : width_(width) {}

    void Add(const std::string& sample, double sampleWidth, const std::string& words) {
        const double wordsAt = sampleWidth + GapToWords;
        const double width = wordsAt + TextWidth(words, WordSize);
        if (x_ > 0 && x_ + width > width_) {
            x_ = 0;
            y_ += RowHeight;
        }
        text_ += "<g transform=\"translate(" + SvgNumber(x_) + " " + SvgNumber(y_) + ")\">" +
                 sample + "<text class=\"words\" x=\"" + SvgNumber(wordsAt) + "\" y=\"" +
                 SvgNumber(RowHeight / 2 + 4) + "\">" + XmlEscaped(words) + "</text></g>\n";
        x_ += width + GapOfEntries;
    }
    SvgLegend Take() const { return {text_, text_.empty() ? 0 : y_ + RowHeight}; }

private:
    double width_;
    double x_ = 0;
    double y_ = 0;
    std::string text_;
};

Rectangle SampleBox() {
    return {0, (RowHeight - SampleHeight) / 2, SampleWidth, SampleHeight};
}

void AddLink(Entries& entries, const GraphLink& link, const std::string& words) {
    const double width = 12;
    Route route;
    route.points = {{width / 2, 4}, {width / 2, RowHeight - 4}};
    std::string classes = link.kind == LinkKind::Friend ? "friend" : "associated";
    if (link.isOnCycle)
        classes += " cycle";
    if (link.isUnresolved)
        classes += " dashed";
    entries.Add("<g class=\"" + classes + "\">" + SvgArc(link, route) + "</g>", width, words);
}

} // namespace

SvgLegend MakeSvgLegend(const Graph& graph, double width) {
    const Legend legend = LegendOf(graph);
    Entries entries(width);
    for (const NodeKind kind : legend.kinds)
        entries.Add(std::string("<g class=\"node ") + StyleOf(kind).name + "\">" +
                        SvgOutline(kind, SampleBox()) + "</g>",
                    SampleWidth, TitleOf(kind));
    if (legend.hasUnresolved)
        entries.Add("<g class=\"node unresolved\">" + SvgPlainOutline(SampleBox()) + "</g>",
                    SampleWidth, Words("picture.undeclared"));
    if (legend.hasFaults)
        entries.Add("<g class=\"node plain faulty\">" + SvgPlainOutline(SampleBox()) +
                        SvgBadge(SampleBox(), "1") + "</g>",
                    SampleWidth + 4, Words("picture.faulty"));
    if (legend.hasFriends)
        AddLink(entries, {}, Words("picture.friend"));
    if (legend.hasAssociated)
        AddLink(entries, {0, 0, LinkKind::Associated, false, false}, Words("picture.associated"));
    if (legend.hasCycles)
        AddLink(entries, {0, 0, LinkKind::Friend, false, true}, Words("picture.cycle"));
    return entries.Take();
}

} // namespace dyadctx::tool
