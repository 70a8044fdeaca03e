#include "platform/VELFileSystem.h"

#include "platform/windows/WindowsApi.h"

#include <exception>

namespace {

constexpr int Failed = -1;
constexpr int MayWrite = 2;
constexpr int MayRead = 4;

// Names such as "\\.\pipe\x": opening one can already wake another process.
bool IsDeviceName(const std::wstring& path) {
    return path.starts_with(L"\\\\.\\");
}

// Opens a file or folder, following links. With `access` 0, only for its attributes.
HANDLE OpenExisting(const std::wstring& path, DWORD access) {
    if (IsDeviceName(path))
        return INVALID_HANDLE_VALUE;
    return CreateFileW(path.c_str(), access, dyadctx::ShareAll, nullptr, OPEN_EXISTING,
                       FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

unsigned int ModeOf(HANDLE file, const BY_HANDLE_FILE_INFORMATION& description) {
    if (GetFileType(file) != FILE_TYPE_DISK)
        return 0;
    const bool isFolder = (description.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return isFolder ? VELFileInfo::Directory : VELFileInfo::RegularFile;
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
        const dyadctx::Handle file(OpenExisting(*native, 0));
        BY_HANDLE_FILE_INFORMATION description{};
        if (!file.IsOpen() || GetFileInformationByHandle(file.Get(), &description) == 0)
            return Failed;
        info.mode = ModeOf(file.Get(), description);
        return 0;
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
        const dyadctx::Handle file(OpenExisting(*native, SystemAccess(mode)));
        return file.IsOpen() ? 0 : Failed;
    } catch (const std::exception&) {
        return Failed;
    }
}

int _VELFileAccess(const VELUnicodeString& path, int mode, int) {
    return VELFileAccess(path, mode);
}
