// SPDX-License-Identifier: MIT
#include "platform/VELEnvironment.h"
#include "platform/detail/SettingsFile.h"

namespace dyadctx {

namespace {

constexpr const char* ConfigurationVariable = "XDG_CONFIG_HOME";
constexpr const char* HomeVariable = "HOME";

} // namespace

SettingsFolder UserSettingsFolder() {
    // The rules of XDG_CONFIG_HOME say to ignore a relative one.
    const char* configuration = VELGetEnv(ConfigurationVariable);
    if (configuration != nullptr && *configuration == '/')
        return {VELUnicodeString(configuration).Append("/dyadctx"), ConfigurationVariable};
    const char* home = VELGetEnv(HomeVariable);
    if (home != nullptr && *home != '\0')
        return {VELUnicodeString(home).Append("/.config/dyadctx"), HomeVariable};
    return {};
}

} // namespace dyadctx
