// SPDX-License-Identifier: MIT
// The command line as a whole: common options, the choice of the command, help and usage errors.
#pragma once

#include "tools/dyadctx/help/CommandTree.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

namespace dyadctx::tool {

class CommandLine {
public:
    CommandLine();

    // Reads the arguments, without the program, and puts the common options into force. Throws a
    // Failure for wrong usage; false when the user asked for help or the version, which is then in
    // Text().
    bool Read(const std::vector<std::string>& arguments);

    // ---- After Read ----------------------------------------------------------------------------
    Command& Chosen() const;
    const std::string& Text() const noexcept { return text_; }
    bool IsQuiet() const noexcept { return quiet_; }
    ColorChoice Color() const;
    // What is to be said about a language without messages; empty otherwise.
    std::string RemarkOnLanguage() const;

    // How to use the chosen command, or the tool while none is chosen.
    std::string Usage() const;

private:
    void Declare();
    void DeclareCommonOptions();
    CommandNode Tree() const;
    // What --help says about the tool, or about the command of the line.
    std::string Help() const;
    // --format belongs to each command, which knows its formats; the user may write it before the
    // command all the same.
    std::vector<std::string> WithFormatAfterCommand(std::vector<std::string> arguments) const;
    void PutOptionsIntoForce() const;
    // The message about arguments that do not fit.
    std::string UsageError(const CLI::ParseError& error) const;
    std::vector<std::string> KnownOptions() const;
    int ChosenIndex() const;

    CLI::App app_;
    std::vector<std::unique_ptr<Command>> commands_;
    std::vector<CLI::App*> arguments_;
    std::string text_;
    std::string color_ = "auto";
    std::string language_;
    std::optional<std::string> standardInputName_;
    bool dbContext_ = false;
    bool quiet_ = false;
    bool showSecrets_ = false;
};

} // namespace dyadctx::tool
