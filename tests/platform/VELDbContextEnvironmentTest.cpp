// SPDX-License-Identifier: MIT
#include "platform/VELDbContextEnvironment.h"

#include "platform/Probe.h"
#include "support/EnvironmentVariable.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

using dyadctx::test::RunChild;

namespace {

std::string Answer() {
    return IsDbContextEnvironmentActivated().ConvertToChar();
}

class FixedSource final : public VELDbContextEnvironmentSource {
public:
    bool active = true;
    bool IsActive() noexcept override { return active; }
};

} // namespace

TEST(VELDbContextEnvironment, SwitchesAtRunTime) {
    SetDbContextEnvironment(true);
    EXPECT_EQ("1", Answer());
    SetDbContextEnvironment(false);
    EXPECT_EQ("0", Answer());
}

TEST(VELDbContextEnvironment, TheVariableCountsAtLoadOnly) {
    struct {
        std::optional<std::string> value;
        const char* expected;
    } const cases[] = {{std::nullopt, "0\n"}, {"1", "1\n"},    {"0", "0\n"},  {"", "0\n"},
                       {"11", "0\n"},         {"true", "0\n"}, {" 1", "0\n"}, {"1 ", "0\n"}};
    for (const auto& row : cases) {
        const auto run = ProbeRun({"environment"}, {{"VELDbContextEnvironment", row.value}});
        EXPECT_EQ(row.expected, RunChild(run).standardOutput) << row.value.value_or("(unset)");
    }
    const dyadctx::test::EnvironmentVariable later("VELDbContextEnvironment", "1");
    EXPECT_EQ("0", Answer());
}

TEST(VELDbContextEnvironment, AHostsSourceIsAskedEachTime) {
    FixedSource source;
    EXPECT_EQ(nullptr, SetDbContextEnvironmentSource(&source));
    EXPECT_EQ("1", Answer());
    source.active = false;
    EXPECT_EQ("0", Answer());
    SetDbContextEnvironment(true);
    EXPECT_EQ("0", Answer());
    EXPECT_EQ(&source, SetDbContextEnvironmentSource(nullptr));
    EXPECT_EQ("1", Answer());
    SetDbContextEnvironment(false);
}
