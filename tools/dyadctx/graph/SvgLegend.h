// SPDX-License-Identifier: MIT
// The legend of an SVG picture.
#pragma once

#include "tools/dyadctx/graph/GraphModel.h"

#include <string>

namespace dyadctx::tool {

struct SvgLegend {
    std::string text;
    double height = 0;
};

// What the graph needs explained, in rows of at most that width, with its upper left corner at the
// origin. Empty for an empty graph.
SvgLegend MakeSvgLegend(const Graph& graph, double width);

} // namespace dyadctx::tool
