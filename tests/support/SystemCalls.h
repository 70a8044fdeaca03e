// SPDX-License-Identifier: MIT
// Faults at the border between a program and the system.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace dyadctx::test {

// From now on the named call ("write", "fsync", "fchmod", "fchown", "rename", "openat", "read")
// fails with an input/output error in this process; there is no way back. False where the system
// does not allow it.
bool RefuseSystemCall(const std::string& name);

// From now on this process writes no file beyond that size: the call fails, as on a full disk.
void LimitFileSize(unsigned long bytes);

// Tells KillAtSystemCall, if it runs this process, that the calls count from here on.
void CountSystemCallsFromHere();

// Runs a program and kills it just before the call number `number` (from 1) that it makes after
// CountSystemCallsFromHere. Gives its exit status when it ended before that; nothing when it was
// killed. The status is CannotTrace where the system does not allow this.
constexpr int CannotTrace = 126;
std::optional<int> KillAtSystemCall(const std::string& program,
                                    const std::vector<std::string>& arguments, int number);

} // namespace dyadctx::test
