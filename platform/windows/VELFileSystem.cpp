// SPDX-License-Identifier: MIT
#include "platform/VELFileSystem.h"

#include "platform/windows/WindowsApi.h"

#include <exception>

namespace {

constexpr int Failed = -1;
constexpr int MayWrite = 2;
constexpr int MayRead = 4;

// The attribute means nothing for a folder.
bool IsReadOnlyFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    constexpr DWORD both = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & both) == FILE_ATTRIBUTE_READONLY;
}

DWORD SystemAccess(int mode) {
    const DWORD write = (mode & MayWrite) != 0 ? FILE_WRITE_DATA : 0;
    const DWORD read = (mode & MayRead) != 0 ? FILE_READ_DATA : 0;
    return write | read;
}

} // namespace

int VELGetFileInfo(const VELUnicodeString& path, VELFileInfo& info) {
    info.mode = 0;
    try {
        const auto native = dyadctx::WidePath(path.AsView());
        if (!native)
            return Failed;
        return dyadctx::FindMode(*native, info.mode) ? 0 : Failed;
    } catch (const std::exception&) {
        return Failed;
    }
}

int VELFileAccess(const VELUnicodeString& path, int mode) {
    if ((mode & ~(MayWrite | MayRead)) != 0)
        return Failed;
    try {
        const auto native = dyadctx::WidePath(path.AsView());
        if (!native)
            return Failed;
        if ((mode & MayWrite) != 0 && IsReadOnlyFile(*native))
            return Failed;
        const dyadctx::Handle file(dyadctx::OpenExisting(*native, SystemAccess(mode)));
        return file.IsOpen() ? 0 : Failed;
    } catch (const std::exception&) {
        return Failed;
    }
}

int _VELFileAccess(const VELUnicodeString& path, int mode, int) {
    return VELFileAccess(path, mode);
}
