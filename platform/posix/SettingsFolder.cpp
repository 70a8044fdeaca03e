#include "platform/VELEnvironment.h"
#include "platform/detail/SettingsFile.h"

namespace dyadctx {

namespace {

constexpr const char* ConfigurationVariable = "XDG_CONFIG_HOME";
constexpr const char* HomeVariable = "HOME";

} // namespace

SettingsFolder UserSettingsFolder() {
    // A relative XDG_CONFIG_HOME is to be ignored by the rules of that variable.
    const char* configuration = VELGetEnv(ConfigurationVariable);
    if (configuration != nullptr && *configuration == '/')
        return {VELUnicodeString(configuration).Append("/dyadctx"), ConfigurationVariable};
    const char* home = VELGetEnv(HomeVariable);
    if (home != nullptr && *home != '\0')
        return {VELUnicodeString(home).Append("/.config/dyadctx"), HomeVariable};
    return {};
}

} // namespace dyadctx
