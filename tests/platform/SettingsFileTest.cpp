#include "platform/detail/SettingsFile.h"

#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>

using dyadctx::SettingsAnswer;
using dyadctx::test::EnvironmentVariable;
using dyadctx::test::TemporaryFolder;

namespace {

std::string PathIn(const char* folder, const VELUnicodeString& repository) {
    const EnvironmentVariable variable("VELSettingPath", folder);
    return std::string(dyadctx::SettingsFilePath(repository).AsView());
}

struct Reading {
    SettingsAnswer answer;
    std::string value;
    std::string reason;
};

Reading Read(const std::string& path, const char* attribute) {
    VELUnicodeString value("untouched");
    std::string reason;
    const SettingsAnswer answer =
        dyadctx::ReadSettingsFile(VELUnicodeString(path), attribute, value, reason);
    return {answer, value.ConvertToChar(), reason};
}

} // namespace

TEST(SettingsFile, LiesInTheNamedFolder) {
    EXPECT_EQ("/etc/x/R.toml", PathIn("/etc/x", "R"));
    EXPECT_EQ("\\\\host\\share/R.toml", PathIn("\\\\host\\share", "R"));
}

TEST(SettingsFile, HasNoPathForNamesThatLeadElsewhere) {
    for (const VELUnicodeString& name : {VELUnicodeString(""), VELUnicodeString("a/b"),
                                         VELUnicodeString("..\\b"), VELUnicodeString("a\0b", 3)})
        EXPECT_EQ("", PathIn("/etc/x", name));
}

TEST(SettingsFile, LiesInTheUsersFolderElse) {
    const EnvironmentVariable named("VELSettingPath", std::nullopt);
    const EnvironmentVariable configuration("XDG_CONFIG_HOME", "/some/where");
    EXPECT_STREQ("/some/where/dyadctx/R.toml", dyadctx::SettingsFilePath("R").ConvertToChar());
    EXPECT_STREQ("/some/where/dyadctx", dyadctx::UserSettingsFolder().path.ConvertToChar());
}

TEST(SettingsFile, GivesAText) {
    const TemporaryFolder folder;
    const Reading found = Read(folder.Write("R.toml", "a = \"x\"\n"), "a");
    EXPECT_EQ(SettingsAnswer::Found, found.answer);
    EXPECT_EQ("x", found.value);
}

TEST(SettingsFile, SaysWhyThereIsNoText) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("R.toml", "a = \"x\"\n\nb = 5\n");
    const Reading missing = Read(path, "c");
    EXPECT_EQ(SettingsAnswer::NoAttribute, missing.answer);
    EXPECT_EQ("the attribute is not set", missing.reason);
    const Reading number = Read(path, "b");
    EXPECT_EQ(SettingsAnswer::NotText, number.answer);
    EXPECT_EQ("line 3: the value is not a text", number.reason);
    EXPECT_EQ("untouched", missing.value);
    EXPECT_EQ("untouched", number.value);
}

TEST(SettingsFile, SaysWhereAFileIsBroken) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("R.toml", "a = \"x\"\nb = \n");
    const Reading broken = Read(path, "a");
    EXPECT_EQ(SettingsAnswer::Broken, broken.answer);
    EXPECT_EQ("line 2, column 5: ", broken.reason.substr(0, 18)) << broken.reason;
    EXPECT_GT(broken.reason.size(), 18U);
    EXPECT_EQ("untouched", broken.value);
    std::string reason;
    EXPECT_EQ(SettingsAnswer::Broken, dyadctx::CheckSettingsFile(VELUnicodeString(path), reason));
    EXPECT_EQ(broken.reason, reason);
}

TEST(SettingsFile, TellsMissingFromUnreadable) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path() / "sub");
    EXPECT_EQ(SettingsAnswer::NoFile, Read(folder.PathOf("missing.toml"), "a").answer);
    EXPECT_EQ(SettingsAnswer::NoFile, Read("", "a").answer);
    EXPECT_EQ(SettingsAnswer::NotReadable, Read(folder.PathOf("sub"), "a").answer);
    EXPECT_EQ("the file cannot be read", Read(folder.PathOf("sub"), "a").reason);
}

TEST(SettingsFile, SurvivesFilesThatParsersStumbleOver) {
    const TemporaryFolder folder;
    for (const char* content :
         {"[[[", "a = \xC3\xA9.xml\n", "a = 197>-05-2(T07:32:0\xD0\xAA\n", "\xCC\xAA", "a = 1_\n",
          "a = \"\\u12\"\n", "a = 99999999999999999999\n", "a = 2001-02-30\n", "= 1\n",
          "a.b = 1\na = 1\n"})
        EXPECT_EQ(SettingsAnswer::Broken, Read(folder.Write("R.toml", content), "a").answer)
            << content;
    const std::string joined = "a = \"\"\"x\\\n\xC2\xA7\"\"\"\n";
    EXPECT_EQ("x\xC2\xA7", Read(folder.Write("R.toml", joined), "a").value);
}

TEST(SettingsFile, TakesNoFileOfUnreasonableSize) {
    const TemporaryFolder folder;
    const std::string path =
        folder.Write("R.toml", "a = \"x\"\n#" + std::string(5000000, 'x') + "\n");
    EXPECT_EQ(SettingsAnswer::NotReadable, Read(path, "a").answer);
}

TEST(SettingsFile, DeepNestingIsBroken) {
    const TemporaryFolder folder;
    const std::string path =
        folder.Write("R.toml", "a = " + std::string(100000, '[') + std::string(100000, ']'));
    EXPECT_EQ(SettingsAnswer::Broken, Read(path, "a").answer);
}

TEST(SettingsFile, ChecksAUsableFile) {
    const TemporaryFolder folder;
    std::string reason;
    EXPECT_EQ(SettingsAnswer::Found,
              dyadctx::CheckSettingsFile(VELUnicodeString(folder.Write("R.toml", "\xEF\xBB\xBF"
                                                                                 "a = 1\r\n")),
                                         reason));
    EXPECT_EQ("", reason);
}
