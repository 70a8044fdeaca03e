// SPDX-License-Identifier: MIT
// `check`: every fault of a file at its place, the options, and the formats for programs.
#include "tool/ToolTest.h"

#include <algorithm>
#include <sstream>

namespace dyadctx::test {

namespace {

constexpr const char* Golden = R"(<?xml version="1.0" encoding="UTF-8"?>
<DyAdDescription>
  <CtxData>
    <Context Parameter="/x" ParameterType="Path"/>
    <Context Name="NoParameter" ParameterType="Path"/>
    <Context Name="NoType" Parameter="/tmp"/>
    <Context Name="" Parameter="/tmp" ParameterType="Path"/>
    <Context Name="Bad!" Parameter="/tmp" ParameterType="Path"/>
    <Context Name="LONG" Parameter="/tmp" ParameterType="Path"/>
    <Context Name="Empty" Parameter="" ParameterType="Path"/>
    <Context Name="Strange" Parameter="/tmp"
             ParameterType="Folder"/>
    <Context Name="DYADIC" Parameter="/tmp" ParameterType="Path"/>
    <Context Name="Second" Parameter="/tmp" ParameterType="Default"/>
    <Context Name="Twice" Parameter="/tmp" ParameterType="Path"/>
    <Context Name="Twice" Parameter="/tmp" ParameterType="Path"/>
    <Context Name="VaultA" Parameter="a" ParameterType="Database" ConnectorName="KRL"/>
    <Context Name="VaultB" Parameter="b" ParameterType="Database" ConnectorName="KRL"/>
    <Context Name="VaultC" Parameter="c" ParameterType="Database"/>
    <Context Name="Friendly" Parameter="/tmp" ParameterType="Path">
      <CtxFriends>
        <Context/>
        <Context Name=""/>
        <Context Name="Friendly"/>
        <Context Name="Other"/>
        <Context Name="Empti"/>
        <Context Name="Bad!"><CtxFriends/></Context>
      </CtxFriends>
      <CtxAssociated>
        <Context/>
        <Context Name="Bad!"><CtxAssociated/></Context>
        <Context Name="Friendly"/>
      </CtxAssociated>
      <Scenario><ScenarioID Ident="1" name="p"><Option value="v"/></ScenarioID></Scenario>
    </Context>
    <Context Name="Other" Parameter="/tmp" ParameterType="Path">
      <CtxFriends><Context Name="Friendly"/></CtxFriends>
      <CtxAssociated><Context Name="Third"/></CtxAssociated>
    </Context>
    <Context Name="Third" Parameter="/tmp" ParameterType="Path">
      <CtxAssociated><Context Name="Other"/></CtxAssociated>
    </Context>
    <Context Name="Fourth" Parameter="/tmp" ParameterType="Path">
      <CtxAssociated><Context Name=""/></CtxAssociated>
    </Context>
    <Context Name="Fifth" Parameter="/tmp" ParameterType="Path">
      <CtxAssociated><Context Name="Nobody at all"/></CtxAssociated>
    </Context>
    <CtxFriends/>
    <CtxAssociated/>
    <Contxt/>
  </CtxData>
</DyAdDescription>
)";

std::string GoldenDocument() {
    std::string document = Golden;
    document.replace(document.find("LONG"), 4, std::string(126, 'x'));
    return document;
}

// "LINE:COLUMN: SEVERITY KEY" of each finding of a text report.
std::vector<std::string> PlacesIn(const std::string& report, const std::string& file) {
    std::vector<std::string> places;
    std::istringstream in(report);
    for (std::string line; std::getline(in, line);) {
        const std::size_t key = line.rfind(" [");
        if (!line.starts_with(file + ":") || !line.ends_with("]"))
            continue;
        const std::string place = line.substr(file.size() + 1, line.find(": ") - file.size() - 1);
        const std::size_t severity = file.size() + 1 + place.size() + 2;
        places.push_back(place + " " + line.substr(severity, line.find(':', severity) - severity) +
                         " " + line.substr(key + 2, line.size() - key - 3));
    }
    return places;
}

class CheckReports : public ToolTest {};

} // namespace

