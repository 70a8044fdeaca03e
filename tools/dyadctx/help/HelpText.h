// What --help says.
#pragma once

#include "tools/dyadctx/ExitStatus.h"
#include "tools/dyadctx/help/CommandTree.h"

#include <span>

namespace dyadctx::tool {

struct StatusMeaning {
    ExitStatus status;
    const char* meaning;
};
// In rising order.
std::span<const StatusMeaning> StatusMeanings() noexcept;

// "dyadctx list [FILE] ...", broken so that it fits a terminal; a continued line is indented.
// `heading` stands before it.
std::string UsageLine(const std::string& heading, const std::string& command,
                      const std::string& synopsis);

// What stands on the left of an option or a value: "-o, --output OUT".
std::string LabelOf(const Argument& argument);
// Its meaning, with what the parser knows besides: the default, and whether it can stand again.
std::string MeaningOf(const Argument& argument);

// The help of the tool; `root` has its commands and the options that all of them take.
std::string HelpOfTool(const CommandNode& root);
// The help of one command; `path` is its name with those of the commands above it.
std::string HelpOfCommand(const CommandNode& root, const std::string& path,
                          const CommandNode& command);

} // namespace dyadctx::tool
