// SPDX-License-Identifier: MIT
// The loader written by hand is a fair peer only while it reads the same from the same file.
#include "bench/peers/HandWrittenLoader.h"

#include "bench/generator/GenerateContexts.h"
#include "support/ContextFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace dyadctx::bench {
namespace {

std::vector<std::string> NamesOf(const std::vector<LoadedContext*>& contexts) {
    std::vector<std::string> names;
    for (const LoadedContext* context : contexts)
        names.push_back(context->name);
    return names;
}

class HandWrittenLoader : public testing::TestWithParam<Shape> {
protected:
    void SetUp() override {
        file_ = folder_.PathOf("contexts.xml");
        ASSERT_TRUE(WriteContextFile({GetParam(), 500}, file_));
        loaded_ = LoadedContexts::Load(file_, message_);
        created_ = test::CreateFromFile(file_);
    }

    const test::DbEnvironment on_{true};
    test::TemporaryFolder folder_;
    std::string file_;
    std::string message_;
    std::unique_ptr<LoadedContexts> loaded_;
    test::Creation created_;
};

INSTANTIATE_TEST_SUITE_P(EachShape, HandWrittenLoader,
                         testing::ValuesIn(AllShapes().begin(), AllShapes().end()));

std::vector<Shape> ValidShapes() {
    std::vector<Shape> shapes;
    std::copy_if(AllShapes().begin(), AllShapes().end(), std::back_inserter(shapes), IsValid);
    return shapes;
}

class HandWrittenLoaderOfValidFiles : public HandWrittenLoader {};

INSTANTIATE_TEST_SUITE_P(EachShape, HandWrittenLoaderOfValidFiles,
                         testing::ValuesIn(ValidShapes()));

TEST_P(HandWrittenLoader, AcceptsWhatTheLibraryAccepts) {
    EXPECT_EQ(loaded_ != nullptr, created_.collector != nullptr) << message_ << created_.message;
    EXPECT_EQ(loaded_ != nullptr, message_.empty());
}

TEST_P(HandWrittenLoaderOfValidFiles, HasTheSameViews) {
    ASSERT_TRUE(loaded_ && created_.collector);
    EXPECT_EQ(loaded_->Count(), static_cast<std::size_t>(created_.collector->GetAllNbCtxs()));
    created_.collector->SetContextPathType();
    EXPECT_EQ(NamesOf(loaded_->Paths()), test::ViewOf(*created_.collector));
    created_.collector->SetContextDatabaseType({});
    EXPECT_EQ(NamesOf(loaded_->Databases()), test::ViewOf(*created_.collector));
    created_.collector->SetContextFileType();
    EXPECT_EQ(NamesOf(loaded_->Files()), test::ViewOf(*created_.collector));
}

TEST_P(HandWrittenLoaderOfValidFiles, HasTheSameLinks) {
    ASSERT_TRUE(loaded_ && created_.collector);
    for (int position = 1; position <= created_.collector->GetAllNbCtxs(); ++position) {
        VELDyadContext* context = nullptr;
        VELDyadContext* associated = nullptr;
        ASSERT_EQ(created_.collector->GetCtxAtIndex(position, context), S_OK);
        const LoadedContext* loaded = loaded_->Find(test::Text(context->GetName()));
        ASSERT_TRUE(loaded);
        EXPECT_EQ(NamesOf(loaded->friends), test::FriendsOf(*context));
        context->GetAssociatedContext(associated);
        EXPECT_EQ(loaded->associated ? loaded->associated->name : "",
                  associated ? test::Text(associated->GetName()) : "");
    }
}

TEST(HandWrittenLoaderScenarios, AreTheRowsOfTheLibrary) {
    const test::TemporaryFolder folder;
    const std::string file = folder.PathOf("contexts.xml");
    ASSERT_TRUE(WriteContextFile({Shape::Scenarios, 20}, file));

    std::string message;
    const auto loaded = LoadedContexts::Load(file, message);
    ASSERT_TRUE(loaded) << message;

    ASSERT_EQ(loaded->Scenarios().size(), 20U);
    const auto created = test::CreateFromFile(file);
    ASSERT_TRUE(created.collector) << created.message;
    for (const LoadedScenario& row : loaded->Scenarios()) {
        VELListValVELUnicodeString names;
        VELListValVELUnicodeString values;
        created.collector->GetOptionsfromExchangeProfile(row.channel.c_str(), row.profile.c_str(),
                                                         names, values);
        EXPECT_EQ(test::Texts(names), std::vector<std::string>{row.optionName});
        EXPECT_EQ(test::Texts(values), std::vector<std::string>{row.optionValue});
    }
}

} // namespace
} // namespace dyadctx::bench