TEST_F(CheckReports, OneRunFindsEveryKindOfFaultAtItsPlace) {
    folder_.Write("golden.xml", GoldenDocument());
    const ChildResult result = Run({"check", "golden.xml", "--db-context"});
    EXPECT_EQ(result.status, 1);
    const std::vector<std::string> expected{
        "4:5 error Ctx.Parse.CtxNoName",
        "5:5 error Ctx.Parse.CtxNoParam",
        "6:5 error Ctx.Parse.CtxNoParamType",
        "7:14 error Ctx.Check.CtxEmptyName",
        "8:14 error Ctx.Check.CtxNameWithInvalidChar",
        "9:14 error Ctx.Check.CtxNameTooLong",
        "10:27 error Ctx.Check.CtxEmptyParam",
        "12:14 error Ctx.Check.CtxUnknownParamType",
        "13:28 error Ctx.Check.CtxDefaultInvalidParam",
        "13:45 error Ctx.Check.CtxDefaultInvalidParamType",
        "14:14 error Ctx.Check.CtxDefaultInvalidName",
        "15:14 error Ctx.Check.CtxAlreadyDefined",
        "17:67 error Ctx.Check.CtxDatabaseAlreadyDefined",
        "19:5 error Ctx.Parse.CtxNoConnector",
        "19:5 note Ctx.Parse.CtxNoDatabase",
        "22:9 error Ctx.Parse.CtxFriendNoName",
        "23:18 error Ctx.Parse.CtxFriendNoName",
        "24:18 error Ctx.Check.CtxAndFriendWithSameName",
        "24:18 note Ctx.Check.CtxAndFriendWithCyclicity",
        "25:18 error Ctx.Check.CtxAndFriendWithCyclicity",
        "26:18 error Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx",
        "26:18 note nearest-name",
        "27:30 error Ctx.Parse.CtxFriendWithFriend",
        "30:9 error Ctx.Parse.CtxAssocNoName",
        "31:18 warning several-associated",
        "31:30 error Ctx.Parse.CtxAssociatedWithAssociated",
        "32:18 error Ctx.Check.CtxAndAssocWithSameName",
        "32:18 note Ctx.Check.CtxAndAssocWithCyclicity",
        "34:48 error option-without-name",
        "37:28 error Ctx.Check.CtxAndFriendWithCyclicity",
        "38:31 error Ctx.Check.CtxAndAssocWithCyclicity",
        "41:31 error Ctx.Check.CtxAndAssocWithCyclicity",
        "44:31 error Ctx.Parse.CtxAssocNoName",
        "47:31 error Ctx.SetFriendsAndAssociated..CtxAssocNoMatchingCtx",
        "49:5 error Ctx.Parse.NoCtxDefinedForFriend",
        "50:5 error Ctx.Parse.NoCtxDefinedForAssociated",
        "51:5 warning unknown-element",
    };
    EXPECT_EQ(PlacesIn(result.standardOutput, "golden.xml"), expected) << result.standardOutput;
    EXPECT_NE(
        result.standardOutput.find("1 file checked, 1 not valid, 31 errors, 2 warnings, 1 note\n"),
        std::string::npos)
        << result.standardOutput;
}

TEST_F(CheckReports, ANoteNamesTheLineOfTheOtherParty) {
    folder_.Write("twice.xml", "<DyAdDescription><CtxData>\n"
                               "<Context Name='A' Parameter='a' ParameterType='Path'/>\n"
                               "<Context Name='A' Parameter='a' ParameterType='Path'/>\n"
                               "</CtxData></DyAdDescription>");
    Expect({"twice",
            {"check", "twice.xml"},
            1,
            "twice.xml:2:10: error: The context \"A\" is declared more than once. Rename or remove "
            "all but one of these declarations. [Ctx.Check.CtxAlreadyDefined]\n"
            "twice.xml:3:10: note: \"A\" is declared again here\n"
            "1 file checked, 1 not valid, 1 error\n",
            {},
            {}});
    const Json related = VerdictOn({"check", "twice.xml"}, 1)["findings"][0]["related"];
    EXPECT_EQ(
        related,
        Json::array({{{"text", "\"A\" is declared again here"}, {"line", 3}, {"column", 10}}}));
}

