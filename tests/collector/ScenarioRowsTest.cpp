// SPDX-License-Identifier: MIT
// The rows of exchange scenarios, one by one.
#include "collector/VELDyadCtxCollector.h"

#include "support/ContextFile.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace dyadctx::test {

namespace {

std::vector<std::string> RowAt(const VELDyadCtxCollector& collector, int index) {
    VELUnicodeString channel, context, profile, id, name, value;
    if (collector.GetScenarioAtIndex(index, channel, context, profile, id, name, value) < 0)
        return {};
    return {Text(channel), Text(context), Text(profile), Text(id), Text(name), Text(value)};
}

} // namespace

TEST(ScenarioRows, ComeInTheOrderOfTheirArrivalRepeatedOnesIncluded) {
    const std::unique_ptr<VELDyadCtxCollector> collector(
        VELDyadCtxCollector::CreateCollectorFromScratch());
    EXPECT_EQ(collector->GetNbScenarios(), 0);
    collector->AddScenario("c", "x", "p", "i", "n", "v");
    collector->AddScenario("C", "X", "P", "I", "", "");
    collector->AddScenario("c", "x", "p", "i", "n", "v");
    EXPECT_EQ(collector->GetNbScenarios(), 3);
    EXPECT_EQ(RowAt(*collector, 1), (std::vector<std::string>{"c", "x", "p", "i", "n", "v"}));
    EXPECT_EQ(RowAt(*collector, 2), (std::vector<std::string>{"C", "X", "P", "I", "", ""}));
    EXPECT_EQ(RowAt(*collector, 3), RowAt(*collector, 1));
}

TEST(ScenarioRows, APositionOutsideIsRefusedAndChangesNothing) {
    const std::unique_ptr<VELDyadCtxCollector> collector(
        VELDyadCtxCollector::CreateCollectorFromScratch());
    collector->AddScenario("c", "x", "p", "i", "n", "v");
    for (const int index : {-1, 0, 2}) {
        VELUnicodeString channel("1"), context("2"), profile("3"), id("4"), name("5"), value("6");
        EXPECT_EQ(collector->GetScenarioAtIndex(index, channel, context, profile, id, name, value),
                  E_FAIL);
        EXPECT_EQ(Text(channel) + Text(context) + Text(profile) + Text(id) + Text(name) +
                      Text(value),
                  "123456");
    }
}

} // namespace dyadctx::test
