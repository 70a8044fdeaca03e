// SPDX-License-Identifier: MIT
#include "collector/VELDyadCtxCollector.h"

#include "support/ContextFile.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>
#include <memory>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;

class ScenariosTest : public testing::Test {
protected:
    void Add(const char* channel, const char* context, const char* profile, const char* id,
             const char* option = "", const char* value = "") {
        EXPECT_EQ(collector->AddScenario(channel, context, profile, id, option, value), S_OK);
    }
    void AddTo(const char* channel, const char* profile, const char* id, const char* option = "",
               const char* value = "") {
        Add(channel, channel, profile, id, option, value);
    }
    Lines Channels(const Lines& ids) {
        EXPECT_EQ(collector->GetExchangeChannelfromScenario(ListOf(ids), first, second), S_OK);
        return Texts(first);
    }
    Lines Profiles(const char* channel, const Lines& ids) {
        EXPECT_EQ(collector->GetProfilefromExchangeChannel(channel, ListOf(ids), first, second),
                  S_OK);
        return Texts(second);
    }
    Lines Options(const char* channel, const char* profile) {
        EXPECT_EQ(collector->GetOptionsfromExchangeProfile(channel, profile, first, second), S_OK);
        return Texts(first);
    }

    VELListValVELUnicodeString first = ListOf({"before"});
    VELListValVELUnicodeString second = ListOf({"before", "before"});
    std::unique_ptr<VELDyadCtxCollector> collector{
        VELDyadCtxCollector::CreateCollectorFromScratch()};
};

TEST_F(ScenariosTest, TracesEachRowWithItsKey) {
    RecordingTrace trace;
    Add("Ch%s", "Context", "Profile", "Id", "Option", "Value");
    Add("Ch%s", "Context", "Profile", "Id", "Option", "Value");
    Add("", "", "", "", "", "");
    EXPECT_EQ(trace.TakeLines(), (Lines{"LOG VELDyadCtxCollector:AddScenario n 1 with UK "
                                        "<Ch%s|Id|Profile|Option|Value>",
                                        "LOG VELDyadCtxCollector:AddScenario n 2 with UK "
                                        "<Ch%s|Id|Profile|Option|Value>",
                                        "LOG VELDyadCtxCollector:AddScenario n 3 with UK <||||>"}));
}

TEST_F(ScenariosTest, AnScenarioOfThreeOptionsIsOneProfileAndThreeOptions) {
    AddTo("Send", "Profile", "1", "b", "2");
    AddTo("Send", "Profile", "1", "a", "1");
    AddTo("Send", "Profile", "1", "b", "2");
    EXPECT_EQ(Channels({"1"}), Lines{"Send"});
    EXPECT_EQ(Profiles("Send", {"1"}), Lines{"Profile"});
    EXPECT_EQ(Options("Send", "Profile"), (Lines{"b", "a", "b"}));
    EXPECT_EQ(Texts(second), (Lines{"2", "1", "2"}));
}

TEST_F(ScenariosTest, AnScenarioWithoutOptionHasAChannelAndAProfile) {
    AddTo("Send", "Profile", "1");
    EXPECT_EQ(Channels({"1"}), Lines{"Send"});
    EXPECT_EQ(Profiles("Send", {"1"}), Lines{"Profile"});
    EXPECT_EQ(Options("Send", "Profile"), Lines{});
}

TEST_F(ScenariosTest, ListsEachChannelOnceInTheOrderOfTheRows) {
    Add("Send", "First", "P", "2");
    Add("Receive", "Receive", "P", "9");
    Add("Send", "Second", "Q", "1");
    Add("Mail", "Mail", "P", "1");
    EXPECT_EQ(Channels({"1", "2"}), (Lines{"Send", "Mail"}));
    EXPECT_EQ(Texts(second), (Lines{"First", "Mail"}));
    EXPECT_EQ(Channels({"1"}), (Lines{"Send", "Mail"}));
    EXPECT_EQ(Texts(second), (Lines{"Second", "Mail"}));
}

