// SPDX-License-Identifier: MIT
#include "context/detail/DyadMultiSiteHashTableElement.h"

#include "support/ChildProcess.h"
#include "support/ContextFile.h"
#include "support/FaultyProviders.h"

#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace dyadctx::test {

namespace {

using Lines = std::vector<std::string>;

TEST(DyadMultiSiteHashTableElement, HoldsServerDetailsAndAReferenceOnTheProvider) {
    FaultyProviders providers;
    {
        const DyadMultiSiteHashTableElement record("srv:main", providers.Make("KRL"));
        EXPECT_EQ(providers.Alive(), 1);
        VELUnicodeString details;
        record.GetServerDetails(details);
        EXPECT_EQ(Text(details), "srv:main");
        VELIDyadDbProvider_var provider;
        EXPECT_EQ(record.GetDyadDBProvider(provider), 0);
        EXPECT_FALSE(provider.IsNull());
    }
    EXPECT_EQ(providers.Alive(), 0);
}

TEST(DyadMultiSiteHashTableElement, ReturnsOneWhenItHasNoProvider) {
    const FaultyProviders providers;
    const DyadMultiSiteHashTableElement probe;
    VELIDyadDbProvider_var provider = FaultyProviders().Make("KRL");
    EXPECT_EQ(probe.GetDyadDBProvider(provider), 1);
    EXPECT_TRUE(provider.IsNull());
}

TEST(DyadMultiSiteHashTableElement, HashesAndComparesItsServerDetailsExactly) {
    DyadMultiSiteHashTableElement one("srv", {});
    DyadMultiSiteHashTableElement same("srv", {});
    DyadMultiSiteHashTableElement upper("SRV", {});
    using Record = DyadMultiSiteHashTableElement;
    EXPECT_EQ(Record::GetHashKey(&one), VELUnicodeString("srv").ComputeHashKey());
    EXPECT_EQ(Record::GetHashKey(&one), Record::GetHashKey(&same));
    EXPECT_EQ(Record::Compare(&one, &same), 1);
    EXPECT_EQ(Record::Compare(&one, &upper), 0);
    one.SetServerDetails("SRV");
    EXPECT_EQ(Record::Compare(&one, &upper), 1);
}

TEST(DyadMultiSiteHashTableElement, NullRecordsHashToZeroAndCompareNegative) {
    DyadMultiSiteHashTableElement one("srv", {});
    using Record = DyadMultiSiteHashTableElement;
    EXPECT_EQ(Record::GetHashKey(nullptr), 0U);
    EXPECT_EQ(Record::Compare(nullptr, &one), -1);
    EXPECT_EQ(Record::Compare(&one, nullptr), -1);
    EXPECT_EQ(Record::Compare(nullptr, nullptr), -1);
}

// What the probe wrote between "-- STEP" and the next step, without the prefix that every line of a
// record has.
std::map<std::string, Lines> StepsOf(const std::string& output) {
    const std::string prefix = "DYADCTX : DyadMultiSiteHashTableElement : ";
    std::map<std::string, Lines> steps;
    std::istringstream in(output);
    std::string step;
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("-- ", 0) == 0)
            step = line.substr(3);
        else if (line.rfind(prefix, 0) == 0)
            steps[step].push_back(line.substr(prefix.size()));
        else
            steps[step].push_back(line);
    }
    return steps;
}

ChildResult RunProbe(const std::string& multisite, const std::string& tracer) {
    ChildRun run;
    run.program = SITE_PROBE;
    run.environment = {{"TE_MULTISITE_DBCONTEXT", multisite}, {"VELDyadCtxTracer", tracer}};
    return RunChild(run);
}

// Each text ends in a line feed of its own, which leaves an empty line after it.
TEST(DyadMultiSiteHashTableElement, TracesEveryOperationOnTheConsole) {
    const ChildResult result = RunProbe("", "1");
    ASSERT_EQ(result.status, 0) << result.standardError;
    const std::map<std::string, Lines> steps = StepsOf(result.standardOutput);
    const std::map<std::string, Lines> expected = {
        {"add first", {"Costructor", "", "GetHashKey", ""}},
        {"add its like", {"Costructor", "", "GetHashKey", "", "Compare", "", "Destructor", ""}},
        {"locate it",
         {"SetServerDetails", "", "GetHashKey", "", "Compare", "", "GetDyadDBProvider", "",
          "Destructor", ""}},
        {"locate none", {"SetServerDetails", "", "GetHashKey", "", "Destructor", ""}},
        {"list sites", {"GetServerDetails", ""}},
        {"ask for several", {"GetServerDetails", ""}},
        {"list providers", {"GetDyadDBProvider", ""}},
        {"remove it",
         {"SetServerDetails", "", "GetHashKey", "", "Compare", "", "Destructor", "", "Destructor",
          ""}},
        {"add second", {"Costructor", "", "GetHashKey", ""}},
        {"add displaced", {"Costructor", "", "GetHashKey", ""}},
        {"assign", {"end"}},
        {"delete source", {"end"}},
        {"delete target", {"Destructor", "", "Destructor", "", "end"}}};
    EXPECT_EQ(steps, expected);
}

TEST(DyadMultiSiteHashTableElement, IsSilentWithoutTheConsoleTracer) {
    const ChildResult result = RunProbe("1", "0");
    ASSERT_EQ(result.status, 0) << result.standardError;
    EXPECT_EQ(result.standardOutput.find("DYADCTX"), std::string::npos);
    EXPECT_NE(result.standardOutput.find("-- add first"), std::string::npos);
}

} // namespace

} // namespace dyadctx::test
