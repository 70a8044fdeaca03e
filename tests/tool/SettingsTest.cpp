// SPDX-License-Identifier: MIT
// `settings`: reading and changing the settings file.
#include "tool/ToolTest.h"

#include "support/SpecialFiles.h"

#include <array>
#include <filesystem>

namespace dyadctx::test {

namespace {

namespace fs = std::filesystem;

constexpr const char* File = "settings/DyadSettingsRep.toml";

class Settings : public ToolTest {
protected:
    Environment Here() const { return {{"VELSettingPath", folder_.PathOf("settings")}}; }
    std::string FilePath() const { return folder_.PathOf(File); }
    ChildResult RunHere(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "settings");
        return Run(arguments, Here());
    }
    // The file's content after `arguments` were run on `before`.
    std::string Edited(const std::string& before, const std::vector<std::string>& arguments) const {
        folder_.Write(File, before);
        const ChildResult result = RunHere(arguments);
        EXPECT_EQ(result.status, 0) << result.standardError;
        EXPECT_EQ(result.standardOutput, "");
        return folder_.Read(File);
    }
};

} // namespace

TEST_F(Settings, PathFollowsTheEnvironment) {
    EXPECT_EQ(RunHere({"path"}).standardOutput, FilePath() + "\n");
    EXPECT_EQ(Run({"settings", "path"}, {{"XDG_CONFIG_HOME", "/x"}}).standardOutput,
              "/x/dyadctx/DyadSettingsRep.toml\n");
    EXPECT_EQ(Run({"settings", "path"}, {{"HOME", "/h"}}).standardOutput,
              "/h/.config/dyadctx/DyadSettingsRep.toml\n");
    const Json expected = {{"schema", "dyadctx/settings/1"}, {"file", FilePath()}};
    EXPECT_EQ(RunForJson({"settings", "path"}, 0, Here()), expected);
}

TEST_F(Settings, GetReturnsOneOrAll) {
    folder_.Write(File, "b = 'two'\nn = 3\na = \"one\"\n[t]\nx = 'no'\n");
    EXPECT_EQ(RunHere({"get", "a"}).standardOutput, "one\n");
    EXPECT_EQ(RunHere({"get"}).standardOutput, "NAME  VALUE\nb     two\na     one\n");
    const Json expected = {{"schema", "dyadctx/settings/1"},
                           {"file", FilePath()},
                           {"attributes", {{"b", "two"}, {"a", "one"}}}};
    EXPECT_EQ(RunForJson({"settings", "get"}, 0, Here()), expected);
    EXPECT_EQ(RunForJson({"settings", "get", "a"}, 0, Here())["value"], "one");
}

TEST_F(Settings, GetOfWhatIsNotThere) {
    const ChildResult absent = RunHere({"get", "DYAD_Ctx_XmlFil"});
    EXPECT_EQ(absent.status, 5);
    EXPECT_EQ(absent.standardOutput, "");
    EXPECT_NE(absent.standardError.find("did you mean 'DYAD_Ctx_XmlFile'?"), std::string::npos);
    EXPECT_EQ(RunHere({"get"}).status, 0);
    EXPECT_EQ(RunHere({"unset", "a"}).status, 5);
    EXPECT_FALSE(fs::exists(FilePath()));
}

TEST_F(Settings, SetChangesTheValueAndNothingElse) {
    const std::string before = "# who looks after this\n\n"
                               "other = 'o'   # first\n"
                               "DYAD_Ctx_XmlFile   =  '/old.xml'  # why\n"
                               "last = 'l'\n\n[table]\nDYAD_Ctx_XmlFile = 'x'\n";
    EXPECT_EQ(Edited(before, {"set", "DYAD_Ctx_XmlFile", "/new.xml"}),
              "# who looks after this\n\n"
              "other = 'o'   # first\n"
              "DYAD_Ctx_XmlFile   =  \"/new.xml\"  # why\n"
              "last = 'l'\n\n[table]\nDYAD_Ctx_XmlFile = 'x'\n");
}

