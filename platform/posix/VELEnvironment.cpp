// SPDX-License-Identifier: MIT
#include "platform/VELEnvironment.h"

#include <cstdlib>

const char* VELGetEnv(const char* name) {
    return name != nullptr ? std::getenv(name) : nullptr;
}
