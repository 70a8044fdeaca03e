// SPDX-License-Identifier: MIT
#include "platform/VELFileSystem.h"

#include "platform/detail/NativePath.h"

#include <exception>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int Failed = -1;
constexpr int WriteAndRead = 2 | 4;

// The raw type bits overlap: a socket's contain both of ours.
unsigned int ModeOf(const struct stat& status) {
    if (S_ISDIR(status.st_mode))
        return VELFileInfo::Directory;
    return S_ISREG(status.st_mode) ? VELFileInfo::RegularFile : 0;
}

int SystemMode(int mode) {
    const int write = (mode & 2) != 0 ? W_OK : 0;
    const int read = (mode & 4) != 0 ? R_OK : 0;
    return mode == 0 ? F_OK : write | read;
}

} // namespace

int VELGetFileInfo(const VELUnicodeString& path, VELFileInfo& info) {
    info.mode = 0;
    try {
        const auto native = dyadctx::NativePath(path.AsView());
        struct stat status {};
        if (!native || stat(native->c_str(), &status) != 0)
            return Failed;
        info.mode = ModeOf(status);
        return 0;
    } catch (const std::exception&) {
        return Failed;
    }
}

int VELFileAccess(const VELUnicodeString& path, int mode) {
    if ((mode & ~WriteAndRead) != 0)
        return Failed;
    try {
        const auto native = dyadctx::NativePath(path.AsView());
        if (!native)
            return Failed;
        return faccessat(AT_FDCWD, native->c_str(), SystemMode(mode), AT_EACCESS) == 0 ? 0 : Failed;
    } catch (const std::exception&) {
        return Failed;
    }
}

int _VELFileAccess(const VELUnicodeString& path, int mode, int) {
    return VELFileAccess(path, mode);
}
