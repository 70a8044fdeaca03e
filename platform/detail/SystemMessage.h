// SPDX-License-Identifier: MIT
// The system's own words for its error codes.
#pragma once

#include <string>

namespace dyadctx {

// In UTF-8, on one line, without a full stop.
std::string SystemMessage(int code);

} // namespace dyadctx
