// The files behind the built-in settings repositories: TOML, one file per repository.
#pragma once

#include "platform/VELUnicodeString.h"

#include <string>

namespace dyadctx {

enum class SettingsAnswer {
    Found,
    NoFile,      // nothing stands there
    NotReadable, // something stands there that cannot be read, or that is no regular file
    Broken,      // the file is not TOML
    NoAttribute, // the file has no such attribute at its top level
    NotText      // the attribute is something other than a text
};

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

// Whether the file can be read and is TOML: Found, NoFile, NotReadable or Broken. For Broken,
// `reason` says where and why ("line 3, column 7: ...").
SettingsAnswer CheckSettingsFile(const VELUnicodeString& path, std::string& reason);

// The text of a top-level attribute, read afresh. `value` is as before for every answer but Found;
// `reason` is set as above for all others.
SettingsAnswer ReadSettingsFile(const VELUnicodeString& path, const char* attribute,
                                VELUnicodeString& value, std::string& reason);

struct SettingsEntry {
    SettingsAnswer answer = SettingsAnswer::NoFile;
    VELUnicodeString value;
    // Of the attribute, or of what is no TOML; 0 without a place.
    int line = 0;
    int column = 0;
    // Why there is no value, without the place.
    std::string reason;
};

// The same with the place.
SettingsEntry FindSetting(const VELUnicodeString& path, const char* attribute);

// All of these may throw std::bad_alloc.

} // namespace dyadctx
