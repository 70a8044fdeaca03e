// SPDX-License-Identifier: MIT
// What the library is compared with, as operations on the same file.
#pragma once

#include "bench/Operation.h"

namespace dyadctx::bench {

// One pass of Expat without handlers: the floor for whoever reads with it.
void AddExpatOperations(OperationList& list);
// A tree of libxml2 and nothing else. Adds nothing when built without it.
void AddLibXml2Operations(OperationList& list);
// A tree of pugixml and nothing else; and the loader a client could write on it. Add nothing when
// built without it.
void AddPugiXmlOperations(OperationList& list);
void AddHandWrittenOperations(OperationList& list);

} // namespace dyadctx::bench
