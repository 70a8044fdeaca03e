// SPDX-License-Identifier: MIT
// `write`: a view written as a context file.
#include "tool/ToolTest.h"

#include <filesystem>

namespace dyadctx::test {

namespace {

namespace fs = std::filesystem;

constexpr const char* Contexts = R"(
    <Context Name="Design" Parameter="/d" ParameterType="Path">
      <CtxFriends><Context Name="Library"/></CtxFriends>
      <Scenario><ScenarioID Ident="EX1" name="Export"/></Scenario></Context>
    <Context Name="Library" Parameter="/l" ParameterType="Path"/>
    <Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"
             ServerName="north" Role="main"/>)";

class Write : public ToolTest {
protected:
    void SetUp() override { WriteContexts("site.xml", Contexts); }
};

Json WithoutPlaces(Json contexts) {
    for (Json& context : contexts) {
        context.erase("line");
        context.erase("column");
        context.erase("attributes");
    }
    return contexts;
}

} // namespace

TEST_F(Write, WhatIsWrittenReadsBackTheSame) {
    Expect({"write",
            {"write", "site.xml", "-o", "out.xml", "--db-context"},
            0,
            "",
            {"note: not written: 1 exchange scenario (the library writes none)\n",
             "note: 3 contexts written to out.xml\n"},
            {}});
    const Json before = RunForJson({"list", "site.xml", "--db-context"});
    const Json after = RunForJson({"list", "out.xml", "--db-context"});
    EXPECT_EQ(WithoutPlaces(before["contexts"]), WithoutPlaces(after["contexts"]));
}

TEST_F(Write, WritesTheRequestedView) {
    Expect({"quiet",
            {"write", "site.xml", "-q", "--output", "out.xml", "--db-context", "--type", "path"},
            0,
            "",
            {},
            {}});
    EXPECT_EQ(Run({"list", "out.xml", "--format", "names"}).standardOutput, "Design\nLibrary\n");
}

TEST_F(Write, AnImpossibleTargetLeavesEverythingAsItWas) {
    fs::create_directories(folder_.Path() / "folder.xml");
    ExpectEach({
        {"missing folder",
         {"write", "site.xml", "-o", "no/such/out.xml"},
         6,
         "",
         {"dyadctx: error: no/such/out.xml could not be written: the folder does not exist (No "
          "such "
          "file or directory)\n"},
         {}},
        {"a folder",
         {"write", "site.xml", "-o", "folder.xml"},
         6,
         "",
         {"dyadctx: error: folder.xml could not be written: it is a folder\n"},
         {}},
        {"a full device",
         {"write", "site.xml", "-o", "/dev/full"},
         6,
         "",
         {"dyadctx: error: /dev/full could not be written: No space left on device\n"},
         {}},
        {"no name",
         {"write", "site.xml", "-o", ""},
         6,
         "",
         {"dyadctx: error: '' could not be written: No such file or directory\n"},
         {}},
    });
    EXPECT_TRUE(fs::is_empty(folder_.Path() / "folder.xml"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Path()), fs::directory_iterator()), 2);
}

TEST_F(Write, AReadOnlyFolderIsRefused) {
    fs::create_directories(folder_.Path() / "locked");
    folder_.Write("locked/out.xml", "old");
    fs::permissions(folder_.Path() / "locked/out.xml", fs::perms(0666));
    fs::permissions(folder_.Path() / "locked", fs::perms(0555));
    const ChildResult result =
        RunAsOrdinaryUser({"write", "-q", "site.xml", "-o", "locked/out.xml"});
    fs::permissions(folder_.Path() / "locked", fs::perms(0755));
    EXPECT_EQ(result.status, 6);
    EXPECT_EQ(result.standardError,
              "dyadctx: error: locked/out.xml could not be written: the folder "
              "permits no new file (Permission denied)\n");
    EXPECT_EQ(folder_.Read("locked/out.xml"), "old");
}

TEST_F(Write, SaysWhatIsLeftOutAndWhatWouldKeepIt) {
    folder_.Write("rich.xml", R"(<?xml version="1.0"?>
<?note a?><!-- one --><DyAdDescription><CtxData><!-- two <b> --><![CDATA[<!-- text -->]]>
    <Context Name="Design" Parameter="/d" ParameterType="Path" Extra="1">
      <CtxFriends><Context Name="Library" Parameter="/l"/></CtxFriends>
      <CtxAssociated><Context Name="Vault"/></CtxAssociated></Context>
    <Context Name="Library" Parameter="/l" ParameterType="Path"/>
    <Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"
             ServerName="north" Role="main"/>
    <Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"
             ServerName="south" Role="main"/>
  </CtxData></DyAdDescription>)");
    const std::string always = "note: not written: 2 comments (the library writes none)\n"
                               "note: not written: 1 processing instruction (the library writes "
                               "none)\n"
                               "note: not written: 1 attribute of friends and associated contexts "
                               "(these are written by name alone)\n"
                               "note: not written: 1 attribute (the library does not read them)\n";
    EXPECT_EQ(Run({"write", "rich.xml", "-o", "-"}).standardError,
              "note: not written: 2 database contexts (the DB context environment is off; "
              "--db-context keeps them)\n"
              "note: not written: 1 associated context (the DB context environment is off; "
              "--db-context keeps them)\n" +
                  always);
    EXPECT_EQ(Run({"write", "rich.xml", "-o", "-", "--db-context"}).standardError,
              "note: not written: 1 further server (sites are off; the environment variable "
              "TE_MULTISITE_DBCONTEXT keeps them)\n" +
                  always);
    EXPECT_EQ(
        Run({"write", "rich.xml", "-o", "-", "--db-context"}, {{"TE_MULTISITE_DBCONTEXT", ""}})
            .standardError,
        always);
    EXPECT_EQ(Run({"write", "-q", "rich.xml", "-o", "-"}).standardError, "");
}

