// SPDX-License-Identifier: MIT
// The text by which a server site is known.
#include "support/ContextFile.h"
#include "support/RecordingTrace.h"
#include "xml/detail/VELDyadCtxXml.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

const std::vector<std::string> AllNames{"http",       "Role", "ServerName",
                                        "ServerPort", "URI",  "SiteId"};
const std::vector<std::string> AllValues{"h", "main", "srv", "99", "u", "site"};

std::string KeyOf(const std::string& connector, const std::vector<std::string>& names,
                  const std::vector<std::string>& values) {
    VELUnicodeString key("former");
    const VELUnicodeString answer = VELDyadCtxXml::GetServerdetailsForHashTable(
        key, VELUnicodeString(connector.c_str()), ListOf(names), ListOf(values));
    EXPECT_EQ(Text(answer), Text(key));
    return Text(key);
}

struct SiteCase {
    std::string connector;
    std::string key;
};

class SiteKey : public testing::TestWithParam<SiteCase> {};

} // namespace

TEST_P(SiteKey, FollowsTheRuleOfItsConnector) {
    EXPECT_EQ(KeyOf(GetParam().connector, AllNames, AllValues), GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(Connectors, SiteKey,
                         testing::Values(SiteCase{"KRL", "srv:main"}, SiteCase{"QZ1", "srv:main"},
                                         SiteCase{"TN5", "srv:main"}, SiteCase{"TNR1", "srv:main"},
                                         SiteCase{"HWB", "srv"}, SiteCase{"JOC", "srv"},
                                         SiteCase{"Gyre", "srv"}, SiteCase{"BRUNXML", "site"},
                                         SiteCase{"ORB1", ""}, SiteCase{"STEP", ""},
                                         SiteCase{"", ""}, SiteCase{"krl", ""},
                                         SiteCase{"GYRE", ""}, SiteCase{"KRL ", ""}));

TEST(SiteKey, OfEmptyDetailsKeepsItsSeparator) {
    EXPECT_EQ(KeyOf("KRL", AllNames, {"", "", "", "", "", ""}), ":");
    EXPECT_EQ(KeyOf("HWB", AllNames, {"", "", "", "", "", ""}), "");
}

TEST(SiteKey, TakesADetailThatIsMissingAsEmpty) {
    EXPECT_EQ(KeyOf("KRL", {"ServerName"}, {"srv"}), "srv:");
    EXPECT_EQ(KeyOf("KRL", {"Role"}, {"main"}), ":main");
    EXPECT_EQ(KeyOf("KRL", {"servername", "role"}, {"srv", "main"}), ":");
    EXPECT_EQ(KeyOf("KRL", {}, {}), ":");
}

TEST(SiteKey, TakesAValueThatIsMissingAsEmpty) {
    EXPECT_EQ(KeyOf("KRL", {"ServerName", "Role"}, {"srv"}), "srv:");
}

TEST(SiteKey, TakesTheFirstDetailOfAName) {
    EXPECT_EQ(KeyOf("HWB", {"Role", "ServerName", "ServerName"}, {"a", "b", "c"}), "b");
}

TEST(SiteKey, IsTracedForEveryConnector) {
    const RecordingTrace trace;
    KeyOf("KRL", AllNames, AllValues);
    KeyOf("unknown", AllNames, AllValues);
    EXPECT_EQ(trace.Lines(),
              (std::vector<std::string>{"LOG VELDyadCtxXml:GetServerdetailsForHashTable",
                                        "LOG VELDyadCtxXml:GetServerdetailsForHashTable"}));
}

} // namespace dyadctx::test
