// `which`: the file CreateCollector chooses, and why.
#include "tools/dyadctx/Candidates.h"
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/IdleVariables.h"
#include "tools/dyadctx/SettingsText.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace dyadctx::tool {

namespace {

class Which final : public Command {
public:
    const char* Name() const override { return "which"; }
    const char* Summary() const override { return "Tell which context file is in use, and why"; }
    const char* Synopsis() const override { return "[--explain] [--format text|json]"; }
    std::vector<Example> Examples() const override;
    void Declare(CLI::App& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    void WriteAnswer(const FileChoice& choice, Output& output) const;

    std::string format_ = "text";
    bool explain_ = false;
};

std::vector<IdleVariable> VariablesOf(const FileChoice& choice) {
    std::vector<IdleVariable> idle = IdleVariablesOfChoice(choice);
    for (const std::vector<IdleVariable>& more : {IdleExchangeChannel(), IdleVariablesOfReading()})
        idle.insert(idle.end(), more.begin(), more.end());
    return idle;
}

// ---- JSON --------------------------------------------------------------------------------------

Json TextOrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

Json ToJson(const std::optional<SettingsEntry>& entry) {
    if (!entry)
        return nullptr;
    Json json;
    json["file"] = entry->file;
    json["line"] = NumberOrNull(entry->line);
    return json;
}

Json ToJson(const Candidate& candidate) {
    Json json;
    json["origin"] = candidate.origin;
    json["root"] = NumberOrNull(candidate.root);
    json["path"] = candidate.path ? Json(*candidate.path) : Json(nullptr);
    json["verdict"] = NameOf(candidate.verdict);
    json["reason"] = candidate.reason;
    json["variable"] = TextOrNull(candidate.variable);
    json["value"] = candidate.value ? Json(*candidate.value) : Json(nullptr);
    json["settings"] = ToJson(candidate.settings);
    json["fault"] = TextOrNull(candidate.fault);
    return json;
}

Json ToJson(const IdleVariable& variable) {
    Json json;
    json["variable"] = variable.name;
    json["value"] = variable.value;
    json["reason"] = variable.reason;
    return json;
}

Json DocumentOf(const FileChoice& choice) {
    Json document;
    document["schema"] = "dyadctx/which/1";
    document["file"] = choice.file && !choice.file->empty() ? Json(*choice.file) : Json(nullptr);
    document["isDefault"] = choice.isDefault;
    document["usable"] = choice.usable;
    document["candidates"] = Json::array();
    for (const Candidate& candidate : choice.candidates)
        document["candidates"].push_back(ToJson(candidate));
    document["withoutEffect"] = Json::array();
    for (const IdleVariable& variable : VariablesOf(choice))
        document["withoutEffect"].push_back(ToJson(variable));
    return document;
}

// ---- Text --------------------------------------------------------------------------------------

std::string OriginOf(const Candidate& candidate) {
    const bool root = candidate.root > 0;
    return candidate.origin + (root ? " " + std::to_string(candidate.root) : "");
}

void WriteTable(const FileChoice& choice, Output& output) {
    Table table({"#", "ORIGIN", "VERDICT", "PATH", "REASON"});
    int number = 0;
    for (const Candidate& candidate : choice.candidates)
        table.AddRow({std::to_string(++number), OriginOf(candidate), NameOf(candidate.verdict),
                      Visible(candidate.path.value_or("")), candidate.reason});
    output.Write(table.Render(output));
}

std::string Quoted(const std::string& text) {
    return "\"" + Visible(text) + "\"";
}

std::string PlaceOfSettings(const Candidate& candidate) {
    if (!candidate.settings)
        return "no settings file";
    const SettingsEntry& entry = *candidate.settings;
    const std::string line = entry.line > 0 ? ":" + std::to_string(entry.line) : "";
    const std::string folder =
        candidate.variable.empty() ? "" : " (the folder by " + candidate.variable + ")";
    return Visible(entry.file) + line + ", attribute " + FileAttribute + folder;
}

// Where the candidate was found or looked for.
std::string FoundIn(const Candidate& candidate) {
    if (candidate.origin == "settings")
        return PlaceOfSettings(candidate);
    if (!candidate.value)
        return candidate.variable;
    const std::string entry =
        candidate.root > 0 ? ", entry " + std::to_string(candidate.root) + ":" : " =";
    return candidate.variable + entry + " " + Quoted(*candidate.value);
}

// What is to be known about the path beside the reason.
std::string RemarkOnPath(const Candidate& candidate) {
    if (candidate.fault == candidate.reason)
        return "";
    if (!candidate.fault.empty())
        return " (" + candidate.fault + ")";
    return candidate.verdict == Verdict::Ignored ? " (it could be read)" : "";
}

Paint PaintOf(Verdict verdict) {
    switch (verdict) {
    case Verdict::Chosen:
        return Paint::Good;
    case Verdict::Rejected:
        return Paint::Bad;
    default:
        return Paint::Dim;
    }
}

std::string Explained(const Candidate& candidate, int number, const Output& output) {
    std::string text =
        output.Painted(Paint::Heading, std::to_string(number) + ". " + OriginOf(candidate)) + ": " +
        output.Painted(PaintOf(candidate.verdict), NameOf(candidate.verdict)) + "\n";
    text += "   reason  " + candidate.reason + "\n";
    text += "   from    " + FoundIn(candidate) + "\n";
    if (!candidate.path)
        return text;
    return text + "   path    " + Quoted(*candidate.path) + RemarkOnPath(candidate) + "\n";
}

void WriteExplanation(const FileChoice& choice, Output& output) {
    int number = 0;
    for (const Candidate& candidate : choice.candidates)
        output.Write(Explained(candidate, ++number, output));
    for (const IdleVariable& variable : VariablesOf(choice))
        output.Note(Visible(ToFinding(variable).text));
}

void Which::Declare(CLI::App& arguments) {
    arguments.add_flag("--explain", explain_,
                       "Tell of each source where it was found, and of each environment\n"
                       "variable that is set without effect why it has none");
    DeclareFormat(arguments, format_, {"text", "json"});
}

void Which::WriteAnswer(const FileChoice& choice, Output& output) const {
    if (format_ == "json") {
        output.WriteJson(DocumentOf(choice));
        return;
    }
    if (explain_)
        WriteExplanation(choice, output);
    else
        WriteTable(choice, output);
    if (choice.usable)
        output.Write("\n" + output.Painted(Paint::Good, Visible(*choice.file)) + "\n");
}

std::vector<Example> Which::Examples() const {
    return {
        {"dyadctx which", "The file that commands take without FILE, and every place looked at"},
        {"dyadctx which --explain", "The same with the places in full, and idle variables"}};
}

ExitStatus Which::Run(Output& output) {
    const FileChoice choice = ChooseFile();
    WriteAnswer(choice, output);
    if (choice.usable)
        return ExitStatus::Done;
    output.Error(choice.file && !choice.file->empty()
                     ? "the library takes a file that it cannot read"
                     : "no source names a context file");
    return ExitStatus::NoFile;
}

} // namespace

std::unique_ptr<Command> MakeWhich() {
    return std::make_unique<Which>();
}

} // namespace dyadctx::tool
