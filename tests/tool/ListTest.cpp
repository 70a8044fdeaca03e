// SPDX-License-Identifier: MIT
// `list`: the contexts of a file and its views.
#include "tool/ToolTest.h"

namespace dyadctx::test {

namespace {

constexpr const char* Contexts = R"(
    <Context Name="DYADIC" Parameter="" ParameterType="Default"/>
    <Context Name="Design" Parameter="/d" ParameterType="Path">
      <CtxFriends><Context Name="Parts"/></CtxFriends></Context>
    <Context Name="Parts" Parameter="/p.lst" ParameterType="File">
      <CtxAssociated><Context Name="Vault"/></CtxAssociated></Context>
    <Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"
             ServerName="north" Role="main"/>
    <Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"
             ServerName="south" Role="copy"/>
    <Context Name="Store" Parameter="s" ParameterType="Database" ConnectorName="HWB"
             ServerName="store"/>)";

class List : public ToolTest {
protected:
    void SetUp() override { WriteContexts("site.xml", Contexts); }
};

const Environment Multisite{{"TE_MULTISITE_DBCONTEXT", "1"}};

} // namespace

TEST_F(List, AlignsTheColumnsThatHaveContent) {
    Expect({"table",
            {"list", "site.xml", "--db-context"},
            0,
            "#  NAME    TYPE      PARAMETER  PROVIDER  FRIENDS  ASSOCIATED\n"
            "1  DYADIC  Default\n"
            "2  Design  Path      /d                   Parts\n"
            "3  Parts   File      /p.lst                        Vault\n"
            "4  Vault   Database  v          KRL\n"
            "5  Store   Database  s          HWB\n",
            {},
            {}});
}

TEST_F(List, ShowsTheSitesOfAContextThatHasSeveral) {
    const ChildResult result = Run({"list", "site.xml", "--db-context"}, Multisite);
    EXPECT_NE(result.standardOutput.find("KRL       north:main, south:copy\n"), std::string::npos)
        << result.standardOutput;
    EXPECT_EQ(result.standardOutput.find("store"), std::string::npos);
}

TEST_F(List, AlignsWideAndCombiningCharactersByWhatTheyTakeOnTheScreen) {
    WriteContexts("wide.xml",
                  "<Context Name=\"図面\" Parameter=\"/a\" ParameterType=\"Path\"/>"
                  "<Context Name=\"e\xCC\x81\" Parameter=\"/b\" ParameterType=\"Path\"/>"
                  "<Context Name=\"abcd\" Parameter=\"/c\" ParameterType=\"Path\"/>");
    Expect({"wide",
            {"list", "wide.xml"},
            0,
            "#  NAME  TYPE  PARAMETER\n"
            "1  図面  Path  /a\n"
            "2  e\xCC\x81     Path  /b\n"
            "3  abcd  Path  /c\n",
            {},
            {}});
}

TEST_F(List, JsonHasAllOfEachContext) {
    const Json document = RunForJson({"list", "site.xml", "--db-context"}, 0, Multisite);
    EXPECT_EQ(document.begin().key(), "schema");
    EXPECT_EQ(document["schema"], "dyadctx/list/1");
    EXPECT_EQ(document["file"], "site.xml");
    EXPECT_EQ(document["isDefault"], false);
    EXPECT_EQ(document["view"], "all");
    ASSERT_EQ(document["contexts"].size(), 5U);
    const Json parts = {{"position", 3},
                        {"name", "Parts"},
                        {"parameter", "/p.lst"},
                        {"parameterType", "File"},
                        {"label", "File"},
                        {"friends", Json::array()},
                        {"associated", "Vault"},
                        {"provider", nullptr},
                        {"sites", Json::array()},
                        {"line", 6},
                        {"column", 5},
                        {"attributes",
                         {{"Name", {{"line", 6}, {"column", 14}}},
                          {"Parameter", {{"line", 6}, {"column", 27}}},
                          {"ParameterType", {{"line", 6}, {"column", 46}}}}}};
    EXPECT_EQ(document["contexts"][2], parts);
    EXPECT_EQ(document["contexts"][1]["friends"], Json({"Parts"}));
    const Json provider = {{"name", "KRL"},
                           {"serverDetails",
                            {{"http", ""},
                             {"Role", "main"},
                             {"ServerName", "north"},
                             {"ServerPort", ""},
                             {"URI", ""},
                             {"SiteId", ""}}}};
    EXPECT_EQ(document["contexts"][3]["provider"], provider);
    EXPECT_EQ(document["contexts"][3]["provider"]["serverDetails"].begin().key(), "http");
    EXPECT_EQ(document["contexts"][3]["sites"], Json({"north:main", "south:copy"}));
}

