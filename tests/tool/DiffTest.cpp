// SPDX-License-Identifier: MIT
// `diff`: what differs between two files, by context name.
#include "tool/ToolTest.h"

namespace dyadctx::test {

namespace {

constexpr const char* Before = R"(
    <Context Name="Same" Parameter="/s" ParameterType="Path"/>
    <Context Name="Gone" Parameter="/g" ParameterType="Path"/>
    <Context Name="Moved" Parameter="/old" ParameterType="Path">
      <CtxFriends><Context Name="Same"/></CtxFriends>
      <CtxAssociated><Context Name="Vault"/></CtxAssociated>
      <Scenario><ScenarioID Ident="EX1" name="Export"/></Scenario></Context>
    <Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"
             ServerName="north" Role="main"/>)";

constexpr const char* After = R"(
    <Context Name="New" Parameter="/n" ParameterType="Path"/>
    <Context Name="Moved" Parameter="/new" ParameterType="File">
      <CtxFriends><Context Name="New"/></CtxFriends></Context>
    <Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"
             ServerName="south" Role="main"/>
    <Context Name="Same" Parameter="/s" ParameterType="Path">
      <Scenario><ScenarioID Ident="EX2" name="Import"><Option name="o" value="1"/></ScenarioID>
      </Scenario></Context>)";

class Diff : public ToolTest {
protected:
    void SetUp() override {
        WriteContexts("before.xml", Before);
        WriteContexts("after.xml", After);
    }
};

const Environment Multisite{{"TE_MULTISITE_DBCONTEXT", "1"}};

} // namespace

TEST_F(Diff, TheSameContextsAreNoDifference) {
    WriteContexts("reordered.xml", R"(
        <Context Name="B" Parameter="/b" ParameterType="Path"/>
        <Context Name="A" Parameter="/a" ParameterType="Path"/>)");
    WriteContexts("ordered.xml", R"(
        <Context ParameterType="Path" Name="A" Parameter="/a"/>
        <Context Name="B" Parameter="/b" ParameterType="Path"></Context>)");
    Expect({"text", {"diff", "reordered.xml", "ordered.xml"}, 0, "", {}, {}});
    const Json expected = {{"schema", "dyadctx/diff/1"},
                           {"from", "reordered.xml"},
                           {"to", "ordered.xml"},
                           {"same", true},
                           {"added", Json::array()},
                           {"removed", Json::array()},
                           {"changed", Json::array()},
                           {"scenariosAdded", Json::array()},
                           {"scenariosRemoved", Json::array()}};
    EXPECT_EQ(RunForJson({"diff", "reordered.xml", "ordered.xml"}), expected);
}

TEST_F(Diff, EachDifferenceHasALine) {
    Expect({"text",
            {"diff", "before.xml", "after.xml", "--db-context"},
            1,
            "- Gone (Path \"/g\")\n"
            "+ New (Path \"/n\")\n"
            "~ Moved: parameter \"/old\" -> \"/new\"\n"
            "~ Moved: parameterType \"Path\" -> \"File\"\n"
            "~ Moved: friends Same -> New\n"
            "~ Moved: associated \"Vault\" -> none\n"
            "~ Vault: provider KRL (Role=main, ServerName=north) -> KRL (Role=main, "
            "ServerName=south)\n"
            "- scenario \"EX1\" of \"Moved\", profile \"Export\", option \"\" = \"\"\n"
            "+ scenario \"EX2\" of \"Same\", profile \"Import\", option \"o\" = \"1\"\n",
            {},
            {}});
}

TEST_F(Diff, JsonHasBothSidesOfEachChange) {
    const Json document =
        RunForJson({"diff", "before.xml", "after.xml", "--db-context"}, 1, Multisite);
    EXPECT_EQ(document["same"], false);
    EXPECT_EQ(document["added"], Json({"New"}));
    EXPECT_EQ(document["removed"], Json({"Gone"}));
    ASSERT_EQ(document["changed"].size(), 2U);
    const Json& moved = document["changed"][0];
    EXPECT_EQ(moved["name"], "Moved");
    const Json parameter = {{"what", "parameter"}, {"from", "/old"}, {"to", "/new"}};
    EXPECT_EQ(moved["changes"][0], parameter);
    const Json friends = {{"what", "friends"}, {"from", {"Same"}}, {"to", {"New"}}};
    EXPECT_EQ(moved["changes"][2], friends);
    const Json associated = {{"what", "associated"}, {"from", "Vault"}, {"to", nullptr}};
    EXPECT_EQ(moved["changes"][3], associated);
    const Json& vault = document["changed"][1];
    EXPECT_EQ(vault["changes"][0]["what"], "provider");
    EXPECT_EQ(vault["changes"][0]["to"]["serverDetails"]["ServerName"], "south");
    EXPECT_EQ(vault["changes"][1]["what"], "sites");
    EXPECT_EQ(vault["changes"][1]["from"][0]["site"], "north:main");
    EXPECT_EQ(document["scenariosAdded"][0]["scenario"], "EX2");
    EXPECT_EQ(document["scenariosRemoved"][0]["scenario"], "EX1");
}

TEST_F(Diff, TroubleHasTheStatusOfTheTrouble) {
    WriteContexts("broken.xml", R"(<Context Name="A" Parameter="" ParameterType="Path"/>)");
    ExpectEach({
        {"missing",
         {"diff", "before.xml", "missing.xml", "--db-context"},
         3,
         "",
         {"missing.xml cannot be read: there is no such file"},
         {}},
        {"broken",
         {"diff", "broken.xml", "after.xml", "--db-context"},
         4,
         "",
         {"broken.xml cannot be loaded"},
         {}},
    });
}

} // namespace dyadctx::test
