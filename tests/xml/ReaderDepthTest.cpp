// SPDX-License-Identifier: MIT
// Deep nesting: as deep as a document may be, with a small stack.
#include "support/ChildProcess.h"
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/TemporaryFolder.h"
#include "xml/ReaderSupport.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

// With the two elements round it, the deepest a document may be.
constexpr int Depth = 4998;

std::string Nested(const std::string& open, const std::string& close, int depth) {
    std::string text;
    for (int level = 0; level < depth; ++level)
        text += open;
    for (int level = 0; level < depth; ++level)
        text += close;
    return text;
}

// The probe has the DB context environment on, so contexts directly in contexts would be visited
// too often; these shapes are visited once each.
ChildResult ReadWithSmallStack(const std::string& contexts) {
    const TemporaryFolder folder;
    ChildRun run;
    run.program = DYADCTX_XML_PROBE;
    run.arguments = {"read", folder.Write("deep.xml", DocumentWith(contexts))};
    run.stackKilobytes = 1024;
    return RunChild(run);
}

} // namespace

TEST(ReaderDepth, ScenariosNeedNoStack) {
    const std::string scenarios = Nested("<Scenario>", "</Scenario>", Depth - 1);
    const ChildResult result = ReadWithSmallStack(Path("A", scenarios));
    EXPECT_EQ(result.status, 0) << result.standardOutput;
    EXPECT_EQ(result.standardOutput, "1 contexts\n");
}

TEST(ReaderDepth, FriendsInFriendsNeedNoStack) {
    const std::string friends = Nested("<CtxFriends>", "</CtxFriends>", Depth - 1);
    EXPECT_EQ(ReadWithSmallStack(Path("A", friends)).standardOutput, "1 contexts\n");
}

TEST(ReaderDepth, AssociatedAndFriendsInTurnNeedNoStack) {
    const std::string open = R"(<CtxFriends><Context Name="B"><CtxAssociated><Context Name="B">)";
    const std::string close = "</Context></CtxAssociated></Context></CtxFriends>";
    const ChildResult result =
        ReadWithSmallStack(Path("A", Nested(open, close, (Depth - 1) / 4)) + Path("B"));
    EXPECT_EQ(result.standardOutput, "2 contexts\n");
}

TEST(ReaderDepth, ChainOfContextsIsReadToItsEnd) {
    const std::string contexts =
        Path("A", Nested(R"(<Context Name="B">)", "</Context>", Depth - 1));
    const Reading reading = ReadContexts(contexts);
    EXPECT_EQ(reading.result, S_OK);
    EXPECT_EQ(FriendsAt(reading, 1).size(), static_cast<std::size_t>(Depth - 1));
}

TEST(ReaderDepth, ContextsThatAreReadTwicePerLevelAreLimited) {
    const KeyCatalog catalog;
    const DbEnvironment db(true);
    const auto nested = [](int depth) {
        return Path("A", Nested(R"(<Context Name="B">)", "</Context>", depth));
    };
    const Reading few = ReadContexts(nested(12));
    EXPECT_EQ(few.result, S_OK);
    EXPECT_EQ(AllOf(few).size(), 8191U);
    // The two elements around them and the one declared count too.
    for (const int depth : {13, 40}) {
        const Reading many = ReadContexts(nested(depth));
        EXPECT_EQ(many.result, E_FAIL);
        EXPECT_EQ(many.message, "Ctx.Collector.InternalError()\n");
        EXPECT_EQ(AllOf(many).size(), 10'000U + 4U * (static_cast<unsigned>(depth) + 3U));
    }
}

TEST(ReaderDepth, DeeperDocumentIsASyntaxError) {
    const KeyCatalog catalog;
    const Reading reading = ReadContexts(Path("A", Nested("<Scenario>", "</Scenario>", Depth)));
    EXPECT_EQ(reading.result, E_FAIL);
    EXPECT_EQ(reading.message, "Ctx.Parse.XMLSyntaxError()\n");
}

} // namespace dyadctx::test
