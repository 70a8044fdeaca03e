// SPDX-License-Identifier: MIT
// `graph`: the command.
#include "tool/ToolTest.h"

#include <filesystem>

namespace dyadctx::test {

namespace {

namespace fs = std::filesystem;

constexpr const char* Contexts = R"(
    <Context Name="DYADIC" Parameter="" ParameterType="Default"/>
    <Context Name="Design" Parameter="/d" ParameterType="Path">
      <CtxFriends><Context Name="Parts"/><Context Name="Library"/></CtxFriends></Context>
    <Context Name="Library" Parameter="/l" ParameterType="Path"/>
    <Context Name="Parts" Parameter="/p.lst" ParameterType="File">
      <CtxAssociated><Context Name="Vault"/></CtxAssociated></Context>
    <Context Name="Vault" Parameter="v" ParameterType="Database" ConnectorName="KRL"
             ServerName="north" Role="main"/>)";

class GraphCommand : public ToolTest {
protected:
    void SetUp() override { WriteContexts("site.xml", Contexts); }

    // Standard output of a run that must succeed and say nothing else.
    std::string Draw(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"graph", "site.xml", "--db-context"});
        const ChildResult result = Run(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardError, "");
        return result.standardOutput;
    }

    // The nodes of a picture in Mermaid, by the first line of their boxes.
    static std::string NodesOf(const std::string& mermaid) {
        std::string names;
        for (const char* name : {"DYADIC", "Design", "Library", "Parts", "Vault"}) {
            if (mermaid.find('"' + std::string(name) + "<br/>") != std::string::npos)
                names += (names.empty() ? "" : " ") + std::string(name);
        }
        return names;
    }

    bool IsInstalled(const std::string& program) const {
        return RunInShell("command -v " + program).status == 0;
    }
};

} // namespace

TEST_F(GraphCommand, EachFormatIsTheWholeOfStandardOutput) {
    EXPECT_TRUE(Draw({}).starts_with("<svg xmlns=\"http://www.w3.org/2000/svg\""));
    EXPECT_EQ(Draw({}), Draw({"--format", "svg"}));
    EXPECT_TRUE(Draw({}).ends_with("</svg>\n"));
    EXPECT_TRUE(Draw({"--format", "dot"}).starts_with("digraph contexts {\n"));
    EXPECT_TRUE(Draw({"--format", "mermaid"}).starts_with("flowchart TD\n"));
}

TEST_F(GraphCommand, FriendsAndAssociatedContextsAreDrawn) {
    const std::string mermaid = Draw({"--format", "mermaid"});
    EXPECT_NE(mermaid.find("  n2 --> n4\n  n2 --> n3\n  n4 ==> n5\n"), std::string::npos)
        << mermaid;
}

TEST_F(GraphCommand, NeitherNamesNorTheFileSteerTheTextAroundThem) {
    const std::string file =
        WriteContexts("t\u202e\u0085.xml",
                      "<Context Name='N\u2028\u009b' Parameter='\u200f' ParameterType='Path'/>");
    for (const char* format : {"dot", "mermaid", "svg"}) {
        const std::string picture = Run({"graph", file, "--format", format}).standardOutput;
        EXPECT_NE(picture.find("2028"), std::string::npos) << picture;
        for (const char* raw : {"\u202e", "\u0085", "\u2028", "\u009b", "\u200f"})
            EXPECT_EQ(picture.find(raw), std::string::npos) << picture;
    }
}

TEST_F(GraphCommand, ARingOfFriendsIsMarked) {
    WriteContexts("ring.xml",
                  R"(<Context Name="A" Parameter="/a" ParameterType="Path">
                       <CtxFriends><Context Name="B"/></CtxFriends></Context>
                     <Context Name="B" Parameter="/b" ParameterType="Path">
                       <CtxFriends><Context Name="C"/></CtxFriends></Context>
                     <Context Name="C" Parameter="/c" ParameterType="Path">
                       <CtxFriends><Context Name="A"/></CtxFriends></Context>)");
    const ChildResult result = Run({"graph", "ring.xml"});
    EXPECT_EQ(result.status, 0) << result.standardError;
    EXPECT_NE(result.standardOutput.find("3 contexts, 3 friends, 3 links in cycles"),
              std::string::npos);
}

