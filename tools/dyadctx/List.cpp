// `list`: the contexts of a file.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Source.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace dyadctx::tool {

namespace {

class List final : public Command {
public:
    const char* Name() const override { return "list"; }
    const char* Summary() const override { return "List the contexts of a file"; }
    const char* Synopsis() const override {
        return "[FILE] [--type all|path|database|file] [--provider PROVIDER]... "
               "[--format text|json|names]";
    }
    std::vector<Example> Examples() const override;
    void Declare(CLI::App& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    std::optional<std::string> file_;
    ViewChoice view_;
    std::string format_ = "text";
};

// What matters at a glance; `show` tells the rest. A single site is the context's own database.
std::string SitesToShow(const ContextFacts& context) {
    std::vector<std::string> names;
    for (const SiteFacts& site : context.sites)
        names.push_back(site.site);
    return names.size() > 1 ? Joined(names) : "";
}

void WriteTable(const std::vector<ContextFacts>& contexts, Output& output) {
    Table table({"#", "NAME", "TYPE", "PARAMETER", "PROVIDER", "SITES", "FRIENDS", "ASSOCIATED"});
    for (const ContextFacts& context : contexts) {
        table.AddRow({std::to_string(context.position), Visible(context.name), TypeLabel(context),
                      Visible(context.parameter),
                      context.provider ? Visible(context.provider->name) : "", SitesToShow(context),
                      Joined(context.friends), Visible(context.associated.value_or(""))});
    }
    output.Write(table.Render(output));
}

Json DocumentOf(const Source& source, const std::vector<ContextFacts>& contexts) {
    Json document;
    document["schema"] = "dyadctx/list/1";
    document["file"] = source.file;
    document["isDefault"] = source.isDefault;
    document["view"] = NameOfView(*source.collector);
    document["contexts"] = Json::array();
    for (const ContextFacts& context : contexts)
        document["contexts"].push_back(ToJson(context));
    return document;
}

std::vector<Example> List::Examples() const {
    return {{"dyadctx list site.xml --db-context", "A table of all contexts"},
            {"dyadctx list --format names", "The names alone, of the file in use"}};
}

void List::Declare(CLI::App& arguments) {
    DeclareFile(arguments, file_);
    DeclareView(arguments, view_);
    OneOf(arguments.add_option("--format", format_,
                               "How to write the answer: text for people, json for programs, names "
                               "for one name per line"),
          {"text", "json", "names"})
        ->capture_default_str();
}

ExitStatus List::Run(Output& output) {
    const Source source = LoadSourceOrFail(file_, output);
    const ContextPlaces places = format_ == "json" ? PlacesOfContexts(source) : ContextPlaces();
    SelectView(*source.collector, view_, output);
    const std::vector<ContextFacts> contexts = FactsOfView(*source.collector, places);
    if (format_ == "json") {
        output.WriteJson(DocumentOf(source, contexts));
    } else if (format_ == "names") {
        for (const ContextFacts& context : contexts)
            output.Write(Visible(context.name) + "\n");
    } else {
        WriteTable(contexts, output);
    }
    if (contexts.empty())
        output.Note("there is no context in this view");
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeList() {
    return std::make_unique<List>();
}

} // namespace dyadctx::tool
