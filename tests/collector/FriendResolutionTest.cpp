// SPDX-License-Identifier: MIT
#include "collector/DeclaredContexts.h"
#include "collector/detail/CollectorInternals.h"
#include "context/detail/ContextAccess.h"
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>

namespace dyadctx::test {
namespace {

using Lines = std::vector<std::string>;

const std::string UnknownFriend = "Ctx.SetFriendsAndAssociated.CtxFriendNoMatchingCtx";
const std::string UnknownAssociated = "Ctx.SetFriendsAndAssociated..CtxAssocNoMatchingCtx";
const std::string Logged = "WARNING VELDyadCtxCollector::LogError Method "
                           "<VELDyadCtxCollector::SetFriendsAndAssociated> Error=<";

class FriendResolution : public testing::Test {
protected:
    static const VELDyadContext* FriendOf(const VELDyadContext& context, int pos) {
        return ContextAccess::Friends(context)[pos];
    }
    static const VELDyadContext* AssociatedOf(const VELDyadContext& context) {
        return ContextAccess::Associated(context);
    }

    KeyCatalog catalog_;
    DeclaredContexts contexts_;
};

TEST_F(FriendResolution, NoContextIsASuccessThatOnlyLogs) {
    contexts_.SetMessage("before");
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.Link(), S_OK);

    EXPECT_EQ(contexts_.Message(), "before");
    EXPECT_EQ(trace.Lines(),
              (Lines{"LOG VELDyadCtxCollector:SetFriendsAndAssociated : no Context defined"}));
}

TEST_F(FriendResolution, PlaceholdersBecomeTheDeclaredContextsOfTheirNames) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    VELDyadContext& c = contexts_.Declare("C");
    contexts_.NameFriend(a, "C");
    contexts_.NameFriend(a, "B");
    contexts_.NameAssociated(b, "C");
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.Link(), S_OK);

    EXPECT_EQ(contexts_.Message(), "");
    EXPECT_EQ(FriendOf(a, 1), &c);
    EXPECT_EQ(FriendOf(a, 2), &b);
    EXPECT_EQ(AssociatedOf(b), &c);
    EXPECT_EQ(trace.Lines(),
              (Lines{"ENTER VELDyadCtxCollector:SetFriendsAndAssociated",
                     "LOG VELDyadContext:GetFriends Ctx <A> has 2 Friends",
                     "LOG VELDyadContext:SetFriends[1]= C", "LOG VELDyadContext:SetFriends[2]= B",
                     "LOG VELDyadContext:GetFriends Ctx <B> has 0 Friends",
                     "LOG VELDyadContext:GetAssociatedContext <C>",
                     "LOG VELDyadContext:SetAssociated Name=C",
                     "LOG VELDyadContext:GetFriends Ctx <C> has 0 Friends",
                     "LEAVE VELDyadCtxCollector:SetFriendsAndAssociated"}));
}

TEST_F(FriendResolution, PlaceholdersStayOwnedByTheCollector) {
    VELDyadContext& a = contexts_.Declare("A");
    contexts_.Declare("B");
    VELDyadContext& placeholder = contexts_.NameFriend(a, "B");

    EXPECT_EQ(contexts_.Link(), S_OK);

    EXPECT_EQ(CollectorInternals::Contexts(contexts_.Collector()).Size(), 3);
    EXPECT_EQ(CollectorInternals::Contexts(contexts_.Collector()).Locate(&placeholder), 3);
}

TEST_F(FriendResolution, AContextMayBeItsOwnFriendAndAssociated) {
    VELDyadContext& a = contexts_.Declare("A");
    contexts_.NameFriend(a, "A");
    contexts_.NameAssociated(a, "A");

    EXPECT_EQ(contexts_.Link(), S_OK);

    EXPECT_EQ(FriendOf(a, 1), &a);
    EXPECT_EQ(AssociatedOf(a), &a);
}

TEST_F(FriendResolution, OfTwoNamesakesTheLowerPositionIsTaken) {
    contexts_.DeclareNull();
    VELDyadContext& first = contexts_.Declare("A");
    VELDyadContext& second = contexts_.Declare("A");
    VELDyadContext& user = contexts_.Declare("B");
    contexts_.NameFriend(user, "A");
    contexts_.NameAssociated(user, "A");
    // A link that already leads to a declared context is looked up again.
    user.AddFriend(&second);

    EXPECT_EQ(contexts_.Link(), S_OK);

    EXPECT_EQ(FriendOf(user, 1), &first);
    EXPECT_EQ(FriendOf(user, 2), &first);
    EXPECT_EQ(AssociatedOf(user), &first);
}

