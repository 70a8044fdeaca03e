// SPDX-License-Identifier: MIT
// Memory of an alignment, straight from the system.
#pragma once

#include <cstddef>

namespace dyadctx::test {

// Null when there is none.
void* TakeAligned(std::size_t size, std::size_t alignment) noexcept;
void FreeAligned(void* block) noexcept;

} // namespace dyadctx::test
