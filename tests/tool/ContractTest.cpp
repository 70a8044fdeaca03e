// SPDX-License-Identifier: MIT
// What holds for every command alike: exit statuses, streams, formats, colours, languages.
#include "tool/ToolTest.h"

#include <filesystem>
#include <set>

namespace dyadctx::test {

namespace {

using Arguments = std::vector<std::string>;

// Valid, with one note: there is no default context.
constexpr const char* Sound = R"(
    <Context Name="A" Parameter="/a" ParameterType="Path">
      <CtxFriends><Context Name="B"/></CtxFriends>
      <Scenario><ScenarioID Ident="EX1" name="Export"><Option name="o" value="1"/></ScenarioID>
      </Scenario></Context>
    <Context Name="B" Parameter="/b" ParameterType="Path"/>)";

class Contract : public ToolTest {
protected:
    void SetUp() override {
        WriteContexts("a.xml", Sound);
        WriteContexts("b.xml", R"(<Context Name="B" Parameter="/other" ParameterType="Path"/>)");
        WriteContexts("invalid.xml", R"(<Context Name="A" Parameter="" ParameterType="Path"/>)");
        folder_.Write("open.xml", "<DyAdDescription>");
        folder_.Write("settings/DyadSettingsRep.toml", "DYAD_Ctx_XmlFile = './a.xml'\n");
        folder_.Write("broken/DyadSettingsRep.toml", "DYAD_Ctx_XmlFile =\n");
        settings_ = {{"VELSettingPath", folder_.PathOf("settings")}};
    }
    // One call of each command that writes to standard output, with the status it ends with.
    std::vector<std::pair<Arguments, int>> Answers() const {
        return {{{"check", "a.xml"}, 0},         {{"list", "a.xml"}, 0},
                {{"show", "A", "a.xml"}, 0},     {{"which"}, 0},
                {{"scenarios", "a.xml"}, 0},     {{"graph", "a.xml"}, 0},
                {{"diff", "a.xml", "b.xml"}, 1}, {{"settings", "get"}, 0}};
    }
    static Arguments With(Arguments arguments, const Arguments& more) {
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }
    static Arguments InFormat(const Arguments& arguments, const std::string& format) {
        return With(arguments, {"--format", format});
    }
    static Arguments FormatsOf(const std::string& command) {
        if (command == "check")
            return {"text", "json", "sarif", "github"};
        if (command == "graph")
            return {"svg", "dot", "mermaid"};
        return command == "list" ? Arguments{"text", "json", "names"} : Arguments{"text", "json"};
    }
    static std::string Line(const Arguments& arguments) {
        std::string line = "\"$DYADCTX\"";
        for (const std::string& argument : arguments)
            line += " '" + argument + "'";
        return line;
    }

    Environment settings_;
};

// Every status of every command, but 0 and 70.
const std::vector<std::pair<Arguments, int>> Refusals{
    {{"check", "a.xml", "--nonsense"}, 2},
    {{"list", "a.xml", "--nonsense"}, 2},
    {{"show", "A", "a.xml", "--nonsense"}, 2},
    {{"which", "--nonsense"}, 2},
    {{"scenarios", "a.xml", "--profile", "P"}, 2},
    {{"graph", "a.xml", "--depth", "1"}, 2},
    {{"write", "a.xml"}, 2},
    {{"diff", "a.xml"}, 2},
    {{"settings", "set", "only-a-name"}, 2},
    {{"list", "none.xml"}, 3},
    {{"show", "A", "none.xml"}, 3},
    {{"scenarios", "none.xml"}, 3},
    {{"graph", "none.xml"}, 3},
    {{"write", "none.xml", "-o", "out.xml"}, 3},
    {{"diff", "a.xml", "none.xml"}, 3},
    {{"diff", "none.xml", "a.xml"}, 3},
    {{"list", "invalid.xml"}, 4},
    {{"show", "A", "invalid.xml"}, 4},
    {{"scenarios", "invalid.xml"}, 4},
    {{"graph", "open.xml"}, 4},
    {{"write", "invalid.xml", "-o", "out.xml"}, 4},
    {{"diff", "a.xml", "invalid.xml"}, 4},
    {{"diff", "invalid.xml", "a.xml"}, 4},
    {{"show", "X", "a.xml"}, 5},
    {{"graph", "a.xml", "--focus", "X"}, 5},
    {{"settings", "get", "X"}, 5},
    {{"settings", "unset", "X"}, 5},
    {{"graph", "a.xml", "-o", "no/such/out.svg"}, 6},
    {{"write", "a.xml", "-o", "no/such/out.xml"}, 6},
    {{"write", "a.xml", "-o", "/dev/full"}, 6},
};

// The document without the texts that come in the user's language.
Json WithoutTexts(Json document) {
    if (document.is_object()) {
        for (const char* name : {"text", "message", "label", "reason", "fault"}) {
            if (document.contains(name))
                document[name] = nullptr;
        }
    }
    if (document.is_structured()) {
        for (Json& part : document)
            part = WithoutTexts(part);
    }
    return document;
}

// Enough to need more memory than the tool itself.
[[maybe_unused]] std::string ManyContexts() {
    std::string contexts;
    for (int i = 0; i < 4000; ++i) {
        const std::string number = std::to_string(i);
        contexts += "<Context Name=\"N";
        contexts += number;
        contexts += R"(" Parameter="/p" ParameterType="Path"><Scenario><ScenarioID Ident="E)";
        contexts += number;
        contexts += R"(" name="X"><Option name="o" value="v"/></ScenarioID></Scenario></Context>)";
    }
    return contexts;
}