TEST_F(ScenariosTest, ProfilesAndOptionsBelongToTheChannelContext) {
    Add("Channel", "Context", "P", "1", "o", "v");
    EXPECT_EQ(Channels({"1"}), Lines{"Channel"});
    EXPECT_EQ(Profiles("Channel", {"1"}), Lines{});
    EXPECT_EQ(Options("Channel", "P"), Lines{});
    EXPECT_EQ(Profiles("Context", {"1"}), Lines{"P"});
    EXPECT_EQ(Options("Context", "P"), Lines{"o"});
}

TEST_F(ScenariosTest, ListsEachProfileOnceWithItsFirstScenario) {
    AddTo("Send", "P", "2");
    AddTo("Send", "P", "1");
    AddTo("Send", "", "3");
    AddTo("Send", "", "1");
    AddTo("Mail", "Q", "1");
    AddTo("Send", "Q", "1");
    EXPECT_EQ(Profiles("Send", {"1", "2", "3"}), (Lines{"P", "", "Q"}));
    EXPECT_EQ(Texts(first), (Lines{"2", "3", "1"}));
    EXPECT_EQ(Profiles("Send", {"1"}), (Lines{"P", "", "Q"}));
    EXPECT_EQ(Texts(first), (Lines{"1", "1", "1"}));
}

TEST_F(ScenariosTest, EmptyTextsAreValuesLikeOthersExceptForTheNameOfAnOption) {
    Add("", "", "", "", "", "value of none");
    Add("", "", "", "", "named", "");
    EXPECT_EQ(Channels({""}), Lines{""});
    EXPECT_EQ(Profiles("", {""}), Lines{""});
    EXPECT_EQ(Options("", ""), Lines{"named"});
    EXPECT_EQ(Texts(second), Lines{""});
}

TEST_F(ScenariosTest, ComparesExactly) {
    AddTo("Send", "P", "a", "o", "v");
    EXPECT_EQ(Channels({"A", "a ", ""}), Lines{});
    EXPECT_EQ(Profiles("send", {"a"}), Lines{});
    EXPECT_EQ(Options("Send", "p"), Lines{});
}

TEST_F(ScenariosTest, EmptiesTheListsAlsoWhenNothingMatches) {
    AddTo("Send", "P", "1");
    for (int query = 0; query < 3; ++query) {
        first = ListOf({"before"});
        second = ListOf({"before"});
        const Lines found = query == 0   ? Channels({"none"})
                            : query == 1 ? Profiles("none", {"1"})
                                         : Options("none", "P");
        EXPECT_EQ(found, Lines{});
        EXPECT_EQ(first.Size() + second.Size(), 0);
    }
}

TEST_F(ScenariosTest, RowsAddedBetweenQueriesAreFound) {
    AddTo("Send", "P", "1", "a", "1");
    EXPECT_EQ(Options("Send", "P"), Lines{"a"});
    EXPECT_EQ(Profiles("Send", {"1"}), Lines{"P"});
    AddTo("Send", "P", "1", "b", "2");
    AddTo("Send", "Q", "1");
    EXPECT_EQ(Options("Send", "P"), (Lines{"a", "b"}));
    EXPECT_EQ(Profiles("Send", {"1"}), (Lines{"P", "Q"}));
}

TEST_F(ScenariosTest, AListOfScenariosThatIsAlsoAnAnswerIsEmptiedFirst) {
    AddTo("Send", "P", "1");
    VELListValVELUnicodeString both = ListOf({"1"});
    EXPECT_EQ(collector->GetExchangeChannelfromScenario(both, both, second), S_OK);
    EXPECT_EQ(both.Size(), 0);
    both = ListOf({"1"});
    EXPECT_EQ(collector->GetProfilefromExchangeChannel("Send", both, both, second), S_OK);
    EXPECT_EQ(both.Size(), 0);
}

TEST_F(ScenariosTest, OneListForBothAnswersListsNoChannelItAlreadyHolds) {
    Add("A", "B", "Profile", "1");
    Add("B", "C", "Profile", "1");
    Add("D", "D", "Profile", "1");
    EXPECT_EQ(collector->GetExchangeChannelfromScenario(ListOf({"1"}), first, first), S_OK);
    EXPECT_EQ(Texts(first), (Lines{"A", "B", "D", "D"}));
}

