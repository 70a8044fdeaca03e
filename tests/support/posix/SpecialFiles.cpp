// SPDX-License-Identifier: MIT
#include "support/SpecialFiles.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>

namespace dyadctx::test {

namespace {

constexpr unsigned int ModeBits = 07777;

void Require(bool done, const std::string& path) {
    if (!done)
        throw std::runtime_error("cannot prepare " + path);
}

sigset_t PipeSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    return signals;
}

} // namespace

bool MakeFifo(const std::string& path) {
    Require(mkfifo(path.c_str(), 0666) == 0, path);
    return true;
}

bool MakeLink(const std::string& target, const std::string& path) {
    Require(symlink(target.c_str(), path.c_str()) == 0, path);
    return true;
}

bool MakeSocket(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    Require(path.size() < sizeof address.sun_path, path);
    std::memcpy(address.sun_path, path.c_str(), path.size());
    const int made = socket(AF_UNIX, SOCK_STREAM, 0);
    const int bound = bind(made, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    close(made);
    Require(bound == 0, path);
    return true;
}

bool MakeBlockDevice(const std::string& path) {
    // A number that no driver has, so that there is no device.
    return mknod(path.c_str(), S_IFBLK | 0666, makedev(240, 240)) == 0;
}

OpenFile::OpenFile(const std::string& path, Way way)
    : number_(
          open(path.c_str(), (way == Way::Read ? O_RDONLY : O_WRONLY) | O_NONBLOCK | O_CLOEXEC)) {
    Require(number_ >= 0, path);
}

OpenFile OpenFile::ToClosedPipe() {
    std::array<int, 2> ends{};
    Require(pipe2(ends.data(), O_CLOEXEC) == 0, "a pipe");
    close(ends[0]);
    return OpenFile(ends[1]);
}

OpenFile::~OpenFile() {
    close(number_);
}

void OpenFile::Write(const std::string& text) const {
    Require(write(number_, text.data(), text.size()) == static_cast<ssize_t>(text.size()), text);
}

std::string OpenFile::Read(std::size_t size) const {
    std::string text(size, '\0');
    std::size_t done = 0;
    while (done < size) {
        pollfd waited{number_, POLLIN, 0};
        poll(&waited, 1, 1000);
        const ssize_t got = read(number_, text.data() + done, size - done);
        if (got == 0 || (got < 0 && errno != EAGAIN && errno != EINTR))
            break;
        done += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    text.resize(done);
    return text;
}

struct FolderLock::Held {
    int number;
};

FolderLock::FolderLock(const std::string& folder)
    : held_(new Held{open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)}) {
    Require(flock(held_->number, LOCK_EX) == 0, folder);
}

FolderLock::~FolderLock() {
    close(held_->number);
}

bool IsPipeSignalPending() {
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
}

bool IsPipeSignalBlocked() {
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    return sigismember(&blocked, SIGPIPE) == 1;
}

void RaiseBlockedPipeSignal() {
    const sigset_t signals = PipeSignal();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    raise(SIGPIPE);
}

void DropBlockedPipeSignal() {
    const sigset_t signals = PipeSignal();
    const timespec noTime{};
    sigtimedwait(&signals, nullptr, &noTime);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

FileRights RightsOf(const std::string& path) {
    struct stat status {};
    Require(stat(path.c_str(), &status) == 0, path);
    return {status.st_mode & ModeBits, status.st_uid, status.st_gid};
}

void SetRights(const std::string& path, const FileRights& rights) {
    Require(chown(path.c_str(), rights.owner, rights.group) == 0, path);
    Require(chmod(path.c_str(), rights.mode) == 0, path);
}

bool IsSuperUser() {
    return geteuid() == 0;
}

} // namespace dyadctx::test
