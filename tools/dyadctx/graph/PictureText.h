// SPDX-License-Identifier: MIT
// The texts of a picture: in boxes and tooltips, and how much room they take.
#pragma once

#include "tools/dyadctx/graph/GraphModel.h"

#include <string>
#include <string_view>

namespace dyadctx::tool {

// The text with everything written out that would not be seen: what steers a terminal, and marks
// without a trace of their own (\u200b). Joiners stay, because letters and emoji need them.
std::string Traceable(std::string_view text);

// The text, or its beginning and its end with "…" between them, in at most that many columns.
// `columns` is at least 3.
std::string Shortened(const std::string& text, int columns);

// The two lines in the box of a context: its name, and what it is.
std::string HeadLine(const GraphNode& node);
std::string SubLine(const GraphNode& node);
// "2 errors"; empty for a sound context.
std::string FaultLine(const GraphNode& node);
// All of it in full, on several lines.
std::string FullText(const GraphNode& node);
// "Design has the friend Parts", and what there is to say about that.
std::string FullText(const Graph& graph, const GraphLink& link);

// How wide a sans-serif font shows the text, at least in the common fonts.
double TextWidth(std::string_view text, double fontSize);

} // namespace dyadctx::tool
