// SPDX-License-Identifier: MIT
// `scenarios`: rows and the three queries.
#include "tool/ToolTest.h"

namespace dyadctx::test {

namespace {

constexpr const char* Contexts = R"(
    <Context Name="Design" Parameter="/d" ParameterType="Path">
      <Scenario>
        <ScenarioID Ident="EX1" name="Export">
          <Option name="Format" value="STEP"/><Option name="Level"/>
        </ScenarioID>
        <ScenarioID Ident="EX2" name="Import"/>
      </Scenario>
    </Context>
    <Context Name="Parts" Parameter="/p" ParameterType="Path">
      <Scenario><ScenarioID Ident="EX1" name="Fast"/></Scenario>
    </Context>)";

class Scenarios : public ToolTest {
protected:
    void SetUp() override { WriteContexts("site.xml", Contexts); }
};

} // namespace

TEST_F(Scenarios, WithoutOptionsEveryRowIsListed) {
    Expect({"rows",
            {"scenarios", "site.xml"},
            0,
            "CHANNEL  CONTEXT  PROFILE  SCENARIO  OPTION  VALUE\n"
            "Design   Design   Export   EX1       Format  STEP\n"
            "Design   Design   Export   EX1       Level\n"
            "Design   Design   Import   EX2\n"
            "Parts    Parts    Fast     EX1\n",
            {},
            {}});
    const Json document = RunForJson({"scenarios", "site.xml"});
    EXPECT_EQ(document.begin().key(), "schema");
    EXPECT_EQ(document["schema"], "dyadctx/scenarios/1");
    EXPECT_EQ(document["file"], "site.xml");
    ASSERT_EQ(document["scenarios"].size(), 4U);
    const Json first = {{"channel", "Design"},    {"channelContext", "Design"},
                        {"profile", "Export"},    {"scenario", "EX1"},
                        {"optionName", "Format"}, {"optionValue", "STEP"}};
    EXPECT_EQ(document["scenarios"][0], first);
}

TEST_F(Scenarios, IdentifiersLeadToChannels) {
    const Json both = RunForJson({"scenarios", "site.xml", "--id", "EX1"});
    EXPECT_EQ(both["channels"], Json({{{"channel", "Design"}, {"channelContext", "Design"}},
                                      {{"channel", "Parts"}, {"channelContext", "Parts"}}}));
    Expect({"several identifiers",
            {"scenarios", "site.xml", "--id", "EX9", "EX2"},
            0,
            "CHANNEL  CONTEXT\nDesign   Design\n",
            {},
            {}});
    Expect({"repeated option",
            {"scenarios", "site.xml", "--id", "EX9", "--id", "EX2"},
            0,
            "CHANNEL  CONTEXT\nDesign   Design\n",
            {},
            {}});
}

TEST_F(Scenarios, ChannelsLeadToProfiles) {
    const Json document =
        RunForJson({"scenarios", "site.xml", "--id", "EX1", "EX2", "--channel", "Design"});
    EXPECT_EQ(document["profiles"], Json({{{"profile", "Export"}, {"scenario", "EX1"}},
                                          {{"profile", "Import"}, {"scenario", "EX2"}}}));
}

TEST_F(Scenarios, ProfilesLeadToOptions) {
    const Json document =
        RunForJson({"scenarios", "site.xml", "--channel", "Design", "--profile", "Export"});
    EXPECT_EQ(document["options"], Json({{{"optionName", "Format"}, {"optionValue", "STEP"}},
                                         {{"optionName", "Level"}, {"optionValue", ""}}}));
}

TEST_F(Scenarios, AnEmptyAnswerIsOneToo) {
    Expect({"unknown",
            {"scenarios", "site.xml", "--id", "EX9"},
            0,
            "",
            {"note: no channels found"},
            {}});
    EXPECT_EQ(RunForJson({"scenarios", "site.xml", "--id", "EX9"})["channels"], Json::array());
}

TEST_F(Scenarios, OddQueriesAreWrongUsage) {
    ExpectEach({
        {"profile alone",
         {"scenarios", "site.xml", "--profile", "Export"},
         2,
         "",
         {"--profile needs --channel", "usage: dyadctx scenarios"},
         {}},
        {"channel alone",
         {"scenarios", "site.xml", "--channel", "Design"},
         2,
         "",
         {"--channel needs --id or --profile"},
         {}},
        {"all three",
         {"scenarios", "site.xml", "--channel", "Design", "--profile", "Export", "--id", "EX1"},
         2,
         "",
         {"--profile does not go with --id"},
         {}},
    });
}

} // namespace dyadctx::test
