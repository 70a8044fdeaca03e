// SPDX-License-Identifier: MIT
// `completion`: a script by which a shell completes the command line of the tool.
#include "tools/dyadctx/completion/CompletionScript.h"

#include <utility>

namespace dyadctx::tool {

namespace {

class Completion final : public Command {
public:
    explicit Completion(CommandTreeSource tree) : tree_(std::move(tree)) {}

    const char* Name() const override { return "completion"; }
    const char* Summary() const override {
        return "Print a script by which a shell completes commands, options and names of contexts";
    }
    const char* Synopsis() const override { return "bash|zsh|fish|powershell"; }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    CommandTreeSource tree_;
    std::string shell_;
};

std::vector<Example> Completion::Examples() const {
    return {{"source <(dyadctx completion bash)", "For this session of bash; zsh likewise"},
            {"dyadctx completion fish | source", "For this session of fish"}};
}

void Completion::Declare(Arguments& arguments) {
    arguments
        .Add("SHELL", shell_,
             "The shell: bash, zsh, fish or powershell. An installed dyadctx brings the scripts of "
             "the first three with it. That of PowerShell is untested")
        .OneOf(KnownShells())
        .Required();
}

ExitStatus Completion::Run(Output& output) {
    output.Write(CompletionScript(shell_, CompletionTable(tree_())));
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeCompletion(CommandTreeSource tree) {
    return std::make_unique<Completion>(std::move(tree));
}

} // namespace dyadctx::tool
