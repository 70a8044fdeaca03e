// SPDX-License-Identifier: MIT
#include "tools/dyadctx/CommandLine.h"

#include "platform/VELDbContextEnvironment.h"
#include "platform/VELDyadCtxVersion.h"
#include "platform/VELMsgCatalog.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Suggestion.h"
#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/help/HelpText.h"

#include <string_view>

namespace dyadctx::tool {

namespace {

constexpr const char* Program = "dyadctx";
constexpr const char* Synopsis = "COMMAND [FILE] [options]";
constexpr const char* Description =
    "Checks, lists, draws and compares context files. Without FILE a command takes the "
    "file that the library itself would take; `dyadctx which` tells which one that is.";

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

CommandLine::CommandLine() : app_(Description, Program) {
    commands_.push_back(MakeCheck());
    commands_.push_back(MakeExplain());
    commands_.push_back(MakeList());
    commands_.push_back(MakeShow());
    commands_.push_back(MakeWhich());
    commands_.push_back(MakeScenarios());
    commands_.push_back(MakeWrite());
    commands_.push_back(MakeDiff());
    commands_.push_back(MakeGraph());
    commands_.push_back(MakeSettings());
    commands_.push_back(MakeSchema());
    commands_.push_back(MakeCompletion([this] { return Tree(); }));
    commands_.push_back(MakeHelp([this] { return Tree(); }));
    commands_.push_back(MakeManPage([this] { return Tree(); }));
    Declare();
}

void CommandLine::Declare() {
    // On every system a word that begins with "/" is a path.
    app_.allow_windows_style_options(false);
    DeclareCommonOptions();
    app_.require_subcommand(1);
    for (const std::unique_ptr<Command>& command : commands_) {
        CLI::App* arguments = app_.add_subcommand(command->Name(), command->Summary());
        arguments->fallthrough();
        if (command->IsInternal())
            arguments->group("");
        Arguments declared(*arguments);
        command->Declare(declared);
        arguments_.push_back(arguments);
    }
}

void CommandLine::DeclareCommonOptions() {
    Arguments common(app_);
    common.AddSwitch("--db-context", dbContext_,
                     "Switch the DB context environment on: database contexts, files and "
                     "associated contexts take part");
    common
        .Add("--lang", language_,
             "Language of messages and other texts: en, fr, de or ja; help and explanations are "
             "English. Default: that of the environment, else English")
        .Takes("TAG");
    common.Add("--color", color_, "Colours; auto: on a terminal, unless NO_COLOR is set")
        .OneOf({"auto", "always", "never"})
        .ShowPreset();
    common.AddSwitch("--show-secrets", showSecrets_,
                     "Show the passwords in URLs, which are *** otherwise");
    common
        .Add("--stdin-name", standardInputName_,
             "What findings call the file when FILE is - and it comes on standard input")
        .Takes("TEXT");
    common.AddSwitch("-q,--quiet", quiet_,
                     "No notes, those of check and its suggestions included, and no summary");
    app_.set_help_flag("-h,--help", "Print this help, or that of the command");
    app_.set_version_flag("--version", std::string(Program) + " " + DYADCTX_VERSION,
                          "Print the version");
}

CommandNode CommandLine::Tree() const {
    CommandNode root = NodeOf(app_);
    root.synopsis = Synopsis;
    root.examples = {
        {"dyadctx check site.xml", "Is the file valid, and what is wrong where?"},
        {"dyadctx list site.xml --db-context", "All its contexts, those of databases too"},
        {"dyadctx which", "Which file is in use, and why?"},
    };
    for (CommandNode& node : root.commands) {
        for (const std::unique_ptr<Command>& command : commands_) {
            if (node.name != command->Name())
                continue;
            node.synopsis = command->Synopsis();
            node.examples = command->Examples();
        }
    }
    return root;
}

std::string CommandLine::Help() const {
    const CommandNode root = Tree();
    std::vector<std::string> path;
    for (const CLI::App* app = &app_; !app->get_subcommands().empty();) {
        app = app->get_subcommands().front();
        path.push_back(app->get_name());
    }
    // An internal command has no help of its own.
    const std::optional<std::string> text = HelpFor(root, path);
    return text ? *text : *HelpFor(root, {});
}

std::vector<std::string>
CommandLine::WithFormatAfterCommand(std::vector<std::string> arguments) const {
    constexpr std::string_view format = "--format";
    std::vector<std::string> before;
    std::vector<std::string> moved;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (!word.starts_with('-')) {
            before.push_back(word);
            before.insert(before.end(), moved.begin(), moved.end());
            before.insert(before.end(), arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                          arguments.end());
            return before;
        }
        const bool isFormat = word == format || word.starts_with("--format=");
        const CLI::Option* option = app_.get_option_no_throw(word);
        const bool takesValue =
            word == format || (option != nullptr && option->get_items_expected_max() > 0);
        std::vector<std::string>& target = isFormat ? moved : before;
        target.push_back(word);
        if (takesValue && i + 1 < arguments.size())
            target.push_back(arguments[++i]);
    }
    return before;
}

bool CommandLine::Read(const std::vector<std::string>& arguments) {
    std::vector<std::string> spread =
        WithNameBeforeEachValue(WithFormatAfterCommand(arguments), "--id");
    // The parser takes them from the back.
    std::vector<std::string> reversed(spread.rbegin(), spread.rend());
    try {
        app_.parse(std::move(reversed));
    } catch (const CLI::CallForHelp&) {
        text_ = Help();
        return false;
    } catch (const CLI::CallForVersion& call) {
        text_ = std::string(call.what()) + "\n";
        return false;
    } catch (const CLI::ParseError& error) {
        // The language that was asked for, as far as it was read.
        PutOptionsIntoForce();
        throw Failure(ExitStatus::Usage, UsageError(error));
    }
    PutOptionsIntoForce();
    return true;
}

void CommandLine::PutOptionsIntoForce() const {
    if (dbContext_)
        SetDbContextEnvironment(true);
    ShowSecrets(showSecrets_);
    if (standardInputName_)
        SetStandardInputName(*standardInputName_);
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
        return UsageLine("usage: ", Program, Synopsis) + "See `dyadctx --help` for the commands.";
    const Command& command = Chosen();
    const std::string name = std::string(Program) + " " + command.Name();
    return UsageLine("usage: ", name, command.Synopsis()) + "See `" + name + " --help`.";
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

std::string CommandLine::UsageError(const CLI::ParseError& error) const {
    const std::vector<std::string> left = app_.remaining(true);
    if (ChosenIndex() < 0) {
        for (const std::string& word : left) {
            if (word.starts_with('-'))
                return Words("usage.unknown-option", {Visible(word)}) +
                       DidYouMean(word, KnownOptions());
            std::vector<std::string> names;
            for (const CommandNode& command : NodeOf(app_).commands)
                names.push_back(command.name);
            return Words("usage.unknown-command", {Visible(word)}) + DidYouMean(word, names);
        }
        return Is(error, CLI::ExitCodes::RequiredError) ? Words("usage.no-command")
                                                        : Visible(error.what());
    }
    if (Is(error, CLI::ExitCodes::ExtrasError) && !left.empty()) {
        const std::string& word = left.front();
        if (!word.starts_with('-'))
            return Words("usage.unexpected-argument", {Visible(word)});
        return Words("usage.unexpected-option", {Visible(word)}) + DidYouMean(word, KnownOptions());
    }
    return Visible(error.what());
}

} // namespace dyadctx::tool
