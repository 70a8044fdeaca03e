// SPDX-License-Identifier: MIT
// The tool as users of Windows meet it.
#include "support/ChildProcess.h"
#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using namespace dyadctx::test;

namespace {

const std::string OneContext =
    DocumentWith(R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)");
// "Japan" in Japanese, between words.
const std::string Japanese = "my \xE6\x97\xA5\xE6\x9C\xAC site.xml";

class WindowsTool : public testing::Test {
protected:
    ChildResult
    Run(const std::vector<std::string>& arguments,
        const std::map<std::string, std::optional<std::string>>& environment = {}) const {
        ChildRun run;
        run.program = DYADCTX_TOOL;
        run.arguments = arguments;
        run.environment = environment;
        run.workingFolder = folder_.Path().string();
        run.hasBinaryStreams = true;
        return RunChild(run);
    }

    TemporaryFolder folder_;
};

} // namespace

TEST_F(WindowsTool, OpensAFileOfAnyName) {
    folder_.Write(Japanese, OneContext);
    for (const std::string& name : {Japanese, ".\\" + Japanese, folder_.PathOf(Japanese)}) {
        const ChildResult result = Run({"list", name, "--format", "names"});
        EXPECT_EQ(result.standardOutput, "A\n") << result.standardError;
        EXPECT_EQ(result.status, 0);
    }
    EXPECT_EQ(Run({"check", Japanese, "--off", "no-default-context"}).standardOutput,
              Japanese + ": valid, 1 context\n1 file checked, valid\n");
}

TEST_F(WindowsTool, OpensAFileWhosePathIsLong) {
    const std::string name = std::string(100, 'a') + "/" + std::string(100, 'b') + "/" + Japanese;
    const fs::path deep = L"\\\\?\\" + (folder_.Path() / FromUtf8(name)).make_preferred().wstring();
    fs::create_directories(deep.parent_path());
    folder_.Write("site.xml", OneContext);
    fs::copy_file(folder_.Path() / "site.xml", deep);
    EXPECT_GT(folder_.PathOf(name).size(), 230U);
    EXPECT_EQ(Run({"list", name, "--format", "names"}).standardOutput, "A\n");
    EXPECT_EQ(Run({"write", "site.xml", "-o", name + ".copy.xml", "-q"}).status, 0);
    EXPECT_EQ(Run({"diff", "site.xml", name + ".copy.xml"}).status, 0);
}

TEST_F(WindowsTool, WritesPlainLineEnds) {
    folder_.Write("site.xml", OneContext);
    for (const auto& arguments :
         std::vector<std::vector<std::string>>{{"list", "site.xml"},
                                               {"--help"},
                                               {"list", "missing.xml"},
                                               {"write", "site.xml", "-o", "-"}}) {
        const ChildResult result = Run(arguments);
        const std::string all = result.standardOutput + result.standardError;
        EXPECT_NE(all.find('\n'), std::string::npos);
        EXPECT_EQ(all.find('\r'), std::string::npos) << all;
    }
}

TEST_F(WindowsTool, TakesAWordThatBeginsWithASlashForAFile) {
    const ChildResult result = Run({"list", "/x"});
    EXPECT_EQ(result.status, 3);
    EXPECT_NE(result.standardError.find("/x cannot be read"), std::string::npos)
        << result.standardError;
}

TEST_F(WindowsTool, ExpandsWildcardsOfFilesToCheck) {
    folder_.Write("sub/b.xml", OneContext);
    folder_.Write("sub/a.xml", OneContext);
    folder_.Write("sub/c.txt", "");
    EXPECT_EQ(
        Run({"check", "sub\\*.xml", "--off", "no-default-context"}).standardOutput,
        "sub\\a.xml: valid, 1 context\nsub\\b.xml: valid, 1 context\n2 files checked, valid\n");
    const ChildResult none = Run({"check", "no*.xml"});
    EXPECT_EQ(none.status, 3);
    EXPECT_NE((none.standardOutput + none.standardError).find("no*.xml"), std::string::npos);
}

TEST_F(WindowsTool, FindsAFileInTheCurrentFolderOfADrive) {
    folder_.Write("site.xml", OneContext);
    const std::string drive = folder_.Path().string().substr(0, 2);
    const ChildResult result = Run({"list", drive + "site.xml", "--format", "names"});
    EXPECT_EQ(result.standardOutput, "A\n") << result.standardError;
    EXPECT_EQ(Run({"write", drive + "site.xml", "-o", drive + "copy.xml", "-q"}).status, 0);
    EXPECT_EQ(Run({"diff", "site.xml", "copy.xml"}).status, 0);
}

TEST_F(WindowsTool, NamesTheSettingsOfTheUserWithTheSystemsSeparators) {
    const std::string base = folder_.PathOf("\xC3\xA9 settings");
    const std::map<std::string, std::optional<std::string>> here{{"APPDATA", base}};
    EXPECT_EQ(Run({"settings", "path"}, here).standardOutput,
              base + "\\dyadctx\\DyadSettingsRep.toml\n");
    EXPECT_EQ(Run({"settings", "set", "DYAD_Ctx_XmlFile", "C:\\\xC3\xA9.xml"}, here).status, 0);
    EXPECT_EQ(Run({"settings", "get", "DYAD_Ctx_XmlFile"}, here).standardOutput,
              "C:\\\xC3\xA9.xml\n");
}

TEST_F(WindowsTool, StartsGraphvizWithoutAShell) {
    folder_.Write("site.xml", OneContext);
    fs::create_directory(folder_.Path() / "bin & more");
    fs::copy_file(WINDOWS_PROBE, folder_.Path() / "bin & more" / "dot.exe");
    const std::string own = fs::path(WINDOWS_PROBE).parent_path().string();
    const std::string path = folder_.PathOf("bin & more") + ";" + own;
    const ChildResult result =
        Run({"graph", "site.xml", "--renderer", "dot", "-o", "a.svg"}, {{"PATH", path}});
    EXPECT_EQ(result.status, 0) << result.standardError;
    const std::string svg = folder_.Read("a.svg");
    EXPECT_TRUE(svg.starts_with("<svg>-Tsvg digraph")) << svg;
    const ChildResult missing = Run({"graph", "site.xml", "--renderer", "dot"}, {{"PATH", own}});
    EXPECT_NE(missing.status, 0);
    EXPECT_NE(missing.standardError.find("'dot' of Graphviz is not installed"), std::string::npos)
        << missing.standardError;
}

TEST_F(WindowsTool, LeavesTheConsoleAsItWas) {
    folder_.Write("site.xml", OneContext);
    ChildRun run;
    run.program = WINDOWS_PROBE;
    run.arguments = {"console", DYADCTX_TOOL, "list", "site.xml"};
    run.workingFolder = folder_.Path().string();
    const ChildResult result = RunChild(run);
    if (result.status == 77)
        GTEST_SKIP() << "there is no console here";
    ASSERT_EQ(result.status, 0) << result.standardError;
    const std::size_t after = result.standardOutput.find("after: ");
    ASSERT_NE(after, std::string::npos) << result.standardOutput;
    EXPECT_EQ(result.standardOutput.substr(8, after - 8), result.standardOutput.substr(after + 7));
    EXPECT_TRUE(result.standardOutput.starts_with("before: page 437, ")) << result.standardOutput;
}
