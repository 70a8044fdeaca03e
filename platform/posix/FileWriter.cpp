// SPDX-License-Identifier: MIT
#include "platform/VELFileSystem.h"

#include "platform/detail/NativePath.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/FileTarget.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <exception>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/random.h>

namespace dyadctx {

namespace {

using Kind = Refusal::Kind;

constexpr int MostLooks = 100;
constexpr int MostAttempts = 100;
constexpr mode_t RightsMask = 07777;
constexpr mode_t SetIdBits = S_ISUID | S_ISGID;
constexpr mode_t RightsOfNewFile = 0666;
constexpr mode_t RightsWhileReplacing = 0600;

Refusal NotWritten() {
    return {Kind::NotWritten, errno};
}

// Waits on a non-blocking descriptor that is full.
bool WaitUntilWritable(int descriptor) {
    pollfd waited{descriptor, POLLOUT, 0};
    return poll(&waited, 1, -1) >= 0 || errno == EINTR;
}

Refusal WriteAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(descriptor, content.data(), content.size());
        if (written > 0)
            content.remove_prefix(static_cast<std::size_t>(written));
        else if (written == 0)
            return {Kind::NotWritten, ENOSPC};
        else if (errno == EAGAIN ? !WaitUntilWritable(descriptor) : errno != EINTR)
            return NotWritten();
    }
    return {};
}

// ---- Replacing a regular file ---------------------------------------------------------------

// The temporary file with the new content: next to the target, as only there a rename is atomic.
// Removed with this object unless it became the target.
class TemporaryFile {
public:
    TemporaryFile() = default;
    ~TemporaryFile() {
        if (!path_.empty())
            unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    Refusal Create(const std::string& folder, mode_t mode);
    Refusal Write(std::string_view content) { return WriteAll(file_.Get(), content); }
    Refusal TakeRightsOf(const struct stat& status);
    Refusal Finish();
    Refusal Become(const std::string& target);

private:
    std::string path_;
    Descriptor file_;
};

Refusal FolderRefusal() {
    switch (errno) {
    case EACCES:
    case EPERM:
    case EROFS:
        return {Kind::FolderNotPermitted, errno, "the folder permits no new file"};
    case ENOENT:
    case ENOTDIR:
        return {Kind::PathNotUsable, errno, "the folder does not exist"};
    default:
        return NotWritten();
    }
}

Refusal TemporaryFile::Create(const std::string& folder, mode_t mode) {
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    for (int attempt = 0; attempt < MostAttempts; ++attempt) {
        std::uint64_t number = 0;
        if (getentropy(&number, sizeof number) != 0)
            return NotWritten();
        std::array<char, 40> name;
        std::snprintf(name.data(), name.size(), ".dyadctx-%016llx.tmp",
                      static_cast<unsigned long long>(number));
        std::string path = folder + name.data();
        file_ = Descriptor(open(path.c_str(), flags, mode));
        if (file_.IsOpen()) {
            path_.swap(path);
            return {};
        }
        if (errno != EEXIST && errno != EINTR)
            return FolderRefusal();
    }
    return NotWritten();
}

// Nobody may gain a right this way.
mode_t RightsToKeep(mode_t mode, bool ownerKept, bool groupKept) {
    mode_t rights = mode & RightsMask;
    if (!ownerKept || !groupKept)
        rights &= ~SetIdBits;
    if (!groupKept) {
        // Former members of the group now count as others.
        const mode_t others = rights & (rights >> 3U) & S_IRWXO;
        rights = (rights & ~static_cast<mode_t>(S_IRWXG | S_IRWXO)) | others;
    }
    return rights;
}

// Changes the owner and group; `kept` is whether that worked.
Refusal GiveTo(int file, uid_t owner, gid_t group, bool& kept) {
    kept = fchown(file, owner, group) == 0;
    // EINVAL: the owner is unknown in this user namespace.
    return kept || errno == EPERM || errno == EINVAL ? Refusal{} : NotWritten();
}

Refusal TemporaryFile::TakeRightsOf(const struct stat& status) {
    struct stat own {};
    if (fstat(file_.Get(), &own) != 0)
        return NotWritten();
    bool ownerKept = own.st_uid == status.st_uid;
    bool groupKept = own.st_gid == status.st_gid;
    if (!ownerKept || !groupKept) {
        bool bothKept = false;
        const Refusal refusal = GiveTo(file_.Get(), status.st_uid, status.st_gid, bothKept);
        if (refusal.IsRefusal())
            return refusal;
        ownerKept = ownerKept || bothKept;
        groupKept = groupKept || bothKept;
    }
    if (!groupKept) {
        const Refusal refusal =
            GiveTo(file_.Get(), static_cast<uid_t>(-1), status.st_gid, groupKept);
        if (refusal.IsRefusal())
            return refusal;
    }
    // Last, as changing the owner clears mode bits.
    const mode_t rights = RightsToKeep(status.st_mode, ownerKept, groupKept);
    return fchmod(file_.Get(), rights) == 0 ? Refusal{} : NotWritten();
}

// Flushes the content to disk before the name leads to it.
Refusal TemporaryFile::Finish() {
    int result = -1;
    do {
        result = fsync(file_.Get());
    } while (result != 0 && errno == EINTR);
    return result == 0 && file_.Close() ? Refusal{} : NotWritten();
}

Refusal TemporaryFile::Become(const std::string& target) {
    if (rename(path_.c_str(), target.c_str()) != 0) {
        if (errno == EPERM || errno == EACCES)
            return {Kind::FolderNotPermitted, errno,
                    "the folder does not permit to replace the file"};
        return NotWritten();
    }
    path_.clear();
    return {};
}

// Makes the rename durable. A failure is ignored: not every file system supports this, the folder
// may be unreadable, and the new file is complete in any case.
void FlushFolder(const std::string& folder) {
    const Descriptor opened(
        open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.IsOpen())
        fsync(opened.Get());
}

Refusal Replace(const FileTarget& target, std::string_view content) {
    const std::string folder = FolderOf(target.path);
    TemporaryFile file;
    Refusal refusal = file.Create(folder, target.exists ? RightsWhileReplacing : RightsOfNewFile);
    if (!refusal.IsRefusal())
        refusal = file.Write(content);
    if (!refusal.IsRefusal() && target.exists)
        refusal = file.TakeRightsOf(target.status);
    if (!refusal.IsRefusal())
        refusal = file.Finish();
    if (!refusal.IsRefusal())
        refusal = file.Become(target.path);
    if (!refusal.IsRefusal())
        FlushFolder(folder);
    return refusal;
}

// ---- Writing directly -----------------------------------------------------------------------

// Blocks SIGPIPE in the calling thread, so that a reader that goes away fails the write instead of
// ending the process.
class PipeSignalHeldBack {
public:
    PipeSignalHeldBack() {
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &pipe_, &former_);
    }
    ~PipeSignalHeldBack() {
        // Consumes only the signal raised by the write, not one that was already pending.
        const timespec noTime{};
        while (!wasPending_ && sigtimedwait(&pipe_, nullptr, &noTime) < 0 && errno == EINTR) {
        }
        pthread_sigmask(SIG_SETMASK, &former_, nullptr);
    }
    PipeSignalHeldBack(const PipeSignalHeldBack&) = delete;
    PipeSignalHeldBack& operator=(const PipeSignalHeldBack&) = delete;

private:
    sigset_t pipe_;
    sigset_t former_;
    bool wasPending_ = false;
};

