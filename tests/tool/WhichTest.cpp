// SPDX-License-Identifier: MIT
// `which`: the file the library chooses and the sources it asks.
#include "tool/ToolTest.h"

#include "support/SpecialFiles.h"

#include <filesystem>

namespace dyadctx::test {

namespace {

constexpr const char* Contexts = R"(<Context Name="A" Parameter="/a" ParameterType="Path"/>)";
constexpr const char* DefaultFile = "\\resources\\xml\\DYAD\\CONTEXT\\Default.xml";

class Which : public ToolTest {
protected:
    void SetUp() override {
        WriteContexts("named.xml", Contexts);
        WriteContexts("two/resources/xml/DYAD/CONTEXT/Default.xml", Contexts);
        WriteContexts("three/resources/xml/DYAD/CONTEXT/Default.xml", Contexts);
    }
    std::string Roots() const {
        return folder_.PathOf("one") + ";" + folder_.PathOf("two") + ";" + folder_.PathOf("three");
    }
    std::string DefaultBelow(const std::string& root) const {
        return folder_.PathOf(root) + DefaultFile;
    }
    Environment Settings(const std::string& content) const {
        folder_.Write("settings/DyadSettingsRep.toml", content);
        return {{"VELSettingPath", folder_.PathOf("settings")}};
    }
    // The candidates' origins and verdicts, one per line.
    static std::string Verdicts(const Json& document) {
        std::string text;
        for (const Json& candidate : document["candidates"])
            text += candidate["origin"].get<std::string>() + " " +
                    candidate["verdict"].get<std::string>() + "\n";
        return text;
    }
    // What the library itself takes.
    std::string FileInUse(const Environment& environment) const {
        return RunForJson({"list"}, 0, environment)["file"];
    }
};

} // namespace

TEST_F(Which, NothingSetMeansNoFile) {
    const Json document = RunForJson({"which"}, 3);
    EXPECT_EQ(document["schema"], "dyadctx/which/1");
    EXPECT_EQ(document["file"], nullptr);
    EXPECT_EQ(document["usable"], false);
    EXPECT_EQ(Verdicts(document),
              "VELDyadCtxInit absent\nsettings absent\nVELInstallPath absent\n");
    EXPECT_EQ(document["candidates"][0]["path"], nullptr);
    EXPECT_EQ(document["candidates"][0]["reason"], "the variable is not set");
    EXPECT_EQ(document["candidates"][0]["root"], nullptr);
}

TEST_F(Which, TheVariableComesFirst) {
    Environment environment = Settings("DYAD_Ctx_XmlFile = '/other.xml'\n");
    environment["VELDyadCtxInit"] = folder_.PathOf("named.xml");
    environment["VELInstallPath"] = Roots();
    const Json document = RunForJson({"which"}, 0, environment);
    EXPECT_EQ(document["file"], folder_.PathOf("named.xml"));
    EXPECT_EQ(document["usable"], true);
    EXPECT_EQ(document["isDefault"], false);
    EXPECT_EQ(Verdicts(document),
              "VELDyadCtxInit chosen\nsettings ignored\nVELInstallPath ignored\n"
              "VELInstallPath ignored\nVELInstallPath ignored\n");
    EXPECT_EQ(document["candidates"][1]["path"], "/other.xml");
    EXPECT_EQ(FileInUse(environment), folder_.PathOf("named.xml"));
}

TEST_F(Which, ThenTheSettings) {
    Environment environment =
        Settings("DYAD_Ctx_XmlFile = '" + folder_.PathOf("named.xml") + "'\n");
    environment["VELDyadCtxInit"] = "1";
    environment["VELInstallPath"] = Roots();
    const Json document = RunForJson({"which"}, 0, environment);
    EXPECT_EQ(document["file"], folder_.PathOf("named.xml"));
    EXPECT_EQ(document["candidates"][0]["reason"],
              "a single character leaves the choice to the sources below");
    EXPECT_EQ(document["candidates"][1]["verdict"], "chosen");
    EXPECT_EQ(FileInUse(environment), folder_.PathOf("named.xml"));
}

TEST_F(Which, ThenTheFirstInstallationFolderThatHoldsTheDefaultFile) {
    const Environment environment{{"VELInstallPath", Roots()}};
    const Json document = RunForJson({"which"}, 0, environment);
    EXPECT_EQ(document["file"], DefaultBelow("two"));
    EXPECT_EQ(document["isDefault"], true);
    EXPECT_EQ(Verdicts(document), "VELDyadCtxInit absent\nsettings absent\nVELInstallPath absent\n"
                                  "VELInstallPath chosen\nVELInstallPath ignored\n");
    EXPECT_EQ(document["candidates"][3]["root"], 2);
    EXPECT_EQ(FileInUse(environment), DefaultBelow("two"));
}

TEST_F(Which, TheDefaultFileNamedByTheVariableIsNoDefault) {
    const Environment environment{{"VELDyadCtxInit", DefaultBelow("two")}};
    EXPECT_EQ(RunForJson({"which"}, 0, environment)["isDefault"], false);
    EXPECT_EQ(RunForJson({"list"}, 0, environment)["isDefault"], false);
}

TEST_F(Which, TheDefaultFileNamedByTheSettingsIsOne) {
    const Environment environment =
        Settings("DYAD_Ctx_XmlFile = '" + DefaultBelow("three") + "'\n");
    EXPECT_EQ(RunForJson({"which"}, 0, environment)["isDefault"], true);
    EXPECT_EQ(RunForJson({"list"}, 0, environment)["isDefault"], true);
}

TEST_F(Which, ZeroTurnsContextFilesOff) {
    const Environment environment{{"VELDyadCtxInit", "0"}, {"VELInstallPath", Roots()}};
    const Json document = RunForJson({"which"}, 3, environment);
    EXPECT_EQ(document["file"], nullptr);
    EXPECT_EQ(document["candidates"][0]["verdict"], "rejected");
    EXPECT_EQ(Run({"list"}, environment).status, 3);
}

TEST_F(Which, AFileThatIsTakenAndCannotBeReadIsRejectedWithTheReason) {
    MakeFifo(folder_.PathOf("fifo.xml"));
    std::filesystem::create_directories(folder_.Path() / "folder.xml");
    WriteContexts("upper.XML", Contexts);
    const std::vector<std::pair<std::string, std::string>> files{
        {folder_.PathOf("missing.xml"), "there is no such file"},
        {folder_.PathOf("no/such/a.xml"), "there is no folder " + folder_.PathOf("no/such")},
        {"named.xml", "the path names no folder; write ./NAME for a file of the working folder"},
        {folder_.PathOf("upper.XML"), "the name does not end in .xml, in lower case"},
        {folder_.PathOf("fifo.xml"), "it is not a regular file"},
        {folder_.PathOf("folder.xml"), "it is a folder"},
        {"", "the variable is set but empty, which counts as a file; unset it"},
    };
    for (const auto& [file, reason] : files) {
        const Environment environment{{"VELDyadCtxInit", file}};
        const Json document = RunForJson({"which"}, 3, environment);
        EXPECT_EQ(document["candidates"][0]["verdict"], "rejected") << file;
        EXPECT_EQ(document["candidates"][0]["reason"], reason) << file;
        EXPECT_EQ(Run({"list"}, environment).status, 3) << file;
    }
}

TEST_F(Which, ABrokenSettingsFileIsNamedWithPlaceAndReason) {
    Environment environment = Settings("DYAD_Ctx_XmlFile =\n");
    environment["VELInstallPath"] = Roots();
    const Json document = RunForJson({"which"}, 0, environment);
    const std::string reason = document["candidates"][1]["reason"];
    EXPECT_NE(reason.find("DyadSettingsRep.toml:1:19: "), std::string::npos) << reason;
    EXPECT_EQ(document["file"], DefaultBelow("two"));
}

TEST_F(Which, EachCandidateShowsItsOrigin) {
    Environment environment = Settings("# The site.\n[other]\nx = 1\n");
    folder_.Write("settings/DyadSettingsRep.toml",
                  "# The site.\nDYAD_Ctx_XmlFile = '" + folder_.PathOf("named.xml") + "'\n");
    environment["VELDyadCtxInit"] = "1";
    environment["VELInstallPath"] = Roots() + ";";
    const Json candidates = RunForJson({"which"}, 0, environment)["candidates"];
    ASSERT_EQ(candidates.size(), 6U);
    EXPECT_EQ(candidates[0]["variable"], "VELDyadCtxInit");
    EXPECT_EQ(candidates[0]["value"], "1");
    EXPECT_EQ(candidates[0]["settings"], nullptr);
    EXPECT_EQ(candidates[1]["variable"], "VELSettingPath");
    EXPECT_EQ(candidates[1]["value"], folder_.PathOf("settings"));
    EXPECT_EQ(candidates[1]["settings"],
              Json({{"file", folder_.PathOf("settings") + "/DyadSettingsRep.toml"}, {"line", 2}}));
    EXPECT_EQ(candidates[3]["variable"], "VELInstallPath");
    EXPECT_EQ(candidates[3]["value"], folder_.PathOf("two"));
    EXPECT_EQ(candidates[3]["fault"], nullptr);
    EXPECT_EQ(candidates[2]["fault"], "there is no folder " + folder_.PathOf("one"));
    EXPECT_EQ(candidates[5]["value"], "");
    EXPECT_EQ(candidates[5]["fault"],
              "an empty entry means the root of the file system, which does not hold this file");
}

TEST_F(Which, TheFolderOfTheSettingsFollowsFromTheFirstVariableThatCounts) {
    const std::string name = "/DyadSettingsRep.toml";
    struct Case {
        Environment environment;
        Json variable;
        Json settings;
    };
    const std::vector<Case> cases{
        {{{"HOME", "/home/a"}}, "HOME", "/home/a/.config/dyadctx" + name},
        {{{"HOME", "/home/a"}, {"XDG_CONFIG_HOME", "/etc/a"}},
         "XDG_CONFIG_HOME",
         "/etc/a/dyadctx" + name},
        {{{"HOME", "/home/a"}, {"XDG_CONFIG_HOME", "etc"}},
         "HOME",
         "/home/a/.config/dyadctx" + name},
        {{{"VELSettingPath", "here"}, {"XDG_CONFIG_HOME", "/etc/a"}},
         "VELSettingPath",
         "here" + name},
    };
    for (const Case& example : cases) {
        const Json settings = RunForJson({"which"}, 3, example.environment)["candidates"][1];
        EXPECT_EQ(settings["variable"], example.variable);
        EXPECT_EQ(settings["settings"]["file"], example.settings);
        EXPECT_EQ(settings["settings"]["line"], nullptr);
    }
    const Json nowhere = RunForJson({"which"}, 3, {{"HOME", ""}})["candidates"][1];
    EXPECT_EQ(nowhere["variable"], nullptr);
    EXPECT_EQ(nowhere["settings"], nullptr);
    EXPECT_EQ(nowhere["reason"], "the environment names no folder for settings");
}

TEST_F(Which, SettingsThatNameNoFileAreToldWithTheReason) {
    const std::string file = folder_.PathOf("settings") + "/DyadSettingsRep.toml";
    const std::vector<std::pair<std::string, std::string>> contents{
        {"other = 'x'\n", "DYAD_Ctx_XmlFile is missing in " + file},
        {"DYAD_Ctx_XmlFile = ''\n", "DYAD_Ctx_XmlFile is empty in " + file},
        {"\nDYAD_Ctx_XmlFile = 7\n",
         file + ":2:20: the value of DYAD_Ctx_XmlFile is not a text; put it in quotes"},
    };
    for (const auto& [content, reason] : contents) {
        const Json settings = RunForJson({"which"}, 3, Settings(content))["candidates"][1];
        EXPECT_EQ(settings["verdict"], "absent");
        EXPECT_EQ(settings["reason"], reason);
    }
}

TEST_F(Which, ACandidateThatWasNotReachedShowsWhetherItCouldBeRead) {
    Environment environment = Settings("DYAD_Ctx_XmlFile = '/no/such.xml'\n");
    environment["VELDyadCtxInit"] = folder_.PathOf("named.xml");
    environment["VELInstallPath"] = "/a:/b;" + folder_.PathOf("two");
    const Json candidates = RunForJson({"which"}, 0, environment)["candidates"];
    EXPECT_EQ(candidates[1]["reason"], "an earlier source decided");
    EXPECT_EQ(candidates[1]["fault"], "there is no folder /no");
    EXPECT_EQ(candidates[2]["fault"],
              "there is no folder /a:/b; folders are separated by ';', not by ':'");
    EXPECT_EQ(candidates[3]["fault"], nullptr);
}

TEST_F(Which, ExplainShowsEachSourceWithItsPlace) {
    Environment environment =
        Settings("\nDYAD_Ctx_XmlFile = '" + folder_.PathOf("named.xml") + "'\n");
    environment["VELInstallPath"] = folder_.PathOf("two") + ";/no\x1bwhere";
    const std::string path = folder_.Path().string();
    Expect({"explained",
            {"which", "--explain"},
            0,
            "1. VELDyadCtxInit: absent\n"
            "   reason  the variable is not set\n"
            "   from    VELDyadCtxInit\n"
            "2. settings: chosen\n"
            "   reason  the first source that names a file\n"
            "   from    " +
                path +
                "/settings/DyadSettingsRep.toml:2, attribute DYAD_Ctx_XmlFile (the folder by "
                "VELSettingPath)\n"
                "   path    \"" +
                path +
                "/named.xml\"\n"
                "3. VELInstallPath 1: ignored\n"
                "   reason  an earlier source decided\n"
                "   from    VELInstallPath, entry 1: \"" +
                path + "/two\"\n   path    \"" + path + "/two" + DefaultFile +
                "\" (it could be read)\n"
                "4. VELInstallPath 2: ignored\n"
                "   reason  an earlier source decided\n"
                "   from    VELInstallPath, entry 2: \"/no\\x1bwhere\"\n"
                "   path    \"/no\\x1bwhere" +
                DefaultFile +
                "\" (there is no folder /no\\x1bwhere)\n"
                "\n" +
                path + "/named.xml\n",
            {"note: The variable VELInstallPath is set, but has no effect: an earlier source "
             "decides which file is taken.\n"},
            environment});
}

TEST_F(Which, ExplainKeepsTheStatusAndItsNotesAreLeftOutOnRequest) {
    const Environment environment{{"VELDyadCtxInit", ""}, {"VELDyadCtxOut", ""}};
    const ChildResult result = Run({"which", "--explain", "-q"}, environment);
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.standardError, "dyadctx: error: no source names a context file\n");
    EXPECT_NE(result.standardOutput.find("from    VELDyadCtxInit = \"\"\n"), std::string::npos)
        << result.standardOutput;
}