TEST_F(Settings, SetWorksAfterCharactersOfSeveralBytes) {
    EXPECT_EQ(Edited("\"日本\" = '図面' # 図\nz = 'z'\n", {"set", "日本", "新しい"}),
              "\"日本\" = \"新しい\" # 図\nz = 'z'\n");
}

TEST_F(Settings, SetReplacesAValueOfSeveralLines) {
    EXPECT_EQ(Edited("a = '''\none\ntwo''' # c\nb = [1,\n 2]\n", {"set", "a", "x"}),
              "a = \"x\" # c\nb = [1,\n 2]\n");
    EXPECT_EQ(Edited("a = 1\nb = [1,\n 2] # c\nd = 2\n", {"set", "b", "x"}),
              "a = 1\nb = \"x\" # c\nd = 2\n");
}

TEST_F(Settings, SetAddsALineAfterTheOtherAttributes) {
    EXPECT_EQ(Edited("a = '1'\nb = '2'\n\n# t\n[t]\nx = 1\n", {"set", "c", "3"}),
              "a = '1'\nb = '2'\nc = \"3\"\n\n# t\n[t]\nx = 1\n");
    EXPECT_EQ(Edited("# t\n[t]\nx = 1\n", {"set", "c", "3"}), "c = \"3\"\n# t\n[t]\nx = 1\n");
    EXPECT_EQ(Edited("# only a comment\n", {"set", "c", "3"}), "# only a comment\nc = \"3\"\n");
    EXPECT_EQ(Edited("a = '1'", {"set", "c", "3"}), "a = '1'\nc = \"3\"\n");
    EXPECT_EQ(Edited("a = '1'\r\nb = '2'\r\n", {"set", "c", "3"}),
              "a = '1'\r\nb = '2'\r\nc = \"3\"\r\n");
    EXPECT_EQ(Edited("", {"set", "odd key", "3"}), "\"odd key\" = \"3\"\n");
}

TEST_F(Settings, SetMakesFileAndFolder) {
    EXPECT_EQ(RunHere({"set", "DYAD_Ctx_XmlFile", "/a.xml"}).status, 0);
    EXPECT_EQ(folder_.Read(File), "DYAD_Ctx_XmlFile = \"/a.xml\"\n");
}

TEST_F(Settings, AnyTextComesBackAsItWasSet) {
    for (const std::string value : {"", "C:\\dir\\a.xml", "quo\"te", "tab\tline\nend\r",
                                    "\x01\x1f\x7f", "日本 🙂", "a # b"}) {
        Edited("# c\na = 'x'\n", {"set", "a", value});
        EXPECT_EQ(RunForJson({"settings", "get", "a"}, 0, Here())["value"], value);
    }
}

TEST_F(Settings, TheLibraryReadsWhatWasSet) {
    WriteContexts("a.xml", R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)");
    RunHere({"set", "DYAD_Ctx_XmlFile", folder_.PathOf("a.xml")});
    EXPECT_EQ(Run({"list", "--format", "names"}, Here()).standardOutput, "A\n");
}

TEST_F(Settings, UnsetRemovesItsLinesAndNothingElse) {
    EXPECT_EQ(Edited("# c\na = '1' # x\nb = '2'\n", {"unset", "a"}), "# c\nb = '2'\n");
    EXPECT_EQ(Edited("a = '''\n1\n'''\nb = '2'\n[t]\na = 1\n", {"unset", "a"}),
              "b = '2'\n[t]\na = 1\n");
    EXPECT_EQ(Edited("b = '2'\na = '1'", {"unset", "a"}), "b = '2'\n");
}

TEST_F(Settings, ATextThatIsNoTomlIsRefusedWithPlaceAndReason) {
    folder_.Write(File, "a = 'x'\nb = \n");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"get"}, {"get", "a"}, {"set", "a", "y"}, {"unset", "a"}}) {
        const ChildResult result = RunHere(arguments);
        EXPECT_EQ(result.status, 4);
        EXPECT_EQ(result.standardOutput, "");
        EXPECT_NE(result.standardError.find(FilePath() + ":2:5: "), std::string::npos)
            << result.standardError;
    }
    EXPECT_EQ(folder_.Read(File), "a = 'x'\nb = \n");
}

