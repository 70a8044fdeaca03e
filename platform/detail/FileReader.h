// Reads a regular file from start to end.
#pragma once

#include "platform/VELUnicodeString.h"

#include <cstddef>
#include <cstdint>

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

} // namespace dyadctx
