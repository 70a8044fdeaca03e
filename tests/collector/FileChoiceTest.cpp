// SPDX-License-Identifier: MIT
// The candidates for the context file, beside what CreateCollector takes: each case is a process of
// its own.
#include "collector/VELDyadCtxFileChoice.h"

#include "support/ChildProcess.h"
#include "support/ContextFile.h"
#include "support/SpecialFiles.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace dyadctx::test {
namespace {

constexpr const char* DefaultFile = "\\resources\\xml\\DYAD\\CONTEXT\\Default.xml";
constexpr const char* DefaultFileInFolder = "resources/xml/DYAD/CONTEXT/Default.xml";

class FileChoice : public testing::Test {
protected:
    // What the probe prints of the choice and then of the collector.
    std::string Ask(std::map<std::string, std::optional<std::string>> environment,
                    std::vector<std::string> words = {}) {
        ChildRun run;
        run.program = CREATION_PROBE;
        words.emplace_back("choice");
        run.arguments = std::move(words);
        run.environment = std::move(environment);
        run.workingFolder = folder_.Path().string();
        const ChildResult result = RunChild(run);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardError, "");
        return result.standardOutput;
    }

    std::string ContextFile(const std::string& name) {
        return folder_.Write(
            name, DocumentWith("<Context Name=\"A\" Parameter=\"p\" ParameterType=\"Path\"/>"));
    }
    std::string Install(const std::string& root) {
        ContextFile(root + "/" + DefaultFileInFolder);
        return folder_.PathOf(root);
    }
    std::string Configure(const std::string& text) {
        folder_.Write("settings/DyadSettingsRep.toml", text);
        return folder_.PathOf("settings");
    }

    static std::string Decided(int index, const std::string& file, int isDefault) {
        const std::string both = "file=" + file + "\ndefault=" + std::to_string(isDefault) + "\n";
        return "result=0 deciding=" + std::to_string(index) + " usable=1\n" + both + both +
               "contexts=<A>\nmessage=\n";
    }

    TemporaryFolder folder_;
};

} // namespace

TEST_F(FileChoice, TheVariableDecidesAndTheOthersAreToldAllTheSame) {
    const std::string file = ContextFile("a.xml");
    const std::string root = Install("root");
    const std::string settings = Configure("\nDYAD_Ctx_XmlFile = 'other.xml'\n");

    EXPECT_EQ(Ask({{"VELDyadCtxInit", file},
                   {"VELSettingPath", settings},
                   {"VELInstallPath", "none;" + root}}),
              "variable 0 chosen VELDyadCtxInit=" + file + " path=" + file +
                  "\nsettings 0 ignored VELSettingPath=" + settings + " at " + settings +
                  Separator +
                  "DyadSettingsRep.toml:2 path=other.xml\n"
                  "folder 1 ignored VELInstallPath=none path=none" +
                  DefaultFile + "\nfolder 2 ignored VELInstallPath=" + root + " path=" + root +
                  DefaultFile + "\n" + Decided(1, file, 0));
}

TEST_F(FileChoice, SettingsDecideBeforeTheInstallation) {
    const std::string root = Install("root");
    const std::string settings = Configure("DYAD_Ctx_XmlFile = '" + root + DefaultFile + "'\n");

    EXPECT_EQ(Ask({{"VELSettingPath", settings}, {"VELInstallPath", root}}),
              "variable 0 absent VELDyadCtxInit=(not set) path=(none)\n"
              "settings 0 chosen VELSettingPath=" +
                  settings + " at " + settings + Separator + "DyadSettingsRep.toml:1 path=" + root +
                  DefaultFile + "\nfolder 1 ignored VELInstallPath=" + root + " path=" + root +
                  DefaultFile + "\n" + Decided(2, root + DefaultFile, 1));
}

TEST_F(FileChoice, TheFirstFolderThatHoldsTheDefaultFileDecides) {
    const std::string root = Install("root");

    EXPECT_EQ(Ask({{"VELDyadCtxInit", "1"}, {"HOME", ""}, {"VELInstallPath", "none;" + root}}),
              "variable 0 absent VELDyadCtxInit=1 path=(none)\n"
              "settings 0 absent =(not set) path=(none)\n"
              "folder 1 absent VELInstallPath=none path=none" +
                  std::string(DefaultFile) + "\nfolder 2 chosen VELInstallPath=" + root +
                  " path=" + root + DefaultFile + "\n" + Decided(4, root + DefaultFile, 1));
}

