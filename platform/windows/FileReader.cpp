// SPDX-License-Identifier: MIT
#include "platform/detail/FileReader.h"

#include "platform/VELFileSystem.h"
#include "platform/windows/WindowsApi.h"

#include <algorithm>

namespace dyadctx {

namespace {

// The most bytes requested per system call.
constexpr std::size_t LargestRead = std::size_t{1} << 30;

HANDLE ToHandle(std::intptr_t value) noexcept {
    return reinterpret_cast<HANDLE>(value);
}

} // namespace

FileReader::~FileReader() {
    Close();
}

bool FileReader::Open(const VELUnicodeString& path) {
    Close();
    unsigned int mode = 0;
    const auto native = WidePath(path.AsView());
    failure_ = native ? 0 : ERROR_INVALID_NAME;
    if (!native || Fails(FindMode(*native, mode) ? 0 : -1) || mode != VELFileInfo::RegularFile)
        return false;
    Handle file(CreateFileW(native->c_str(), GENERIC_READ, ShareAll, nullptr, OPEN_EXISTING,
                            FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    LARGE_INTEGER size{};
    if (Fails(file.IsOpen() ? 0 : -1) || GetFileType(file.Get()) != FILE_TYPE_DISK ||
        Fails(GetFileSizeEx(file.Get(), &size) != 0 ? 0 : -1))
        return false;
    size_ = static_cast<std::uint64_t>(size.QuadPart);
    handle_ = reinterpret_cast<std::intptr_t>(file.Release());
    return true;
}

std::int64_t FileReader::Read(void* buffer, std::size_t size) noexcept {
    DWORD got = 0;
    const auto wanted = static_cast<DWORD>(std::min(size, LargestRead));
    const bool isRead =
        handle_ != NoHandle && ::ReadFile(ToHandle(handle_), buffer, wanted, &got, nullptr) != 0;
    return Fails(isRead ? 0 : -1) ? -1 : static_cast<std::int64_t>(got);
}

// Keeps the system's code if `result` is negative.
bool FileReader::Fails(std::int64_t result) noexcept {
    if (result < 0)
        failure_ = static_cast<int>(GetLastError());
    return result < 0;
}

bool FileReader::Rewind() noexcept {
    return handle_ != NoHandle && SetFilePointerEx(ToHandle(handle_), {}, nullptr, FILE_BEGIN) != 0;
}

void FileReader::Close() noexcept {
    if (handle_ != NoHandle)
        CloseHandle(ToHandle(handle_));
    handle_ = NoHandle;
    size_ = 0;
}

} // namespace dyadctx