TEST_F(ScenariosTest, OneListForBothAnswersListsNoProfileItAlreadyHolds) {
    AddTo("Send", "Profile", "1");
    AddTo("Send", "1", "2");
    AddTo("Send", "2", "2");
    AddTo("Send", "Profile", "3");
    EXPECT_EQ(
        collector->GetProfilefromExchangeChannel("Send", ListOf({"1", "2", "3"}), first, first),
        S_OK);
    EXPECT_EQ(Texts(first), (Lines{"1", "Profile", "2", "2"}));
}

TEST_F(ScenariosTest, AChannelOrProfileMayBeAnElementOfAnAnswer) {
    AddTo("A channel with a long name", "A profile with a long name", "1", "o", "v");
    first = ListOf({"A channel with a long name"});
    second = ListOf({"A profile with a long name"});
    EXPECT_EQ(collector->GetOptionsfromExchangeProfile(first[1], second[1], first, second), S_OK);
    EXPECT_EQ(Texts(first), Lines{"o"});
    first = ListOf({"A channel with a long name"});
    EXPECT_EQ(collector->GetProfilefromExchangeChannel(first[1], ListOf({"1"}), first, second),
              S_OK);
    EXPECT_EQ(Texts(second), Lines{"A profile with a long name"});
}

TEST_F(ScenariosTest, TracesTheNumberOfAnswers) {
    AddTo("Send", "P", "1");
    AddTo("Mail", "P", "1");
    RecordingTrace trace;
    Channels({"1"});
    Channels({"none"});
    Profiles("Send", {"1"});
    EXPECT_EQ(trace.TakeLines(),
              (Lines{"LOG VELDyadCtxCollector:GetExchangeChannelfromScenario find 2 Channel",
                     "LOG VELDyadCtxCollector:GetExchangeChannelfromScenario find 0 Channel",
                     "LOG VELDyadCtxCollector:GetProfilefromExchangeChannel find 1 Profile"}));
}

TEST_F(ScenariosTest, TracesEveryRowBeforeTheNumberOfOptions) {
    RecordingTrace trace;
    Options("Send", "P");
    EXPECT_EQ(trace.TakeLines(),
              Lines{"LOG VELDyadCtxCollector:GetOptionsfromExchangeProfile find 0 Profile"});
    Add("Channel", "Send", "P", "1", "o", "v");
    Add("Channel", "Mail", "Q", "1", "o", "v");
    trace.TakeLines();
    EXPECT_EQ(Options("Send", "P"), Lines{"o"});
    EXPECT_EQ(trace.TakeLines(),
              (Lines{"LOG VELDyadCtxCollector:GetOptionsfromExchangeProfile Check Profile Send-P",
                     "LOG VELDyadCtxCollector:GetOptionsfromExchangeProfile Check Profile Mail-Q",
                     "LOG VELDyadCtxCollector:GetOptionsfromExchangeProfile find 1 Profile"}));
}

TEST_F(ScenariosTest, RowsOutliveTheContextTheyNameAndTheView) {
    const DbEnvironment on(true);
    auto* context = new VELDyadContext("Send", "", "Path");
    collector->AddContext(context, nullptr, 0);
    AddTo("Send", "P", "1", "o", "v");
    Options("Send", "P");
    collector->DeleteContext("Send");
    collector->SetContextFileType();
    EXPECT_EQ(Channels({"1"}), Lines{"Send"});
    EXPECT_EQ(Options("Send", "P"), Lines{"o"});
}

TEST_F(ScenariosTest, CopiesTakeTheRowsAlong) {
    AddTo("Send", "P", "1", "o", "v");
    Options("Send", "P");
    VELDyadCtxCollector copy(*collector);
    copy.AddScenario("Send", "Send", "P", "1", "p", "w");
    EXPECT_EQ(Options("Send", "P"), Lines{"o"});
    copy.GetOptionsfromExchangeProfile("Send", "P", first, second);
    EXPECT_EQ(Texts(first), (Lines{"o", "p"}));
}

} // namespace

} // namespace dyadctx::test