TEST_F(CheckReports, MessageAndValidAreWhatTheFactoryReturns) {
    WriteContexts("two.xml", "<Context Name='A!' Parameter='a' ParameterType='Path'/>"
                             "<Context Name='B!' Parameter='b' ParameterType='Path'/>");
    const Json document = VerdictOn({"check", "two.xml"}, 1);
    EXPECT_EQ(document["valid"], false);
    // The library ends at the first context that is not valid.
    EXPECT_EQ(document["message"], "The context file is not valid : The name of a context contains "
                                   "the character \"!\". Choose a name without it.\n");
    EXPECT_EQ(document["findings"].size(), 2U);
}

TEST_F(CheckReports, WarningsAndNotesAreSwitchedOffByTheirIds) {
    WriteContexts("odd.xml", "<Context Name='A' Parameter='a' ParameterType='Path' Colour='x'/>");
    const std::string warning =
        "odd.xml:2:80: warning: The attribute \"Colour\" of Context means nothing and is not read. "
        "[unknown-attribute]\n";
    const std::string note = "odd.xml:2:18: note: The file declares no default context, which is "
                             "named \"DYADIC\". [no-default-context]\n";
    ExpectEach({
        {"all",
         {"check", "odd.xml"},
         0,
         note + warning + "odd.xml: valid, 1 context\n1 file checked, valid, 1 warning, 1 note\n",
         {},
         {}},
        {"quiet", {"check", "-q", "odd.xml"}, 0, warning, {}, {}},
        {"quiet, and notes are faults",
         {"check", "-q", "--fail-on", "note", "odd.xml"},
         1,
         note + warning,
         {},
         {}},
        {"one off",
         {"check", "--off", "no-default-context", "odd.xml"},
         0,
         warning + "odd.xml: valid, 1 context\n1 file checked, valid, 1 warning\n",
         {},
         {}},
        {"both off",
         {"check", "--off", "no-default-context", "--off", "unknown-attribute", "odd.xml"},
         0,
         "odd.xml: valid, 1 context\n1 file checked, valid\n",
         {},
         {}},
    });
}

TEST_F(CheckReports, WhatIsNoWarningCannotBeSwitchedOff) {
    ExpectEach({
        {"misspelt",
         {"check", "--off", "unknown-atribute", "a.xml"},
         2,
         "",
         {"there is no warning or note 'unknown-atribute'; did you mean 'unknown-attribute'?"},
         {}},
        {"error", {"check", "--off", "option-without-name", "a.xml"}, 2, "", {"usage:"}, {}},
        {"key", {"check", "--off", "Ctx.Check.CtxEmptyName", "a.xml"}, 2, "", {"usage:"}, {}},
    });
}

TEST_F(CheckReports, FailOnMakesLesserFindingsFatal) {
    const std::string context = "<Context Name='DYADIC' Parameter='' ParameterType='Default'/>";
    WriteContexts("right.xml", context);
    WriteContexts("noted.xml", "<Context Name='A' Parameter='a' ParameterType='Path'/>");
    WriteContexts("odd.xml", context + "<Other/>");
    const auto status = [this](const char* severity, const char* file) {
        return Run({"check", "--fail-on", severity, file}).status;
    };
    EXPECT_EQ(status("error", "odd.xml"), 0);
    EXPECT_EQ(status("warning", "noted.xml"), 0);
    EXPECT_EQ(status("warning", "odd.xml"), 1);
    EXPECT_EQ(status("note", "noted.xml"), 1);
    EXPECT_EQ(status("note", "odd.xml"), 1);
    EXPECT_EQ(status("note", "right.xml"), 0);
    EXPECT_EQ(status("never", "right.xml"), 2);
    EXPECT_EQ(Run({"check", "--fail-on", "warning", "odd.xml", "--off", "unknown-element"}).status,
              0);
    EXPECT_EQ(VerdictOn({"check", "--fail-on", "warning", "odd.xml"}, 1)["valid"], true);
}

