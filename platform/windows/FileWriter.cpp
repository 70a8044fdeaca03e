// SPDX-License-Identifier: MIT
#include "platform/VELFileSystem.h"

#include "platform/detail/FileRefusal.h"
#include "platform/windows/WindowsApi.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cwchar>
#include <exception>
#include <random>
#include <vector>

namespace dyadctx {

namespace {

using Kind = Refusal::Kind;

constexpr int MostAttempts = 100;
// Milliseconds to wait for others that have the file open: 15, 30, 60, ... and 945 in all.
constexpr DWORD FirstPause = 15;
constexpr DWORD LongestWait = 1000;
constexpr std::size_t LargestWrite = std::size_t{1} << 30;

struct Target {
    std::wstring path;
    bool exists = false;
    // An open stream, device or pipe to write directly.
    Handle stream;
};

Refusal SystemRefusal(Kind kind, const char* what = nullptr) {
    return {kind, static_cast<int>(GetLastError()), what};
}

Refusal WriteAll(HANDLE file, std::string_view content) {
    while (!content.empty()) {
        DWORD written = 0;
        const auto wanted = static_cast<DWORD>(std::min(content.size(), LargestWrite));
        if (WriteFile(file, content.data(), wanted, &written, nullptr) == 0)
            return SystemRefusal(Kind::NotWritten);
        if (written == 0)
            return {Kind::NotWritten, ERROR_DISK_FULL};
        content.remove_prefix(written);
    }
    return {};
}

// ---- Where the path leads -------------------------------------------------------------------

// With trailing separator; empty for a name without folder.
std::wstring FolderOf(const std::wstring& path) {
    return path.substr(0, path.rfind(L'\\') + 1);
}

// The number for GetStdHandle; 0 if the path is not a standard stream.
DWORD StandardStream(const std::wstring& path) {
    if (path == L"\\dev\\stdout" || path == L"\\dev\\fd\\1")
        return STD_OUTPUT_HANDLE;
    return path == L"\\dev\\stderr" || path == L"\\dev\\fd\\2" ? STD_ERROR_HANDLE : 0;
}

Refusal OpenStandardStream(DWORD number, Target& target) {
    HANDLE copy = INVALID_HANDLE_VALUE;
    if (DuplicateHandle(GetCurrentProcess(), GetStdHandle(number), GetCurrentProcess(), &copy, 0,
                        FALSE, DUPLICATE_SAME_ACCESS) == 0)
        return SystemRefusal(Kind::PathNotUsable);
    target.stream.Reset(copy);
    return {};
}

// Never waits for the other end of a pipe.
Refusal OpenDevice(Target& target) {
    target.stream.Reset(CreateFileW(target.path.c_str(), GENERIC_WRITE, ShareAll, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
    if (!target.stream.IsOpen())
        return SystemRefusal(Kind::NoReader, "nobody reads from it");
    if (GetFileType(target.stream.Get()) == FILE_TYPE_DISK)
        return {Kind::NotReplaceable, 0, "it is a block device"};
    return {};
}

// The path of an existing file with links followed.
Refusal FollowLinks(HANDLE file, std::wstring& path) {
    auto found = FinalPath(file);
    if (!found)
        return SystemRefusal(Kind::PathNotUsable);
    path.swap(*found);
    return {};
}

Refusal LookAtExisting(HANDLE file, Target& target) {
    BY_HANDLE_FILE_INFORMATION description{};
    if (GetFileType(file) != FILE_TYPE_DISK)
        return OpenDevice(target);
    if (GetFileInformationByHandle(file, &description) == 0)
        return SystemRefusal(Kind::PathNotUsable);
    if ((description.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return {Kind::NotReplaceable, 0, "it is a folder"};
    if ((description.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0)
        return {Kind::NotPermitted, ERROR_ACCESS_DENIED};
    const Handle writable(CreateFileW(target.path.c_str(), FILE_WRITE_DATA, ShareAll, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    if (!writable.IsOpen() && GetLastError() != ERROR_SHARING_VIOLATION)
        return SystemRefusal(Kind::NotPermitted);
    target.exists = true;
    const DWORD own = GetFileAttributesW(target.path.c_str());
    const bool isLink = own != INVALID_FILE_ATTRIBUTES && (own & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    return isLink ? FollowLinks(file, target.path) : Refusal{};
}

// Follows links to the file to replace, or opens the stream to write.
Refusal LookAt(const VELUnicodeString& path, Target& target) {
    auto native = WidePath(path.AsView());
    if (!native || native->empty())
        return {Kind::PathNotUsable, ERROR_INVALID_NAME};
    if (native->back() == L'\\') {
        const bool isThere = GetFileAttributesW(native->c_str()) != INVALID_FILE_ATTRIBUTES;
        return isThere ? Refusal{Kind::NotReplaceable, 0, "it is a folder"}
                       : Refusal{Kind::PathNotUsable, ERROR_INVALID_NAME};
    }
    const DWORD standard = StandardStream(*native);
    if (standard != 0)
        return OpenStandardStream(standard, target);
    // "D:a.xml" is in the current folder of that drive, and so is what is written beside it.
    target.path = FullPath(*native);
    if (IsDeviceName(target.path))
        return OpenDevice(target);
    const Handle file(CreateFileW(target.path.c_str(), 0, ShareAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (file.IsOpen())
        return LookAtExisting(file.Get(), target);
    const Refusal refusal = SystemRefusal(Kind::PathNotUsable);
    // Something exists but cannot be opened, such as a broken link: refused.
    const bool isThere = GetFileAttributesW(target.path.c_str()) != INVALID_FILE_ATTRIBUTES;
    if (refusal.code == ERROR_PATH_NOT_FOUND && !isThere)
        return {Kind::PathNotUsable, refusal.code, "the folder does not exist"};
    return isThere || refusal.code != ERROR_FILE_NOT_FOUND ? refusal : Refusal{};
}

// ---- Replacing a regular file ---------------------------------------------------------------

// The temporary file with the new content: next to the target, as only there replacing is atomic.
// Removed with this object unless it became the target.
class TemporaryFile {
public:
    TemporaryFile() = default;
    ~TemporaryFile() {
        file_.Close();
        if (!path_.empty())
            DeleteFileW(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    Refusal Create(const std::wstring& folder);
    Refusal Write(std::string_view content) { return WriteAll(file_.Get(), content); }
    Refusal TakeRightsOf(const std::wstring& path);
    Refusal Finish();
    Refusal Become(const Target& target);

private:
    std::wstring path_;
    Handle file_;
};

Refusal TemporaryFile::Create(const std::wstring& folder) {
    std::random_device random;
    for (int attempt = 0; attempt < MostAttempts; ++attempt) {
        std::array<wchar_t, 40> name;
        std::swprintf(name.data(), name.size(), L".dyadctx-%08x%08x.tmp", random(), random());
        std::wstring path = folder + name.data();
        file_.Reset(CreateFileW(path.c_str(), GENERIC_WRITE | WRITE_DAC, 0, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file_.IsOpen()) {
            path_.swap(path);
            return {};
        }
        const DWORD code = GetLastError();
        if (code == ERROR_PATH_NOT_FOUND)
            return SystemRefusal(Kind::PathNotUsable, "the folder does not exist");
        if (code == ERROR_ACCESS_DENIED)
            return SystemRefusal(Kind::FolderNotPermitted, "the folder permits no new file");
        if (code != ERROR_FILE_EXISTS)
            break;
    }
    return SystemRefusal(Kind::NotWritten);
}

// Flushes the content to disk before the name leads to it.
Refusal TemporaryFile::Finish() {
    const bool done = FlushFileBuffers(file_.Get()) != 0 && file_.Close();
    return done ? Refusal{} : SystemRefusal(Kind::NotWritten);
}

// Nobody may gain a right this way. A file system without access lists has none to keep.
Refusal TemporaryFile::TakeRightsOf(const std::wstring& path) {
    constexpr SECURITY_INFORMATION what = DACL_SECURITY_INFORMATION;
    DWORD size = 0;
    GetFileSecurityW(path.c_str(), what, nullptr, 0, &size);
    std::vector<char> rights(size);
    const bool areKnown =
        size > 0 && GetFileSecurityW(path.c_str(), what, rights.data(), size, &size) != 0;
    if (areKnown && SetKernelObjectSecurity(file_.Get(), what, rights.data()) == 0)
        return SystemRefusal(Kind::NotPermitted);
    return areKnown || GetLastError() == ERROR_NOT_SUPPORTED ? Refusal{}
                                                             : SystemRefusal(Kind::NotPermitted);
}

// At once for everyone who looks.
bool MoveOver(const std::wstring& from, const Target& target) {
    const DWORD attributes = GetFileAttributesW(target.path.c_str());
    if (target.exists && attributes != INVALID_FILE_ATTRIBUTES)
        SetFileAttributesW(from.c_str(), attributes);
    return MoveFileExW(from.c_str(), target.path.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

bool IsHeldByOthers(DWORD code) {
    return code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION ||
           code == ERROR_ACCESS_DENIED;
}

// A scanner for viruses or an indexer has a file for a moment only; an editor keeps it.
Refusal TemporaryFile::Become(const Target& target) {
    DWORD pause = FirstPause;
    for (DWORD waited = 0; !MoveOver(path_, target); waited += pause, pause *= 2) {
        const DWORD code = GetLastError();
        if (!IsHeldByOthers(code))
            return SystemRefusal(Kind::NotWritten);
        if (waited + pause > LongestWait)
            return {Kind::NotReplaceable, static_cast<int>(code), "another program has it open"};
        Sleep(pause);
    }
    path_.clear();
    return {};
}

Refusal Replace(const Target& target, std::string_view content) {
    TemporaryFile file;
    Refusal refusal = file.Create(FolderOf(target.path));
    if (!refusal.IsRefusal())
        refusal = file.Write(content);
    if (!refusal.IsRefusal() && target.exists)
        refusal = file.TakeRightsOf(target.path);
    if (!refusal.IsRefusal())
        refusal = file.Finish();
    return refusal.IsRefusal() ? refusal : file.Become(target);
}

Refusal PutContent(const VELUnicodeString& path, std::string_view content) {
    Target target;
    Refusal refusal = LookAt(path, target);
    if (refusal.IsRefusal())
        return refusal;
    if (!target.stream.IsOpen())
        return Replace(target, content);
    refusal = WriteAll(target.stream.Get(), content);
    if (!refusal.IsRefusal() && !target.stream.Close())
        refusal = SystemRefusal(Kind::NotWritten);
    return refusal;
}

} // namespace

} // namespace dyadctx

VELResult VELReplaceFile(const VELUnicodeString& path, std::string_view content,
                         VELFileRefusal* refusal) noexcept {
    using dyadctx::Refusal;
    try {
        return dyadctx::Answer(dyadctx::PutContent(path, content), refusal);
    } catch (const std::exception&) {
        return dyadctx::Answer({Refusal::Kind::NoMemory, 0, "out of memory"}, refusal);
    }
}
