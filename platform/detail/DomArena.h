// SPDX-License-Identifier: MIT
// Memory of one document: allocated piecewise, freed at once.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace dyadctx {

// Elements may be pointers; their own size is then the intended one.
template<class T>
inline constexpr std::size_t SizeInArena = sizeof(T); // NOLINT(bugprone-sizeof-expression)

// An arena holds either arrays of 8-byte aligned objects or only bytes, so no room is lost
// to alignment. Without memory, operations throw std::bad_alloc and change nothing.
class DomArena {
public:
    // A chunk freed while its document is read should be reused for what is built from the
    // document; common allocators do so only for blocks below 128 KiB.
    static constexpr std::size_t ReusableChunk = 120 * std::size_t{1024};
    static constexpr std::size_t LargeChunk = 8 * std::size_t{1024} * 1024;

    explicit DomArena(std::size_t largestChunk = ReusableChunk) noexcept
        : largestChunk_(largestChunk) {}
    DomArena(const DomArena&) = delete;
    DomArena& operator=(const DomArena&) = delete;

    template<class T>
    T* AllocateArray(std::size_t count) {
        static_assert(alignof(T) <= 8 && SizeInArena<T> % 8 == 0);
        return static_cast<T*>(Allocate(count * SizeInArena<T>));
    }

    const char* CopyBytes(std::string_view bytes);

    // Extends a block in place. False if another block follows it or there is no room.
    bool Extend(void* block, std::size_t size, std::size_t newSize) noexcept;

    // Chunks are numbered from 0 in order of allocation.
    std::size_t ChunkCount() const noexcept { return chunks_.size(); }
    // The chunk of the next small block; 0 if there is none yet.
    std::size_t OpenChunk() const noexcept { return open_; }
    // Whether a block lies in this chunk and the chunk has not been freed.
    bool Holds(std::size_t chunk, const void* block) const noexcept {
        const char* first = chunks_[chunk].memory.get();
        // The only comparison defined for blocks of different chunks.
        return first != nullptr && !std::less<>()(static_cast<const char*>(block), first) &&
               std::less<>()(static_cast<const char*>(block), first + chunks_[chunk].size);
    }
    // Frees a chunk and all its blocks.
    void Discard(std::size_t chunk) noexcept { chunks_[chunk].memory.reset(); }

private:
    struct Chunk {
        std::unique_ptr<char[]> memory;
        std::size_t size;
    };

    void* Allocate(std::size_t size) {
        if (size > left_)
            return AllocateChunkFor(size);
        char* block = next_;
        next_ += size;
        left_ -= size;
        return block;
    }
    void* AllocateChunkFor(std::size_t size);
    char* AddChunk(std::size_t size);

    std::size_t largestChunk_;
    std::vector<Chunk> chunks_;
    std::size_t open_ = 0;
    char* next_ = nullptr;
    std::size_t left_ = 0;
    std::size_t chunkSize_ = 0;
};

} // namespace dyadctx
