// SPDX-License-Identifier: MIT
#include "context/VELDyadContext.h"

#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>
#include <memory>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;

VELDyadContext PathContext(const char* name) {
    return VELDyadContext(name, "/data", "Path");
}

TEST(VELDyadContext, KeepsItsThreeTextsAsTheyStand) {
    const VELDyadContext context("%s name", " /data ", "path");
    EXPECT_EQ(Text(context.GetName()), "%s name");
    EXPECT_EQ(Text(context.GetParameter()), " /data ");
    EXPECT_EQ(Text(context.GetParameterType()), "path");
}

TEST(VELDyadContext, TracesItsConstructionAndDestruction) {
    RecordingTrace trace;
    { const VELDyadContext context("Plan", "/data/%d", "Path"); }
    EXPECT_EQ(trace.Lines(),
              (Lines{"ENTER VELDyadContext:Constructor Ctx with Name=Plan of Type /data/%d-Path",
                     "LEAVE VELDyadContext:Constructor", "ENTER VELDyadContext:Destructor <Plan>",
                     "LEAVE VELDyadContext:Destructor"}));
}

TEST(VELDyadContext, TracesNothingWhileTheTraceIsOff) {
    RecordingTrace trace;
    int off = 0;
    DyadContextTrace.activity = &off;
    { VELDyadContext context("Plan", "/data", "Path"); }
    DyadContextTrace.activity = nullptr;
    { VELDyadContext context("Plan", "/data", "Path"); }
    EXPECT_EQ(trace.Lines(), Lines{});
}

TEST(VELDyadContext, TracesAlsoWhenTheActivityIsNegative) {
    RecordingTrace trace;
    int negative = -1;
    DyadContextTrace.activity = &negative;
    VELDyadContext context("Plan", "/data", "Path");
    context.RemoveAssociatedContext();
    EXPECT_EQ(trace.Lines().back(), "LOG VELDyadContext:RemoveAssociatedContext");
}

// Turns the trace off at the first line it receives.
class TraceThatStops : public VELDyadTraceSink {
public:
    void Write(VELDyadTraceKind, const char* text) override {
        lines.emplace_back(text);
        *DyadContextTrace.activity = 0;
    }
    Lines lines;
};

TEST(VELDyadContext, AsksBeforeEachLineWhetherTheTraceIsOn) {
    const RecordingTrace restored;
    TraceThatStops sink;
    SetDyadTraceSink(&sink);
    { VELDyadContext context("Plan", "/data", "Path"); }
    EXPECT_EQ(sink.lines,
              Lines{"VELDyadContext:Constructor Ctx with Name=Plan of Type /data-Path"});
}

TEST(VELDyadContext, AddsFriendsAtTheEndAndAllowsRepeatedOnes) {
    VELDyadContext owner = PathContext("Owner");
    VELDyadContext other = PathContext("Other");
    RecordingTrace trace;
    EXPECT_EQ(owner.AddFriend(&other), S_OK);
    EXPECT_EQ(owner.AddFriend(&owner), S_OK);
    EXPECT_EQ(owner.AddFriend(&other), S_OK);
    EXPECT_EQ(trace.TakeLines(),
              (Lines{"LOG VELDyadContext:AddFriendCtx <Owner> had friend-Name=Other",
                     "LOG VELDyadContext:AddFriendCtx <Owner> had friend-Name=Owner",
                     "LOG VELDyadContext:AddFriendCtx <Owner> had friend-Name=Other"}));
    EXPECT_EQ(FriendsOf(owner), (Lines{"Other", "Owner", "Other"}));
}

TEST(VELDyadContext, RefusesFriendChangesOutsideTheListWithoutTrace) {
    VELDyadContext owner = PathContext("Owner");
    VELDyadContext other = PathContext("Other");
    EXPECT_EQ(owner.SetFriend(1, &other), E_FAIL);
    EXPECT_EQ(owner.RemoveFriend(1), E_FAIL);
    owner.AddFriend(&other);
    RecordingTrace trace;
    EXPECT_EQ(owner.AddFriend(nullptr), E_FAIL);
    EXPECT_EQ(owner.SetFriend(1, nullptr), E_FAIL);
    EXPECT_EQ(owner.SetFriend(0, &other), E_FAIL);
    EXPECT_EQ(owner.SetFriend(2, &other), E_FAIL);
    EXPECT_EQ(owner.RemoveFriend(0), E_FAIL);
    EXPECT_EQ(owner.RemoveFriend(2), E_FAIL);
    EXPECT_EQ(owner.RemoveFriend(-1), E_FAIL);
    EXPECT_EQ(trace.TakeLines(), Lines{});
    EXPECT_EQ(FriendsOf(owner), Lines{"Other"});
}

