// SPDX-License-Identifier: MIT
// What the environment makes of the trace and the messages of a program.
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace dyadctx::test {

namespace {

const std::string ThreeLines = "ENTER Probe:Run <%s>\n"
                               "WARNING two\\nlines \\x1b[2J\\xff \\u0085\\u2028\\u202e\n"
                               "LEAVE Probe:Run\n";

ChildRun ProbeRun(const std::string& what) {
    ChildRun run;
    run.program = DYADCTX_DIAGNOSTICS_PROBE;
    run.arguments = {what};
    return run;
}

ChildResult Traced(const std::string& what, const std::optional<std::string>& setting,
                   bool asOrdinaryUser = false) {
    ChildRun run = ProbeRun(what);
    run.environment["VELDyadContextTrace"] = setting;
    run.asOrdinaryUser = asOrdinaryUser;
    return RunChild(run);
}

} // namespace

TEST(TraceSetting, LeavesTheTraceOffWhenUnsetEmptyOrZero) {
    for (const std::optional<std::string>& setting :
         std::vector<std::optional<std::string>>{std::nullopt, "", "0"}) {
        const ChildResult result = Traced("trace", setting);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardError, "");
        EXPECT_EQ(result.standardOutput, "");
    }
}

TEST(TraceSetting, OneWritesToStandardErrorAndNeverToStandardOutput) {
    const ChildResult result = Traced("trace", "1");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardError, ThreeLines);
    EXPECT_EQ(result.standardOutput, "");
}

TEST(TraceSetting, OfAFileAppendsToIt) {
    const TemporaryFolder folder;
    folder.Write("trace/of.log", "before\n");
    for (const char* name : {"/trace/of.log", "\\trace\\of.log"}) {
        const ChildResult result = Traced("trace", folder.Path().string() + name);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardError + result.standardOutput, "");
    }
    EXPECT_EQ(folder.Read("trace/of.log"), "before\n" + ThreeLines + ThreeLines);

    Traced("trace", folder.PathOf("new.log"));
    EXPECT_EQ(folder.Read("new.log"), ThreeLines);
}

TEST(TraceSetting, OfAFileWithoutAnyLineMakesNone) {
    const TemporaryFolder folder;
    EXPECT_EQ(Traced("message", folder.PathOf("trace.log")).status, 0);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "trace.log"));
}

TEST(TraceSetting, OfAFileThatCannotBeOpenedTracesToNowhere) {
    const TemporaryFolder folder;
    const std::string readOnly = folder.Write("read-only.log", "");
    std::filesystem::permissions(readOnly, std::filesystem::perms::owner_read);
    for (const std::string& path :
         {folder.PathOf("missing/trace.log"), folder.Path().string(), readOnly}) {
        const ChildResult result = Traced("trace", path, true);
        EXPECT_EQ(result.status, 0) << path;
        EXPECT_EQ(result.standardError + result.standardOutput, "") << path;
    }
    EXPECT_EQ(folder.Read("read-only.log"), "");
}

TEST(TraceSetting, IsReadAtLoadOnly) {
    const ChildResult result = Traced("late", std::nullopt);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardError, "");
}

TEST(TraceSetting, IsNotNeededToTurnTheTraceOnAtRunTime) {
    const ChildResult result = Traced("turned-on", "0");
    EXPECT_EQ(result.standardError, "LOG turned on\n");
    EXPECT_EQ(result.standardOutput, "");
}

TEST(MessageLanguageSetting, DecidesWhenTheFirstTextIsBuilt) {
    struct Case {
        const char* variable;
        const char* value;
        const char* text;
    };
    for (const Case& expected : std::vector<Case>{{"VELMessageLanguage", "ja", "パス\n"},
                                                  {"LC_ALL", "fr_FR.UTF-8", "Chemin\n"},
                                                  {"LC_MESSAGES", "de_AT.UTF-8", "Pfad\n"},
                                                  {"LANG", "de", "Pfad\n"},
                                                  {"LANG", "C.UTF-8", "Path\n"},
                                                  {"LANGUAGE", "fr", "Path\n"}}) {
        ChildRun run = ProbeRun("message");
        run.environment[expected.variable] = expected.value;
        EXPECT_EQ(RunChild(run).standardOutput, expected.text) << expected.variable;
    }
}

TEST(MessageLanguageSetting, CountsForAMessageBuiltBeforeMain) {
    ChildRun run = ProbeRun("early");
    run.environment["VELMessageLanguage"] = "fr";
    EXPECT_EQ(RunChild(run).standardOutput, "Chemin\n");
}

} // namespace dyadctx::test
