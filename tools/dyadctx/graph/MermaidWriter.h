// SPDX-License-Identifier: MIT
// A graph as a Mermaid flowchart.
#pragma once

#include "tools/dyadctx/graph/GraphModel.h"

#include <string>
#include <string_view>

namespace dyadctx::tool {

// The number of links from which on Mermaid draws nothing unless it is set up for more.
inline constexpr int MermaidLinkLimit = 500;

std::string WriteMermaid(const Graph& graph, std::string_view title);

// The number of links a flowchart of this graph has, those of its legend included.
int MermaidLinkCount(const Graph& graph);

// The text as a quoted string that Mermaid shows as it is; line feeds divide lines.
std::string MermaidQuoted(std::string_view text);

} // namespace dyadctx::tool