TEST_F(Which, TextHasARowPerCandidateAndTheFileAtTheEnd) {
    const ChildResult result = Run({"which"}, {{"VELDyadCtxInit", folder_.PathOf("named.xml")}});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardError, "");
    EXPECT_NE(
        result.standardOutput.find("1  VELDyadCtxInit  chosen   " + folder_.PathOf("named.xml")),
        std::string::npos)
        << result.standardOutput;
    EXPECT_TRUE(result.standardOutput.ends_with("\n\n" + folder_.PathOf("named.xml") + "\n"));
}

TEST_F(Which, SettingsWithoutAFileAreNotSetWhoeverDecides) {
    const std::string file = folder_.PathOf("settings") + "/DyadSettingsRep.toml";
    Environment environment = Settings("other = 'x'\n");
    environment["VELDyadCtxInit"] = folder_.PathOf("named.xml");
    const Json settings = RunForJson({"which"}, 0, environment)["candidates"][1];
    EXPECT_EQ(settings["verdict"], "absent");
    EXPECT_EQ(settings["reason"], "DYAD_Ctx_XmlFile is missing in " + file);
    const std::string table = Run({"which"}, environment).standardOutput;
    EXPECT_NE(table.find("2  settings        not set "), std::string::npos) << table;
    const std::string explained = Run({"which", "--explain"}, environment).standardOutput;
    EXPECT_NE(explained.find("2. settings: not set\n"), std::string::npos) << explained;
}

