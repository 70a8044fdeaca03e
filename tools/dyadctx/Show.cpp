// SPDX-License-Identifier: MIT
// `show`: one context in full.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Suggestion.h"
#include "tools/dyadctx/Words.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <string_view>

namespace dyadctx::tool {

namespace {

class Show final : public Command {
public:
    const char* Name() const override { return "show"; }
    const char* Summary() const override { return "Show one context, and who names it"; }
    const char* Synopsis() const override {
        return "NAME [FILE] [--field FIELD] [--format text|json]";
    }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    std::string name_;
    std::optional<std::string> file_;
    std::optional<std::string> field_;
    std::string format_ = "text";
};

// A context together with the contexts that name it.
struct ContextReport {
    ContextFacts context;
    std::vector<std::string> friendOf;
    std::vector<std::string> associatedOf;
};

std::vector<std::string> NamesOf(const std::vector<ContextFacts>& contexts) {
    std::vector<std::string> names;
    for (const ContextFacts& context : contexts)
        names.push_back(context.name);
    return names;
}

ContextReport ContextReportOf(const std::string& name, const Source& source) {
    const std::vector<ContextFacts> contexts = FactsOfView(*source.collector, source.check.get());
    const auto found = std::find_if(contexts.begin(), contexts.end(),
                                    [&](const ContextFacts& one) { return one.name == name; });
    if (found == contexts.end())
        throw NoSuchContext(name, source.file, NamesOf(contexts));
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
    const auto line = [&output](const char* label, const std::string& value) {
        const std::string text = Words(label);
        const int gap = std::max(1, 16 - DisplayWidth(text));
        const std::string padded = text + std::string(static_cast<std::size_t>(gap), ' ');
        if (!value.empty())
            output.Write(output.Painted(Paint::Heading, padded) + value + "\n");
    };
    line("show.name", Visible(context.name));
    line("show.position", std::to_string(context.position));
    line("show.type", TypeLabel(context));
    line("show.parameter", Visible(context.parameter));
    if (context.provider)
        line("show.provider", Describe(*context.provider));
    for (const SiteFacts& site : context.sites)
        line("show.site", (site.site.empty() ? Words("show.no-details") : Visible(site.site)) +
                              (site.provider ? ": " + Describe(*site.provider) : ""));
    line("show.friends", Joined(context.friends));
    line("show.associated", Visible(context.associated.value_or("")));
    line("show.friend-of", Joined(report.friendOf));
    line("show.associated-of", Joined(report.associatedOf));
}

// ---- One field ---------------------------------------------------------------------------------

using Values = std::vector<std::string>;

struct Field {
    const char* name;
    // None where the context has no such thing.
    std::optional<Values> (*values)(const ContextReport& report);
};

Values SitesOf(const ContextReport& report) {
    Values sites;
    for (const SiteFacts& site : report.context.sites)
        sites.push_back(site.site);
    return sites;
}

std::optional<Values> AssociatedOf(const ContextReport& report) {
    const std::optional<std::string>& name = report.context.associated;
    return name ? std::optional(Values{*name}) : std::nullopt;
}

const std::array Fields{
    Field{"name", [](const ContextReport& p) { return std::optional(Values{p.context.name}); }},
    Field{"position",
          [](const ContextReport& p) {
              return std::optional(Values{std::to_string(p.context.position)});
          }},
    Field{"parameter",
          [](const ContextReport& p) { return std::optional(Values{p.context.parameter}); }},
    Field{"parameterType",
          [](const ContextReport& p) { return std::optional(Values{p.context.parameterType}); }},
    Field{"label", [](const ContextReport& p) { return std::optional(Values{p.context.label}); }},
    Field{"friends", [](const ContextReport& p) { return std::optional(p.context.friends); }},
    Field{"associated", AssociatedOf},
    Field{"sites", [](const ContextReport& p) { return std::optional(SitesOf(p)); }},
    Field{"friendOf", [](const ContextReport& p) { return std::optional(p.friendOf); }},
    Field{"associatedOf", [](const ContextReport& p) { return std::optional(p.associatedOf); }},
};

// Short names of the details that a context file has.
struct Detail {
    std::string_view name;
    std::string_view key;
};
constexpr std::array Details{Detail{"server", "ServerName"}, Detail{"port", "ServerPort"},
                             Detail{"role", "Role"},         Detail{"site", "SiteId"},
                             Detail{"uri", "URI"},           Detail{"http", "http"}};
constexpr std::string_view ProviderPrefix = "provider.";

Failure NoSuchField(const std::string& name) {
    Values known{"provider.name"};
    for (const Field& field : Fields)
        known.emplace_back(field.name);
    for (const Detail& detail : Details)
        known.push_back(std::string(ProviderPrefix) + std::string(detail.name));
    return Failure(ExitStatus::Usage,
                   Words("show.no-field", {Visible(name)}) + DidYouMean(name, known));
}

// A detail by its short name, or as the provider calls it.
std::optional<Values> ValuesOfProvider(const ProviderFacts& provider, const std::string& field) {
    const std::string name = field.substr(ProviderPrefix.size());
    if (name == "name")
        return Values{provider.name};
    const auto* known = std::find_if(Details.begin(), Details.end(),
                                     [&](const Detail& detail) { return detail.name == name; });
    const std::string key(known != Details.end() ? known->key : name);
    for (const auto& [detail, value] : provider.serverDetails) {
        if (detail == key)
            return Values{value};
    }
    if (known == Details.end())
        throw NoSuchField(field);
    return std::nullopt;
}

bool IsKnownField(const std::string& name) {
    return name.starts_with(ProviderPrefix) ||
           std::any_of(Fields.begin(), Fields.end(),
                       [&](const Field& field) { return field.name == name; });
}

std::optional<Values> ValuesOf(const ContextReport& report, const std::string& name) {
    if (name.starts_with(ProviderPrefix)) {
        const std::optional<ProviderFacts>& provider = report.context.provider;
        return provider ? ValuesOfProvider(*provider, name) : std::nullopt;
    }
    for (const Field& field : Fields) {
        if (field.name == name)
            return field.values(report);
    }
    throw NoSuchField(name);
}

// As it is, but for secrets. Of a list each value on a line.
void WriteField(const ContextReport& report, const std::string& name, Output& output) {
    const std::optional<Values> values = ValuesOf(report, name);
    if (!values)
        throw Failure(ExitStatus::NotFound,
                      Words("show.no-value", {Visible(report.context.name), Visible(name)}));
    for (const std::string& value : *values)
        output.Write(Masked(value) + "\n");
}

std::vector<Example> Show::Examples() const {
    return {{"dyadctx show Vault site.xml --db-context",
             "What it stands for, its friends, and who names it"},
            {"dyadctx show Vault site.xml --db-context --field provider.server",
             "The server alone, for a script"}};
}

void Show::Declare(Arguments& arguments) {
    arguments.Add("NAME", name_, "The name of the context").Required();
    DeclareFile(arguments, file_);
    Arguments::Option field = arguments.Add(
        "--field", field_,
        "Print the value of one field alone: name, position, parameter, parameterType, label, "
        "friends, associated, sites, friendOf, associatedOf, provider.name, provider.server, "
        "provider.port, provider.role, provider.site, provider.uri or provider.http");
    field.Takes("FIELD").Excludes(DeclareFormat(arguments, format_, {"text", "json"}));
}

ExitStatus Show::Run(Output& output) {
    if (field_ && !IsKnownField(*field_))
        throw NoSuchField(*field_);
    const Source source = LoadSourceOrFail(
        file_, output, format_ == "json" ? Reading::WithPlaces : Reading::Contexts);
    const ContextReport report = ContextReportOf(name_, source);
    if (field_)
        WriteField(report, *field_, output);
    else if (format_ == "json")
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
