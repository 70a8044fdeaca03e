// SPDX-License-Identifier: MIT
// System calls cannot be made to fail here, and programs not be traced.
#include "support/SystemCalls.h"

#include <stdexcept>

namespace dyadctx::test {

bool RefuseSystemCall(const std::string&) {
    return false;
}

void LimitFileSize(unsigned long) {
    throw std::runtime_error("the size of files cannot be limited");
}

void CountSystemCallsFromHere() {}

std::optional<int> KillAtSystemCall(const std::string&, const std::vector<std::string>&, int) {
    return CannotTrace;
}

} // namespace dyadctx::test
