// The commands of the tool.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "tools/dyadctx/ExitStatus.h"
#include "tools/dyadctx/Output.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace dyadctx::tool {

// Declares its arguments, which the command line then fills in, and gives the answer.
class Command {
public:
    virtual ~Command();
    virtual const char* Name() const = 0;
    virtual const char* Summary() const = 0;
    // What stands behind the name on the usage line.
    virtual const char* Synopsis() const = 0;
    virtual void Declare(CLI::App& arguments) = 0;
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

// ---- Arguments several commands share ----------------------------------------------------------

void DeclareFile(CLI::App& arguments, std::optional<std::string>& file);
// --format with these values; `format` keeps its present one when the option is not given.
void DeclareFormat(CLI::App& arguments, std::string& format,
                   const std::vector<std::string>& formats);

// --type and --provider.
struct ViewChoice {
    std::optional<std::string> type;
    std::vector<std::string> providers;
};
void DeclareView(CLI::App& arguments, ViewChoice& choice);
// Switches the collector to that view. Throws a Failure for a choice that contradicts itself and
// tells when the choice has no effect.
void SelectView(VELDyadCtxCollector& collector, const ViewChoice& choice, Output& output);
// The view a collector is in, as --type names it.
const char* NameOfView(const VELDyadCtxCollector& collector);

} // namespace dyadctx::tool
