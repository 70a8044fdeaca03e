// SPDX-License-Identifier: MIT
#include "platform/VELSysSettingRepository.h"

#include "platform/Probe.h"
#include "support/EnvironmentVariable.h"
#include "support/SpecialFiles.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using dyadctx::test::EnvironmentVariable;
using dyadctx::test::RunChild;
using dyadctx::test::TemporaryFolder;

namespace {

// What the repository DyadSettingsRep returns for an attribute: its value, "refused" (with the
// output as before) or "absent".
std::string Answer(const char* attribute, const char* repository = "DyadSettingsRep") {
    auto* settings = VELSysSettingRepository::GetRepository(repository, 0);
    if (settings == nullptr)
        return "absent";
    VELUnicodeString value("untouched");
    const VELResult result = settings->ReadAttr(attribute, value);
    if (result < 0) {
        EXPECT_STREQ("untouched", value.ConvertToChar());
    }
    return result < 0 ? "refused" : std::string("<") + value.ConvertToChar() + ">";
}

// A settings folder with the given file, named by the environment.
class SettingsFolder {
public:
    explicit SettingsFolder(std::string_view content)
        : variable_("VELSettingPath", folder_.Path().string()) {
        folder_.Write("DyadSettingsRep.toml", content);
    }
    const TemporaryFolder& Folder() const { return folder_; }

private:
    TemporaryFolder folder_;
    EnvironmentVariable variable_;
};

using Kind = VELSettingRefusal::Kind;

// Every operation of a change, on the repository DyadSettingsRep.
VELSettingRefusal Set(const char* attribute, std::string_view value) {
    VELSettingRefusal refusal{Kind::NoMemory, "former", 1, 2};
    const VELResult result = VELSysSettingRepository::SetAttr("DyadSettingsRep", attribute,
                                                              VELUnicodeString(value), &refusal);
    EXPECT_EQ(refusal.IsRefusal(), result < 0);
    return refusal;
}

VELSettingRefusal Remove(const char* attribute) {
    VELSettingRefusal refusal{Kind::NoMemory, "former", 1, 2};
    const VELResult result =
        VELSysSettingRepository::RemoveAttr("DyadSettingsRep", attribute, &refusal);
    EXPECT_EQ(refusal.IsRefusal(), result < 0);
    return refusal;
}

int EntriesOf(const TemporaryFolder& folder) {
    return static_cast<int>(std::distance(std::filesystem::directory_iterator(folder.Path()), {}));
}

class HostSource final : public VELSysSettingSource {
public:
    bool throws = false;
    HostSource() { EXPECT_EQ(nullptr, VELSysSettingRepository::SetSource(this)); }
    ~HostSource() override { EXPECT_EQ(this, VELSysSettingRepository::SetSource(nullptr)); }
    HostSource(const HostSource&) = delete;
    HostSource& operator=(const HostSource&) = delete;

    bool HasRepository(const char* repository) override {
        if (throws)
            throw 42;
        return std::string(repository) == "Host";
    }
    VELResult Read(const char* repository, const char* attribute,
                   VELUnicodeString& value) override {
        value = (std::string(repository) + "/" + attribute).c_str();
        if (std::string(attribute) == "throws")
            throw std::runtime_error("no value");
        return std::string(attribute) == "missing" ? -5 : S_OK;
    }
};

// Keeps nothing; notes what it is asked to change.
class ChangeableSource final : public VELSysSettingSource {
public:
    std::string calls;

    bool HasRepository(const char*) override { return false; }
    VELResult Read(const char*, const char*, VELUnicodeString&) override { return E_FAIL; }
    VELResult Set(const char* repository, const char* attribute,
                  const VELUnicodeString& value) override {
        if (std::string(attribute) == "throws")
            throw std::runtime_error("no change");
        calls +=
            std::string("set ") + repository + "/" + attribute + " " + value.ConvertToChar() + ";";
        return S_OK;
    }
    VELResult Remove(const char* repository, const char* attribute) override {
        calls += std::string("remove ") + repository + "/" + attribute + ";";
        return S_OK;
    }
};

} // namespace

TEST(VELSysSettingRepository, ReturnsTopLevelTexts) {
    const SettingsFolder settings("# a comment\n"
                                  "DYAD_Ctx_XmlFile = '\\\\host\\share\\contexts.xml'\n"
                                  "basic = \"a\\tb\"\n"
                                  "empty = \"\"\n"
                                  "\"quoted key\" = \"\xC3\xA9\"\n"
                                  "[table]\ninner = \"x\"\n");
    EXPECT_EQ("<\\\\host\\share\\contexts.xml>", Answer("DYAD_Ctx_XmlFile"));
    EXPECT_EQ("<a\tb>", Answer("basic"));
    EXPECT_EQ("<>", Answer("empty"));
    EXPECT_EQ("<\xC3\xA9>", Answer("quoted key"));
}

