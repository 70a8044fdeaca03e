// SPDX-License-Identifier: MIT
// Locks the settings of a folder.
#pragma once

#include "platform/VELUnicodeString.h"

#include <cstdint>

namespace dyadctx {

// Held until destroyed, or until the process ends in any way. Leaves nothing in the folder.
class SettingsLock {
public:
    // Waits at most five seconds for others. May throw std::bad_alloc.
    explicit SettingsLock(const VELUnicodeString& folder);
    ~SettingsLock();
    SettingsLock(const SettingsLock&) = delete;
    SettingsLock& operator=(const SettingsLock&) = delete;

    bool IsHeld() const noexcept { return isHeld_; }
    // Why it is not held: the system's code; 0 if others held it all the time.
    int Code() const noexcept { return code_; }

private:
    static constexpr std::intptr_t NoHandle = -1;

    std::intptr_t handle_ = NoHandle;
    bool isHeld_ = false;
    int code_ = 0;
};

// Creates the folder and its parents. Returns 0, or the system's error code.
int MakeSettingsFolder(const VELUnicodeString& folder);

} // namespace dyadctx
