// SPDX-License-Identifier: MIT
#include "platform/VELFileSystem.h"

#include "platform/Probe.h"
#include "support/SpecialFiles.h"
#include "support/SystemCalls.h"
#include "support/TemporaryFolder.h"

#include <atomic>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace fs = std::filesystem;
using namespace dyadctx::test;

namespace {

using Kind = VELFileRefusal::Kind;

VELResult Replace(const std::string& path, std::string_view content) {
    return VELReplaceFile(VELUnicodeString(path), content);
}

// Expects that the file is refused for that reason.
void ExpectRefused(const std::string& path, std::string_view content, Kind kind,
                   const std::string& reason) {
    SCOPED_TRACE(path);
    VELFileRefusal refusal;
    EXPECT_EQ(E_FAIL, VELReplaceFile(VELUnicodeString(path), content, &refusal));
    EXPECT_EQ(static_cast<int>(kind), static_cast<int>(refusal.kind));
    EXPECT_EQ(reason, refusal.reason.ConvertToChar());
}

ChildResult OrdinaryReplace(const std::string& path) {
    ChildRun run = ProbeRun({"replace", path, "new"});
    run.asOrdinaryUser = true;
    return RunChild(run);
}

std::string DescriptorPath(const OpenFile& file) {
    return "/dev/fd/" + std::to_string(file.Number());
}

int EntriesOf(const TemporaryFolder& folder) {
    return static_cast<int>(
        std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()));
}

// Expects that an ordinary user may replace the file, which then has these rights.
void ExpectRightsAfterOrdinaryUser(const FileRights& before, const FileRights& after) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    fs::permissions(folder.Path(), fs::perms::all);
    SetRights(path, before);
    EXPECT_EQ(0, ProbeStatus({"replace", path, "new"}, true));
    EXPECT_EQ("new", folder.Read("a.xml"));
    const FileRights found = RightsOf(path);
    EXPECT_EQ(after, found) << std::oct << found.mode << std::dec << " " << found.owner << " "
                            << found.group;
    EXPECT_EQ(1, EntriesOf(folder));
}

constexpr FileRights rightsOfOther{0640, 12345, 12346};
// The number of the ordinary user and of the one group of that user.
constexpr unsigned int ordinary = 65534;

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

TEST(FileWriter, RefusesFoldersAndSockets) {
    const TemporaryFolder folder;
    fs::create_directory(folder.Path() / "sub");
    for (const char* name : {"sub", "sub/", ".", ""})
        ExpectRefused(folder.PathOf(name), "new", Kind::NotReplaceable, "it is a folder");
    EXPECT_EQ(1, EntriesOf(folder));
    if (!MakeSocket(folder.PathOf("socket")))
        return;
    MakeLink("socket", folder.PathOf("link"));
    for (const char* name : {"socket", "link"})
        ExpectRefused(folder.PathOf(name), "new", Kind::NotReplaceable, "it is a socket");
    EXPECT_TRUE(fs::is_socket(folder.Path() / "socket"));
    EXPECT_TRUE(fs::is_directory(folder.Path() / "sub"));
    EXPECT_EQ(3, EntriesOf(folder));
}

TEST(FileWriter, RefusesBlockDevices) {
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("device");
    if (!MakeBlockDevice(path))
        GTEST_SKIP() << "this process may not make a block device";
    ExpectRefused(path, "new", Kind::NotReplaceable, "it is a block device");
    EXPECT_TRUE(fs::is_block_file(path));
}

TEST(FileWriter, WritesToCharacterDevices) {
    const TemporaryFolder folder;
    fs::create_symlink("/dev/null", folder.Path() / "link");
    EXPECT_EQ(S_OK, Replace("/dev/null", "new"));
    EXPECT_EQ(S_OK, Replace(folder.PathOf("link"), "new"));
    ExpectRefused("/dev/full", "new", Kind::NotWritten, "No space left on device");
    EXPECT_EQ(S_OK, Replace("/dev/full", ""));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    EXPECT_EQ(1, EntriesOf(folder));
}

TEST(FileWriter, WritesToAFifoWhoseReaderIsSlow) {
    const TemporaryFolder folder;
    MakeFifo(folder.PathOf("fifo"));
    fs::create_symlink("fifo", folder.Path() / "link");
    // More than a FIFO holds.
    const std::string content(500000, 'x');
    for (const char* name : {"fifo", "link"}) {
        const OpenFile reader(folder.PathOf(name), OpenFile::Way::Read);
        std::string got;
        std::thread reading([&] { got = reader.Read(content.size()); });
        EXPECT_EQ(S_OK, Replace(folder.PathOf(name), content));
        reading.join();
        EXPECT_TRUE(got == content) << got.size();
    }
    EXPECT_TRUE(fs::is_fifo(folder.Path() / "fifo"));
    EXPECT_EQ(2, EntriesOf(folder));
}

