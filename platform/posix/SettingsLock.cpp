// SPDX-License-Identifier: MIT
#include "platform/detail/SettingsLock.h"

#include "platform/detail/NativePath.h"
#include "platform/posix/Descriptor.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <system_error>
#include <thread>

namespace dyadctx {

namespace {

constexpr std::chrono::seconds LongestWait(5);
constexpr std::chrono::milliseconds BetweenAttempts(5);

} // namespace

SettingsLock::SettingsLock(const VELUnicodeString& folder) {
    const auto native = NativePath(folder.AsView());
    if (!native) {
        code_ = EINVAL;
        return;
    }
    Descriptor opened(open(native->c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.IsOpen()) {
        code_ = errno;
        return;
    }
    const auto end = std::chrono::steady_clock::now() + LongestWait;
    while (flock(opened.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            code_ = errno;
            return;
        }
        if (std::chrono::steady_clock::now() >= end)
            return;
        std::this_thread::sleep_for(BetweenAttempts);
    }
    isHeld_ = true;
    handle_ = opened.Release();
}

SettingsLock::~SettingsLock() {
    // Closing releases the lock.
    const Descriptor closing(static_cast<int>(handle_));
}

int MakeSettingsFolder(const VELUnicodeString& folder) {
    const auto native = NativePath(folder.AsView());
    std::error_code error;
    if (native)
        std::filesystem::create_directories(*native, error);
    return native ? error.value() : EINVAL;
}

} // namespace dyadctx
