// SPDX-License-Identifier: MIT
#include "support/AlignedMemory.h"

#include <malloc.h>

namespace dyadctx::test {

void* TakeAligned(std::size_t size, std::size_t alignment) noexcept {
    return _aligned_malloc(size != 0 ? size : 1, alignment);
}

void FreeAligned(void* block) noexcept {
    _aligned_free(block);
}

} // namespace dyadctx::test
