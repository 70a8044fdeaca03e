// SPDX-License-Identifier: MIT
// The command line as a whole: help, version, wrong usage.
#include "tool/ToolTest.h"

#include <sstream>

namespace dyadctx::test {

namespace {

class CommandLine : public ToolTest {};

} // namespace

TEST_F(CommandLine, HelpGoesToStandardOutput) {
    const ChildResult result = Run({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardError, "");
    for (const char* word : {"check", "list", "show", "which", "scenarios", "write", "diff",
                             "settings", "--db-context", "--lang", "--color", "--quiet",
                             "TE_MULTISITE_DBCONTEXT", "VELDyadCtxOut"})
        EXPECT_NE(result.standardOutput.find(word), std::string::npos) << word;
}

TEST_F(CommandLine, EachCommandHasHelpOfItsOwn) {
    for (const char* command : {"check", "explain", "list", "show", "which", "scenarios", "write",
                                "diff", "graph", "settings", "schema", "completion", "help"}) {
        const ChildResult result = Run({command, "--help"});
        EXPECT_EQ(result.status, 0) << command;
        EXPECT_EQ(result.standardError, "");
        EXPECT_NE(result.standardOutput.find(std::string("dyadctx ") + command), std::string::npos)
            << result.standardOutput;
        EXPECT_NE(result.standardOutput.find("--db-context"), std::string::npos) << command;
    }
}

TEST_F(CommandLine, TheCommandHelpPrintsTheSameHelp) {
    const std::vector<std::vector<std::string>> paths{{},           {"check"},           {"which"},
                                                      {"settings"}, {"settings", "set"}, {"help"}};
    for (const std::vector<std::string>& path : paths) {
        std::vector<std::string> asCommand{"help"};
        asCommand.insert(asCommand.end(), path.begin(), path.end());
        std::vector<std::string> asOption = path;
        asOption.emplace_back("--help");
        const ChildResult result = Run(asCommand);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardError, "");
        EXPECT_EQ(result.standardOutput, Run(asOption).standardOutput);
    }
    ExpectEach({
        {"unknown", {"help", "chek"}, 2, "", {"unknown command 'chek'; did you mean 'check'?"}, {}},
        {"unknown below", {"help", "settings", "st"}, 2, "", {"unknown command 'settings st'"}, {}},
    });
}

TEST_F(CommandLine, HelpFitsATerminal) {
    const std::vector<std::vector<std::string>> paths{{},
                                                      {"check"},
                                                      {"explain"},
                                                      {"list"},
                                                      {"show"},
                                                      {"which"},
                                                      {"scenarios"},
                                                      {"write"},
                                                      {"diff"},
                                                      {"graph"},
                                                      {"settings"},
                                                      {"settings", "path"},
                                                      {"schema"},
                                                      {"settings", "get"},
                                                      {"settings", "set"},
                                                      {"settings", "unset"},
                                                      {"completion"},
                                                      {"help"}};
    for (std::vector<std::string> arguments : paths) {
        arguments.emplace_back("--help");
        std::istringstream help(Run(arguments).standardOutput);
        int lines = 0;
        for (std::string line; std::getline(help, line); ++lines)
            EXPECT_LE(line.size(), 80U) << arguments.front() << ": " << line;
        EXPECT_GT(lines, 10) << arguments.front();
    }
}

TEST_F(CommandLine, VersionGoesToStandardOutput) {
    Expect({"version", {"--version"}, 0, "dyadctx " DYADCTX_TOOL_VERSION "\n", {}, {}});
}

TEST_F(CommandLine, WrongUsageIsToldWithTheWayOut) {
    ExpectEach({
        {"no command", {}, 2, "", {"no command given", "usage: dyadctx COMMAND", "--help"}, {}},
        {"unknown command", {"frobnicate"}, 2, "", {"unknown command 'frobnicate'", "usage:"}, {}},
        {"command with a slip", {"lst"}, 2, "", {"unknown command 'lst'", "mean 'list'?"}, {}},
        {"unknown command behind options",
         {"--lang", "fr", "chek", "a.xml"},
         2,
         "",
         {"commande inconnue «\u00A0chek\u00A0»\u00A0; vouliez-vous dire "
          "«\u00A0check\u00A0»\u00A0?"},
         {}},
        {"unknown option of the tool", {"--frob"}, 2, "", {"unknown option '--frob'"}, {}},
        {"unknown option of a command",
         {"list", "--formt", "json"},
         2,
         "",
         {"unexpected option '--formt'", "mean '--format'?", "usage: dyadctx list"},
         {}},
        {"unknown format",
         {"list", "--format", "xml"},
         2,
         "",
         {"--format", "xml", "usage: dyadctx list"},
         {}},
        {"names are no format of check", {"check", "--format", "names"}, 2, "", {"names"}, {}},
        {"unknown type", {"list", "--type", "folder"}, 2, "", {"folder", "usage:"}, {}},
        {"unknown color", {"list", "--color", "red"}, 2, "", {"red", "usage:"}, {}},
        {"option without value", {"list", "--format"}, 2, "", {"--format"}, {}},
        {"too many files", {"list", "a.xml", "b.xml"}, 2, "", {"unexpected argument 'b.xml'"}, {}},
        {"show without name", {"show"}, 2, "", {"NAME", "usage: dyadctx show NAME"}, {}},
        {"write without target", {"write", "a.xml"}, 2, "", {"output", "usage:"}, {}},
        {"diff with one file", {"diff", "a.xml"}, 2, "", {"B", "usage: dyadctx diff A B"}, {}},
        {"settings without action", {"settings"}, 2, "", {"usage: dyadctx settings"}, {}},
        {"settings with unknown action", {"settings", "put"}, 2, "", {"usage:"}, {}},
        {"which takes no file", {"which", "a.xml"}, 2, "", {"unexpected argument 'a.xml'"}, {}},
    });
}

TEST_F(CommandLine, ControlCharactersOfAnArgumentDoNotReachTheTerminal) {
    const ChildResult result = Run({"\x1b[31mred\n"});
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.standardError.find("'\\x1b[31mred\\n'"), std::string::npos)
        << result.standardError;
    EXPECT_EQ(result.standardError.find('\x1b'), std::string::npos);
}