TEST(FileWriter, NeverWaitsForTheReaderOfAFifo) {
    const TemporaryFolder folder;
    MakeFifo(folder.PathOf("fifo"));
    ExpectRefused(folder.PathOf("fifo"), "new", Kind::NoReader, "nobody reads from it");
    EXPECT_TRUE(fs::is_fifo(folder.Path() / "fifo"));
}

TEST(FileWriter, AReaderThatIsGoneRaisesNoSignal) {
    const OpenFile pipe = OpenFile::ToClosedPipe();
    ASSERT_FALSE(IsPipeSignalBlocked());
    ExpectRefused(DescriptorPath(pipe), "new", Kind::NotWritten, "Broken pipe");
    EXPECT_FALSE(IsPipeSignalPending());
    EXPECT_FALSE(IsPipeSignalBlocked());
}

TEST(FileWriter, ASignalThatWasPendingBeforeStaysPending) {
    const OpenFile pipe = OpenFile::ToClosedPipe();
    RaiseBlockedPipeSignal();
    ExpectRefused(DescriptorPath(pipe), "new", Kind::NotWritten, "Broken pipe");
    EXPECT_TRUE(IsPipeSignalPending());
    EXPECT_TRUE(IsPipeSignalBlocked());
    DropBlockedPipeSignal();
}

TEST(FileWriter, WritesToAnOpenDescriptorWhereItIs) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "a long former content");
    const OpenFile file(path, OpenFile::Way::Write);
    file.Write("head ");
    const std::string number = std::to_string(file.Number());
    const std::string process = fs::read_symlink("/proc/self").string();
    fs::create_symlink("/dev/fd/" + number, folder.Path() / "link");
    EXPECT_EQ(S_OK, Replace("/dev/fd/" + number, "1"));
    EXPECT_EQ(S_OK, Replace("/proc/self/fd/" + number, "2"));
    EXPECT_EQ(S_OK, Replace("/proc/" + process + "/fd/" + number, "3"));
    EXPECT_EQ(S_OK, Replace("/proc/thread-self/fd/" + number, "4"));
    EXPECT_EQ(S_OK, Replace(folder.PathOf("link"), "5"));
    EXPECT_EQ("head 12345mer content", folder.Read("a.xml"));
    file.Write("6");
    EXPECT_EQ("head 123456er content", folder.Read("a.xml"));
    EXPECT_EQ(2, EntriesOf(folder));
}

TEST(FileWriter, WritesToTheStandardStreams) {
    for (const std::string path : {"/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"}) {
        const ChildResult result = RunChild(ProbeRun({"replace", path, "new"}));
        EXPECT_EQ(0, result.status) << path;
        EXPECT_EQ("new", result.standardOutput) << path;
    }
    const ChildResult result = RunChild(ProbeRun({"replace", "/dev/stderr", "new"}));
    EXPECT_EQ("new", result.standardError);
}

TEST(FileWriter, RefusesDescriptorsThatCannotBeWritten) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    const OpenFile file(path, OpenFile::Way::Read);
    ExpectRefused(DescriptorPath(file), "new", Kind::NotWritten, "Bad file descriptor");
    ExpectRefused("/dev/fd/98765", "new", Kind::PathNotUsable, "Bad file descriptor");
    for (const char* odd : {"/dev/fd/", "/dev/fd/01", "/dev/fd/1x", "/dev/fd/99999999999"})
        EXPECT_EQ(E_FAIL, Replace(odd, "new")) << odd;
    EXPECT_EQ("former", folder.Read("a.xml"));
}

TEST(FileWriter, RefusesTheDescriptorsOfAnotherProcess) {
    const TemporaryFolder folder;
    const OpenFile file(folder.Write("a.xml", "former"), OpenFile::Way::Write);
    const std::string others =
        "/proc/" + fs::read_symlink("/proc/self").string() + "/fd/" + std::to_string(file.Number());
    fs::create_symlink(others, folder.Path() / "link");
    for (const std::string& path : {others, folder.PathOf("link")}) {
        const ChildResult result = RunChild(ProbeRun({"replace", path, "new"}));
        EXPECT_EQ(1, result.status) << path;
        EXPECT_EQ("another process has it open", result.standardError) << path;
    }
    EXPECT_EQ("former", folder.Read("a.xml"));
}

