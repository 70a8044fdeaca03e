// Memory of one document: handed out in pieces, freed all at once.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace dyadctx {

// Lists in an arena may hold pointers, and the size of these is meant then.
template<class T>
inline constexpr std::size_t SizeInArena = sizeof(T); // NOLINT(bugprone-sizeof-expression)

// Either all blocks of an arena are arrays of 8-byte aligned objects or all are bytes, so no room
// is spent on alignment. Asking for memory that cannot be had throws std::bad_alloc and changes
// nothing.
class DomArena {
public:
    // A chunk that is freed while its document is read should serve what is made of the document,
    // which the usual allocators see to for blocks below 128 KiB only.
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

    // Makes a block longer where it stands. False when something follows it or no room is left.
    bool Extend(void* block, std::size_t size, std::size_t newSize) noexcept;

    // Chunks are numbered from 0 in the order in which they were asked for.
    std::size_t ChunkCount() const noexcept { return chunks_.size(); }
    // The one from which the next small block will come; 0 while there is none.
    std::size_t OpenChunk() const noexcept { return open_; }
    // Whether a block lies in a chunk that is still there.
    bool Holds(std::size_t chunk, const void* block) const noexcept {
        const char* first = chunks_[chunk].memory.get();
        // Of blocks in different chunks only this order is defined.
        return first != nullptr && !std::less<>()(static_cast<const char*>(block), first) &&
               std::less<>()(static_cast<const char*>(block), first + chunks_[chunk].size);
    }
    // Frees a chunk with all blocks in it.
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
