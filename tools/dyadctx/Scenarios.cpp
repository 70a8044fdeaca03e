// SPDX-License-Identifier: MIT
// `scenarios`: the exchange scenarios of a file, and the way from them to channels, profiles and
// options.
#include "tools/dyadctx/Command.h"
#include "tools/dyadctx/ContextFacts.h"
#include "tools/dyadctx/DisplayText.h"
#include "tools/dyadctx/Source.h"
#include "tools/dyadctx/Words.h"

#include <nlohmann/json.hpp>

namespace dyadctx::tool {

namespace {

class Scenarios final : public Command {
public:
    const char* Name() const override { return "scenarios"; }
    const char* Summary() const override {
        return "List exchange scenarios, or ask for channels, profiles and options";
    }
    const char* Synopsis() const override {
        return "[FILE] [--id SCENARIO...] [--channel CHANNEL] [--profile PROFILE] "
               "[--format text|json]";
    }
    std::vector<Example> Examples() const override;
    void Declare(Arguments& arguments) override;
    ExitStatus Run(Output& output) override;

private:
    void RefuseOddQuery() const;

    std::optional<std::string> file_;
    std::vector<std::string> ids_;
    std::optional<std::string> channel_;
    std::optional<std::string> profile_;
    std::string format_ = "text";
};

// An answer of the library: the rows of one kind, each with the same keys.
struct Answer {
    std::string kind;
    std::vector<std::string> headings;
    std::vector<std::string> keys;
    std::vector<std::vector<std::string>> rows;
};

VELListValVELUnicodeString ListOf(const std::vector<std::string>& texts) {
    VELListValVELUnicodeString list;
    for (const std::string& text : texts)
        list.Append(VELUnicodeString(text));
    return list;
}

void AddPairs(Answer& answer, const VELListValVELUnicodeString& first,
              const VELListValVELUnicodeString& second) {
    for (int i = 1; i <= first.Size(); ++i)
        answer.rows.push_back({ToText(first[i]), ToText(second[i])});
}

Answer ChannelsFor(VELDyadCtxCollector& collector, const std::vector<std::string>& ids) {
    Answer answer{"channels",
                  {Words("heading.channel"), Words("heading.context")},
                  {"channel", "channelContext"},
                  {}};
    VELListValVELUnicodeString channels;
    VELListValVELUnicodeString contexts;
    collector.GetExchangeChannelfromScenario(ListOf(ids), channels, contexts);
    AddPairs(answer, channels, contexts);
    return answer;
}

Answer ProfilesFor(VELDyadCtxCollector& collector, const std::string& channel,
                   const std::vector<std::string>& ids) {
    Answer answer{"profiles",
                  {Words("heading.profile"), Words("heading.scenario")},
                  {"profile", "scenario"},
                  {}};
    VELListValVELUnicodeString matched;
    VELListValVELUnicodeString profiles;
    collector.GetProfilefromExchangeChannel(VELUnicodeString(channel), ListOf(ids), matched,
                                            profiles);
    AddPairs(answer, profiles, matched);
    return answer;
}

Answer OptionsFor(VELDyadCtxCollector& collector, const std::string& channel,
                  const std::string& profile) {
    Answer answer{"options",
                  {Words("heading.option"), Words("heading.value")},
                  {"optionName", "optionValue"},
                  {}};
    VELListValVELUnicodeString names;
    VELListValVELUnicodeString values;
    collector.GetOptionsfromExchangeProfile(VELUnicodeString(channel), VELUnicodeString(profile),
                                            names, values);
    AddPairs(answer, names, values);
    return answer;
}

Answer AllRows(const VELDyadCtxCollector& collector) {
    Answer answer{"scenarios",
                  {Words("heading.channel"), Words("heading.context"), Words("heading.profile"),
                   Words("heading.scenario"), Words("heading.option"), Words("heading.value")},
                  {"channel", "channelContext", "profile", "scenario", "optionName", "optionValue"},
                  {}};
    for (const ScenarioFacts& row : FactsOfScenarios(collector))
        answer.rows.push_back({row.channel, row.channelContext, row.profile, row.scenario,
                               row.optionName, row.optionValue});
    return answer;
}

Json DocumentOf(const Source& source, const Answer& answer) {
    Json document;
    document["schema"] = "dyadctx/scenarios/1";
    document["file"] = source.file;
    document[answer.kind] = Json::array();
    for (const std::vector<std::string>& row : answer.rows) {
        Json json;
        for (std::size_t i = 0; i < row.size(); ++i)
            json[answer.keys[i]] = row[i];
        document[answer.kind].push_back(json);
    }
    return document;
}

void WriteTable(const Answer& answer, Output& output) {
    Table table(answer.headings);
    for (const std::vector<std::string>& row : answer.rows) {
        std::vector<std::string> cells;
        for (const std::string& value : row)
            cells.push_back(Visible(value));
        table.AddRow(cells);
    }
    output.Write(table.Render(output));
}

std::vector<Example> Scenarios::Examples() const {
    return {{"dyadctx scenarios site.xml --id EX1", "Which channels offer the scenario EX1?"},
            {"dyadctx scenarios site.xml --channel Archive --profile Export",
             "Which options belong to the profile Export of the channel Archive?"}};
}

void Scenarios::Declare(Arguments& arguments) {
    DeclareFile(arguments, file_);
    arguments
        .Add("--id", ids_,
             "Identifiers of scenarios: which channels offer them? Several may stand behind one "
             "--id, so FILE stands before it")
        .Takes("SCENARIO")
        .OneValueEach();
    arguments
        .Add("--channel", channel_,
             "With --id: which profiles does this channel have for them? With --profile: the "
             "channel of the profile")
        .Takes("CHANNEL");
    arguments.Add("--profile", profile_, "With --channel: which options belong to this profile?")
        .Takes("PROFILE");
    DeclareFormat(arguments, format_, {"text", "json"});
}

void Scenarios::RefuseOddQuery() const {
    if (profile_ && !channel_)
        throw Failure(ExitStatus::Usage, Words("scenarios.profile-alone"));
    if (profile_ && !ids_.empty())
        throw Failure(ExitStatus::Usage, Words("scenarios.profile-with-id"));
    if (channel_ && !profile_ && ids_.empty())
        throw Failure(ExitStatus::Usage, Words("scenarios.channel-alone"));
}

ExitStatus Scenarios::Run(Output& output) {
    RefuseOddQuery();
    const Source source = LoadSourceOrFail(file_, output);
    VELDyadCtxCollector& collector = *source.collector;
    const Answer answer = profile_        ? OptionsFor(collector, *channel_, *profile_)
                          : channel_      ? ProfilesFor(collector, *channel_, ids_)
                          : !ids_.empty() ? ChannelsFor(collector, ids_)
                                          : AllRows(collector);
    if (format_ == "json")
        output.WriteJson(DocumentOf(source, answer));
    else
        WriteTable(answer, output);
    if (answer.rows.empty())
        output.Note(Words("scenarios.no-" + answer.kind));
    return ExitStatus::Done;
}

} // namespace

std::unique_ptr<Command> MakeScenarios() {
    return std::make_unique<Scenarios>();
}

} // namespace dyadctx::tool
