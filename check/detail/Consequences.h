// SPDX-License-Identifier: MIT
// Which findings follow from others.
#pragma once

#include "check/detail/FindingList.h"

#include <cstddef>
#include <span>
#include <vector>

namespace dyadctx {

// For each entry the index of its fault: the error whose repair removes the entry too; its own
// index if it is no consequence. The fault of an entry is never a consequence itself. Near-linear.
// Throws std::bad_alloc.
std::vector<std::size_t> FindFaults(std::span<const FindingList::Entry> entries);

} // namespace dyadctx
