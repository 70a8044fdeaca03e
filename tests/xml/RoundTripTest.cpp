// SPDX-License-Identifier: MIT
// What is read, written and read again is the same.
#include "support/ChildProcess.h"
#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"
#include "xml/GeneratedFile.h"
#include "xml/RoundTripSupport.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

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
    ExpectRoundTrips(400, {});
}

TEST(RoundTrip, KeepsDatabasesAndAssociatedOfGeneratedFiles) {
    const DbEnvironment db(true);
    ExpectRoundTrips(400, {true, false});
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
