// SPDX-License-Identifier: MIT
#include "platform/VELBaseUnknown_var.h"

#include "platform/VELIDyadDbProvider.h"

#include <gtest/gtest.h>
#include <thread>
#include <utility>
#include <vector>

namespace {

// Counts its own kind; other operations are of no matter here.
class CountedProvider final : public VELIDyadDbProvider {
public:
    static int alive;
    CountedProvider() { ++alive; }

    VELResult GetName(VELUnicodeString& name) override {
        name = "counted";
        return S_OK;
    }
    VELResult IsSame(const VELIDyadDbProvider_var&, bool&) override { return E_FAIL; }
    VELResult SetConnectorName(const VELUnicodeString&) override { return E_FAIL; }
    VELResult SetServerDetails(const VELListValVELUnicodeString&,
                               const VELListValVELUnicodeString&) override {
        return E_FAIL;
    }
    VELResult GetServerDetails(VELListValVELUnicodeString&, VELListValVELUnicodeString&) override {
        return E_FAIL;
    }

private:
    ~CountedProvider() override { --alive; }
};

int CountedProvider::alive = 0;

} // namespace

TEST(VELBaseUnknown_var, TheLastHandleDeletesTheObject) {
    {
        VELIDyadDbProvider_var first(new CountedProvider);
        VELIDyadDbProvider_var second(first);
        VELIDyadDbProvider_var third;
        third = second;
        first.Reset();
        second.Reset();
        EXPECT_EQ(1, CountedProvider::alive);
        EXPECT_TRUE(first.IsNull());
    }
    EXPECT_EQ(0, CountedProvider::alive);
}

TEST(VELBaseUnknown_var, MovesHandTheReferenceOver) {
    VELIDyadDbProvider_var first(new CountedProvider);
    VELIDyadDbProvider* object = first.Get();
    VELIDyadDbProvider_var second(std::move(first));
    EXPECT_TRUE(first.IsNull()); // NOLINT(bugprone-use-after-move)
    VELIDyadDbProvider_var third;
    third = std::move(second);
    EXPECT_EQ(object, third.Get());
    EXPECT_EQ(2U, object->AddRef());
    EXPECT_EQ(1U, object->Release());
    third.Reset();
    EXPECT_EQ(0, CountedProvider::alive);
}

TEST(VELBaseUnknown_var, AssignmentToItselfKeepsTheObject) {
    VELIDyadDbProvider_var handle(new CountedProvider);
    VELIDyadDbProvider_var& same = handle;
    handle = same;
    handle = std::move(same);
    EXPECT_FALSE(handle.IsNull());
    EXPECT_EQ(1, CountedProvider::alive);
    handle = VELIDyadDbProvider_var(new CountedProvider);
    EXPECT_EQ(1, CountedProvider::alive);
}

TEST(VELBaseUnknown_var, HandlesAreEqualWhenTheyHoldTheSameObject) {
    const VELIDyadDbProvider_var one(new CountedProvider);
    const VELIDyadDbProvider_var copy(one);
    const VELIDyadDbProvider_var other(new CountedProvider);
    EXPECT_TRUE(one == copy);
    EXPECT_TRUE(one != other);
    EXPECT_TRUE(VELIDyadDbProvider_var() == VELIDyadDbProvider_var(nullptr));
    EXPECT_TRUE(one);
    EXPECT_FALSE(VELIDyadDbProvider_var());
}

TEST(VELBaseUnknown_var, UsingTheNullHandleThrowsItsOwnError) {
    const VELIDyadDbProvider_var null;
    VELUnicodeString name;
    EXPECT_THROW(null->GetName(name), VELNullHandleError);
    EXPECT_THROW(VELBaseUnknown_var::ThrowErrorNullVar(), VELNullHandleError);
    try {
        null->GetName(name);
    } catch (const std::exception& error) {
        EXPECT_STREQ("a null handle was used", error.what());
    }
}

TEST(VELBaseUnknown_var, CountsFromSeveralThreads) {
    const VELIDyadDbProvider_var shared(new CountedProvider);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&shared] {
            for (int copy = 0; copy < 10000; ++copy)
                VELIDyadDbProvider_var(shared).Reset();
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(2U, shared->AddRef());
    EXPECT_EQ(1U, shared->Release());
}
