// SPDX-License-Identifier: MIT
// Runs of the probe, for what only a process of its own can show.
#pragma once

#include "support/ChildProcess.h"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// What the probe returns when the system does not let it do what it was asked for.
constexpr int NotPossibleHere = 77;

inline dyadctx::test::ChildRun
ProbeRun(std::vector<std::string> arguments,
         std::map<std::string, std::optional<std::string>> environment = {}) {
    dyadctx::test::ChildRun run;
    run.program = PLATFORM_PROBE;
    run.arguments = std::move(arguments);
    run.environment = std::move(environment);
    return run;
}

inline int ProbeStatus(std::vector<std::string> arguments, bool asOrdinaryUser = false) {
    dyadctx::test::ChildRun run = ProbeRun(std::move(arguments));
    run.asOrdinaryUser = asOrdinaryUser;
    return dyadctx::test::RunChild(run).status;
}
