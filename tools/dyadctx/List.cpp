// SPDX-License-Identifier: MIT
// `list`: the contexts of a file.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/ContextFindings.h"
#include "tools/dyadctx/Diagnosis.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Words.h"
#include "tools/dyadctx/graph/GraphModel.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <set>

namespace dyadctx::tool {

namespace {

class List final : public Command {
public:
    const char* Name() const override { return "list"; }
    const char* Summary() const override { return "List the contexts of a file"; }
    const char* Synopsis() const override {
        return "[FILE] [--all] [--type all|path|database|file] [--provider PROVIDER]... "
               "[--format text|json|names|providers] [-0]";
    }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    ExitStatus ListFaulty(const Source& source, Output& output) const;
    void Write(const Source& source, VELDyadCtxCollector& collector,
               const VELDyadCtxFileCheck* check, Output& output) const;
    void WriteWords(const std::vector<std::string>& words, Output& output) const;

    std::optional<std::string> file_;
    ViewChoice view_;
    std::string format_ = "text";
    bool all_ = false;
    bool endWithNul_ = false;
};

// What a context is found to be, by the first finding that matters most.
struct State {
    const VELDyadCtxFinding* finding = nullptr;

    bool IsValid() const {
        return finding == nullptr || finding->severity != VELDyadCtxSeverity::Error;
    }
    const char* Name() const { return IsValid() ? "valid" : "error"; }
    std::string Label() const { return Words(IsValid() ? "check.valid.one" : "kind.error"); }
    std::string Text() const {
        return finding != nullptr
                   ? Visible(finding->text.AsView()) + " [" + Visible(finding->id.AsView()) + "]"
                   : "";
    }
};

struct Row {
    ContextFacts context;
    State state;
};

State StateBy(const FindingsOfContext& findings) {
    const auto worst =
        std::min_element(findings.begin(), findings.end(), [](const auto* left, const auto* right) {
            return left->severity < right->severity;
        });
    return {worst != findings.end() ? *worst : nullptr};
}

// The contexts of the view, with their places and states if a check is given for them.
std::vector<Row> RowsOf(VELDyadCtxCollector& collector, const VELDyadCtxFileCheck* places,
                        const VELDyadCtxFileCheck* states) {
    std::vector<Row> rows;
    for (ContextFacts& context : FactsOfView(collector, places))
        rows.push_back({std::move(context), {}});
    if (states == nullptr)
        return rows;
    const std::vector<FindingsOfContext> findings =
        FindingsByContext(ContextsOfView(collector), *states);
    for (std::size_t i = 0; i < rows.size() && i < findings.size(); ++i)
        rows[i].state = StateBy(findings[i]);
    return rows;
}

// What matters at a glance; `show` has the rest. A single site is the context's own database.
std::string SitesToShow(const ContextFacts& context) {
    std::vector<std::string> names;
    for (const SiteFacts& site : context.sites)
        names.push_back(site.site);
    return names.size() > 1 ? Joined(names) : "";
}

void WriteTable(const std::vector<Row>& rows, bool withStates, Output& output) {
    Table table({"#", Words("heading.name"), Words("heading.state"), Words("heading.type"),
                 Words("heading.parameter"), Words("heading.provider"), Words("heading.sites"),
                 Words("heading.friends"), Words("heading.associated"), Words("heading.finding")});
    for (const auto& [context, state] : rows) {
        table.AddRow({std::to_string(context.position), Visible(context.name),
                      withStates ? state.Label() : "", TypeLabel(context),
                      Visible(context.parameter),
                      context.provider ? Visible(context.provider->name) : "", SitesToShow(context),
                      Joined(context.friends), Visible(context.associated.value_or("")),
                      withStates ? state.Text() : ""});
    }
    output.Write(table.Render(output));
}

Json ToJson(const VELDyadCtxFinding* finding) {
    if (finding == nullptr)
        return nullptr;
    Json json;
    json["key"] = ToText(finding->id);
    json["severity"] = NameOf(finding->severity);
    json["text"] = ToText(finding->text);
    json["line"] = NumberOrNull(finding->place.line);
    json["column"] = NumberOrNull(finding->place.column);
    return json;
}

Json DocumentOf(const Source& source, VELDyadCtxCollector& collector, const std::vector<Row>& rows,
                bool withStates) {
    Json document;
    document["schema"] = "dyadctx/list/1";
    document["file"] = source.file;
    document["isDefault"] = source.isDefault;
    document["view"] = NameOfView(collector);
    document["contexts"] = Json::array();
    for (const auto& [context, state] : rows) {
        Json json = tool::ToJson(context);
        if (withStates) {
            json["state"] = state.Name();
            json["finding"] = ToJson(state.finding);
        }
        document["contexts"].push_back(std::move(json));
    }
    return document;
}

// Each once, in the order of the contexts.
std::vector<std::string> ProvidersOf(const std::vector<Row>& rows) {
    std::vector<std::string> names;
    std::set<std::string> known;
    for (const Row& row : rows) {
        if (row.context.provider && known.insert(row.context.provider->name).second)
            names.push_back(row.context.provider->name);
    }
    return names;
}

std::vector<std::string> NamesOf(const std::vector<Row>& rows) {
    std::vector<std::string> names;
    for (const Row& row : rows)
        names.push_back(row.context.name);
    return names;
}

void NoteLeftOut(const VELDyadCtxFileCheck& check, Output& output) {
    const int count = CountInFinding(check, "database-left-out");
    if (count > 0)
        output.Note(CountedWords(count, "list.left-out"));
}

std::vector<Example> List::Examples() const {
    return {{"dyadctx list site.xml --db-context", "A table of all contexts"},
            {"dyadctx list --format names", "The names alone, of the file in use"},
            {"dyadctx list site.xml --db-context --all", "Also what is wrong with each context"}};
}

void List::Declare(Arguments& arguments) {
    DeclareFile(arguments, file_);
    arguments.AddSwitch("--all", all_,
                        "Also of a file with errors, as far as it can be read: each context with "
                        "its state and its first finding; the exit status is then 4");
    DeclareView(arguments, view_);
    arguments
        .Add("--format", format_,
             "How to write the answer: text for people, json for programs, names for one name per "
             "line, providers for the names of providers")
        .OneOf({"text", "json", "names", "providers"})
        .ShowPreset();
    arguments.AddSwitch("-0,--null", endWithNul_,
                        "With --format names or providers: end each with a zero byte instead of a "
                        "line feed, and write it byte by byte");
}

void List::WriteWords(const std::vector<std::string>& words, Output& output) const {
    for (const std::string& word : words)
        output.Write(endWithNul_ ? word + '\0' : Visible(word) + "\n");
}

void List::Write(const Source& source, VELDyadCtxCollector& collector,
                 const VELDyadCtxFileCheck* check, Output& output) const {
    SelectView(collector, view_, output);
    const std::vector<Row> rows =
        RowsOf(collector, format_ == "json" ? check : nullptr, all_ ? check : nullptr);
    if (format_ == "json")
        output.WriteJson(DocumentOf(source, collector, rows, all_));
    else if (format_ == "names")
        WriteWords(NamesOf(rows), output);
    else if (format_ == "providers")
        WriteWords(ProvidersOf(rows), output);
    else
        WriteTable(rows, all_, output);
    if (rows.empty())
        output.Note(Words("list.empty"));
    if (check != nullptr)
        NoteLeftOut(*check, output);
}

ExitStatus List::ListFaulty(const Source& source, Output& output) const {
    if (!all_ || source.status != ExitStatus::NotLoadable)
        FailWith(source, output);
    VELDyadCtxFileCheck check;
    RunCheck(check, source);
    if (FoundSyntaxError(check))
        FailWith(source, output);
    Write(source, *check.GetCollector(), &check, output);
    output.Error(Words("list.partial", {Visible(source.file)}));
    return ExitStatus::NotLoadable;
}

ExitStatus List::Run(Output& output) {
    const bool isWords = format_ == "names" || format_ == "providers";
    if (endWithNul_ && !isWords)
        throw Failure(ExitStatus::Usage, Words("list.null"));
    const bool mayLeaveOut = !IsDbContextEnvironmentOn() && !output.IsQuiet();
    const bool needsCheck = all_ || format_ == "json" || mayLeaveOut;
    const Source source = LoadSource(file_, needsCheck ? Reading::WithPlaces : Reading::Contexts);
    if (source.collector == nullptr)
        return ListFaulty(source, output);
    Write(source, *source.collector, source.check.get(), output);
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeList() {
    return std::make_unique<List>();
}

} // namespace dyadctx::tool
