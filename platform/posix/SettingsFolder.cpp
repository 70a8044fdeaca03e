#include "platform/VELEnvironment.h"
#include "platform/detail/SettingsFile.h"

namespace dyadctx {

VELUnicodeString DefaultSettingsFolder() {
    // A relative XDG_CONFIG_HOME is to be ignored by the rules of that variable.
    const char* configuration = VELGetEnv("XDG_CONFIG_HOME");
    if (configuration != nullptr && *configuration == '/')
        return VELUnicodeString(configuration).Append("/dyadctx");
    const char* home = VELGetEnv("HOME");
    if (home != nullptr && *home != '\0')
        return VELUnicodeString(home).Append("/.config/dyadctx");
    return {};
}

} // namespace dyadctx
