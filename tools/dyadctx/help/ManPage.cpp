// SPDX-License-Identifier: MIT
// `man-page`: fills the frame of the manual page with what the command line takes. The build runs
// it.
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Paths.h"
#include "tools/dyadctx/help/HelpText.h"
#include "tools/dyadctx/help/Roff.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

namespace dyadctx::tool {

namespace {

class ManPage final : public Command {
public:
    explicit ManPage(CommandTreeSource tree) : tree_(std::move(tree)) {}

    const char* Name() const override { return "man-page"; }
    const char* Summary() const override { return "Fill the frame of the manual page"; }
    const char* Synopsis() const override { return "FRAME"; }
    bool IsInternal() const override { return true; }
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    CommandTreeSource tree_;
    std::string frame_;
};

// Text within a line, which may begin it.
std::string Plain(const std::string& text) {
    return (text.starts_with('.') ? "\\&" : "") + RoffEscaped(text);
}

// The same as one argument of a macro.
std::string Word(const std::string& text) {
    return '"' + Plain(text) + '"';
}

// Each sentence begins a line, as the formatter wants it. "e.g. x" does not occur.
std::string Sentences(const std::string& text) {
    std::string lines = Plain(text);
    for (std::size_t at = 0; (at = lines.find(". ", at)) != std::string::npos; ++at)
        lines[at + 1] = '\n';
    const bool isClosed = lines.ends_with('.') || lines.ends_with('?');
    return lines + (isClosed ? "\n" : ".\n");
}

std::string Item(const Argument& argument) {
    std::string item = ".It";
    std::string gap = " ";
    for (const std::string& name : argument.names) {
        item += gap + "Fl " + Word(name.substr(1));
        gap = " , ";
    }
    if (!argument.value.empty())
        item += std::string(" ") + (argument.words.empty() ? "Ar " : "Cm ") + Word(argument.value);
    if (argument.names.empty() && argument.isRepeatable)
        item += " ...";
    return item + "\n" + Sentences(MeaningOf(argument));
}

std::string Items(const std::vector<Argument>& arguments) {
    if (arguments.empty())
        return "";
    std::string list = ".Bl -tag -width Ds\n";
    for (const Argument& argument : arguments)
        list += Item(argument);
    return list + ".El\n";
}

std::string ExamplesOf(const std::vector<Example>& examples) {
    std::string text;
    for (const Example& example : examples)
        text += ".Pp\n" + Sentences(example.meaning) + ".Dl " + Plain(example.line) + "\n";
    return text;
}

void AddCommand(const CommandNode& command, const std::string& path, std::string& text) {
    text += ".It Ic " + Word(path) + "\n";
    text += ".Bd -ragged -compact\n.Nm\n.Ic " + Word(path) + "\n";
    text += command.synopsis.empty() ? "" : Plain(command.synopsis) + "\n";
    text += ".Ed\n.Pp\n";
    text += Sentences(command.summary);
    const std::string items = Items(command.values) + Items(command.options);
    text += items;
    for (const CommandNode& one : command.commands) {
        text += (&one == &command.commands.front() ? ".Bl -tag -width Ds\n" : "");
        AddCommand(one, path + " " + one.name, text);
        text += (&one == &command.commands.back() ? ".El\n" : "");
    }
    text += ExamplesOf(command.examples);
}

std::string CommandItems(const CommandNode& root) {
    std::string text = ".Bl -tag -width Ds\n";
    for (const CommandNode& command : root.commands)
        AddCommand(command, command.name, text);
    return text + ".El\n";
}

std::string StatusItems() {
    std::string text = ".Bl -tag -width Ds -compact\n";
    for (const StatusMeaning& status : StatusMeanings())
        text += ".It " + std::to_string(static_cast<int>(status.status)) + "\n" +
                Sentences(status.meaning);
    return text + ".El\n";
}

// Replaces the line that is the mark.
void Put(std::string& page, const std::string& mark, const std::string& text) {
    const std::size_t at = page.find(mark + "\n");
    if (at == std::string::npos)
        throw Failure(ExitStatus::NotLoadable, "the frame has no line " + mark);
    page.replace(at, mark.size() + 1, text);
}

// Replaces every mark.
void PutEverywhere(std::string& page, const std::string& mark, const std::string& text) {
    for (std::size_t at = page.find(mark); at != std::string::npos;
         at = page.find(mark, at + text.size()))
        page.replace(at, mark.size(), text);
}

std::string DefaultFile() {
    VELUnicodeString path;
    VELDyadCtxCollector::GetRelativeResourcesPath(path);
    std::string file(path.AsView());
    // Either separator works everywhere; this is the one that all readers know.
    std::replace(file.begin(), file.end(), '\\', '/');
    return file.substr(file.find_first_not_of('/'));
}

std::string ReadFrame(const std::string& file) {
    std::ifstream in(NativePath(file), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    if (!in)
        throw Failure(ExitStatus::NoFile, Visible(file) + " cannot be read");
    return text;
}

void ManPage::Declare(Arguments& arguments) {
    arguments.Add("FRAME", frame_, "The page without its generated pieces").Required();
}

ExitStatus ManPage::Run(Output& output) {
    std::string page = ReadFrame(frame_);
    const CommandNode root = tree_();
    Put(page, "@COMMANDS@", CommandItems(root));
    Put(page, "@COMMON_OPTIONS@", Items(root.options));
    Put(page, "@EXIT_STATUS@", StatusItems());
    PutEverywhere(page, "@DEFAULT_FILE@", Plain(DefaultFile()));
    output.Write(page);
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeManPage(CommandTreeSource tree) {
    return std::make_unique<ManPage>(std::move(tree));
}

} // namespace dyadctx::tool