TEST_F(GraphCommand, TheEndingOfTheFileChoosesTheFormat) {
    const std::vector<std::pair<std::string, std::string>> endings{{"out.svg", "<svg "},
                                                                   {"out.dot", "digraph "},
                                                                   {"out.gv", "digraph "},
                                                                   {"out.mmd", "flowchart TD"},
                                                                   {"out.mermaid", "flowchart"},
                                                                   {"OUT.SVG", "<svg "},
                                                                   {"out", "<svg "},
                                                                   {".dot", "<svg "}};
    for (const auto& [name, beginning] : endings) {
        Expect({name,
                {"graph", "site.xml", "--db-context", "-o", name},
                0,
                "",
                {"the picture is in " + name},
                {}});
        EXPECT_TRUE(folder_.Read(name).starts_with(beginning)) << name;
    }
    Expect({"option first",
            {"graph", "site.xml", "--db-context", "-q", "-o", "out.svg", "--format", "dot"},
            0,
            "",
            {},
            {}});
    EXPECT_TRUE(folder_.Read("out.svg").starts_with("digraph "));
}

TEST_F(GraphCommand, AnEndingOfNoFormatIsWrongUse) {
    Expect(
        {"png",
         {"graph", "site.xml", "--db-context", "-o", "x.png"},
         2,
         "",
         {"dyadctx: error: no picture format goes with the ending .png of x.png; end the name in "
          ".svg (svg), .dot or .gv (dot), .mmd or .mermaid (mermaid), or choose one with "
          "--format\n"},
         {}});
    EXPECT_FALSE(fs::exists(folder_.Path() / "x.png"));
    EXPECT_EQ(Run({"graph", "site.xml", "--db-context", "-o", "x.png", "--format", "svg"}).status,
              0);
    EXPECT_TRUE(folder_.Read("x.png").starts_with("<svg "));
}

TEST_F(GraphCommand, StandardOutputIsATarget) {
    const ChildResult plain = Run({"graph", "site.xml", "--db-context"});
    for (const std::string target : {"-", "/dev/stdout"}) {
        const ChildResult named = Run({"graph", "site.xml", "--db-context", "-o", target});
        EXPECT_EQ(named.status, 0) << named.standardError;
        EXPECT_EQ(named.standardOutput, plain.standardOutput);
        EXPECT_EQ(named.standardError, plain.standardError);
    }
    EXPECT_FALSE(fs::exists(folder_.Path() / "-"));
}

TEST_F(GraphCommand, AFocusShowsWhatLiesAroundItBothWays) {
    const auto around = [this](const std::string& depth) {
        return NodesOf(Draw({"--format", "mermaid", "--focus", "Parts", "--depth", depth}));
    };
    EXPECT_EQ(around("0"), "Parts");
    EXPECT_EQ(around("1"), "Design Parts Vault");
    EXPECT_EQ(around("2"), "Design Library Parts Vault");
    EXPECT_EQ(NodesOf(Draw({"--format", "mermaid", "--focus", "Parts"})), "Design Parts Vault");
}

TEST_F(GraphCommand, IdsDoNotDependOnWhatElseIsShown) {
    const std::string part = Draw({"--format", "dot", "--focus", "Vault", "--depth", "0"});
    EXPECT_NE(part.find("  n5 [label=\"Vault\\nv\""), std::string::npos) << part;
    EXPECT_NE(part.find("penwidth=3"), std::string::npos);
}