TEST(FileWriter, LooksAgainWhenTheTargetChangesMeanwhile) {
    const TemporaryFolder folder;
    folder.Write("one.xml", "former");
    folder.Write("two.xml", "former");
    fs::create_symlink("one.xml", folder.Path() / "link");
    std::atomic<bool> done = false;
    std::thread changing([&] {
        for (int turn = 0; !done; ++turn) {
            const char* next = turn % 2 == 0 ? "two.xml" : "one.xml";
            fs::create_symlink(next, folder.Path() / "next");
            fs::rename(folder.Path() / "next", folder.Path() / "link");
        }
    });
    int refused = 0;
    for (int time = 0; time < 100; ++time)
        refused += Replace(folder.PathOf("link"), "new") < 0 ? 1 : 0;
    done = true;
    changing.join();
    EXPECT_EQ(0, refused);
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "link"));
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
    const ChildResult closedFile = OrdinaryReplace(path);
    EXPECT_EQ(1, closedFile.status);
    EXPECT_EQ("Permission denied", closedFile.standardError);
    // The file may be written but not the folder.
    fs::permissions(path, static_cast<fs::perms>(0666));
    fs::permissions(sub, static_cast<fs::perms>(0555));
    const ChildResult closedFolder = OrdinaryReplace(path);
    EXPECT_EQ(1, closedFolder.status);
    EXPECT_EQ("the folder permits no new file (Permission denied)", closedFolder.standardError);
    EXPECT_EQ("former", folder.Read("sub/a.xml"));
    EXPECT_EQ(1, std::distance(fs::directory_iterator(sub), fs::directory_iterator()));
    fs::permissions(sub, fs::perms::all);
}

TEST(FileWriter, BelongsToTheWriterWhereTheOwnerCannotBeKept) {
    if (!IsSuperUser())
        GTEST_SKIP() << "a file of another owner is needed";
    // The group is the writer's.
    ExpectRightsAfterOrdinaryUser({06664, 12345, ordinary}, {0664, ordinary, ordinary});
    ExpectRightsAfterOrdinaryUser({01674, 12345, ordinary}, {01674, ordinary, ordinary});
}

TEST(FileWriter, NobodyGetsMoreRightsWhereTheGroupCannotBeKept) {
    if (!IsSuperUser())
        GTEST_SKIP() << "a file of another group is needed";
    ExpectRightsAfterOrdinaryUser({06666, 12345, 12346}, {0606, ordinary, ordinary});
    ExpectRightsAfterOrdinaryUser({0646, 12345, 12346}, {0604, ordinary, ordinary});
    ExpectRightsAfterOrdinaryUser({0607, 12345, 12346}, {0600, ordinary, ordinary});
    // The owner is kept, and the set-id bits are not.
    ExpectRightsAfterOrdinaryUser({06655, ordinary, 12346}, {0605, ordinary, ordinary});
}

TEST(FileWriter, AFolderThatKeepsItsFilesToTheirOwnersIsNamedAsTheReason) {
    if (!IsSuperUser())
        GTEST_SKIP() << "a file of another owner is needed";
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "former");
    fs::permissions(folder.Path(), static_cast<fs::perms>(01777));
    fs::permissions(path, static_cast<fs::perms>(0666));
    SetRights(folder.Path().string(), {01777, 12345, 12346});
    const ChildResult result = OrdinaryReplace(path);
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("the folder does not permit to replace the file (Operation not permitted)",
              result.standardError);
    EXPECT_EQ("former", folder.Read("a.xml"));
    EXPECT_EQ(1, EntriesOf(folder));
}

TEST(FileWriter, SaysWhyAPathCannotBeUsed) {
    const TemporaryFolder folder;
    folder.Write("a.xml", "former");
    ExpectRefused(folder.PathOf("missing/b.xml"), "new", Kind::PathNotUsable,
                  "the folder does not exist (No such file or directory)");
    ExpectRefused(folder.PathOf("a.xml/b.xml"), "new", Kind::PathNotUsable, "Not a directory");
    ExpectRefused(folder.PathOf(std::string(300, 'n')), "new", Kind::PathNotUsable,
                  "File name too long");
    ExpectRefused("", "new", Kind::PathNotUsable, "No such file or directory");
    EXPECT_EQ(1, EntriesOf(folder));
}

TEST(FileWriter, ForgetsTheRefusalOfAnEarlierCall) {
    const TemporaryFolder folder;
    VELFileRefusal refusal{Kind::NotWritten, "former"};
    EXPECT_EQ(S_OK, VELReplaceFile(folder.PathOf("a.xml").c_str(), "new", &refusal));
    EXPECT_EQ(static_cast<int>(Kind::None), static_cast<int>(refusal.kind));
    EXPECT_STREQ("", refusal.reason.ConvertToChar());
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
