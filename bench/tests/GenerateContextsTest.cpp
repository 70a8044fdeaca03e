// SPDX-License-Identifier: MIT
#include "bench/generator/GenerateContexts.h"

#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

namespace dyadctx::bench {
namespace {

std::string Generate(Shape shape, std::uint64_t count, std::uint64_t seed = 1) {
    std::ostringstream out;
    WriteContextFile({shape, count, seed}, out);
    return out.str();
}

class EachShape : public testing::TestWithParam<Shape> {};

INSTANTIATE_TEST_SUITE_P(GenerateContexts, EachShape,
                         testing::ValuesIn(AllShapes().begin(), AllShapes().end()),
                         [](const testing::TestParamInfo<Shape>& parameter) {
                             std::string name;
                             for (const char c : NameOf(parameter.param)) {
                                 if (c != '-')
                                     name += c;
                             }
                             return name;
                         });

TEST_P(EachShape, IsFoundByItsName) {
    EXPECT_EQ(ShapeNamed(NameOf(GetParam())), GetParam());
}

TEST_P(EachShape, TheSamePlanGivesTheSameBytes) {
    EXPECT_EQ(Generate(GetParam(), 50, 3), Generate(GetParam(), 50, 3));
}

TEST_P(EachShape, TheLibraryAcceptsTheValidOnesOnly) {
    const test::DbEnvironment on(true);
    for (const std::uint64_t count : {2U, 3U, 40U, 700U}) {
        const auto created = test::CreateFromText(Generate(GetParam(), count));
        EXPECT_EQ(created.collector != nullptr, IsValid(GetParam())) << count << created.message;
        EXPECT_EQ(created.message.empty(), IsValid(GetParam())) << created.message;
    }
}

TEST(GenerateContexts, AnUnknownShapeHasNoValue) {
    EXPECT_EQ(ShapeNamed("round"), std::nullopt);
    EXPECT_EQ(ShapeNamed(""), std::nullopt);
}

TEST(GenerateContexts, AnotherSeedGivesAnotherFile) {
    EXPECT_NE(Generate(Shape::Mixed, 50, 1), Generate(Shape::Mixed, 50, 2));
}

TEST(GenerateContexts, AFileWithoutContextsHasTheDefaultOnly) {
    EXPECT_EQ(Generate(Shape::Chain, 0),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<DyAdDescription>\n"
              "  <CtxData>\n"
              "    <Context Name=\"DYADIC\" Parameter=\"\" ParameterType=\"Default\"/>\n"
              "  </CtxData>\n"
              "</DyAdDescription>\n");
}

TEST(GenerateContexts, AChainLinksEachContextToTheNext) {
    const auto created = test::CreateFromText(Generate(Shape::Chain, 4));
    ASSERT_TRUE(created.collector) << created.message;
    ASSERT_EQ(created.collector->GetAllNbCtxs(), 5);
    const std::vector<std::string> names = test::ViewOf(*created.collector);
    for (int position = 2; position <= 4; ++position) {
        VELDyadContext* context = nullptr;
        ASSERT_EQ(created.collector->GetCtxAtIndex(position, context), S_OK);
        EXPECT_EQ(test::FriendsOf(*context),
                  std::vector<std::string>{names[static_cast<std::size_t>(position)]});
    }
}

TEST(GenerateContexts, MixedContextsHaveEveryKindAndAbout170Bytes) {
    constexpr std::uint64_t Count = 20'000;
    const test::DbEnvironment on(true);
    const std::string document = Generate(Shape::Mixed, Count);
    EXPECT_NEAR(static_cast<double>(document.size()) / Count, 170.0, 10.0);

    const auto created = test::CreateFromText(document);
    ASSERT_TRUE(created.collector) << created.message;
    EXPECT_EQ(created.collector->GetAllNbCtxs(), static_cast<int>(Count) + 1);
    std::set<std::string> types;
    int withFriends = 0;
    int withAssociated = 0;
    for (int position = 1; position <= created.collector->GetAllNbCtxs(); ++position) {
        VELDyadContext* context = nullptr;
        VELDyadContext* associated = nullptr;
        ASSERT_EQ(created.collector->GetCtxAtIndex(position, context), S_OK);
        types.insert(test::Text(context->GetParameterType()));
        withFriends += !test::FriendsOf(*context).empty();
        withAssociated += context->GetAssociatedContext(associated) == S_OK;
    }
    EXPECT_EQ(types, (std::set<std::string>{"Database", "Default", "File", "Path"}));
    EXPECT_GT(withFriends, 1000);
    EXPECT_GT(withAssociated, 500);

    VELListValVELUnicodeString channels;
    VELListValVELUnicodeString contexts;
    created.collector->GetExchangeChannelfromScenario(test::ListOf({"EX-1"}), channels, contexts);
    EXPECT_GT(channels.Size(), 0);
}

TEST(GenerateContexts, AFolderThatIsMissingIsAFailure) {
    const test::TemporaryFolder folder;
    EXPECT_FALSE(WriteContextFile({Shape::Mixed, 1}, folder.PathOf("missing/a.xml")));
    EXPECT_TRUE(WriteContextFile({Shape::Mixed, 1}, folder.PathOf("a.xml")));
    EXPECT_EQ(folder.Read("a.xml"), Generate(Shape::Mixed, 1));
}

} // namespace
} // namespace dyadctx::bench
