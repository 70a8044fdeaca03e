// SPDX-License-Identifier: MIT
#include "platform/detail/DomArena.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace dyadctx {

namespace {

// Keeps small documents small, and allocations for large ones few.
constexpr std::size_t FirstChunk = 4096 - 64;

} // namespace

const char* DomArena::CopyBytes(std::string_view bytes) {
    char* copy = static_cast<char*>(Allocate(bytes.size()));
    if (!bytes.empty())
        std::memcpy(copy, bytes.data(), bytes.size());
    return copy;
}

bool DomArena::Extend(void* block, std::size_t size, std::size_t newSize) noexcept {
    if (block == nullptr || static_cast<char*>(block) + size != next_ || newSize - size > left_)
        return false;
    next_ += newSize - size;
    left_ -= newSize - size;
    return true;
}

void* DomArena::AllocateChunkFor(std::size_t size) {
    const std::size_t nextSize =
        chunkSize_ == 0 ? FirstChunk : std::min(2 * chunkSize_, largestChunk_);
    // A large block gets its own chunk, so that the rest of the open one is not wasted.
    if (size > nextSize / 4)
        return AddChunk(size);
    char* chunk = AddChunk(nextSize);
    chunkSize_ = nextSize;
    open_ = chunks_.size() - 1;
    next_ = chunk + size;
    left_ = nextSize - size;
    return chunk;
}

char* DomArena::AddChunk(std::size_t size) {
    auto chunk = std::make_unique_for_overwrite<char[]>(size);
    chunks_.push_back({std::move(chunk), size});
    return chunks_.back().memory.get();
}

} // namespace dyadctx
