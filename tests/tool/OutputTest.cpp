// Streams, colours, and an answer that cannot be written.
#include "tool/ToolTest.h"

namespace dyadctx::test {

namespace {

constexpr const char* Heading = "\x1b[1mNAME\x1b[0m";

class Output : public ToolTest {
protected:
    void SetUp() override {
        WriteContexts("a.xml", R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)");
    }
    bool IsColored(const std::string& text) const { return text.find('\x1b') != std::string::npos; }
    // Runs the tool with a terminal for its standard output and error.
    std::string OnTerminal(const std::string& arguments,
                           const Environment& environment = {}) const {
        const ChildResult result = RunInShell(
            "script -qec \"$DYADCTX " + arguments + "\" /dev/null </dev/null", environment);
        EXPECT_EQ(result.status, 0) << result.standardError;
        return result.standardOutput;
    }
};

} // namespace

TEST_F(Output, IsPlainWhereThereIsNoTerminal) {
    EXPECT_FALSE(IsColored(Run({"list", "a.xml"}).standardOutput));
    EXPECT_FALSE(IsColored(Run({"list", "no.xml"}).standardError));
}

TEST_F(Output, IsColoredOnATerminalUnlessTheUserObjects) {
    if (RunInShell("command -v script").status != 0)
        GTEST_SKIP() << "the program script is not installed";
    const Environment terminal{{"TERM", "xterm"}};
    EXPECT_NE(OnTerminal("list a.xml", terminal).find(Heading), std::string::npos);
    EXPECT_FALSE(IsColored(OnTerminal("list a.xml --color never", terminal)));
    EXPECT_FALSE(IsColored(OnTerminal("list a.xml", {{"TERM", "xterm"}, {"NO_COLOR", "1"}})));
    EXPECT_TRUE(IsColored(OnTerminal("list a.xml", {{"TERM", "xterm"}, {"NO_COLOR", ""}})));
    EXPECT_FALSE(IsColored(OnTerminal("list a.xml", {{"TERM", "dumb"}})));
    EXPECT_FALSE(IsColored(OnTerminal("list a.xml --format json", terminal)));
}

TEST_F(Output, IsColoredWhenTheUserInsists) {
    const ChildResult result = Run({"list", "a.xml", "--color", "always"}, {{"NO_COLOR", "1"}});
    EXPECT_NE(result.standardOutput.find(Heading), std::string::npos);
    EXPECT_TRUE(IsColored(Run({"list", "no.xml", "--color", "always"}).standardError));
}

TEST_F(Output, JsonIsNeverColored) {
    const ChildResult result = Run({"list", "a.xml", "--color", "always", "--format", "json"});
    EXPECT_FALSE(IsColored(result.standardOutput));
    EXPECT_FALSE(Json::parse(result.standardOutput, nullptr, false).is_discarded());
}

TEST_F(Output, AnAnswerThatCannotBeWrittenIsAFailure) {
    for (const std::string command :
         {"list a.xml", "check a.xml", "list a.xml --format json", "--help", "--version"}) {
        const ChildResult result = RunInShell("\"$DYADCTX\" " + command + " > /dev/full");
        EXPECT_EQ(result.status, 6) << command;
        EXPECT_NE(result.standardError.find("could not be written"), std::string::npos) << command;
    }
    const ChildResult closed = RunInShell("\"$DYADCTX\" list a.xml >&-");
    EXPECT_EQ(closed.status, 6) << closed.standardError;
}

TEST_F(Output, WhatTheLibraryWritesToStandardOutputGoesToStandardError) {
    WriteContexts("sites.xml", R"(
        <Context Name="V" Parameter="v" ParameterType="Database" ConnectorName="KRL"
                 ServerName="north" Role="main"/>)");
    const ChildResult result = Run({"list", "sites.xml", "--db-context", "--format", "json"},
                                   {{"TE_MULTISITE_DBCONTEXT", "1"}, {"VELDyadCtxTracer", "1"}});
    EXPECT_FALSE(Json::parse(result.standardOutput, nullptr, false).is_discarded())
        << result.standardOutput;
    EXPECT_NE(result.standardError.find("DYADCTX : DyadMultiSiteHashTableElement : Costructor"),
              std::string::npos)
        << result.standardError;
}

TEST_F(Output, BytesThatAreNoTextDoNotBreakJson) {
    const Json document = VerdictOn({"check", "a\xff.xml"}, 3);
    EXPECT_EQ(document["file"], "a\xEF\xBF\xBD.xml");
    const ChildResult result = Run({"list", "a\xff.xml"});
    EXPECT_NE(result.standardError.find("a\\xff.xml cannot be read"), std::string::npos)
        << result.standardError;
}

#if !defined(DYADCTX_TEST_SANITIZED)
// The less memory there is, the earlier it runs out: while the library loads, which refuses, or
// while the answer is made, which is an internal error. Never a crash, never half an answer.
TEST_F(Output, MemoryThatRunsOutIsAFailureAndNeverACrash) {
    std::string contexts;
    for (int i = 0; i < 5000; ++i)
        contexts += "<Context Name=\"N" + std::to_string(i) +
                    "\" Parameter=\"/p\" ParameterType=\"Path\"/>";
    WriteContexts("large.xml", contexts);
    bool ranOut = false;
    int status = -1;
    for (int kilobytes = 20000; kilobytes < 400000 && status != 0; kilobytes += 2000) {
        const ChildResult result = RunInShell("ulimit -v " + std::to_string(kilobytes) +
                                              "; exec \"$DYADCTX\" list large.xml --format json");
        status = result.status;
        if (status == 70) {
            EXPECT_TRUE(result.standardError.starts_with("dyadctx: internal error: "));
        }
        if (status != 0) {
            // 127: too little to start the program at all.
            EXPECT_TRUE(status == 70 || status == 4 || status == 3 || status == 127)
                << status << " at " << kilobytes;
            EXPECT_EQ(result.standardOutput, "");
        }
        ranOut = ranOut || status == 70;
    }
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(ranOut);
}
#endif

TEST_F(Output, QuietLeavesNotesOutAndKeepsErrors) {
    Expect({"note", {"scenarios", "a.xml", "-q"}, 0, "", {}, {}});
    Expect({"error", {"show", "X", "a.xml", "-q"}, 5, "", {"there is no context 'X'"}, {}});
}

} // namespace dyadctx::test
