// SPDX-License-Identifier: MIT
#include "support/AlignedMemory.h"

#include <cstdlib>

namespace dyadctx::test {

void* TakeAligned(std::size_t size, std::size_t alignment) noexcept {
    return std::aligned_alloc(alignment, (size + alignment) / alignment * alignment);
}

void FreeAligned(void* block) noexcept {
    std::free(block);
}

} // namespace dyadctx::test
