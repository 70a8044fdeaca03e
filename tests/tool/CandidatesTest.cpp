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
        {folder_.PathOf("folder.xml"), "it is not a regular file"},
        {"", "the path names no folder; write ./NAME for a file of the working folder"},
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

} // namespace dyadctx::test
