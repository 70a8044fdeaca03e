// SPDX-License-Identifier: MIT
// The commands of the tool.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "tools/dyadctx/Arguments.h"
#include "tools/dyadctx/ExitStatus.h"
#include "tools/dyadctx/Output.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace dyadctx::tool {

struct CommandNode;

// A line that a user could type, and what comes of it.
struct Example {
    std::string line;
    std::string meaning;
};

// Declares its arguments, which the command line then fills in, and writes the answer.
class Command {
public:
    virtual ~Command();
    virtual const char* Name() const = 0;
    virtual const char* Summary() const = 0;
    // What follows the name on the usage line.
    virtual const char* Synopsis() const = 0;
    // One or two lines for the help.
    virtual std::vector<Example> Examples() const { return {}; }
    // An internal one is for the build alone; help and completion do not show it.
    virtual bool IsInternal() const { return false; }
    virtual void Declare(Arguments& arguments) = 0;
    // Throws a Failure when there is no answer.
    virtual ExitStatus Run(Output& output) = 0;

protected:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
};

std::unique_ptr<Command> MakeCheck();
std::unique_ptr<Command> MakeExplain();
std::unique_ptr<Command> MakeList();
std::unique_ptr<Command> MakeShow();
std::unique_ptr<Command> MakeWhich();
std::unique_ptr<Command> MakeScenarios();
std::unique_ptr<Command> MakeWrite();
std::unique_ptr<Command> MakeDiff();
std::unique_ptr<Command> MakeGraph();
std::unique_ptr<Command> MakeSettings();
std::unique_ptr<Command> MakeSchema();
// These are made of the command line they belong to.
using CommandTreeSource = std::function<CommandNode()>;
std::unique_ptr<Command> MakeHelp(CommandTreeSource tree);
std::unique_ptr<Command> MakeCompletion(CommandTreeSource tree);
std::unique_ptr<Command> MakeManPage(CommandTreeSource tree);

// ---- Arguments several commands share ----------------------------------------------------------

// `addition` continues the sentence that says what FILE is.
void DeclareFile(Arguments& arguments, std::optional<std::string>& file, const char* addition = "");
// --format with these values; `format` keeps its present one when the option is not given.
Arguments::Option DeclareFormat(Arguments& arguments, std::string& format,
                                const std::vector<std::string>& formats);

// --type and --provider.
struct ViewChoice {
    std::optional<std::string> type;
    std::vector<std::string> providers;
};
void DeclareView(Arguments& arguments, ViewChoice& choice);
// Switches the collector to that view. Throws a Failure for a choice that contradicts itself;
// notes one that has no effect.
void SelectView(VELDyadCtxCollector& collector, const ViewChoice& choice, Output& output);
// The view a collector is in, as --type names it.
const char* NameOfView(const VELDyadCtxCollector& collector);

} // namespace dyadctx::tool
