// SPDX-License-Identifier: MIT
// What the settings fixed at load decide: each case is a process of its own.
#include "support/ChildProcess.h"
#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace dyadctx::test {
namespace {

constexpr const char* DefaultFile = "\\resources\\xml\\DYAD\\CONTEXT\\Default.xml";
constexpr const char* DefaultFileInFolder = "resources/xml/DYAD/CONTEXT/Default.xml";

std::string DocumentOf(const std::string& name) {
    return DocumentWith("<Context Name=\"" + name + "\" Parameter=\"p\" ParameterType=\"Path\"/>");
}

class CreationSettings : public testing::Test {
protected:
    // What the probe prints with these variables set.
    std::string Ask(std::map<std::string, std::optional<std::string>> environment,
                    std::vector<std::string> words = {}) {
        ChildRun run;
        run.program = CREATION_PROBE;
        run.arguments = std::move(words);
        run.environment = std::move(environment);
        run.workingFolder = folder_.Path().string();
        run.asOrdinaryUser = asOrdinaryUser_;
        const ChildResult result = RunChild(run);
        EXPECT_EQ(result.status, 0);
        EXPECT_FALSE(result.timedOut);
        EXPECT_EQ(result.standardError, "");
        return result.standardOutput;
    }

    // An installation folder that holds a default file with a context of that name.
    std::string Install(const std::string& root, const std::string& context) {
        folder_.Write(root + "/" + DefaultFileInFolder, DocumentOf(context));
        return folder_.PathOf(root);
    }

    // The folder of settings whose repository has that text.
    std::string Configure(const std::string& text) {
        folder_.Write("settings/DyadSettingsRep.toml", text);
        return folder_.PathOf("settings");
    }

    std::string SettingFile(const std::string& path) {
        return Configure("DYAD_Ctx_XmlFile = '" + path + "'\n");
    }

    static std::string Created(const std::string& file, int isDefault, const std::string& context) {
        return "file=" + file + "\ndefault=" + std::to_string(isDefault) + "\ncontexts=<" +
               context + ">\nmessage=\n";
    }

