// SPDX-License-Identifier: MIT
// Kills a program at a chosen one of its system calls. Linux only.
#pragma once

#include <string>
#include <vector>

namespace dyadctx::test {

enum class KilledRun {
    // The program was killed before the call took place.
    Killed,
    // It ended by itself with status 0, having made fewer calls.
    Ended,
    // It ended by itself in another way.
    Failed,
    // This process may not trace others.
    NotPossible
};

// Runs the program, whose environment is that of this process. Calls are counted, from 1, once it
// has written to its standard output for the first time.
KilledRun RunAndKillAt(int call, const std::string& program,
                       const std::vector<std::string>& arguments);

} // namespace dyadctx::test
