// The answer of the DB context environment as yes or no.
#pragma once

#include "platform/VELDbContextEnvironment.h"

namespace dyadctx {

// Never kept: the switch may turn between two decisions.
inline bool IsDbEnvironmentActive() {
    return IsDbContextEnvironmentActivated().AsView() == "1";
}

} // namespace dyadctx
