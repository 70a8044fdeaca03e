// SPDX-License-Identifier: MIT
// These tests run with TE_MULTISITE_DBCONTEXT set when the process starts.
#include "context/VELDyadContext.h"

#include "support/ContextFile.h"
#include "support/FaultyProviders.h"
#include "support/RecordingTrace.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;

Lines SitesOf(VELDyadContext& context) {
    VELListValVELUnicodeString list;
    context.GetListOfSites(list);
    Lines sites = Texts(list);
    std::sort(sites.begin(), sites.end());
    return sites;
}

class SiteTableTest : public testing::Test {
protected:
    std::string NameAt(const char* site) {
        VELIDyadDbProvider_var provider;
        if (context.LocateInMultisiteHash(site, provider) != S_OK)
            return "none";
        VELUnicodeString name;
        provider->GetName(name);
        return Text(name);
    }

    FaultyProviders providers;
    VELDyadContext context{"Parts", "KRL", "Database"};
};

TEST_F(SiteTableTest, OnlyDatabaseContextsHaveATable) {
    EXPECT_EQ(context.AddRecordInMultiSiteHash("srv", {}), S_OK);
    for (const char* type : {"Path", "File", "Default", "database", "Database "}) {
        VELDyadContext other("Other", "KRL", type);
        EXPECT_EQ(other.AddRecordInMultiSiteHash("srv", {}), E_FAIL) << type;
        EXPECT_EQ(SitesOf(other), Lines{}) << type;
        EXPECT_EQ(other.isContainsMultisites(), 0) << type;
    }
}

TEST_F(SiteTableTest, TheFirstRecordOfASiteStays) {
    EXPECT_EQ(context.AddRecordInMultiSiteHash("srv", providers.Make("KRL")), S_OK);
    EXPECT_EQ(context.AddRecordInMultiSiteHash("srv", providers.Make("HWB")), S_OK);
    EXPECT_EQ(SitesOf(context), Lines{"srv"});
    EXPECT_EQ(NameAt("srv"), "KRL");
    EXPECT_EQ(providers.Alive(), 1);
}

TEST_F(SiteTableTest, HandsOutTheStoredProviderItself) {
    const VELIDyadDbProvider_var given = providers.Make("KRL");
    context.AddRecordInMultiSiteHash("srv", given);
    VELIDyadDbProvider_var found;
    EXPECT_EQ(context.LocateInMultisiteHash("srv", found), S_OK);
    EXPECT_EQ(found, given);
    VELListValVELIDyadDbProvider_var list;
    EXPECT_EQ(context.GetListOfMultisiteDbProvider(list), S_OK);
    ASSERT_EQ(list.Size(), 1);
    EXPECT_EQ(list[1], given);
    EXPECT_EQ(providers.TakeCalls(), Lines{});
}

TEST_F(SiteTableTest, TwoSitesAreSeveralOneIsNot) {
    EXPECT_EQ(context.isContainsMultisites(), 0);
    context.AddRecordInMultiSiteHash("srv", {});
    EXPECT_EQ(context.isContainsMultisites(), 0);
    context.AddRecordInMultiSiteHash("SRV", {});
    EXPECT_EQ(context.isContainsMultisites(), 1);
    EXPECT_EQ(SitesOf(context), (Lines{"SRV", "srv"}));
}

TEST_F(SiteTableTest, TheEmptyTextIsASite) {
    EXPECT_EQ(context.AddRecordInMultiSiteHash("", providers.Make("STEP")), S_OK);
    EXPECT_EQ(SitesOf(context), Lines{""});
    EXPECT_EQ(NameAt(""), "STEP");
}

TEST_F(SiteTableTest, RemovesASiteOnce) {
    context.AddRecordInMultiSiteHash("srv", providers.Make("KRL"));
    EXPECT_EQ(context.RemoveRecordFromMultiSiteHash("other"), E_FAIL);
    EXPECT_EQ(context.RemoveRecordFromMultiSiteHash("srv"), S_OK);
    EXPECT_EQ(context.RemoveRecordFromMultiSiteHash("srv"), E_FAIL);
    EXPECT_EQ(SitesOf(context), Lines{});
    EXPECT_EQ(providers.Alive(), 0);
}

TEST_F(SiteTableTest, ASiteWithoutProviderIsListedButNotFoundThroughItsProvider) {
    context.AddRecordInMultiSiteHash("srv", {});
    EXPECT_EQ(SitesOf(context), Lines{"srv"});
    VELListValVELIDyadDbProvider_var list;
    EXPECT_EQ(context.GetListOfMultisiteDbProvider(list), S_OK);
    EXPECT_EQ(list.Size(), 0);
    VELIDyadDbProvider_var handle;
    EXPECT_EQ(context.LocateInMultisiteHash("srv", handle), E_FAIL);
}

TEST_F(SiteTableTest, LocateJudgesByTheHandleInTheEnd) {
    context.AddRecordInMultiSiteHash("empty", {});
    const VELIDyadDbProvider_var before = providers.Make("KRL");
    VELIDyadDbProvider_var handle = before;
    EXPECT_EQ(context.LocateInMultisiteHash("none", handle), S_OK);
    EXPECT_EQ(handle, before);
    EXPECT_EQ(context.LocateInMultisiteHash("empty", handle), E_FAIL);
    EXPECT_TRUE(handle.IsNull());
    EXPECT_EQ(context.LocateInMultisiteHash("none", handle), E_FAIL);
}

