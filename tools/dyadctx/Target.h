// SPDX-License-Identifier: MIT
// Writing to OUT.
#pragma once

#include "tools/dyadctx/Output.h"

#include <string>
#include <string_view>

namespace dyadctx::tool {

// "-" and the system's own names for it.
bool IsStandardOutput(const std::string& target);

// Replaces the file, or writes the content to standard output. Throws a
// Failure that names the path and the system's reason.
void WriteTarget(const std::string& target, std::string_view content, Output& output);

} // namespace dyadctx::tool
