// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/SvgShapes.h"

#include <cmath>

namespace dyadctx::tool {

namespace {

constexpr double HeadLength = 9;
constexpr double HeadHalfWidth = 4;
constexpr double DiamondLength = 14;

std::string At(double x, double y) {
    return SvgNumber(x) + "," + SvgNumber(y);
}

std::string PathElement(const std::string& data, const std::string& attributes = "") {
    return "<path" + attributes + " d=\"" + data + "\"/>";
}

std::string RoundedBox(const Rectangle& place, double radius) {
    return "<rect x=\"" + SvgNumber(place.x) + "\" y=\"" + SvgNumber(place.y) + "\" width=\"" +
           SvgNumber(place.width) + "\" height=\"" + SvgNumber(place.height) + "\" rx=\"" +
           SvgNumber(radius) + "\"/>";
}

// A box with a tab that rises from its upper left corner.
std::string Folder(const Rectangle& place) {
    const std::string right = SvgNumber(place.x + place.width);
    return PathElement("M" + At(place.x, place.y - 2) + "q0,-4 4,-4h16l5,6H" +
                       SvgNumber(place.x + place.width - 5) + "q5,0 5,5V" +
                       SvgNumber(place.y + place.height - 5) + "q0,5 -5,5H" +
                       SvgNumber(place.x + 5) + "q-5,0 -5,-5z");
}

// A sheet with one corner folded.
std::string Sheet(const Rectangle& place) {
    const double fold = 11;
    const std::string corner = At(place.x + place.width - fold, place.y);
    return PathElement(
               "M" + At(place.x + 3, place.y) + "H" + SvgNumber(place.x + place.width - fold) +
               "l11,11V" + SvgNumber(place.y + place.height - 3) + "q0,3 -3,3H" +
               SvgNumber(place.x + 3) + "q-3,0 -3,-3V" + SvgNumber(place.y + 3) + "q0,-3 3,-3z") +
           PathElement("M" + corner + "v11h11", " class=\"inner\"");
}

std::string Drum(const Rectangle& place) {
    const double lid = 4;
    const std::string radii = SvgNumber(place.width / 2) + "," + SvgNumber(lid);
    const std::string width = SvgNumber(place.width);
    const std::string start = "M" + At(place.x, place.y + lid);
    return PathElement(start + "a" + radii + " 0 0 1 " + width + ",0V" +
                       SvgNumber(place.y + place.height - lid) + "a" + radii + " 0 0 1 -" + width +
                       ",0z") +
           PathElement(start + "a" + radii + " 0 0 0 " + width + ",0", " class=\"inner\"");
}

std::string Hexagon(const Rectangle& place) {
    const double slant = 10;
    const double right = place.x + place.width;
    const double middle = place.y + place.height / 2;
    const double bottom = place.y + place.height;
    return PathElement("M" + At(place.x + slant, place.y) + "H" + SvgNumber(right - slant) + "L" +
                       At(right, middle) + "L" + At(right - slant, bottom) + "H" +
                       SvgNumber(place.x + slant) + "L" + At(place.x, middle) + "z");
}

// The head at a point, for an arc that comes from `sign` < 0 above or from below.
std::string Head(LinkKind kind, const Point& tip, double sign) {
    if (kind == LinkKind::Friend) {
        const double back = tip.y + sign * HeadLength;
        return PathElement("M" + At(tip.x, tip.y) + "L" + At(tip.x - HeadHalfWidth, back) + "H" +
                               SvgNumber(tip.x + HeadHalfWidth) + "z",
                           " class=\"head\"");
    }
    const double middle = tip.y + sign * DiamondLength / 2;
    return PathElement("M" + At(tip.x, tip.y) + "L" + At(tip.x - HeadHalfWidth - 1, middle) + "L" +
                           At(tip.x, tip.y + sign * DiamondLength) + "L" +
                           At(tip.x + HeadHalfWidth + 1, middle) + "z",
                       " class=\"head\"");
}

std::string TailDot(const Point& start) {
    return "<circle class=\"tail\" cx=\"" + SvgNumber(start.x) + "\" cy=\"" + SvgNumber(start.y) +
           "\" r=\"3.2\"/>";
}

// From the first point to the last, which is where the head begins.
std::string LineData(const Route& route, const Point& end) {
    constexpr double straight = 0.05;
    std::string data = "M" + At(route.points.front().x, route.points.front().y);
    for (std::size_t i = 1; i < route.points.size(); ++i) {
        const Point& from = route.points[i - 1];
        const Point& to = i + 1 == route.points.size() ? end : route.points[i];
        const double middle = (from.y + to.y) / 2;
        if (std::abs(from.x - to.x) < straight)
            data += "V" + SvgNumber(to.y);
        else
            data += "C" + At(from.x, middle) + " " + At(to.x, middle) + " " + At(to.x, to.y);
    }
    return data;
}

std::string Loop(const GraphLink& link, const Route& route) {
    const Point& from = route.points.front();
    const Point& to = route.points.back();
    const double length = link.kind == LinkKind::Friend ? HeadLength : DiamondLength;
    const double reach = LoopRoom + 4;
    const std::string line = "M" + At(from.x, from.y) + "C" + At(from.x + reach, from.y - 12) +
                             " " + At(to.x + reach, to.y + 6) + " " + At(to.x + length, to.y);
    const double half = HeadHalfWidth;
    const std::string head = link.kind == LinkKind::Friend ? "M" + At(to.x, to.y) + "l9,-4v8z"
                                                           : "M" + At(to.x, to.y) + "l7,-" +
                                                                 SvgNumber(half + 1) + "l7,5l-7,5z";
    return PathElement(line, " class=\"line\"") + PathElement(head, " class=\"head\"") +
           TailDot(from);
}

std::string_view EscapeOf(char letter) {
    switch (letter) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        return {};
    }
}

} // namespace