TEST_F(List, SitesAreKnownOnlyWhileTheProcessHasMultisiteSupport) {
    const Json document = RunForJson({"list", "site.xml", "--db-context"});
    EXPECT_EQ(document["contexts"][3]["sites"], Json::array());
}

TEST_F(List, EachViewHoldsItsContexts) {
    struct View {
        std::vector<std::string> arguments;
        std::string view;
        std::string names;
    };
    const std::vector<View> views{
        {{"--type", "all"}, "all", "DYADIC\nDesign\nParts\nVault\nStore\n"},
        {{"--type", "path"}, "path", "DYADIC\nDesign\n"},
        {{"--type", "file"}, "file", "DYADIC\nDesign\nParts\n"},
        {{"--type", "database"}, "database", "DYADIC\nDesign\nVault\nStore\n"},
        {{"--type", "database", "--provider", "HWB"}, "database", "Design\nStore\n"},
        {{"--provider", "KRL"}, "database", "Design\nVault\n"},
        {{"--provider", "KRL", "--provider", "HWB"}, "database", "Design\nVault\nStore\n"},
    };
    for (const View& view : views) {
        std::vector<std::string> arguments{"list", "site.xml", "--db-context"};
        arguments.insert(arguments.end(), view.arguments.begin(), view.arguments.end());
        EXPECT_EQ(RunForJson(arguments)["view"], view.view);
        arguments.insert(arguments.end(), {"--format", "names"});
        EXPECT_EQ(Run(arguments).standardOutput, view.names);
    }
}

TEST_F(List, PositionsCountWithinTheView) {
    const Json document = RunForJson({"list", "site.xml", "--db-context", "--provider", "HWB"});
    EXPECT_EQ(document["contexts"][1]["name"], "Store");
    EXPECT_EQ(document["contexts"][1]["position"], 2);
}