TEST(VELSysSettingRepository, RefusesWhatIsNoTopLevelText) {
    const SettingsFolder settings("number = 5\nyes = true\nlist = [\"x\"]\ndate = 2001-01-01\n"
                                  "dotted.key = \"x\"\n[table]\ninner = \"x\"\n");
    for (const char* attribute :
         {"number", "yes", "list", "date", "table", "inner", "dotted.key", "missing", "", "Number"})
        EXPECT_EQ("refused", Answer(attribute)) << attribute;
    EXPECT_EQ("refused", Answer(nullptr));
}

TEST(VELSysSettingRepository, ReadsTheFileAfreshAtEachCall) {
    const SettingsFolder settings("file = \"one\"\n");
    EXPECT_EQ("<one>", Answer("file"));
    settings.Folder().Write("DyadSettingsRep.toml", "file = \"two\"\n");
    EXPECT_EQ("<two>", Answer("file"));
    settings.Folder().Write("DyadSettingsRep.toml", "other = \"two\"\n");
    EXPECT_EQ("refused", Answer("file"));
}

TEST(VELSysSettingRepository, IsAbsentWithoutAUsableFile) {
    const SettingsFolder settings("file = \"one\"\n");
    EXPECT_EQ("absent", Answer("file", "Another"));
    EXPECT_EQ("absent", Answer("file", ""));
    EXPECT_EQ("absent", Answer("file", nullptr));
    for (const char* broken : {"file = ", "file = \"one", "file = \"one\"\nfile = \"two\"\n", "[[[",
                               "\xFF\xFE", "file = \"\xFF\"\n"}) {
        settings.Folder().Write("DyadSettingsRep.toml", broken);
        EXPECT_EQ("absent", Answer("file")) << broken;
    }
}

TEST(VELSysSettingRepository, IsAbsentWhereThereIsNoRegularFile) {
    const TemporaryFolder folder;
    const EnvironmentVariable variable("VELSettingPath", folder.Path().string());
    dyadctx::test::MakeFifo(folder.PathOf("Fifo.toml"));
    std::filesystem::create_directory(folder.Path() / "Folder.toml");
    EXPECT_EQ("absent", Answer("file", "Fifo"));
    EXPECT_EQ("absent", Answer("file", "Folder"));
}

TEST(VELSysSettingRepository, NamesDoNotLeadOutOfTheFolder) {
    const SettingsFolder settings("file = \"one\"\n");
    settings.Folder().Write("sub/other.toml", "file = \"one\"\n");
    EXPECT_EQ("absent", Answer("file", "sub/other"));
    EXPECT_EQ("absent", Answer("file", "sub\\other"));
    EXPECT_EQ("absent", Answer("file", "sub/../DyadSettingsRep"));
}

TEST(VELSysSettingRepository, LooksInTheFoldersOfTheUserInOrder) {
    const TemporaryFolder folder;
    const std::string base = folder.Path().string();
    folder.Write("named/R.toml", "file = \"named\"\n");
    folder.Write("xdg/dyadctx/R.toml", "file = \"xdg\"\n");
    folder.Write("home/.config/dyadctx/R.toml", "file = \"home\"\n");
    using Variables = std::map<std::string, std::optional<std::string>>;
    const std::pair<Variables, const char*> cases[] = {
        {{{"VELSettingPath", base + "/named"}, {"XDG_CONFIG_HOME", base + "/xdg"}}, "named"},
        {{{"VELSettingPath", base + "\\named"}}, "named"},
        {{{"XDG_CONFIG_HOME", base + "/xdg"}, {"HOME", base + "/home"}}, "xdg"},
        {{{"VELSettingPath", ""}, {"XDG_CONFIG_HOME", base + "/xdg"}}, "xdg"},
        {{{"HOME", base + "/home"}}, "home"},
        {{{"XDG_CONFIG_HOME", ""}, {"HOME", base + "/home"}}, "home"},
        {{{"XDG_CONFIG_HOME", "relative"}, {"HOME", base + "/home"}}, "home"},
    };
    for (const auto& [variables, expected] : cases) {
        const auto run = ProbeRun({"setting", "R", "file"}, variables);
        EXPECT_EQ(std::string("value <") + expected + ">\n", RunChild(run).standardOutput);
    }
    const auto homeless = ProbeRun({"setting", "R", "file"}, {{"HOME", std::nullopt}});
    EXPECT_EQ("absent\n", RunChild(homeless).standardOutput);
    // A folder that is named and lacks the file is not replaced by another one.
    const auto empty =
        ProbeRun({"setting", "R", "file"}, {{"VELSettingPath", base}, {"HOME", base + "/home"}});
    EXPECT_EQ("absent\n", RunChild(empty).standardOutput);
}

