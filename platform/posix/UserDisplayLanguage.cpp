// SPDX-License-Identifier: MIT
#include "platform/detail/UserDisplayLanguage.h"

#include "platform/VELEnvironment.h"

namespace dyadctx {

std::string UserDisplayLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = VELGetEnv(name);
        if (value != nullptr && *value != '\0')
            return value;
    }
    return {};
}

} // namespace dyadctx
