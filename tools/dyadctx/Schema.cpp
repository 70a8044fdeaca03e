// SPDX-License-Identifier: MIT
// `schema`: the schemas of the context file and of the tool's JSON documents.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/EmbeddedFiles.h"
#include "tools/dyadctx/Suggestion.h"
#include "tools/dyadctx/Words.h"

namespace dyadctx::tool {

namespace {

constexpr const char* JsonKind = "json";

class Schema final : public Command {
public:
    const char* Name() const override { return "schema"; }
    const char* Summary() const override {
        return "Print the schema of the context file or of a JSON document";
    }
    const char* Synopsis() const override { return "[rnc|rng|xsd|catalog | json [COMMAND]]"; }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    std::string kind_ = "rnc";
    std::optional<std::string> command_;
};

std::vector<std::string> Kinds() {
    std::vector<std::string> kinds = NamesOf(ContextSchemas());
    kinds.emplace_back(JsonKind);
    return kinds;
}

std::string_view ContextSchemaText(std::string_view kind) {
    const EmbeddedFile* schema = FindFile(ContextSchemas(), kind);
    if (schema == nullptr)
        throw Failure(ExitStatus::Internal, "a schema is missing in the program");
    return schema->text;
}

Failure NoSuchSchema(const std::string& command) {
    const std::vector<std::string> known = NamesOf(JsonSchemas());
    std::string list;
    for (const std::string& name : known)
        list += (list.empty() ? "" : ", ") + name;
    return Failure(ExitStatus::NotFound,
                   Words("schema.none", {Visible(command), DidYouMean(command, known), list}));
}

std::string_view JsonSchemaText(const std::string& command) {
    const EmbeddedFile* schema = FindFile(JsonSchemas(), command);
    if (schema == nullptr)
        throw NoSuchSchema(command);
    return schema->text;
}

std::vector<Example> Schema::Examples() const {
    return {
        {"dyadctx schema > dyadctx-context.rnc", "The schema of the context file, for an editor"},
        {"dyadctx schema json check", "The schema of what `dyadctx check --format json` writes"}};
}

void Schema::Declare(Arguments& arguments) {
    arguments
        .Add(
            "KIND", kind_,
            "Of the context file: rnc (RELAX NG compact, the source of the others), rng (RELAX "
            "NG), xsd (XML Schema), catalog (OASIS catalog of these files). json: of the documents "
            "of --format json")
        .OneOf(Kinds())
        .ShowPreset();
    arguments.Add("COMMAND", command_,
                  "With json: the command whose documents are meant; without it, the commands that "
                  "have a schema are listed");
}

ExitStatus Schema::Run(Output& output) {
    if (kind_ != JsonKind && command_)
        throw Failure(ExitStatus::Usage, Words("schema.not-json", {Visible(*command_)}));
    if (kind_ != JsonKind) {
        output.Write(ContextSchemaText(kind_));
    } else if (command_) {
        output.Write(JsonSchemaText(*command_));
    } else {
        for (const std::string& command : NamesOf(JsonSchemas()))
            output.Write(command + "\n");
    }
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeSchema() {
    return std::make_unique<Schema>();
}

} // namespace dyadctx::tool
