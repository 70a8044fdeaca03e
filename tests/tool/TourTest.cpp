// SPDX-License-Identifier: MIT
// The tour shows what the tool really says: each of its console blocks is run and compared.
#include "tool/ToolTest.h"

#include <fstream>
#include <sstream>

namespace dyadctx::test {

namespace {

struct Step {
    std::string command;
    std::string shown;
};

// The commands ("$ dyadctx ...") of all console blocks, each with the lines that follow it.
std::vector<Step> StepsOf(const std::string& path) {
    std::ifstream in(path);
    std::vector<Step> steps;
    bool inBlock = false;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("```"))
            inBlock = line == "```console";
        else if (inBlock && line.starts_with("$ "))
            steps.push_back({line.substr(2), ""});
        else if (inBlock && !steps.empty())
            steps.back().shown += line + "\n";
    }
    return steps;
}

class Tour : public ToolTest {};

} // namespace

TEST_F(Tour, ShowsWhatTheToolSays) {
    const std::vector<Step> steps = StepsOf(DYADCTX_SOURCE_DIR "/docs/tour.md");
    ASSERT_GE(steps.size(), 10U);
    const Environment environment{{"SOURCE", DYADCTX_SOURCE_DIR}};
    for (const Step& step : steps) {
        SCOPED_TRACE(step.command);
        const ChildResult result = RunInShell(
            "dyadctx() { \"$DYADCTX\" \"$@\"; }; cd \"$SOURCE\" && " + step.command + " 2>&1",
            environment);
        EXPECT_EQ(result.standardOutput, step.shown);
    }
}

} // namespace dyadctx::test
