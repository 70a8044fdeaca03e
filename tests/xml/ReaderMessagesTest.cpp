// SPDX-License-Identifier: MIT
// What the reader demands of attributes, and what it says when they are missing.
#include "support/ContextFile.h"
#include "support/KeyCatalog.h"
#include "support/RecordingTrace.h"
#include "xml/ReaderSupport.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Names = std::vector<std::string>;

struct RefusedCase {
    std::string contexts;
    bool environment;
    std::string message;
};

class RefusedContext : public testing::TestWithParam<RefusedCase> {};

const std::string Owner = Path("A");

std::string Below(const std::string& inner) {
    return Path("A", inner);
}

} // namespace

TEST_P(RefusedContext, EndsReadingWithItsMessages) {
    const DbEnvironment db(GetParam().environment);
    const KeyCatalog catalog;

    const Reading reading = ReadContexts(GetParam().contexts, "before\n");

    EXPECT_EQ(reading.result, E_FAIL);
    EXPECT_EQ(reading.message, "before\n" + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    DeclaredContexts, RefusedContext,
    testing::Values(
        RefusedCase{"<Context/>", false, "Ctx.Parse.CtxNoName()\n"},
        RefusedCase{"<Context/>", true, "Ctx.Parse.CtxNoName()\n"},
        RefusedCase{"<Context name='A' Parameter='p' ParameterType='Path'/>", false,
                    "Ctx.Parse.CtxNoName()\n"},
        RefusedCase{"<Context><Name>A</Name></Context>", false, "Ctx.Parse.CtxNoName()\n"},
        RefusedCase{"<Context Name='A' ParameterType='Path'/>", false, "Ctx.Parse.CtxNoParam(A)\n"},
        RefusedCase{"<Context Name='A'/>", true, "Ctx.Parse.CtxNoParam(A)\n"},
        RefusedCase{"<Context Name='A' Parameter=''/>", false, "Ctx.Parse.CtxNoParamType(A)\n"},
        RefusedCase{"<Context Name='%s%n' Parameter=''/>", false,
                    "Ctx.Parse.CtxNoParamType(%s%n)\n"},
        RefusedCase{"<Context Name='V' ParameterType='Database'/>", false,
                    "Ctx.Parse.CtxNoParam(V)\n"},
        RefusedCase{"<Context Name='V' Parameter='p' ParameterType='Database'/>", true,
                    "Ctx.Parse.CtxNoConnector()\nCtx.Parse.CtxNoDatabase(V)\n"}));

INSTANTIATE_TEST_SUITE_P(
    FriendsAndAssociated, RefusedContext,
    testing::Values(
        RefusedCase{Below(Friends("<Context/>")), false, "Ctx.Parse.CtxFriendNoName(A)\n"},
        RefusedCase{Below(Friends("<Context/>")), true, "Ctx.Parse.CtxFriendNoName(A)\n"},
        RefusedCase{Below(Associated("<Context/>")), true, "Ctx.Parse.CtxAssocNoName(A)\n"},
        RefusedCase{Below(Friends(Named("B", Friends("")))), true,
                    "Ctx.Parse.CtxFriendWithFriend()\n"},
        RefusedCase{Below(Associated(Named("B", Associated("")))), true,
                    "Ctx.Parse.CtxAssociatedWithAssociated()\n"},
        RefusedCase{Owner + Friends(""), false, "Ctx.Parse.NoCtxDefinedForFriend()\n"},
        RefusedCase{Owner + Friends(""), true, "Ctx.Parse.NoCtxDefinedForFriend()\n"},
        RefusedCase{Owner + Associated(""), true, "Ctx.Parse.NoCtxDefinedForAssociated()\n"}));

TEST(ReaderMessages, EmptyAttributesAreNotMissing) {
    const Reading reading = ReadContexts("<Context Name='' Parameter='' ParameterType=''/>");
    ASSERT_EQ(reading.result, S_OK);
    EXPECT_EQ(DeclaredOf(reading), Names{""});
}

TEST(ReaderMessages, AttributesAreKeptAsTheyStand) {
    const Reading reading = ReadContexts(
        "<Context Name=' n&#9;x &amp;&#xE9; ' Parameter='&lt;&quot;>' ParameterType='path'/>");
    ASSERT_EQ(reading.result, S_OK);
    EXPECT_EQ(Text(DeclaredAt(reading, 1).GetName()), " n\tx &\xC3\xA9 ");
    EXPECT_EQ(Text(DeclaredAt(reading, 1).GetParameter()), "<\">");
    EXPECT_EQ(Text(DeclaredAt(reading, 1).GetParameterType()), "path");
}

TEST(ReaderMessages, FriendByNameIsEmptyOtherwise) {
    const Reading reading = ReadContexts(Path("A", Friends(Named("B"))));
    VELListPtrVELDyadContext friends;
    ASSERT_EQ(DeclaredAt(reading, 1).GetFriends(friends), 1);
    EXPECT_EQ(Text(friends[1]->GetParameter()), "");
    EXPECT_EQ(Text(friends[1]->GetParameterType()), "");
}

TEST(ReaderMessages, FriendMayBeWrittenInFull) {
    const Reading reading = ReadContexts(Path("A", Friends(Path("B"))));
    VELListPtrVELDyadContext friends;
    ASSERT_EQ(DeclaredAt(reading, 1).GetFriends(friends), 1);
    EXPECT_EQ(Text(friends[1]->GetParameter()), "p");
    EXPECT_EQ(Text(friends[1]->GetParameterType()), "Path");
}

TEST(ReaderMessages, MessageOfAMissingNameIsTracedAlone) {
    const KeyCatalog catalog;
    const RecordingTrace trace;
    ReadContexts("<Context/>", "before\n");
    EXPECT_EQ(trace.LinesWith("LogError"),
              Names{"WARNING VELDyadCtxXml:LogError Method <VELDyadCtxXml::GetXMLValuesContext> "
                    "Error <Ctx.Parse.CtxNoName()\n>"});
}

TEST(ReaderMessages, MessageOfAMissingParameterIsTracedWithTheWholeText) {
    const KeyCatalog catalog;
    const RecordingTrace trace;
    ReadContexts("<Context Name='A'/>", "before\n");
    EXPECT_EQ(trace.LinesWith("LogError"),
              Names{"WARNING VELDyadCtxXml:LogError Method <VELDyadCtxXml::GetXMLValuesContext> "
                    "Error <before\nCtx.Parse.CtxNoParam(A)\n>"});
}

TEST(ReaderMessages, MissingConnectorIsTracedAloneAndThenWithTheWholeText) {
    const DbEnvironment db(true);
    const KeyCatalog catalog;
    const RecordingTrace trace;
    ReadContexts("<Context Name='V' Parameter='p' ParameterType='Database'/>", "before\n");
    EXPECT_EQ(trace.LinesWith("LogError"),
              (Names{"WARNING VELDyadCtxXml:LogError Method "
                     "<VELDyadCtxXml::GetXMLDbValuesContext> Error <Ctx.Parse.CtxNoConnector()\n>",
                     "WARNING VELDyadCtxXml:LogError Method <VELDyadCtxXml::GetXMLValuesContext> "
                     "Error <before\nCtx.Parse.CtxNoConnector()\nCtx.Parse.CtxNoDatabase(V)\n>"}));
}

TEST(ReaderMessages, KeyMissingFromTheCatalogAddsAnEmptyLine) {
    KeyCatalog catalog;
    catalog.Forget("Ctx.Parse.CtxNoName");
    EXPECT_EQ(ReadContexts("<Context/>", "before\n").message, "before\n\n");
}

} // namespace dyadctx::test