TEST_F(GraphCommand, AViewIsDrawnAlone) {
    EXPECT_EQ(NodesOf(Draw({"--format", "mermaid", "--type", "path"})), "DYADIC Design Library");
    EXPECT_EQ(NodesOf(Draw({"--format", "mermaid", "--provider", "KRL"})), "Design Library Vault");
    EXPECT_EQ(NodesOf(Draw({"--format", "mermaid", "--provider", "HWB"})), "Design Library");
}

TEST_F(GraphCommand, UnknownNamesAndFilesAreSaid) {
    WriteContexts("paths.xml", R"(<Context Name="B" Parameter="/b" ParameterType="Path"/>)");
    ExpectEach({
        {"unknown name",
         {"graph", "site.xml", "--db-context", "--focus", "Desing"},
         5,
         "",
         {"there is no context 'Desing' in site.xml; did you mean 'Design'?\n"},
         {}},
        {"unknown name, environment off",
         {"graph", "paths.xml", "--focus", "A"},
         5,
         "",
         {"there is no context 'A' in paths.xml (database contexts are left out without "
          "--db-context)"},
         {}},
        {"outside the view",
         {"graph", "site.xml", "--db-context", "--type", "path", "--focus", "Vault"},
         5,
         "",
         {"there is no context 'Vault'"},
         {}},
        {"no such file", {"graph", "none.xml"}, 3, "", {"none.xml"}, {}},
    });
}

TEST_F(GraphCommand, WrongUsageIsSaid) {
    ExpectEach({
        {"format",
         {"graph", "site.xml", "--db-context", "--format", "png"},
         2,
         "",
         {"png", "usage:"},
         {}},
        {"depth alone",
         {"graph", "site.xml", "--db-context", "--depth", "2"},
         2,
         "",
         {"--focus"},
         {}},
        {"depth",
         {"graph", "site.xml", "--db-context", "--focus", "Design", "--depth", "-1"},
         2,
         "",
         {"--depth"},
         {}},
        {"renderer",
         {"graph", "site.xml", "--db-context", "--renderer", "x"},
         2,
         "",
         {"--renderer"},
         {}},
        {"renderer and format",
         {"graph", "site.xml", "--db-context", "--renderer", "dot", "--format", "mermaid"},
         2,
         "",
         {"does not go with --format mermaid"},
         {}},
        {"option",
         {"graph", "site.xml", "--db-context", "--focsu", "A"},
         2,
         "",
         {"did you mean '--focus'"},
         {}},
        {"provider and view",
         {"graph", "site.xml", "--db-context", "--type", "path", "--provider", "KRL"},
         2,
         "",
         {"--provider narrows the database view"},
         {}},
    });
}

TEST_F(GraphCommand, AFileWithErrorsIsDrawnAndItsErrorsAreTold) {
    WriteContexts("broken.xml", R"(<Context Name="A" Parameter="" ParameterType="Path">
                                     <CtxFriends><Context Name="C"/></CtxFriends></Context>
                                   <Context Name="B" Parameter="/b" ParameterType="Path">
                                     <CtxFriends><Context Name="A"/></CtxFriends></Context>)");
    const std::vector<std::string> remarks{
        "broken.xml:2:45: error: The context \"A\" has an empty Parameter.",
        "[Ctx.Check.CtxEmptyParam]\n",
        "broken.xml:3:59: error: The context \"A\" has the friend \"C\"",
        "dyadctx: error: broken.xml cannot be loaded; the picture shows what could be read\n"};
    Expect({"mermaid",
            {"graph", "broken.xml", "--format", "mermaid", "--focus", "C", "--depth", "1"},
            4,
            "flowchart TD\n"
            "  %% broken.xml - 1 context, 1 friend, 1 not declared, 1 with errors\n"
            "  n1[\"A<br/>Path<br/>2 errors\"]:::path\n"
            "  u1[\"C<br/>not declared\"]:::unresolved\n"
            "  n1 --> u1\n"
            "  subgraph legend [\"Legend\"]\n"
            "    legend_path[\"Path\"]:::path\n"
            "    legend_unresolved[\"not declared\"]:::unresolved\n"
            "    legend_faulty[\"has errors\"]:::faulty\n"
            "    legend_friend_from[\" \"]:::sample -->|has the friend| legend_friend_to[\" "
            "\"]:::sample\n"
            "  end\n"
            "  classDef path fill:#e1eefc,stroke:#3173b8,color:#1c2430\n"
            "  classDef unresolved fill:#ffffff,stroke:#7c838d,stroke-dasharray:6 "
            "4,color:#1c2430\n"
            "  classDef faulty fill:#ffffff,stroke:#cf2a27,stroke-width:3px,color:#1c2430\n"
            "  classDef sample fill:none,stroke:none\n"
            "  style n1 stroke:#cf2a27,stroke-width:3px\n"
            "  style u1 stroke-width:4px\n"
            "  linkStyle 0 stroke-dasharray:6 4\n",
            remarks,
            {}});
    const ChildResult file = Run({"graph", "broken.xml", "-o", "out.svg"});
    EXPECT_EQ(file.status, 4);
    EXPECT_EQ(file.standardOutput, "");
    EXPECT_NE(folder_.Read("out.svg").find("<g id=\"n1\" class=\"node path faulty\">"),
              std::string::npos);
    EXPECT_EQ(Run({"graph", "broken.xml", "--focus", "X"}).status, 5);
}