TEST_F(FriendResolution, NamesAreComparedExactly) {
    VELDyadContext& a = contexts_.Declare("A");
    contexts_.Declare("b");
    contexts_.NameFriend(a, "B");

    EXPECT_EQ(contexts_.Link(), E_FAIL);
    EXPECT_EQ(contexts_.Message(), UnknownFriend + "(A|B)\n");
}

TEST_F(FriendResolution, EmptySlotsAndNamesArePassedOver) {
    contexts_.Declare("");
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& nameless = contexts_.NameFriend(a, "");
    DeclaredContexts::AddNullFriend(a);
    contexts_.NameFriend(a, "A");
    VELDyadContext& associated = contexts_.NameAssociated(a, "");

    EXPECT_EQ(contexts_.Link(), S_OK);

    EXPECT_EQ(FriendOf(a, 1), &nameless);
    EXPECT_EQ(FriendOf(a, 2), nullptr);
    EXPECT_EQ(FriendOf(a, 3), &a);
    EXPECT_EQ(AssociatedOf(a), &associated);
    EXPECT_EQ(contexts_.Message(), "");
}

TEST_F(FriendResolution, TypesAndTheEnvironmentPlayNoPart) {
    VELDyadContext& a = contexts_.Declare("A", "p", "Odd");
    VELDyadContext& b = contexts_.Declare("B", "p", "File");
    contexts_.NameAssociated(a, "B");

    EXPECT_EQ(contexts_.Link(), S_OK);
    EXPECT_EQ(AssociatedOf(a), &b);
}

TEST_F(FriendResolution, AnUnknownFriendIsReportedThenTracedAndEndsTheFriendsOfItsContext) {
    VELDyadContext& a = contexts_.Declare("A");
    contexts_.NameFriend(a, "A");
    contexts_.NameFriend(a, "X");
    VELDyadContext& later = contexts_.NameFriend(a, "A");
    contexts_.NameFriend(a, "Y");
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.Link(), E_FAIL);

    EXPECT_EQ(contexts_.Message(), UnknownFriend + "(A|X)\n");
    EXPECT_EQ(FriendOf(a, 1), &a);
    EXPECT_EQ(FriendOf(a, 3), &later);
    EXPECT_EQ(trace.Lines(),
              (Lines{"ENTER VELDyadCtxCollector:SetFriendsAndAssociated",
                     "LOG VELDyadContext:GetFriends Ctx <A> has 4 Friends",
                     "LOG VELDyadContext:SetFriends[1]= A", Logged + UnknownFriend + "(A|X)\n>",
                     "ERROR VELDyadCtxCollector::SetFriendsAndAssociated : Context number=1, "
                     "friend number=2 Context not defined",
                     "LEAVE VELDyadCtxCollector:SetFriendsAndAssociated"}));
}

TEST_F(FriendResolution, UnknownFriendsAreReportedUpToTheFirstContextWithAnAssociatedOne) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    VELDyadContext& c = contexts_.Declare("C");
    VELDyadContext& d = contexts_.Declare("D");
    contexts_.NameFriend(a, "X");
    contexts_.NameFriend(b, "Y");
    contexts_.NameAssociated(c, "A");
    contexts_.NameFriend(d, "Z");

    EXPECT_EQ(contexts_.Link(), E_FAIL);

    EXPECT_EQ(contexts_.Message(), UnknownFriend + "(A|X)\n" + UnknownFriend + "(B|Y)\n");
    EXPECT_EQ(AssociatedOf(c), &a);
}

TEST_F(FriendResolution, WithoutAssociatedContextsEveryContextReportsItsFirstUnknownFriend) {
    for (const char* name : {"A", "B", "C"}) {
        VELDyadContext& context = contexts_.Declare(name);
        contexts_.NameFriend(context, std::string("X") + name);
        contexts_.NameFriend(context, std::string("Y") + name);
    }

    EXPECT_EQ(contexts_.Link(), E_FAIL);
    EXPECT_EQ(contexts_.Message(),
              UnknownFriend + "(A|XA)\n" + UnknownFriend + "(B|XB)\n" + UnknownFriend + "(C|XC)\n");
}