std::string XmlEscaped(std::string_view text) {
    std::string escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view three = text.substr(i, 3);
        const std::string_view escape = EscapeOf(text[i]);
        if (three == "\uFFFE" || three == "\uFFFF") {
            escaped += "\uFFFD";
            i += 2;
        } else if (!escape.empty()) {
            escaped += escape;
        } else {
            escaped += text[i];
        }
    }
    return escaped;
}

std::string SvgNumber(double value) {
    const long long tenths = std::llround(value * 10);
    const long long size = tenths < 0 ? -tenths : tenths;
    std::string text = (tenths < 0 ? "-" : "") + std::to_string(size / 10);
    if (size % 10 != 0)
        text += "." + std::to_string(size % 10);
    return text;
}

std::string SvgOutline(NodeKind kind, const Rectangle& place) {
    switch (kind) {
    case NodeKind::Default:
        return RoundedBox(place, place.height / 2);
    case NodeKind::Path:
        return Folder(place);
    case NodeKind::File:
        return Sheet(place);
    case NodeKind::Database:
        return Drum(place);
    case NodeKind::Other:
        break;
    }
    return Hexagon(place);
}

std::string SvgPlainOutline(const Rectangle& place) {
    return RoundedBox(place, 6);
}

std::string SvgBadge(const Rectangle& place, const std::string& number) {
    const Point middle{place.x + place.width - 3, place.y + place.height - 2};
    return "<circle class=\"badge\" cx=\"" + SvgNumber(middle.x) + "\" cy=\"" +
           SvgNumber(middle.y) + "\" r=\"9\"/>" +
           SvgText("badge-number", middle.x, middle.y + 4, number);
}

std::string SvgArc(const GraphLink& link, const Route& route) {
    if (route.isLoop)
        return Loop(link, route);
    const Point& tip = route.points.back();
    const double sign = tip.y > route.points[route.points.size() - 2].y ? -1 : 1;
    const double length = link.kind == LinkKind::Friend ? HeadLength - 1 : DiamondLength;
    const std::string line = LineData(route, {tip.x, tip.y + sign * length});
    return PathElement(line, " class=\"line\"") + Head(link.kind, tip, sign) +
           (link.isOnCycle ? TailDot(route.points.front()) : "");
}

std::string SvgText(std::string_view cssClass, double middle, double baseLine,
                    std::string_view text) {
    return "<text class=\"" + std::string(cssClass) + "\" x=\"" + SvgNumber(middle) + "\" y=\"" +
           SvgNumber(baseLine) + "\">" + XmlEscaped(text) + "</text>";
}

} // namespace dyadctx::tool
