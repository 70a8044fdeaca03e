// SPDX-License-Identifier: MIT
#include "platform/posix/FileTarget.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <unistd.h>

namespace dyadctx {

namespace {

constexpr int MostLinks = 40;

// A number as the system writes it: digits only, no leading zero.
std::optional<int> PlainNumber(std::string_view text) {
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const bool plain = error == std::errc() && stop == end && number >= 0;
    return plain && (text.size() == 1 || text.front() != '0') ? std::optional(number)
                                                              : std::nullopt;
}

// The process whose open descriptors this folder lists.
std::optional<int> OwnerOfDescriptors(const std::string& folder) {
    constexpr std::string_view start = "/proc/";
    constexpr std::string_view ending = "/fd";
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(folder.c_str(), nullptr),
                                                           &std::free);
    std::string_view text = real != nullptr ? real.get() : "";
    if (!text.starts_with(start) || !text.ends_with(ending))
        return std::nullopt;
    text.remove_prefix(start.size());
    return PlainNumber(text.substr(0, text.find('/')));
}

std::optional<int> NamedDescriptor(const std::string& path) {
    if (path == "/dev/stdout")
        return STDOUT_FILENO;
    if (path == "/dev/stderr")
        return STDERR_FILENO;
    const std::string folder = FolderOf(path);
    if (folder != "/dev/fd/" && folder != "/proc/self/fd/")
        return std::nullopt;
    return PlainNumber(std::string_view(path).substr(folder.size()));
}

// Replaces the path with the link's target.
std::optional<Refusal> FollowLink(FileTarget& target) {
    std::array<char, 4096> text;
    const std::string folder = FolderOf(target.path);
    if (const auto process = OwnerOfDescriptors(folder)) {
        target.descriptor = PlainNumber(std::string_view(target.path).substr(folder.size()));
        if (*process == getpid() && target.descriptor)
            return Refusal{};
        return Refusal{Refusal::Kind::NotReplaceable, 0, "another process has it open"};
    }
    const ssize_t length = readlink(target.path.c_str(), text.data(), text.size());
    if (length < 0 && (errno == EINVAL || errno == ENOENT))
        return std::nullopt;
    if (length <= 0 || static_cast<std::size_t>(length) == text.size())
        return Refusal{Refusal::Kind::PathNotUsable, length < 0 ? errno : ENAMETOOLONG};
    const std::string leadsTo(text.data(), static_cast<std::size_t>(length));
    target.path = leadsTo.front() == '/' ? leadsTo : folder + leadsTo;
    return Refusal{};
}

// Follows the links at the end of the path, also to a file that does not exist yet.
std::optional<Refusal> FollowLinks(FileTarget& target) {
    for (int links = 0; links <= MostLinks; ++links) {
        target.descriptor = NamedDescriptor(target.path);
        if (target.descriptor)
            return Refusal{};
        target.exists = lstat(target.path.c_str(), &target.status) == 0;
        if (!target.exists)
            return errno == ENOENT ? Refusal{} : Refusal{Refusal::Kind::PathNotUsable, errno};
        if (!S_ISLNK(target.status.st_mode))
            return Refusal{};
        const std::optional<Refusal> followed = FollowLink(target);
        if (!followed || followed->IsRefusal() || target.descriptor)
            return followed;
    }
    return Refusal{Refusal::Kind::PathNotUsable, ELOOP};
}

// Nothing if the file disappeared.
std::optional<Refusal> CheckWritable(const FileTarget& target) {
    if (faccessat(AT_FDCWD, target.path.c_str(), W_OK, AT_EACCESS) == 0)
        return Refusal{};
    if (errno == ENOENT)
        return std::nullopt;
    return Refusal{Refusal::Kind::NotPermitted, errno};
}

} // namespace

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

bool IsSameFile(const struct stat& one, const struct stat& other) noexcept {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

std::optional<Refusal> LookAt(const std::string& path, FileTarget& target) {
    target.path = path;
    const std::optional<Refusal> followed = FollowLinks(target);
    if (!followed || followed->IsRefusal() || target.descriptor)
        return followed;
    // Compares with the system's own resolution: some links lead elsewhere than their text.
    struct stat reached {};
    const bool isReached = stat(path.c_str(), &reached) == 0;
    if (!isReached && errno != ENOENT)
        return Refusal{Refusal::Kind::PathNotUsable, errno};
    if (isReached != target.exists || (isReached && !IsSameFile(reached, target.status)))
        return std::nullopt;
    if (target.exists)
        return S_ISREG(target.status.st_mode) ? CheckWritable(target) : Refusal{};
    if (target.path.empty() || target.path.back() == '/')
        return Refusal{Refusal::Kind::PathNotUsable, ENOENT};
    return Refusal{};
}

} // namespace dyadctx