TEST_F(List, ATypeWithoutEffectIsSaid) {
    WriteContexts("paths.xml", R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)");
    const ChildResult result = Run({"list", "paths.xml", "--type", "database"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.standardError.find("add --db-context"), std::string::npos);
    EXPECT_EQ(RunForJson({"list", "paths.xml", "--type", "database"})["view"], "all");
}

TEST_F(List, AnEmptyViewIsSaid) {
    WriteContexts("none.xml", R"(<Context Name="A" Parameter="a" ParameterType="Database"
                                  ConnectorName="KRL"/>)");
    Expect({"empty",
            {"list", "none.xml", "--db-context", "--type", "path"},
            0,
            "",
            {"there is no context in this view"},
            {}});
    EXPECT_EQ(RunForJson({"list", "none.xml", "--db-context", "--type", "path"})["contexts"],
              Json::array());
}

TEST_F(List, AProviderGoesWithTheDatabaseViewOnly) {
    Expect({"contradiction",
            {"list", "site.xml", "--db-context", "--type", "path", "--provider", "KRL"},
            2,
            "",
            {"--provider narrows the database view", "usage: dyadctx list"},
            {}});
}

TEST_F(List, TheLabelFollowsTheLanguageAndTheTypeDoesNot) {
    const Json context =
        RunForJson({"list", "site.xml", "--db-context", "--lang", "ja"})["contexts"][1];
    EXPECT_EQ(context["label"], "パス");
    EXPECT_EQ(context["parameterType"], "Path");
}

TEST_F(List, ANameInBracketsIsTakenAsItIs) {
    WriteContexts("brackets.xml", R"(<Context Name="[a,b]" Parameter="a" ParameterType="Database"
                                      ConnectorName="[K,L]"/>)");
    const ChildResult result =
        Run({"list", "brackets.xml", "--db-context", "--provider", "[K,L]", "--format", "names"});
    EXPECT_EQ(result.standardOutput, "[a,b]\n");
}

TEST_F(List, SaysHowManyContextsItLeavesOut) {
    const std::string base =
        R"(<Context Name="V" Parameter="v" ParameterType="Database" ConnectorName="KRL"/>)";
    const std::string path = R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)";
    WriteContexts("one.xml", path + base);
    WriteContexts(
        "two.xml",
        path + base +
            R"(<Context Name="W" Parameter="w" ParameterType="Database" ConnectorName="HWB"/>)");
    const std::string table = "#  NAME  TYPE  PARAMETER\n1  A     Path  /a\n";
    ExpectEach({
        {"one",
         {"list", "one.xml"},
         0,
         table,
         {"note: 1 database context is left out, because the DB context environment is off; add "
          "--db-context\n"},
         {}},
        {"two",
         {"list", "two.xml", "--format", "names"},
         0,
         "A\n",
         {"note: 2 database contexts are left out"},
         {}},
        {"quiet", {"list", "two.xml", "-q"}, 0, table, {}, {}},
        {"none", {"list", "two.xml", "--db-context", "--format", "names"}, 0, "A\nV\nW\n", {}, {}},
    });
}

TEST_F(List, AllListsAFileWithErrorsWithStatesAndFirstFindings) {
    WriteContexts("faulty.xml", R"(
<Context Name="A" Parameter="/a" ParameterType="Path">
  <CtxFriends><Context Name="Missing"/></CtxFriends></Context>
<Context Name="B" Parameter="/b" ParameterType="Path"/>
<Context Name="C!" Parameter="" ParameterType="Path"/>)");
    const ChildResult result = Run({"list", "--all", "faulty.xml"});
    EXPECT_EQ(result.status, 4);
    EXPECT_NE(result.standardError.find("faulty.xml cannot be loaded; the list shows what could be "
                                        "read"),
              std::string::npos)
        << result.standardError;
    EXPECT_NE(result.standardOutput.find("1  A     error  Path  /a         Missing  "),
              std::string::npos)
        << result.standardOutput;
    EXPECT_NE(result.standardOutput.find("2  B     valid  Path  /b\n"), std::string::npos)
        << result.standardOutput;
    EXPECT_NE(result.standardOutput.find("[Ctx.Check.CtxNameWithInvalidChar]\n"), std::string::npos)
        << result.standardOutput;

    const Json contexts = RunForJson({"list", "--all", "faulty.xml"}, 4)["contexts"];
    ASSERT_EQ(contexts.size(), 3U);
    EXPECT_EQ(contexts[0]["state"], "error");
    EXPECT_EQ(contexts[0]["finding"]["key"], "Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx");
    EXPECT_EQ(contexts[0]["finding"]["line"], 4);
    EXPECT_EQ(contexts[1]["state"], "valid");
    EXPECT_EQ(contexts[1]["finding"], nullptr);
    EXPECT_EQ(contexts[2]["state"], "error");
    EXPECT_EQ(Run({"list", "--all", "faulty.xml", "--format", "names"}).standardOutput,
              "A\nB\nC!\n");
    EXPECT_EQ(Run({"list", "faulty.xml"}).standardOutput, "");
}

