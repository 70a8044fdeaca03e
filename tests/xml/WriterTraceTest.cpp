// SPDX-License-Identifier: MIT
// The trace of writing, and what becomes of it when a service fails.
#include "support/ContextFile.h"
#include "support/DomFaults.h"
#include "support/FaultyProviders.h"
#include "support/RecordingTrace.h"
#include "xml/WriterSupport.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;

Lines LinesOf(VELDyadCtxCollector& collector, const std::string& target) {
    VELUnicodeString message;
    const RecordingTrace trace;
    collector.Stream(VELUnicodeString(target.c_str()), message);
    return trace.Lines();
}

CollectorPtr DatabaseWithFriend() {
    CollectorPtr collector = EmptyCollector();
    VELDyadContext& v = Declare(*collector, "V", "p", "Database");
    VELDyadContext& a = Declare(*collector, "A", "/a", "Path");
    v.SetDyadDbProvider(ProviderWith("KRL", {"Role"}, {"r"}));
    v.AddFriend(&a);
    v.AddAssociatedContext(&a);
    return collector;
}

} // namespace

TEST(WriterTrace, NamesTheTargetAndEveryContext) {
    const TemporaryFolder folder;
    const CollectorPtr collector = DatabaseWithFriend();
    const std::string target = folder.PathOf("%s.xml");
    EXPECT_EQ(LinesOf(*collector, target),
              (Lines{"ENTER VELDyadCtxXml:Stream target=" + target,
                     "ENTER VELDyadCtxXml:StreamFriendsAndAssociated",
                     "LOG VELDyadContext:GetFriends Ctx <V> has 1 Friends",
                     "LEAVE VELDyadCtxXml:StreamFriendsAndAssociated",
                     "LOG VELDyadContext:GetListOfSites",
                     "ENTER VELDyadCtxXml:StreamFriendsAndAssociated",
                     "LOG VELDyadContext:GetFriends Ctx <A> has 0 Friends",
                     "LEAVE VELDyadCtxXml:StreamFriendsAndAssociated",
                     "LOG VELDyadContext:GetListOfSites", "LEAVE VELDyadCtxXml:Stream"}));
}

TEST(WriterTrace, WithEnvironmentAsksProviderAndAssociated) {
    const DbEnvironment db(true);
    const TemporaryFolder folder;
    const CollectorPtr collector = DatabaseWithFriend();
    const std::string target = folder.PathOf("out.xml");
    EXPECT_EQ(
        LinesOf(*collector, target),
        (Lines{"ENTER VELDyadCtxXml:Stream target=" + target,
               "ENTER VELDyadContext:GetDyadDbProvider", "LEAVE VELDyadContext:GetDyadDbProvider",
               "ENTER VELDyadCtxXml:StreamFriendsAndAssociated",
               "LOG VELDyadContext:GetFriends Ctx <V> has 1 Friends",
               "LOG VELDyadContext:GetAssociatedContext <A>",
               "LEAVE VELDyadCtxXml:StreamFriendsAndAssociated",
               "LOG VELDyadContext:GetListOfSites",
               "ENTER VELDyadCtxXml:StreamFriendsAndAssociated",
               "LOG VELDyadContext:GetFriends Ctx <A> has 0 Friends",
               "LEAVE VELDyadCtxXml:StreamFriendsAndAssociated",
               "LOG VELDyadContext:GetListOfSites", "LEAVE VELDyadCtxXml:Stream"}));
}

TEST(WriterTrace, OfADocumentThatCannotBeMadeHasNoEnd) {
    const TemporaryFolder folder;
    const CollectorPtr collector = EmptyCollector();
    const std::string target = folder.PathOf("out.xml");
    for (const DomCall call :
         {DomCall::CreateBuilder, DomCall::CreateDocument, DomCall::CreateElement}) {
        for (const DomFault fault : {DomFault::Fail, DomFault::NullHandle}) {
            const DomFaultScope scope(call, 1, fault);
            EXPECT_EQ(LinesOf(*collector, target),
                      Lines{"ENTER VELDyadCtxXml:Stream target=" + target});
        }
    }
}

