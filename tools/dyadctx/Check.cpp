// SPDX-License-Identifier: MIT
// `check`: is it valid, and what else is to be said about it?
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Suggestion.h"
#include "tools/dyadctx/SystemServices.h"
#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/report/Report.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace dyadctx::tool {

namespace {

class Check final : public Command {
public:
    const char* Name() const override { return "check"; }
    const char* Summary() const override { return "Tell whether context files are valid"; }
    const char* Synopsis() const override {
        return "[FILE]... [--deep] [--off ID]... [--fail-on error|warning|note] "
               "[--format text|json|sarif|github]";
    }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    CheckedFile CheckOne(const std::optional<std::string>& file) const;
    ExitStatus StatusOf(const CheckedFile& file) const;
    Severity LowestFailing() const;
    void RefuseUnknownKinds() const;

    std::vector<std::string> files_;
    std::vector<std::string> off_;
    std::string failOn_ = "error";
    std::string format_ = "text";
    bool deep_ = false;
};

std::vector<Example> Check::Examples() const {
    return {{"dyadctx check site.xml --db-context",
             "Every fault with its line and column; the status is 0 when there is none"},
            {"dyadctx check --deep --fail-on warning --format github site.xml",
             "The same in a workflow, where a warning counts as a fault"}};
}

void Check::Declare(Arguments& arguments) {
    arguments
        .Add("FILE", files_,
             "The context files, - for standard input; without any, the one that `dyadctx which` "
             "tells")
        .Takes("FILE");
    arguments.AddSwitch("--deep", deep_,
                        "Look also whether the folders and files that contexts name exist");
    arguments
        .Add("--off", off_,
             "Leave out the warnings or notes with this id; it stands in brackets behind each. "
             "Errors and what they entail cannot be left out")
        .Takes("ID")
        .OneValueEach();
    arguments
        .Add("--fail-on", failOn_,
             "From which severity on the exit status is 1; a file with warnings is valid all the "
             "same")
        .OneOf({"error", "warning", "note"})
        .ShowPreset();
    arguments
        .Add("--format", format_,
             "How to write the answer: text for people, json for programs, sarif (2.1.0) for "
             "editors and code scanning, github for annotations in a workflow")
        .OneOf({"text", "json", "sarif", "github"})
        .ShowPreset();
}

// An error cannot be left out: the file would be not valid for no reason.
void Check::RefuseUnknownKinds() const {
    std::vector<std::string> known;
    for (const VELDyadCtxFindingKind& kind : FindingKinds()) {
        if (kind.severity != Severity::Error)
            known.push_back(ToText(kind.id));
    }
    for (const std::string& id : off_) {
        if (std::find(known.begin(), known.end(), id) == known.end())
            throw Failure(ExitStatus::Usage,
                          Words("check.no-kind", {Visible(id)}) + DidYouMean(id, known));
    }
}

CheckedFile Check::CheckOne(const std::optional<std::string>& file) const {
    CheckedFile checked{LoadSource(file), {}};
    checked.findings = Diagnose(checked.source, {deep_, off_});
    if (format_ == "text")
        checked.vanishing = CountVanishing(checked.source, checked.findings, {deep_, off_});
    // The second reading may lack the memory that the first one had.
    if (checked.source.collector && CountOf(checked, Severity::Error) > 0)
        throw Failure(ExitStatus::Internal, "the file was loaded, but could not be read again");
    return checked;
}

ExitStatus Check::StatusOf(const CheckedFile& file) const {
    const Source& source = file.source;
    if (!source.collector)
        return source.status == ExitStatus::NotLoadable ? ExitStatus::No : source.status;
    const Severity lowest = LowestFailing();
    for (const Severity severity : {Severity::Warning, Severity::Note}) {
        if (severity <= lowest && CountOf(file, severity) > 0)
            return ExitStatus::No;
    }
    return ExitStatus::Done;
}

// Severities are in falling order.
Severity Check::LowestFailing() const {
    if (failOn_ == "note")
        return Severity::Note;
    return failOn_ == "warning" ? Severity::Warning : Severity::Error;
}

ExitStatus Check::Run(Output& output) {
    RefuseUnknownKinds();
    std::vector<CheckedFile> files;
    for (const std::string& word : files_) {
        for (const std::string& file : FilesNamed(word))
            files.push_back(CheckOne(file));
    }
    if (files_.empty())
        files.push_back(CheckOne(std::nullopt));
    for (Finding& finding : VariablesWithoutEffect(!files_.empty())) {
        if (std::find(off_.begin(), off_.end(), finding.id.AsView()) == off_.end())
            files.front().findings.push_back(std::move(finding));
    }
    ExitStatus worst = ExitStatus::Done;
    for (const CheckedFile& file : files)
        worst = std::max(worst, StatusOf(file));
    if (format_ == "json")
        output.WriteJson(JsonReport(files));
    else if (format_ == "sarif")
        output.WriteJson(SarifReport(files, worst));
    else if (format_ == "github")
        output.Write(GithubReport(files));
    else
        WriteTextReport(files, LowestFailing(), output);
    return worst;
}

} // namespace

std::unique_ptr<Command> MakeCheck() {
    return std::make_unique<Check>();
}

} // namespace dyadctx::tool
