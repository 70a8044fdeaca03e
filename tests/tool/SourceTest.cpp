// SPDX-License-Identifier: MIT
// Where the contexts of a command come from, and what happens when they do not come.
#include "tool/ToolTest.h"

#include "support/SpecialFiles.h"

#include <filesystem>

namespace dyadctx::test {

namespace {

namespace fs = std::filesystem;

constexpr const char* Contexts = R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)";

class Source : public ToolTest {
protected:
    void SetUp() override { WriteContexts("a.xml", Contexts); }
};

} // namespace

TEST_F(Source, AFileOfTheWorkingFolderNeedsNoFolder) {
    Expect({"bare", {"list", "a.xml", "--format", "names"}, 0, "A\n", {}, {}});
    Expect({"with folder", {"list", "./a.xml", "--format", "names"}, 0, "A\n", {}, {}});
    Expect({"absolute", {"list", folder_.PathOf("a.xml"), "--format", "names"}, 0, "A\n", {}, {}});
}

TEST_F(Source, ExchangeChannelDoesNotChooseTheFile) {
    Expect({"named",
            {"list", "a.xml", "--format", "names"},
            0,
            "A\n",
            {},
            {{"ExchangeChannel", "/other.xml"}}});
    EXPECT_EQ(Run({"list"}, {{"ExchangeChannel", folder_.PathOf("a.xml")}}).status, 3);
}

TEST_F(Source, AFileThatCannotBeReadIsToldWithTheReason) {
    const bool hasFifo = MakeFifo(folder_.PathOf("fifo.xml"));
    fs::create_directories(folder_.Path() / "folder.xml");
    WriteContexts("a.XML", Contexts);
    WriteContexts("noextension", Contexts);
    WriteContexts("a.xml.bak", Contexts);
    const std::string wrongName = "the name does not end in .xml, in lower case";
    for (const std::string command : {"list", "scenarios"}) {
        ExpectEach({
            {"missing",
             {command, "missing.xml"},
             3,
             "",
             {"missing.xml: error: The context file \"./missing.xml\" cannot be used.",
              "[Ctx.Collector.XMLFileNotValid]",
              "dyadctx: error: missing.xml cannot be read: there is no such file"},
             {}},
            {"missing folder", {command, "no/a.xml"}, 3, "", {"there is no folder no"}, {}},
            {"folder", {command, "folder.xml"}, 3, "", {"it is a folder"}, {}},
            {"upper case", {command, "a.XML"}, 3, "", {wrongName}, {}},
            {"no extension", {command, "noextension"}, 3, "", {wrongName}, {}},
            {"other extension", {command, "a.xml.bak"}, 3, "", {wrongName}, {}},
            {"empty name", {command, ""}, 3, "", {"the name of the file is empty"}, {}},
        });
        if (hasFifo)
            Expect({"pipe", {command, "fifo.xml"}, 3, "", {"it is not a regular file"}, {}});
    }
}

// A regular file whose first bytes the system refuses to give.
TEST_F(Source, AReadErrorIsNoFaultOfTheFile) {
    if (!fs::exists("/proc/self/mem"))
        GTEST_SKIP() << "no file that cannot be read";
    fs::create_symlink("/proc/self/mem", folder_.Path() / "bad.xml");
    const std::string unusable = "bad.xml: error: The context file \"./bad.xml\" cannot be used.";
    const std::string reason = "Input/output error";
    for (const std::string command : {"list", "scenarios", "graph"})
        Expect({command,
                {command, "bad.xml"},
                3,
                "",
                {unusable, "dyadctx: error: bad.xml cannot be read: " + reason},
                {}});
    const ChildResult checked = Run({"check", "bad.xml"});
    EXPECT_EQ(checked.status, 3);
    EXPECT_EQ(checked.standardOutput.find("XMLSyntaxError"), std::string::npos);
    EXPECT_EQ(checked.standardOutput.find(unusable), 0U) << checked.standardOutput;
    EXPECT_NE(checked.standardOutput.find("bad.xml: note: " + reason + "\n"), std::string::npos)
        << checked.standardOutput;
    const Json verdict = VerdictOn({"check", "bad.xml"}, 3);
    ASSERT_EQ(verdict["findings"].size(), 1U);
    EXPECT_EQ(verdict["findings"][0]["key"], "Ctx.Collector.XMLFileNotValid");
    EXPECT_EQ(verdict["findings"][0]["related"][0]["text"], reason);
    EXPECT_EQ(verdict["valid"], false);
}

