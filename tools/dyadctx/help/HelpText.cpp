// SPDX-License-Identifier: MIT
#include "tools/dyadctx/help/HelpText.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

namespace dyadctx::tool {

namespace {

constexpr std::size_t LineWidth = 80;
constexpr std::size_t LabelWidth = 26;
constexpr const char* CommonOptions = "Common options (before or after the command, as --format)";

constexpr std::array Meanings{
    StatusMeaning{ExitStatus::Done, "done; check: valid; diff: no difference"},
    StatusMeaning{ExitStatus::No,
                  "the answer is no; check: not valid; diff: there are differences"},
    StatusMeaning{ExitStatus::Usage, "wrong usage"},
    StatusMeaning{ExitStatus::NoFile, "no file could be chosen or read"},
    StatusMeaning{ExitStatus::NotLoadable, "the file cannot be loaded; `dyadctx check` tells why"},
    StatusMeaning{ExitStatus::NotFound, "the named thing does not exist"},
    StatusMeaning{ExitStatus::NotWritten, "the output could not be written"},
    StatusMeaning{ExitStatus::Internal, "internal error"},
};

constexpr const char* Environment =
    "The file that a command takes without FILE is named by the environment variable\n"
    "VELDyadCtxInit, else by the settings (`dyadctx settings`), else it stands below\n"
    "one of the folders in VELInstallPath; `dyadctx which` tells. While the variable\n"
    "VELDyadCtxOut names a file, the library writes the contexts there whenever a\n"
    "command runs without FILE. The server sites of databases are read while\n"
    "TE_MULTISITE_DBCONTEXT is set. The manual page dyadctx(1) lists all variables,\n"
    "dyadctx-context(5) tells what stands in a context file.\n";

std::vector<std::string> WordsIn(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

// The pieces of a synopsis that are not torn apart: words, and what is in brackets.
std::vector<std::string> PiecesOf(const std::string& synopsis) {
    std::vector<std::string> pieces;
    int depth = 0;
    for (const std::string& word : WordsIn(synopsis)) {
        if (depth > 0)
            pieces.back() += " " + word;
        else
            pieces.push_back(word);
        depth += static_cast<int>(std::count(word.begin(), word.end(), '['));
        depth -= static_cast<int>(std::count(word.begin(), word.end(), ']'));
    }
    return pieces;
}

// Fills lines with the pieces. `text` ends where the first of them goes.
void Fill(std::string& text, const std::vector<std::string>& pieces, std::size_t indentation) {
    std::size_t column = text.size() - (text.find_last_of('\n') + 1);
    std::string gap;
    for (const std::string& piece : pieces) {
        if (column + gap.size() + piece.size() > LineWidth && column > indentation) {
            text += "\n" + std::string(indentation, ' ');
            column = indentation;
            gap.clear();
        }
        text += gap + piece;
        column += gap.size() + piece.size();
        gap = " ";
    }
    text += "\n";
}

std::string Row(const std::string& label, const std::string& meaning) {
    std::string row = "  " + label;
    if (row.size() + 2 > LabelWidth)
        row += "\n" + std::string(LabelWidth, ' ');
    else
        row.resize(LabelWidth, ' ');
    Fill(row, WordsIn(meaning), LabelWidth);
    return row;
}

std::string Paragraph(const std::string& sentences, std::size_t indentation) {
    std::string text(indentation, ' ');
    Fill(text, WordsIn(sentences), indentation);
    return text;
}

std::string Section(const std::string& heading, const std::vector<Argument>& arguments) {
    std::string text = arguments.empty() ? "" : "\n" + heading + ":\n";
    for (const Argument& argument : arguments)
        text += Row(LabelOf(argument), MeaningOf(argument));
    return text;
}

std::string CommandSection(const std::vector<CommandNode>& commands) {
    std::string text = commands.empty() ? "" : "\nCommands:\n";
    for (const CommandNode& command : commands)
        text += Row(command.name, command.summary);
    return text;
}

std::string ExampleSection(const std::vector<Example>& examples) {
    std::string text = examples.empty() ? "" : "\nExamples:\n";
    for (const Example& example : examples)
        text += "  " + example.line + "\n" + Paragraph(example.meaning, 6);
    return text;
}

std::string StatusSection() {
    std::string text = "\nExit status:\n";
    for (const StatusMeaning& status : Meanings)
        text += Row(std::to_string(static_cast<int>(status.status)), status.meaning);
    return text;
}

std::string HelpOfTool(const CommandNode& root) {
    std::string text = UsageLine("Usage: ", "dyadctx", root.synopsis);
    text += "\n" + Paragraph(root.summary, 0);
    text += CommandSection(root.commands);
    text += Section(CommonOptions, root.options);
    text += ExampleSection(root.examples);
    text += StatusSection();
    text += std::string("\n") + Environment;
    return text + "\n`dyadctx COMMAND --help` tells more about a command.\n";
}

std::string HelpOfCommand(const CommandNode& root, const std::string& path,
                          const CommandNode& command) {
    std::string text = UsageLine("Usage: ", "dyadctx " + path, command.synopsis);
    text += "\n" + Paragraph(command.summary, 0);
    text += CommandSection(command.commands);
    text += Section("Arguments", command.values);
    text += Section("Options", command.options);
    text += Section(CommonOptions, root.options);
    return text + ExampleSection(command.examples);
}

} // namespace

std::span<const StatusMeaning> StatusMeanings() noexcept {
    return Meanings;
}

std::string UsageLine(const std::string& heading, const std::string& command,
                      const std::string& synopsis) {
    std::string text = heading + command + " ";
    Fill(text, PiecesOf(synopsis), std::min(text.size(), LabelWidth));
    return text;
}

std::string LabelOf(const Argument& argument) {
    std::string label;
    for (const std::string& name : argument.names)
        label += (label.empty() ? "" : ", ") + name;
    if (!argument.value.empty())
        label += (label.empty() ? "" : " ") + argument.value;
    return label + (argument.names.empty() && argument.isRepeatable ? "..." : "");
}

std::string MeaningOf(const Argument& argument) {
    std::string meaning = argument.meaning;
    if (argument.names.empty() && !argument.words.empty() && argument.meaning.empty())
        meaning = "One of " + argument.value;
    if (!argument.names.empty() && argument.isRepeatable)
        meaning += " (repeatable)";
    if (!argument.names.empty() && argument.isRequired)
        meaning += " (required)";
    if (!argument.preset.empty())
        meaning += " (default: " + argument.preset + ")";
    return meaning;
}

std::optional<std::string> HelpFor(const CommandNode& root, const std::vector<std::string>& path) {
    if (path.empty())
        return HelpOfTool(root);
    std::string name;
    CommandNode node = root;
    for (const std::string& word : path) {
        const CommandNode* below = FindCommand(node, word);
        if (below == nullptr)
            return std::nullopt;
        CommandNode next = *below;
        // The options of a command hold for those below it.
        if (!name.empty())
            next.options.insert(next.options.end(), node.options.begin(), node.options.end());
        name += (name.empty() ? "" : " ") + next.name;
        node = std::move(next);
    }
    return HelpOfCommand(root, name, node);
}

} // namespace dyadctx::tool