    TemporaryFolder folder_;
    bool asOrdinaryUser_ = false;
};

// ---- The installation's default file ----------------------------------------------------------

TEST_F(CreationSettings, TheFirstInstallationFolderThatHoldsTheDefaultFileIsUsed) {
    const std::string second = Install("second", "Second");
    Install("third", "Third");
    const std::string roots =
        folder_.PathOf("first") + ";" + second + ";" + folder_.PathOf("third");

    EXPECT_EQ(Ask({{"VELInstallPath", roots}}), Created(second + DefaultFile, 1, "Second"));
}

TEST_F(CreationSettings, EveryStepOfTheChoiceIsTraced) {
    const std::string root = Install("root", "R");
    const std::string file = root + DefaultFile;

    EXPECT_EQ(Ask({{"VELInstallPath", root}}, {"trace"}),
              "ENTER VELDyadCtxCollector:CreateCollector\n"
              "LOG VELDyadCtxCollector:GetDefaultContextXML File <" +
                  file +
                  ">\n"
                  "LOG VELDyadCtxCollector:CreateCollector XMLFile (settings)=<" +
                  file +
                  ">\n"
                  "LOG VELDyadCtxCollector:Constructor-isDefault=1 - File=<" +
                  file +
                  ">\n"
                  "LEAVE VELDyadCtxCollector:CreateCollector Msg=<>\n" +
                  Created(file, 1, "R"));
}

TEST_F(CreationSettings, EmptyAndUnknownFoldersInTheListArePassedOver) {
    const std::string root = Install("root", "R");

    for (const std::string& roots :
         {";;" + root, root + ";", "none;;" + root + ";", ";" + root + ";" + root})
        EXPECT_EQ(Ask({{"VELInstallPath", roots}}), Created(root + DefaultFile, 1, "R")) << roots;
}

TEST_F(CreationSettings, AnInstallationFolderIsTakenAsItIs) {
    const std::string root = Install("root", "R");

    EXPECT_EQ(Ask({{"VELInstallPath", root + "/"}}), Created(root + "/" + DefaultFile, 1, "R"));
    EXPECT_EQ(Ask({{"VELInstallPath", root + " "}}), "message=Ctx.Collector.XMLFileNotSet()\n\n");
    EXPECT_EQ(Ask({{"VELInstallPath", root + ":" + root}}),
              "message=Ctx.Collector.XMLFileNotSet()\n\n");
}

TEST_F(CreationSettings, AFolderInsteadOfTheDefaultFileIsChosenAndRefused) {
    std::filesystem::create_directories(folder_.Path() / "root" / DefaultFileInFolder);
    const std::string root = folder_.PathOf("root");

    EXPECT_EQ(Ask({{"VELInstallPath", root}}),
              "message=Ctx.Collector.XMLFileNotValid(" + root + DefaultFile + ")\n\n");
}

TEST_F(CreationSettings, NoFileAtAllIsSaidAndNotLeft) {
    EXPECT_EQ(Ask({{"VELDyadCtxTracer", ""}}, {"trace", "message", "before\n"}),
              "ENTER VELDyadCtxCollector:CreateCollector\n"
              "LOG VELDyadCtxCollector:CreateCollector XMLFile (settings)=<>\n"
              "WARNING VELDyadCtxCollector::LogError Method "
              "<VELDyadCtxCollector::CreateCollector> "
              "Error=<before\nCtx.Collector.XMLFileNotSet()\n>\n"
              "ERROR VELDyadCtxCollector:CreateCollector No File-NoSettings <>\n"
              "message=before\nCtx.Collector.XMLFileNotSet()\n\n");
}

TEST_F(CreationSettings, TheSearchInAnInstallationThatHoldsNoFileIsTraced) {
    const std::string told = Ask({{"VELInstallPath", "none"}}, {"trace"});

    EXPECT_NE(told.find("LOG VELDyadCtxCollector:GetDefaultContextXML File <>\n"),
              std::string::npos)
        << told;
}

// ---- The file selector ------------------------------------------------------------------------

TEST_F(CreationSettings, ASelectorOfOneCharacterMeansTheInstallation) {
    const std::string root = Install("root", "R");

    for (const char* selector : {"1", "2", "x", "/", ".", "\xC3\xA9"})
        EXPECT_EQ(Ask({{"VELInstallPath", root}, {"VELDyadCtxInit", selector}}),
                  Created(root + DefaultFile, 1, "R"))
            << selector;
}

TEST_F(CreationSettings, ASelectorWithAPathIsTheFileAndNeverTheDefaultOne) {
    const std::string file = Install("root", "R") + DefaultFile;

    EXPECT_EQ(Ask({{"VELDyadCtxInit", file}}, {"trace"}),
              "ENTER VELDyadCtxCollector:CreateCollector\n"
              "LOG VELDyadCtxCollector:CreateCollector XMLFile (VELDyadCtxInit)=<" +
                  file +
                  ">\n"
                  "LOG VELDyadCtxCollector:Constructor-isDefault=0 - File=<" +
                  file +
                  ">\n"
                  "LEAVE VELDyadCtxCollector:CreateCollector Msg=<>\n" +
                  Created(file, 0, "R"));
}

TEST_F(CreationSettings, ASelectorWithAPathWinsOverSettingsAndInstallation) {
    const std::string file = folder_.Write("chosen.xml", DocumentOf("Chosen"));

    EXPECT_EQ(Ask({{"VELDyadCtxInit", file},
                   {"VELInstallPath", Install("root", "R")},
                   {"VELSettingPath", SettingFile("elsewhere")}}),
              Created(file, 0, "Chosen"));
}

TEST_F(CreationSettings, TheSelectorNoughtSwitchesContextFilesOff) {
    const std::string root = Install("root", "R");

    EXPECT_EQ(Ask({{"VELDyadCtxInit", "0"}, {"VELInstallPath", root}}, {"trace"}),
              "ENTER VELDyadCtxCollector:CreateCollector\n"
              "WARNING VELDyadCtxCollector:CreateCollector KO\n"
              "WARNING VELDyadCtxCollector::LogError Method "
              "<VELDyadCtxCollector::CreateCollector> "
              "Error=<Ctx.Collector.XMLFileNotValid()\n>\n"
              "LEAVE VELDyadCtxCollector:CreateCollector Msg=<Ctx.Collector.XMLFileNotValid()\n>\n"
              "message=Ctx.Collector.XMLFileNotValid()\n\n");
}

TEST_F(CreationSettings, AnEmptySelectorIsAnEmptyPath) {
    EXPECT_EQ(Ask({{"VELDyadCtxInit", ""}, {"VELInstallPath", Install("root", "R")}}),
              "message=Ctx.Collector.XMLFileNotValid()\n\n");
}

TEST_F(CreationSettings, ChangesAfterTheLoadHaveNoEffect) {
    const std::string root = Install("root", "R");
    const std::string other = folder_.Write("other.xml", DocumentOf("Other"));

    EXPECT_EQ(Ask({{"VELInstallPath", root}},
                  {"set", "VELDyadCtxInit", other, "set", "VELInstallPath", "none", "set",
                   "VELDyadCtxOut", folder_.PathOf("out.xml")}),
              Created(root + DefaultFile, 1, "R"));
    EXPECT_FALSE(std::filesystem::exists(folder_.PathOf("out.xml")));
}

// ---- The settings repository ------------------------------------------------------------------

TEST_F(CreationSettings, TheSettingsFileWinsOverTheInstallation) {
    const std::string root = Install("root", "R");
    const std::string file = folder_.Write("set.xml", DocumentOf("Set"));

    const std::string told =
        Ask({{"VELInstallPath", root}, {"VELSettingPath", SettingFile(file)}}, {"trace"});

    // The line about the settings names the installation's file.
    EXPECT_EQ(told, "ENTER VELDyadCtxCollector:CreateCollector\n"
                    "LOG VELDyadCtxCollector:GetDefaultContextXML File <" +
                        root + DefaultFile +
                        ">\n"
                        "LOG VELDyadCtxCollector:CreateCollector XMLFile (settings)=<" +
                        root + DefaultFile +
                        ">\n"
                        "LOG VELDyadCtxCollector:Constructor-isDefault=0 - File=<" +
                        file +
                        ">\n"
                        "LEAVE VELDyadCtxCollector:CreateCollector Msg=<>\n" +
                        Created(file, 0, "Set"));
}

TEST_F(CreationSettings, ASettingsFileNeedsNoInstallation) {
    const std::string file = folder_.Write("set.xml", DocumentOf("Set"));

    EXPECT_EQ(Ask({{"VELSettingPath", SettingFile(file)}}), Created(file, 0, "Set"));
}

TEST_F(CreationSettings, ASettingsFileIsTheDefaultOneByItsText) {
    const std::string root = Install("root", "R");

    EXPECT_EQ(Ask({{"VELSettingPath", SettingFile(root + DefaultFile)}}),
              Created(root + DefaultFile, 1, "R"));
    EXPECT_EQ(Ask({{"VELSettingPath", SettingFile(root + "/" + DefaultFileInFolder)}}),
              Created(root + "/" + DefaultFileInFolder, 0, "R"));
}

TEST_F(CreationSettings, SettingsThatNameNoFileLeaveItToTheInstallation) {
    const std::string root = Install("root", "R");

    for (const char* text : {"", "DYAD_Ctx_XmlFile = ''\n", "DYAD_Ctx_XmlFile = 7\n",
                             "dyad_ctx_xmlfile = '/other.xml'\n"})
        EXPECT_EQ(Ask({{"VELInstallPath", root}, {"VELSettingPath", Configure(text)}}),
                  Created(root + DefaultFile, 1, "R"))
            << text;
}

// ---- The batch mark ---------------------------------------------------------------------------

TEST_F(CreationSettings, TheBatchIsMarkedBeforeACreationThatFails) {
    EXPECT_EQ(Ask({{"VELDyadCtxInit", "none.xml"}, {"VELDyadCtxTracer", "0"}}, {"trace"}),
              "ENTER VELDyadCtxCollector:CreateCollector\n"
              "LOG VELDyadCtxCollector:CreateCollector XMLFile (VELDyadCtxInit)=<none.xml>\n"
              "LOG BatchStack : console trace set\n"
              "WARNING VELDyadCtxCollector:CreateCollector KO\n"
              "WARNING VELDyadCtxCollector::LogError Method "
              "<VELDyadCtxCollector::CreateCollector> "
              "Error=<Ctx.Collector.XMLFileNotValid(none.xml)\n>\n"
              "LEAVE VELDyadCtxCollector:CreateCollector "
              "Msg=<Ctx.Collector.XMLFileNotValid(none.xml)\n>\n"
              "message=Ctx.Collector.XMLFileNotValid(none.xml)\n\n");
}

TEST_F(CreationSettings, TheBatchMarkFollowsTheVariableAsItIsNow) {
    const std::string told =
        Ask({{"VELDyadCtxInit", "none.xml"}}, {"trace", "set", "VELDyadCtxTracer", "1"});

    EXPECT_NE(told.find("LOG BatchStack : console trace set\n"), std::string::npos) << told;
    EXPECT_EQ(told.find("DYADCTX"), std::string::npos) << told;
}

// ---- The output file --------------------------------------------------------------------------

TEST_F(CreationSettings, TheCollectorIsWrittenToTheOutputFile) {
    const std::string in = folder_.Write("in.xml", DocumentOf("A"));
    const std::string out = folder_.PathOf("out.xml");

    EXPECT_EQ(Ask({{"VELDyadCtxInit", in}, {"VELDyadCtxOut", out}}), Created(in, 0, "A"));
    EXPECT_EQ(Ask({{"VELDyadCtxInit", out}}), Created(out, 0, "A"));
}

TEST_F(CreationSettings, TheOutputFileMayBeABareName) {
    const std::string in = folder_.Write("in.xml", DocumentOf("A"));

    EXPECT_EQ(Ask({{"VELDyadCtxInit", in}, {"VELDyadCtxOut", "bare"}}), Created(in, 0, "A"));
    EXPECT_NE(folder_.Read("bare").find("Name=\"A\""), std::string::npos);
}

TEST_F(CreationSettings, AnOutputFileThatCannotBeWrittenMakesTheCreationFail) {
    const std::string in = folder_.Write("in.xml", DocumentOf("A"));
    const std::string out = folder_.PathOf("none/out.xml");

    EXPECT_EQ(Ask({{"VELDyadCtxInit", in}, {"VELDyadCtxOut", out}}, {"trace", "message", "old"}),
              "ENTER VELDyadCtxCollector:CreateCollector\n"
              "LOG VELDyadCtxCollector:CreateCollector XMLFile (VELDyadCtxInit)=<" +
                  in +
                  ">\n"
                  "LOG VELDyadCtxCollector:Constructor-isDefault=0 - File=<" +
                  in +
                  ">\n"
                  "WARNING VELDyadCtxCollector:DeleteCollectorAtCreate KO with Method <Stream> "
                  "and Msg=<old>\n"
                  "WARNING VELDyadCtxCollector::LogError Method "
                  "<VELDyadCtxCollector::DeleteCollectorAtCreate> "
                  "Error=<Ctx.Collector.StreamError()>\n"
                  "LOG VELDyadCtxCollector:Destructor\n"
                  "WARNING VELDyadCtxCollector:CreateCollector Can not retrieve the Stream\n"
                  "LEAVE VELDyadCtxCollector:CreateCollector "
                  "Msg=<Ctx.Collector.StreamError() : old>\n"
                  "message=Ctx.Collector.StreamError() : old\n");
    EXPECT_EQ(Ask({{"VELDyadCtxInit", in}, {"VELDyadCtxOut", out}}), "message=\n");
}

TEST_F(CreationSettings, AFailedCreationWritesNoOutputFile) {
    const std::string in = folder_.Write("in.xml", DocumentOf("A!"));
    const std::string out = folder_.PathOf("out.xml");

    EXPECT_EQ(Ask({{"VELDyadCtxInit", in}, {"VELDyadCtxOut", out}}),
              "message=Ctx.Collector.CheckError() : Ctx.Check.CtxNameWithInvalidChar()\n\n");
    EXPECT_FALSE(std::filesystem::exists(out));
}

// ---- Rights -----------------------------------------------------------------------------------

TEST_F(CreationSettings, AFileThatMayNotBeReadIsRefused) {
    using std::filesystem::perms;
    std::filesystem::permissions(folder_.Path(), perms::all);
    const std::string file = folder_.Write("closed.xml", DocumentOf("A"));
    asOrdinaryUser_ = true;
    EXPECT_EQ(Ask({{"VELDyadCtxInit", file}}), Created(file, 0, "A"));

    std::filesystem::permissions(file, perms::none);
    EXPECT_EQ(Ask({{"VELDyadCtxInit", file}}),
              "message=Ctx.Collector.XMLFileNotValid(" + file + ")\n\n");
}

TEST_F(CreationSettings, AFolderThatMayNotBeListedIsRefused) {
    using std::filesystem::perms;
    std::filesystem::permissions(folder_.Path(), perms::all);
    const std::string file = folder_.Write("folder/a.xml", DocumentOf("A"));
    asOrdinaryUser_ = true;
    std::filesystem::permissions(folder_.PathOf("folder"),
                                 perms::owner_exec | perms::group_exec | perms::others_exec);

    EXPECT_EQ(Ask({{"VELDyadCtxInit", file}}),
              "message=Ctx.Collector.XMLFileNotValid(" + file + ")\n\n");
    std::filesystem::permissions(folder_.PathOf("folder"), perms::all);
}

} // namespace
} // namespace dyadctx::test
