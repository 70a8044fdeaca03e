// The environment variables of the process.
#pragma once

#include "platform/VELExport.h"

// The variable's value now, as UTF-8; null when it is not set, "" when it is set and empty. Copy it
// at once: the next change of the environment may overwrite it.
VELDYADCTX_EXPORT const char* VELGetEnv(const char* name);
