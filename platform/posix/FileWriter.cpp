#include "platform/detail/FileWriter.h"

#include "platform/detail/NativePath.h"
#include "platform/posix/Descriptor.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <string>
#include <sys/random.h>
#include <sys/stat.h>

namespace dyadctx {

namespace {

constexpr int MostLinks = 40;
constexpr int MostAttempts = 100;
constexpr mode_t RightsMask = 07777;
constexpr mode_t RightsOfNewFile = 0666;
constexpr mode_t RightsWhileReplacing = 0600;

struct Target {
    std::string path;
    bool exists = false;
    struct stat status {};
};

// With the separator at its end; empty for a name without folder.
std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

bool ReadLink(const std::string& path, std::string& leadsTo) {
    std::array<char, 4096> text;
    const ssize_t length = readlink(path.c_str(), text.data(), text.size());
    if (length <= 0 || static_cast<std::size_t>(length) == text.size())
        return false;
    leadsTo.assign(text.data(), static_cast<std::size_t>(length));
    return true;
}

// Follows the symbolic links at the end of the path, also to a file that does not exist yet.
bool FollowLinks(std::string& path) {
    for (int links = 0; links <= MostLinks; ++links) {
        struct stat status {};
        if (lstat(path.c_str(), &status) != 0)
            return errno == ENOENT;
        if (!S_ISLNK(status.st_mode))
            return true;
        std::string leadsTo;
        if (!ReadLink(path, leadsTo))
            return false;
        path = leadsTo.front() == '/' ? leadsTo : FolderOf(path).append(leadsTo);
    }
    return false;
}

bool IsSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool MayBeWritten(const std::string& path) {
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

// Finds the file to replace behind the links; false for what must not be replaced.
bool FindTarget(const std::string& path, Target& target) {
    struct stat status {};
    target.exists = stat(path.c_str(), &status) == 0;
    if (!target.exists && errno != ENOENT)
        return false;
    if (target.exists && !S_ISREG(status.st_mode))
        return false;
    target.path = path;
    if (!FollowLinks(target.path))
        return false;
    if (!target.exists)
        return !target.path.empty() && target.path.back() != '/';
    // The text of a link in /proc does not always lead where the link leads.
    return stat(target.path.c_str(), &target.status) == 0 && IsSameFile(status, target.status) &&
           MayBeWritten(target.path);
}

// The file that takes the new content. It stands beside the target, as only there a rename is
// atomic, and goes with this object unless it became the target.
class TemporaryFile {
public:
    TemporaryFile() = default;
    ~TemporaryFile() {
        if (!path_.empty())
            unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool Create(const std::string& folder, mode_t mode);
    bool Write(std::string_view content);
    bool TakeRightsOf(const struct stat& status);
    bool Finish();
    bool Become(const std::string& target);

private:
    std::string path_;
    Descriptor file_;
};

bool TemporaryFile::Create(const std::string& folder, mode_t mode) {
    for (int attempt = 0; attempt < MostAttempts; ++attempt) {
        std::uint64_t number = 0;
        if (getentropy(&number, sizeof number) != 0)
            return false;
        std::array<char, 40> name;
        std::snprintf(name.data(), name.size(), ".dyadctx-%016llx.tmp",
                      static_cast<unsigned long long>(number));
        std::string path = folder + name.data();
        file_ = Descriptor(
            open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
        if (file_.IsOpen()) {
            path_.swap(path);
            return true;
        }
        if (errno != EEXIST && errno != EINTR)
            return false;
    }
    return false;
}

bool TemporaryFile::Write(std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(file_.Get(), content.data(), content.size());
        if (written > 0)
            content.remove_prefix(static_cast<std::size_t>(written));
        else if (written == 0 || errno != EINTR)
            return false;
    }
    return true;
}

bool TemporaryFile::TakeRightsOf(const struct stat& status) {
    struct stat own {};
    if (fstat(file_.Get(), &own) != 0)
        return false;
    const bool sameOwner = own.st_uid == status.st_uid && own.st_gid == status.st_gid;
    // The owner first: changing it clears bits of the mode.
    return (sameOwner || fchown(file_.Get(), status.st_uid, status.st_gid) == 0) &&
           fchmod(file_.Get(), status.st_mode & RightsMask) == 0;
}

// Sees to it that the content has reached the disk before the name leads to it.
bool TemporaryFile::Finish() {
    int result = -1;
    do {
        result = fsync(file_.Get());
    } while (result != 0 && errno == EINTR);
    return result == 0 && file_.Close();
}

bool TemporaryFile::Become(const std::string& target) {
    if (rename(path_.c_str(), target.c_str()) != 0)
        return false;
    path_.clear();
    return true;
}

// Makes the rename last. Not every file system can do that, and a folder may be writable without
// being readable; the new file is whole in any case, so a failure here changes nothing.
void FlushFolder(const std::string& folder) {
    const Descriptor opened(
        open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.IsOpen())
        fsync(opened.Get());
}

bool Replace(const Target& target, std::string_view content) {
    const std::string folder = FolderOf(target.path);
    TemporaryFile file;
    if (!file.Create(folder, target.exists ? RightsWhileReplacing : RightsOfNewFile))
        return false;
    if (!file.Write(content))
        return false;
    if (target.exists && !file.TakeRightsOf(target.status))
        return false;
    if (!file.Finish() || !file.Become(target.path))
        return false;
    FlushFolder(folder);
    return true;
}

} // namespace

VELResult ReplaceFile(const VELUnicodeString& path, std::string_view content) noexcept {
    try {
        const auto native = NativePath(path.AsView());
        Target target;
        if (!native || !FindTarget(*native, target))
            return E_FAIL;
        return Replace(target, content) ? S_OK : E_FAIL;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

} // namespace dyadctx
