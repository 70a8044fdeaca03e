// SPDX-License-Identifier: MIT
#include "collector/DeclaredContexts.h"
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>

namespace dyadctx::test {
namespace {

using Lines = std::vector<std::string>;

class ValidationLinks : public testing::Test {
protected:
    KeyCatalog catalog_;
    DeclaredContexts contexts_;
};

// ---- Friends --------------------------------------------------------------------------------

TEST_F(ValidationLinks, AFriendThatHasTheContextAsFriendIsACycle) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    a.AddFriend(&b);
    b.AddFriend(&a);

    EXPECT_EQ(contexts_.CheckOne(a, 1), 0);
    EXPECT_EQ(contexts_.CheckOne(b, 2), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAndFriendWithCyclicity(A|B)\n"
                                   "Ctx.Check.CtxAndFriendWithCyclicity(B|A)\n");
}

TEST_F(ValidationLinks, ARingOfThreeIsAccepted) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    VELDyadContext& c = contexts_.Declare("C");
    a.AddFriend(&b);
    b.AddFriend(&c);
    c.AddFriend(&a);

    EXPECT_EQ(contexts_.Check(), S_OK);
    EXPECT_EQ(contexts_.Message(), "");
}

TEST_F(ValidationLinks, AContextThatIsItsOwnFriendBreaksBothRules) {
    VELDyadContext& a = contexts_.Declare("A");
    a.AddFriend(&a);

    EXPECT_EQ(contexts_.CheckOne(a, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAndFriendWithSameName(A|A)\n"
                                   "Ctx.Check.CtxAndFriendWithCyclicity(A|A)\n");
}

TEST_F(ValidationLinks, EachEntryOfAFriendsListThatNamesTheContextIsAMessage) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    a.AddFriend(&b);
    b.AddFriend(&a);
    DeclaredContexts::AddNullFriend(b);
    b.AddFriend(&b);
    contexts_.NameFriend(b, "A");

    EXPECT_EQ(contexts_.CheckOne(a, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAndFriendWithCyclicity(A|B)\n"
                                   "Ctx.Check.CtxAndFriendWithCyclicity(A|B)\n");
}

TEST_F(ValidationLinks, EachEntryOfALongListThatNamesTheContextIsAMessage) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& hub = contexts_.Declare("Hub");
    a.AddFriend(&hub);
    for (int i = 0; i < 40; ++i) {
        hub.AddFriend(i % 20 == 7 ? &a : &hub);
        contexts_.NameFriend(hub, i % 2 == 0 ? "" : "Z");
    }
    DeclaredContexts::AddNullFriend(hub);

    EXPECT_EQ(contexts_.CheckOne(a, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAndFriendWithCyclicity(A|Hub)\n"
                                   "Ctx.Check.CtxAndFriendWithCyclicity(A|Hub)\n");
}

TEST_F(ValidationLinks, AFriendThatComesTwiceIsLookedAtTwice) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    a.AddFriend(&b);
    a.AddFriend(&b);
    b.AddFriend(&a);

    EXPECT_EQ(contexts_.CheckOne(a, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAndFriendWithCyclicity(A|B)\n"
                                   "Ctx.Check.CtxAndFriendWithCyclicity(A|B)\n");
}

TEST_F(ValidationLinks, FriendsAreComparedByName) {
    VELDyadContext& a = contexts_.Declare("A");
    contexts_.NameFriend(a, "A");
    VELDyadContext& b = contexts_.NameFriend(a, "B");
    contexts_.NameFriend(b, "A");

    EXPECT_EQ(contexts_.CheckOne(a, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAndFriendWithSameName(A|A)\n"
                                   "Ctx.Check.CtxAndFriendWithCyclicity(A|B)\n");
}

TEST_F(ValidationLinks, AFriendWithoutFriendsAfterOneWithThemIsNoCycle) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    VELDyadContext& c = contexts_.Declare("C");
    a.AddFriend(&b);
    a.AddFriend(&c);
    b.AddFriend(&a);

    EXPECT_EQ(contexts_.CheckOne(a, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAndFriendWithCyclicity(A|B)\n");
}

TEST_F(ValidationLinks, AFriendWithoutNameIsReportedUnderTheContextAndLookedAtFurther) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& nameless = contexts_.NameFriend(a, "");
    contexts_.NameFriend(nameless, "A");

    EXPECT_EQ(contexts_.CheckOne(a, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Parse.CtxFriendNoName(A)\n"
                                   "Ctx.Check.CtxAndFriendWithCyclicity(A|)\n");
}

TEST_F(ValidationLinks, NamelessContextAndFriendHaveTheSameNameButNoCycle) {
    VELDyadContext& nameless = contexts_.Declare("");
    nameless.AddFriend(&nameless);

    EXPECT_EQ(contexts_.CheckOne(nameless, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxEmptyName()\n"
                                   "Ctx.Parse.CtxFriendNoName()\n"
                                   "Ctx.Check.CtxAndFriendWithSameName(|)\n");
}

TEST_F(ValidationLinks, AnEmptyFriendSlotEndsTheFriendsButNotTheRules) {
    const DbEnvironment environment(true);
    VELDyadContext& a = contexts_.Declare("A");
    contexts_.NameFriend(a, "");
    DeclaredContexts::AddNullFriend(a);
    a.AddFriend(&a);
    a.AddAssociatedContext(&a);

    EXPECT_EQ(contexts_.CheckOne(a, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Parse.CtxFriendNoName(A)\n"
                                   "Ctx.Collector.InternalError()\n"
                                   "Ctx.Check.CtxAndAssocWithSameName(A|A)\n"
                                   "Ctx.Check.CtxAndAssocWithCyclicity(A|A)\n");
}

TEST_F(ValidationLinks, EveryVisitedFriendIsTracedOnceBeforeItsCycles) {
    VELDyadContext& a = contexts_.Declare("A", "p");
    VELDyadContext& b = contexts_.Declare("B");
    VELDyadContext& c = contexts_.Declare("C");
    a.AddFriend(&b);
    a.AddFriend(&c);
    b.AddFriend(&a);
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.CheckOne(a, 1), 0);

    EXPECT_EQ(trace.Lines(),
              (Lines{"ENTER VELDyadCtxCollector:CheckContext <A>",
                     "LOG VELDyadCtxCollector:CheckContext <A> of Prov <p> of Type <Path>",
                     "LOG VELDyadContext:GetFriends Ctx <A> has 2 Friends",
                     "LOG VELDyadContext:GetFriends Ctx <B> has 1 Friends",
                     "WARNING VELDyadCtxCollector::LogError Method <VELDyadCtxCollector::Check> "
                     "Error=<Ctx.Check.CtxAndFriendWithCyclicity(A|B)\n>",
                     "LOG VELDyadContext:GetFriends Ctx <C> has 0 Friends",
                     "ERROR VELDyadCtxCollector:CheckContext <A> KO"}));
}

// ---- The associated context -------------------------------------------------------------------

struct AssociatedCase {
    const char* what;
    // The name of the associated context, and of the one it is associated with itself.
    std::string associated;
    const char* next;
    std::string message;
};

std::ostream& operator<<(std::ostream& out, const AssociatedCase& tested) {
    return out << tested.what;
}

class ValidationOfAssociated : public testing::TestWithParam<AssociatedCase> {
protected:
    // Declares "A" with the associated contexts of the case and checks it.
    int Check() {
        VELDyadContext& context = contexts_.Declare("A");
        VELDyadContext& associated = contexts_.NameAssociated(context, GetParam().associated);
        if (GetParam().next != nullptr)
            contexts_.NameAssociated(associated, GetParam().next);
        return contexts_.CheckOne(context, 1);
    }

    KeyCatalog catalog_;
    DeclaredContexts contexts_;
};

TEST_P(ValidationOfAssociated, WithinTheEnvironmentSaysWhatIsWrong) {
    const DbEnvironment environment(true);

    EXPECT_EQ(Check(), GetParam().message.empty() ? 1 : 0);
    EXPECT_EQ(contexts_.Message(), GetParam().message);
}

TEST_P(ValidationOfAssociated, OutsideTheEnvironmentLooksAtNothing) {
    const RecordingTrace trace;

    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(contexts_.Message(), "");
    EXPECT_EQ(trace.LinesWith("GetAssociatedContext"), Lines());
}

const AssociatedCase AssociatedCases[] = {
    {"another context", "B", nullptr, ""},
    {"another context with another", "B", "C", ""},
    {"a nameless context", "", nullptr, "Ctx.Parse.CtxAssocNoName(A)\n"},
    {"a nameless context that goes back", "", "A",
     "Ctx.Parse.CtxAssocNoName(A)\nCtx.Check.CtxAndAssocWithCyclicity(A|)\n"},
    {"a context of the same name", "A", nullptr, "Ctx.Check.CtxAndAssocWithSameName(A|A)\n"},
    {"a context that goes back", "B", "A", "Ctx.Check.CtxAndAssocWithCyclicity(A|B)\n"},
    {"a context that goes to a nameless one", "B", "", ""},
};

INSTANTIATE_TEST_SUITE_P(Rules, ValidationOfAssociated, testing::ValuesIn(AssociatedCases));

TEST_F(ValidationLinks, AContextAssociatedWithItselfBreaksBothRules) {
    const DbEnvironment environment(true);
    VELDyadContext& a = contexts_.Declare("A", "p");
    a.AddAssociatedContext(&a);
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.CheckOne(a, 1), 0);

    const std::string first = "Ctx.Check.CtxAndAssocWithSameName(A|A)\n";
    const std::string second = first + "Ctx.Check.CtxAndAssocWithCyclicity(A|A)\n";
    EXPECT_EQ(contexts_.Message(), second);
    const std::string logged =
        "WARNING VELDyadCtxCollector::LogError Method <VELDyadCtxCollector::Check> Error=<";
    EXPECT_EQ(trace.Lines(),
              (Lines{"ENTER VELDyadCtxCollector:CheckContext <A>",
                     "LOG VELDyadCtxCollector:CheckContext <A> of Prov <p> of Type <Path>",
                     "LOG VELDyadContext:GetFriends Ctx <A> has 0 Friends",
                     "LOG VELDyadContext:GetAssociatedContext <A>", logged + first + ">",
                     "LOG VELDyadContext:GetAssociatedContext <A>", logged + second + ">",
                     "ERROR VELDyadCtxCollector:CheckContext <A> KO"}));
}

TEST_F(ValidationLinks, NamelessContextsAssociatedWithEachOtherAreNoCycle) {
    const DbEnvironment environment(true);
    VELDyadContext& nameless = contexts_.Declare("");
    nameless.AddAssociatedContext(&nameless);

    EXPECT_EQ(contexts_.CheckOne(nameless, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxEmptyName()\n"
                                   "Ctx.Parse.CtxAssocNoName()\n"
                                   "Ctx.Check.CtxAndAssocWithSameName(|)\n");
}

} // namespace
} // namespace dyadctx::test
