// `show`: one context in full.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Suggestion.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace dyadctx::tool {

namespace {

class Show final : public Command {
public:
    const char* Name() const override { return "show"; }
    const char* Summary() const override { return "Show one context, and who names it"; }
    const char* Synopsis() const override { return "NAME [FILE] [--format text|json]"; }
    std::vector<Example> Examples() const override;
    void Declare(CLI::App& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    std::string name_;
    std::optional<std::string> file_;
    std::string format_ = "text";
};

// A context together with the contexts that name it.
struct ContextReport {
    ContextFacts context;
    std::vector<std::string> friendOf;
    std::vector<std::string> associatedOf;
};

Failure NoSuchContext(const std::string& name, const Source& source,
                      const std::vector<ContextFacts>& contexts) {
    std::vector<std::string> names;
    for (const ContextFacts& context : contexts)
        names.push_back(context.name);
    std::string text = "there is no context '" + Visible(name) + "' in " + Visible(source.file) +
                       DidYouMean(name, names);
    if (!IsDbContextEnvironmentOn())
        text += " (database contexts are left out without --db-context)";
    return Failure(ExitStatus::NotFound, text);
}

ContextReport ContextReportOf(const std::string& name, const Source& source,
                              const ContextPlaces& places) {
    const std::vector<ContextFacts> contexts = FactsOfView(*source.collector, places);
    const auto found = std::find_if(contexts.begin(), contexts.end(),
                                    [&](const ContextFacts& one) { return one.name == name; });
    if (found == contexts.end())
        throw NoSuchContext(name, source, contexts);
    ContextReport report{*found, {}, {}};
    for (const ContextFacts& other : contexts) {
        if (std::find(other.friends.begin(), other.friends.end(), name) != other.friends.end())
            report.friendOf.push_back(other.name);
        if (other.associated == name)
            report.associatedOf.push_back(other.name);
    }
    return report;
}

Json DocumentOf(const Source& source, const ContextReport& report) {
    Json document;
    document["schema"] = "dyadctx/show/1";
    document["file"] = source.file;
    document["context"] = ToJson(report.context);
    document["siteProviders"] = Json::array();
    for (const SiteFacts& site : report.context.sites)
        document["siteProviders"].push_back(
            {{"site", site.site}, {"provider", ToJson(site.provider)}});
    document["friendOf"] = report.friendOf;
    document["associatedOf"] = report.associatedOf;
    return document;
}

void WriteText(const ContextReport& report, Output& output) {
    const ContextFacts& context = report.context;
    const auto line = [&output](const std::string& label, const std::string& value) {
        const std::string padded = label + std::string(16 - label.size(), ' ');
        if (!value.empty())
            output.Write(output.Painted(Paint::Heading, padded) + value + "\n");
    };
    line("Name", Visible(context.name));
    line("Position", std::to_string(context.position));
    line("Type", TypeLabel(context));
    line("Parameter", Visible(context.parameter));
    if (context.provider)
        line("Provider", Describe(*context.provider));
    for (const SiteFacts& site : context.sites)
        line("Site", (site.site.empty() ? "(no details)" : Visible(site.site)) +
                         (site.provider ? ": " + Describe(*site.provider) : ""));
    line("Friends", Joined(context.friends));
    line("Associated", Visible(context.associated.value_or("")));
    line("Friend of", Joined(report.friendOf));
    line("Associated of", Joined(report.associatedOf));
}

std::vector<Example> Show::Examples() const {
    return {{"dyadctx show Vault site.xml --db-context",
             "What it stands for, its friends, and who names it"}};
}

void Show::Declare(CLI::App& arguments) {
    arguments.add_option("NAME", name_, "The name of the context")->required();
    DeclareFile(arguments, file_);
    DeclareFormat(arguments, format_, {"text", "json"});
}

ExitStatus Show::Run(Output& output) {
    const Source source = LoadSourceOrFail(file_, output);
    const ContextPlaces places = format_ == "json" ? PlacesOfContexts(source) : ContextPlaces();
    const ContextReport report = ContextReportOf(name_, source, places);
    if (format_ == "json")
        output.WriteJson(DocumentOf(source, report));
    else
        WriteText(report, output);
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeShow() {
    return std::make_unique<Show>();
}

} // namespace dyadctx::tool
