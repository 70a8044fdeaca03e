// SPDX-License-Identifier: MIT
// `diff`: what differs between two context files, by context name.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Words.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string_view>

namespace dyadctx::tool {

namespace {

std::string RawText(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// One property of a context that both files have, for JSON and for people.
struct Change {
    std::string what;
    Json from;
    Json to;
    std::string fromText;
    std::string toText;

    // What is masked cannot be seen to differ.
    bool HasOtherSecrets() const { return HaveOtherSecrets(RawText(from), RawText(to)); }
};

struct ChangedContext {
    std::string name;
    std::vector<Change> changes;
};

struct Difference {
    std::vector<ContextFacts> added;
    std::vector<ContextFacts> removed;
    std::vector<ChangedContext> changed;
    std::vector<ScenarioFacts> scenariosAdded;
    std::vector<ScenarioFacts> scenariosRemoved;

    bool IsNone() const {
        return added.empty() && removed.empty() && changed.empty() && scenariosAdded.empty() &&
               scenariosRemoved.empty();
    }
};

std::string Quoted(const std::string& text) {
    return "\"" + Visible(text) + "\"";
}

std::string TextOf(const std::optional<std::string>& name) {
    return name ? Quoted(*name) : Words("diff.none");
}

std::string TextOf(const std::vector<std::string>& names) {
    return names.empty() ? Words("diff.none") : Joined(names);
}

std::string TextOf(const std::optional<ProviderFacts>& provider) {
    return provider ? Describe(*provider) : Words("diff.none");
}

std::string TextOf(const SiteFacts& site) {
    return Quoted(site.site) + (site.provider ? " " + Describe(*site.provider) : "");
}

std::string TextOf(const std::vector<SiteFacts>& sites) {
    std::string text;
    for (const SiteFacts& site : sites)
        text += (text.empty() ? "" : ", ") + TextOf(site);
    return text.empty() ? Words("diff.none") : text;
}

Json ToJson(const std::vector<SiteFacts>& sites) {
    Json json = Json::array();
    for (const SiteFacts& site : sites)
        json.push_back({{"site", site.site}, {"provider", tool::ToJson(site.provider)}});
    return json;
}

// The order of the sites of a context is of no meaning.
std::vector<SiteFacts> Sorted(std::vector<SiteFacts> sites) {
    std::sort(sites.begin(), sites.end(),
              [](const SiteFacts& a, const SiteFacts& b) { return a.site < b.site; });
    return sites;
}

std::vector<Change> ChangesBetween(const ContextFacts& from, const ContextFacts& to) {
    std::vector<Change> changes;
    const auto compareTexts = [&](const char* what, const std::string& a, const std::string& b) {
        if (a != b)
            changes.push_back({what, a, b, Quoted(a), Quoted(b)});
    };
    compareTexts("parameter", from.parameter, to.parameter);
    compareTexts("parameterType", from.parameterType, to.parameterType);
    if (from.provider != to.provider)
        changes.push_back({"provider", tool::ToJson(from.provider), tool::ToJson(to.provider),
                           TextOf(from.provider), TextOf(to.provider)});
    const std::vector<SiteFacts> fromSites = Sorted(from.sites);
    const std::vector<SiteFacts> toSites = Sorted(to.sites);
    if (fromSites != toSites)
        changes.push_back(
            {"sites", ToJson(fromSites), ToJson(toSites), TextOf(fromSites), TextOf(toSites)});
    if (from.friends != to.friends)
        changes.push_back(
            {"friends", from.friends, to.friends, TextOf(from.friends), TextOf(to.friends)});
    if (from.associated != to.associated)
        changes.push_back({"associated", from.associated ? Json(*from.associated) : Json(nullptr),
                           to.associated ? Json(*to.associated) : Json(nullptr),
                           TextOf(from.associated), TextOf(to.associated)});
    return changes;
}

using ByName = std::map<std::string_view, const ContextFacts*>;

ByName Indexed(const std::vector<ContextFacts>& contexts) {
    ByName index;
    for (const ContextFacts& context : contexts)
        index.emplace(context.name, &context);
    return index;
}

void CompareContexts(VELDyadCtxCollector& from, VELDyadCtxCollector& to, Difference& difference) {
    const std::vector<ContextFacts> before = FactsOfView(from);
    const std::vector<ContextFacts> after = FactsOfView(to);
    const ByName beforeByName = Indexed(before);
    const ByName afterByName = Indexed(after);
    for (const ContextFacts& context : before) {
        const auto other = afterByName.find(context.name);
        if (other == afterByName.end()) {
            difference.removed.push_back(context);
            continue;
        }
        const std::vector<Change> changes = ChangesBetween(context, *other->second);
        if (!changes.empty())
            difference.changed.push_back({context.name, changes});
    }
    std::copy_if(after.begin(), after.end(), std::back_inserter(difference.added),
                 [&](const ContextFacts& one) { return !beforeByName.contains(one.name); });
}

void CompareScenarios(const VELDyadCtxCollector& from, const VELDyadCtxCollector& to,
                      Difference& difference) {
    std::vector<ScenarioFacts> before = FactsOfScenarios(from);
    std::vector<ScenarioFacts> after = FactsOfScenarios(to);
    std::sort(before.begin(), before.end());
    std::sort(after.begin(), after.end());
    std::set_difference(before.begin(), before.end(), after.begin(), after.end(),
                        std::back_inserter(difference.scenariosRemoved));
    std::set_difference(after.begin(), after.end(), before.begin(), before.end(),
                        std::back_inserter(difference.scenariosAdded));
}

template<class T, class F>
Json ArrayOf(const std::vector<T>& values, F toJson) {
    Json array = Json::array();
    for (const T& value : values)
        array.push_back(toJson(value));
    return array;
}

Json ToJson(const ChangedContext& changed) {
    Json json;
    json["name"] = changed.name;
    json["changes"] = ArrayOf(changed.changes, [](const Change& change) {
        Json one{{"what", change.what}, {"from", change.from}, {"to", change.to}};
        if (change.HasOtherSecrets())
            one["passwordDiffers"] = true;
        return one;
    });
    return json;
}

Json DocumentOf(const std::string& from, const std::string& to, const Difference& difference) {
    const auto nameOf = [](const ContextFacts& context) { return Json(context.name); };
    const auto rowOf = [](const ScenarioFacts& row) { return tool::ToJson(row); };
    Json document;
    document["schema"] = "dyadctx/diff/1";
    document["from"] = from;
    document["to"] = to;
    document["same"] = difference.IsNone();
    document["added"] = ArrayOf(difference.added, nameOf);
    document["removed"] = ArrayOf(difference.removed, nameOf);
    document["changed"] =
        ArrayOf(difference.changed, [](const ChangedContext& one) { return ToJson(one); });
    document["scenariosAdded"] = ArrayOf(difference.scenariosAdded, rowOf);
    document["scenariosRemoved"] = ArrayOf(difference.scenariosRemoved, rowOf);
    return document;
}

std::string TextOf(const ScenarioFacts& row) {
    return Words("diff.scenario", {Quoted(row.scenario), Quoted(row.channel), Quoted(row.profile),
                                   Quoted(row.optionName), Quoted(row.optionValue)});
}

// A row that looks like one of the other file differs in what is masked.
void WriteRows(const std::vector<ScenarioFacts>& rows, const std::vector<ScenarioFacts>& others,
               const std::string& sign, Paint paint, Output& output) {
    std::set<std::string> otherTexts;
    for (const ScenarioFacts& row : others)
        otherTexts.insert(TextOf(row));
    for (const ScenarioFacts& row : rows) {
        const std::string text = TextOf(row);
        const std::string remark = otherTexts.contains(text) ? Words("diff.password") : "";
        output.Write(output.Painted(paint, sign + text + remark) + "\n");
    }
}

std::string TextOf(const ContextFacts& context) {
    return Visible(context.name) + " (" + Visible(context.parameterType) + " " +
           Quoted(context.parameter) + ")";
}

void WriteText(const Difference& difference, Output& output) {
    const auto line = [&output](Paint paint, const std::string& text) {
        output.Write(output.Painted(paint, text) + "\n");
    };
    for (const ContextFacts& context : difference.removed)
        line(Paint::Bad, "- " + TextOf(context));
    for (const ContextFacts& context : difference.added)
        line(Paint::Good, "+ " + TextOf(context));
    for (const ChangedContext& context : difference.changed) {
        for (const Change& change : context.changes)
            line(Paint::Changed, "~ " + Visible(context.name) + ": " + change.what + " " +
                                     change.fromText + " -> " + change.toText +
                                     (change.HasOtherSecrets() ? Words("diff.password") : ""));
    }
    WriteRows(difference.scenariosRemoved, difference.scenariosAdded, "- ", Paint::Bad, output);
    WriteRows(difference.scenariosAdded, difference.scenariosRemoved, "+ ", Paint::Good, output);
}

class Diff final : public Command {
public:
    const char* Name() const override { return "diff"; }
    const char* Summary() const override { return "Tell what differs between two files"; }
    const char* Synopsis() const override { return "A B [--format text|json]"; }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    std::string from_;
    std::string to_;
    std::string format_ = "text";
};

std::vector<Example> Diff::Examples() const {
    return {{"dyadctx diff old.xml site.xml --db-context",
             "Which contexts came, went or changed; the status is 1 for any difference"}};
}

void Diff::Declare(Arguments& arguments) {
    arguments.Add("A", from_, "The file to start from").Takes("FILE").Required();
    arguments.Add("B", to_, "The file to compare with it").Takes("FILE").Required();
    DeclareFormat(arguments, format_, {"text", "json"});
}

ExitStatus Diff::Run(Output& output) {
    const Source from = LoadSourceOrFail(from_, output);
    const Source to = LoadSourceOrFail(to_, output);
    Difference difference;
    CompareContexts(*from.collector, *to.collector, difference);
    CompareScenarios(*from.collector, *to.collector, difference);
    if (format_ == "json")
        output.WriteJson(DocumentOf(from_, to_, difference));
    else
        WriteText(difference, output);
    return difference.IsNone() ? ExitStatus::Done : ExitStatus::No;
}

} // namespace

std::unique_ptr<Command> MakeDiff() {
    return std::make_unique<Diff>();
}

} // namespace dyadctx::tool