TEST_F(SiteTableTest, ListsAreAddedToNotEmptied) {
    context.AddRecordInMultiSiteHash("srv", providers.Make("KRL"));
    VELListValVELUnicodeString sites = ListOf({"before"});
    context.GetListOfSites(sites);
    context.GetListOfSites(sites);
    EXPECT_EQ(Texts(sites), (Lines{"before", "srv", "srv"}));
    VELListValVELIDyadDbProvider_var list;
    context.GetListOfMultisiteDbProvider(list);
    EXPECT_EQ(context.GetListOfMultisiteDbProvider(list), S_OK);
    EXPECT_EQ(list.Size(), 2);
}

TEST_F(SiteTableTest, ManySitesSurviveGrowthAndRemoval) {
    Lines kept;
    for (int i = 0; i < 300; ++i)
        context.AddRecordInMultiSiteHash(("s" + std::to_string(i)).c_str(), {});
    for (int i = 0; i < 300; ++i) {
        const std::string site = "s" + std::to_string(i);
        if (i % 3 == 0)
            kept.push_back(site);
        else
            EXPECT_EQ(context.RemoveRecordFromMultiSiteHash(site.c_str()), S_OK);
    }
    std::sort(kept.begin(), kept.end());
    EXPECT_EQ(SitesOf(context), kept);
}

TEST_F(SiteTableTest, TracesOneLinePerOperationOnThePlatformTrace) {
    RecordingTrace trace;
    VELIDyadDbProvider_var handle;
    VELListValVELUnicodeString sites;
    VELListValVELIDyadDbProvider_var list;
    context.AddRecordInMultiSiteHash("srv", {});
    context.LocateInMultisiteHash("srv", handle);
    context.GetListOfSites(sites);
    context.GetListOfMultisiteDbProvider(list);
    context.isContainsMultisites();
    context.RemoveRecordFromMultiSiteHash("srv");
    EXPECT_EQ(trace.TakeLines(), (Lines{"LOG VELDyadContext:AddRecordInMultiSiteHash",
                                        "LOG VELDyadContext:LocateInMultisiteHash",
                                        "LOG VELDyadContext:GetListOfSites",
                                        "LOG VELDyadContext:GetListOfMultisiteDbProvider",
                                        "LOG VELDyadContext:GetListOfSites",
                                        "LOG VELDyadContext:RemoveRecordFromMultiSiteHash"}));
}

TEST_F(SiteTableTest, ACopySeesTheSameRecordsUntilTheLastOfBothGoes) {
    std::optional<VELDyadContext> source(std::in_place, "Source", "KRL", "Database");
    std::optional<VELDyadContext> copy(*source);
    source->AddRecordInMultiSiteHash("one", providers.Make("KRL"));
    copy->AddRecordInMultiSiteHash("two", providers.Make("KRL"));
    EXPECT_EQ(SitesOf(*source), (Lines{"one", "two"}));
    source.reset();
    EXPECT_EQ(SitesOf(*copy), (Lines{"one", "two"}));
    EXPECT_EQ(providers.Alive(), 2);
    copy.reset();
    EXPECT_EQ(providers.Alive(), 0);
}

TEST_F(SiteTableTest, AssignmentKeepsTheDisplacedTableAliveUntilTheTargetGoes) {
    std::optional<VELDyadContext> target(std::in_place, "Target", "KRL", "Database");
    target->AddRecordInMultiSiteHash("displaced", providers.Make("KRL"));
    context.AddRecordInMultiSiteHash("shared", providers.Make("KRL"));
    *target = context;
    EXPECT_EQ(SitesOf(*target), Lines{"shared"});
    EXPECT_EQ(providers.Alive(), 2);
    // A copy shares what is in use, not what was displaced.
    const std::optional<VELDyadContext> copy(*target);
    target.reset();
    EXPECT_EQ(providers.Alive(), 1);
    EXPECT_EQ(SitesOf(context), Lines{"shared"});
}

TEST_F(SiteTableTest, AContextThatIsNoDatabaseAnyMoreStillReleasesItsDisplacedTable) {
    std::optional<VELDyadContext> target(std::in_place, "Target", "KRL", "Database");
    target->AddRecordInMultiSiteHash("displaced", providers.Make("KRL"));
    *target = VELDyadContext("Path", "/data", "Path");
    EXPECT_EQ(target->AddRecordInMultiSiteHash("srv", {}), E_FAIL);
    EXPECT_EQ(providers.Alive(), 1);
    target.reset();
    EXPECT_EQ(providers.Alive(), 0);
}

TEST_F(SiteTableTest, APathContextGetsATableByAssignment) {
    VELDyadContext target("Path", "/data", "Path");
    target = context;
    EXPECT_EQ(target.AddRecordInMultiSiteHash("srv", {}), S_OK);
    EXPECT_EQ(SitesOf(context), Lines{"srv"});
}

TEST_F(SiteTableTest, AssignmentToItselfKeepsTheTable) {
    context.AddRecordInMultiSiteHash("srv", providers.Make("KRL"));
    const VELDyadContext& same = context;
    context = same;
    EXPECT_EQ(SitesOf(context), Lines{"srv"});
}

} // namespace

} // namespace dyadctx::test
