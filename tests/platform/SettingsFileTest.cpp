// SPDX-License-Identifier: MIT
#include "platform/detail/SettingsFile.h"

#include "platform/detail/NativePath.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>

using Kind = VELSettingRefusal::Kind;
using dyadctx::test::EnvironmentVariable;
using dyadctx::test::TemporaryFolder;

namespace {

std::string PathIn(const char* folder, const VELUnicodeString& repository) {
    const EnvironmentVariable variable("VELSettingPath", folder);
    return std::string(dyadctx::SettingsFilePath(repository).AsView());
}

struct Reading {
    Kind answer;
    std::string value;
    std::string reason;
    int line;
    int column;
};

Reading Read(const std::string& path, const char* attribute) {
    VELSetting setting{"untouched", "untouched"};
    const VELSettingRefusal refusal =
        dyadctx::FindSetting(VELUnicodeString(path), attribute, setting);
    return {refusal.kind, setting.value.ConvertToChar(), refusal.reason.ConvertToChar(),
            refusal.line, refusal.column};
}

} // namespace

TEST(SettingsFile, LiesInTheNamedFolder) {
    const std::string separator(1, dyadctx::SystemSeparator());
    EXPECT_EQ("/etc/x" + separator + "R.toml", PathIn("/etc/x", "R"));
    EXPECT_EQ("\\\\host\\share" + separator + "R.toml", PathIn("\\\\host\\share", "R"));
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

TEST(SettingsFile, ReturnsAText) {
    const TemporaryFolder folder;
    const Reading found = Read(folder.Write("R.toml", "a = \"x\"\n"), "a");
    EXPECT_EQ(Kind::None, found.answer);
    EXPECT_EQ("x", found.value);
}

TEST(SettingsFile, SaysWhyThereIsNoText) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("R.toml", "a = \"x\"\n\nb = 5\n");
    const Reading missing = Read(path, "c");
    EXPECT_EQ(Kind::NoAttribute, missing.answer);
    EXPECT_EQ("c is not set", missing.reason);
    const Reading number = Read(path, "b");
    EXPECT_EQ(Kind::NotText, number.answer);
    EXPECT_EQ("b is no text (it is of the type integer)", number.reason);
    EXPECT_EQ(3, number.line);
    EXPECT_EQ("untouched", missing.value);
    EXPECT_EQ("untouched", number.value);
}

TEST(SettingsFile, SaysWhereAFileIsBroken) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("R.toml", "a = \"x\"\nb = \n");
    const Reading broken = Read(path, "a");
    EXPECT_EQ(Kind::NotToml, broken.answer);
    EXPECT_EQ(2, broken.line);
    EXPECT_EQ(5, broken.column);
    EXPECT_NE("", broken.reason);
    EXPECT_EQ("untouched", broken.value);
}

TEST(SettingsFile, DistinguishesMissingFromUnreadable) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path() / "sub");
    EXPECT_EQ(Kind::NoFile, Read(folder.PathOf("missing.toml"), "a").answer);
    EXPECT_EQ(Kind::NoFile, Read("", "a").answer);
    EXPECT_EQ(Kind::NotReadable, Read(folder.PathOf("sub"), "a").answer);
    EXPECT_EQ("it is not a regular file", Read(folder.PathOf("sub"), "a").reason);
}

TEST(SettingsFile, OnlyWhatDoesNotExistIsMissing) {
    const TemporaryFolder folder;
    folder.Write("R.toml", "a = 'x'\n");
    std::filesystem::create_symlink("round", folder.Path() / "round");
    EXPECT_EQ(Kind::NoFile, Read(folder.PathOf("R.toml/deeper.toml"), "a").answer);
    const Reading round = Read(folder.PathOf("round"), "a");
    EXPECT_EQ(Kind::NotReadable, round.answer);
    EXPECT_EQ("Too many levels of symbolic links", round.reason);
}

TEST(SettingsFile, SurvivesFilesThatParsersStumbleOver) {
    const TemporaryFolder folder;
    for (const char* content :
         {"[[[", "a = \xC3\xA9.xml\n", "a = 197>-05-2(T07:32:0\xD0\xAA\n", "\xCC\xAA", "a = 1_\n",
          "a = \"\\u12\"\n", "a = 99999999999999999999\n", "a = 2001-02-30\n", "= 1\n",
          "a.b = 1\na = 1\n"})
        EXPECT_EQ(Kind::NotToml, Read(folder.Write("R.toml", content), "a").answer) << content;
    const std::string joined = "a = \"\"\"x\\\n\xC2\xA7\"\"\"\n";
    EXPECT_EQ("x\xC2\xA7", Read(folder.Write("R.toml", joined), "a").value);
}

TEST(SettingsFile, TakesNoFileOfUnreasonableSize) {
    const TemporaryFolder folder;
    const std::string path =
        folder.Write("R.toml", "a = \"x\"\n#" + std::string(5000000, 'x') + "\n");
    const Reading large = Read(path, "a");
    EXPECT_EQ(Kind::NotToml, large.answer);
    EXPECT_EQ("it is too large for settings", large.reason);
}

TEST(SettingsFile, DeepNestingIsBroken) {
    const TemporaryFolder folder;
    const std::string path =
        folder.Write("R.toml", "a = " + std::string(100000, '[') + std::string(100000, ']'));
    EXPECT_EQ(Kind::NotToml, Read(path, "a").answer);
}

TEST(SettingsFile, TakesAByteOrderMark) {
    const TemporaryFolder folder;
    const Reading found = Read(folder.Write("R.toml", "\xEF\xBB\xBF"
                                                      "a = 'x'\r\n"),
                               "a");
    EXPECT_EQ(Kind::None, found.answer) << found.reason;
    EXPECT_EQ("x", found.value);
    EXPECT_EQ("", found.reason);
}
