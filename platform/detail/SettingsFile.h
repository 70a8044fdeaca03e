// SPDX-License-Identifier: MIT
// The files of the built-in settings repositories: TOML, one per repository.
#pragma once

#include "platform/VELSysSettingRepository.h"
#include "platform/VELUnicodeString.h"

#include <functional>
#include <string>

namespace dyadctx {

// A settings folder and the environment variable that names it; empty and null if none.
struct SettingsFolder {
    VELUnicodeString path;
    const char* variable = nullptr;
};

// The folder named by VELSettingPath, else the user's.
SettingsFolder FindSettingsFolder();
// The user's settings folder.
SettingsFolder UserSettingsFolder();

// The path of a repository's file: `<repository>.toml` in the settings folder. Empty if there is no
// folder, or if the name is empty or would lead out of it.
VELUnicodeString SettingsFilePath(const VELUnicodeString& repository);

// Reads the file afresh. Refuses with NoFile only if the system reports that it does not exist.
VELSettingRefusal ReadSettingsFile(const VELUnicodeString& path, std::string& text);

// Reads a top-level string of the file afresh; on refusal `setting` is unchanged.
VELSettingRefusal FindSetting(const VELUnicodeString& path, const char* attribute,
                              VELSetting& setting);

// Replaces the file with its text as edited by `change`, under the lock of its folder. A missing
// file counts as empty; its folder is created.
using SettingsChange = std::function<VELSettingRefusal(std::string& text)>;
VELSettingRefusal ChangeSettingsFile(const VELUnicodeString& path, const SettingsChange& change);

// All of these may throw std::bad_alloc.

} // namespace dyadctx