TEST_F(List, AllOfAValidFileHasStatesToo) {
    WriteContexts("odd.xml", R"(
        <Context Name="DYADIC" Parameter="" ParameterType="Default"/>
        <Context Name="A" Parameter="/a" ParameterType="Path" Colour="red"/>)");
    const Json contexts = RunForJson({"list", "--all", "odd.xml"})["contexts"];
    EXPECT_EQ(contexts[0]["state"], "valid");
    EXPECT_EQ(contexts[0]["finding"], nullptr);
    EXPECT_EQ(contexts[1]["state"], "valid");
    EXPECT_FALSE(RunForJson({"list", "odd.xml"})["contexts"][1].contains("state"));
}

TEST_F(List, AllOfAFileThatIsNoXmlIsARefusal) {
    folder_.Write("open.xml", "<DyAdDescription>");
    Expect({"open", {"list", "--all", "open.xml"}, 4, "", {"[Ctx.Parse.XMLSyntaxError]"}, {}});
    Expect({"none", {"list", "--all", "none.xml"}, 3, "", {"there is no such file"}, {}});
}

TEST_F(List, NamesMayEndWithAZeroByte) {
    WriteContexts("names.xml", R"(<Context Name="A B" Parameter="/a" ParameterType="Path"/>
                                  <Context Name="C" Parameter="/c" ParameterType="Path"/>)");
    EXPECT_EQ(Run({"list", "names.xml", "--format", "names", "-0"}).standardOutput,
              std::string("A B\0C\0", 6));
    EXPECT_EQ(Run({"list", "names.xml", "-0"}).status, 2);
}

TEST_F(List, OnlyExactOutputHoldsACharacterThatSteersTheTextAroundIt) {
    const std::string name = "N\u009b\u2028\u202e\u061c";
    WriteContexts("odd.xml",
                  "<Context Name='" + name + "' Parameter='" + name + "' ParameterType='Path'/>");
    EXPECT_EQ(Run({"list", "odd.xml", "--format", "names", "-0"}).standardOutput, name + '\0');
    EXPECT_EQ(Run({"show", name, "odd.xml", "--field", "parameter"}).standardOutput, name + "\n");
    EXPECT_EQ(Run({"list", "odd.xml", "--format", "names"}).standardOutput,
              "N\\u009b\\u2028\\u202e\\u061c\n");
}

TEST_F(List, ProvidersAreListedOnceEach) {
    Expect({"providers",
            {"list", "site.xml", "--db-context", "--format", "providers"},
            0,
            "KRL\nHWB\n",
            {},
            {}});
}

TEST_F(List, JsonHasThePlaceOfEachAttribute) {
    folder_.Write("places.xml", "<DyAdDescription><CtxData>\n"
                                "  <Context Name='A'\n"
                                "           Parameter='\xC3\xA4' ParameterType='Path'/>\n"
                                "</CtxData></DyAdDescription>");
    const Json expected = {{"Name", {{"line", 2}, {"column", 12}}},
                           {"Parameter", {{"line", 3}, {"column", 12}}},
                           {"ParameterType", {{"line", 3}, {"column", 26}}}};
    EXPECT_EQ(RunForJson({"list", "places.xml"})["contexts"][0]["attributes"], expected);
    EXPECT_EQ(RunForJson({"show", "A", "places.xml"})["context"]["attributes"], expected);
}

TEST_F(List, JsonOfAChosenFileIsWrittenToTheOutputFileToo) {
    const Environment environment{{"VELDyadCtxInit", folder_.PathOf("site.xml")},
                                  {"VELDyadCtxOut", folder_.PathOf("copy.xml")},
                                  {"VELDbContextEnvironment", "1"}};
    EXPECT_EQ(RunForJson({"list"}, 0, environment)["contexts"].size(), 5U);
    EXPECT_EQ(Run({"list", "copy.xml", "--db-context", "--format", "names"}).standardOutput,
              "DYADIC\nDesign\nParts\nVault\nStore\n");
}

} // namespace dyadctx::test
