// SPDX-License-Identifier: MIT
// The rows the reader makes of scenario elements.
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "xml/ReaderSupport.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Rows = std::vector<std::string>;

Rows RowsWithin(const std::string& inner) {
    const Reading reading = ReadContexts(Path("A", inner));
    EXPECT_EQ(reading.result, S_OK);
    return RowsOf(reading);
}

} // namespace

TEST(ReaderScenarios, EveryOptionIsARow) {
    EXPECT_EQ(RowsWithin(Scenario(ScenarioId("I", "p", Option("x", "1") + Option("y", "")))),
              (Rows{"A|A|p|I|x|1", "A|A|p|I|y|"}));
}

TEST(ReaderScenarios, ScenarioWithoutOptionIsOneRow) {
    EXPECT_EQ(RowsWithin(Scenario(ScenarioId("I", "p"))), Rows{"A|A|p|I||"});
}

TEST(ReaderScenarios, OptionWithEmptyNameIsARowWithItsValue) {
    EXPECT_EQ(RowsWithin(ScenarioId("I", "p", Option("", "1"))), Rows{"A|A|p|I||1"});
}

TEST(ReaderScenarios, MissingAttributesAreEmpty) {
    EXPECT_EQ(RowsWithin("<ScenarioID><Option name='x'/></ScenarioID>"), Rows{"A|A|||x|"});
    EXPECT_EQ(RowsWithin("<ScenarioID ident='I' Name='p'/>"), Rows{"A|A||||"});
}

TEST(ReaderScenarios, AreKnownByTheirOwnNamesWhateverTheirParent) {
    EXPECT_EQ(RowsWithin(ScenarioId("I", "p")), Rows{"A|A|p|I||"});
    EXPECT_EQ(RowsWithin(Scenario(Scenario(ScenarioId("I", "p")))), Rows{"A|A|p|I||"});
    EXPECT_EQ(RowsWithin(ScenarioId("I", "p", ScenarioId("J", "q"))),
              (Rows{"A|A|q|J||", "A|A|p|I||"}));
    EXPECT_EQ(RowsWithin("<Other>" + ScenarioId("I", "p") + "</Other>"), Rows());
    EXPECT_EQ(RowsWithin("<scenario>" + ScenarioId("I", "p") + "</scenario>"), Rows());
}

TEST(ReaderScenarios, RowsOfANestedScenarioComeBeforeThoseRoundIt) {
    const std::string inner = Scenario(Option("z", "9") + ScenarioId("I2", "p2", Option("b", "2")));
    EXPECT_EQ(
        RowsWithin(Scenario(ScenarioId("I1", "p1", Option("a", "1") + inner + Option("c", "3")))),
        (Rows{"A|A|p2|I2|b|2", "A|A|p1|I1|a|1", "A|A|p1|I1|c|3"}));
    EXPECT_EQ(RowsWithin(Scenario(ScenarioId("I1", "p1", inner))),
              (Rows{"A|A|p2|I2|b|2", "A|A|p1|I1||"}));
}

TEST(ReaderScenarios, OptionOutsideAScenarioHasNoEffect) {
    EXPECT_EQ(RowsWithin(Option("x", "1") + Scenario(Option("y", "2"))), Rows());
}

TEST(ReaderScenarios, OptionWithoutNameEndsReadingWithoutMessage) {
    const KeyCatalog catalog;
    const std::string unnamed = "<Option value='1'/>";
    for (const std::string& inner : {unnamed, Scenario(unnamed), ScenarioId("J", "q", unnamed),
                                     Scenario(ScenarioId("J", "q", Option("x", "1") + unnamed)),
                                     Friends(Named("B", unnamed))}) {
        SCOPED_TRACE(inner);
        const Reading reading = ReadContexts(Path("A", ScenarioId("I", "p") + inner));
        EXPECT_EQ(reading.result, E_FAIL);
        EXPECT_EQ(reading.message, "");
        // Rows that were complete before stay.
        EXPECT_EQ(RowsOf(reading),
                  inner == Friends(Named("B", unnamed)) ? Rows() : Rows{"A|A|p|I||"});
    }
}

TEST(ReaderScenarios, ScenariosOfFriendsAreTheirOwnAndComeFirst) {
    const std::string contexts =
        Path("A", ScenarioId("I1", "p1") + Friends(Named("B", ScenarioId("I2", "p2")))) + Path("B");
    for (const bool environment : {false, true}) {
        const DbEnvironment db(environment);
        EXPECT_EQ(RowsOf(ReadContexts(contexts)), (Rows{"B|B|p2|I2||", "A|A|p1|I1||"}));
    }
}

TEST(ReaderScenarios, ScenariosOfAssociatedContextsNeedTheEnvironment) {
    const std::string contexts = Path("A", Associated(Named("B", ScenarioId("I", "p"))));
    EXPECT_EQ(RowsOf(ReadContexts(contexts)), Rows());
    const DbEnvironment db(true);
    EXPECT_EQ(RowsOf(ReadContexts(contexts)), Rows{"B|B|p|I||"});
}

TEST(ReaderScenarios, AContextReadInTwoRolesAddsItsRowsTwice) {
    const std::string contexts = Path("A", Path("B", ScenarioId("I", "p")));
    EXPECT_EQ(RowsOf(ReadContexts(contexts)), Rows{"B|B|p|I||"});
    const DbEnvironment db(true);
    EXPECT_EQ(RowsOf(ReadContexts(contexts)), (Rows{"B|B|p|I||", "B|B|p|I||"}));
}

TEST(ReaderScenarios, DroppedContextKeepsItsRows) {
    const Reading reading =
        ReadContexts(Path("A") + Database("V", "KRL", "s", "r", ScenarioId("I", "p")));
    EXPECT_EQ(DeclaredOf(reading), Rows{"A"});
    EXPECT_EQ(RowsOf(reading), Rows{"V|V|p|I||"});
}

TEST(ReaderScenarios, RepeatedScenariosAreRepeatedRows) {
    EXPECT_EQ(RowsWithin(ScenarioId("I", "p") + ScenarioId("I", "p")),
              (Rows{"A|A|p|I||", "A|A|p|I||"}));
}

} // namespace dyadctx::test