TEST(VELDyadContext, ReplacesAndRemovesFriendsByPosition) {
    VELDyadContext owner = PathContext("Owner");
    VELDyadContext one = PathContext("One");
    VELDyadContext two = PathContext("Two");
    VELDyadContext three = PathContext("Three");
    owner.AddFriend(&one);
    owner.AddFriend(&two);
    RecordingTrace trace;
    EXPECT_EQ(owner.SetFriend(2, &three), S_OK);
    EXPECT_EQ(owner.RemoveFriend(1), S_OK);
    EXPECT_EQ(trace.TakeLines(), (Lines{"LOG VELDyadContext:SetFriends[2]= Three",
                                        "LOG VELDyadContext:RemoveFriend[1]"}));
    EXPECT_EQ(FriendsOf(owner), Lines{"Three"});
}

TEST(VELDyadContext, GetFriendsReplacesWhatTheListHeld) {
    VELDyadContext owner = PathContext("Owner");
    VELDyadContext one = PathContext("One");
    owner.AddFriend(&one);
    VELListPtrVELDyadContext list;
    list.Append(&owner);
    list.Append(&owner);
    RecordingTrace trace;
    EXPECT_EQ(owner.GetFriends(list), 1);
    EXPECT_EQ(trace.TakeLines(), Lines{"LOG VELDyadContext:GetFriends Ctx <Owner> has 1 Friends"});
    EXPECT_EQ(NamesOf(list), Lines{"One"});
}

TEST(VELDyadContext, GetFriendsOfNoneTracesAndLeavesTheListAlone) {
    VELDyadContext owner = PathContext("Owner");
    VELListPtrVELDyadContext list;
    list.Append(&owner);
    RecordingTrace trace;
    EXPECT_EQ(owner.GetFriends(list), 0);
    EXPECT_EQ(trace.TakeLines(), Lines{"LOG VELDyadContext:GetFriends Ctx <Owner> has 0 Friends"});
    EXPECT_EQ(NamesOf(list), Lines{"Owner"});
}

TEST(VELDyadContext, GetFriendsOfNoneAfterTheLastWasRemoved) {
    VELDyadContext owner = PathContext("Owner");
    owner.AddFriend(&owner);
    owner.RemoveFriend(1);
    VELListPtrVELDyadContext list;
    list.Append(&owner);
    EXPECT_EQ(owner.GetFriends(list), 0);
    EXPECT_EQ(list.Size(), 1);
}

