// SPDX-License-Identifier: MIT
// The trace of reading: every line, in order, and no others.
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"
#include "support/TemporaryFolder.h"
#include "xml/ReaderSupport.h"
#include "xml/detail/VELDyadCtxXml.h"

#include "collector/detail/CollectorAccess.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;

// The lines of the reader alone; those of contexts and collector are tested with these.
Lines TraceOf(const std::string& document, bool environment) {
    const DbEnvironment db(environment);
    const KeyCatalog catalog;
    const TemporaryFolder folder;
    const std::string file = folder.Write("contexts.xml", document);
    const std::unique_ptr<VELDyadCtxCollector> collector(
        CollectorAccess::New(VELUnicodeString(file.c_str()), 0));
    VELUnicodeString message;
    const RecordingTrace trace;
    VELDyadCtxXml(collector.get()).Unstream(message);
    return trace.LinesWith("VELDyadCtxXml:");
}

Lines Joined(std::initializer_list<Lines> parts) {
    Lines all;
    for (const Lines& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

// A pass that finds nothing.
Lines EmptyPass(const std::string& tag, int nodes, const std::string& leave) {
    return {"ENTER VELDyadCtxXml:ParseXMLNodes <" + tag + ">",
            "ENTER VELDyadCtxXml:GetNodeListByTagName <" + tag + ">",
            "LOG VELDyadCtxXml:GetNodeListByTagName - oNbNodes=" + std::to_string(nodes),
            "WARNING VELDyadCtxXml:GetNodeListByTagName - Null TagYes",
            "LEAVE VELDyadCtxXml:GetNodeListByTagName <" + tag + "> find 0 Nodes",
            "LEAVE VELDyadCtxXml:ParseXMLNodes" + leave};
}

Lines PassBegin(const std::string& tag, int nodes) {
    const std::string count = std::to_string(nodes);
    return {"ENTER VELDyadCtxXml:ParseXMLNodes <" + tag + ">",
            "ENTER VELDyadCtxXml:GetNodeListByTagName <" + tag + ">",
            "LOG VELDyadCtxXml:GetNodeListByTagName - oNbNodes=" + count,
            "LEAVE VELDyadCtxXml:GetNodeListByTagName <" + tag + "> find " + count + " Nodes"};
}

Lines NoScenarios(const std::string& name, int nodes) {
    return {"ENTER VELDyadCtxXml:ParseXMLExchangeScenarioNodes <Scenario> for Context <" + name +
                ">",
            "LOG VELDyadCtxXml:ParseXMLExchangeScenarioNodes find " + std::to_string(nodes) +
                " nodes under <Scenario>",
            "LEAVE VELDyadCtxXml:ParseXMLExchangeScenarioNodes <0> Options"};
}

const Lines Begin{"ENTER VELDyadCtxXml:Unstream"};
const Lines End{"LEAVE VELDyadCtxXml:Unstream"};
const Lines Add{"LOG VELDyadCtxXml:AddContext"};
const std::string NoFriendContext = " - no Friend context";

Lines LogErrorLine(const std::string& method, const std::string& text) {
    return {"WARNING VELDyadCtxXml:LogError Method <VELDyadCtxXml::" + method + "> Error <" + text +
            "\n>"};
}

} // namespace

TEST(ReaderTrace, OneContextWithoutEnvironment) {
    EXPECT_EQ(TraceOf(DocumentWith(Path("A")), false),
              Joined({Begin,
                      PassBegin("CtxData", 1),
                      Add,
                      EmptyPass("CtxFriends", 0, ""),
                      NoScenarios("A", 0),
                      {"LEAVE VELDyadCtxXml:ParseXMLNodes <CtxData>"},
                      End}));
}

TEST(ReaderTrace, OneContextWithEnvironment) {
    EXPECT_EQ(TraceOf(DocumentWith(Path("A")), true),
              Joined({Begin,
                      PassBegin("CtxData", 1),
                      Add,
                      EmptyPass("CtxAssociated", 0, NoFriendContext),
                      EmptyPass("CtxFriends", 0, NoFriendContext),
                      NoScenarios("A", 0),
                      {"LEAVE VELDyadCtxXml:ParseXMLNodes <CtxData>"},
                      End}));
}

TEST(ReaderTrace, DatabaseContextComposesTheKeyOfItsSite) {
    EXPECT_EQ(TraceOf(DocumentWith(Database("V", "KRL", "s", "r")), true),
              Joined({Begin,
                      PassBegin("CtxData", 1),
                      Add,
                      {"LOG VELDyadCtxXml:GetServerdetailsForHashTable"},
                      EmptyPass("CtxAssociated", 0, NoFriendContext),
                      EmptyPass("CtxFriends", 0, NoFriendContext),
                      NoScenarios("V", 0),
                      {"LEAVE VELDyadCtxXml:ParseXMLNodes <CtxData>"},
                      End}));
}

TEST(ReaderTrace, FriendsAndAssociatedWithEnvironment) {
    const std::string contexts = Path("A", Associated(Named("B")) + Friends(Named("C")));
    EXPECT_EQ(TraceOf(DocumentWith(contexts), true),
              Joined({Begin,
                      PassBegin("CtxData", 1),
                      Add,
                      // The associated pass of A, which passes CtxFriends over.
                      PassBegin("CtxAssociated", 2),
                      PassBegin("CtxAssociated", 1),
                      Add,
                      EmptyPass("CtxAssociated", 0, NoFriendContext),
                      EmptyPass("CtxFriends", 0, NoFriendContext),
                      NoScenarios("B", 0),
                      {"LEAVE VELDyadCtxXml:ParseXMLNodes <CtxAssociated>",
                       "LEAVE VELDyadCtxXml:ParseXMLNodes <CtxAssociated>"},
                      // Its friend pass.
                      PassBegin("CtxFriends", 2),
                      PassBegin("CtxFriends", 1),
                      Add,
                      EmptyPass("CtxAssociated", 0, NoFriendContext),
                      EmptyPass("CtxFriends", 0, NoFriendContext),
                      NoScenarios("C", 0),
                      {"LEAVE VELDyadCtxXml:ParseXMLNodes <CtxFriends>",
                       "LEAVE VELDyadCtxXml:ParseXMLNodes <CtxFriends>"},
                      NoScenarios("A", 2),
                      {"LEAVE VELDyadCtxXml:ParseXMLNodes <CtxData>"},
                      End}));
}

TEST(ReaderTrace, ScenariosAndOptions) {
    const std::string scenario =
        Scenario("\n" + ScenarioId("I", "p", Option("x", "1") + Option("y", "")));
    EXPECT_EQ(
        TraceOf(DocumentWith(Path("A", scenario)), false),
        Joined({Begin,
                PassBegin("CtxData", 1),
                Add,
                EmptyPass("CtxFriends", 1, ""),
                {"ENTER VELDyadCtxXml:ParseXMLExchangeScenarioNodes <Scenario> for Context <A>",
                 "LOG VELDyadCtxXml:ParseXMLExchangeScenarioNodes find 1 nodes under <Scenario>",
                 "ENTER VELDyadCtxXml:ParseXMLExchangeScenarioNodes <ScenarioID> for Context <A>",
                 "LOG VELDyadCtxXml:ParseXMLExchangeScenarioNodes find 2 nodes under <ScenarioID>",
                 "LOG VELDyadCtxXml:ParseXMLExchangeScenarioNodes of ScenarioID Ident=<I> and "
                 "name=<p>",
                 "ENTER VELDyadCtxXml:ParseXMLExchangeScenarioNodes <Option> for Context <A>",
                 "LOG VELDyadCtxXml:ParseXMLExchangeScenarioNodes find 2 nodes under <Option>",
                 "LOG VELDyadCtxXml:ParseXMLExchangeScenarioNodes of Option name=<x> and value=<1>",
                 "LOG VELDyadCtxXml:ParseXMLExchangeScenarioNodes of Option name=<y> and value=<>",
                 "LEAVE VELDyadCtxXml:ParseXMLExchangeScenarioNodes <2> Options",
                 "LEAVE VELDyadCtxXml:ParseXMLExchangeScenarioNodes <0> Options",
                 "LEAVE VELDyadCtxXml:ParseXMLExchangeScenarioNodes <0> Options",
                 "LEAVE VELDyadCtxXml:ParseXMLNodes <CtxData>"},
                End}));
}

TEST(ReaderTrace, RowsFollowTheEndOfTheirScenario) {
    const std::string file = DocumentWith(Path("A", ScenarioId("I", "p", Option("x", "1"))));
    const TemporaryFolder folder;
    const std::unique_ptr<VELDyadCtxCollector> collector(
        CollectorAccess::New(VELUnicodeString(folder.Write("contexts.xml", file).c_str()), 0));
    VELUnicodeString message;
    const RecordingTrace trace;
    VELDyadCtxXml(collector.get()).Unstream(message);
    Lines lines = trace.LinesWith("Scenario");
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ((Lines{lines.end() - 3, lines.end()}),
              (Lines{"LEAVE VELDyadCtxXml:ParseXMLExchangeScenarioNodes <1> Options",
                     "LOG VELDyadCtxCollector:AddScenario n 1 with UK <A|I|p|x|1>",
                     "LEAVE VELDyadCtxXml:ParseXMLExchangeScenarioNodes <0> Options"}));
}

TEST(ReaderTrace, OptionWithoutNameIsReportedByEveryPassRoundIt) {
    const std::string scenario = Scenario(" " + ScenarioId("I", "p", "  <Option value='1'/>"));
    const Lines lines = TraceOf(DocumentWith(Path("A", Friends("") + scenario)), false);
    ASSERT_GE(lines.size(), 6U);
    EXPECT_EQ(
        (Lines{lines.end() - 6, lines.end()}),
        (Lines{"LOG VELDyadCtxXml:ParseXMLExchangeScenarioNodes of Option name=<> and value=<1>",
               "ERROR VELDyadCtxXml:ParseXMLExchangeScenarioNodes : scenario parsing problem, node "
               "index=1",
               "ERROR VELDyadCtxXml:ParseXMLNodes : scenarioID parsing problem, node index=1",
               "ERROR VELDyadCtxXml:ParseXMLExchangeScenarioNodes : scenario parsing problem, node "
               "index=1",
               "ERROR VELDyadCtxXml:ParseXMLNodes : scenario parsing problem, node index=0",
               "LEAVE VELDyadCtxXml:Unstream"}));
}

TEST(ReaderTrace, SyntaxErrorLeavesNothing) {
    EXPECT_EQ(TraceOf("<DyAdDescription>", true),
              Joined({Begin, LogErrorLine("Unstream", "Ctx.Parse.XMLSyntaxError()")}));
}

TEST(ReaderTrace, WrongRootLeavesNothing) {
    EXPECT_EQ(TraceOf("<other/>", true),
              Joined({Begin, LogErrorLine("Unstream", "Ctx.Parse.NotAValidTag(other)")}));
}

TEST(ReaderTrace, MissingOrRepeatedDataIsNotFound) {
    for (const bool environment : {false, true}) {
        for (const std::string inner : {"", "<CtxData/><CtxData/>"}) {
            EXPECT_EQ(TraceOf("<DyAdDescription>" + inner + "</DyAdDescription>", environment),
                      Joined({Begin,
                              {"ENTER VELDyadCtxXml:ParseXMLNodes <CtxData>",
                               "ENTER VELDyadCtxXml:GetNodeListByTagName <CtxData>",
                               "WARNING VELDyadCtxXml:GetNodeListByTagName - spNodeElements issue",
                               "ERROR VELDyadCtxXml:GetNodeListByTagName <CtxData> find 0 Nodes"},
                              LogErrorLine("ParseXMLNodes", "Ctx.Parse.TagNotFound(CtxData)"),
                              {std::string("ERROR VELDyadCtxXml:ParseXMLNodes <CtxData> not found "
                                           "- Case0") +
                               (environment ? "1" : "2")},
                              End}));
        }
    }
}

TEST(ReaderTrace, EmptyDataIsNotFoundAfterALeave) {
    EXPECT_EQ(TraceOf("<DyAdDescription><CtxData/></DyAdDescription>", false),
              Joined({Begin,
                      PassBegin("CtxData", 0),
                      LogErrorLine("ParseXMLNodes", "Ctx.Parse.TagNotFound(CtxData)"),
                      {"ERROR VELDyadCtxXml:ParseXMLNodes <CtxData> not found - Case02"},
                      End}));
}

TEST(ReaderTrace, ContextThatCannotBeAddedIsCountedAmongAllNodes) {
    EXPECT_EQ(TraceOf(DocumentWith(" <Other/><!-- --><Context/>"), false),
              Joined({Begin,
                      PassBegin("CtxData", 4),
                      Add,
                      LogErrorLine("GetXMLValuesContext", "Ctx.Parse.CtxNoName()"),
                      {"ERROR VELDyadCtxXml:ParseXMLNodes: Add Context problem, node index=3"},
                      End}));
}

TEST(ReaderTrace, FailureBelowFriendsIsReportedByEveryPassRoundIt) {
    const Lines lines = TraceOf(DocumentWith(Path("A", " " + Friends("  <Context/>"))), false);
    EXPECT_EQ((Lines{lines.end() - 5, lines.end()}),
              Joined({LogErrorLine("GetXMLValuesContext", "Ctx.Parse.CtxFriendNoName(A)"),
                      {"ERROR VELDyadCtxXml:ParseXMLNodes: Add Context problem, node index=1",
                       "ERROR VELDyadCtxXml:ParseXMLNodes : friends parsing problem, node index=1",
                       "ERROR VELDyadCtxXml:ParseXMLNodes : friends parsing problem, node index=0"},
                      End}));
}

TEST(ReaderTrace, FailureBelowAssociatedIsAWarningOfItsContainerAndAnErrorOfItsContext) {
    const Lines lines = TraceOf(DocumentWith(Path("A", " " + Associated("<Context/>"))), true);
    EXPECT_EQ(
        (Lines{lines.end() - 5, lines.end()}),
        Joined({LogErrorLine("GetXMLValuesContext", "Ctx.Parse.CtxAssocNoName(A)"),
                {"ERROR VELDyadCtxXml:ParseXMLNodes: Add Context problem, node index=0",
                 "WARNING VELDyadCtxXml:ParseXMLNodes : associated context parsing problem, node "
                 "index=1",
                 "ERROR VELDyadCtxXml:ParseXMLNodes : Associated context parsing problem, node "
                 "index=0"},
                End}));
}

TEST(ReaderTrace, AssociatedDirectlyInTheDataIsAWarning) {
    EXPECT_EQ(TraceOf(DocumentWith(Associated("")), true),
              Joined({Begin,
                      PassBegin("CtxData", 1),
                      {"WARNING VELDyadCtxXml:ParseXMLNodes : Non supported RootTagName <CtxData> "
                       "for CtxAssociated"},
                      LogErrorLine("ParseXMLNodes", "Ctx.Parse.NoCtxDefinedForAssociated()"),
                      End}));
}

TEST(ReaderTrace, FriendsDirectlyInTheDataAreAnError) {
    EXPECT_EQ(TraceOf(DocumentWith(Friends("")), true),
              Joined({Begin,
                      PassBegin("CtxData", 1),
                      LogErrorLine("ParseXMLNodes", "Ctx.Parse.NoCtxDefinedForFriend()"),
                      {"ERROR VELDyadCtxXml:ParseXMLNodes <CtxData>"},
                      End}));
}

TEST(ReaderTrace, FriendsOfAFriendAreAnErrorOfTheirPass) {
    const Lines lines = TraceOf(DocumentWith(Path("A", Friends(Named("B", Friends(""))))), false);
    EXPECT_EQ((Lines{lines.end() - 6, lines.end()}),
              Joined({LogErrorLine("ParseXMLNodes", "Ctx.Parse.CtxFriendWithFriend()"),
                      {"ERROR VELDyadCtxXml:ParseXMLNodes <CtxFriends>",
                       "ERROR VELDyadCtxXml:ParseXMLNodes : friends parsing problem, node index=0",
                       "ERROR VELDyadCtxXml:ParseXMLNodes : friends parsing problem, node index=0",
                       "ERROR VELDyadCtxXml:ParseXMLNodes : friends parsing problem, node index=0"},
                      End}));
}

TEST(ReaderTrace, OwnerThatIsMissingIsAnInternalError) {
    const Lines lines =
        TraceOf(DocumentWith(Database("V", "KRL", "s", "r", Friends(Named("X")))), false);
    EXPECT_EQ((Lines{lines.end() - 6, lines.end()}),
              Joined({Add,
                      LogErrorLine("AddContext", "Ctx.Collector.InternalError()"),
                      {"ERROR VELDyadCtxXml:ParseXMLNodes: Add Context problem, node index=0",
                       "ERROR VELDyadCtxXml:ParseXMLNodes : friends parsing problem, node index=0",
                       "ERROR VELDyadCtxXml:ParseXMLNodes : friends parsing problem, node index=0"},
                      End}));
}

TEST(ReaderTrace, NamesAreNeverFormats) {
    const Lines lines = TraceOf(DocumentWith(Path("%s%n%d")), false);
    EXPECT_NE(std::find(lines.begin(), lines.end(),
                        "ENTER VELDyadCtxXml:ParseXMLExchangeScenarioNodes <Scenario> for Context "
                        "<%s%n%d>"),
              lines.end());
}

TEST(ReaderTrace, WalkIsTheSameWithAndWithoutTrace) {
    const std::string document = DocumentWith(
        Path("A", Friends(Named("B")) + ScenarioId("I", "p")) + Path("B", Path("A")) +
        Database("V", "KRL", "s", "r", Associated(Named("A"))) + Database("V", "KRL", "t", "r"));
    const DbEnvironment db(true);
    const Reading quiet = ReadText(document);
    const RecordingTrace trace;
    const Reading traced = ReadText(document);
    EXPECT_EQ(traced.result, quiet.result);
    EXPECT_EQ(AllOf(traced), AllOf(quiet));
    EXPECT_EQ(RowsOf(traced), RowsOf(quiet));
    EXPECT_FALSE(trace.Lines().empty());
}

} // namespace dyadctx::test