TEST(VELSysSettingRepository, AHostsSourceIsAskedInstead) {
    const SettingsFolder settings("file = \"one\"\n");
    {
        HostSource source;
        EXPECT_EQ("<Host/file>", Answer("file", "Host"));
        EXPECT_EQ("refused", Answer("missing", "Host"));
        EXPECT_EQ("refused", Answer("throws", "Host"));
        EXPECT_EQ("absent", Answer("file", "DyadSettingsRep"));
        source.throws = true;
        EXPECT_EQ("absent", Answer("file", "Host"));
    }
    EXPECT_EQ("<one>", Answer("file"));
}

TEST(VELSysSettingRepository, AHostsSourceRefusesChangesUnlessItOverridesThem) {
    const SettingsFolder settings("file = \"one\"\n");
    {
        HostSource source;
        EXPECT_EQ(Kind::NotOffered, Set("file", "two").kind);
        EXPECT_EQ(Kind::NotOffered, Remove("file").kind);
    }
    EXPECT_EQ("<one>", Answer("file"));
    ChangeableSource source;
    VELSysSettingRepository::SetSource(&source);
    EXPECT_EQ(Kind::None, Set("file", "two").kind);
    EXPECT_EQ(Kind::None, Remove("other").kind);
    EXPECT_EQ(Kind::NotOffered, Set("throws", "").kind);
    VELSysSettingRepository::SetSource(nullptr);
    EXPECT_EQ("set DyadSettingsRep/file two;remove DyadSettingsRep/other;", source.calls);
    EXPECT_EQ("<one>", Answer("file"));
}

TEST(VELSysSettingRepository, SetsAndRemovesAnAttributeAndKeepsAllElse) {
    const SettingsFolder settings("# why\na = 'x' # first\n\n[t]\nb = 1\n");
    const auto text = [&] { return settings.Folder().Read("DyadSettingsRep.toml"); };
    EXPECT_EQ(Kind::None, Set("a", "y").kind);
    EXPECT_EQ("# why\na = \"y\" # first\n\n[t]\nb = 1\n", text());
    EXPECT_EQ(Kind::None, Set("c", "z").kind);
    EXPECT_EQ("# why\na = \"y\" # first\nc = \"z\"\n\n[t]\nb = 1\n", text());
    EXPECT_EQ(Kind::None, Remove("a").kind);
    EXPECT_EQ("# why\nc = \"z\"\n\n[t]\nb = 1\n", text());
    EXPECT_EQ(1, EntriesOf(settings.Folder()));
}

TEST(VELSysSettingRepository, SetsAnAttributeAfterAByteOrderMark) {
    const SettingsFolder settings("\xEF\xBB\xBF"
                                  "a = 'x'\n");
    EXPECT_EQ(Kind::None, Set("a", "y").kind);
    EXPECT_EQ("\xEF\xBB\xBF"
              "a = \"y\"\n",
              settings.Folder().Read("DyadSettingsRep.toml"));
}

TEST(VELSysSettingRepository, SetMakesFileAndFolder) {
    const TemporaryFolder folder;
    const EnvironmentVariable variable("VELSettingPath", folder.Path().string() + "\\new/deeper");
    EXPECT_EQ(Kind::NoAttribute, Remove("a").kind);
    EXPECT_EQ(Kind::BadValue, Set("a", "\xFF").kind);
    EXPECT_EQ(0, EntriesOf(folder)) << "what is refused makes no folder";
    EXPECT_EQ(Kind::None, Set("a", "x").kind);
    EXPECT_EQ("a = \"x\"\n", folder.Read("new/deeper/DyadSettingsRep.toml"));
}

