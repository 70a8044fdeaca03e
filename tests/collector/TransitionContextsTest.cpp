// SPDX-License-Identifier: MIT
#include "collector/VELDyadCtxCollector.h"

#include "platform/VELDbContextEnvironment.h"
#include "support/ContextFile.h"
#include "support/FaultyProviders.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>
#include <memory>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;

const Lines TransitionNames{"PostConversionContext", "PCAsNewRevisionContext",
                            "PCAsNewBranchContext"};

class TransitionContextsTest : public testing::Test {
protected:
    TransitionContextsTest() {
        auto* path = new VELDyadContext("Path", "/data", "Path");
        collector->AddContext(path, nullptr, 0);
    }
    ~TransitionContextsTest() override {
        collector.reset();
        EXPECT_EQ(providers.Alive(), 0);
    }
    TransitionContextsTest(const TransitionContextsTest&) = delete;
    TransitionContextsTest& operator=(const TransitionContextsTest&) = delete;

    VELResult AddAll() {
        VELUnicodeString message("before");
        VELDyadCtxCollector* pointer = collector.get();
        const VELResult result = VELDyadCtxCollector::AddCADTransitionContext(pointer, message);
        EXPECT_EQ(Text(message), "before");
        EXPECT_EQ(pointer, collector.get());
        return result;
    }
    // The names after the context that was there before.
    Lines Added() {
        Lines names = ViewOf(*collector);
        EXPECT_EQ(names.front(), "Path");
        names.erase(names.begin());
        return names;
    }

    FaultyProviders providers;
    std::unique_ptr<VELDyadCtxCollector> collector{
        VELDyadCtxCollector::CreateCollectorFromScratch()};
};

TEST_F(TransitionContextsTest, FollowTheContextsThereAre) {
    const DbEnvironment on(true);
    EXPECT_EQ(AddAll(), S_OK);
    EXPECT_EQ(Added(), TransitionNames);
    for (int pos = 2; pos <= 4; ++pos) {
        VELDyadContext* context = nullptr;
        ASSERT_EQ(collector->GetCtxAtIndex(pos, context), S_OK);
        EXPECT_EQ(Text(context->GetParameter()), "ZENTROVA Platform");
        EXPECT_EQ(Text(context->GetParameterType()), "Database");
    }
    collector->SetContextDatabaseType({});
    EXPECT_EQ(Added(), TransitionNames);
}

TEST_F(TransitionContextsTest, KeepAProviderMadeFromTheNewOne) {
    const DbEnvironment on(true);
    AddAll();
    const Lines expected = {"Create -> #1",
                            "#1 SetConnectorName ORB1",
                            "#1 SetServerDetails 0/0",
                            "CreateFrom #1 -> #2",
                            "Create -> #3",
                            "#3 SetConnectorName ORB1",
                            "#3 SetServerDetails 0/0",
                            "CreateFrom #3 -> #4",
                            "Create -> #5",
                            "#5 SetConnectorName ORB1",
                            "#5 SetServerDetails 0/0",
                            "CreateFrom #5 -> #6"};
    EXPECT_EQ(providers.TakeCalls(), expected);
    EXPECT_EQ(providers.Alive(), 3);
}

TEST_F(TransitionContextsTest, OutsideTheDbEnvironmentAreMadeAndDeletedAgain) {
    RecordingTrace trace;
    EXPECT_EQ(AddAll(), S_OK);
    EXPECT_EQ(Added(), Lines{});
    EXPECT_EQ(providers.TakeCalls(), Lines{});
    const std::string built = "ENTER VELDyadContext:Constructor Ctx with Name=";
    const std::string type = " of Type ZENTROVA Platform-Database";
    Lines expected;
    for (const std::string& name : TransitionNames) {
        for (const std::string& line :
             {built + name + type, std::string("LEAVE VELDyadContext:Constructor"),
              "ENTER VELDyadContext:Destructor <" + name + ">",
              std::string("LEAVE VELDyadContext:Destructor")})
            expected.push_back(line);
    }
    EXPECT_EQ(trace.TakeLines(), expected);
    // The lists of the views were filled all the same.
    EXPECT_EQ(collector->GetNbPathCtxs(), 1);
}

TEST_F(TransitionContextsTest, TraceNoLineOfTheirOwn) {
    const DbEnvironment on(true);
    RecordingTrace trace;
    AddAll();
    EXPECT_EQ(trace.LinesWith("VELDyadCtxCollector"), Lines{});
    EXPECT_EQ(trace.LinesWith("SetDyadDbProvider").size(), 6U);
    EXPECT_EQ(trace.Lines().size(), 12U);
}

