// SPDX-License-Identifier: MIT
#include "context/detail/FriendList.h"

#include "context/VELDyadContext.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>
#include <new>
#include <vector>

namespace dyadctx::test {

namespace {

using Contexts = std::vector<VELDyadContext*>;

class FriendListTest : public testing::Test {
protected:
    Contexts Held() const {
        return list == nullptr ? Contexts() : Contexts(list->View().begin(), list->View().end());
    }

    VELDyadContext one{"One", "", "Path"};
    VELDyadContext two{"Two", "", "Path"};
    FriendList::Ptr list;
};

TEST_F(FriendListTest, KeepsTheOrderWhileItGrows) {
    Contexts expected;
    for (int i = 0; i < 100; ++i) {
        expected.push_back(i % 3 == 0 ? &one : &two);
        ASSERT_TRUE(FriendList::Append(list, expected.back()));
        ASSERT_EQ(Held(), expected);
    }
}

TEST_F(FriendListTest, AViewIsNullOutsideItsPositions) {
    FriendList::Append(list, &one);
    const FriendView view = list->View();
    EXPECT_EQ(view.Size(), 1);
    EXPECT_EQ(view[1], &one);
    EXPECT_EQ(view[0], nullptr);
    EXPECT_EQ(view[2], nullptr);
    EXPECT_EQ(FriendView()[1], nullptr);
}

TEST_F(FriendListTest, SetsAndRemovesByPosition) {
    for (VELDyadContext* context : {&one, &two, &one})
        FriendList::Append(list, context);
    list->Set(3, &two);
    EXPECT_EQ(Held(), (Contexts{&one, &two, &two}));
    list->RemovePosition(1);
    EXPECT_EQ(Held(), (Contexts{&two, &two}));
    list->RemovePosition(2);
    EXPECT_EQ(Held(), (Contexts{&two}));
}

TEST_F(FriendListTest, RemovesAllEntriesOfAContext) {
    for (VELDyadContext* context : {&one, &two, &one})
        FriendList::Append(list, context);
    list->RemoveAll(&one);
    EXPECT_EQ(Held(), (Contexts{&two}));
    list->RemoveAll(&two);
    EXPECT_EQ(Held(), Contexts());
    EXPECT_EQ(FriendList::CopyOf(list), nullptr);
}

TEST_F(FriendListTest, ACopyIsItsOwn) {
    FriendList::Append(list, &one);
    const FriendList::Ptr copy = FriendList::CopyOf(list);
    list->Set(1, &two);
    EXPECT_EQ(copy->View()[1], &one);
}

TEST_F(FriendListTest, WithoutMemoryItStaysAsItWas) {
    FriendList::Append(list, &one);
    FriendList::Append(list, &two);
    {
        const FailingAllocation failing(1);
        EXPECT_FALSE(FriendList::Append(list, &one));
    }
    EXPECT_EQ(Held(), (Contexts{&one, &two}));
    const FailingAllocation failing(1);
    EXPECT_THROW(FriendList::CopyOf(list), std::bad_alloc);
}

} // namespace

} // namespace dyadctx::test
