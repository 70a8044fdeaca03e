// SPDX-License-Identifier: MIT
// `which`: the file CreateCollector chooses, and why.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/FileChoiceText.h"
#include "tools/dyadctx/IdleVariables.h"
#include "tools/dyadctx/Paths.h"
#include "tools/dyadctx/Words.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace dyadctx::tool {

namespace {

class Which final : public Command {
public:
    const char* Name() const override { return "which"; }
    const char* Summary() const override { return "Tell which context file is in use, and why"; }
    const char* Synopsis() const override { return "[--explain|--path] [--format text|json]"; }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    void WriteAnswer(const VELDyadCtxFileChoice& choice, Output& output) const;

    std::string format_ = "text";
    bool explain_ = false;
    bool path_ = false;
};

using Candidate = VELDyadCtxFileCandidate;

// The line on which the settings name a file; 0 when they do not.
int LineOfAttribute(const Candidate& candidate) {
    return candidate.absence == VELDyadCtxFileAbsence::SettingsBroken ? 0 : candidate.settingsLine;
}

std::string FileOf(const VELDyadCtxFileChoice& choice) {
    unsigned char isDefault = 0;
    return ToText(choice.GetFile(isDefault));
}

std::vector<IdleVariable> VariablesOf(const VELDyadCtxFileChoice& choice) {
    std::vector<IdleVariable> idle = IdleVariablesOfChoice(choice);
    for (const std::vector<IdleVariable>& more : {IdleExchangeChannel(), IdleVariablesOfReading()})
        idle.insert(idle.end(), more.begin(), more.end());
    return idle;
}

// ---- JSON --------------------------------------------------------------------------------------

Json TextOrNull(std::string_view text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

Json SettingsOf(const Candidate& candidate) {
    if (candidate.settingsFile.IsEmpty())
        return nullptr;
    Json json;
    json["file"] = candidate.settingsFile.AsView();
    json["line"] = NumberOrNull(LineOfAttribute(candidate));
    return json;
}

Json ToJson(const Candidate& candidate) {
    Json json;
    json["origin"] = NameOf(candidate.origin);
    json["root"] = NumberOrNull(candidate.folder);
    json["path"] = candidate.hasPath ? Json(candidate.path.AsView()) : Json(nullptr);
    json["verdict"] = NameOf(candidate.verdict);
    json["reason"] = ReasonOf(candidate);
    json["variable"] = TextOrNull(candidate.variable.AsView());
    json["value"] = candidate.isSet ? Json(candidate.value.AsView()) : Json(nullptr);
    json["settings"] = SettingsOf(candidate);
    json["fault"] = TextOrNull(FaultOf(candidate));
    return json;
}

Json ToJson(const IdleVariable& variable) {
    Json json;
    json["variable"] = variable.name;
    json["value"] = variable.value;
    json["reason"] = variable.reason;
    return json;
}

Json DocumentOf(const VELDyadCtxFileChoice& choice) {
    unsigned char isDefault = 0;
    Json document;
    document["schema"] = "dyadctx/which/1";
    document["file"] = TextOrNull(choice.GetFile(isDefault).AsView());
    document["isDefault"] = isDefault != 0;
    document["usable"] = choice.IsUsable();
    document["candidates"] = Json::array();
    for (int i = 1; i <= choice.GetNbCandidates(); ++i)
        document["candidates"].push_back(ToJson(choice.GetCandidateAt(i)));
    document["withoutEffect"] = Json::array();
    for (const IdleVariable& variable : VariablesOf(choice))
        document["withoutEffect"].push_back(ToJson(variable));
    return document;
}

// ---- Text --------------------------------------------------------------------------------------

std::string OriginOf(const Candidate& candidate) {
    const bool isFolder = candidate.folder > 0;
    const bool isSettings = candidate.origin == VELDyadCtxFileOrigin::Settings;
    return (isSettings ? Words("which.settings") : NameOf(candidate.origin)) +
           (isFolder ? " " + std::to_string(candidate.folder) : "");
}

std::string VerdictOf(const Candidate& candidate) {
    const bool isSetting = candidate.origin == VELDyadCtxFileOrigin::Settings;
    const bool isAbsent = candidate.verdict == VELDyadCtxFileVerdict::Absent;
    return Words(isSetting && isAbsent ? std::string("which.not-set")
                                       : std::string("which.") + NameOf(candidate.verdict));
}

void WriteTable(const VELDyadCtxFileChoice& choice, Output& output) {
    Table table({"#", Words("which.origin"), Words("which.verdict"), Words("which.path"),
                 Words("which.reason")});
    for (int i = 1; i <= choice.GetNbCandidates(); ++i) {
        const Candidate& candidate = choice.GetCandidateAt(i);
        table.AddRow({std::to_string(i), OriginOf(candidate), VerdictOf(candidate),
                      Visible(candidate.path.AsView()), ReasonOf(candidate)});
    }
    output.Write(table.Render(output));
}

std::string Quoted(const VELUnicodeString& text) {
    return "\"" + Visible(text.AsView()) + "\"";
}

std::string PlaceOfSettings(const Candidate& candidate) {
    if (candidate.settingsFile.IsEmpty())
        return Words("which.no-settings-file");
    const int line = LineOfAttribute(candidate);
    const std::string place =
        Visible(candidate.settingsFile.AsView()) + (line > 0 ? ":" + std::to_string(line) : "");
    return Words("which.attribute", {place, FileAttribute, Visible(candidate.variable.AsView())});
}

// Where the candidate was found or looked for.
std::string FoundIn(const Candidate& candidate) {
    if (candidate.origin == VELDyadCtxFileOrigin::Settings)
        return PlaceOfSettings(candidate);
    std::string variable = NameOf(candidate.origin);
    if (!candidate.isSet)
        return variable;
    const std::string value = Quoted(candidate.value);
    return candidate.folder > 0
               ? Words("which.entry", {variable, std::to_string(candidate.folder), value})
               : variable + " = " + value;
}

// What is to be known about the path beside the reason.
std::string RemarkOnPath(const Candidate& candidate) {
    const std::string fault = FaultOf(candidate);
    if (fault == ReasonOf(candidate))
        return "";
    if (!fault.empty())
        return " (" + fault + ")";
    return candidate.verdict == VELDyadCtxFileVerdict::Ignored
               ? " (" + Words("which.readable") + ")"
               : "";
}

Paint PaintOf(VELDyadCtxFileVerdict verdict) {
    switch (verdict) {
    case VELDyadCtxFileVerdict::Chosen:
        return Paint::Good;
    case VELDyadCtxFileVerdict::Rejected:
        return Paint::Bad;
    default:
        return Paint::Dim;
    }
}

std::string Explained(const Candidate& candidate, int number, const Output& output) {
    std::string text =
        output.Painted(Paint::Heading, std::to_string(number) + ". " + OriginOf(candidate)) + ": " +
        output.Painted(PaintOf(candidate.verdict), VerdictOf(candidate)) + "\n";
    text += "   " + Words("which.line-reason") + ReasonOf(candidate) + "\n";
    text += "   " + Words("which.line-from") + FoundIn(candidate) + "\n";
    if (!candidate.hasPath)
        return text;
    return text + "   " + Words("which.line-path") + Quoted(candidate.path) +
           RemarkOnPath(candidate) + "\n";
}

void WriteExplanation(const VELDyadCtxFileChoice& choice, Output& output) {
    for (int i = 1; i <= choice.GetNbCandidates(); ++i)
        output.Write(Explained(choice.GetCandidateAt(i), i, output));
    for (const IdleVariable& variable : VariablesOf(choice))
        output.Note(Visible(ToFinding(variable).text.AsView()));
}

void Which::Declare(Arguments& arguments) {
    const Arguments::Option explain =
        arguments.AddSwitch("--explain", explain_,
                            "Tell of each source where it was found, and of each environment\n"
                            "variable that is set without effect why it has none");
    arguments
        .AddSwitch("--path", path_,
                   "Print the path of the file and nothing else, for other programs; the status is "
                   "3\nwhen there is none that can be read")
        .Excludes(explain)
        .Excludes(DeclareFormat(arguments, format_, {"text", "json"}));
}

void Which::WriteAnswer(const VELDyadCtxFileChoice& choice, Output& output) const {
    if (format_ == "json") {
        output.WriteJson(DocumentOf(choice));
        return;
    }
    if (explain_)
        WriteExplanation(choice, output);
    else
        WriteTable(choice, output);
    for (const std::string& remark : RemarksOnMisspeltAttributes())
        output.Note(remark);
    if (choice.IsUsable())
        output.Write("\n" + output.Painted(Paint::Good, Visible(FileOf(choice))) + "\n");
}

std::vector<Example> Which::Examples() const {
    return {
        {"dyadctx which", "The file that commands take without FILE, and every place looked at"},
        {"dyadctx which --explain", "The same with the places in full, and idle variables"},
        {"dyadctx which --path", "The path alone"}};
}

ExitStatus Which::Run(Output& output) {
    VELDyadCtxFileChoice choice;
    MakeChoice(choice);
    if (!path_)
        WriteAnswer(choice, output);
    else if (choice.IsUsable())
        output.Write(InSystemForm(FileOf(choice)) + "\n");
    if (choice.IsUsable())
        return ExitStatus::Done;
    output.Error(Words(FileOf(choice).empty() ? "which.no-file" : "which.unreadable"));
    return ExitStatus::NoFile;
}

} // namespace

std::unique_ptr<Command> MakeWhich() {
    return std::make_unique<Which>();
}

} // namespace dyadctx::tool
