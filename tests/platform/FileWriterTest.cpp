#include "platform/detail/FileWriter.h"

#include "platform/Probe.h"
#include "support/SpecialFiles.h"
#include "support/SystemCalls.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace fs = std::filesystem;
using namespace dyadctx::test;

namespace {

VELResult Replace(const std::string& path, std::string_view content) {
    return dyadctx::ReplaceFile(VELUnicodeString(path), content);
}

int EntriesOf(const TemporaryFolder& folder) {
    return static_cast<int>(
        std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()));
}

constexpr FileRights rightsOfOther{0640, 12345, 12346};

} // namespace

TEST(FileWriter, MakesANewFile) {
    const TemporaryFolder folder;
    const std::string content("zero \0 inside", 13);
    EXPECT_EQ(S_OK, Replace(folder.PathOf("new.xml"), content));
    EXPECT_EQ(content, folder.Read("new.xml"));
    EXPECT_EQ(1, EntriesOf(folder));
    EXPECT_EQ(0U, RightsOf(folder.PathOf("new.xml")).mode & 0111U);
}

TEST(FileWriter, ReplacesTheWholeContent) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "a longer former content");
    EXPECT_EQ(S_OK, Replace(path, "short"));
    EXPECT_EQ("short", folder.Read("a.xml"));
    EXPECT_EQ(S_OK, Replace(path, ""));
    EXPECT_EQ("", folder.Read("a.xml"));
    const std::string large(5000000, 'x');
    EXPECT_EQ(S_OK, Replace(path, large));
    EXPECT_EQ(large, folder.Read("a.xml"));
    EXPECT_EQ(1, EntriesOf(folder));
}

TEST(FileWriter, TakesBothSeparators) {
    const TemporaryFolder folder;
    folder.Write("sub/a.xml", "former");
    EXPECT_EQ(S_OK, Replace(folder.Path().string() + "\\sub\\a.xml", "new"));
    EXPECT_EQ("new", folder.Read("sub/a.xml"));
}

TEST(FileWriter, TakesANameWithoutFolder) {
    const TemporaryFolder folder;
    ChildRun run = ProbeRun({"replace", "bare.xml", "new"});
    run.workingFolder = folder.Path().string();
    EXPECT_EQ(0, RunChild(run).status);
    EXPECT_EQ("new", folder.Read("bare.xml"));
}

TEST(FileWriter, KeepsTheModeOfAnExistingFile) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    for (const auto mode : {0600, 0666, 0755, 0640}) {
        fs::permissions(path, static_cast<fs::perms>(mode));
        EXPECT_EQ(S_OK, Replace(path, "new"));
        EXPECT_EQ(static_cast<unsigned int>(mode), RightsOf(path).mode);
    }
}

TEST(FileWriter, KeepsTheOwnerOfAnExistingFile) {
    if (!IsSuperUser())
        GTEST_SKIP() << "only the super-user may give files away";
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    SetRights(path, rightsOfOther);
    EXPECT_EQ(S_OK, Replace(path, "new"));
    EXPECT_EQ(rightsOfOther, RightsOf(path));
    EXPECT_EQ("new", folder.Read("a.xml"));
}

TEST(FileWriter, KeepsLinksAndReplacesWhatTheyLeadTo) {
    const TemporaryFolder folder;
    folder.Write("real/a.xml", "former");
    fs::create_symlink("real/a.xml", folder.Path() / "link");
    fs::create_directory_symlink("real", folder.Path() / "folder");
    fs::create_symlink(folder.Path() / "folder" / "a.xml", folder.Path() / "second");
    fs::create_symlink("second", folder.Path() / "third");
    for (const std::string name : {"link", "third", "folder/a.xml"}) {
        EXPECT_EQ(S_OK, Replace(folder.PathOf(name), name));
        EXPECT_EQ(name, folder.Read("real/a.xml"));
    }
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "link"));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "second"));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "third"));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "folder"));
    EXPECT_FALSE(fs::is_symlink(folder.Path() / "real/a.xml"));
}

TEST(FileWriter, MakesTheFileALinkLeadsTo) {
    const TemporaryFolder folder;
    fs::create_symlink("later.xml", folder.Path() / "link");
    EXPECT_EQ(S_OK, Replace(folder.PathOf("link"), "new"));
    EXPECT_EQ("new", folder.Read("later.xml"));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "link"));
}

TEST(FileWriter, RefusesLinksThatLeadNowhere) {
    const TemporaryFolder folder;
    fs::create_symlink("round", folder.Path() / "round");
    fs::create_symlink("missing/a.xml", folder.Path() / "lost");
    EXPECT_EQ(E_FAIL, Replace(folder.PathOf("round"), "new"));
    EXPECT_EQ(E_FAIL, Replace(folder.PathOf("lost"), "new"));
    EXPECT_EQ(2, EntriesOf(folder));
}

TEST(FileWriter, NeverReplacesWhatIsNoRegularFile) {
    const TemporaryFolder folder;
    MakeFifo(folder.PathOf("fifo"));
    MakeSocket(folder.PathOf("socket"));
    fs::create_directory(folder.Path() / "sub");
    fs::create_symlink("fifo", folder.Path() / "fifo link");
    fs::create_symlink("/dev/null", folder.Path() / "device link");
    for (const char* name : {"fifo", "socket", "sub", "sub/", "fifo link", "device link", ".", ""})
        EXPECT_EQ(E_FAIL, Replace(folder.PathOf(name), "new")) << name;
    EXPECT_EQ(E_FAIL, Replace("/dev/full", "new"));
    EXPECT_TRUE(fs::is_fifo(folder.Path() / "fifo"));
    EXPECT_TRUE(fs::is_socket(folder.Path() / "socket"));
    EXPECT_TRUE(fs::is_directory(folder.Path() / "sub"));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    EXPECT_EQ(5, EntriesOf(folder));
}

