// SPDX-License-Identifier: MIT
// A graph in DOT, the language of Graphviz.
#pragma once

#include "tools/dyadctx/graph/GraphModel.h"

#include <string>
#include <string_view>

namespace dyadctx::tool {

std::string WriteDot(const Graph& graph, std::string_view title);

// The text as a quoted string that Graphviz shows as it is; line feeds divide centred lines.
std::string DotQuoted(std::string_view text);

} // namespace dyadctx::tool
