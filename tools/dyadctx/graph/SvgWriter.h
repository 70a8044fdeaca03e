// SPDX-License-Identifier: MIT
// A graph as a picture: an SVG document that needs nothing beside itself.
#pragma once

#include "tools/dyadctx/graph/GraphModel.h"

#include <string>
#include <string_view>

namespace dyadctx::tool {

std::string WriteSvg(const Graph& graph, std::string_view title);

} // namespace dyadctx::tool
