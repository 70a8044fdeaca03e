// `which`: the file CreateCollector chooses, and why.
#include "tools/dyadctx/Candidates.h"
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/DisplayText.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace dyadctx::tool {

namespace {

class Which final : public Command {
public:
    const char* Name() const override { return "which"; }
    const char* Summary() const override { return "Tell which context file is in use, and why"; }
    const char* Synopsis() const override { return "[--format text|json]"; }
    std::vector<Example> Examples() const override;
    void Declare(CLI::App& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    std::string format_ = "text";
};

Json ToJson(const Candidate& candidate) {
    Json json;
    json["origin"] = candidate.origin;
    json["root"] = candidate.root > 0 ? Json(candidate.root) : Json(nullptr);
    json["path"] = candidate.path ? Json(*candidate.path) : Json(nullptr);
    json["verdict"] = NameOf(candidate.verdict);
    json["reason"] = candidate.reason;
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
    return document;
}

std::string OriginOf(const Candidate& candidate) {
    const bool root = candidate.root > 0;
    return candidate.origin + (root ? " " + std::to_string(candidate.root) : "");
}

void WriteText(const FileChoice& choice, Output& output) {
    Table table({"#", "ORIGIN", "VERDICT", "PATH", "REASON"});
    int number = 0;
    for (const Candidate& candidate : choice.candidates)
        table.AddRow({std::to_string(++number), OriginOf(candidate), NameOf(candidate.verdict),
                      Visible(candidate.path.value_or("")), candidate.reason});
    output.Write(table.Render(output));
    if (choice.usable)
        output.Write("\n" + output.Painted(Paint::Good, Visible(*choice.file)) + "\n");
}

std::vector<Example> Which::Examples() const {
    return {
        {"dyadctx which", "The file that commands take without FILE, and every place looked at"}};
}

void Which::Declare(CLI::App& arguments) {
    DeclareFormat(arguments, format_, {"text", "json"});
}

ExitStatus Which::Run(Output& output) {
    const FileChoice choice = ChooseFile();
    if (format_ == "json")
        output.WriteJson(DocumentOf(choice));
    else
        WriteText(choice, output);
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
