// SPDX-License-Identifier: MIT
#include "collector/VELDyadCtxCollector.h"

#include "support/ContextFile.h"
#include "support/EnvironmentVariable.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>
#include <memory>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;

class RegistryTest : public testing::Test {
protected:
    // A declared context that belongs to the collector.
    VELDyadContext* Declare(const char* name, const char* type = "Path") {
        auto* context = new VELDyadContext(name, "parameter", type);
        EXPECT_EQ(collector->AddContext(context, nullptr, 0), S_OK);
        return context;
    }
    VELDyadContext* Find(const char* name, int* index = nullptr) {
        VELDyadContext* found = nullptr;
        return collector->GetCtxFromName(name, found, index) == S_OK ? found : nullptr;
    }
    VELDyadContext* At(int index) {
        VELDyadContext* found = nullptr;
        return collector->GetCtxAtIndex(index, found) == S_OK ? found : nullptr;
    }
    // The collector holds none afterwards, and deletes none.
    void LetGoOfContexts() {
        const std::unique_ptr<VELDyadCtxCollector> empty(
            VELDyadCtxCollector::CreateCollectorFromScratch());
        *collector = *empty;
    }
    static VELDyadContext* AssociatedOf(VELDyadContext* context) {
        VELDyadContext* associated = nullptr;
        context->GetAssociatedContext(associated);
        return associated;
    }

    std::unique_ptr<VELDyadCtxCollector> collector{
        VELDyadCtxCollector::CreateCollectorFromScratch()};
};

TEST_F(RegistryTest, FromScratchHoldsNothing) {
    VELDyadContext untouched("Untouched", "", "Path");
    VELDyadContext* ctx = &untouched;
    int index = 7;
    unsigned char isDefault = 9;
    EXPECT_EQ(collector->GetNbCtxs(), 0);
    EXPECT_EQ(collector->GetAllNbCtxs(), 0);
    EXPECT_EQ(collector->GetNbPathCtxs(), 0);
    EXPECT_EQ(collector->GetCtxAtIndex(1, ctx), E_FAIL);
    EXPECT_EQ(collector->GetCtxFromName("A", ctx, &index), E_FAIL);
    EXPECT_EQ(collector->DeleteContext("A"), E_FAIL);
    EXPECT_EQ(ctx, &untouched);
    EXPECT_EQ(index, 7);
    EXPECT_EQ(Text(collector->GetXMLFile(isDefault)), "");
    EXPECT_EQ(isDefault, 0);
}

TEST_F(RegistryTest, TracesConstructionBeforeItsOwnLineAndDestructionBeforeItsContexts) {
    RecordingTrace trace;
    const EnvironmentVariable tracer("VELDyadCtxTracer", std::nullopt);
    std::unique_ptr<VELDyadCtxCollector> own(VELDyadCtxCollector::CreateCollectorFromScratch());
    EXPECT_EQ(trace.TakeLines(), (Lines{"LOG VELDyadCtxCollector:Constructor-isDefault=0 - File=<>",
                                        "LOG VELDyadCtxCollector:CreateCollectorFromScratch"}));
    auto* first = new VELDyadContext("First", "", "Path");
    own->AddContext(first, nullptr, 0);
    own->AddContext(new VELDyadContext("Friend", "", "Path"), first, 0);
    own->AddContext(new VELDyadContext("Second", "", "Path"), nullptr, 0);
    trace.TakeLines();
    own.reset();
    EXPECT_EQ(
        trace.TakeLines(),
        (Lines{"LOG VELDyadCtxCollector:Destructor", "ENTER VELDyadContext:Destructor <First>",
               "LEAVE VELDyadContext:Destructor", "ENTER VELDyadContext:Destructor <Friend>",
               "LEAVE VELDyadContext:Destructor", "ENTER VELDyadContext:Destructor <Second>",
               "LEAVE VELDyadContext:Destructor"}));
}

