// SPDX-License-Identifier: MIT
// What a shell may offer at each place of the command line.
#pragma once

#include "tools/dyadctx/help/CommandTree.h"

#include <string>
#include <vector>

namespace dyadctx::tool {

// What is offered for a value, in the terms of the completion scripts: "words" with the words
// after it, "files", "contextfiles" (folders and what ends in .xml), "contexts" and "providers"
// (names from the file on the line), "any" for a text that nobody can guess. Empty after a switch.
using Offer = std::string;

struct OfferedOption {
    std::string name;
    Offer offer;
    std::string meaning;
};

struct OfferedCommand {
    std::string name;
    std::string meaning;
};

// What may follow one command.
struct CompletionRow {
    // The names of the command and of those above it: "settings set"; empty for the tool itself.
    std::string path;
    std::vector<OfferedCommand> commands;
    std::vector<OfferedOption> options;
    // For the values by their place; the last one holds for all that follow when `repeats`.
    std::vector<Offer> values;
    bool repeats = false;
};

// The tool first, then each command.
std::vector<CompletionRow> CompletionTable(const CommandNode& root);

} // namespace dyadctx::tool
