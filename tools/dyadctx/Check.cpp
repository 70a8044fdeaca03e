// `check`: is it valid?
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Source.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace dyadctx::tool {

namespace {

constexpr const char* Schema = "dyadctx/check/1";

ExitStatus StatusOf(const Source& source) {
    if (source.collector)
        return ExitStatus::Done;
    return source.status == ExitStatus::NotLoadable ? ExitStatus::No : source.status;
}

// How much a status matters when several files were checked.
int WeightOf(ExitStatus status) {
    return static_cast<int>(status);
}

Json ToJson(const Finding& finding) {
    Json json;
    json["key"] = finding.key;
    json["parameters"] = finding.parameters;
    json["severity"] = "error";
    json["text"] = finding.text;
    json["context"] = finding.context ? Json(*finding.context) : Json(nullptr);
    json["line"] = nullptr;
    json["column"] = nullptr;
    return json;
}

void AddVerdict(Json& json, const Source& source) {
    json["file"] = source.file.empty() ? Json(nullptr) : Json(source.file);
    json["valid"] = source.collector != nullptr;
    json["message"] = source.message;
    json["findings"] = Json::array();
    for (const Finding& finding : source.findings)
        json["findings"].push_back(ToJson(finding));
}

Json DocumentOf(const std::vector<Source>& sources) {
    Json document;
    document["schema"] = Schema;
    if (sources.size() == 1) {
        AddVerdict(document, sources.front());
        return document;
    }
    document["files"] = Json::array();
    for (const Source& source : sources) {
        Json json;
        AddVerdict(json, source);
        document["files"].push_back(json);
    }
    return document;
}

std::string Counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

class Check final : public Command {
public:
    const char* Name() const override { return "check"; }
    const char* Summary() const override { return "Tell whether context files are valid"; }
    const char* Synopsis() const override { return "[FILE]... [--format text|json]"; }
    void Declare(CLI::App& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    void WriteFindings(const Source& source, Output& output) const;
    void WriteSummary(const std::vector<Source>& sources, Output& output) const;

    std::vector<std::string> files_;
    std::string format_ = "text";
};

void Check::Declare(CLI::App& arguments) {
    arguments.add_option("FILE", files_,
                         "The context files; without any, the one CreateCollector chooses");
    DeclareFormat(arguments, format_, {"text", "json"});
}

ExitStatus Check::Run(Output& output) {
    std::vector<Source> sources;
    for (const std::string& file : files_)
        sources.push_back(LoadSource(file));
    if (files_.empty())
        sources.push_back(LoadSource(std::nullopt));
    if (format_ == "json") {
        output.WriteJson(DocumentOf(sources));
    } else {
        for (const Source& source : sources)
            WriteFindings(source, output);
        WriteSummary(sources, output);
    }
    ExitStatus worst = ExitStatus::Done;
    for (const Source& source : sources)
        worst = std::max(worst, StatusOf(source),
                         [](ExitStatus a, ExitStatus b) { return WeightOf(a) < WeightOf(b); });
    return worst;
}

void Check::WriteFindings(const Source& source, Output& output) const {
    const std::string severity = output.Painted(Paint::Bad, "error");
    for (const Finding& finding : source.findings)
        output.Write(FindingLine(source.file, severity, finding) + "\n");
    if (source.collector == nullptr && source.findings.empty())
        output.Write(Visible(source.file) + ": " + severity + ": " + ReasonOfSilentFailure(source) +
                     "\n");
}

void Check::WriteSummary(const std::vector<Source>& sources, Output& output) const {
    if (output.IsQuiet())
        return;
    std::size_t findings = 0;
    std::size_t invalid = 0;
    for (const Source& source : sources) {
        findings += source.findings.size();
        invalid += source.collector ? 0U : 1U;
        if (source.collector)
            output.Write(
                Visible(source.file) + ": " + output.Painted(Paint::Good, "valid") + ", " +
                Counted(static_cast<std::size_t>(source.collector->GetAllNbCtxs()), "context") +
                "\n");
    }
    if (sources.size() > 1 || invalid > 0)
        output.Write(Counted(sources.size(), "file") + " checked, " + std::to_string(invalid) +
                     " not valid, " + Counted(findings, "finding") + "\n");
}

} // namespace

std::unique_ptr<Command> MakeCheck() {
    return std::make_unique<Check>();
}

} // namespace dyadctx::tool