TEST_F(RegistryTest, MarksTheTraceWheneverTheTracerVariableIsSetNow) {
    for (const char* value : {"", "0", "1"}) {
        const EnvironmentVariable tracer("VELDyadCtxTracer", value);
        RecordingTrace trace;
        const std::unique_ptr<VELDyadCtxCollector> own(
            VELDyadCtxCollector::CreateCollectorFromScratch());
        EXPECT_EQ(trace.Lines().size(), 3U) << value;
    }
}

TEST_F(RegistryTest, TheCountIsAReferenceThatStaysTrue) {
    const int& count = collector->GetAllNbCtxs();
    Declare("A");
    EXPECT_EQ(count, 1);
    Declare("B");
    EXPECT_EQ(count, 2);
    collector->DeleteContext("A");
    EXPECT_EQ(count, 1);
}

TEST_F(RegistryTest, ReturnsContextsByPositionWithinBoundsOnly) {
    VELDyadContext* a = Declare("A");
    VELDyadContext* b = Declare("B");
    EXPECT_EQ(At(1), a);
    EXPECT_EQ(At(2), b);
    for (const int index : {-1, 0, 3, 2147483647}) {
        VELDyadContext* ctx = a;
        EXPECT_EQ(collector->GetCtxAtIndex(index, ctx), E_FAIL) << index;
        EXPECT_EQ(ctx, a) << index;
    }
}

TEST_F(RegistryTest, FindsTheFirstContextWithExactlyThatName) {
    Declare("a");
    VELDyadContext* upper = Declare("A");
    Declare("A");
    VELDyadContext* unnamed = Declare("");
    int index = 0;
    EXPECT_EQ(Find("A", &index), upper);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(Find("A "), nullptr);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(Find("", &index), unnamed);
    EXPECT_EQ(index, 4);
}

TEST_F(RegistryTest, DistinguishesNamesThatDifferAfterAZeroByte) {
    auto* one = new VELDyadContext(VELUnicodeString("a\0b", 3), "", "Path");
    auto* two = new VELDyadContext(VELUnicodeString("a\0c", 3), "", "Path");
    collector->AddContext(one, nullptr, 0);
    collector->AddContext(two, nullptr, 0);
    VELDyadContext* found = nullptr;
    EXPECT_EQ(collector->GetCtxFromName(VELUnicodeString("a\0c", 3), found), S_OK);
    EXPECT_EQ(found, two);
    EXPECT_EQ(Find("a"), nullptr);
}

TEST_F(RegistryTest, FindsByTheNewNameAfterAnAssignment) {
    VELDyadContext* a = Declare("A");
    Declare("B");
    EXPECT_EQ(Find("A"), a);
    *a = VELDyadContext("C", "", "Path");
    EXPECT_EQ(Find("A"), nullptr);
    EXPECT_EQ(Find("C"), a);
}

TEST_F(RegistryTest, AddsTheSameContextTwiceAsDeclaredButOwnsItOnce) {
    RecordingTrace trace;
    VELDyadContext* a = Declare("A");
    collector->AddContext(a, nullptr, 0);
    EXPECT_EQ(collector->GetNbCtxs(), 2);
    EXPECT_EQ(ViewOf(*collector), (Lines{"A", "A"}));
    collector.reset();
    EXPECT_EQ(trace.LinesWith("VELDyadContext:Destructor <A>").size(), 1U);
}

TEST_F(RegistryTest, ANullContextIsCountedAndServedAndSkippedByName) {
    EXPECT_EQ(collector->AddContext(nullptr, nullptr, 0), S_OK);
    VELDyadContext* a = Declare("A");
    EXPECT_EQ(collector->GetNbCtxs(), 2);
    VELDyadContext* ctx = a;
    EXPECT_EQ(collector->GetCtxAtIndex(1, ctx), S_OK);
    EXPECT_EQ(ctx, nullptr);
    int index = 0;
    EXPECT_EQ(Find("A", &index), a);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(collector->DeleteContext("A"), S_OK);
    EXPECT_EQ(collector->GetNbCtxs(), 1);
}

