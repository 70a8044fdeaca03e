// SPDX-License-Identifier: MIT
// Which row each box of a layered picture stands in.
#pragma once

#include "check/detail/StrongComponents.h"

#include <vector>

namespace dyadctx::tool {

// For each arc whether a walk along the arcs comes back by it. The other arcs form no cycle, and an
// arc that is on no cycle is never marked.
std::vector<bool> BackArcs(int nodes, const std::vector<Arc>& arcs);

// The row of each node, from 0 without a gap. `arcs` form no cycle; each leads to a later row. A
// row takes no further node once it is wider than `maxWidth`.
std::vector<int> AssignRows(const std::vector<double>& widths, const std::vector<Arc>& arcs,
                            double maxWidth);

} // namespace dyadctx::tool
