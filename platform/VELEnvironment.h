// SPDX-License-Identifier: MIT
// The environment variables of the process.
#pragma once

#include "platform/VELExport.h"

// The current value as UTF-8; null when unset, "" when set and empty. Copy it at once: the next
// change of the environment may overwrite it.
VELDYADCTX_EXPORT const char* VELGetEnv(const char* name);
