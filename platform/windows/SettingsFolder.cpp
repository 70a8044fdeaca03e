// SPDX-License-Identifier: MIT
#include "platform/VELEnvironment.h"
#include "platform/detail/SettingsFile.h"

namespace dyadctx {

SettingsFolder UserSettingsFolder() {
    constexpr const char* variable = "APPDATA";
    const char* applicationData = VELGetEnv(variable);
    if (applicationData == nullptr || *applicationData == '\0')
        return {};
    return {VELUnicodeString(applicationData).Append("\\dyadctx"), variable};
}

} // namespace dyadctx
