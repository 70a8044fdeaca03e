// SPDX-License-Identifier: MIT
// What the measurements need of the system.
#pragma once

#include <cstdint>
#include <string>

namespace dyadctx::bench {

// The most memory this process had resident so far, in bytes.
std::uint64_t PeakMemory();

void SetVariable(const std::string& name, const std::string& value);
bool IsVariableSet(const std::string& name);

} // namespace dyadctx::bench