bool HasColor(const std::string& text) {
    return text.find('\x1b') != std::string::npos;
}

} // namespace

TEST_F(Contract, ARefusalHasItsStatusAndSaysNothingOnStandardOutput) {
    for (const auto& [arguments, status] : Refusals) {
        const ChildResult result = Run(arguments, settings_);
        EXPECT_EQ(result.status, status) << Line(arguments) << "\n" << result.standardError;
        EXPECT_EQ(result.standardOutput, "") << Line(arguments);
        EXPECT_NE(result.standardError.find("dyadctx: error: "), std::string::npos)
            << Line(arguments) << "\n"
            << result.standardError;
        EXPECT_EQ(result.standardError.find("usage: ") != std::string::npos, status == 2)
            << Line(arguments);
        const ChildResult quiet = Run(With(arguments, {"-q"}), settings_);
        EXPECT_EQ(quiet.status, status) << Line(arguments);
        EXPECT_NE(quiet.standardError.find("dyadctx: error: "), std::string::npos);
    }
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "out.xml"));
}

TEST_F(Contract, AnAnswerOfNoIsAnAnswer) {
    for (const Arguments& arguments : {Arguments{"check", "invalid.xml"},
                                       {"check", "open.xml"},
                                       {"check", "a.xml", "invalid.xml"},
                                       {"diff", "a.xml", "b.xml"}}) {
        const ChildResult result = Run(arguments);
        EXPECT_EQ(result.status, 1) << Line(arguments);
        EXPECT_NE(result.standardOutput, "") << Line(arguments);
        EXPECT_EQ(result.standardError, "") << Line(arguments);
    }
    // Neither of the two hides that there is no such file, or no file at all.
    EXPECT_EQ(Run({"check", "invalid.xml", "none.xml"}).status, 3);
    EXPECT_EQ(Run({"check"}).status, 3);
    EXPECT_EQ(Run({"which"}).status, 3);
}

TEST_F(Contract, SettingsThatCannotBeReadOrWrittenHaveTheirStatus) {
    const Environment broken{{"VELSettingPath", folder_.PathOf("broken")}};
    const Environment nowhere{{"HOME", ""}};
    const Environment unwritable{{"VELSettingPath", "/dev/null/settings"}};
    for (const Arguments& action :
         {Arguments{"get"}, {"get", "a"}, {"set", "a", "b"}, {"unset", "a"}}) {
        EXPECT_EQ(Run(With({"settings"}, action), broken).status, 4) << Line(action);
        EXPECT_EQ(Run(With({"settings"}, action), nowhere).status, 3) << Line(action);
    }
    EXPECT_EQ(Run({"settings", "path"}, nowhere).status, 3);
    EXPECT_EQ(Run({"settings", "set", "a", "b"}, unwritable).status, 6);
}

