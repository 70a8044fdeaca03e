// SPDX-License-Identifier: MIT
// The environment of a child process.
#pragma once

#include "support/ChildProcess.h"

#include <string>
#include <vector>

namespace dyadctx::test {

// The entries ("NAME=value") for the child, made of this process's own as ChildRun says.
std::vector<std::string> ChildEnvironment(const ChildRun& run, const std::vector<std::string>& own);

} // namespace dyadctx::test
