// SPDX-License-Identifier: MIT
// Which contexts the reader makes of nested elements, and whose they become, in both environments.
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "xml/ReaderSupport.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Names = std::vector<std::string>;

// What reading is expected to result in.
struct Expected {
    VELResult result;
    Names all;
    Names friendsOfFirst;
    std::string associatedOfFirst;
    std::string message;
};

void ExpectReading(const std::string& contexts, bool environment, const Expected& expected) {
    SCOPED_TRACE(contexts + (environment ? " with" : " without") + " DB context environment");
    const DbEnvironment db(environment);
    const KeyCatalog catalog;

    const Reading reading = ReadContexts(contexts);

    EXPECT_EQ(reading.result, expected.result);
    EXPECT_EQ(reading.message, expected.message);
    EXPECT_EQ(AllOf(reading), expected.all);
    if (DeclaredOf(reading).empty())
        return;
    EXPECT_EQ(FriendsAt(reading, 1), expected.friendsOfFirst);
    EXPECT_EQ(AssociatedAt(reading, 1), expected.associatedOfFirst);
}

void ExpectInBoth(const std::string& contexts, const Expected& expected) {
    ExpectReading(contexts, false, expected);
    ExpectReading(contexts, true, expected);
}

} // namespace

TEST(ReaderWalk, ContextDirectlyInAContextIsFriendAndWithEnvironmentAlsoAssociated) {
    const std::string contexts = Path("A", Path("B"));
    ExpectReading(contexts, false, {S_OK, {"A", "B"}, {"B"}, "none", ""});
    ExpectReading(contexts, true, {S_OK, {"A", "B", "B"}, {"B"}, "B", ""});
}

TEST(ReaderWalk, ContextDirectlyInAContextWithoutNameIsRefusedForItsFirstRole) {
    const std::string contexts = Path("A", "<Context/>");
    ExpectReading(contexts, false, {E_FAIL, {"A"}, {}, "none", "Ctx.Parse.CtxFriendNoName(A)\n"});
    ExpectReading(contexts, true, {E_FAIL, {"A"}, {}, "none", "Ctx.Parse.CtxAssocNoName(A)\n"});
}

TEST(ReaderWalk, FriendsOfAContextDirectlyInAContextAreRefused) {
    const std::string contexts = Path("A", Path("B", Friends(Named("C"))));
    ExpectReading(contexts, false,
                  {E_FAIL, {"A", "B"}, {"B"}, "none", "Ctx.Parse.CtxFriendWithFriend()\n"});
    ExpectReading(
        contexts, true,
        {E_FAIL, {"A", "B", "C", "B"}, {"C", "B"}, "B", "Ctx.Parse.CtxFriendWithFriend()\n"});
}

TEST(ReaderWalk, AssociatedOfAContextDirectlyInAContextIsRefusedWithEnvironment) {
    const std::string contexts = Path("A", Path("B", Associated(Named("C"))));
    ExpectReading(contexts, false, {S_OK, {"A", "B"}, {"B"}, "none", ""});
    ExpectReading(contexts, true,
                  {E_FAIL, {"A", "B"}, {}, "B", "Ctx.Parse.CtxAssociatedWithAssociated()\n"});
}

TEST(ReaderWalk, ChainOfDirectlyNestedContextsIsVisitedOncePerRole) {
    const std::string contexts = Path("A", Path("B", Path("C", Path("D"))));
    const DbEnvironment db(true);

    const Reading reading = ReadContexts(contexts);

    // Below A two visits of B, four of C, eight of D: 2 + 4 + 8 objects.
    EXPECT_EQ(reading.result, S_OK);
    EXPECT_EQ(AllOf(reading).size(), 1U + 14U);
    EXPECT_EQ(DeclaredOf(reading), Names{"A"});
}

TEST(ReaderWalk, FriendsInFriendsAreFurtherFriends) {
    ExpectInBoth(Path("A", Friends(Friends(Named("B")) + Named("C"))),
                 {S_OK, {"A", "B", "C"}, {"B", "C"}, "none", ""});
}

TEST(ReaderWalk, FriendsDirectlyInAssociatedAreNotExamined) {
    const std::string contexts = Path("A", Associated(Friends(Named("B")) + Named("C")));
    ExpectReading(contexts, false, {S_OK, {"A"}, {}, "none", ""});
    ExpectReading(contexts, true, {S_OK, {"A", "C"}, {}, "C", ""});
    ExpectInBoth(Path("A", Associated(Friends(Named("B")))), {S_OK, {"A"}, {}, "none", ""});
}

TEST(ReaderWalk, AssociatedDirectlyInFriendsIsNotExamined) {
    ExpectInBoth(Path("A", Friends(Associated(Named("B")) + Named("C"))),
                 {S_OK, {"A", "C"}, {"C"}, "none", ""});
}

