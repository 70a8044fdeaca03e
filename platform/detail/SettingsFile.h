// The files behind the built-in settings repositories: TOML, one file per repository.
#pragma once

#include "platform/VELSysSettingRepository.h"
#include "platform/VELUnicodeString.h"

#include <functional>
#include <string>

namespace dyadctx {

// A folder of settings, and the environment variable it comes from; empty and null without one.
struct SettingsFolder {
    VELUnicodeString path;
    const char* variable = nullptr;
};

// The folder that VELSettingPath names, else that of the user.
SettingsFolder FindSettingsFolder();
// The folder of the user's settings.
SettingsFolder UserSettingsFolder();

// The file of a repository: `<repository>.toml` in the folder named by VELSettingPath, else in the
// user's folder. Empty when there is no folder, or when the name is empty or would lead out of it.
VELUnicodeString SettingsFilePath(const VELUnicodeString& repository);

// The text of the file, read afresh. Refuses with NoFile only where the system says that there is
// none.
VELSettingRefusal ReadSettingsFile(const VELUnicodeString& path, std::string& text);

// A top-level text of the file, read afresh; `setting` is as before when there is none.
VELSettingRefusal FindSetting(const VELUnicodeString& path, const char* attribute,
                              VELSetting& setting);

// Replaces the file by what `change` makes of its text, under the lock of its folder. A missing
// file counts as empty; its folder is made.
using SettingsChange = std::function<VELSettingRefusal(std::string& text)>;
VELSettingRefusal ChangeSettingsFile(const VELUnicodeString& path, const SettingsChange& change);

// All of these may throw std::bad_alloc.

} // namespace dyadctx
