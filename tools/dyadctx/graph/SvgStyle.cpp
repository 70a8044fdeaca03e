// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/SvgStyle.h"

#include "tools/dyadctx/graph/PictureStyle.h"

#include <array>
#include <utility>

namespace dyadctx::tool {

namespace {

using namespace std::string_literals;

constexpr const char* Measures = R"(
text { font-family: "Segoe UI", "Helvetica Neue", Arial, "Noto Sans", "DejaVu Sans", sans-serif; white-space: pre; }
.title { font-size: 16px; font-weight: 600; }
.summary { font-size: 12px; }
.name { font-size: 13px; font-weight: 600; text-anchor: middle; }
.detail { font-size: 11px; text-anchor: middle; }
.words { font-size: 12px; }
.rule { stroke-width: 1; }
.node rect, .node path { stroke-width: 1.4; stroke-linejoin: round; }
.faulty rect, .faulty path { stroke-width: 2.2; }
.badge { stroke-width: 1.5; }
.badge-number { font-size: 11px; font-weight: 600; text-anchor: middle; }
.focus rect, .focus path { stroke-width: 3.2; }
.unresolved rect { stroke-dasharray: 6 4; }
.line { fill: none; stroke-width: 1.5; }
.associated .line { stroke-width: 2.6; }
.associated .head { stroke-width: 1.8; }
.dashed .line { stroke-dasharray: 6 4; }
.link:hover .line { stroke-width: 4; }
)";

struct Theme {
    const char* background;
    const char* text;
    const char* fadedText;
    const char* rule;
    const char* friendLine;
    const char* associatedLine;
    const char* cycleLine;
    const char* unresolvedLine;
    // Fill and line of each kind, in the order of the kinds.
    std::array<std::pair<const char*, const char*>, 5> kinds;
};

constexpr Theme Dark{"#14171c",
                     "#e8ebf0",
                     "#b0b8c4",
                     "#343a44",
                     "#98a3b3",
                     "#b595f0",
                     "#ff6b66",
                     "#9aa2ad",
                     {{{"#2b323d", "#93a1b5"},
                       {"#17304d", "#6ea8ea"},
                       {"#183825", "#6cc28a"},
                       {"#43350f", "#dfae52"},
                       {"#3e2440", "#cf8fca"}}}};

Theme LightTheme() {
    Theme light{"#ffffff",       TextColor,  "#4d596a",       "#d5dae1", FriendColor,
                AssociatedColor, CycleColor, UnresolvedColor, {}};
    for (std::size_t i = 0; i < light.kinds.size(); ++i) {
        const KindStyle& style = StyleOf(static_cast<NodeKind>(i));
        light.kinds[i] = {style.fill, style.line};
    }
    return light;
}

std::string Rule(const std::string& what, const std::string& fill, const std::string& stroke) {
    return what + " {" + (fill.empty() ? "" : " fill: " + fill + ";") +
           (stroke.empty() ? "" : " stroke: " + stroke + ";") + " }\n";
}

std::string ColorsOf(const Theme& theme) {
    std::string rules = Rule(".background", theme.background, "") + Rule("text", theme.text, "") +
                        Rule(".summary, .detail, .words", theme.fadedText, "") +
                        Rule(".rule", "", theme.rule);
    for (std::size_t i = 0; i < theme.kinds.size(); ++i) {
        const std::string kind = "."s + StyleOf(static_cast<NodeKind>(i)).name;
        rules +=
            Rule(kind + " rect, " + kind + " path", theme.kinds[i].first, theme.kinds[i].second);
    }
    return rules + Rule(".node .inner", "none", "") +
           Rule(".unresolved rect, .plain rect", theme.background, theme.unresolvedLine) +
           Rule(".friend .line", "", theme.friendLine) +
           Rule(".friend .head", theme.friendLine, "") +
           Rule(".associated .line", "", theme.associatedLine) +
           Rule(".associated .head", theme.background, theme.associatedLine) +
           Rule(".cycle .line", "", theme.cycleLine) + Rule(".tail", theme.cycleLine, "") +
           Rule(".friend.cycle .head", theme.cycleLine, "") +
           Rule(".associated.cycle .head", "", theme.cycleLine) +
           Rule(".on-cycle rect, .on-cycle path, .faulty rect, .faulty path", "", theme.cycleLine) +
           Rule(".badge", theme.cycleLine, theme.background) +
           Rule(".badge-number", theme.background, "");
}

} // namespace

std::string SvgStyle() {
    return Measures + ColorsOf(LightTheme()) + "@media (prefers-color-scheme: dark) {\n" +
           ColorsOf(Dark) + "}\n";
}

} // namespace dyadctx::tool
