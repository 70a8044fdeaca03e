#include "platform/VELEnvironment.h"
#include "platform/detail/SettingsFile.h"

namespace dyadctx {

VELUnicodeString DefaultSettingsFolder() {
    const char* applicationData = VELGetEnv("APPDATA");
    if (applicationData == nullptr || *applicationData == '\0')
        return {};
    return VELUnicodeString(applicationData).Append("\\dyadctx");
}

} // namespace dyadctx
