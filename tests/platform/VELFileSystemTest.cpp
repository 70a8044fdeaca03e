// SPDX-License-Identifier: MIT
#include "platform/VELFileSystem.h"

#include "platform/Probe.h"
#include "support/SpecialFiles.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace fs = std::filesystem;
using dyadctx::test::TemporaryFolder;

namespace {

struct SplitCase {
    const char* path;
    const char* folder;
    const char* name;
};

std::string Backslashed(std::string path) {
    for (char& character : path)
        character = character == '/' ? '\\' : character;
    return path;
}

// The mode, or 1 when the question failed.
unsigned int ModeOf(const std::string& path) {
    VELFileInfo info;
    info.mode = 99;
    const int status = VELGetFileInfo(VELUnicodeString(path), info);
    if (status != 0) {
        EXPECT_EQ(0U, info.mode);
    }
    return status == 0 ? info.mode : 1;
}

int AccessTo(const std::string& path, int mode) {
    return VELFileAccess(VELUnicodeString(path), mode);
}

} // namespace

TEST(VELFileSystem, SplitsAtTheLastSeparator) {
    const SplitCase cases[] = {
        {"/a/b/c.xml", "/a/b", "c.xml"},
        {"\\a\\b\\c.xml", "\\a\\b", "c.xml"},
        {"/a\\b/c.xml", "/a\\b", "c.xml"},
        {"a/b.xml", "a", "b.xml"},
        {"./a.xml", ".", "a.xml"},
        {"a.xml", "", "a.xml"},
        {"", "", ""},
        {"/a/b/", "/a/b", ""},
        {"a//b.xml", "a", "b.xml"},
        {"\\\\server\\share\\a.xml", "\\\\server\\share", "a.xml"},
        // Roots keep their separator.
        {"/a.xml", "/", "a.xml"},
        {"\\a.xml", "\\", "a.xml"},
        {"/", "/", ""},
        {"//a.xml", "/", "a.xml"},
        {"C:\\a.xml", "C:\\", "a.xml"},
        {"C:/a.xml", "C:/", "a.xml"},
        {"C:\\b\\a.xml", "C:\\b", "a.xml"},
        {"C:a.xml", "", "C:a.xml"},
        {"\xC3\xA9/\xC3\xA8.xml", "\xC3\xA9", "\xC3\xA8.xml"},
    };
    for (const SplitCase& row : cases) {
        VELUnicodeString folder("former");
        VELUnicodeString name("former");
        VELSplitPath(row.path, folder, name);
        EXPECT_STREQ(row.folder, folder.ConvertToChar()) << row.path;
        EXPECT_STREQ(row.name, name.ConvertToChar()) << row.path;
    }
}

TEST(VELFileSystem, SplitsAPathIntoItself) {
    VELUnicodeString path("/a/folder/of/more/than/fifteen/bytes.xml");
    VELUnicodeString name;
    VELSplitPath(path, path, name);
    EXPECT_STREQ("/a/folder/of/more/than/fifteen", path.ConvertToChar());
    EXPECT_STREQ("bytes.xml", name.ConvertToChar());
    VELUnicodeString folder;
    VELSplitPath(path, folder, path);
    EXPECT_STREQ("fifteen", path.ConvertToChar());
}

TEST(VELFileSystem, ModesAreExactlyOneBitOrNone) {
    const TemporaryFolder folder;
    folder.Write("a.xml", "x");

    EXPECT_EQ(0x4000U, ModeOf(folder.Path().string()));
    EXPECT_EQ(0x8000U, ModeOf(folder.PathOf("a.xml")));
    if (dyadctx::test::MakeFifo(folder.PathOf("fifo"))) {
        EXPECT_EQ(0U, ModeOf(folder.PathOf("fifo")));
        EXPECT_EQ(0U, ModeOf("/dev/null"));
    }
    if (dyadctx::test::MakeSocket(folder.PathOf("socket"))) {
        EXPECT_EQ(0U, ModeOf(folder.PathOf("socket")));
    }
    EXPECT_EQ(1U, ModeOf(folder.PathOf("missing")));
    EXPECT_EQ(1U, ModeOf(""));
}

TEST(VELFileSystem, ModesAreThoseOfTheFileThatALinkPointsTo) {
    const TemporaryFolder folder;
    folder.Write("a.xml", "x");
    fs::create_symlink("a.xml", folder.Path() / "file link");
    fs::create_directory_symlink(".", folder.Path() / "folder link");
    fs::create_symlink("missing", folder.Path() / "broken link");

    EXPECT_EQ(0x8000U, ModeOf(folder.PathOf("file link")));
    EXPECT_EQ(0x4000U, ModeOf(folder.PathOf("folder link")));
    EXPECT_EQ(1U, ModeOf(folder.PathOf("broken link")));
}

TEST(VELFileSystem, BothSeparatorsLeadToTheFile) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("sub/a.xml", "x");
    const std::string mixed = folder.Path().string() + "\\sub/a.xml";
    for (const std::string& form : {path, Backslashed(path), mixed}) {
        EXPECT_EQ(0x8000U, ModeOf(form)) << form;
        EXPECT_EQ(0, AccessTo(form, 0)) << form;
        EXPECT_EQ(0, AccessTo(form, 4)) << form;
        EXPECT_EQ(0, _VELFileAccess(VELUnicodeString(form), 4, 0)) << form;
    }
}

TEST(VELFileSystem, ZeroBytesInAPathAreRefused) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "x") + std::string("\0.txt", 5);
    EXPECT_EQ(1U, ModeOf(path));
    EXPECT_LT(AccessTo(path, 0), 0);
    EXPECT_LT(_VELFileAccess(VELUnicodeString(path), 4, 0), 0);
}

TEST(VELFileSystem, AccessIsZeroOrNegative) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "x");
    for (const int mode : {0, 2, 4, 6}) {
        EXPECT_EQ(0, AccessTo(path, mode)) << mode;
        EXPECT_EQ(0, AccessTo(folder.Path().string(), mode)) << mode;
        EXPECT_LT(AccessTo(folder.PathOf("missing"), mode), 0) << mode;
        EXPECT_LT(AccessTo("", mode), 0) << mode;
    }
    for (const int unknown : {1, 8, -1})
        EXPECT_LT(AccessTo(path, unknown), 0) << unknown;
}

TEST(VELFileSystem, AccessFollowsTheRightsOfTheFile) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "x");
    fs::permissions(folder.Path(), fs::perms::all);
    const auto answer = [&path](const char* mode) {
        return ProbeStatus({"access", path, mode}, true);
    };
    fs::permissions(path, fs::perms::none);
    EXPECT_EQ(0, answer("0"));
    EXPECT_EQ(1, answer("4"));
    EXPECT_EQ(1, answer("2"));
    fs::permissions(path, fs::perms::others_read | fs::perms::owner_read);
    EXPECT_EQ(0, answer("4"));
    EXPECT_EQ(1, answer("2"));
}

TEST(VELFileSystem, QuestionsAboutAFifoDoNotWait) {
    const TemporaryFolder folder;
    dyadctx::test::MakeFifo(folder.PathOf("x.xml"));
    EXPECT_EQ(0, AccessTo(folder.PathOf("x.xml"), 0));
    EXPECT_EQ(0, AccessTo(folder.PathOf("x.xml"), 4));
    EXPECT_EQ(0U, ModeOf(folder.PathOf("x.xml")));
}
