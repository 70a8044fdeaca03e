// SPDX-License-Identifier: MIT
#include "trace/detail/ProcessSettings.h"

#include "support/ChildProcess.h"
#include "support/EnvironmentVariable.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

namespace dyadctx::test {

namespace {

using Environment = std::map<std::string, std::optional<std::string>>;

const std::string Defaults =
    "multisite [0]\ninit [2]\noutput []\nroots []\ntracer [0]\ntracer set now [0]\n";

std::string SettingsWith(const Environment& environment, const std::string& argument = "") {
    ChildRun run;
    run.program = DYADCTX_SETTINGS_PROBE;
    if (!argument.empty())
        run.arguments = {argument};
    run.environment = environment;
    return RunChild(run).standardOutput;
}

bool Holds(const std::string& output, const std::string& line) {
    return ("\n" + output).find("\n" + line + "\n") != std::string::npos;
}

} // namespace

TEST(ProcessSettings, HaveDefaultsWhenNothingIsSet) {
    EXPECT_EQ(SettingsWith({}), Defaults);
}

TEST(ProcessSettings, AreTheValuesOfTheirVariables) {
    EXPECT_EQ(SettingsWith({{"TE_MULTISITE_DBCONTEXT", "on"},
                            {"VELDyadCtxInit", "/sites/a/contexts with blanks and é.xml"},
                            {"VELDyadCtxOut", "C:\\out\\contexts.xml"},
                            {"VELInstallPath", "/opt/a;C:\\b;;/opt/c:d"},
                            {"VELDyadCtxTracer", "7"}}),
              "multisite [1]\n"
              "init [/sites/a/contexts with blanks and é.xml]\n"
              "output [C:\\out\\contexts.xml]\n"
              "roots [/opt/a;C:\\b;;/opt/c:d]\n"
              "tracer [7]\n"
              "tracer set now [1]\n");
}

TEST(ProcessSettings, MultisiteFlagIsOnWhenSetAtAll) {
    for (const char* value : {"", "0", "1", "off"}) {
        EXPECT_TRUE(Holds(SettingsWith({{"TE_MULTISITE_DBCONTEXT", value}}), "multisite [1]"))
            << value;
    }
}

TEST(ProcessSettings, InitSettingThatIsEmptyIsNotUnset) {
    EXPECT_TRUE(Holds(SettingsWith({{"VELDyadCtxInit", ""}}), "init []"));
    EXPECT_TRUE(Holds(SettingsWith({{"VELDyadCtxInit", "0"}}), "init [0]"));
}

TEST(ProcessSettings, TracerLevelIsTheLeadingDecimalNumber) {
    const std::map<std::string, std::string> levels{
        {"", "0"},
        {"0", "0"},
        {"abc", "0"},
        {"-", "0"},
        {"0x1", "0"},
        {"1", "1"},
        {"7", "7"},
        {"007", "7"},
        {"1abc", "1"},
        {"3.9", "3"},
        {" 5", "5"},
        {"+6", "6"},
        {"-1", "-1"},
        {"2147483647", "2147483647"},
        {"2147483648", "2147483647"},
        {"4294967296", "2147483647"},
        {"99999999999999999999999", "2147483647"},
        {"-99999999999999999999999", "-2147483648"},
    };
    for (const auto& [value, level] : levels) {
        EXPECT_TRUE(Holds(SettingsWith({{"VELDyadCtxTracer", value}}), "tracer [" + level + "]"))
            << value;
    }
}

TEST(ProcessSettings, AreFixedAtLoad) {
    // Only the question whether the tracer's variable is set is asked afresh.
    EXPECT_EQ(SettingsWith({}, "late"), "multisite [0]\ninit [2]\noutput []\nroots []\n"
                                        "tracer [0]\ntracer set now [1]\n");
    EXPECT_EQ(SettingsWith({{"VELDyadCtxInit", "early"}, {"VELDyadCtxTracer", "3"}}, "late"),
              "multisite [0]\ninit [early]\noutput []\nroots []\n"
              "tracer [3]\ntracer set now [1]\n");
}

TEST(ProcessSettings, TracerVariableCountsAsSetWhateverItsValue) {
    for (const char* value : {"", "0", "1"}) {
        const EnvironmentVariable variable("VELDyadCtxTracer", value);
        EXPECT_TRUE(IsTracerVariableSet()) << value;
    }
    const EnvironmentVariable variable("VELDyadCtxTracer", std::nullopt);
    EXPECT_FALSE(IsTracerVariableSet());
}

} // namespace dyadctx::test
