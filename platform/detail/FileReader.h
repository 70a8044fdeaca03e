// Reads a regular file from its beginning to its end.
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

    // False for what cannot be read, is not a regular file (a FIFO or a device is not even opened)
    // or has a name no file can have. Never waits for another process. May throw std::bad_alloc.
    bool Open(const VELUnicodeString& path);

    // Reads up to `size` bytes and gives how many; 0 at the end, -1 on an error or before Open.
    // Fewer bytes than asked for do not mean the end.
    std::int64_t Read(void* buffer, std::size_t size) noexcept;

    // Goes back to the beginning. False on an error or before Open.
    bool Rewind() noexcept;

    // The system's code of the last Open or Read that failed; 0 for what is no regular file.
    int Failure() const noexcept { return failure_; }

    // The size the file had when it was opened; it may have changed since.
    std::uint64_t Size() const noexcept { return size_; }

private:
    void Close() noexcept;
    bool Fails(std::int64_t result) noexcept;

    static constexpr std::intptr_t NoHandle = -1;

    // What the system gave for the open file.
    std::intptr_t handle_ = NoHandle;
    std::uint64_t size_ = 0;
    int failure_ = 0;
};

} // namespace dyadctx