TEST(VELDyadContext, SetAssociatedIsRefusedWhileNoneIsSet) {
    VELDyadContext owner = PathContext("Owner");
    VELDyadContext one = PathContext("One");
    VELDyadContext two = PathContext("Two");
    VELDyadContext* found = &owner;
    RecordingTrace trace;
    EXPECT_EQ(owner.SetAssociated(&one), E_FAIL);
    EXPECT_EQ(owner.GetAssociatedContext(found), S_FALSE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(trace.TakeLines(), Lines{});

    EXPECT_EQ(owner.AddAssociatedContext(&one), S_OK);
    EXPECT_EQ(owner.SetAssociated(&two), S_OK);
    EXPECT_EQ(owner.GetAssociatedContext(found), S_OK);
    EXPECT_EQ(found, &two);
    EXPECT_EQ(trace.TakeLines(), (Lines{"LOG VELDyadContext:AddAssociatedContext-Name=One",
                                        "LOG VELDyadContext:SetAssociated Name=Two",
                                        "LOG VELDyadContext:GetAssociatedContext <Two>"}));
}

TEST(VELDyadContext, AddAssociatedContextReplacesButNeverClears) {
    VELDyadContext owner = PathContext("Owner");
    VELDyadContext one = PathContext("One");
    VELDyadContext two = PathContext("Two");
    owner.AddAssociatedContext(&one);
    EXPECT_EQ(owner.AddAssociatedContext(&two), S_OK);
    RecordingTrace trace;
    EXPECT_EQ(owner.AddAssociatedContext(nullptr), E_FAIL);
    EXPECT_EQ(owner.SetAssociated(nullptr), E_FAIL);
    EXPECT_EQ(trace.TakeLines(), Lines{});
    VELDyadContext* found = nullptr;
    owner.GetAssociatedContext(found);
    EXPECT_EQ(found, &two);
}

TEST(VELDyadContext, RemoveAssociatedContextTracesAlsoWhenItRefuses) {
    VELDyadContext owner = PathContext("Owner");
    VELDyadContext one = PathContext("One");
    owner.AddAssociatedContext(&one);
    RecordingTrace trace;
    EXPECT_EQ(owner.RemoveAssociatedContext(), S_OK);
    EXPECT_EQ(owner.RemoveAssociatedContext(), E_FAIL);
    EXPECT_EQ(trace.TakeLines(), (Lines{"LOG VELDyadContext:RemoveAssociatedContext",
                                        "LOG VELDyadContext:RemoveAssociatedContext"}));
}

TEST(VELDyadContext, LabelsTheFourParameterTypes) {
    const KeyCatalog catalog;
    RecordingTrace trace;
    for (const char* type : {"Default", "Path", "File", "Database"}) {
        const VELDyadContext context("A", "b", type);
        trace.TakeLines();
        EXPECT_EQ(Text(context.GetNLSParameterType()),
                  "Ctx.ParameterType." + std::string(type) + "()");
        EXPECT_EQ(trace.TakeLines(), Lines{});
    }
}

TEST(VELDyadContext, WarnsOfAParameterTypeWithoutLabel) {
    const KeyCatalog catalog;
    RecordingTrace trace;
    for (const char* type : {"database", "", "Path "}) {
        const VELDyadContext context("A", "b", type);
        trace.TakeLines();
        EXPECT_EQ(Text(context.GetNLSParameterType()), "");
        EXPECT_EQ(trace.TakeLines(), Lines{"WARNING VELDyadContext:GetNLSParameterType <" +
                                           std::string(type) + "> emtpy or unkonwn "});
    }
}

TEST(VELDyadContext, LabelIsEmptyWhereTheCatalogLacksIt) {
    KeyCatalog catalog;
    catalog.Forget("Ctx.ParameterType.Path");
    EXPECT_EQ(Text(PathContext("A").GetNLSParameterType()), "");
}

TEST(VELDyadContext, CopySharesLinksAndTracesNothing) {
    VELDyadContext friendOfBoth = PathContext("Friend");
    VELDyadContext source("Source", "parameter", "Path");
    source.AddFriend(&friendOfBoth);
    source.AddAssociatedContext(&friendOfBoth);
    RecordingTrace trace;
    auto copy = std::make_unique<VELDyadContext>(source);
    EXPECT_EQ(trace.TakeLines(), Lines{});

    copy->AddFriend(&source);
    EXPECT_EQ(FriendsOf(source), Lines{"Friend"});
    EXPECT_EQ(FriendsOf(*copy), (Lines{"Friend", "Source"}));
    VELDyadContext* associated = nullptr;
    copy->GetAssociatedContext(associated);
    EXPECT_EQ(associated, &friendOfBoth);
    trace.TakeLines();
    copy.reset();
    EXPECT_EQ(trace.TakeLines(), (Lines{"ENTER VELDyadContext:Destructor <Source>",
                                        "LEAVE VELDyadContext:Destructor"}));
}

TEST(VELDyadContext, AssignmentReplacesEverythingAfterTheReferencesOfTheCaller) {
    VELDyadContext linked = PathContext("Linked");
    VELDyadContext source("Source", "parameter", "File");
    source.AddFriend(&linked);
    VELDyadContext target = PathContext("Target");
    target.AddAssociatedContext(&linked);
    const VELUnicodeString& name = target.GetName();
    RecordingTrace trace;
    VELDyadContext& result = (target = source);
    EXPECT_EQ(trace.TakeLines(), Lines{});
    EXPECT_EQ(&result, &target);
    EXPECT_EQ(Text(name), "Source");
    EXPECT_EQ(Text(target.GetParameter()), "parameter");
    EXPECT_EQ(Text(target.GetParameterType()), "File");
    EXPECT_EQ(FriendsOf(target), Lines{"Linked"});
    VELDyadContext* associated = &target;
    EXPECT_EQ(target.GetAssociatedContext(associated), S_FALSE);
}

TEST(VELDyadContext, AssignmentToItselfChangesNothing) {
    VELDyadContext context("A name longer than a short text", "parameter", "Path");
    context.AddFriend(&context);
    context.AddAssociatedContext(&context);
    const VELDyadContext& same = context;
    context = same;
    EXPECT_EQ(Text(context.GetName()), "A name longer than a short text");
    EXPECT_EQ(FriendsOf(context), Lines{"A name longer than a short text"});
    VELDyadContext* associated = nullptr;
    context.GetAssociatedContext(associated);
    EXPECT_EQ(associated, &context);
}

// Without the variable TE_MULTISITE_DBCONTEXT at load there are no tables of sites.
TEST(VELDyadContext, WithoutATableOfSitesEverySiteOperationRefusesAfterItsTraceLine) {
    VELDyadContext context("Site", "KRL", "Database");
    RecordingTrace trace;
    VELListValVELUnicodeString sites = ListOf({"before"});
    VELListValVELIDyadDbProvider_var providers;
    VELIDyadDbProvider_var provider;
    EXPECT_EQ(context.AddRecordInMultiSiteHash("srv", provider), E_FAIL);
    EXPECT_EQ(context.RemoveRecordFromMultiSiteHash("srv"), E_FAIL);
    EXPECT_EQ(context.LocateInMultisiteHash("srv", provider), E_FAIL);
    context.GetListOfSites(sites);
    EXPECT_EQ(Texts(sites), Lines{"before"});
    EXPECT_EQ(context.GetListOfMultisiteDbProvider(providers), E_FAIL);
    EXPECT_EQ(context.isContainsMultisites(), 0);
    EXPECT_EQ(trace.TakeLines(), (Lines{"LOG VELDyadContext:AddRecordInMultiSiteHash",
                                        "LOG VELDyadContext:RemoveRecordFromMultiSiteHash",
                                        "LOG VELDyadContext:LocateInMultisiteHash",
                                        "LOG VELDyadContext:GetListOfSites",
                                        "LOG VELDyadContext:GetListOfMultisiteDbProvider",
                                        "LOG VELDyadContext:GetListOfSites"}));
}

} // namespace

} // namespace dyadctx::test