TEST_F(CommandLine, CommonOptionsMayPrecedeOrFollowTheCommand) {
    WriteContexts("a.xml", R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)");
    ExpectEach({
        {"before",
         {"-q", "--lang", "de", "list", "a.xml"},
         0,
         "#  NAME  TYP   PARAMETER\n1  A     Pfad  /a\n",
         {},
         {}},
        {"behind",
         {"list", "a.xml", "--lang", "de", "-q"},
         0,
         "#  NAME  TYP   PARAMETER\n1  A     Pfad  /a\n",
         {},
         {}},
    });
}

TEST_F(CommandLine, TheFormatMayPrecedeOrFollowTheCommand) {
    WriteContexts("a.xml", R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)");
    const std::string names = Run({"list", "a.xml", "--format", "names"}).standardOutput;
    ASSERT_EQ(names, "A\n");
    ExpectEach({
        {"before", {"--format", "names", "list", "a.xml"}, 0, names, {}, {}},
        {"in one word", {"--format=names", "list", "a.xml"}, 0, names, {}, {}},
        {"among others",
         {"--lang", "list", "--format", "names", "-q", "list", "a.xml"},
         0,
         names,
         {},
         {}},
        {"unknown to the command",
         {"--format", "names", "show", "A", "a.xml"},
         2,
         "",
         {"--format", "names", "usage: dyadctx show"},
         {}},
        {"for a command without",
         {"--format", "text", "write", "a.xml", "-o", "b.xml"},
         2,
         "",
         {"'--format'", "usage: dyadctx write"},
         {}},
        {"alone", {"--format", "json"}, 2, "", {"no command given"}, {}},
    });
}

TEST_F(CommandLine, ALanguageWithoutMessagesIsNoted) {
    WriteContexts("a.xml", R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)");
    ExpectEach({
        {"unknown",
         {"list", "a.xml", "--format", "names", "--lang", "es\x1b"},
         0,
         "A\n",
         {"note: there are no messages in the language 'es\\x1b'; they are in English (known are "
          "en, fr, de, ja)\n"},
         {}},
        {"region", {"list", "a.xml", "--format", "names", "--lang", "fr_CA"}, 0, "A\n", {}, {}},
        {"quiet", {"-q", "list", "a.xml", "--format", "names", "--lang", "es"}, 0, "A\n", {}, {}},
    });
}

TEST_F(CommandLine, ANameMayBeThatOfACommandOrLookLikeAnOption) {
    WriteContexts("a.xml", R"(<Context Name="list" Parameter="/a" ParameterType="Path"/>
                              <Context Name="--id" Parameter="/b" ParameterType="Path"/>)");
    EXPECT_EQ(RunForJson({"show", "list", "a.xml"})["context"]["parameter"], "/a");
    const ChildResult result = Run({"show", "--format", "json", "--", "--id", "a.xml"});
    EXPECT_EQ(result.status, 0) << result.standardError;
    EXPECT_EQ(Json::parse(result.standardOutput)["context"]["parameter"], "/b");
}

} // namespace dyadctx::test
