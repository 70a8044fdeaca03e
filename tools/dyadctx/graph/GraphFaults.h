// SPDX-License-Identifier: MIT
// Which contexts of a graph are at fault.
#pragma once

#include "check/VELDyadCtxFileCheck.h"
#include "tools/dyadctx/graph/GraphModel.h"

#include <vector>

namespace dyadctx::tool {

// Gives each error of the check to the contexts it is about. `declared` are the contexts the graph
// was made of, all from the collector of the check.
void MarkFaults(Graph& graph, const std::vector<VELDyadContext*>& declared,
                const VELDyadCtxFileCheck& check);

} // namespace dyadctx::tool
