// SPDX-License-Identifier: MIT
// Environment variables that are set and change nothing.
#pragma once

#include "collector/VELDyadCtxFileChoice.h"

#include <string>
#include <vector>

namespace dyadctx::tool {

struct IdleVariable {
    std::string name;
    std::string value;
    // Why it has no effect: a clause, to follow a colon.
    std::string reason;
};

// Those that are there to choose the file, or to write it elsewhere.
std::vector<IdleVariable> IdleVariablesOfChoice(const VELDyadCtxFileChoice& choice);

// Those that have their say whichever file is read: what takes part, messages, traces, colours.
std::vector<IdleVariable> IdleVariablesOfReading();

// ExchangeChannel while it is set: it names a file, but not for CreateCollector. To be called
// before a file is loaded, which sets that variable.
std::vector<IdleVariable> IdleExchangeChannel();

} // namespace dyadctx::tool
