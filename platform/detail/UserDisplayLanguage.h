// SPDX-License-Identifier: MIT
// The user's language on this system.
#pragma once

#include <string>

namespace dyadctx {

// A tag such as "fr_FR.UTF-8" or "de-AT"; empty if unknown. On POSIX systems the first of LC_ALL,
// LC_MESSAGES and LANG that is not empty, on Windows the display language.
std::string UserDisplayLanguage();

} // namespace dyadctx
