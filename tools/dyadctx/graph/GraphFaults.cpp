// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/GraphFaults.h"

#include "tools/dyadctx/ContextFindings.h"

namespace dyadctx::tool {

void MarkFaults(Graph& graph, const std::vector<VELDyadContext*>& declared,
                const VELDyadCtxFileCheck& check) {
    const std::vector<FindingsOfContext> findings = FindingsByContext(declared, check);
    for (std::size_t i = 0; i < findings.size(); ++i) {
        for (const VELDyadCtxFinding* finding : findings[i]) {
            if (finding->severity == VELDyadCtxSeverity::Error)
                graph.nodes[i].faults.emplace_back(finding->text.AsView());
        }
    }
}

} // namespace dyadctx::tool