TEST_F(RegistryTest, WithAParentTheContextBecomesAFriendAndIsNotDeclared) {
    VELDyadContext* parent = Declare("Parent");
    auto* ctx = new VELDyadContext("Friend", "", "Path");
    EXPECT_EQ(collector->AddContext(ctx, parent, 0), S_OK);
    EXPECT_EQ(collector->GetNbCtxs(), 1);
    EXPECT_EQ(FriendsOf(*parent), Lines{"Friend"});
    EXPECT_EQ(collector->AddContext(nullptr, parent, 0), E_FAIL);
}

TEST_F(RegistryTest, TheAssociatedFlagCountsOnlyInTheDbEnvironment) {
    VELDyadContext* parent = Declare("Parent");
    auto* one = new VELDyadContext("One", "", "Path");
    EXPECT_EQ(collector->AddContext(one, parent, 1), S_OK);
    EXPECT_EQ(FriendsOf(*parent), Lines{"One"});
    EXPECT_EQ(AssociatedOf(parent), nullptr);

    const DbEnvironment on(true);
    auto* two = new VELDyadContext("Two", "", "Path");
    auto* three = new VELDyadContext("Three", "", "Path");
    EXPECT_EQ(collector->AddContext(two, parent, -1), S_OK);
    EXPECT_EQ(AssociatedOf(parent), two);
    EXPECT_EQ(collector->AddContext(three, parent, 1), S_OK);
    EXPECT_EQ(AssociatedOf(parent), three);
    EXPECT_EQ(collector->AddContext(nullptr, parent, 1), E_FAIL);
    EXPECT_EQ(FriendsOf(*parent), Lines{"One"});
    // The one that was replaced still belongs to the collector.
    RecordingTrace trace;
    collector.reset();
    EXPECT_EQ(trace.LinesWith("VELDyadContext:Destructor <").size(), 4U);
}

TEST_F(RegistryTest, FriendsOfADeletedContextStay) {
    VELDyadContext* a = Declare("A");
    VELDyadContext* b = Declare("B");
    a->AddFriend(b);
    EXPECT_EQ(collector->DeleteContext("A"), S_OK);
    EXPECT_EQ(ViewOf(*collector), Lines{"B"});
    EXPECT_EQ(Find("A"), nullptr);
    EXPECT_EQ(At(1), b);
}

TEST_F(RegistryTest, DeletionRemovesLinksFirstAndTracesEachStep) {
    VELDyadContext* holder = Declare("Holder");
    VELDyadContext* target = Declare("Target");
    Declare("Other")->AddAssociatedContext(holder);
    holder->AddAssociatedContext(target);
    holder->AddFriend(target);
    RecordingTrace trace;
    EXPECT_EQ(collector->DeleteContext("Target"), S_OK);
    EXPECT_EQ(trace.TakeLines(), (Lines{"LOG VELDyadContext:GetAssociatedContext <Target>",
                                        "LOG VELDyadContext:RemoveAssociatedContext",
                                        "LOG VELDyadContext:GetFriends Ctx <Holder> has 1 Friends",
                                        "LOG VELDyadContext:RemoveFriend[1]",
                                        "LOG VELDyadContext:GetFriends Ctx <Target> has 0 Friends",
                                        "LOG VELDyadContext:GetAssociatedContext <Holder>",
                                        "LOG VELDyadContext:GetFriends Ctx <Other> has 0 Friends",
                                        "ENTER VELDyadContext:Destructor <Target>",
                                        "LEAVE VELDyadContext:Destructor"}));
    EXPECT_EQ(FriendsOf(*holder), Lines{});
    EXPECT_EQ(AssociatedOf(holder), nullptr);
}

// The positions are those of the list as it was, while the list shrinks.
TEST_F(RegistryTest, DeletionGoesByThePositionsThereWere) {
    VELDyadContext* two = Declare("Two");
    VELDyadContext* three = Declare("Three");
    VELDyadContext* target = Declare("Target");
    for (VELDyadContext* context : {target, target})
        two->AddFriend(context);
    for (VELDyadContext* context : {target, target, two})
        three->AddFriend(context);
    RecordingTrace trace;
    EXPECT_EQ(collector->DeleteContext("Target"), S_OK);
    EXPECT_EQ(trace.LinesWith("RemoveFriend"),
              (Lines{"LOG VELDyadContext:RemoveFriend[1]", "LOG VELDyadContext:RemoveFriend[1]",
                     "LOG VELDyadContext:RemoveFriend[2]"}));
    // Nothing points at the deleted context, although a call missed it.
    EXPECT_EQ(FriendsOf(*two), Lines{});
    EXPECT_EQ(FriendsOf(*three), Lines{});
}

