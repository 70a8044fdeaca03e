// SPDX-License-Identifier: MIT
// The contexts of the shape Mixed: what a large installation may hold, about 170 bytes for each.
#pragma once

#include "bench/generator/ContextText.h"
#include "bench/generator/GenerateContexts.h"

namespace dyadctx::bench {

void WriteMixedContexts(const ContextFilePlan& plan, ContextText& text);

} // namespace dyadctx::bench
