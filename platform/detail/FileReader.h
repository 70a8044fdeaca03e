// SPDX-License-Identifier: MIT
// Reads a regular file from start to end.
#pragma once

#include "platform/VELUnicodeString.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace dyadctx {

class FileReader {
public:
    FileReader() noexcept = default;
    ~FileReader();
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;

    // False if the file cannot be read, is not regular (a FIFO or device is not even opened) or has
    // an impossible name. Never waits for another process. May throw std::bad_alloc.
    bool Open(const VELUnicodeString& path);

    // Reads up to `size` bytes and returns how many; 0 at the end, -1 on an error or before Open. A
    // short read does not mean the end.
    std::int64_t Read(void* buffer, std::size_t size) noexcept;

    // Returns to the start. False on an error or before Open.
    bool Rewind() noexcept;

    // The system's code of the last failed Open or Read; 0 if the file is not regular.
    int Failure() const noexcept { return failure_; }

    // The size when opened; it may have changed since.
    std::uint64_t Size() const noexcept { return size_; }

private:
    void Close() noexcept;
    bool Fails(std::int64_t result) noexcept;

    static constexpr std::intptr_t NoHandle = -1;

    // The system's handle of the open file.
    std::intptr_t handle_ = NoHandle;
    std::uint64_t size_ = 0;
    int failure_ = 0;
};

// Reads from a file, or another source with such a Read, until the buffer is full or the source
// ends. Returns how many bytes; `failed` is set on an error.
template<class Source>
std::size_t ReadFull(Source& source, char* buffer, std::size_t size, bool& failed) {
    std::size_t filled = 0;
    while (filled < size) {
        const std::int64_t got = source.Read(buffer + filled, size - filled);
        failed = got < 0;
        if (got <= 0)
            break;
        filled += static_cast<std::size_t>(got);
    }
    return filled;
}

// Reads a whole file, but little more than `most` bytes. False on an error.
inline bool ReadWhole(FileReader& file, std::size_t most, std::string& text) {
    constexpr std::size_t Piece = std::size_t{16} << 10U;
    bool failed = false;
    text.clear();
    for (std::size_t got = Piece; got == Piece && text.size() <= most;) {
        const std::size_t before = text.size();
        text.resize(before + Piece);
        got = ReadFull(file, text.data() + before, Piece, failed);
        text.resize(before + got);
    }
    return !failed;
}

} // namespace dyadctx
