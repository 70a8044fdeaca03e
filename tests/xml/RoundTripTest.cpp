// What is read, written and read again is the same.
#include "support/ChildProcess.h"
#include "support/ContextFile.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"
#include "trace/detail/ProcessSettings.h"
#include "xml/GeneratedFile.h"
#include "xml/WriterSupport.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>

namespace dyadctx::test {

namespace {

// Each file is flushed to disk when it is written; in memory that takes no time.
class FastFolders {
public:
    FastFolders() {
        if (std::filesystem::is_directory("/dev/shm"))
            folder_.emplace("TMPDIR", "/dev/shm");
    }

private:
    std::optional<EnvironmentVariable> folder_;
};

void ExpectRoundTrip(std::uint32_t seed, const GeneratedContent& content) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const std::string document = GenerateDocument(seed, content);
    const Creation first = CreateFromText(document);
    ASSERT_NE(first.collector, nullptr) << first.message << document;

    const Writing written = Write(*first.collector);
    ASSERT_EQ(written.result, S_OK);
    const Creation second = CreateFromText(written.text);
    ASSERT_NE(second.collector, nullptr) << second.message << written.text;

    EXPECT_EQ(Describe(*second.collector), Describe(*first.collector));
    EXPECT_EQ(Write(*second.collector).text, written.text);
}

// Whether one of two other parsers refuses the file; where neither is installed nothing does.
bool IsRefusedByOthers(const std::string& file) {
    for (const std::string program : {"/usr/bin/xmllint", "/usr/bin/xmlwf"}) {
        if (!std::filesystem::exists(program))
            continue;
        ChildRun run;
        run.program = program;
        if (program == "/usr/bin/xmllint")
            run.arguments = {"--noout"};
        run.arguments.push_back(file);
        const ChildResult result = RunChild(run);
        if (result.status != 0 || !result.standardOutput.empty())
            return true;
    }
    return false;
}

} // namespace

TEST(RoundTrip, KeepsContextsAndFriendsOfGeneratedFiles) {
    const FastFolders fast;
    for (std::uint32_t seed = 1; seed <= 400; ++seed)
        ExpectRoundTrip(seed, {});
}

TEST(RoundTrip, KeepsDatabasesAndAssociatedOfGeneratedFiles) {
    const DbEnvironment db(true);
    const FastFolders fast;
    for (std::uint32_t seed = 1; seed <= 400; ++seed)
        ExpectRoundTrip(seed, {true, false});
}

// Run by a program whose environment has multisite support; see the list of tests.
TEST(RoundTripWithSites, KeepsSitesOfGeneratedFiles) {
    if (!MultisiteFlag())
        GTEST_SKIP() << "needs TE_MULTISITE_DBCONTEXT";
    const DbEnvironment db(true);
    const FastFolders fast;
    for (std::uint32_t seed = 1; seed <= 400; ++seed)
        ExpectRoundTrip(seed, {true, true});
}

TEST(RoundTrip, GeneratedSitesAreManyAndDifferent) {
    int withSites = 0;
    for (std::uint32_t seed = 1; seed <= 50; ++seed) {
        if (GenerateDocument(seed, {true, true}) != GenerateDocument(seed, {true, false}))
            ++withSites;
    }
    EXPECT_GT(withSites, 25);
}

TEST(RoundTrip, WrittenFilesAreWellFormedForOtherParsers) {
    const DbEnvironment db(true);
    const TemporaryFolder folder;
    const std::string file = folder.PathOf("out.xml");
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        const Creation creation = CreateFromText(GenerateDocument(seed, {true, false}));
        ASSERT_NE(creation.collector, nullptr) << creation.message;
        VELUnicodeString message;
        ASSERT_EQ(creation.collector->Stream(VELUnicodeString(file.c_str()), message), S_OK);
        EXPECT_FALSE(IsRefusedByOthers(file)) << folder.Read("out.xml");
    }
    folder.Write("out.xml", "<a>");
    const bool othersAreInstalled =
        std::filesystem::exists("/usr/bin/xmllint") || std::filesystem::exists("/usr/bin/xmlwf");
    EXPECT_EQ(IsRefusedByOthers(file), othersAreInstalled);
}

} // namespace dyadctx::test
