// `schema`: the schemas of the context file and of the tool's JSON documents.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/ContextSchemas.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/JsonSchemas.h"
#include "tools/dyadctx/Suggestion.h"

#include <CLI/CLI.hpp>

#include <algorithm>

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
    void Declare(CLI::App& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    std::string kind_ = "rnc";
    std::optional<std::string> command_;
};

std::vector<std::string> Kinds() {
    std::vector<std::string> kinds;
    for (const ContextSchema& schema : ContextSchemas())
        kinds.emplace_back(schema.kind);
    kinds.emplace_back(JsonKind);
    return kinds;
}

std::string_view ContextSchemaText(std::string_view kind) {
    const auto schemas = ContextSchemas();
    const auto found =
        std::find_if(schemas.begin(), schemas.end(),
                     [kind](const ContextSchema& schema) { return schema.kind == kind; });
    if (found == schemas.end())
        throw Failure(ExitStatus::Internal, "a schema is missing in the program");
    return found->text;
}

Failure NoSuchSchema(const std::string& command) {
    std::vector<std::string> known;
    std::string list;
    for (const JsonSchema& schema : JsonSchemas()) {
        known.emplace_back(schema.command);
        list += (list.empty() ? "" : ", ") + known.back();
    }
    return Failure(ExitStatus::NotFound, "there is no JSON schema for '" + Visible(command) + "'" +
                                             DidYouMean(command, known) +
                                             "; the commands with one are " + list);
}

std::string_view JsonSchemaText(const std::string& command) {
    for (const JsonSchema& schema : JsonSchemas()) {
        if (schema.command == command)
            return schema.text;
    }
    throw NoSuchSchema(command);
}

std::vector<Example> Schema::Examples() const {
    return {
        {"dyadctx schema > dyadctx-context.rnc", "The schema of the context file, for an editor"},
        {"dyadctx schema json check", "The schema of what `dyadctx check --format json` writes"}};
}

void Schema::Declare(CLI::App& arguments) {
    OneOf(arguments.add_option("KIND", kind_,
                               "Of the context file: rnc (RELAX NG compact, the source of the "
                               "others), rng (RELAX NG), xsd (XML Schema), catalog (OASIS catalog "
                               "of these files). json: of the documents of --format json"),
          Kinds())
        ->capture_default_str();
    arguments.add_option("COMMAND", command_,
                         "With json: the command whose documents are meant; without it, the "
                         "commands that have a schema are listed");
}

ExitStatus Schema::Run(Output& output) {
    if (kind_ != JsonKind && command_)
        throw Failure(ExitStatus::Usage, "'" + Visible(*command_) + "' goes with json only");
    if (kind_ != JsonKind) {
        output.Write(ContextSchemaText(kind_));
    } else if (command_) {
        output.Write(JsonSchemaText(*command_));
    } else {
        for (const JsonSchema& schema : JsonSchemas())
            output.Write(std::string(schema.command) + "\n");
    }
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeSchema() {
    return std::make_unique<Schema>();
}

} // namespace dyadctx::tool
