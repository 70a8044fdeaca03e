// SPDX-License-Identifier: MIT
#include "tools/dyadctx/help/CommandTree.h"

#include <CLI/CLI.hpp>

#include <sstream>

namespace dyadctx::tool {

namespace {

std::vector<std::string> NamesOf(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames())
        names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

// The words of "text|json"; none of "FILE".
std::vector<std::string> WordsOf(const std::string& type) {
    std::vector<std::string> words;
    std::istringstream in(type.find('|') != std::string::npos ? type : "");
    for (std::string word; std::getline(in, word, '|');)
        words.push_back(word);
    return words;
}

Argument ArgumentOf(const CLI::Option& option) {
    Argument argument;
    const bool takesValue = option.get_items_expected_max() > 0;
    const std::string type = takesValue ? option.get_type_name() : "";
    argument.words = WordsOf(type);
    argument.value = option.get_positional() ? option.get_name(true) : type;
    if (!option.get_positional())
        argument.names = NamesOf(option);
    argument.meaning = option.get_description();
    argument.preset = takesValue ? option.get_default_str() : "";
    argument.isRequired = option.get_required();
    argument.isRepeatable = takesValue && option.get_items_expected_max() > 1;
    return argument;
}

// Its values by their place. Commands below others have no more.
std::string SynopsisOf(const CommandNode& node) {
    std::string synopsis;
    for (const Argument& value : node.values) {
        const std::string label = value.value + (value.isRepeatable ? "..." : "");
        synopsis += (synopsis.empty() ? "" : " ") + (value.isRequired ? label : "[" + label + "]");
    }
    return synopsis;
}

} // namespace

const CommandNode* FindCommand(const CommandNode& node, const std::string& name) {
    for (const CommandNode& command : node.commands) {
        if (command.name == name)
            return &command;
    }
    return nullptr;
}

CommandNode NodeOf(const CLI::App& app) {
    CommandNode node;
    node.name = app.get_name();
    node.summary = app.get_description();
    for (const CLI::Option* option : app.get_options()) {
        // Every command takes it; it is listed once, at the top.
        if (option == app.get_help_ptr() && app.get_parent() != nullptr)
            continue;
        std::vector<Argument>& kind = option->get_positional() ? node.values : node.options;
        kind.push_back(ArgumentOf(*option));
    }
    node.synopsis = SynopsisOf(node);
    for (const CLI::App* command : app.get_subcommands({})) {
        // One without a group is not shown.
        if (!command->get_group().empty())
            node.commands.push_back(NodeOf(*command));
    }
    return node;
}

} // namespace dyadctx::tool