TEST_F(Settings, AValueThatIsNoTextIsRefusedWithPlaceAndReason) {
    folder_.Write(File, "a = 'x'\nDYAD_Ctx_XmlFile = 3\n");
    const ChildResult result = RunHere({"get", "DYAD_Ctx_XmlFile"});
    EXPECT_EQ(result.status, 4);
    EXPECT_NE(result.standardError.find(FilePath() + ":2:20: DYAD_Ctx_XmlFile is no text"),
              std::string::npos)
        << result.standardError;
    EXPECT_EQ(RunHere({"set", "DYAD_Ctx_XmlFile", "/a"}).status, 0);
    EXPECT_EQ(folder_.Read(File), "a = 'x'\nDYAD_Ctx_XmlFile = \"/a\"\n");
}

TEST_F(Settings, AKeyThatCannotBeChangedByItselfIsLeftAlone) {
    const std::string before = "a.b = 1\na.c = 2\n[t]\nx = 1\n";
    folder_.Write(File, before);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"set", "a", "y"}, {"unset", "a"}, {"set", "t", "y"}}) {
        const ChildResult result = RunHere(arguments);
        EXPECT_EQ(result.status, 6) << folder_.Read(File);
        EXPECT_NE(result.standardError.find("edit the file by hand"), std::string::npos);
        EXPECT_EQ(folder_.Read(File), before);
    }
}

TEST_F(Settings, AValueThatIsNoUtf8IsRefused) {
    folder_.Write(File, "a = 'x'\n");
    EXPECT_EQ(RunHere({"set", "a", "\xff"}).status, 2);
    EXPECT_EQ(folder_.Read(File), "a = 'x'\n");
}

TEST_F(Settings, WhatIsNoRegularFileIsNeitherReadNorReplaced) {
    fs::create_directories(FilePath());
    EXPECT_EQ(RunHere({"get"}).status, 3);
    EXPECT_EQ(RunHere({"set", "a", "x"}).status, 3);
    fs::remove_all(FilePath());
    MakeFifo(FilePath());
    EXPECT_EQ(RunHere({"get"}).status, 3);
    EXPECT_EQ(RunHere({"set", "a", "x"}).status, 3);
    EXPECT_TRUE(fs::is_fifo(FilePath()));
}

TEST_F(Settings, AFileThatIsTooLargeIsRefused) {
    folder_.Write(File, "");
    fs::resize_file(FilePath(), std::uintmax_t{5} << 20U);
    EXPECT_EQ(RunHere({"get"}).status, 4);
}

TEST_F(Settings, SetKeepsModeAndLink) {
    folder_.Write("elsewhere/real.toml", "a = 'x'\n");
    fs::permissions(folder_.Path() / "elsewhere/real.toml", fs::perms(0640));
    fs::create_directories(folder_.Path() / "settings");
    fs::create_symlink(folder_.Path() / "elsewhere/real.toml", FilePath());
    EXPECT_EQ(RunHere({"set", "a", "y"}).status, 0);
    EXPECT_TRUE(fs::is_symlink(FilePath()));
    EXPECT_EQ(folder_.Read("elsewhere/real.toml"), "a = \"y\"\n");
    EXPECT_EQ(fs::status(folder_.Path() / "elsewhere/real.toml").permissions(), fs::perms(0640));
}

TEST_F(Settings, AFolderThatCannotBeWrittenToIsTold) {
    folder_.Write("blocked", "a file");
    const ChildResult result =
        Run({"settings", "set", "a", "x"}, {{"VELSettingPath", folder_.PathOf("blocked/deeper")}});
    EXPECT_EQ(result.status, 6);
    EXPECT_NE(result.standardError.find("could not be written"), std::string::npos);
    EXPECT_EQ(folder_.Read("blocked"), "a file");
}

