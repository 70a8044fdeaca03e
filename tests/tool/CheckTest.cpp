// SPDX-License-Identifier: MIT
// `check`: the verdict on files, as text and as JSON.
#include "tool/ToolTest.h"

#include <filesystem>

namespace dyadctx::test {

namespace {

constexpr const char* Valid = R"(<Context Name="DYADIC" Parameter="" ParameterType="Default"/>)";
// Breaks two rules of one context.
constexpr const char* Invalid = R"(<Context Name="B!" Parameter="" ParameterType="Path"/>)";

constexpr const char* ForbiddenText =
    "The name of a context contains the character \"!\". Choose a name without it.";
constexpr const char* EmptyParameterText =
    "The context \"B!\" has an empty Parameter. Enter the path, the file or the database it stands "
    "for; only the default context, named \"DYADIC\", has none.";

class Check : public ToolTest {
protected:
    void SetUp() override {
        WriteContexts("valid.xml", Valid);
        WriteContexts("invalid.xml", Invalid);
    }
};

} // namespace

TEST_F(Check, SaysOfAValidFileThatItIs) {
    Expect({"valid",
            {"check", "valid.xml"},
            0,
            "valid.xml: valid, 1 context\n1 file checked, valid\n",
            {},
            {}});
    Expect({"quiet", {"check", "-q", "valid.xml"}, 0, "", {}, {}});
}

TEST_F(Check, PrintsEveryFindingWithItsKeyThenASummary) {
    const std::string findings =
        std::string("invalid.xml:2:36: error: ") + ForbiddenText +
        " [Ctx.Check.CtxNameWithInvalidChar]\ninvalid.xml:2:46: error: " + EmptyParameterText +
        " [Ctx.Check.CtxEmptyParam]\n";
    Expect({"invalid",
            {"check", "invalid.xml"},
            1,
            findings + "1 file checked, 1 not valid, 2 errors\n",
            {},
            {}});
    Expect({"quiet", {"check", "invalid.xml", "--quiet"}, 1, findings, {}, {}});
}

TEST_F(Check, JsonOfAValidFile) {
    const Json verdict = {
        {"file", "valid.xml"}, {"valid", true}, {"message", ""}, {"findings", Json::array()}};
    const Json expected = {{"schema", "dyadctx/check/1"}, {"files", Json::array({verdict})}};
    EXPECT_EQ(RunForJson({"check", "valid.xml"}), expected);
}

TEST_F(Check, JsonHoldsTheMessageOfTheFactoryAndEachFinding) {
    const Json document = RunForJson({"check", "invalid.xml"}, 1);
    const Json expected = {{"file", "invalid.xml"},
                           {"valid", false},
                           {"message", std::string("The context file is not valid : ") +
                                           ForbiddenText + "\n" + EmptyParameterText + "\n"},
                           {"findings",
                            {{{"key", "Ctx.Check.CtxNameWithInvalidChar"},
                              {"parameters", Json::array()},
                              {"severity", "error"},
                              {"cause", nullptr},
                              {"text", ForbiddenText},
                              {"context", "B!"},
                              {"line", 2},
                              {"column", 36},
                              {"related", Json::array()}},
                             {{"key", "Ctx.Check.CtxEmptyParam"},
                              {"parameters", {"B!"}},
                              {"severity", "error"},
                              {"cause", nullptr},
                              {"text", EmptyParameterText},
                              {"context", "B!"},
                              {"line", 2},
                              {"column", 46},
                              {"related", Json::array()}}}}};
    EXPECT_EQ(document["files"][0], expected);
    EXPECT_EQ(document.begin().key(), "schema");
}

TEST_F(Check, AFindingNamesNoContextWhereItsParameterIsAnElement) {
    folder_.Write("root.xml", "<Other/>");
    const Json finding = VerdictOn({"check", "root.xml"}, 1)["findings"][0];
    EXPECT_EQ(finding["key"], "Ctx.Parse.NotAValidTag");
    EXPECT_EQ(finding["parameters"], Json({"Other"}));
    EXPECT_EQ(finding["context"], nullptr);
}

TEST_F(Check, SeveralFilesGiveOneDocumentAndTheGravestStatus) {
    const Json document = RunForJson({"check", "valid.xml", "invalid.xml"}, 1);
    EXPECT_EQ(document["schema"], "dyadctx/check/1");
    ASSERT_EQ(document["files"].size(), 2U);
    EXPECT_EQ(document["files"][0]["file"], "valid.xml");
    EXPECT_EQ(document["files"][0]["valid"], true);
    EXPECT_EQ(document["files"][1]["file"], "invalid.xml");
    EXPECT_EQ(document["files"][1]["findings"].size(), 2U);
    EXPECT_EQ(Run({"check", "valid.xml", "invalid.xml", "missing.xml"}).status, 3);
    EXPECT_EQ(Run({"check", "valid.xml", "valid.xml"}).status, 0);
}

TEST_F(Check, SummarisesSeveralFiles) {
    const ChildResult result = Run({"check", "valid.xml", "invalid.xml", "valid.xml"});
    EXPECT_NE(result.standardOutput.find("3 files checked, 1 not valid, 2 errors\n"),
              std::string::npos)
        << result.standardOutput;
}

TEST_F(Check, PrintsTheReasonWhereTheLibraryIsSilent) {
    WriteContexts("silent.xml", R"(<Context Name="A" Parameter="/a" ParameterType="Path">
        <Scenario><ScenarioID Ident="1" name="x"><Option value="y"/></ScenarioID></Scenario>
        </Context>)");
    const ChildResult result = Run({"check", "silent.xml"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(
        result.standardOutput.find("silent.xml:3:50: error: An Option of the context \"A\" has no "
                                   "name."),
        std::string::npos)
        << result.standardOutput;
    const Json document = VerdictOn({"check", "silent.xml"}, 1);
    EXPECT_EQ(document["valid"], false);
    EXPECT_EQ(document["message"], "");
    ASSERT_EQ(document["findings"].size(), 1U);
    EXPECT_EQ(document["findings"][0]["key"], "option-without-name");
}

TEST_F(Check, SaysWhyAFileCannotBeRead) {
    folder_.Write("folder.xml/file", "");
    folder_.Write("site.txt", "");
    for (const auto& [file, note] : std::map<std::string, std::string>{
             {"missing.xml", "missing.xml: note: there is no such file\n"},
             {"none/a.xml", "none/a.xml: note: there is no folder none\n"},
             {"folder.xml", "folder.xml: note: it is a folder\n"},
             {"site.txt", "site.txt: note: the name does not end in .xml, in lower case\n"}}) {
        const ChildResult result = Run({"check", file});
        EXPECT_EQ(result.status, 3);
        EXPECT_NE(result.standardOutput.find("[Ctx.Collector.XMLFileNotValid]\n" + note),
                  std::string::npos)
            << result.standardOutput;
    }
    const ChildResult chosen = Run({"check"}, {{"VELDyadCtxInit", "./missing.xml"}});
    EXPECT_NE(chosen.standardOutput.find("./missing.xml: note: there is no such file\n"),
              std::string::npos)
        << chosen.standardOutput;
    folder_.Write("secret.xml", "<DyAdDescription/>");
    std::filesystem::permissions(folder_.PathOf("secret.xml"), std::filesystem::perms::none);
    const std::string output = RunAsOrdinaryUser({"check", "secret.xml"}).standardOutput;
    EXPECT_NE(output.find("secret.xml: note: the file may not be read\n"), std::string::npos)
        << output;
}

TEST_F(Check, AFileThatCannotBeReadIsAFindingWithAStatusOfItsOwn) {
    const Json document = VerdictOn({"check", "missing.xml"}, 3);
    EXPECT_EQ(document["file"], "missing.xml");
    EXPECT_EQ(document["valid"], false);
    EXPECT_EQ(document["findings"][0]["key"], "Ctx.Collector.XMLFileNotValid");
    EXPECT_EQ(document["findings"][0]["parameters"], Json({"./missing.xml"}));
    EXPECT_EQ(document["findings"][0]["related"][0]["text"], "there is no such file");
    EXPECT_EQ(document["findings"][0]["context"], nullptr);
}

TEST_F(Check, WithoutAnySourceThereIsNoFile) {
    const Json document = VerdictOn({"check"}, 3);
    EXPECT_EQ(document["file"], nullptr);
    EXPECT_EQ(document["findings"][0]["key"], "Ctx.Collector.XMLFileNotSet");
}

TEST_F(Check, LinkingAndReadingFaultsAreFindings) {
    struct Fault {
        const char* contexts;
        std::vector<std::string> keys;
        Environment environment;
    };
    const Environment databases{{"VELDbContextEnvironment", "1"}};
    const std::vector<Fault> faults{
        {R"(<Context Name="A" ParameterType="Path"/>)", {"Ctx.Parse.CtxNoParam"}, {}},
        {R"(<Context Name="A" Parameter="/a" ParameterType="Path"><CtxFriends><Context Name="X"/>
            </CtxFriends></Context>)",
         {"Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx"},
         {}},
        {R"(<Context Name="A" Parameter="a" ParameterType="Database"/>)",
         {"Ctx.Parse.CtxNoConnector", "Ctx.Parse.CtxNoDatabase"},
         databases},
    };
    for (const Fault& fault : faults) {
        WriteContexts("fault.xml", fault.contexts);
        const Json document = VerdictOn({"check", "fault.xml"}, 1, fault.environment);
        std::vector<std::string> keys;
        for (const Json& finding : document["findings"])
            keys.push_back(finding["key"]);
        EXPECT_EQ(keys, fault.keys);
    }
}

TEST_F(Check, UsesTheRequestedLanguage) {
    const auto textIn = [this](const char* language) {
        return VerdictOn({"check", "invalid.xml", "--lang", language}, 1)["findings"][1]["text"]
            .get<std::string>();
    };
    EXPECT_EQ(textIn("en"), EmptyParameterText);
    EXPECT_EQ(textIn("xx"), EmptyParameterText);
    EXPECT_NE(textIn("fr").find("Le contexte"), std::string::npos) << textIn("fr");
    EXPECT_NE(textIn("de").find("Der Kontext"), std::string::npos) << textIn("de");
    EXPECT_NE(textIn("ja").find("コンテキスト"), std::string::npos) << textIn("ja");
}

TEST_F(Check, ANameWithFormatSignsAndControlCharactersIsShownAsItIs) {
    WriteContexts("odd.xml", "<Context Name=\"%s%n{0}&#10;\xC2\x9B\" Parameter=\"\" "
                             "ParameterType=\"Path\"/>");
    const ChildResult result = Run({"check", "odd.xml"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.standardOutput.find("\"%s%n{0}\\n\\u009b\""), std::string::npos)
        << result.standardOutput;
    EXPECT_EQ(VerdictOn({"check", "odd.xml"}, 1)["findings"][0]["context"], "%s%n{0}\n\xC2\x9B");
}

} // namespace dyadctx::test
