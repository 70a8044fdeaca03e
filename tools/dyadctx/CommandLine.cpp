#include "tools/dyadctx/CommandLine.h"

#include "platform/VELDbContextEnvironment.h"
#include "platform/VELMsgCatalog.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Suggestion.h"

#include <string_view>

namespace dyadctx::tool {

namespace {

constexpr const char* Description =
    "Checks, lists and compares context files. Without FILE a command takes the file that the\n"
    "library itself would take; `dyadctx which` tells which one that is.";

constexpr const char* CommonHelp =
    "Common options (before or behind the command):\n"
    "  --db-context                Switch the DB context environment on: database contexts, files\n"
    "                              and associated contexts take part\n"
    "  --lang TAG                  Language of the library's messages: en, fr, de, ja; hints and\n"
    "                              remarks of the tool are English\n"
    "  --color auto|always|never   Colours; by themselves only on a terminal (NO_COLOR is "
    "honoured)\n"
    "  -q, --quiet                 No notes and no summary\n";

constexpr const char* StatusHelp =
    "Sites of a database are read while the variable TE_MULTISITE_DBCONTEXT is set. A file named "
    "by\n"
    "VELDyadCtxOut is written by the library whenever a command runs without FILE.\n"
    "\n"
    "Exit status: 0 done or valid; 1 the answer is no; 2 wrong usage; 3 no file could be chosen "
    "or\n"
    "read; 4 the file cannot be loaded; 5 the named thing does not exist; 6 the output could not "
    "be\n"
    "written; 70 internal error.\n";

// Options that take several values get their name before each: --id A B becomes --id A --id B.
std::vector<std::string> WithNameBeforeEachValue(const std::vector<std::string>& arguments,
                                                 std::string_view option) {
    std::vector<std::string> spread;
    bool inValues = false;
    int values = 0;
    for (const std::string& argument : arguments) {
        if (argument == option || argument.starts_with('-')) {
            inValues = argument == option;
            values = 0;
        } else if (inValues && ++values > 1) {
            spread.emplace_back(option);
        }
        spread.push_back(argument);
    }
    return spread;
}

bool Is(const CLI::ParseError& error, CLI::ExitCodes kind) {
    return error.get_exit_code() == static_cast<int>(kind);
}

} // namespace

CommandLine::CommandLine() : app_(Description, "dyadctx") {
    commands_.push_back(MakeCheck());
    commands_.push_back(MakeList());
    commands_.push_back(MakeShow());
    commands_.push_back(MakeWhich());
    commands_.push_back(MakeScenarios());
    commands_.push_back(MakeWrite());
    commands_.push_back(MakeDiff());
    commands_.push_back(MakeGraph());
    commands_.push_back(MakeSettings());
    Declare();
}

void CommandLine::Declare() {
    DeclareCommonOptions();
    app_.require_subcommand(1);
    app_.footer(std::string("\n") + CommonHelp + "\n" + StatusHelp);
    for (const std::unique_ptr<Command>& command : commands_) {
        CLI::App* arguments = app_.add_subcommand(command->Name(), command->Summary());
        arguments->fallthrough();
        arguments->footer(std::string("\n") + CommonHelp);
        command->Declare(*arguments);
        arguments_.push_back(arguments);
    }
}

void CommandLine::DeclareCommonOptions() {
    // Their help stands in the footer of every command.
    app_.set_version_flag("--version", std::string("dyadctx ") + DYADCTX_VERSION);
    app_.add_flag("--db-context", dbContext_)->group("");
    app_.add_option("--lang", language_)->group("");
    app_.add_option("--color", color_)
        ->check(CLI::IsMember(std::vector<std::string>{"auto", "always", "never"}))
        ->group("");
    app_.add_flag("-q,--quiet", quiet_)->group("");
}

bool CommandLine::Read(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    std::vector<std::string> spread = WithNameBeforeEachValue(arguments, "--id");
    // The parser takes them from the back.
    std::vector<std::string> reversed(spread.rbegin(), spread.rend());
    try {
        app_.parse(std::move(reversed));
    } catch (const CLI::CallForHelp&) {
        text_ = app_.help();
        return false;
    } catch (const CLI::CallForVersion& call) {
        text_ = std::string(call.what()) + "\n";
        return false;
    } catch (const CLI::ParseError& error) {
        throw Failure(ExitStatus::Usage, Complaint(error));
    }
    PutOptionsIntoForce();
    return true;
}

void CommandLine::PutOptionsIntoForce() const {
    if (dbContext_)
        SetDbContextEnvironment(true);
    if (!language_.empty())
        VELMsgCatalog::SetLanguage(language_.c_str());
}

std::string CommandLine::RemarkOnLanguage() const {
    if (language_.empty() || VELMsgCatalog::HasLanguage(language_.c_str()))
        return "";
    return "there are no messages in the language '" + Visible(language_) +
           "'; they are in English (known are en, fr, de, ja)";
}

int CommandLine::ChosenIndex() const {
    for (std::size_t i = 0; i < arguments_.size(); ++i) {
        if (app_.got_subcommand(arguments_[i]))
            return static_cast<int>(i);
    }
    return -1;
}

Command& CommandLine::Chosen() const {
    return *commands_.at(static_cast<std::size_t>(ChosenIndex()));
}

ColorChoice CommandLine::Color() const {
    if (color_ == "always")
        return ColorChoice::Always;
    return color_ == "never" ? ColorChoice::Never : ColorChoice::Auto;
}

std::string CommandLine::Usage() const {
    if (ChosenIndex() < 0)
        return "usage: dyadctx COMMAND [FILE] [options]\nSee `dyadctx --help` for the commands.\n";
    const Command& command = Chosen();
    return std::string("usage: dyadctx ") + command.Name() + " " + command.Synopsis() +
           "\nSee `dyadctx " + command.Name() + " --help`.\n";
}

std::vector<std::string> CommandLine::KnownOptions() const {
    std::vector<std::string> names;
    const auto addOf = [&names](const CLI::App& app) {
        for (const CLI::Option* option : app.get_options()) {
            for (const std::string& name : option->get_lnames())
                names.push_back("--" + name);
        }
    };
    addOf(app_);
    if (ChosenIndex() >= 0)
        addOf(*arguments_[static_cast<std::size_t>(ChosenIndex())]);
    return names;
}

std::string CommandLine::Complaint(const CLI::ParseError& error) const {
    const std::vector<std::string> left = app_.remaining(true);
    if (ChosenIndex() < 0) {
        for (const std::string& word : left) {
            if (word.starts_with('-'))
                return "unknown option '" + Visible(word) + "'" + DidYouMean(word, KnownOptions());
            std::vector<std::string> names;
            for (const std::unique_ptr<Command>& command : commands_)
                names.emplace_back(command->Name());
            return "unknown command '" + Visible(word) + "'" + DidYouMean(word, names);
        }
        return Is(error, CLI::ExitCodes::RequiredError) ? "no command given"
                                                        : Visible(error.what());
    }
    if (Is(error, CLI::ExitCodes::ExtrasError) && !left.empty()) {
        const std::string& word = left.front();
        const std::string kind = word.starts_with('-') ? "option" : "argument";
        return "unexpected " + kind + " '" + Visible(word) + "'" +
               (kind == "option" ? DidYouMean(word, KnownOptions()) : "");
    }
    return Visible(error.what());
}

} // namespace dyadctx::tool
