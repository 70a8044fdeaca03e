// SPDX-License-Identifier: MIT
#include "platform/detail/FileReader.h"

#include "platform/detail/NativePath.h"
#include "platform/posix/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace dyadctx {

namespace {

// The most bytes requested per system call.
constexpr std::size_t LargestRead = std::size_t{1} << 30;

} // namespace

FileReader::~FileReader() {
    Close();
}

bool FileReader::Open(const VELUnicodeString& path) {
    Close();
    const auto native = NativePath(path.AsView());
    struct stat status {};
    // Checked before opening, which can already wake the other end of a FIFO or move a device; then
    // opened without waiting and checked again, as it may change in between.
    failure_ = native ? 0 : EINVAL;
    if (!native || Fails(stat(native->c_str(), &status)) || !S_ISREG(status.st_mode))
        return false;
    Descriptor file(open(native->c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (Fails(file.Get()) || Fails(fstat(file.Get(), &status)) || !S_ISREG(status.st_mode))
        return false;
    size_ = static_cast<std::uint64_t>(status.st_size);
    handle_ = file.Release();
    return true;
}

std::int64_t FileReader::Read(void* buffer, std::size_t size) noexcept {
    ssize_t got = -1;
    do {
        got = read(static_cast<int>(handle_), buffer, std::min(size, LargestRead));
    } while (got < 0 && errno == EINTR);
    Fails(got);
    return got;
}

bool FileReader::Rewind() noexcept {
    return lseek(static_cast<int>(handle_), 0, SEEK_SET) == 0;
}

// Keeps the system's code if `result` is negative.
bool FileReader::Fails(std::int64_t result) noexcept {
    if (result < 0)
        failure_ = errno;
    return result < 0;
}

void FileReader::Close() noexcept {
    Descriptor closing(static_cast<int>(handle_));
    handle_ = NoHandle;
    size_ = 0;
}

} // namespace dyadctx