TEST_F(Settings, SetSaysWhatTheLibraryWillSayOfTheValue) {
    WriteContexts("site.xml", R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)");
    folder_.Write("site.txt", "");
    const std::vector<std::array<std::string, 3>> cases{
        {"DYAD_Ctx_XmlFile", "./site.xml", ""},
        {"DYAD_Ctx_XmlFile", "./none.xml",
         "note: the library will refuse ./none.xml: there is no such file\n"},
        {"DYAD_Ctx_XmlFile", "./site.txt",
         "note: the library will refuse ./site.txt: the name does not end in .xml, in lower "
         "case\n"},
        {"DYAD_Ctx_XmlFile", "",
         "note: an empty value names no file; the library then takes the installation's\n"},
        {"DYAD_Ctx_XmlFil", "./site.xml",
         "note: the library reads no attribute 'DYAD_Ctx_XmlFil'; did you mean "
         "'DYAD_Ctx_XmlFile'?\n"},
    };
    for (const auto& [name, value, remark] : cases) {
        const ChildResult result = RunHere({"set", name, value});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardError, remark);
        EXPECT_EQ(RunForJson({"settings", "get", name}, 0, Here())["value"], value);
    }
}

TEST_F(Settings, AMisspeltAttributeIsNotedWhereAValueIsLookedFor) {
    folder_.Write(File, "DYAD_Ctx_XmlFiel = './site.xml'\nother = 'x'\n");
    const std::string note =
        "note: the library reads no attribute 'DYAD_Ctx_XmlFiel'; did you mean "
        "'DYAD_Ctx_XmlFile'?\n";
    EXPECT_EQ(RunHere({"get"}).standardError, note);
    EXPECT_EQ(RunHere({"get", "other"}).standardError, "");
    for (const std::vector<std::string>& which :
         {std::vector<std::string>{"which"}, {"which", "--explain"}}) {
        const std::string remarks = Run(which, Here()).standardError;
        EXPECT_NE(remarks.find(note), std::string::npos) << remarks;
    }
    folder_.Write(File, "DYAD_Ctx_XmlFile = './site.xml'\nother = 'x'\n");
    EXPECT_EQ(RunHere({"get"}).standardError, "");
}

TEST_F(Settings, ChangesOfManyProcessesAreAllKept) {
    folder_.Write(File, "# shared\n");
    const ChildResult result =
        RunInShell("for i in 1 2 3 4 5 6 7 8 9 10; do "
                   "for p in a b c d; do \"$DYADCTX\" settings set -q $p$i x & done; wait; done",
                   Here());
    EXPECT_EQ(result.standardError, "");
    EXPECT_EQ(RunForJson({"settings", "get"}, 0, Here())["attributes"].size(), 40U);
    EXPECT_TRUE(folder_.Read(File).starts_with("# shared\n"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Path() / "settings"), {}), 1);
}

TEST_F(Settings, EveryRefusalNamesFileAndReason) {
    folder_.Write(File, "a = 'x'\n");
    fs::permissions(folder_.Path() / "settings", fs::perms(0555));
    fs::permissions(FilePath(), fs::perms(0666));
    const ChildResult result = RunAsOrdinaryUser({"settings", "set", "a", "y"}, Here());
    EXPECT_EQ(result.status, 6);
    EXPECT_EQ(result.standardError, "dyadctx: error: " + FilePath() +
                                        " could not be written: the folder permits no new file "
                                        "(Permission denied)\n");
    EXPECT_EQ(folder_.Read(File), "a = 'x'\n");
}

TEST_F(Settings, WithoutAnyFolderThereIsNoFile) {
    const ChildResult result = Run({"settings", "path"}, {{"HOME", std::nullopt}});
    EXPECT_TRUE(result.status == 3 || result.status == 0) << result.standardError;
}

} // namespace dyadctx::test