TEST(FileWriter, RefusesPathsNoFileCanHave) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    EXPECT_EQ(E_FAIL, Replace("", "new"));
    EXPECT_EQ(E_FAIL, Replace(path + std::string("\0b", 2), "new"));
    EXPECT_EQ(E_FAIL, Replace(path + "/b.xml", "new"));
    EXPECT_EQ(E_FAIL, Replace(path + "/", "new"));
    EXPECT_EQ(E_FAIL, Replace(folder.PathOf("missing/b.xml"), "new"));
    EXPECT_EQ(E_FAIL, Replace(folder.PathOf("new.xml/"), "new"));
    EXPECT_EQ(E_FAIL, Replace(folder.PathOf(std::string(300, 'n')), "new"));
    EXPECT_EQ("former", folder.Read("a.xml"));
    EXPECT_EQ(1, EntriesOf(folder));
}

TEST(FileWriter, TakesTheLongestNames) {
    const TemporaryFolder folder;
    const std::string name(255, 'n');
    EXPECT_EQ(S_OK, Replace(folder.PathOf(name), "new"));
    EXPECT_EQ("new", folder.Read(name));
}

TEST(FileWriter, RefusesWhatTheRightsForbid) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("sub/a.xml", "former");
    const fs::path sub = folder.Path() / "sub";
    fs::permissions(folder.Path(), fs::perms::all);
    // The folder may be written but not the file.
    fs::permissions(sub, fs::perms::all);
    fs::permissions(path, static_cast<fs::perms>(0444));
    EXPECT_EQ(1, ProbeStatus({"replace", path, "new"}, true));
    // The file may be written but not the folder.
    fs::permissions(path, static_cast<fs::perms>(0666));
    fs::permissions(sub, static_cast<fs::perms>(0555));
    EXPECT_EQ(1, ProbeStatus({"replace", path, "new"}, true));
    EXPECT_EQ("former", folder.Read("sub/a.xml"));
    EXPECT_EQ(1, std::distance(fs::directory_iterator(sub), fs::directory_iterator()));
    fs::permissions(sub, fs::perms::all);
}

TEST(FileWriter, RefusesWhenTheOwnerCannotBeKept) {
    if (!IsSuperUser())
        GTEST_SKIP() << "a file of another owner is needed";
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    fs::permissions(folder.Path(), fs::perms::all);
    fs::permissions(path, static_cast<fs::perms>(0666));
    EXPECT_EQ(1, ProbeStatus({"replace", path, "new"}, true));
    EXPECT_EQ("former", folder.Read("a.xml"));
    EXPECT_EQ(1, EntriesOf(folder));
}

TEST(FileWriter, NeedsNoRightToReadTheFolder) {
    const TemporaryFolder folder;
    fs::permissions(folder.Path(), static_cast<fs::perms>(0733));
    EXPECT_EQ(0, ProbeStatus({"replace", folder.PathOf("new.xml"), "new"}, true));
    EXPECT_EQ("new", folder.Read("new.xml"));
}

TEST(FileWriter, EveryFailingCallLeavesTheFormerFile) {
    for (const char* call : {"openat", "write", "fchmod", "fsync", "rename"}) {
        const TemporaryFolder folder;
        const std::string path = folder.Write("a.xml", "former");
        const int status = ProbeStatus({"replace-without", call, path, "new"});
        if (status == NotPossibleHere)
            GTEST_SKIP() << "system calls cannot be made to fail here";
        EXPECT_EQ(1, status) << call;
        EXPECT_EQ("former", folder.Read("a.xml")) << call;
        EXPECT_EQ(1, EntriesOf(folder)) << call;
    }
}

TEST(FileWriter, AFullDiskLeavesTheFormerFile) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    const std::string content(10000, 'x');
    EXPECT_EQ(1, ProbeStatus({"replace-limited", "4096", path, content}));
    EXPECT_EQ(1, ProbeStatus({"replace-limited", "4096", folder.PathOf("new.xml"), content}));
    EXPECT_EQ("former", folder.Read("a.xml"));
    EXPECT_EQ(1, EntriesOf(folder));
}

TEST(FileWriter, ADeathAtAnyMomentLeavesTheOldOrTheNewFile) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    const std::string content(100000, 'x');
    int kills = 0;
    int oldFiles = 0;
    for (;; ++kills) {
        folder.Write("a.xml", "former");
        const auto status =
            KillAtSystemCall(PLATFORM_PROBE, {"replace-counted", path, content}, kills + 1);
        if (status == CannotTrace)
            GTEST_SKIP() << "programs cannot be traced here";
        const std::string found = folder.Read("a.xml");
        ASSERT_TRUE(found == "former" || found == content) << "killed at call " << kills + 1;
        oldFiles += found == "former" ? 1 : 0;
        if (status) {
            EXPECT_EQ(0, *status);
            EXPECT_EQ(content, found);
            break;
        }
    }
    // It was killed both before and after the new file took the place.
    EXPECT_GT(oldFiles, 5);
    EXPECT_LT(oldFiles, kills);
}
