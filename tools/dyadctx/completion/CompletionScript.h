// SPDX-License-Identifier: MIT
// Completion scripts for shells. Each is a frame of resources/completion, in which the table of the
// command line is written in the shell's own syntax.
#pragma once

#include "tools/dyadctx/completion/CompletionTable.h"

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

// The shells the tool knows.
std::vector<std::string> KnownShells();
// The script for one of them.
std::string CompletionScript(std::string_view shell, const std::vector<CompletionRow>& table);

} // namespace dyadctx::tool
