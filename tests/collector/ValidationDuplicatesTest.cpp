// SPDX-License-Identifier: MIT
#include "collector/DeclaredContexts.h"
#include "collector/detail/CollectorInternals.h"
#include "platform/VELDyadDbProviderServices.h"
#include "support/ContextFile.h"
#include "support/FaultyProviders.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>

#include <climits>

namespace dyadctx::test {
namespace {

using Lines = std::vector<std::string>;

class ValidationDuplicates : public testing::Test {
protected:
    bool FindsDatabase(int index, VELDyadContext& context, VELDyadContext** match) {
        return CollectorInternals::FindMatchingDatabase(contexts_.Collector(), index, &context,
                                                        match) == 1;
    }

    KeyCatalog catalog_;
    DbEnvironment environment_{true};
    DeclaredContexts contexts_;
};

// ---- Names ----------------------------------------------------------------------------------

TEST_F(ValidationDuplicates, ThreeNamesakesGiveOneMessageOnTheFirst) {
    VELDyadContext& first = contexts_.Declare("A");
    VELDyadContext& second = contexts_.Declare("A");
    VELDyadContext& third = contexts_.Declare("A");

    EXPECT_EQ(contexts_.CheckOne(first, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAlreadyDefined(A)\n");

    contexts_.SetMessage("");
    EXPECT_EQ(contexts_.CheckOne(second, 2), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAlreadyDefined(A)\n");

    contexts_.SetMessage("");
    EXPECT_EQ(contexts_.CheckOne(third, 3), 1);
    EXPECT_EQ(contexts_.Message(), "");
}

TEST_F(ValidationDuplicates, NamesAreComparedExactly) {
    contexts_.Declare("A");
    contexts_.Declare("a");
    contexts_.Declare("A ");
    contexts_.Declare(std::string("A\0", 2));

    EXPECT_EQ(contexts_.Check(), S_OK);
}

TEST_F(ValidationDuplicates, EmptyPositionsArePassedOver) {
    VELDyadContext& first = contexts_.Declare("A");
    contexts_.DeclareNull();
    contexts_.Declare("A");

    EXPECT_EQ(contexts_.CheckOne(first, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAlreadyDefined(A)\n");
}

TEST_F(ValidationDuplicates, ARenamedContextIsSeenUnderItsNewName) {
    VELDyadContext& first = contexts_.Declare("A");
    VELDyadContext& second = contexts_.Declare("B");
    EXPECT_EQ(contexts_.CheckOne(first, 1), 1);

    second = VELDyadContext("A", "elsewhere", "Path");

    EXPECT_EQ(contexts_.CheckOne(first, 1), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAlreadyDefined(A)\n");
}

TEST_F(ValidationDuplicates, NamesakesBeyondTheViewCount) {
    contexts_.Declare("A");
    VELDyadContext& context = contexts_.Declare("B");
    contexts_.Declare("C", "file", "File");
    contexts_.Declare("B", "file", "File");
    contexts_.Collector().SetCtxTypeList();
    contexts_.Collector().SetContextPathType();

    EXPECT_EQ(contexts_.CheckOne(context, 2), 0);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxAlreadyDefined(B)\n");
}

TEST_F(ValidationDuplicates, FindMatchingCtxLooksAfterThePosition) {
    VELDyadContext& first = contexts_.Declare("A");
    contexts_.DeclareNull();
    VELDyadContext& last = contexts_.Declare("A");
    VELDyadCtxCollector& collector = contexts_.Collector();
    const RecordingTrace trace;

    VELDyadContext* match = nullptr;
    EXPECT_EQ(collector.FindMatchingCtx(1, &first, &match), 1);
    EXPECT_EQ(match, &last);
    EXPECT_EQ(collector.FindMatchingCtx(0, &last, &match), 1);
    EXPECT_EQ(match, &first);
    EXPECT_EQ(collector.FindMatchingCtx(1, &first, nullptr), 1);
    EXPECT_EQ(trace.Lines(), Lines());
}

TEST_F(ValidationDuplicates, FindMatchingCtxLeavesTheMatchAsItWasWhenThereIsNone) {
    VELDyadContext& first = contexts_.Declare("A");
    VELDyadContext& last = contexts_.Declare("B");
    VELDyadCtxCollector& collector = contexts_.Collector();

    VELDyadContext* match = &last;
    EXPECT_EQ(collector.FindMatchingCtx(1, &first, &match), 0);
    EXPECT_EQ(collector.FindMatchingCtx(2, &first, &match), 0);
    EXPECT_EQ(collector.FindMatchingCtx(3, &first, &match), 0);
    EXPECT_EQ(collector.FindMatchingCtx(INT_MAX, &first, &match), 0);
    EXPECT_EQ(collector.FindMatchingCtx(0, nullptr, &match), 0);
    EXPECT_EQ(match, &last);
}

TEST_F(ValidationDuplicates, FindMatchingCtxBeginsAtTheFirstPositionForANegativeOne) {
    VELDyadContext& first = contexts_.Declare("A");

    VELDyadContext* match = nullptr;
    EXPECT_EQ(contexts_.Collector().FindMatchingCtx(-1, &first, &match), 1);
    EXPECT_EQ(match, &first);
    match = nullptr;
    EXPECT_EQ(contexts_.Collector().FindMatchingCtx(INT_MIN, &first, &match), 1);
    EXPECT_EQ(match, &first);
}

// ---- Databases --------------------------------------------------------------------------------

TEST_F(ValidationDuplicates, OneDatabaseInTwoContextsIsReportedOnTheFirst) {
    VELDyadContext& first = contexts_.DeclareDatabase("One", "ORB1", "s");
    contexts_.DeclareDatabase("Other", "ORB1", "t");
    VELDyadContext& last = contexts_.DeclareDatabase("Two", "ORB1", "s");

    EXPECT_EQ(contexts_.CheckOne(first, 1), 0);
    EXPECT_EQ(contexts_.CheckOne(last, 3), 1);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxDatabaseAlreadyDefined(One|Two)\n");
}

TEST_F(ValidationDuplicates, CheckReportsTheNearestContextOnTheSameDatabase) {
    contexts_.Declare("Path");
    contexts_.DeclareDatabase("One", "ORB1", "s");
    contexts_.DeclareDatabase("Two", "ORB1", "s");
    contexts_.DeclareDatabase("Three", "ORB1", "s");

    EXPECT_EQ(contexts_.Check(), E_FAIL);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxDatabaseAlreadyDefined(One|Two)\n");
}

TEST_F(ValidationDuplicates, OneDatabaseInTwoContextsIsReportedOutsideTheEnvironmentToo) {
    contexts_.DeclareDatabase("One", "ORB1", "s");
    contexts_.DeclareDatabase("Two", "ORB1", "s");
    const DbEnvironment environment(false);

    EXPECT_EQ(contexts_.Check(), E_FAIL);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxUnknownParamType(One|Database)\n"
                                   "Ctx.Check.CtxDatabaseAlreadyDefined(One|Two)\n");
}

TEST_F(ValidationDuplicates, StepProvidersAreNeverCompared) {
    contexts_.DeclareDatabase("One", "STEP", "s");
    contexts_.DeclareDatabase("Two", "STEP", "s");

    EXPECT_EQ(contexts_.Check(), S_OK);
    EXPECT_EQ(contexts_.Message(), "");
}

TEST_F(ValidationDuplicates, OnlyTheExactTypeNameIsExempt) {
    contexts_.DeclareDatabase("One", "Step", "s");
    contexts_.DeclareDatabase("Two", "Step", "s");

    EXPECT_EQ(contexts_.Check(), E_FAIL);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxDatabaseAlreadyDefined(One|Two)\n");
}

TEST_F(ValidationDuplicates, DatabasesWithoutProviderAreNotCompared) {
    contexts_.Declare("One", "p", "Database");
    contexts_.Declare("Two", "p", "Database");

    EXPECT_EQ(contexts_.Check(), S_OK);
}

TEST_F(ValidationDuplicates, ThePartnerMayBeOfAnotherType) {
    VELDyadContext& first = contexts_.DeclareDatabase("One", "ORB1", "s");
    VELDyadContext& second = contexts_.Declare("Two");
    // A path that carries a provider comes into being only by assignment from a database.
    VELDyadContext carrier("Two", "base", "Database");
    carrier.SetDyadDbProvider(MakeProvider("ORB1", "s"));
    second = carrier;

    EXPECT_EQ(contexts_.CheckOne(first, 1), 0);
    EXPECT_EQ(contexts_.Check(), E_FAIL);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxDatabaseAlreadyDefined(One|Two)\n"
                                   "Ctx.Check.CtxDatabaseAlreadyDefined(One|Two)\n");
}

TEST_F(ValidationDuplicates, TheSearchTracesAMatchWithTheCallsItMakes) {
    VELDyadContext& first = contexts_.DeclareDatabase("One", "ORB1", "s");
    VELDyadContext& second = contexts_.DeclareDatabase("Two", "ORB1", "s");
    VELDyadContext* match = nullptr;
    const RecordingTrace trace;

    EXPECT_TRUE(FindsDatabase(1, first, &match));

    EXPECT_EQ(match, &second);
    EXPECT_EQ(
        trace.Lines(),
        (Lines{"ENTER VELDyadCtxCollector:FindMatchingDatabase <One>",
               "ENTER VELDyadContext:GetDyadDbProvider", "LEAVE VELDyadContext:GetDyadDbProvider",
               "ENTER VELDyadContext:GetDyadDbProvider", "LEAVE VELDyadContext:GetDyadDbProvider",
               "WARNING VELDyadCtxCollector:FindMatchingDatabase : 2 Contexts similar One & "
               "Two",
               "LEAVE VELDyadCtxCollector:FindMatchingDatabase <One>"}));
}

TEST_F(ValidationDuplicates, TheSearchTracesItsEndWithoutMatch) {
    VELDyadContext& first = contexts_.DeclareDatabase("One", "ORB1", "s");
    contexts_.Declare("Path");
    VELDyadContext* match = &first;
    const RecordingTrace trace;

    EXPECT_FALSE(FindsDatabase(1, first, &match));

    EXPECT_EQ(match, &first);
    EXPECT_EQ(trace.Lines(), (Lines{"ENTER VELDyadCtxCollector:FindMatchingDatabase <One>",
                                    "ENTER VELDyadContext:GetDyadDbProvider",
                                    "LEAVE VELDyadContext:GetDyadDbProvider",
                                    "LEAVE VELDyadCtxCollector:FindMatchingDatabase <One>"}));
}

TEST_F(ValidationDuplicates, TheSearchForAStepProviderSaysThatItDoesNotTest) {
    VELDyadContext& first = contexts_.DeclareDatabase("One", "STEP", "s");
    contexts_.DeclareDatabase("Two", "STEP", "s");
    const RecordingTrace trace;

    EXPECT_FALSE(FindsDatabase(1, first, nullptr));

    EXPECT_EQ(
        trace.Lines(),
        (Lines{"ENTER VELDyadCtxCollector:FindMatchingDatabase <One>",
               "ENTER VELDyadContext:GetDyadDbProvider", "LEAVE VELDyadContext:GetDyadDbProvider",
               "LEAVE VELDyadCtxCollector:FindMatchingDatabase NO test on provider <STEP> "}));
}

TEST_F(ValidationDuplicates, TheSearchIsSilentWhereItDoesNotBegin) {
    VELDyadContext& path = contexts_.Declare("Path");
    VELDyadContext& last = contexts_.DeclareDatabase("One", "ORB1", "s");
    const RecordingTrace trace;

    EXPECT_FALSE(FindsDatabase(1, path, nullptr));
    EXPECT_FALSE(FindsDatabase(2, last, nullptr));
    EXPECT_EQ(CollectorInternals::FindMatchingDatabase(contexts_.Collector(), 1, nullptr, nullptr),
              0);

    EXPECT_EQ(trace.Lines(), Lines());
}

TEST_F(ValidationDuplicates, TheSearchEndsWithoutLeavingWhenThereIsNoProvider) {
    VELDyadContext& first = contexts_.Declare("One", "p", "Database");
    contexts_.Declare("Two", "p", "Database");
    const RecordingTrace trace;

    EXPECT_FALSE(FindsDatabase(1, first, nullptr));

    EXPECT_EQ(trace.Lines(), (Lines{"ENTER VELDyadCtxCollector:FindMatchingDatabase <One>"}));
}

TEST_F(ValidationDuplicates, CheckWithTheTraceOnWritesEverySearch) {
    contexts_.DeclareDatabase("One", "ORB1", "s");
    contexts_.DeclareDatabase("Two", "ORB1", "s");
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.Check(), E_FAIL);

    EXPECT_EQ(trace.LinesWith("FindMatchingDatabase"),
              (Lines{"ENTER VELDyadCtxCollector:FindMatchingDatabase <One>",
                     "WARNING VELDyadCtxCollector:FindMatchingDatabase : 2 Contexts similar One & "
                     "Two",
                     "LEAVE VELDyadCtxCollector:FindMatchingDatabase <One>"}));
    EXPECT_EQ(trace.LinesWith("GetDyadDbProvider").size(), 4U);
}

// ---- A host's own providers -------------------------------------------------------------------

TEST_F(ValidationDuplicates, AHostsProvidersAreAskedInTheDirectionOfTheSearch) {
    FaultyProviders host;
    contexts_.DeclareDatabase("One", "X");
    contexts_.DeclareDatabase("Two", "Y");
    host.AnswerSameness("Y", "X", true);
    EXPECT_EQ(contexts_.Check(), S_OK);

    host.AnswerSameness("X", "Y", true);
    EXPECT_EQ(contexts_.Check(), E_FAIL);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxDatabaseAlreadyDefined(One|Two)\n");
}

TEST_F(ValidationDuplicates, AHostsProvidersAreCalledForEveryPair) {
    FaultyProviders host;
    contexts_.DeclareDatabase("One", "X");
    contexts_.Declare("Path");
    contexts_.DeclareDatabase("Two", "Y");
    contexts_.DeclareDatabase("Three", "Z");
    host.TakeCalls();

    EXPECT_EQ(contexts_.Check(), S_OK);

    // The kept providers are the second, fourth and sixth one made.
    EXPECT_EQ(host.TakeCalls(),
              (Lines{"CreateFrom #2 -> #7", "#7 GetName", "CreateFrom #4 -> #8", "#7 IsSame #8",
                     "CreateFrom #6 -> #9", "#7 IsSame #9", "CreateFrom #4 -> #10", "#10 GetName",
                     "CreateFrom #6 -> #11", "#10 IsSame #11"}));
}

TEST_F(ValidationDuplicates, OneProviderOfAHostMakesTheCheckAskAllOfThem) {
    FaultyProviders host;
    contexts_.DeclareDatabase("One", "X", "s");
    VELDyadDbProviderFactory* factory = VELDyadDbProviderServices::SetFactory(nullptr);
    contexts_.DeclareDatabase("Two", "X", "s");
    host.TakeCalls();

    const VELResult result = contexts_.Check();
    VELDyadDbProviderServices::SetFactory(factory);

    // The built-in factory copies the host's provider through its interface.
    EXPECT_EQ(host.TakeCalls(), (Lines{"#2 GetName", "#2 GetServerDetails"}));
    EXPECT_EQ(result, E_FAIL);
    EXPECT_EQ(contexts_.Message(), "Ctx.Check.CtxDatabaseAlreadyDefined(One|Two)\n");
}

TEST_F(ValidationDuplicates, AProviderThatCannotBeHadIsNotCompared) {
    FaultyProviders host;
    VELDyadContext& first = contexts_.DeclareDatabase("One", "X");
    contexts_.DeclareDatabase("Two", "X");
    contexts_.DeclareDatabase("Three", "X");
    host.FailAt(ProviderCall::CreateFrom, host.CountOf(ProviderCall::CreateFrom) + 2);
    VELDyadContext* match = nullptr;

    EXPECT_TRUE(FindsDatabase(1, first, &match));
    EXPECT_EQ(Text(match->GetName()), "Three");
}

TEST_F(ValidationDuplicates, AnEmptyProviderIsNotCompared) {
    FaultyProviders host;
    VELDyadContext& first = contexts_.DeclareDatabase("One", "X");
    contexts_.DeclareDatabase("Two", "X");
    contexts_.DeclareDatabase("Three", "X");
    host.GiveNullAt(ProviderCall::CreateFrom, host.CountOf(ProviderCall::CreateFrom) + 2);
    VELDyadContext* match = nullptr;

    EXPECT_TRUE(FindsDatabase(1, first, &match));
    EXPECT_EQ(Text(match->GetName()), "Three");
}

TEST_F(ValidationDuplicates, AFailingProviderOfTheContextEndsTheSearchWithoutMessage) {
    FaultyProviders host;
    VELDyadContext& first = contexts_.DeclareDatabase("One", "X");
    contexts_.DeclareDatabase("Two", "X");
    host.FailAt(ProviderCall::CreateFrom, host.CountOf(ProviderCall::CreateFrom) + 1);
    const RecordingTrace trace;

    EXPECT_EQ(contexts_.CheckOne(first, 1), 1);

    EXPECT_EQ(contexts_.Message(), "");
    EXPECT_EQ(trace.LinesWith("FindMatchingDatabase"),
              (Lines{"ENTER VELDyadCtxCollector:FindMatchingDatabase <One>"}));
}

TEST_F(ValidationDuplicates, AProviderWithoutTypeNameIsComparedLikeAnyOther) {
    FaultyProviders host;
    VELDyadContext& first = contexts_.DeclareDatabase("One", "STEP");
    contexts_.DeclareDatabase("Two", "STEP");
    host.FailAt(ProviderCall::GetName, FaultyProviders::EveryCall);
    VELDyadContext* match = nullptr;

    EXPECT_TRUE(FindsDatabase(1, first, &match));
    EXPECT_EQ(Text(match->GetName()), "Two");
}

TEST_F(ValidationDuplicates, AComparisonThatFailsOrThrowsMeansNo) {
    FaultyProviders host;
    VELDyadContext& first = contexts_.DeclareDatabase("One", "X");
    contexts_.DeclareDatabase("Two", "X");
    contexts_.DeclareDatabase("Three", "X");
    contexts_.DeclareDatabase("Four", "X");
    host.FailAt(ProviderCall::IsSame, 1, {E_FAIL, true, false});
    host.FailAt(ProviderCall::IsSame, 2, {E_FAIL, false, true});
    VELDyadContext* match = nullptr;

    EXPECT_TRUE(FindsDatabase(1, first, &match));
    EXPECT_EQ(Text(match->GetName()), "Four");
}

} // namespace
} // namespace dyadctx::test