TEST_F(Write, CountsCommentsAlsoInUtf16) {
    const std::string text = "<!-- a --><DyAdDescription><CtxData>"
                             "<Context Name='A' Parameter='/a' ParameterType='Path'/>"
                             "</CtxData></DyAdDescription>";
    std::string wide = "\xFF\xFE";
    for (const char letter : text)
        wide += std::string{letter, '\0'};
    folder_.Write("wide.xml", wide);
    EXPECT_EQ(Run({"write", "wide.xml", "-o", "-"}).standardError,
              "note: not written: 1 comment (the library writes none)\n");
}

TEST_F(Write, SaysWhatCheckWillRefuse) {
    WriteContexts("mixed.xml", R"(
    <Context Name="Design" Parameter="/d" ParameterType="Path">
      <CtxFriends><Context Name="Vault"/></CtxFriends></Context>
    <Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"
             ServerName="north" Role="main"/>)");
    Expect({"dangling friend",
            {"write", "mixed.xml", "-o", "out.xml", "--db-context", "--type", "path"},
            0,
            "",
            {"note: not written: 1 context (outside the view; --type all without --provider keeps "
             "them)\n",
             "note: `dyadctx check` will refuse the result: The context \"Design\" has the friend "
             "\"Vault\", but no context of that name is declared."},
            {}});
}

TEST_F(Write, TheFileItselfIsNoTargetWhereItWouldLoseSomething) {
    const std::string before = folder_.Read("site.xml");
    fs::create_symlink("site.xml", folder_.Path() / "link.xml");
    fs::create_hard_link(folder_.Path() / "site.xml", folder_.Path() / "hard.xml");
    for (const std::string target :
         {"site.xml", "./site.xml", ".\\site.xml", "link.xml", "hard.xml"}) {
        const ChildResult result = Run({"write", "-q", "site.xml", "-o", target, "--db-context"});
        EXPECT_EQ(result.status, 6) << target;
        EXPECT_EQ(result.standardError,
                  "dyadctx: error: " + target +
                      " is the file that is read and would lose 1 exchange scenario; nothing is "
                      "written. Choose another OUT, or add --force\n");
    }
    EXPECT_EQ(folder_.Read("site.xml"), before);
}

TEST_F(Write, TheFileItselfMayBeTheTarget) {
    EXPECT_EQ(Run({"write", "site.xml", "-o", "site.xml", "--db-context", "--force"}).status, 0);
    EXPECT_EQ(Run({"write", "site.xml", "-o", "site.xml", "--db-context"}).status, 0)
        << "nothing is left to lose";
    EXPECT_EQ(Run({"list", "site.xml", "--db-context", "--format", "names"}).standardOutput,
              "Design\nLibrary\nVault\n");
}

TEST_F(Write, StandardOutputIsATarget) {
    Run({"write", "site.xml", "--db-context", "-o", "out.xml"});
    for (const std::string target : {"-", "/dev/stdout"}) {
        const ChildResult result = Run({"write", "site.xml", "--db-context", "-o", target});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardOutput, folder_.Read("out.xml"));
    }
    EXPECT_FALSE(fs::exists(folder_.Path() / "-"));
    const ChildResult appended = RunInShell("echo first > all.xml; \"$DYADCTX\" write -q site.xml "
                                            "--db-context -o /dev/stdout >> all.xml");
    EXPECT_EQ(appended.status, 0);
    EXPECT_EQ(folder_.Read("all.xml"), "first\n" + folder_.Read("out.xml"));
    EXPECT_EQ(RunInShell("\"$DYADCTX\" write site.xml -o - > /dev/full").status, 6);
}

TEST_F(Write, AFileThatCannotBeLoadedWritesNothing) {
    WriteContexts("broken.xml", R"(<Context Name="A" Parameter="" ParameterType="Path"/>)");
    Expect(
        {"broken",
         {"write", "broken.xml", "-o", "out.xml"},
         4,
         "",
         {"broken.xml:2:45: error: ", "[Ctx.Check.CtxEmptyParam]", "broken.xml cannot be loaded"},
         {}});
    EXPECT_FALSE(fs::exists(folder_.Path() / "out.xml"));
}

} // namespace dyadctx::test