TEST_F(FileChoice, SettingsOfAHostHaveNoFileOrLine) {
    const std::string file = ContextFile("a.xml");
    const std::string settings = Configure("DYAD_Ctx_XmlFile = 'other.xml'\n");

    EXPECT_EQ(Ask({{"VELSettingPath", settings}}, {"host", file}),
              "variable 0 absent VELDyadCtxInit=(not set) path=(none)\n"
              "settings 0 chosen =(not set) path=" +
                  file + "\nfolder 0 absent VELInstallPath=(not set) path=(none)\n" +
                  Decided(2, file, 0));
}

TEST_F(FileChoice, AFileThatIsTakenAndRefusedDecides) {
    const std::string root = Install("root");

    EXPECT_EQ(Ask({{"VELDyadCtxInit", ""}, {"HOME", ""}, {"VELInstallPath", root}}),
              "variable 0 rejected VELDyadCtxInit= path=\n"
              "settings 0 absent =(not set) path=(none)\n"
              "folder 1 ignored VELInstallPath=" +
                  root + " path=" + root + DefaultFile +
                  "\nresult=0 deciding=1 usable=0\nfile=\ndefault=0\n"
                  "message=Ctx.Collector.XMLFileNotValid()\n\n");
}

TEST_F(FileChoice, NoughtDecidesForNoFile) {
    EXPECT_EQ(Ask({{"VELDyadCtxInit", "0"}, {"HOME", ""}}),
              "variable 0 rejected VELDyadCtxInit=0 path=(none)\n"
              "settings 0 absent =(not set) path=(none)\n"
              "folder 0 absent VELInstallPath=(not set) path=(none)\n"
              "result=0 deciding=1 usable=0\nfile=\ndefault=0\n"
              "message=Ctx.Collector.XMLFileNotValid()\n\n");
}

TEST_F(FileChoice, WhereNothingNamesAFileNothingDecides) {
    EXPECT_EQ(Ask({{"HOME", ""}, {"VELInstallPath", ""}}),
              "variable 0 absent VELDyadCtxInit=(not set) path=(none)\n"
              "settings 0 absent =(not set) path=(none)\n"
              "folder 0 absent VELInstallPath= path=(none)\n"
              "result=0 deciding=0 usable=0\nfile=\ndefault=0\n"
              "message=Ctx.Collector.XMLFileNotSet()\n\n");
}

TEST_F(FileChoice, VariablesCountAsTheyWereAtLoad) {
    const std::string file = ContextFile("a.xml");
    const std::string told =
        Ask({{"VELDyadCtxInit", file}, {"HOME", ""}}, {"set", "VELDyadCtxInit", "late.xml"});
    EXPECT_TRUE(told.starts_with("variable 0 chosen VELDyadCtxInit=" + file)) << told;
}

TEST_F(FileChoice, APathIsJudgedInTheOrderOfTheLibrary) {
    std::filesystem::create_directories(folder_.Path() / "folder.xml");
    std::vector<std::pair<std::string, VELDyadCtxPathVerdict>> cases{
        {"a.xml", VELDyadCtxPathVerdict::NoFolder},
        {"/no/such/a.xml", VELDyadCtxPathVerdict::FolderMissing},
        {folder_.PathOf("folder.xml/"), VELDyadCtxPathVerdict::NoName},
        {folder_.PathOf("a.XML"), VELDyadCtxPathVerdict::WrongExtension},
        {folder_.PathOf("missing.xml"), VELDyadCtxPathVerdict::Missing},
        {folder_.PathOf("folder.xml"), VELDyadCtxPathVerdict::IsFolder},
        {ContextFile("a.xml"), VELDyadCtxPathVerdict::Usable},
    };
    if (MakeFifo(folder_.PathOf("fifo.xml")))
        cases.emplace_back(folder_.PathOf("fifo.xml"), VELDyadCtxPathVerdict::NotRegular);
    for (const auto& [path, verdict] : cases)
        EXPECT_EQ(VELDyadCtxFileChoice::CheckPath(VELUnicodeString(path.c_str())), verdict) << path;
}

} // namespace dyadctx::test