TEST_F(CheckReports, DeepLooksForPaths) {
    WriteContexts("deep.xml",
                  "<Context Name='DYADIC' Parameter='' ParameterType='Default'/>"
                  "<Context Name='A' Parameter='/nowhere/at/all' ParameterType='Path'/>");
    EXPECT_EQ(VerdictOn({"check", "deep.xml"})["findings"], Json::array());
    const Json findings = VerdictOn({"check", "--deep", "deep.xml"})["findings"];
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0]["key"], "missing-path");
    EXPECT_EQ(findings[0]["parameters"], Json({"A", "/nowhere/at/all"}));
}

TEST_F(CheckReports, AVariableWithoutEffectIsNoted) {
    const std::string file = folder_.PathOf(
        WriteContexts("a.xml", "<Context Name='DYADIC' Parameter='' ParameterType='Default'/>"));
    struct Case {
        std::vector<std::string> arguments;
        Environment environment;
        std::vector<std::string> variables;
    };
    const std::vector<Case> cases{
        {{"check"}, {{"VELDyadCtxInit", file}, {"VELInstallPath", "/nowhere"}}, {"VELInstallPath"}},
        {{"check", "a.xml"}, {{"VELDyadCtxInit", file}, {"VELInstallPath", "/nowhere"}}, {}},
        {{"check", "a.xml"}, {{"VELDbContextEnvironment", "yes"}}, {"VELDbContextEnvironment"}},
        {{"check", "a.xml", "--db-context"}, {{"VELDbContextEnvironment", "yes"}}, {}},
        {{"check", "a.xml"}, {{"TE_MULTISITE_DBCONTEXT", ""}}, {"TE_MULTISITE_DBCONTEXT"}},
        {{"check", "a.xml"},
         {{"TE_MULTISITE_DBCONTEXT", ""}, {"VELDbContextEnvironment", "1"}},
         {}},
        {{"check", "a.xml", "--off", "variable-without-effect"},
         {{"TE_MULTISITE_DBCONTEXT", ""}},
         {}},
    };
    for (const Case& example : cases) {
        std::vector<std::string> variables;
        const Json document = VerdictOn(example.arguments, 0, example.environment);
        for (const Json& finding : document["findings"]) {
            EXPECT_EQ(finding["key"], "variable-without-effect");
            EXPECT_EQ(finding["line"], nullptr);
            variables.push_back(finding["parameters"][0]);
        }
        EXPECT_EQ(variables, example.variables);
    }
    EXPECT_EQ(VerdictOn({"check"}, 3, {{"VELDyadCtxInit", "x"}})["findings"][1]["parameters"][0],
              "VELDyadCtxInit");
}

TEST_F(CheckReports, GithubGetsACommandForEachFinding) {
    folder_.Write("a,b.xml",
                  "<DyAdDescription><CtxData>\n"
                  "<Context Name='100%&#10;' Parameter='a' ParameterType='Path'/>\n"
                  "<Context Name='100%&#10;' Parameter='a' ParameterType='Path' Colour=''/>\n"
                  "</CtxData></DyAdDescription>");
    Expect({"github",
            {"check", "--format", "github", "a,b.xml"},
            1,
            "::error file=a%2Cb.xml,line=2,col=10,title=Ctx.Check.CtxAlreadyDefined::The context "
            "\"100%25\\n\" is declared more than once. Rename or remove all but one of these "
            "declarations.%0Aline 3: \"100%25\\n\" is declared again here\n"
            "::warning file=a%2Cb.xml,line=3,col=62,title=unknown-attribute::The attribute "
            "\"Colour\" of Context means nothing and is not read.\n",
            {},
            {}});
    const ChildResult none = Run({"check", "--format", "github"});
    EXPECT_EQ(none.status, 3);
    EXPECT_TRUE(none.standardOutput.starts_with("::error title=Ctx.Collector.XMLFileNotSet::"))
        << none.standardOutput;
}

TEST_F(CheckReports, InNoFormatForPeopleANameSteersTheTextAroundIt) {
    const std::string context =
        "<Context Name='N\u009b\u2028\u202e\u200f' Parameter='a' ParameterType='Path'/>\n";
    const std::string file = WriteContexts("t\u202e.xml", context + context);
    for (const std::string format : {"text", "github", "sarif"}) {
        const std::string report = Run({"check", "--format", format, file}).standardOutput;
        for (const char* raw : {"\u009b", "\u2028", "\u202e", "\u200f"})
            EXPECT_EQ(report.find(raw), std::string::npos) << format << ": " << report;
        const std::string text =
            format == "sarif"
                ? Json::parse(report)["runs"][0]["results"][0]["message"]["text"].get<std::string>()
                : report;
        EXPECT_NE(text.find(R"("N\u009b\u2028\u202e\u200f")"), std::string::npos) << text;
    }
}

