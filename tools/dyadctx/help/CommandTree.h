// SPDX-License-Identifier: MIT
// The command line as data. Help, manual page and completion are made of it, so that they say what
// the parser takes.
#pragma once

#include "tools/dyadctx/Command.h"

#include <string>
#include <vector>

namespace dyadctx::tool {

// An option, or a value that is known by its place.
struct Argument {
    // "-o" and "--output"; empty for a value that is known by its place.
    std::vector<std::string> names;
    // What goes in: "FILE", or the words of which it takes one: "text|json". Empty for a switch.
    std::string value;
    // Those words; empty where any text goes.
    std::vector<std::string> words;
    std::string meaning;
    // What holds without it; empty if the meaning says so.
    std::string preset;
    bool isRequired = false;
    bool isRepeatable = false;
};

struct CommandNode {
    std::string name;
    std::string summary;
    // What follows the name on the usage line.
    std::string synopsis;
    std::vector<Argument> values;
    std::vector<Argument> options;
    std::vector<CommandNode> commands;
    std::vector<Example> examples;
};

// The command of that name right below; null when there is none.
const CommandNode* FindCommand(const CommandNode& node, const std::string& name);

// That of one command, as far as the parser knows it: without examples, and with no more in the
// synopsis than the values.
CommandNode NodeOf(const CLI::App& app);

} // namespace dyadctx::tool