TEST_F(RegistryTest, DeletionUnlinksContextsThatAreNotDeclaredWithoutTrace) {
    VELDyadContext* parent = Declare("Parent");
    VELDyadContext* target = Declare("Target");
    auto* hidden = new VELDyadContext("Hidden", "", "Path");
    collector->AddContext(hidden, parent, 0);
    hidden->AddFriend(target);
    hidden->AddAssociatedContext(target);
    RecordingTrace trace;
    EXPECT_EQ(collector->DeleteContext("Target"), S_OK);
    EXPECT_EQ(trace.LinesWith("Hidden"), Lines{});
    EXPECT_EQ(FriendsOf(*hidden), Lines{});
    EXPECT_EQ(AssociatedOf(hidden), nullptr);
}

TEST_F(RegistryTest, DeletionLeavesNullWhereTheContextWasDeclaredAgain) {
    VELDyadContext* a = Declare("A");
    VELDyadContext* b = Declare("B");
    collector->AddContext(a, nullptr, 0);
    EXPECT_EQ(collector->DeleteContext("A"), S_OK);
    EXPECT_EQ(collector->GetNbCtxs(), 2);
    EXPECT_EQ(At(1), b);
    EXPECT_EQ(At(2), nullptr);
    EXPECT_EQ(Find("A"), nullptr);
    EXPECT_EQ(collector->DeleteContext("A"), E_FAIL);
}

TEST_F(RegistryTest, DeletesByAReferenceToTheNameOfTheContextItself) {
    VELDyadContext* a = Declare("A name longer than a short text");
    EXPECT_EQ(collector->DeleteContext(a->GetName()), S_OK);
    EXPECT_EQ(collector->GetNbCtxs(), 0);
}

TEST_F(RegistryTest, DeletesTheFirstOfTwoNamesakesThenTheSecond) {
    Declare("A");
    VELDyadContext* second = Declare("A");
    EXPECT_EQ(collector->DeleteContext("A"), S_OK);
    EXPECT_EQ(Find("A"), second);
    EXPECT_EQ(collector->DeleteContext("A"), S_OK);
    EXPECT_EQ(collector->DeleteContext("A"), E_FAIL);
}

TEST_F(RegistryTest, ADeletedContextMayBeFollowedByANewOneAtItsAddress) {
    for (int i = 0; i < 50; ++i) {
        Declare("A");
        EXPECT_EQ(collector->DeleteContext("A"), S_OK);
        EXPECT_EQ(collector->GetNbCtxs(), 0);
    }
}

TEST_F(RegistryTest, ViewsGiveTheirOwnPositions) {
    const DbEnvironment on(true);
    Declare("File", "File");
    VELDyadContext* path = Declare("Path", "Path");
    collector->SetCtxTypeList();
    collector->SetContextPathType();
    int index = 0;
    EXPECT_EQ(collector->GetNbCtxs(), 1);
    EXPECT_EQ(Find("Path", &index), path);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(Find("File"), nullptr);
    EXPECT_EQ(collector->DeleteContext("File"), E_FAIL);
    EXPECT_EQ(At(1), path);
    EXPECT_EQ(At(2), nullptr);
}

TEST_F(RegistryTest, OnlyTheFileViewDependsOnTheDbEnvironment) {
    {
        const DbEnvironment on(true);
        Declare("Path", "Path");
        Declare("Database", "Database");
        Declare("File", "File");
        collector->SetCtxTypeList();
        collector->SetContextDatabaseType({});
    }
    EXPECT_EQ(ViewOf(*collector), (Lines{"Path", "Database"}));
    {
        const DbEnvironment on(true);
        collector->SetContextPathType();
    }
    EXPECT_EQ(ViewOf(*collector), Lines{"Path"});
    {
        const DbEnvironment on(true);
        collector->SetContextFileType();
        EXPECT_EQ(ViewOf(*collector), (Lines{"Path", "File"}));
    }
    // Outside, all are counted and none is served.
    EXPECT_EQ(collector->GetNbCtxs(), 3);
    EXPECT_EQ(At(1), nullptr);
    EXPECT_EQ(Find("Path"), nullptr);
    EXPECT_EQ(collector->DeleteContext("Path"), E_FAIL);
    EXPECT_EQ(collector->GetAllNbCtxs(), 3);
}

