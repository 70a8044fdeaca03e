// SPDX-License-Identifier: MIT
// Which contexts the findings of a check are about.
#pragma once

#include "check/VELDyadCtxFileCheck.h"

#include <vector>

namespace dyadctx::tool {

using FindingsOfContext = std::vector<const VELDyadCtxFinding*>;

// The findings of each of these contexts, in the order of the check: a finding belongs to the
// context it is about, among those of its name to each in whose element the finding, or the place
// it refers to, is. `declared` are contexts of the check's collector; the findings stay the
// check's.
std::vector<FindingsOfContext> FindingsByContext(const std::vector<VELDyadContext*>& declared,
                                                 const VELDyadCtxFileCheck& check);

} // namespace dyadctx::tool