TEST(VELSysSettingRepository, ListsTheTextsInTheOrderOfTheFile) {
    const SettingsFolder settings("z = 'one'\nn = 3\na = \"two\"\n[t]\nx = 'no'\n");
    VELListVal<VELSetting> found;
    VELSettingRefusal refusal;
    EXPECT_EQ(S_OK, VELSysSettingRepository::ListAttrs("DyadSettingsRep", found, &refusal));
    ASSERT_EQ(2, found.Size());
    EXPECT_STREQ("z", found[1].name.ConvertToChar());
    EXPECT_STREQ("one", found[1].value.ConvertToChar());
    EXPECT_EQ(1, found[1].line);
    EXPECT_STREQ("a", found[2].name.ConvertToChar());
    EXPECT_EQ(3, found[2].line);
    EXPECT_EQ(5, found[2].column);
    EXPECT_EQ(E_FAIL, VELSysSettingRepository::ListAttrs("Other", found, &refusal));
    EXPECT_EQ(Kind::NoFile, refusal.kind);
    EXPECT_EQ(2, found.Size());
}

TEST(VELSysSettingRepository, SaysWhyAnAttributeIsNotChanged) {
    const SettingsFolder settings("a.b = 1\na.c = 2\n");
    EXPECT_EQ(Kind::NotAlone, Set("a", "x").kind);
    EXPECT_EQ(Kind::BadValue, Set("a\xFF", "x").kind);
    EXPECT_EQ(Kind::NoAttribute, Remove("other").kind);
    settings.Folder().Write("DyadSettingsRep.toml", "a = \n");
    const VELSettingRefusal broken = Set("a", "x");
    EXPECT_EQ(Kind::NotToml, broken.kind);
    EXPECT_EQ(1, broken.line);
    EXPECT_EQ("a = \n", settings.Folder().Read("DyadSettingsRep.toml"));
    for (const char* name : {static_cast<const char*>(nullptr), "", "a/b"}) {
        VELSettingRefusal refusal;
        EXPECT_EQ(E_FAIL, VELSysSettingRepository::SetAttr(name, "a", "x", &refusal));
        EXPECT_EQ(Kind::NoFolder, refusal.kind);
    }
}

TEST(VELSysSettingRepository, WhatCannotBeReadIsNotTakenForEmpty) {
    const SettingsFolder settings("");
    std::filesystem::remove(settings.Folder().Path() / "DyadSettingsRep.toml");
    std::filesystem::create_symlink("DyadSettingsRep.toml",
                                    settings.Folder().Path() / "DyadSettingsRep.toml");
    EXPECT_EQ(Kind::NotReadable, Set("a", "x").kind);
    EXPECT_TRUE(std::filesystem::is_symlink(settings.Folder().Path() / "DyadSettingsRep.toml"));
}

TEST(VELSysSettingRepository, ChangesOfSeveralThreadsAreAllKept) {
    const SettingsFolder settings("# shared\n");
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([thread] {
            for (int i = 0; i < 10; ++i)
                Set(("a" + std::to_string(thread) + "_" + std::to_string(i)).c_str(), "x");
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    VELListVal<VELSetting> found;
    VELSysSettingRepository::ListAttrs("DyadSettingsRep", found);
    EXPECT_EQ(80, found.Size());
    EXPECT_EQ(1, EntriesOf(settings.Folder())) << "nothing of the lock is left";
}

TEST(VELSysSettingRepository, ALockThatIsNeverGivenBackRefusesTheChange) {
    const SettingsFolder settings("a = 'x'\n");
    const dyadctx::test::FolderLock lock(settings.Folder().Path().string());
    const VELSettingRefusal refusal = Set("a", "y");
    EXPECT_EQ(Kind::NotLocked, refusal.kind);
    EXPECT_STREQ("another process has had the settings locked for five seconds",
                 refusal.reason.ConvertToChar());
    EXPECT_EQ("<x>", Answer("a"));
}

TEST(VELSysSettingRepository, NamesTheFileOfARepositoryWhetherOrNotItExists) {
    const SettingsFolder settings("file = \"one\"\n");
    VELUnicodeString file;
    EXPECT_EQ(S_OK, VELSysSettingRepository::GetRepositoryFile("DyadSettingsRep", file));
    EXPECT_EQ(settings.Folder().PathOf("DyadSettingsRep.toml"), file.ConvertToChar());
    EXPECT_EQ(S_OK, VELSysSettingRepository::GetRepositoryFile("Other", file));
    EXPECT_EQ(settings.Folder().PathOf("Other.toml"), file.ConvertToChar());
}

TEST(VELSysSettingRepository, NamesNoFileForAnInvalidName) {
    const SettingsFolder settings("");
    VELUnicodeString file("untouched");
    for (const char* name : {static_cast<const char*>(nullptr), "", "a/b", "..\\b"}) {
        EXPECT_EQ(E_FAIL, VELSysSettingRepository::GetRepositoryFile(name, file));
        EXPECT_STREQ("untouched", file.ConvertToChar());
    }
}
