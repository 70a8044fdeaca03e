// SPDX-License-Identifier: MIT
// `help`: the same as --help.
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Suggestion.h"
#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/help/HelpText.h"

#include <utility>

namespace dyadctx::tool {

namespace {

class Help final : public Command {
public:
    explicit Help(CommandTreeSource tree) : tree_(std::move(tree)) {}

    const char* Name() const override { return "help"; }
    const char* Summary() const override { return "Print what --help prints"; }
    const char* Synopsis() const override { return "[COMMAND]..."; }
    std::vector<Example> Examples() const override {
        return {{"dyadctx help check", "What check takes, and what it answers"}};
    }
    void Declare(Arguments& arguments) override {
        arguments.Add("COMMAND", path_,
                      "The command, with the one below it where there is one; without any, the "
                      "tool as a whole");
    }
    ExitStatus Run(Output& output) override;

private:
    CommandTreeSource tree_;
    std::vector<std::string> path_;
};

Failure NoSuchCommand(const CommandNode& root, const std::vector<std::string>& path) {
    const CommandNode* node = &root;
    std::string known;
    for (const std::string& word : path) {
        const CommandNode* below = FindCommand(*node, word);
        if (below == nullptr) {
            std::vector<std::string> names;
            for (const CommandNode& command : node->commands)
                names.push_back(command.name);
            return Failure(ExitStatus::Usage,
                           Words("usage.unknown-command", {known + Visible(word)}) +
                               DidYouMean(word, names));
        }
        known += word + " ";
        node = below;
    }
    return Failure(ExitStatus::Internal, "there is no help");
}

ExitStatus Help::Run(Output& output) {
    const CommandNode root = tree_();
    const std::optional<std::string> text = HelpFor(root, path_);
    if (!text)
        throw NoSuchCommand(root, path_);
    output.Write(*text);
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeHelp(CommandTreeSource tree) {
    return std::make_unique<Help>(std::move(tree));
}

} // namespace dyadctx::tool