TEST_F(GraphCommand, EveryBrokenExampleButThoseThatAreNoXmlIsDrawn) {
    const std::set<fs::path> noXml{"bare-ampersand.xml", "not-well-formed.xml", "open-value.xml"};
    int drawn = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(ExampleFile("broken"))) {
        SCOPED_TRACE(entry.path());
        const bool isXml = !noXml.contains(entry.path().filename());
        const ChildResult result = Run({"graph", entry.path().string(), "--db-context"});
        EXPECT_EQ(result.status, 4);
        EXPECT_EQ(result.standardOutput.ends_with("</svg>\n"), isXml);
        EXPECT_EQ(result.standardError.ends_with("the picture shows what could be read\n"), isXml);
        drawn += isXml ? 1 : 0;
    }
    EXPECT_GT(drawn, 10);
}

TEST_F(GraphCommand, WhatIsNoXmlIsNotDrawn) {
    folder_.Write("open.xml", "<DyAdDescription>");
    Expect({"no XML",
            {"graph", "open.xml", "-o", "out.svg"},
            4,
            "",
            {"[Ctx.Parse.XMLSyntaxError]",
             "dyadctx: error: open.xml cannot be loaded; see `dyadctx check open.xml`\n"},
            {}});
    EXPECT_FALSE(fs::exists(folder_.Path() / "out.svg"));
}

TEST_F(GraphCommand, AnImpossibleTargetIsRefused) {
    fs::create_directories(folder_.Path() / "folder.svg");
    ExpectEach({
        {"missing folder",
         {"graph", "site.xml", "--db-context", "-o", "no/such/out.svg"},
         6,
         "",
         {"dyadctx: error: no/such/out.svg could not be written: the folder does not exist (No "
          "such "
          "file or directory)\n"},
         {}},
        {"a folder",
         {"graph", "site.xml", "--db-context", "-o", "folder.svg"},
         6,
         "",
         {"dyadctx: error: folder.svg could not be written: it is a folder\n"},
         {}},
        {"no name",
         {"graph", "site.xml", "--db-context", "-o", ""},
         6,
         "",
         {"dyadctx: error: '' could not be written: No such file or directory\n"},
         {}},
    });
    EXPECT_TRUE(fs::is_empty(folder_.Path() / "folder.svg"));
}

TEST_F(GraphCommand, AFullDeviceIsNoticed) {
    if (!fs::exists("/dev/full"))
        GTEST_SKIP() << "no such device here";
    EXPECT_EQ(RunInShell("\"$DYADCTX\" graph site.xml --db-context > /dev/full").status, 6);
}