TEST_F(Contract, StandardOutputHoldsOnlyTheAnswerInEveryFormat) {
    for (const auto& [arguments, status] : Answers()) {
        for (const std::string& format : FormatsOf(arguments.front())) {
            const ChildResult result = Run(InFormat(arguments, format), settings_);
            EXPECT_EQ(result.status, status) << Line(arguments) << " " << format;
            EXPECT_NE(result.standardOutput, "") << Line(arguments) << " " << format;
            EXPECT_EQ(result.standardError, "") << Line(arguments) << " " << format;
            if (format == "json") {
                EXPECT_EQ(Json::parse(result.standardOutput).at("schema"),
                          "dyadctx/" + arguments.front() + "/1");
            }
        }
    }
}

TEST_F(Contract, QuietChangesNoAnswerButTheSummaryOfCheck) {
    for (const auto& [arguments, status] : Answers()) {
        for (const std::string& format : FormatsOf(arguments.front())) {
            const ChildResult loud = Run(InFormat(arguments, format), settings_);
            const ChildResult quiet = Run(With(InFormat(arguments, format), {"-q"}), settings_);
            EXPECT_EQ(quiet.status, status) << Line(arguments);
            const bool isSummary = arguments.front() == "check" && format == "text";
            EXPECT_EQ(quiet.standardOutput, isSummary ? "" : loud.standardOutput);
            EXPECT_EQ(quiet.standardError, "");
        }
    }
}

TEST_F(Contract, WhatIsWrittenElsewhereIsNotedUnlessQuiet) {
    for (const Arguments& arguments :
         {Arguments{"write", "a.xml", "-o", "out.xml"}, {"graph", "a.xml", "-o", "out.svg"}}) {
        const ChildResult loud = Run(arguments);
        EXPECT_EQ(loud.status, 0);
        EXPECT_EQ(loud.standardOutput, "");
        EXPECT_TRUE(loud.standardError.starts_with("note: ")) << loud.standardError;
        EXPECT_EQ(Run(With(arguments, {"-q"})).standardError, "");
    }
    Expect({"settings",
            {"settings", "set", "a", "b"},
            0,
            "",
            {"note: the library reads no attribute 'a'\n"},
            settings_});
    Expect({"settings", {"settings", "set", "-q", "a", "b"}, 0, "", {}, settings_});
}

TEST_F(Contract, AFullDeviceIsNoticedByEveryCommandInEveryFormat) {
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no such device here";
    for (const auto& [arguments, status] : Answers()) {
        for (const std::string& format : FormatsOf(arguments.front())) {
            const std::string line = Line(InFormat(arguments, format));
            const ChildResult full = RunInShell(line + " > /dev/full", settings_);
            EXPECT_EQ(full.status, 6) << line;
            EXPECT_EQ(full.standardError,
                      "dyadctx: error: the answer could not be written to standard output: No "
                      "space left on device\n");
            EXPECT_EQ(RunInShell(line + " >&-", settings_).status, 6) << line;
        }
    }
}

TEST_F(Contract, OnlyTextForPeopleIsColored) {
    for (const auto& [arguments, status] : Answers()) {
        for (const std::string& format : FormatsOf(arguments.front())) {
            const Arguments call = InFormat(arguments, format);
            const auto run = [&](const std::string& color, const Environment& more) {
                Environment environment = settings_;
                environment.insert(more.begin(), more.end());
                return Run(With(call, {"--color", color}), environment).standardOutput;
            };
            const bool isText = format == "text";
            EXPECT_EQ(HasColor(run("always", {})), isText) << Line(call);
            EXPECT_EQ(HasColor(run("always", {{"NO_COLOR", "1"}})), isText) << Line(call);
            EXPECT_FALSE(HasColor(run("never", {}))) << Line(call);
            EXPECT_FALSE(HasColor(run("auto", {}))) << Line(call);
        }
    }
    for (const auto& [arguments, status] : Refusals) {
        if (status == 2) // A command line that is not understood has no colour option yet.
            continue;
        EXPECT_TRUE(HasColor(Run(With(arguments, {"--color", "always"}), settings_).standardError))
            << Line(arguments);
        EXPECT_FALSE(HasColor(Run(arguments, settings_).standardError)) << Line(arguments);
    }
}