TEST_F(FriendResolution, ANamelessAssociatedContextDoesNotEndTheWalk) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    contexts_.NameFriend(a, "X");
    contexts_.NameAssociated(a, "");
    contexts_.NameFriend(b, "Y");

    EXPECT_EQ(contexts_.Link(), E_FAIL);
    EXPECT_EQ(contexts_.Message(), UnknownFriend + "(A|X)\n" + UnknownFriend + "(B|Y)\n");
}

TEST_F(FriendResolution, TheAssociatedContextIsResolvedAfterAnUnknownFriend) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    contexts_.NameFriend(a, "X");
    contexts_.NameAssociated(a, "B");
    contexts_.NameFriend(b, "Y");
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.Link(), E_FAIL);

    EXPECT_EQ(contexts_.Message(), UnknownFriend + "(A|X)\n");
    EXPECT_EQ(AssociatedOf(a), &b);
    EXPECT_EQ(trace.Lines().back(), "LEAVE VELDyadCtxCollector:SetFriendsAndAssociated");
}

TEST_F(FriendResolution, AnEmptyPositionEndsTheWalkAfterAnUnknownFriend) {
    VELDyadContext& a = contexts_.Declare("A");
    contexts_.DeclareNull();
    VELDyadContext& b = contexts_.Declare("B");
    contexts_.NameFriend(a, "X");
    contexts_.NameFriend(b, "Y");

    EXPECT_EQ(contexts_.Link(), E_FAIL);
    EXPECT_EQ(contexts_.Message(), UnknownFriend + "(A|X)\n");
}

TEST_F(FriendResolution, AnEmptyPositionAloneChangesNothing) {
    contexts_.DeclareNull();
    VELDyadContext& a = contexts_.Declare("A");
    contexts_.NameFriend(a, "A");

    EXPECT_EQ(contexts_.Link(), S_OK);
    EXPECT_EQ(FriendOf(a, 1), &a);
}

TEST_F(FriendResolution, AnUnknownAssociatedContextEndsTheWalkAtOnce) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    contexts_.NameFriend(a, "X");
    contexts_.NameAssociated(a, "Y");
    contexts_.NameFriend(b, "Z");
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.Link(), E_FAIL);

    const std::string first = UnknownFriend + "(A|X)\n";
    const std::string second = first + UnknownAssociated + "(A|Y)\n";
    EXPECT_EQ(contexts_.Message(), second);
    EXPECT_EQ(trace.Lines(),
              (Lines{"ENTER VELDyadCtxCollector:SetFriendsAndAssociated",
                     "LOG VELDyadContext:GetFriends Ctx <A> has 1 Friends", Logged + first + ">",
                     "ERROR VELDyadCtxCollector::SetFriendsAndAssociated : Context number=1, "
                     "friend number=1 Context not defined",
                     "LOG VELDyadContext:GetAssociatedContext <Y>", Logged + second + ">",
                     "ERROR VELDyadCtxCollector::SetFriendsAndAssociated : Context number=1, "
                     "associated =Y Context not defined",
                     "LEAVE VELDyadCtxCollector:SetFriendsAndAssociated"}));
}

TEST_F(FriendResolution, FriendsOfAContextWithoutFriendsAreNotThoseOfTheOneBefore) {
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B");
    contexts_.NameFriend(a, "B");

    EXPECT_EQ(contexts_.Link(), S_OK);
    EXPECT_EQ(FriendsOf(b), std::vector<std::string>());
}

TEST_F(FriendResolution, AViewBoundsTheWalkButNotTheNames) {
    const DbEnvironment environment(true);
    VELDyadContext& a = contexts_.Declare("A");
    VELDyadContext& b = contexts_.Declare("B", "f", "File");
    contexts_.NameFriend(a, "B");
    contexts_.NameFriend(b, "X");
    contexts_.Collector().SetCtxTypeList();
    contexts_.Collector().SetContextPathType();

    EXPECT_EQ(contexts_.Link(), S_OK);
    EXPECT_EQ(FriendOf(a, 1), &b);
    EXPECT_EQ(contexts_.Message(), "");
}

TEST_F(FriendResolution, ManyUnknownFriendsGiveAMessageEach) {
    std::string expected;
    for (int i = 0; i < 2000; ++i) {
        const std::string name = "Context" + std::to_string(i);
        contexts_.NameFriend(contexts_.Declare(name), "Nobody");
        expected += UnknownFriend + "(" + name + "|Nobody)\n";
    }

    EXPECT_EQ(contexts_.Link(), E_FAIL);
    EXPECT_EQ(contexts_.Message(), expected);
}

} // namespace
} // namespace dyadctx::test
