// SPDX-License-Identifier: MIT
// `completion`: usage and streams. What the scripts do in their shells is in completion_test.py.
#include "tool/ToolTest.h"

namespace dyadctx::test {

namespace {

class Completion : public ToolTest {};

} // namespace

TEST_F(Completion, NeedsAShellItKnows) {
    ExpectEach({
        {"none", {"completion"}, 2, "", {"SHELL", "usage: dyadctx completion bash|zsh|fish"}, {}},
        {"unknown", {"completion", "csh"}, 2, "", {"csh", "bash,zsh,fish,powershell"}, {}},
        {"two", {"completion", "bash", "zsh"}, 2, "", {"unexpected argument 'zsh'"}, {}},
    });
}

TEST_F(Completion, WritesAScriptAndNothingElse) {
    for (const char* shell : {"bash", "zsh", "fish", "powershell"}) {
        const ChildResult result = Run({"completion", shell});
        EXPECT_EQ(result.status, 0) << shell;
        EXPECT_EQ(result.standardError, "") << shell;
        EXPECT_NE(result.standardOutput.find("--fail-on"), std::string::npos) << shell;
        EXPECT_EQ(result.standardOutput.find("man-page"), std::string::npos) << shell;
        EXPECT_EQ(result.standardOutput.find("@TABLE@"), std::string::npos) << shell;
    }
}

TEST_F(Completion, ThatCannotBeWrittenIsAnError) {
    const ChildResult result = RunInShell("\"$DYADCTX\" completion fish >/dev/full");
    EXPECT_EQ(result.status, 6);
    EXPECT_NE(result.standardError.find("could not be written"), std::string::npos);
}

} // namespace dyadctx::test