TEST_F(CheckReports, SarifHoldsRulesResultsAndPlaces) {
    folder_.Write("the file.xml", "<DyAdDescription><CtxData>\n"
                                  "<Context Name='\xC3\x84' Parameter='a' ParameterType='Path'/>\n"
                                  "<Context Parameter='a' Name='\xC3\x84' ParameterType='Path'/>\n"
                                  "<Other/></CtxData></DyAdDescription>");
    const ChildResult result = Run({"check", "--format", "sarif", "the file.xml"});
    EXPECT_EQ(result.status, 1);
    const Json document = Json::parse(result.standardOutput);
    EXPECT_EQ(document["version"], "2.1.0");
    ASSERT_EQ(document["runs"].size(), 1U);
    const Json& run = document["runs"][0];
    EXPECT_EQ(run["columnKind"], "unicodeCodePoints");
    EXPECT_EQ(run["tool"]["driver"]["name"], "dyadctx");
    EXPECT_EQ(run["invocations"][0]["executionSuccessful"], true);
    EXPECT_EQ(run["invocations"][0]["exitCode"], 1);
    ASSERT_EQ(run["results"].size(), 2U);
    const Json location = {
        {"artifactLocation", {{"uri", "the%20file.xml"}}},
        {"region", {{"startLine", 2}, {"startColumn", 10}, {"endLine", 2}, {"endColumn", 18}}}};
    const Json related = {
        {"artifactLocation", {{"uri", "the%20file.xml"}}},
        {"region", {{"startLine", 3}, {"startColumn", 24}, {"endLine", 3}, {"endColumn", 32}}}};
    const Json& duplicate = run["results"][0];
    EXPECT_EQ(duplicate["ruleId"], "Ctx.Check.CtxAlreadyDefined");
    EXPECT_EQ(duplicate["level"], "error");
    EXPECT_EQ(duplicate["locations"][0]["physicalLocation"], location);
    EXPECT_EQ(duplicate["locations"][0]["logicalLocations"][0]["name"], "\xC3\x84");
    EXPECT_EQ(duplicate["relatedLocations"][0]["physicalLocation"], related);
    EXPECT_EQ(run["results"][1]["level"], "warning");
    EXPECT_EQ(run["results"][1]["locations"][0]["physicalLocation"]["region"],
              (Json{{"startLine", 4}, {"startColumn", 1}, {"endLine", 4}, {"endColumn", 7}}));
    for (const Json& one : run["results"]) {
        const std::size_t index = one["ruleIndex"];
        EXPECT_EQ(run["tool"]["driver"]["rules"][index]["id"], one["ruleId"]);
    }
}

TEST_F(CheckReports, SarifSaysWhenTheToolCouldNotDoItsWork) {
    const ChildResult none = Run({"check", "--format", "sarif", "missing.xml"});
    EXPECT_EQ(none.status, 3);
    const Json invocation = Json::parse(none.standardOutput)["runs"][0]["invocations"][0];
    EXPECT_EQ(invocation, (Json{{"executionSuccessful", false}, {"exitCode", 3}}));
}