TEST(WriterTrace, OfAnIncompleteDocumentHasItsEnd) {
    const TemporaryFolder folder;
    const CollectorPtr collector = DatabaseWithFriend();
    const DomFaultScope fault(DomCall::SetAttribute, 1);
    const Lines lines = LinesOf(*collector, folder.PathOf("out.xml"));
    EXPECT_EQ(lines.back(), "LEAVE VELDyadCtxXml:Stream");
    // The other context is still taken into the document.
    EXPECT_EQ(
        std::count(lines.begin(), lines.end(), "LEAVE VELDyadCtxXml:StreamFriendsAndAssociated"),
        1);
}

TEST(WriterFaults, AnyFailingCallOfTheTreeKeepsTheOldFile) {
    const DbEnvironment db(true);
    const CollectorPtr collector = DatabaseWithFriend();
    for (const DomCall call :
         {DomCall::CreateBuilder, DomCall::CreateDocument, DomCall::CreateElement,
          DomCall::SetAttribute, DomCall::AppendChild}) {
        for (const DomFault fault : {DomFault::Fail, DomFault::NullHandle}) {
            bool hasStruck = true;
            for (int number = 1; hasStruck; ++number) {
                ASSERT_LT(number, 1000);
                const DomFaultScope scope(call, number, fault);
                const Writing writing = WriteOver(*collector, "old");
                hasStruck = DomFaultScope::HasStruck();
                EXPECT_EQ(writing.result, hasStruck ? E_FAIL : S_OK);
                EXPECT_EQ(writing.text == "old", hasStruck);
            }
        }
    }
}

namespace {

struct ProviderCase {
    ProviderCall call;
    Fault fault;
};

class WriterProviderFailure : public testing::TestWithParam<ProviderCase> {};

} // namespace

TEST_P(WriterProviderFailure, KeepsTheOldFile) {
    const DbEnvironment db(true);
    FaultyProviders providers;
    const CollectorPtr collector = DatabaseWithFriend();
    providers.FailAt(GetParam().call, FaultyProviders::EveryCall, GetParam().fault);
    const Writing writing = WriteOver(*collector, "old");
    EXPECT_EQ(writing.result, E_FAIL);
    EXPECT_EQ(writing.text, "old");
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryCall, WriterProviderFailure,
    testing::Values(ProviderCase{ProviderCall::CreateFrom, {E_FAIL, false, false}},
                    ProviderCase{ProviderCall::CreateFrom, {E_FAIL, false, true}},
                    ProviderCase{ProviderCall::GetName, {-7, false, false}},
                    ProviderCase{ProviderCall::GetName, {E_FAIL, false, true}},
                    ProviderCase{ProviderCall::GetServerDetails, {-7, false, false}},
                    ProviderCase{ProviderCall::GetServerDetails, {E_FAIL, false, true}}));

TEST(WriterProviders, AreAskedForNameAndDetailsOnce) {
    const DbEnvironment db(true);
    FaultyProviders providers;
    const CollectorPtr collector = DatabaseWithFriend();
    providers.TakeCalls();
    ASSERT_EQ(Write(*collector).result, S_OK);
    EXPECT_EQ(providers.TakeCalls(),
              (Lines{"CreateFrom #2 -> #3", "#3 GetName", "#3 GetServerDetails"}));
}

TEST(WriterProviders, WhoseCopyIsNullAreWrittenWithoutConnector) {
    const DbEnvironment db(true);
    FaultyProviders providers;
    const CollectorPtr collector = EmptyCollector();
    Declare(*collector, "V", "p", "Database").SetDyadDbProvider(ProviderWith("KRL", {}, {}));
    providers.GiveNullAt(ProviderCall::CreateFrom, 2);
    const Writing writing = Write(*collector);
    EXPECT_EQ(writing.result, S_OK);
    EXPECT_EQ(writing.text,
              WrittenDocument({R"(<Context Name="V" Parameter="p" ParameterType="Database"/>)"}));
}

} // namespace dyadctx::test
