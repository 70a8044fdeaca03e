#include "context/detail/ContextSlab.h"

#include "support/ContextFile.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>
#include <new>
#include <string>
#include <thread>
#include <vector>

namespace dyadctx::test {

namespace {

constexpr const char* LongName = "A name that does not fit into a short text";

ContextPtr Make(ContextMaker& maker, const std::string& name) {
    return maker.Make({VELUnicodeString(name.c_str()), "/data", "Path"});
}

// More than fit into the first slabs.
std::vector<ContextPtr> MakeMany(int count) {
    ContextMaker maker;
    std::vector<ContextPtr> contexts;
    for (int i = 0; i < count; ++i)
        contexts.push_back(Make(maker, LongName + std::to_string(i)));
    return contexts;
}

TEST(ContextSlab, MakesWhatTheConstructorMakes) {
    ContextMaker maker;
    const ContextPtr context = Make(maker, "Wing");
    EXPECT_EQ(Text(context->GetName()), "Wing");
    EXPECT_EQ(Text(context->GetParameter()), "/data");
    EXPECT_EQ(Text(context->GetParameterType()), "Path");
    EXPECT_FALSE(ContextAccess::WasRegistered(*context));
    EXPECT_EQ(ContextAccess::Friends(*context).Size(), 0);
}

TEST(ContextSlab, ContextsOutliveTheirMaker) {
    const std::vector<ContextPtr> contexts = MakeMany(5000);
    for (std::size_t i = 0; i < contexts.size(); ++i)
        EXPECT_EQ(Text(contexts[i]->GetName()), LongName + std::to_string(i));
}

TEST(ContextSlab, TheLastContextLeftIsWholeWhenAllOthersAreGone) {
    std::vector<ContextPtr> contexts = MakeMany(1000);
    const ContextPtr kept = std::move(contexts[500]);
    contexts.clear();
    EXPECT_EQ(Text(kept->GetName()), LongName + std::string("500"));
}

TEST(ContextSlab, ContextsAreDeletedInAnyOrderAndThread) {
    std::vector<ContextPtr> contexts = MakeMany(1000);
    std::vector<ContextPtr> odd;
    for (std::size_t i = 1; i < contexts.size(); i += 2)
        odd.push_back(std::move(contexts[i]));
    std::thread other([&odd] { odd.clear(); });
    contexts.clear();
    other.join();
    EXPECT_TRUE(odd.empty());
}

TEST(ContextSlab, ACopyHasMemoryOfItsOwn) {
    std::unique_ptr<VELDyadContext> copy;
    auto assigned = std::make_unique<VELDyadContext>("Other", "", "File");
    {
        ContextMaker maker;
        const ContextPtr context = Make(maker, LongName);
        copy = std::make_unique<VELDyadContext>(*context);
        *assigned = *context;
    }
    EXPECT_EQ(Text(copy->GetName()), LongName);
    EXPECT_EQ(Text(assigned->GetName()), LongName);
}

TEST(ContextSlab, WithoutMemoryItThrowsAndCanBeAskedAgain) {
    int failures = 0;
    for (int number = 1; number < 10; ++number) {
        ContextMaker maker;
        ContextTexts texts{LongName, LongName, "Path"};
        bool threw = false;
        {
            const FailingAllocation failing(number);
            try {
                maker.Make(std::move(texts));
            } catch (const std::bad_alloc&) {
                threw = true;
            }
            EXPECT_EQ(threw, failing.HasFailed());
        }
        failures += threw ? 1 : 0;
        EXPECT_EQ(Text(Make(maker, "Again")->GetName()), "Again");
    }
    EXPECT_EQ(failures, 1);
}

} // namespace

} // namespace dyadctx::test