TEST_F(Which, ThePathAloneIsThatOfTheFileInUse) {
    Expect({"named",
            {"which", "--path"},
            0,
            folder_.PathOf("named.xml") + "\n",
            {},
            {{"VELDyadCtxInit", folder_.PathOf("named.xml")}}});
    Expect({"installed, with the separators of the system",
            {"which", "--path"},
            0,
            folder_.PathOf("two") + "/resources/xml/DYAD/CONTEXT/Default.xml\n",
            {},
            {{"VELInstallPath", Roots()}}});
}

TEST_F(Which, WithoutAUsablePathNothingIsPrinted) {
    ExpectEach({{"none", {"which", "--path"}, 3, "", {"no source names a context file"}, {}},
                {"not there",
                 {"which", "--path"},
                 3,
                 "",
                 {"the library takes a file that it cannot read"},
                 {{"VELDyadCtxInit", folder_.PathOf("missing.xml")}}}});
}

TEST_F(Which, ThePathAloneGoesWithNoOtherForm) {
    for (const std::vector<std::string>& other :
         {std::vector<std::string>{"--explain"}, std::vector<std::string>{"--format", "json"}}) {
        std::vector<std::string> arguments{"which", "--path"};
        arguments.insert(arguments.end(), other.begin(), other.end());
        EXPECT_EQ(Run(arguments).status, 2) << other.front();
    }
}

} // namespace dyadctx::test