TEST(ReaderWalk, FriendsOfAnAssociatedContextGoToTheDeclaredContext) {
    const std::string contexts = Path("A", Associated(Named("B", Friends(Named("C")))));
    ExpectReading(contexts, false, {S_OK, {"A"}, {}, "none", ""});
    ExpectReading(contexts, true, {S_OK, {"A", "B", "C"}, {"C"}, "B", ""});
}

TEST(ReaderWalk, AssociatedOfAFriendReplacesThatOfTheDeclaredContext) {
    const std::string contexts =
        Path("A", Associated(Named("X")) + Friends(Named("B", Associated(Named("C")))));
    ExpectReading(contexts, false, {S_OK, {"A", "B"}, {"B"}, "none", ""});
    ExpectReading(contexts, true, {S_OK, {"A", "X", "B", "C"}, {"B"}, "C", ""});
}

TEST(ReaderWalk, FriendOfADroppedFirstContextHasNoOwner) {
    ExpectReading(Database("V", "KRL", "s", "r", Friends(Named("X"))) + Path("X"), false,
                  {E_FAIL, {}, {}, "none", "Ctx.Collector.InternalError()\n"});
    ExpectReading(Database("V", "KRL", "s", "r", Named("X")), false,
                  {E_FAIL, {}, {}, "none", "Ctx.Collector.InternalError()\n"});
}

TEST(ReaderWalk, OwnerIsLookedForBeforeTheNameOfAFriend) {
    ExpectReading(Database("V", "KRL", "s", "r", Friends("<Context/>")), false,
                  {E_FAIL, {}, {}, "none", "Ctx.Collector.InternalError()\n"});
}

TEST(ReaderWalk, FriendOfALaterDroppedContextGoesToTheOneDeclaredBefore) {
    ExpectReading(Path("A") + Database("V", "KRL", "s", "r", Friends(Named("X"))) + Path("X"),
                  false, {S_OK, {"A", "X", "X"}, {"X"}, "none", ""});
}

TEST(ReaderWalk, DroppedFirstContextMayHoldEmptyFriendsAndScenarios) {
    const DbEnvironment db(false);
    const Reading reading =
        ReadContexts(Database("V", "KRL", "s", "r", Friends("") + Scenario(ScenarioId("I", "p"))));
    EXPECT_EQ(reading.result, S_OK);
    EXPECT_EQ(AllOf(reading), Names());
    EXPECT_EQ(RowsOf(reading), Names{"V|V|p|I||"});
}

TEST(ReaderWalk, FriendsOfAMergedContextGoToTheLastDeclaredOne) {
    const DbEnvironment db(true);
    const Reading reading =
        ReadContexts(Database("V", "KRL", "s1", "r") + Path("P") +
                     Database("V", "KRL", "s2", "r", Friends(Named("P")) + ScenarioId("I", "p")));
    EXPECT_EQ(reading.result, S_OK);
    EXPECT_EQ(DeclaredOf(reading), (Names{"V", "P"}));
    EXPECT_EQ(AllOf(reading), (Names{"V", "P", "P"}));
    EXPECT_EQ(FriendsAt(reading, 1), Names());
    EXPECT_EQ(FriendsAt(reading, 2), Names{"P"});
    EXPECT_EQ(RowsOf(reading), Names{"V|V|p|I||"});
}

TEST(ReaderWalk, FriendsOfAMergedContextThatFollowsItsFirstGoToIt) {
    const DbEnvironment db(true);
    const Reading reading =
        ReadContexts(Database("V", "KRL", "s1", "r") +
                     Database("V", "KRL", "s2", "r", Friends(Named("P"))) + Path("P"));
    EXPECT_EQ(DeclaredOf(reading), (Names{"V", "P"}));
    EXPECT_EQ(FriendsAt(reading, 1), Names{"P"});
}

TEST(ReaderWalk, DatabaseFriendIsEnteredAsFriendWhateverIsDeclared) {
    const std::string friendOfA = Path("A", Friends(Database("V", "KRL", "s2", "r")));
    ExpectReading(friendOfA, true, {S_OK, {"A", "V"}, {"V"}, "none", ""});
    ExpectReading(friendOfA + Database("V", "KRL", "s1", "r"), true,
                  {S_OK, {"A", "V", "V"}, {"V"}, "none", ""});
    ExpectReading(friendOfA + Path("V"), true, {S_OK, {"A", "V", "V"}, {"V"}, "none", ""});
    ExpectReading(friendOfA, false, {S_OK, {"A"}, {}, "none", ""});
}

TEST(ReaderWalk, DatabaseFriendAndAssociatedNeedAConnectorWithEnvironment) {
    const std::string database = R"(<Context Name="V" ParameterType="Database"/>)";
    const std::string message = "Ctx.Parse.CtxNoConnector()\nCtx.Parse.CtxNoDatabase(V)\n";
    ExpectReading(Path("A", Friends(database)), true, {E_FAIL, {"A"}, {}, "none", message});
    ExpectReading(Path("A", Associated(database)), true, {E_FAIL, {"A"}, {}, "none", message});
    ExpectReading(Path("A", Friends(database)), false, {S_OK, {"A"}, {}, "none", ""});
}

