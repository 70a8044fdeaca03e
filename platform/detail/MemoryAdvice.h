// What the system may be told about memory.
#pragma once

#include <cstddef>

namespace dyadctx {

// Tells that all of a block just allocated is about to be written, so that the system provides its
// pages at once in place of one by one. Nothing but time depends on it.
void PrepareForWriting(void* block, std::size_t size) noexcept;

} // namespace dyadctx