Refusal WriteAndClose(Descriptor file, std::string_view content) {
    const PipeSignalHeldBack held;
    const Refusal refusal = WriteAll(file.Get(), content);
    if (refusal.IsRefusal())
        return refusal;
    return file.Close() ? Refusal{} : NotWritten();
}

Refusal WriteToDescriptor(int number, std::string_view content) {
    // Above the standard streams: a closed one must not be reused for the copy.
    Descriptor copy(fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    if (!copy.IsOpen())
        return {Kind::PathNotUsable, errno};
    return WriteAndClose(std::move(copy), content);
}

Refusal OpeningRefusal(const FileTarget& target) {
    if (errno == ENXIO && S_ISFIFO(target.status.st_mode))
        return {Kind::NoReader, 0, "nobody reads from it"};
    if (errno == EACCES || errno == EPERM || errno == EROFS)
        return {Kind::NotPermitted, errno};
    return NotWritten();
}

// Nothing if something else replaced the device or FIFO.
std::optional<Refusal> WriteToDevice(const FileTarget& target, std::string_view content) {
    constexpr int flags = O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    Descriptor device(open(target.path.c_str(), flags));
    if (!device.IsOpen())
        return errno == ENOENT ? std::nullopt : std::optional(OpeningRefusal(target));
    struct stat opened {};
    if (fstat(device.Get(), &opened) != 0)
        return NotWritten();
    if (!IsSameFile(opened, target.status))
        return std::nullopt;
    return WriteAndClose(std::move(device), content);
}

// ---- Which of the two -----------------------------------------------------------------------

const char* WhyNotReplaceable(mode_t mode) {
    if (S_ISDIR(mode))
        return "it is a folder";
    return S_ISSOCK(mode) ? "it is a socket" : "it is a block device";
}

std::optional<Refusal> WriteTo(const FileTarget& target, std::string_view content) {
    if (target.descriptor)
        return WriteToDescriptor(*target.descriptor, content);
    const mode_t mode = target.status.st_mode;
    if (!target.exists || S_ISREG(mode))
        return Replace(target, content);
    if (S_ISCHR(mode) || S_ISFIFO(mode))
        return WriteToDevice(target, content);
    return Refusal{Kind::NotReplaceable, 0, WhyNotReplaceable(mode)};
}

// If others change the target between two looks, looks again.
Refusal PutContent(const std::string& path, std::string_view content) {
    for (int look = 0; look < MostLooks; ++look) {
        FileTarget target;
        std::optional<Refusal> result = LookAt(path, target);
        if (result && !result->IsRefusal())
            result = WriteTo(target, content);
        if (result)
            return *result;
    }
    return {Kind::NotReplaceable, 0, "it is another file at each look"};
}

} // namespace

} // namespace dyadctx

VELResult VELReplaceFile(const VELUnicodeString& path, std::string_view content,
                         VELFileRefusal* refusal) noexcept {
    using dyadctx::Refusal;
    try {
        const auto native = dyadctx::NativePath(path.AsView());
        if (!native)
            return dyadctx::Answer({Refusal::Kind::PathNotUsable, EINVAL}, refusal);
        return dyadctx::Answer(dyadctx::PutContent(*native, content), refusal);
    } catch (const std::exception&) {
        return dyadctx::Answer({Refusal::Kind::NoMemory, 0, "out of memory"}, refusal);
    }
}
