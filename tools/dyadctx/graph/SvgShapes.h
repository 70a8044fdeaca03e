// SPDX-License-Identifier: MIT
// The pieces of an SVG picture: numbers, escaped text, boxes and arcs.
#pragma once

#include "tools/dyadctx/graph/GraphModel.h"
#include "tools/dyadctx/layout/LayeredLayout.h"

#include <string>
#include <string_view>

namespace dyadctx::tool {

// The text as content of an element or of a quoted attribute. What XML cannot hold is replaced.
std::string XmlEscaped(std::string_view text);

// With at most one digit after the point.
std::string SvgNumber(double value);

struct Rectangle {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

// The outline of a box of that kind.
std::string SvgOutline(NodeKind kind, const Rectangle& place);
// One for a context that is not declared.
std::string SvgPlainOutline(const Rectangle& place);

// The mark at the lower right corner of a box, where no kind has anything of its own, with a number
// of one or two digits in it.
std::string SvgBadge(const Rectangle& place, const std::string& number);

// The line of a link along its route, with its head, and with a dot at its tail when it is part of
// a cycle.
std::string SvgArc(const GraphLink& link, const Route& route);

// A line of text around its middle.
std::string SvgText(std::string_view cssClass, double middle, double baseLine,
                    std::string_view text);

} // namespace dyadctx::tool