TEST_F(TransitionContextsTest, AreAddedAgainAtEveryCall) {
    const DbEnvironment on(true);
    collector->SetCtxTypeList();
    AddAll();
    AddAll();
    EXPECT_EQ(collector->GetAllNbCtxs(), 7);
    EXPECT_EQ(collector->GetNbPathCtxs(), 3);
    VELDyadContext* found = nullptr;
    int index = 0;
    EXPECT_EQ(collector->GetCtxFromName("PostConversionContext", found, &index), S_OK);
    EXPECT_EQ(index, 2);
    collector->SetContextDatabaseType({});
    EXPECT_EQ(collector->GetNbCtxs(), 1 + 4 + 7);
}

TEST_F(TransitionContextsTest, AreInTheDatabaseViewAlsoWhenItWasNarrowed) {
    const DbEnvironment on(true);
    collector->SetCtxTypeList();
    collector->SetContextDatabaseType(ListOf({"KRL"}));
    AddAll();
    Lines expected{"Path"};
    expected.insert(expected.end(), TransitionNames.begin(), TransitionNames.end());
    EXPECT_EQ(Added(), expected);
    collector->SetContextDatabaseType(ListOf({"KRL"}));
    EXPECT_EQ(Added(), expected);
}

TEST_F(TransitionContextsTest, WhereAStepFailsOnlyThatContextIsMissing) {
    struct Case {
        ProviderCall call;
        Fault fault;
    };
    const Case cases[] = {{ProviderCall::Create, {}},
                          {ProviderCall::Create, {-2, true, false}},
                          {ProviderCall::Create, {S_OK, false, false}},
                          {ProviderCall::Create, {S_OK, false, true}},
                          {ProviderCall::SetConnectorName, {}},
                          {ProviderCall::SetConnectorName, {S_OK, false, true}},
                          {ProviderCall::SetServerDetails, {}},
                          {ProviderCall::SetServerDetails, {S_OK, false, true}},
                          {ProviderCall::CreateFrom, {}},
                          {ProviderCall::CreateFrom, {S_OK, false, true}}};
    const DbEnvironment on(true);
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const int before = collector->GetAllNbCtxs();
        providers.FailAt(cases[i].call, providers.CountOf(cases[i].call) + 2, cases[i].fault);
        EXPECT_EQ(AddAll(), S_OK) << i;
        providers.ForgetFaults();
        Lines names = ViewOf(*collector);
        names.erase(names.begin(), names.begin() + before);
        EXPECT_EQ(names, (Lines{"PostConversionContext", "PCAsNewBranchContext"})) << i;
    }
}

TEST_F(TransitionContextsTest, WhereEveryStepFailsTheListsAreStillFilled) {
    const DbEnvironment on(true);
    providers.FailAt(ProviderCall::Create, FaultyProviders::EveryCall);
    EXPECT_EQ(AddAll(), S_OK);
    EXPECT_EQ(Added(), Lines{});
    EXPECT_EQ(collector->GetNbPathCtxs(), 1);
}

TEST_F(TransitionContextsTest, ARefusedConnectorNameStillLetsTheDetailsBeSetButNothingMore) {
    const DbEnvironment on(true);
    providers.FailAt(ProviderCall::SetConnectorName, FaultyProviders::EveryCall);
    providers.FailAt(ProviderCall::SetServerDetails, FaultyProviders::EveryCall);
    AddAll();
    EXPECT_EQ(providers.TakeCalls(),
              (Lines{"Create -> #1", "#1 SetConnectorName ORB1 !", "#1 SetServerDetails 0/0 !",
                     "Create -> #2", "#2 SetConnectorName ORB1 !", "#2 SetServerDetails 0/0 !",
                     "Create -> #3", "#3 SetConnectorName ORB1 !", "#3 SetServerDetails 0/0 !"}));
    EXPECT_EQ(Added(), Lines{});
}

// On for the first question about each context, off for the second.
class EnvironmentThatGoesOff : public VELDbContextEnvironmentSource {
public:
    EnvironmentThatGoesOff() { SetDbContextEnvironmentSource(this); }
    ~EnvironmentThatGoesOff() override { SetDbContextEnvironmentSource(nullptr); }
    EnvironmentThatGoesOff(const EnvironmentThatGoesOff&) = delete;
    EnvironmentThatGoesOff& operator=(const EnvironmentThatGoesOff&) = delete;
    bool IsActive() noexcept override { return ++asked_ % 2 == 1; }

private:
    int asked_ = 0;
};

TEST_F(TransitionContextsTest, AreDeletedWhenTheEnvironmentGoesOffMeanwhile) {
    RecordingTrace trace;
    {
        const EnvironmentThatGoesOff environment;
        EXPECT_EQ(AddAll(), S_OK);
    }
    EXPECT_EQ(Added(), Lines{});
    EXPECT_EQ(trace.LinesWith("ENTER VELDyadContext:Destructor").size(), 3U);
    EXPECT_EQ(providers.CountOf(ProviderCall::CreateFrom), 3);
}

} // namespace

} // namespace dyadctx::test
