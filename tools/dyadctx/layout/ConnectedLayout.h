// SPDX-License-Identifier: MIT
// The layered picture of boxes that hang together.
#pragma once

#include "tools/dyadctx/layout/LayeredLayout.h"

namespace dyadctx::tool {

// `arcs` hold no loop from a box to itself.
Layout LayOutConnected(const std::vector<LayoutBox>& boxes, const std::vector<Arc>& arcs);

} // namespace dyadctx::tool
