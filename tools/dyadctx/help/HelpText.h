// SPDX-License-Identifier: MIT
// What --help says.
#pragma once

#include "tools/dyadctx/ExitStatus.h"
#include "tools/dyadctx/help/CommandTree.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace dyadctx::tool {

struct StatusMeaning {
    ExitStatus status;
    const char* meaning;
};
// In rising order.
std::span<const StatusMeaning> StatusMeanings() noexcept;

// "dyadctx list [FILE] ...", broken so that it fits a terminal; a continued line is indented.
// `heading` comes before it.
std::string UsageLine(const std::string& heading, const std::string& command,
                      const std::string& synopsis);

// The left side of an option or a value: "-o, --output OUT".
std::string LabelOf(const Argument& argument);
// Its meaning, with what the parser knows besides: the default, and whether it can be repeated.
std::string MeaningOf(const Argument& argument);

// The help of the tool for an empty path, else that of the command, each after the one it is below.
// None where the path names no command. `root` has all commands and the common options.
std::optional<std::string> HelpFor(const CommandNode& root, const std::vector<std::string>& path);

} // namespace dyadctx::tool
