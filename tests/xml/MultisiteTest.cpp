// SPDX-License-Identifier: MIT
// Sites, read and written. These tests run in a process of their own whose environment has
// TE_MULTISITE_DBCONTEXT, empty.
#include "support/ContextFile.h"
#include "support/FailingAllocation.h"
#include "support/FaultyProviders.h"
#include "support/RecordingTrace.h"
#include "trace/detail/ProcessSettings.h"
#include "xml/ReaderSupport.h"
#include "xml/RoundTripSupport.h"
#include "xml/WriterSupport.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Names = std::vector<std::string>;

class MultisiteReader : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(MultisiteFlag()) << "needs TE_MULTISITE_DBCONTEXT"; }

    const DbEnvironment db_{true};
};

class MultisiteWriter : public MultisiteReader {};

std::string V(const std::string& server, const std::string& inner = "") {
    return Database("V", "KRL", server, "r", inner);
}

Names SitesAt(const Reading& reading, int position) {
    return SitesOf(DeclaredAt(reading, position));
}

const std::string OwnLine =
    R"(<Context Name="V" Parameter="p" ParameterType="Database" ConnectorName="KRL" http="" )"
    R"(Role="r" ServerName="s1" ServerPort="" URI="" SiteId=""/>)";
const std::string SecondLine =
    R"(<Context Name="V" Parameter="p" ParameterType="Database" ConnectorName="KRL" http="" )"
    R"(Role="r" ServerName="s2" ServerPort="" URI="" SiteId=""/>)";

} // namespace

TEST_F(MultisiteReader, FirstDatabaseContextIsASiteOfItself) {
    EXPECT_EQ(SitesAt(ReadContexts(V("s1")), 1), Names{"s1:r"});
}

TEST_F(MultisiteReader, RepeatedContextAddsItsSite) {
    const Reading reading = ReadContexts(V("s1") + Path("P") + V("s2"));
    EXPECT_EQ(DeclaredOf(reading), (Names{"V", "P"}));
    EXPECT_EQ(SitesAt(reading, 1), (Names{"s1:r", "s2:r"}));
    EXPECT_EQ(DeclaredAt(reading, 1).isContainsMultisites(), 1);
}

TEST_F(MultisiteReader, SameSiteAgainIsKeptOnceWithItsFirstProvider) {
    const std::string again = "<Context Name='V' Parameter='p' ParameterType='Database' "
                              "ConnectorName='KRL' ServerName='s1' Role='r' URI='later'/>";
    const Reading reading = ReadContexts(V("s1") + again);
    ASSERT_EQ(SitesAt(reading, 1), Names{"s1:r"});
    VELIDyadDbProvider_var provider;
    DeclaredAt(reading, 1).LocateInMultisiteHash(VELUnicodeString("s1:r"), provider);
    EXPECT_EQ(ProviderOf(provider),
              (Names{"KRL", "http=", "Role=r", "ServerName=s1", "ServerPort=", "URI=", "SiteId="}));
}

TEST_F(MultisiteReader, ConnectorWithoutRuleHasOneSite) {
    const Reading reading =
        ReadContexts(Database("V", "ORB1", "s1", "r") + Database("V", "ORB1", "s2", "r"));
    EXPECT_EQ(SitesAt(reading, 1), Names{""});
}

TEST_F(MultisiteReader, SiteKeyComesFromTheElementThatRepeats) {
    const Reading reading = ReadContexts(V("s1") + Database("V", "HWB", "h", "r"));
    EXPECT_EQ(SitesAt(reading, 1), (Names{"s1:r", "h"}));
}

TEST_F(MultisiteReader, DatabaseFriendAddsItsSiteToTheDeclaredContextBeforeIt) {
    const std::string owner = Path("A", Friends(V("s2")));
    const Reading before = ReadContexts(V("s1") + owner);
    EXPECT_EQ(SitesAt(before, 1), (Names{"s1:r", "s2:r"}));
    VELListPtrVELDyadContext friends;
    ASSERT_EQ(DeclaredAt(before, 2).GetFriends(friends), 1);
    EXPECT_EQ(SitesOf(*friends[1]), Names());

    const Reading after = ReadContexts(owner + V("s1"));
    EXPECT_EQ(SitesAt(after, 2), Names{"s1:r"});
}

TEST_F(MultisiteReader, DatabaseFriendOfAPathNameIsNoSite) {
    const Reading reading = ReadContexts(Path("V") + Path("A", Friends(V("s2"))));
    EXPECT_EQ(reading.result, S_OK);
    EXPECT_EQ(SitesAt(reading, 1), Names());
}