TEST_F(GraphCommand, WithoutGraphvizItsRendererIsRefused) {
    Expect({"not installed",
            {"graph", "site.xml", "--db-context", "--renderer", "dot"},
            6,
            "",
            {"the program 'dot' of Graphviz is not installed"},
            {{"PATH", folder_.Path().string()}}});
}

TEST_F(GraphCommand, AFailingRendererIsNoticed) {
    folder_.Write("bin/dot", "#!/bin/sh\necho half a picture\nexit 3\n");
    fs::permissions(folder_.Path() / "bin/dot", fs::perms(0755));
    Expect({"failing",
            {"graph", "site.xml", "--db-context", "--renderer", "dot"},
            6,
            "",
            {"the program 'dot' of Graphviz failed"},
            {{"PATH", folder_.PathOf("bin")}}});
}

TEST_F(GraphCommand, TheRendererGetsOurDotAndItsPictureIsTheAnswer) {
    folder_.Write("bin/dot", "#!/bin/sh\necho \"arguments: $*\"\nexec /bin/cat\n");
    fs::permissions(folder_.Path() / "bin/dot", fs::perms(0755));
    Expect({"echo",
            {"graph", "site.xml", "--db-context", "--renderer", "dot"},
            0,
            "arguments: -Tsvg\n" + Draw({"--format", "dot"}),
            {},
            {{"PATH", folder_.PathOf("bin")}}});
}

TEST_F(GraphCommand, GraphvizAcceptsOurDot) {
    if (!IsInstalled("dot"))
        GTEST_SKIP() << "Graphviz is not installed";
    WriteContexts(
        "names.xml",
        R"(<Context Name="&lt;b&gt;&amp;amp;&quot;]}\N\" Parameter="/a" ParameterType="Path">
                       <CtxFriends><Context Name="図面 %s"/></CtxFriends></Context>
                     <Context Name="図面 %s" Parameter="/b" ParameterType="Path"/>)");
    const ChildResult result = Run({"graph", "names.xml", "--renderer", "dot"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardError, "");
    EXPECT_NE(result.standardOutput.find("<svg"), std::string::npos);
    EXPECT_NE(result.standardOutput.find(R"(&lt;b&gt;&amp;amp;&quot;]}\N\)"), std::string::npos)
        << result.standardOutput;
}

TEST_F(GraphCommand, XmlToolsAcceptTheSvg) {
    if (!IsInstalled("xmllint"))
        GTEST_SKIP() << "xmllint is not installed";
    EXPECT_EQ(RunInShell("\"$DYADCTX\" graph site.xml --db-context | xmllint --noout -").status, 0);
}

TEST_F(GraphCommand, TheSameFileProducesTheSameBytes) {
    for (const char* format : {"svg", "dot", "mermaid"})
        EXPECT_EQ(Draw({"--format", format}), Draw({"--format", format}));
}

TEST_F(GraphCommand, MoreLinksThanMermaidDrawsAreSaid) {
    std::string contexts;
    for (int i = 0; i < 510; ++i)
        contexts += "<Context Name=\"C" + std::to_string(i) +
                    "\" Parameter=\"/x\" ParameterType=\"Path\"><CtxFriends><Context Name=\"C" +
                    std::to_string(std::min(i + 1, 510)) + "\"/></CtxFriends></Context>";
    contexts += R"(<Context Name="C510" Parameter="/x" ParameterType="Path"/>)";
    WriteContexts("many.xml", contexts);
    Expect({"many",
            {"graph", "many.xml", "--format", "mermaid"},
            0,
            std::nullopt,
            {"Mermaid draws at most 500 links"},
            {}});
}

TEST_F(GraphCommand, TheHelpNamesFormatsAndDefaults) {
    const std::string help = Run({"graph", "--help"}).standardOutput;
    for (const char* word :
         {"--focus", "--depth", "--renderer", "mermaid", "svg without one", "(default: own)"})
        EXPECT_NE(help.find(word), std::string::npos) << word << "\n" << help;
}

} // namespace dyadctx::test
