// SPDX-License-Identifier: MIT
// What a host's code does to contexts while the library checks, asks or deletes them. Nothing that
// is gone may be touched, which the address sanitizer sees to where these tests run under it.
#include "collector/HostCallbacks.h"
#include "collector/detail/CollectorInternals.h"
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"

#include <algorithm>
#include <memory>

namespace dyadctx::test {

namespace {

// ---- Friends of a context
// ------------------------------------------------------------------------

TEST_F(HostCallbacks, GettingFriendsReturnsAtMostAsManyAsThereWere) {
    owner.AddFriend(&first);
    const CallbackTrace trace("GetFriends Ctx", [&] { AddFriends(owner, second); });
    VELListPtrVELDyadContext friends;
    EXPECT_EQ(owner.GetFriends(friends), 1);
    EXPECT_EQ(NamesOf(friends), Names{"first"});
}

TEST_F(HostCallbacks, GettingFriendsReturnsNoneThatWereRemovedMeanwhile) {
    owner.AddFriend(&first);
    owner.AddFriend(&second);
    const CallbackTrace trace("GetFriends Ctx", [&] {
        if (Collector().GetAllNbCtxs() == 3)
            Delete("first");
    });
    VELListPtrVELDyadContext friends;
    EXPECT_EQ(owner.GetFriends(friends), 1);
    EXPECT_EQ(NamesOf(friends), Names{"second"});
}

TEST_F(HostCallbacks, AssigningWhileGettingTheFriendsReturnsTheNewOnes) {
    owner.AddFriend(&first);
    owner.AddFriend(&first);
    second.AddFriend(&owner);
    const CallbackTrace trace("GetFriends Ctx", [&] { owner = second; });
    VELListPtrVELDyadContext friends;
    EXPECT_EQ(owner.GetFriends(friends), 1);
    EXPECT_EQ(friends[1], &owner);
}

TEST_F(HostCallbacks, AnAssociatedContextThatIsTakenAwayAtItsLineIsNone) {
    owner.AddAssociatedContext(&first);
    const CallbackTrace trace("GetAssociatedContext", [&] { owner.RemoveAssociatedContext(); });
    VELDyadContext* associated = &second;
    EXPECT_EQ(owner.GetAssociatedContext(associated), S_FALSE);
    EXPECT_EQ(associated, nullptr);
}

// ---- Checking one context
// ------------------------------------------------------------------------

class CheckCallbacks : public HostCallbacks {
protected:
    CheckCallbacks() {
        first.AddFriend(&owner);
        second.AddFriend(&owner);
        owner.AddFriend(&first);
        owner.AddFriend(&second);
    }
    std::string Cyclicity(const std::string& name) const {
        return "Ctx.Check.CtxAndFriendWithCyclicity " + LongName + " of the owner " + name + "\n";
    }
};

TEST_F(CheckCallbacks, FriendsAddedMeanwhileAreNotVisited) {
    const CallbackMessages messages([&] { AddFriends(owner, first); });
    EXPECT_EQ(contexts.CheckOne(owner, 1), 0);
    EXPECT_EQ(contexts.Message(), Cyclicity("first") + Cyclicity("second"));
}

TEST_F(CheckCallbacks, FriendsRemovedMeanwhileAreVisitedAllTheSame) {
    const CallbackMessages messages([&] { RemoveFriends(owner); });
    EXPECT_EQ(contexts.CheckOne(owner, 1), 0);
    EXPECT_EQ(contexts.Message(), Cyclicity("first") + Cyclicity("second"));
}

TEST_F(CheckCallbacks, FriendsDeletedMeanwhileAreLeftAlone) {
    bool done = false;
    const CallbackMessages messages([&] {
        if (!std::exchange(done, true))
            Delete("second");
    });
    EXPECT_EQ(contexts.CheckOne(owner, 1), 0);
    EXPECT_EQ(contexts.Message(), Cyclicity("first"));
}

TEST_F(CheckCallbacks, AFriendDeletedWhileItIsVisitedBreaksNoRule) {
    const KeyCatalog catalog;
    const CallbackTrace trace("GetFriends Ctx <first>", [&] { Delete("first"); });
    EXPECT_EQ(contexts.CheckOne(owner, 1), 0);
    EXPECT_EQ(trace.Calls(), 1);
    EXPECT_EQ(contexts.Message().find("first"), std::string::npos);
    EXPECT_NE(contexts.Message().find("second"), std::string::npos);
}

TEST_F(CheckCallbacks, TheTextsAreThoseTheContextHadAtFirst) {
    const CallbackMessages messages([&] { Rename(owner, "renamed"); });
    owner = VELDyadContext("!", "", "Unknown");
    EXPECT_EQ(contexts.CheckOne(owner, 1), 0);
    EXPECT_EQ(contexts.Message(), "Ctx.Check.CtxNameWithInvalidChar\n"
                                  "Ctx.Check.CtxEmptyParam !\n"
                                  "Ctx.Check.CtxUnknownParamType ! Unknown\n");
}

TEST_F(CheckCallbacks, ACollectorAssignedMeanwhileHoldsNoneOfTheFriends) {
    const std::unique_ptr<VELDyadCtxCollector> empty(
        VELDyadCtxCollector::CreateCollectorFromScratch());
    const VELDyadCtxCollector copy(Collector());
    bool done = false;
    {
        const CallbackMessages messages([&] {
            if (!std::exchange(done, true))
                Collector() = *empty;
        });
        EXPECT_EQ(contexts.CheckOne(owner, 1), 0);
    }
    EXPECT_EQ(contexts.Message(), Cyclicity("first"));
}

TEST_F(CheckCallbacks, AnAssociatedContextDeletedMeanwhileBreaksNoFurtherRule) {
    const DbEnvironment on(true);
    RemoveFriends(owner);
    VELDyadContext& associated = contexts.Declare("");
    owner.AddAssociatedContext(&associated);
    const CallbackMessages messages([&] { Collector().DeleteContext(""); });
    EXPECT_EQ(contexts.CheckOne(owner, 1), 0);
    EXPECT_EQ(contexts.Message(), "Ctx.Parse.CtxAssocNoName " + LongName + " of the owner\n");
}

TEST_F(CheckCallbacks, AnAssociatedContextDeletedAtItsLineIsNotExamined) {
    const DbEnvironment on(true);
    const KeyCatalog catalog;
    RemoveFriends(owner);
    owner.AddAssociatedContext(&first);
    first.AddAssociatedContext(&owner);
    const CallbackTrace trace("GetAssociatedContext <first>", [&] { Delete("first"); });
    EXPECT_EQ(contexts.CheckOne(owner, 1), 1);
    EXPECT_EQ(trace.Calls(), 1);
}

// ---- Databases
// -----------------------------------------------------------------------------------

class DatabaseCallbacks : public testing::Test {
protected:
    const DbEnvironment on{true};
    const KeyCatalog catalog;
    CallbackProviders providers;
    DeclaredContexts contexts;
    VELDyadContext& one = contexts.DeclareDatabase(LongName + " of one", "KRL");
    VELDyadContext& other = contexts.DeclareDatabase("other", "KRL");
};

TEST_F(DatabaseCallbacks, ASamenessThatAssignsToTheContextLeavesTheNameThatIsTraced) {
    providers.onIsSame = [&] { one = VELDyadContext("assigned", "somewhere", "Path"); };
    const CallbackTrace trace("nothing", [] {});
    VELDyadContext* match = nullptr;
    EXPECT_EQ(CollectorInternals::FindMatchingDatabase(contexts.Collector(), 1, &one, &match), 1);
    EXPECT_EQ(match, &other);
    ASSERT_GE(trace.Lines().size(), 2U);
    EXPECT_EQ(trace.Lines().back(),
              "VELDyadCtxCollector:FindMatchingDatabase <" + LongName + " of one>");
    EXPECT_EQ(trace.Lines()[trace.Lines().size() - 2],
              "VELDyadCtxCollector:FindMatchingDatabase : 2 Contexts similar " + LongName +
                  " of one & other");
}

TEST_F(DatabaseCallbacks, ACandidateThatItsComparisonDeletesIsNoMatch) {
    providers.onIsSame = [&] {
        if (contexts.Collector().GetAllNbCtxs() == 2)
            contexts.Collector().DeleteContext("other");
    };
    EXPECT_EQ(contexts.CheckOne(one, 1), 1) << contexts.Message();
}

TEST_F(DatabaseCallbacks, ACandidateDeletedWhileItsProviderIsCopiedIsNoMatch) {
    int copies = 0;
    providers.onCreateFrom = [&] {
        if (++copies == 2)
            contexts.Collector().DeleteContext("other");
    };
    EXPECT_EQ(contexts.CheckOne(one, 1), 1) << contexts.Message();
}

TEST_F(DatabaseCallbacks, AMatchDeletedAtItsLineIsNotNamed) {
    const CallbackTrace trace("2 Contexts similar",
                              [&] { contexts.Collector().DeleteContext("other"); });
    EXPECT_EQ(contexts.CheckOne(one, 1), 1) << contexts.Message();
    EXPECT_EQ(trace.Calls(), 1);
}

TEST_F(DatabaseCallbacks, QueriesLeaveOutWhatIsDeletedMeanwhile) {
    contexts.Collector().SetCtxTypeList();
    int names = 0;
    providers.onGetName = [&] {
        if (++names == 2)
            contexts.Collector().DeleteContext(one.GetName());
    };
    VELListPtrVELDyadContext found;
    EXPECT_EQ(contexts.Collector().GetContextsFromDbProviderName("KRL", found), S_OK);
    EXPECT_EQ(found.Size(), 1);
    EXPECT_EQ(found[1], &other);
}

TEST_F(DatabaseCallbacks, AContextDeletedWhileItIsAskedForItsDatabaseHasNoName) {
    const VELIDyadDbProvider_var provider = MakeProvider("KRL");
    providers.onIsSame = [&] {
        if (contexts.Collector().GetAllNbCtxs() == 2)
            contexts.Collector().DeleteContext(one.GetName());
    };
    VELListValVELUnicodeString names;
    EXPECT_EQ(contexts.Collector().GetContextNamesFromDbProvider(provider, names), S_OK);
    EXPECT_EQ(names.Size(), 0);
}

TEST_F(DatabaseCallbacks, NarrowingToleratesContextsThatAreDeletedMeanwhile) {
    contexts.Collector().SetCtxTypeList();
    providers.onGetName = [&] {
        if (contexts.Collector().GetAllNbCtxs() == 2)
            contexts.Collector().DeleteContext(one.GetName());
    };
    EXPECT_EQ(contexts.Collector().SetContextDatabaseType(ListOf({"KRL"})), S_OK);
}

// ---- Deleting
// ------------------------------------------------------------------------------------

TEST_F(HostCallbacks, AContextDeletedInsideItsOwnDeletionIsDestroyedOnce) {
    for (const char* line : {"GetAssociatedContext <first>", "RemoveAssociatedContext",
                             "GetFriends Ctx", "RemoveFriend", "Destructor <first>"}) {
        DeclaredContexts own;
        VELDyadContext& holder = own.Declare("holder");
        VELDyadContext& target = own.Declare("first");
        own.Declare("third").AddFriend(&target);
        holder.AddAssociatedContext(&target);
        holder.AddFriend(&target);
        const CallbackTrace trace(line, [&] { own.Collector().DeleteContext("first"); });
        EXPECT_EQ(own.Collector().DeleteContext("first"), S_OK) << line;
        EXPECT_GE(trace.Calls(), 1) << line;
        EXPECT_EQ(ViewOf(own.Collector()), (Names{"holder", "third"})) << line;
        EXPECT_EQ(std::count(trace.Lines().begin(), trace.Lines().end(),
                             "VELDyadContext:Destructor <first>"),
                  1)
            << line;
    }
}

TEST_F(HostCallbacks, ANewContextOfTheNameOutlivesTheDeletionOfTheFormer) {
    owner.AddFriend(&first);
    bool done = false;
    const CallbackTrace trace("RemoveFriend", [&] {
        if (std::exchange(done, true))
            return;
        Delete("first");
        Collector().AddContext(new VELDyadContext("first", "new", "Path"), nullptr, 0);
    });
    Delete("first");
    VELDyadContext* found = nullptr;
    ASSERT_EQ(Collector().GetCtxFromName("first", found), S_OK);
    EXPECT_EQ(Text(found->GetParameter()), "new");
    EXPECT_EQ(Collector().GetAllNbCtxs(), 3);
}

TEST_F(HostCallbacks, AHolderDeletedWhileItIsUnlinkedIsLeftAlone) {
    for (const char* line : {"GetAssociatedContext <first>", "RemoveAssociatedContext",
                             "GetFriends Ctx <holder>", "RemoveFriend"}) {
        DeclaredContexts own;
        VELDyadContext& holder = own.Declare("holder");
        VELDyadContext& target = own.Declare("first");
        holder.AddAssociatedContext(&target);
        AddFriends(holder, target);
        const CallbackTrace trace(line, [&] { own.Collector().DeleteContext("holder"); });
        EXPECT_EQ(own.Collector().DeleteContext("first"), S_OK) << line;
        EXPECT_EQ(own.Collector().GetAllNbCtxs(), 0) << line;
    }
}

TEST_F(HostCallbacks, LinksMadeWhileAContextIsDeletedGoWithIt) {
    AddFriends(owner, first, 3);
    const CallbackTrace trace("RemoveFriend", [&] {
        if (owner.AddFriend(&first) == S_OK)
            owner.AddAssociatedContext(&first);
    });
    Delete("first");
    VELListPtrVELDyadContext friends;
    EXPECT_EQ(owner.GetFriends(friends), 0);
    VELDyadContext* associated = nullptr;
    EXPECT_EQ(owner.GetAssociatedContext(associated), S_FALSE);
}

} // namespace

} // namespace dyadctx::test