TEST_F(CheckReports, AConsequenceIsAMarkedNoteThatDoesNotCount) {
    WriteContexts("std.xml", "<Context Name='DYADIC' Parameter='' ParameterType='Default'/>\n"
                             "<Context Name='Std' Parameter='' ParameterType='Default'/>");
    const Json document = VerdictOn({"check", "std.xml"}, 1);
    ASSERT_EQ(document["findings"].size(), 2U);
    EXPECT_EQ(document["findings"][0]["cause"], nullptr);
    EXPECT_EQ(document["findings"][1]["key"], "Ctx.Check.CtxEmptyParam");
    EXPECT_EQ(document["findings"][1]["severity"], "note");
    EXPECT_EQ(document["findings"][1]["cause"], 1);
    const std::string text = document["findings"][1]["text"];
    const std::string report = Run({"check", "std.xml"}).standardOutput;
    EXPECT_NE(report.find("std.xml:3:21: note: consequence: " + text +
                          " [Ctx.Check.CtxEmptyParam]\n1 file checked, 1 not valid, 1 error\n"),
              std::string::npos)
        << report;
    EXPECT_EQ(Run({"list", "std.xml"}).standardError.find("error: " + text), std::string::npos);
    const std::string commands = Run({"check", "std.xml", "--format", "github"}).standardOutput;
    EXPECT_NE(commands.find("::notice file=std.xml,line=3,col=21,title=Ctx.Check.CtxEmptyParam::"
                            "consequence: The context"),
              std::string::npos)
        << commands;
    const Json sarif =
        Json::parse(Run({"check", "std.xml", "--format", "sarif"}).standardOutput)["runs"][0];
    EXPECT_EQ(sarif["results"][1]["level"], "note");
    EXPECT_EQ(sarif["tool"]["driver"]["rules"][1]["defaultConfiguration"]["level"], "error");
}

TEST_F(CheckReports, FindingsThatTheDbContextEnvironmentEndsAreCounted) {
    WriteContexts("db.xml",
                  "<Context Name='DYADIC' Parameter='' ParameterType='Default'/>\n"
                  "<Context Name='V' Parameter='v' ParameterType='Database' ConnectorName='KRL'/>\n"
                  "<Context Name='A' Parameter='' ParameterType='Path'><CtxFriends>\n"
                  "<Context Name='V'/></CtxFriends></Context>");
    const std::string off = Run({"check", "db.xml"}).standardOutput;
    EXPECT_TRUE(off.ends_with("1 file checked, 1 not valid, 2 errors, 1 note\n"
                              "2 of these vanish with --db-context\n"))
        << off;
    const std::string on = Run({"check", "db.xml", "--db-context"}).standardOutput;
    EXPECT_TRUE(on.ends_with("1 file checked, 1 not valid, 1 error\n")) << on;
    EXPECT_EQ(Run({"check", "-q", "db.xml"}).standardOutput.find("vanish"), std::string::npos);
    WriteContexts("path.xml", "<Context Name='A' Parameter='' ParameterType='Path'/>");
    EXPECT_EQ(Run({"check", "path.xml"}).standardOutput.find("vanish"), std::string::npos);
}

// The library's message, whose length goes with the square of the friends, holds all.
TEST_F(CheckReports, EqualMessagesAreToldOnce) {
    std::string friends;
    for (int i = 0; i < 100; ++i)
        friends += "<Context Name='A'/>\n";
    WriteContexts("same.xml", "<Context Name='A' Parameter='a' ParameterType='Path'><CtxFriends>" +
                                  friends + "</CtxFriends></Context>");
    const ChildResult list = Run({"list", "same.xml"});
    EXPECT_EQ(list.status, 4);
    EXPECT_EQ(std::count(list.standardError.begin(), list.standardError.end(), '\n'), 3)
        << list.standardError;
    const Json verdict = VerdictOn({"check", "same.xml"}, 1);
    // Each with what it entails, and all but the first as repeated friends.
    EXPECT_EQ(verdict["findings"].size(), 299U);
    const std::string message = verdict["message"];
    EXPECT_EQ(std::count(message.begin(), message.end(), '\n'), 100 + 100 * 100);
}

TEST_F(CheckReports, ColoursAreUsedOnlyOnRequest) {
    WriteContexts("bad.xml", "<Context Name='A!' Parameter='a' ParameterType='Path'/>");
    EXPECT_EQ(Run({"check", "bad.xml"}).standardOutput.find('\x1b'), std::string::npos);
    EXPECT_NE(Run({"check", "bad.xml", "--color", "always"})
                  .standardOutput.find("\x1b[31merror\x1b[0m: "),
              std::string::npos);
    for (const char* format : {"json", "sarif", "github"}) {
        const ChildResult result =
            Run({"check", "bad.xml", "--color", "always", "--format", format});
        EXPECT_EQ(result.standardOutput.find('\x1b'), std::string::npos) << format;
    }
}

} // namespace dyadctx::test
