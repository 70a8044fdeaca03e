// SPDX-License-Identifier: MIT
// What the library does, as operations.
#pragma once

#include "bench/Operation.h"

namespace dyadctx::bench {

// Creating, refusing, writing and destroying collectors, and building one by hand.
void AddCollectorOperations(OperationList& list);
// Looking names up in each view, and in std::unordered_map.
void AddLookupOperations(OperationList& list);
// Exchange scenarios and database providers.
void AddQueryOperations(OperationList& list);
// The steps of creation one by one. They need the library's private parts.
void AddStageOperations(OperationList& list);

} // namespace dyadctx::bench