TEST(ReaderWalk, AssociatedInAssociatedIsTransparent) {
    const std::string contexts = Path("A", Associated(Associated(Named("B")) + Named("C")));
    ExpectReading(contexts, false, {S_OK, {"A"}, {}, "none", ""});
    ExpectReading(contexts, true, {S_OK, {"A", "B", "C"}, {}, "C", ""});
}

TEST(ReaderWalk, ContextDirectlyInAFriendIsAFurtherFriend) {
    const std::string contexts = Path("A", Friends(Named("B", Named("C"))));
    ExpectReading(contexts, false, {S_OK, {"A", "B", "C"}, {"B", "C"}, "none", ""});
    ExpectReading(contexts, true, {S_OK, {"A", "B", "C", "C"}, {"B", "C"}, "C", ""});
}

TEST(ReaderWalk, ContextDirectlyInAnAssociatedOneReplacesItAndIsAFriend) {
    const std::string contexts = Path("A", Associated(Named("B", Named("C"))));
    ExpectReading(contexts, false, {S_OK, {"A"}, {}, "none", ""});
    ExpectReading(contexts, true, {S_OK, {"A", "B", "C", "C"}, {"C"}, "C", ""});
}

TEST(ReaderWalk, FriendsBesideAssociatedAreReadOnce) {
    const std::string contexts = Path("A", Friends(Named("B")) + Associated(Named("C")));
    ExpectReading(contexts, false, {S_OK, {"A", "B"}, {"B"}, "none", ""});
    ExpectReading(contexts, true, {S_OK, {"A", "C", "B"}, {"B"}, "C", ""});
}

TEST(ReaderWalk, SeveralContainersAreReadInOrder) {
    const std::string contexts =
        Path("A", Friends(Named("B")) + Associated(Named("X")) + Friends(Named("C") + Named("D")) +
                      Associated(Named("Y") + Named("Z")));
    ExpectReading(contexts, false, {S_OK, {"A", "B", "C", "D"}, {"B", "C", "D"}, "none", ""});
    ExpectReading(contexts, true,
                  {S_OK, {"A", "X", "Y", "Z", "B", "C", "D"}, {"B", "C", "D"}, "Z", ""});
}

TEST(ReaderWalk, EmptyFriendsAreRefusedUnderAFriendOnly) {
    ExpectInBoth(Path("A", Friends("")), {S_OK, {"A"}, {}, "none", ""});
    ExpectInBoth(Path("A", Friends(Named("B", Friends("")))),
                 {E_FAIL, {"A", "B"}, {"B"}, "none", "Ctx.Parse.CtxFriendWithFriend()\n"});
}

TEST(ReaderWalk, ContainersDirectlyInTheDataAreRefused) {
    ExpectInBoth(Path("A") + Friends(Named("B")),
                 {E_FAIL, {"A"}, {}, "none", "Ctx.Parse.NoCtxDefinedForFriend()\n"});
    const std::string contexts = Path("A") + Associated(Named("B"));
    ExpectReading(contexts, false, {S_OK, {"A"}, {}, "none", ""});
    ExpectReading(contexts, true,
                  {E_FAIL, {"A"}, {}, "none", "Ctx.Parse.NoCtxDefinedForAssociated()\n"});
}

TEST(ReaderWalk, AssociatedOfAnAssociatedContextIsRefusedWithEnvironment) {
    const std::string contexts = Path("A", Associated(Named("B", Associated(Named("C")))));
    ExpectReading(contexts, false, {S_OK, {"A"}, {}, "none", ""});
    ExpectReading(contexts, true,
                  {E_FAIL, {"A", "B"}, {}, "B", "Ctx.Parse.CtxAssociatedWithAssociated()\n"});
}

TEST(ReaderWalk, FriendsAndAssociatedMayAlternateWithoutLimit) {
    const std::string contexts = Path(
        "A",
        Friends(Named("B", Associated(Named("C", Friends(Named("D", Associated(Named("E")))))))));
    ExpectReading(contexts, true, {S_OK, {"A", "B", "C", "D", "E"}, {"B", "D"}, "E", ""});
}

TEST(ReaderWalk, OtherElementsTextAndCommentsAreSkippedAnywhere) {
    const std::string noise = "text<!--c--><?pi x?><![CDATA[<Context/>]]><Other><Context/></Other>";
    ExpectInBoth(noise + Path("A", noise + Friends(noise + Named("B", noise) + noise)) + noise,
                 {S_OK, {"A", "B"}, {"B"}, "none", ""});
}

TEST(ReaderWalk, NameOfAFriendWithoutNameIsReportedWithTheLastDeclaredContext) {
    ExpectReading(Path("A") + Database("V", "KRL", "s", "r", Friends("<Context Parameter=\"x\"/>")),
                  false, {E_FAIL, {"A"}, {}, "none", "Ctx.Parse.CtxFriendNoName(A)\n"});
}

} // namespace dyadctx::test
