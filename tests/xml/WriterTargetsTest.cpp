// SPDX-License-Identifier: MIT
// Where the writer can write, and what it leaves of the target when it cannot.
#include "support/ChildProcess.h"
#include "support/ContextFile.h"
#include "support/EnvironmentVariable.h"
#include "support/SpecialFiles.h"
#include "support/SystemCallKiller.h"
#include "support/TemporaryFolder.h"
#include "xml/ReaderSupport.h"
#include "xml/WriterSupport.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

namespace fs = std::filesystem;

const std::string Probe = DYADCTX_XML_PROBE;
const std::string OneContext =
    WrittenDocument({R"(<Context Name="A" Parameter="p" ParameterType="Path"/>)"});

VELResult WriteTo(const std::string& target) {
    const CollectorPtr collector = EmptyCollector();
    Declare(*collector, "A", "p", "Path");
    VELUnicodeString message;
    return collector->Stream(VELUnicodeString(target.c_str()), message);
}

std::size_t EntriesOf(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

} // namespace

TEST(WriterTargets, NewFileIsMade) {
    const TemporaryFolder folder;
    EXPECT_EQ(WriteTo(folder.PathOf("out.xml")), S_OK);
    EXPECT_EQ(folder.Read("out.xml"), OneContext);
    EXPECT_EQ(EntriesOf(folder.Path()), 1U);
}

TEST(WriterTargets, ExistingFileIsReplacedAndKeepsItsMode) {
    const TemporaryFolder folder;
    const fs::path target = folder.Write("out.xml", "something much longer" + OneContext);
    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(WriteTo(target.string()), S_OK);
    EXPECT_EQ(folder.Read("out.xml"), OneContext);
    EXPECT_EQ(fs::status(target).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST(WriterTargets, AnyExtensionWillDo) {
    const TemporaryFolder folder;
    EXPECT_EQ(WriteTo(folder.PathOf("out.XML")), S_OK);
    EXPECT_EQ(WriteTo(folder.PathOf("out")), S_OK);
}

TEST(WriterTargets, BackslashesSeparateFolders) {
    const TemporaryFolder folder;
    folder.Write("sub/other.xml", "");
    EXPECT_EQ(WriteTo(folder.Path().string() + "\\sub\\out.xml"), S_OK);
    EXPECT_EQ(folder.Read("sub/out.xml"), OneContext);
}

TEST(WriterTargets, LinkStaysALinkAndItsFileIsReplaced) {
    const TemporaryFolder folder;
    folder.Write("sub/real.xml", "old");
    fs::create_symlink("sub/real.xml", folder.Path() / "link.xml");
    EXPECT_EQ(WriteTo(folder.PathOf("link.xml")), S_OK);
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "link.xml"));
    EXPECT_EQ(folder.Read("sub/real.xml"), OneContext);
}

TEST(WriterTargets, FolderIsRefused) {
    const TemporaryFolder folder;
    folder.Write("sub/other.xml", "other");
    EXPECT_EQ(WriteTo(folder.PathOf("sub")), E_FAIL);
    EXPECT_EQ(folder.Read("sub/other.xml"), "other");
    EXPECT_EQ(EntriesOf(folder.Path()), 1U);
}

