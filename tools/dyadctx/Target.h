// Where an answer goes that the user sends to OUT.
#pragma once

#include "tools/dyadctx/Output.h"

#include <string>
#include <string_view>

namespace dyadctx::tool {

// "-" and the system's own names for it.
bool IsStandardOutput(const std::string& target);

// Puts the content in the place of the file, or into the answer for standard output. Throws a
// Failure that names the path and the system's reason.
void WriteTarget(const std::string& target, std::string_view content, Output& output);

} // namespace dyadctx::tool
