// The switch the library reads at every decision about database contexts.
#pragma once

#include "platform/VELDbContextEnvironment.h"

namespace dyadctx {

// Whether the DB context environment is on now. Never cache the result: it may change between two
// steps of one operation.
inline bool IsDbEnvironmentOn() {
    return IsDbContextEnvironmentActivated().AsView() == "1";
}

} // namespace dyadctx
