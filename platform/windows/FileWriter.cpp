#include "platform/detail/FileWriter.h"

#include "platform/VELFileSystem.h"
#include "platform/windows/WindowsApi.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cwchar>
#include <exception>
#include <random>

namespace dyadctx {

namespace {

constexpr int MostAttempts = 100;
constexpr std::size_t LargestWrite = std::size_t{1} << 30;
constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct Target {
    std::wstring path;
    bool exists = false;
};

// With the separator at its end; empty for a name without folder.
std::wstring FolderOf(const std::wstring& path) {
    return path.substr(0, path.rfind(L'\\') + 1);
}

// The path of an existing file behind the links that lead to it.
bool FollowLinks(std::wstring& path) {
    const Handle file(CreateFileW(path.c_str(), 0, ShareAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file.IsOpen())
        return false;
    const DWORD needed = GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED);
    std::wstring found(needed, L'\0');
    const DWORD length =
        GetFinalPathNameByHandleW(file.Get(), found.data(), needed, FILE_NAME_NORMALIZED);
    if (length == 0 || length >= needed)
        return false;
    found.resize(length);
    path.swap(found);
    return true;
}

// Finds the file to replace behind the links; false for what must not be replaced.
bool FindTarget(const VELUnicodeString& path, Target& target) {
    auto native = WidePath(path.AsView());
    if (!native || native->empty() || native->back() == L'\\')
        return false;
    target.path.swap(*native);
    VELFileInfo info;
    target.exists = VELGetFileInfo(path, info) == 0;
    if (!target.exists) {
        const DWORD attributes = GetFileAttributesW(target.path.c_str());
        // What is there and yet cannot be described, such as a link that leads nowhere, is left.
        return attributes == INVALID_FILE_ATTRIBUTES;
    }
    return info.mode == VELFileInfo::RegularFile && VELFileAccess(path, 2) == 0 &&
           FollowLinks(target.path);
}

// The file that takes the new content. It stands beside the target, as only there taking its place
// is atomic, and goes with this object unless it became the target.
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

    bool Create(const std::wstring& folder);
    bool Write(std::string_view content);
    bool Finish();
    bool Become(const Target& target);

private:
    std::wstring path_;
    Handle file_;
};

bool TemporaryFile::Create(const std::wstring& folder) {
    std::random_device random;
    for (int attempt = 0; attempt < MostAttempts; ++attempt) {
        std::array<wchar_t, 40> name;
        std::swprintf(name.data(), name.size(), L".dyadctx-%08x%08x.tmp", random(), random());
        std::wstring path = folder + name.data();
        file_.Reset(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file_.IsOpen()) {
            path_.swap(path);
            return true;
        }
        if (GetLastError() != ERROR_FILE_EXISTS)
            return false;
    }
    return false;
}

bool TemporaryFile::Write(std::string_view content) {
    while (!content.empty()) {
        DWORD written = 0;
        const auto wanted = static_cast<DWORD>(std::min(content.size(), LargestWrite));
        if (WriteFile(file_.Get(), content.data(), wanted, &written, nullptr) == 0 || written == 0)
            return false;
        content.remove_prefix(written);
    }
    return true;
}

// Sees to it that the content has reached the disk before the name leads to it.
bool TemporaryFile::Finish() {
    return FlushFileBuffers(file_.Get()) != 0 && file_.Close();
}

// Taking the place of an existing file hands on its owner, rights and attributes.
bool TemporaryFile::Become(const Target& target) {
    const BOOL done =
        target.exists
            ? ReplaceFileW(target.path.c_str(), path_.c_str(), nullptr, 0, nullptr, nullptr)
            : MoveFileExW(path_.c_str(), target.path.c_str(), MOVEFILE_WRITE_THROUGH);
    if (done == 0)
        return false;
    path_.clear();
    return true;
}

} // namespace

VELResult ReplaceFile(const VELUnicodeString& path, std::string_view content) noexcept {
    try {
        Target target;
        TemporaryFile file;
        const bool done = FindTarget(path, target) && file.Create(FolderOf(target.path)) &&
                          file.Write(content) && file.Finish() && file.Become(target);
        return done ? S_OK : E_FAIL;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

} // namespace dyadctx