TEST_F(RegistryTest, ViewsKeepTheirPositionsWhenAContextIsDeleted) {
    const DbEnvironment on(true);
    Declare("A");
    VELDyadContext* b = Declare("B");
    VELDyadContext* c = Declare("C");
    collector->SetCtxTypeList();
    EXPECT_EQ(collector->DeleteContext("A"), S_OK);
    EXPECT_EQ(collector->GetNbPathCtxs(), 3);
    collector->SetContextPathType();
    EXPECT_EQ(collector->GetNbCtxs(), 3);
    EXPECT_EQ(At(1), b);
    EXPECT_EQ(At(2), c);
    VELDyadContext* ctx = b;
    EXPECT_EQ(collector->GetCtxAtIndex(3, ctx), E_FAIL);
    EXPECT_EQ(ctx, b);
    EXPECT_EQ(Find("C"), c);
    // A new context takes the place that the outdated position points at.
    VELDyadContext* d = Declare("D");
    EXPECT_EQ(At(3), d);
    int index = 0;
    EXPECT_EQ(Find("D", &index), d);
    EXPECT_EQ(index, 3);
}

TEST_F(RegistryTest, CopiesShareTheContextsAndGoTheirOwnWays) {
    VELDyadContext* a = Declare("A");
    EXPECT_EQ(Find("A"), a);
    RecordingTrace trace;
    auto* copy = new VELDyadCtxCollector(*collector);
    EXPECT_EQ(trace.TakeLines(), Lines{});
    EXPECT_EQ(ViewOf(*copy), Lines{"A"});
    auto* later = new VELDyadContext("Later", "", "Path");
    copy->AddContext(later, nullptr, 0);
    copy->AddContext(a, nullptr, 0);
    EXPECT_EQ(ViewOf(*copy), (Lines{"A", "Later", "A"}));
    EXPECT_EQ(ViewOf(*collector), Lines{"A"});
    EXPECT_EQ(Find("Later"), nullptr);
    // The copy holds all of them, so it is the one to delete them.
    LetGoOfContexts();
    trace.TakeLines();
    delete copy;
    EXPECT_EQ(trace.LinesWith("VELDyadContext:Destructor <").size(), 2U);
}

TEST_F(RegistryTest, AssignmentLetsGoOfTheContextsHeldSoFar) {
    VELDyadContext* orphan = Declare("Orphan");
    Find("Orphan");
    const std::unique_ptr<VELDyadCtxCollector> source(
        VELDyadCtxCollector::CreateCollectorFromScratch());
    auto* shared = new VELDyadContext("Shared", "", "Path");
    source->AddContext(shared, nullptr, 0);
    source->AddScenario("C", "C", "P", "1", "n", "v");
    RecordingTrace trace;
    *collector = *source;
    EXPECT_EQ(trace.TakeLines(), Lines{});
    EXPECT_EQ(ViewOf(*collector), Lines{"Shared"});
    EXPECT_EQ(Find("Orphan"), nullptr);
    EXPECT_EQ(Find("Shared"), shared);
    const VELDyadCtxCollector& same = *collector;
    *collector = same;
    EXPECT_EQ(ViewOf(*collector), Lines{"Shared"});
    VELListValVELUnicodeString channels;
    VELListValVELUnicodeString contexts;
    collector->GetExchangeChannelfromScenario(ListOf({"1"}), channels, contexts);
    EXPECT_EQ(Texts(channels), Lines{"C"});
    // Shared goes with the source, the orphan with whoever still has it.
    LetGoOfContexts();
    delete orphan;
}

} // namespace

} // namespace dyadctx::test