TEST_F(MultisiteReader, DatabaseAssociatedAddsNoSite) {
    const Reading reading = ReadContexts(V("s1") + Path("A", Associated(V("s2"))));
    EXPECT_EQ(SitesAt(reading, 1), Names{"s1:r"});
    EXPECT_EQ(AssociatedAt(reading, 2), "V");
}

TEST_F(MultisiteReader, SiteHoldsTheProviderMadeForItsElement) {
    FaultyProviders providers;
    const Reading reading = ReadContexts(V("s1"));
    VELIDyadDbProvider_var provider;
    ASSERT_EQ(DeclaredAt(reading, 1).LocateInMultisiteHash(VELUnicodeString("s1:r"), provider),
              S_OK);
    providers.TakeCalls();
    VELUnicodeString name;
    provider->GetName(name);
    // The context itself keeps the second provider, made from the first.
    EXPECT_EQ(providers.TakeCalls(), Names{"#1 GetName"});
}

TEST_F(MultisiteReader, ReadsTheSameWithTrace) {
    const RecordingTrace trace;
    EXPECT_EQ(SitesAt(ReadContexts(V("s1") + V("s2")), 1), (Names{"s1:r", "s2:r"}));
    EXPECT_EQ(trace.LinesWith("AddRecordInMultiSiteHash").size(), 2U);
}

TEST_F(MultisiteWriter, OneSiteIsTheContextItself) {
    EXPECT_EQ(Write(*ReadContexts(V("s1")).collector).text, WrittenDocument({OwnLine}));
}

TEST_F(MultisiteWriter, FurtherSitesFollowTheirContext) {
    const Reading reading = ReadContexts(V("s1") + Path("P") + V("s2"));
    EXPECT_EQ(Write(*reading.collector).text,
              WrittenDocument({OwnLine, SecondLine,
                               R"(<Context Name="P" Parameter="p" ParameterType="Path"/>)"}));
}

TEST_F(MultisiteWriter, WithoutEnvironmentEverySiteIsWrittenWithoutDetails) {
    const Reading reading = ReadContexts(V("s1") + V("s2"));
    const DbEnvironment off(false);
    const std::string line = R"(<Context Name="V" Parameter="p" ParameterType="Database"/>)";
    EXPECT_EQ(Write(*reading.collector).text, WrittenDocument({line, line, line}));
}

TEST_F(MultisiteWriter, SiteWithoutProviderIsDropped) {
    const Reading reading = ReadContexts(V("s1") + V("s2"));
    DeclaredAt(reading, 1).AddRecordInMultiSiteHash(VELUnicodeString("s3:r"), {});
    const Writing writing = Write(*reading.collector);
    EXPECT_EQ(writing.result, S_OK);
    EXPECT_EQ(writing.text, WrittenDocument({OwnLine, SecondLine}));
}

TEST_F(MultisiteWriter, SitesOfAContextWithoutProviderAreDropped) {
    const CollectorPtr collector = EmptyCollector();
    VELDyadContext& v = Declare(*collector, "V", "p", "Database");
    v.AddRecordInMultiSiteHash(VELUnicodeString("1"), ProviderWith("KRL", {"Role"}, {"1"}));
    v.AddRecordInMultiSiteHash(VELUnicodeString("2"), ProviderWith("KRL", {"Role"}, {"2"}));
    const Writing writing = Write(*collector);
    EXPECT_EQ(writing.result, S_OK);
    EXPECT_EQ(writing.text,
              WrittenDocument({R"(<Context Name="V" Parameter="p" ParameterType="Database"/>)"}));
}

TEST_F(MultisiteWriter, OfNamesakesTheFirstOnesSitesAreWrittenForBoth) {
    const CollectorPtr collector = EmptyCollector();
    for (const std::string role : {"a", "b"}) {
        VELDyadContext& v = Declare(*collector, "V", role, "Database");
        v.SetDyadDbProvider(ProviderWith("KRL", {"Role"}, {role}));
        v.AddRecordInMultiSiteHash(VELUnicodeString("1"), ProviderWith("KRL", {"Role"}, {role}));
        v.AddRecordInMultiSiteHash(VELUnicodeString("2"),
                                   ProviderWith("HWB", {"Role"}, {role + "2"}));
    }
    const auto line = [](const std::string& parameter, const std::string& connector,
                         const std::string& role) {
        return "<Context Name=\"V\" Parameter=\"" + parameter +
               "\" ParameterType=\"Database\" ConnectorName=\"" + connector + "\" Role=\"" + role +
               "\"/>";
    };
    EXPECT_EQ(Write(*collector).text,
              WrittenDocument({line("a", "KRL", "a"), line("a", "HWB", "a2"), line("b", "KRL", "b"),
                               line("a", "HWB", "a2")}));
}

