// SPDX-License-Identifier: MIT
#include "tools/dyadctx/completion/CompletionScript.h"

#include "tools/dyadctx/EmbeddedFiles.h"

#include <stdexcept>

namespace dyadctx::tool {

namespace {

// The line of a frame in whose place the table goes.
constexpr std::string_view TableMark = "@TABLE@\n";

// In single quotes, with what ends them or means something within them written as the shell does.
std::string Quoted(const std::string& text, std::string_view special, std::string_view before,
                   std::string_view behind) {
    std::string quoted = "'";
    for (const char one : text) {
        const bool isSpecial = special.find(one) != std::string_view::npos;
        quoted += isSpecial ? std::string(before) + one + std::string(behind) : std::string(1, one);
    }
    return quoted + "'";
}

std::string QuotedForSh(const std::string& text) {
    return Quoted(text, "'", "'\\", "'");
}

std::string QuotedForFish(const std::string& text) {
    return Quoted(text, "\\'", "\\", "");
}

std::string QuotedForPowerShell(const std::string& text) {
    return Quoted(text, "'", "'", "");
}

using RowWriter = std::string (*)(const CompletionRow& row);
using Quote = std::string (*)(const std::string& text);

// Each of them quoted, with a separator between.
template<class T>
std::string List(const std::vector<T>& items, std::string T::*text, Quote quote,
                 const std::string& separator) {
    std::string list;
    for (const T& item : items)
        list += (list.empty() ? "" : separator) + quote(item.*text);
    return list;
}

std::string List(const std::vector<Offer>& offers, Quote quote, const std::string& separator) {
    std::string list;
    for (const Offer& offer : offers)
        list += (list.empty() ? "" : separator) + quote(offer);
    return list;
}

std::string ShArray(const std::string& name, const std::string& list) {
    return "        " + name + "=(" + list + ")\n";
}

// bash shows no meanings beside what it offers.
std::string ShRow(const CompletionRow& row, bool withMeanings) {
    const std::string line = "\n            ";
    std::string text = "    " + QuotedForSh(row.path) + ")\n";
    text += ShArray("commands", List(row.commands, &OfferedCommand::name, QuotedForSh, " "));
    text += ShArray("options", List(row.options, &OfferedOption::name, QuotedForSh, " "));
    text += ShArray("offers", List(row.options, &OfferedOption::offer, QuotedForSh, " "));
    text += ShArray("values", List(row.values, QuotedForSh, " "));
    if (withMeanings) {
        text +=
            ShArray("summaries", List(row.commands, &OfferedCommand::meaning, QuotedForSh, line));
        text += ShArray("meanings", List(row.options, &OfferedOption::meaning, QuotedForSh, line));
    }
    return text + "        repeats=" + (row.repeats ? "1" : "0") + "\n        ;;\n";
}

std::string BashRow(const CompletionRow& row) {
    return ShRow(row, false);
}

std::string ZshRow(const CompletionRow& row) {
    return ShRow(row, true);
}

std::string FishSet(const std::string& name, const std::string& list) {
    return "            set -g __dyadctx_" + name + (list.empty() ? "" : " ") + list + "\n";
}

std::string FishRow(const CompletionRow& row) {
    const std::string line = " \\\n                ";
    return "        case " + QuotedForFish(row.path) + "\n" +
           FishSet("commands", List(row.commands, &OfferedCommand::name, QuotedForFish, " ")) +
           FishSet("summaries", List(row.commands, &OfferedCommand::meaning, QuotedForFish, line)) +
           FishSet("options", List(row.options, &OfferedOption::name, QuotedForFish, " ")) +
           FishSet("offers", List(row.options, &OfferedOption::offer, QuotedForFish, " ")) +
           FishSet("meanings", List(row.options, &OfferedOption::meaning, QuotedForFish, line)) +
           FishSet("values", List(row.values, QuotedForFish, " ")) +
           FishSet("repeats", row.repeats ? "1" : "0");
}

std::string PowerShellList(const std::string& name, const std::string& list) {
    return "            " + name + " = @(" + list + ")\n";
}

std::string PowerShellRow(const CompletionRow& row) {
    const auto quote = QuotedForPowerShell;
    const std::string line = ",\n                ";
    return "        " + quote(row.path) + " = @{\n" +
           PowerShellList("Commands", List(row.commands, &OfferedCommand::name, quote, ", ")) +
           PowerShellList("Summaries", List(row.commands, &OfferedCommand::meaning, quote, line)) +
           PowerShellList("Options", List(row.options, &OfferedOption::name, quote, ", ")) +
           PowerShellList("Offers", List(row.options, &OfferedOption::offer, quote, ", ")) +
           PowerShellList("Meanings", List(row.options, &OfferedOption::meaning, quote, line)) +
           PowerShellList("Values", List(row.values, quote, ", ")) +
           "            Repeats = " + (row.repeats ? "$true" : "$false") + "\n        }\n";
}

RowWriter WriterFor(std::string_view shell) {
    if (shell == "bash")
        return BashRow;
    if (shell == "zsh")
        return ZshRow;
    return shell == "fish" ? FishRow : PowerShellRow;
}

} // namespace

std::vector<std::string> KnownShells() {
    return NamesOf(CompletionFrames());
}

std::string CompletionScript(std::string_view shell, const std::vector<CompletionRow>& table) {
    const EmbeddedFile* frame = FindFile(CompletionFrames(), shell);
    const std::size_t mark =
        frame == nullptr ? std::string_view::npos : frame->text.find(TableMark);
    if (mark == std::string_view::npos)
        throw std::logic_error("no frame with a place for the table");
    std::string script(frame->text.substr(0, mark));
    for (const CompletionRow& row : table)
        script += WriterFor(shell)(row);
    return script + std::string(frame->text.substr(mark + TableMark.size()));
}

} // namespace dyadctx::tool