TEST_F(Source, AnOptionWithoutANameIsTheOneFaultWithoutAMessage) {
    WriteContexts("option.xml", "<Context Name='A' Parameter='a' ParameterType='Path'>"
                                "<ScenarioID><Option value='v'/></ScenarioID></Context>");
    Expect({"silent",
            {"list", "option.xml"},
            4,
            "",
            {"dyadctx: error: option.xml cannot be loaded: the library gives no reason; look for "
             "an Option without a name; see `dyadctx check option.xml`"},
            {}});
}

TEST_F(Source, AFileThatMayNotBeReadIsTold) {
    fs::permissions(folder_.Path() / "a.xml", fs::perms(0));
    const ChildResult result = RunAsOrdinaryUser({"list", "a.xml"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.standardOutput, "");
    EXPECT_NE(result.standardError.find("a.xml cannot be read: the file may not be read"),
              std::string::npos)
        << result.standardError;
}

TEST_F(Source, AFileThatCannotBeLoadedIsToldWithEachFinding) {
    folder_.Write("open.xml", "<DyAdDescription>");
    Expect({"not well-formed",
            {"list", "open.xml", "--format", "json"},
            4,
            "",
            {"open.xml:1:18: error: The file is not well-formed XML.", "[Ctx.Parse.XMLSyntaxError]",
             "dyadctx: error: open.xml cannot be loaded"},
            {}});
}

TEST_F(Source, WithoutAFileTheEnvironmentChooses) {
    const Environment named{{"VELDyadCtxInit", folder_.PathOf("a.xml")}};
    EXPECT_EQ(VerdictOn({"check"}, 0, named)["file"], folder_.PathOf("a.xml"));
    for (const char* command : {"list", "scenarios"})
        EXPECT_EQ(RunForJson({command}, 0, named)["file"], folder_.PathOf("a.xml")) << command;
    Expect({"none",
            {"list"},
            3,
            "",
            {"[Ctx.Collector.XMLFileNotSet]",
             "no context file could be chosen; name one, or see `dyadctx which`"},
            {}});
}

TEST_F(Source, WithoutAFileTheLibraryAlsoWritesItsOutputFile) {
    Environment environment{{"VELDyadCtxInit", folder_.PathOf("a.xml")},
                            {"VELDyadCtxOut", folder_.PathOf("copy.xml")}};
    EXPECT_EQ(Run({"list"}, environment).status, 0);
    EXPECT_EQ(Run({"list", "copy.xml", "--format", "names"}).standardOutput, "A\n");

    environment["VELDyadCtxOut"] = folder_.PathOf("no/such/copy.xml");
    Expect(
        {"impossible",
         {"list"},
         6,
         "",
         {"copy.xml, which VELDyadCtxOut names, could not be written: the folder does not exist"},
         environment});
    Expect({"not with a file", {"list", "a.xml", "--format", "names"}, 0, "A\n", {}, environment});
}

TEST_F(Source, TheEnvironmentMaySwitchDatabasesOn) {
    WriteContexts("db.xml", R"(<Context Name="V" Parameter="v" ParameterType="Database"
                                ConnectorName="KRL"/>)");
    EXPECT_EQ(Run({"check", "db.xml"}).status, 1);
    EXPECT_EQ(Run({"check", "db.xml", "--db-context"}).status, 0);
    EXPECT_EQ(Run({"check", "db.xml"}, {{"VELDbContextEnvironment", "1"}}).status, 0);
}

TEST_F(Source, AFileThatCannotBeLoadedLeadsToItsCheck) {
    folder_.Write("open.xml", "<DyAdDescription>");
    folder_.Write("with blank.xml", "<DyAdDescription>");
    const Environment chosen{{"VELDyadCtxInit", folder_.PathOf("open.xml")}};
    ExpectEach({
        {"named",
         {"list", "open.xml"},
         4,
         "",
         {"open.xml cannot be loaded; see `dyadctx check open.xml`\n"},
         {}},
        {"with a blank",
         {"list", "with blank.xml"},
         4,
         "",
         {"cannot be loaded; see `dyadctx check 'with blank.xml'`\n"},
         {}},
        {"chosen", {"show", "A"}, 4, "", {"cannot be loaded; see `dyadctx check`\n"}, chosen},
        {"with databases",
         {"scenarios", "open.xml", "--db-context"},
         4,
         "",
         {"cannot be loaded; see `dyadctx check --db-context open.xml`\n"},
         {}},
    });
}

TEST_F(Source, AChosenFileThatCannotBeReadIsToldWithTheReason) {
    ExpectEach({
        {"missing",
         {"list"},
         3,
         "",
         {"missing.xml cannot be read: there is no such file"},
         {{"VELDyadCtxInit", folder_.PathOf("missing.xml")}}},
        {"ending",
         {"list"},
         3,
         "",
         {"a.txt cannot be read: the name does not end in .xml"},
         {{"VELDyadCtxInit", folder_.PathOf("a.txt")}}},
        {"without folder",
         {"list"},
         3,
         "",
         {"a.xml cannot be read: the path names no folder; write ./NAME"},
         {{"VELDyadCtxInit", "a.xml"}}},
    });
}

TEST_F(Source, StandardInputIsReadWhereTheFileIsADash) {
    const auto run = [text = folder_.Read("a.xml"), this](const std::vector<std::string>& words) {
        return RunOnInput(text, words);
    };
    EXPECT_EQ(run({"list", "-", "--format", "names"}).standardOutput, "A\n");
    EXPECT_EQ(run({"check", "-"}).standardOutput,
              "-:2:18: note: The file declares no default context, which is named \"DYADIC\". "
              "[no-default-context]\n-: valid, 1 context\n1 file checked, valid, 1 note\n");
    EXPECT_EQ(run({"show", "A", "-", "--field", "parameter"}).standardOutput, "/a\n");
    EXPECT_EQ(run({"scenarios", "-", "-q"}).status, 0);
    EXPECT_EQ(run({"diff", "-", "a.xml"}).status, 0);
    EXPECT_EQ(run({"diff", "a.xml", "-"}).status, 0);
    EXPECT_EQ(run({"write", "-", "-o", "copy.xml", "-q"}).status, 0);
    EXPECT_NE(folder_.Read("copy.xml").find("Name=\"A\""), std::string::npos);
    EXPECT_NE(run({"graph", "-", "--format", "dot"}).standardOutput.find("\"A"), std::string::npos);
    EXPECT_EQ(run({"diff", "-", "-"}).status, 2);
}

TEST_F(Source, StandardInputHasAPlaceAndANameInFindings) {
    const std::string faulty = "<DyAdDescription><CtxData>\n<Context Name=\"A\" Parameter=\"/a\" "
                               "ParameterType=\"Folder\"/></CtxData></DyAdDescription>";
    const ChildResult listed = RunOnInput(faulty, {"list", "-"});
    EXPECT_EQ(listed.status, 4);
    EXPECT_NE(listed.standardError.find("-:2:34: error: "), std::string::npos)
        << listed.standardError;
    EXPECT_NE(listed.standardError.find("- cannot be loaded; see `dyadctx check -`"),
              std::string::npos)
        << listed.standardError;
    const ChildResult checked = RunOnInput(faulty, {"check", "-", "--stdin-name", "my site.xml"});
    EXPECT_EQ(checked.status, 1);
    EXPECT_TRUE(checked.standardOutput.starts_with("my site.xml:2:34: error: "))
        << checked.standardOutput;
    const ChildResult drawn =
        RunOnInput(faulty, {"--stdin-name", "x", "graph", "-", "--format", "mermaid"});
    EXPECT_EQ(drawn.status, 4);
    EXPECT_NE(drawn.standardError.find("x cannot be loaded; the picture shows"), std::string::npos)
        << drawn.standardError;
}

TEST_F(Source, AFileNamedByADashNeedsAFolder) {
    EXPECT_EQ(Run({"list", "./-"}).status, 3);
    EXPECT_EQ(Run({"list", "-"}).status, 4);
}

TEST_F(Source, StandardInputThatIsClosedIsTold) {
    EXPECT_EQ(RunInShell("\"$DYADCTX\" list - <&-").status, 3);
}

} // namespace dyadctx::test