TEST_F(MultisiteWriter, TracesEveryStepOfTheSites) {
    const Reading reading = ReadContexts(V("s1") + V("s2"));
    const TemporaryFolder folder;
    VELUnicodeString message;
    const RecordingTrace trace;
    reading.collector->Stream(VELUnicodeString(folder.PathOf("out.xml").c_str()), message);
    const Names site{"LOG VELDyadContext:LocateInMultisiteHash",
                     "ENTER VELDyadContext:GetDyadDbProvider",
                     "LEAVE VELDyadContext:GetDyadDbProvider"};
    Names expected{"LEAVE VELDyadCtxXml:StreamFriendsAndAssociated",
                   "LOG VELDyadContext:GetListOfSites", "LOG VELDyadCtxXml:StreamMultisites",
                   "LOG VELDyadContext:GetListOfSites"};
    expected.insert(expected.end(), site.begin(), site.end());
    expected.insert(expected.end(), site.begin(), site.end());
    expected.emplace_back("LEAVE VELDyadCtxXml:Stream");
    const Names& lines = trace.Lines();
    ASSERT_GE(lines.size(), expected.size());
    EXPECT_EQ((Names{lines.end() - static_cast<std::ptrdiff_t>(expected.size()), lines.end()}),
              expected);
}

TEST_F(MultisiteWriter, KeepsSitesOfGeneratedFiles) {
    ExpectRoundTrips(400, {true, true});
}

TEST_F(MultisiteWriter, FailingSamenessKeepsTheOldFile) {
    FaultyProviders providers;
    const Reading reading = ReadContexts(V("s1") + V("s2"));
    for (const Fault& fault : {Fault{-7, false, false}, Fault{E_FAIL, false, true}}) {
        providers.ForgetFaults();
        providers.FailAt(ProviderCall::IsSame, FaultyProviders::EveryCall, fault);
        const Writing writing = WriteOver(*reading.collector, "old");
        EXPECT_EQ(writing.result, E_FAIL);
        EXPECT_EQ(writing.text, "old");
    }
}

TEST_F(MultisiteWriter, WithoutMemoryEverySiteIsWrittenOrTheOldFileStays) {
    const std::string longName = "a server whose name is longer than a short text ";
    const Reading reading = ReadContexts(V(longName + "1") + V(longName + "2") + V(longName + "3"));
    for (const bool db : {true, false}) {
        const DbEnvironment environment(db);
        const std::string whole = Write(*reading.collector).text;
        ASSERT_NE(whole, "absent");
        const int failures = ForEachAllocation([&](int number) {
            const TemporaryFolder folder;
            const VELUnicodeString target(folder.Write("out.xml", "old").c_str());
            VELUnicodeString message;
            VELResult result = S_OK;
            bool failed = false;
            {
                const FailingAllocation failing(number);
                result = reading.collector->Stream(target, message);
                failed = failing.HasFailed();
            }
            EXPECT_EQ(folder.Read("out.xml"), result == S_OK ? whole : "old")
                << "allocation " << number;
            return failed;
        });
        EXPECT_GT(failures, 10);
    }
}

TEST_F(MultisiteWriter, WithoutMemoryTheSitesAreCountedAllTheSame) {
    const Reading reading = ReadContexts(V("s1") + V("s2"));
    VELDyadContext& context = DeclaredAt(reading, 1);
    unsigned char several = 0;
    bool failed = false;
    {
        const FailingAllocation failing(1, FailingAllocations::FromThatOneOn);
        several = context.isContainsMultisites();
        failed = failing.HasFailed();
    }
    EXPECT_EQ(several, 1);
    EXPECT_TRUE(failed);
}

TEST_F(MultisiteWriter, AsksForTheOwnProviderOncePerSite) {
    FaultyProviders providers;
    const Reading reading = ReadContexts(V("s1") + Database("V", "HWB", "h", "r"));
    providers.TakeCalls();
    ASSERT_EQ(Write(*reading.collector).result, S_OK);
    EXPECT_EQ(providers.TakeCalls(),
              (Names{"CreateFrom #2 -> #5", "#5 GetName", "#5 GetServerDetails",
                     "CreateFrom #2 -> #6", "#1 IsSame #6", "CreateFrom #2 -> #7", "#3 IsSame #7",
                     "#3 GetName", "#3 GetServerDetails"}));
}

} // namespace dyadctx::test