TEST_F(Contract, ALanguageChangesTextsAndNothingElse) {
    for (const auto& [arguments, status] : Answers()) {
        if (arguments.front() == "graph")
            continue;
        const Json english = RunForJson(With(arguments, {"--lang", "en"}), status, settings_);
        for (const char* language : {"fr", "de", "ja"}) {
            const Json other = RunForJson(With(arguments, {"--lang", language}), status, settings_);
            EXPECT_EQ(WithoutTexts(other), WithoutTexts(english)) << Line(arguments);
        }
    }
    const auto label = [this](const char* language) {
        return RunForJson({"show", "A", "a.xml", "--lang", language})["context"]["label"];
    };
    EXPECT_EQ(label("en"), "Path");
    EXPECT_EQ(label("de"), "Pfad");
    EXPECT_EQ(label("fr"), "Chemin");
    EXPECT_EQ(label("ja"), "パス");
    EXPECT_EQ(
        RunForJson({"show", "A", "a.xml"}, 0, {{"VELMessageLanguage", "de"}})["context"]["label"],
        "Pfad");
}

TEST_F(Contract, ErrorsOnStandardErrorAreInTheRequestedLanguage) {
    for (const Arguments& arguments : {Arguments{"list", "invalid.xml"},
                                       {"show", "A", "invalid.xml"},
                                       {"scenarios", "invalid.xml"},
                                       {"graph", "invalid.xml"},
                                       {"write", "invalid.xml", "-o", "out.xml"},
                                       {"diff", "invalid.xml", "a.xml"}}) {
        const ChildResult result = Run(With(arguments, {"--lang", "de"}));
        EXPECT_EQ(result.status, 4);
        EXPECT_NE(result.standardError.find("error: Der Kontext „A“"), std::string::npos)
            << Line(arguments) << "\n"
            << result.standardError;
    }
}

#if !defined(DYADCTX_TEST_SANITIZED)
// From the least memory with which the tool starts: it refuses, or ends with an internal error, and
// with enough memory it answers. It never dies, and never writes half an answer.
TEST_F(Contract, MemoryThatRunsOutEndsEachCommandWithAStatus) {
    WriteContexts("large.xml", ManyContexts());
    std::string settings = "DYAD_Ctx_XmlFile = './a.xml'\n";
    for (int i = 0; i < 10000; ++i)
        settings += "k" + std::to_string(i) + " = 'v'\n";
    folder_.Write("settings/DyadSettingsRep.toml", settings);
    Environment environment = settings_;
    environment["VELInstallPath"] = std::string(300, ';');
    const auto limited = [&](int kilobytes, const Arguments& arguments) {
        return RunInShell("ulimit -v " + std::to_string(kilobytes) + "; exec " + Line(arguments),
                          environment);
    };
    int least = 6000;
    while (least < 400000 && limited(least, {"--version"}).status != 0)
        least += 250;
    const std::vector<std::pair<Arguments, int>> calls{
        {{"check", "large.xml", "--format", "json"}, 0},
        {{"list", "large.xml"}, 0},
        {{"show", "N1", "large.xml"}, 0},
        {{"which", "--format", "json"}, 0},
        {{"scenarios", "large.xml", "--format", "json"}, 0},
        {{"graph", "large.xml", "--format", "dot"}, 0},
        {{"write", "large.xml", "-o", "out.xml", "-q"}, 0},
        {{"diff", "large.xml", "a.xml"}, 1},
        {{"settings", "get"}, 0},
    };
    for (const auto& [arguments, wanted] : calls) {
        const std::string whole = Run(arguments, environment).standardOutput;
        std::set<int> statuses;
        ChildResult last;
        for (int kilobytes = least; kilobytes < 400000; kilobytes += kilobytes / 24) {
            last = limited(kilobytes, arguments);
            statuses.insert(last.status);
            if (last.standardOutput == whole && last.status == wanted)
                break;
            const bool isRefusal = last.status == 70 || last.status == 3 || last.status == 4;
            // For want of memory the library takes the file for none that it can read.
            const bool isVerdict = arguments.front() == "check" && last.status == 1;
            // Writing takes more than reading does.
            const bool isUnwritten = arguments.front() == "write" && last.status == 6;
            EXPECT_TRUE(isRefusal || isVerdict || isUnwritten)
                << Line(arguments) << " " << last.status << " at " << kilobytes;
            if (!isVerdict) {
                EXPECT_EQ(last.standardOutput, "") << Line(arguments) << " " << kilobytes;
            }
        }
        EXPECT_EQ(last.status, wanted) << Line(arguments);
        EXPECT_GT(statuses.size(), arguments.front() == "which" ? 0U : 1U) << Line(arguments);
    }
}
#endif

} // namespace dyadctx::test