TEST(WriterTargets, DevicesAndPipesAreWrittenAndNeverReplaced) {
    const TemporaryFolder folder;
    MakeFifo(folder.PathOf("pipe"));
    EXPECT_EQ(WriteTo(folder.PathOf("pipe")), E_FAIL) << "without a reader";
    {
        const OpenFile reader(folder.PathOf("pipe"), OpenFile::Way::Read);
        EXPECT_EQ(WriteTo(folder.PathOf("pipe")), S_OK);
        EXPECT_EQ(reader.Read(OneContext.size()), OneContext);
    }
    EXPECT_TRUE(fs::is_fifo(folder.PathOf("pipe")));
    EXPECT_EQ(WriteTo("/dev/null"), S_OK);
    EXPECT_EQ(WriteTo("/dev/full"), E_FAIL);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST(WriterTargets, ARefusalAddsNothingToTheMessage) {
    const CollectorPtr collector = EmptyCollector();
    VELUnicodeString message("before");
    EXPECT_EQ(collector->Stream("/dev/full", message), E_FAIL);
    EXPECT_STREQ(message.ConvertToChar(), "before");
}

TEST(WriterTargets, FolderThatIsMissingIsNotMade) {
    const TemporaryFolder folder;
    EXPECT_EQ(WriteTo(folder.PathOf("absent/out.xml")), E_FAIL);
    EXPECT_EQ(WriteTo(""), E_FAIL);
    EXPECT_EQ(EntriesOf(folder.Path()), 0U);
}

TEST(WriterTargets, ReadOnlyFolderKeepsItsFile) {
    const TemporaryFolder folder;
    const std::string source = folder.Write("in.xml", DocumentWith(Path("A")));
    const std::string target = folder.Write("closed/out.xml", "old");
    fs::permissions(folder.Path(), fs::perms::all);
    fs::permissions(folder.Path() / "closed", fs::perms::owner_read | fs::perms::owner_exec |
                                                  fs::perms::others_read | fs::perms::others_exec);
    ChildRun run;
    run.program = Probe;
    run.arguments = {"write", source, target};
    run.asOrdinaryUser = true;
    const ChildResult result = RunChild(run);
    fs::permissions(folder.Path() / "closed", fs::perms::owner_all);
    EXPECT_EQ(result.status, 1) << result.standardOutput << result.standardError;
    EXPECT_EQ(folder.Read("closed/out.xml"), "old");
    EXPECT_EQ(EntriesOf(folder.Path() / "closed"), 1U);
}

TEST(WriterTargets, FullDiskKeepsTheOldFile) {
    const TemporaryFolder folder;
    std::string contexts;
    for (int i = 0; i < 100; ++i)
        contexts += Path("A" + std::to_string(i));
    const std::string source = folder.Write("in.xml", DocumentWith(contexts));
    const std::string target = folder.Write("out.xml", "old");
    // A limit of one block for files that are written stands for a disk without room.
    ChildRun run;
    run.program = "/bin/sh";
    run.arguments = {"-c",  "trap '' XFSZ; ulimit -f 1; exec \"$@\"", "sh", Probe, "write", source,
                     target};
    const ChildResult result = RunChild(run);
    EXPECT_EQ(result.status, 1) << result.standardOutput << result.standardError;
    EXPECT_EQ(folder.Read("out.xml"), "old");
    EXPECT_EQ(EntriesOf(folder.Path()), 2U);
}

// ---- Killed while writing
// ------------------------------------------------------------------------

namespace {

// The old file, or none for an empty text, is where the probe is to write. Returns how many calls
// it was killed at; ends with the first run that is not killed.
class KilledWriter {
public:
    explicit KilledWriter(const std::string& old) : old_(old) {
        source_ = folder_.Write("in.xml", DocumentWith(Path("A")));
        folder_.Write("beside.xml", "beside");
    }

    // Whether the probe was killed.
    KilledRun KillAt(int call) {
        if (old_.empty())
            fs::remove(folder_.Path() / "target/out.xml");
        else
            folder_.Write("target/out.xml", old_);
        fs::create_directories(folder_.Path() / "target");
        const KilledRun outcome =
            RunAndKillAt(call, Probe, {"write", source_, folder_.PathOf("target/out.xml")});
        RemoveLeftOver();
        return outcome;
    }

    std::string Target() const {
        return fs::exists(folder_.Path() / "target/out.xml") ? folder_.Read("target/out.xml") : "";
    }
    bool OthersAreWhole() const {
        return folder_.Read("beside.xml") == "beside" &&
               folder_.Read("in.xml") == DocumentWith(Path("A")) && EntriesOf(folder_.Path()) == 3;
    }

private:
    // A killed process cannot clean up, so its unfinished file may be there, under its own name.
    void RemoveLeftOver() {
        int leftOver = 0;
        for (const fs::path& path : fs::directory_iterator(folder_.Path() / "target")) {
            if (path.filename() == "out.xml")
                continue;
            EXPECT_EQ(path.filename().string().substr(0, 9), ".dyadctx-");
            EXPECT_LE(++leftOver, 1);
            fs::remove(path);
        }
    }

    TemporaryFolder folder_;
    std::string source_;
    std::string old_;
};

void ExpectWholeWhereverItIsKilled(const std::string& old) {
    const EnvironmentVariable noLeakCheck("ASAN_OPTIONS", "detect_leaks=0");
    KilledWriter writer(old);
    bool wasOld = false;
    bool wasNew = false;
    KilledRun outcome = KilledRun::Killed;
    for (int call = 1; outcome == KilledRun::Killed; ++call) {
        ASSERT_LT(call, 1000);
        outcome = writer.KillAt(call);
        if (outcome == KilledRun::NotPossible)
            GTEST_SKIP() << "this process may not trace others";
        const std::string target = writer.Target();
        EXPECT_TRUE(target == old || target == OneContext) << "call " << call << ": " << target;
        EXPECT_TRUE(writer.OthersAreWhole()) << "call " << call;
        wasOld = wasOld || target == old;
        wasNew = wasNew || target == OneContext;
    }
    EXPECT_EQ(outcome, KilledRun::Ended);
    EXPECT_EQ(writer.Target(), OneContext);
    EXPECT_TRUE(wasOld);
    EXPECT_TRUE(wasNew);
}

} // namespace

TEST(WriterKilled, AtAnyOfItsSystemCallsLeavesTheOldOrTheNewFile) {
    ExpectWholeWhereverItIsKilled("<!-- the old file -->" + OneContext + OneContext);
}

TEST(WriterKilled, AtAnyOfItsSystemCallsLeavesNoneOrTheNewFile) {
    ExpectWholeWhereverItIsKilled("");
}

} // namespace dyadctx::test
