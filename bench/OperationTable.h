// SPDX-License-Identifier: MIT
// Every operation a program was built with.
#pragma once

#include "bench/Operation.h"

#include <string_view>

namespace dyadctx::bench {

const OperationList& AllOperations();
// Null when there is none of that name.
const OperationEntry* OperationNamed(std::string_view name);

} // namespace dyadctx::bench
