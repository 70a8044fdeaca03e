// SPDX-License-Identifier: MIT
#include "context/detail/ContextAccess.h"

#include "platform/VELDyadDbProviderServices.h"
#include "support/ContextFile.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Names = std::vector<std::string>;

Names NamesOf(FriendView friends) {
    Names names;
    for (const VELDyadContext* context : friends)
        names.push_back(Text(context->GetName()));
    return names;
}

class ContextAccessTest : public testing::Test {
protected:
    VELDyadContext owner{"Owner", "", "Database"};
    VELDyadContext other{"Other", "", "Path"};
};

TEST_F(ContextAccessTest, TracesLinksAsGettingThemDoes) {
    owner.AddFriend(&other);
    owner.AddAssociatedContext(&other);
    RecordingTrace trace;
    ContextAccess::TraceFriends(owner);
    ContextAccess::TraceFriends(other);
    ContextAccess::TraceAssociated(owner);
    ContextAccess::TraceAssociated(other);
    EXPECT_EQ(trace.TakeLines(), (Names{"LOG VELDyadContext:GetFriends Ctx <Owner> has 1 Friends",
                                        "LOG VELDyadContext:GetFriends Ctx <Other> has 0 Friends",
                                        "LOG VELDyadContext:GetAssociatedContext <Other>"}));
}

TEST_F(ContextAccessTest, LooksAtLinksWithoutTrace) {
    owner.AddFriend(&other);
    owner.AddAssociatedContext(&other);
    RecordingTrace trace;
    EXPECT_EQ(NamesOf(ContextAccess::Friends(owner)), Names{"Other"});
    EXPECT_EQ(ContextAccess::Friends(other).Size(), 0);
    EXPECT_EQ(ContextAccess::Associated(owner), &other);
    EXPECT_EQ(ContextAccess::Associated(other), nullptr);
    EXPECT_EQ(trace.TakeLines(), Names{});
}

TEST_F(ContextAccessTest, ReturnsTheKeptProviderItself) {
    EXPECT_TRUE(ContextAccess::KeptProvider(owner).IsNull());
    VELIDyadDbProvider_var provider;
    ASSERT_EQ(VELDyadDbProviderServices::CreateDyadDbProvider(provider), S_OK);
    ASSERT_EQ(owner.SetDyadDbProvider(provider), S_OK);
    EXPECT_FALSE(ContextAccess::KeptProvider(owner).IsNull());
    EXPECT_EQ(ContextAccess::KeptProvider(owner), ContextAccess::KeptProvider(owner));
    EXPECT_NE(ContextAccess::KeptProvider(owner), provider);
}

TEST_F(ContextAccessTest, RemovesEveryLinkToATargetWithoutTrace) {
    VELDyadContext target{"Target", "", "Path"};
    for (VELDyadContext* context : {&target, &other, &target, &target, &owner, &target})
        owner.AddFriend(context);
    owner.AddAssociatedContext(&target);
    other.AddAssociatedContext(&owner);
    RecordingTrace trace;
    ContextAccess::RemoveLinksTo(owner, &target);
    ContextAccess::RemoveLinksTo(other, &target);
    EXPECT_EQ(trace.TakeLines(), Names{});
    EXPECT_EQ(FriendsOf(owner), (Names{"Other", "Owner"}));
    EXPECT_EQ(ContextAccess::Associated(owner), nullptr);
    EXPECT_EQ(ContextAccess::Associated(other), &owner);
}

TEST_F(ContextAccessTest, CountsAssignmentsButNotCopies) {
    const std::uint64_t before = ContextAccess::AssignmentCount();
    const VELDyadContext copy(owner);
    EXPECT_EQ(ContextAccess::AssignmentCount(), before);
    other = owner;
    EXPECT_EQ(ContextAccess::AssignmentCount(), before + 1);
}

TEST_F(ContextAccessTest, TheMarkOfARegisteredContextStaysItsOwn) {
    EXPECT_FALSE(ContextAccess::WasRegistered(owner));
    ContextAccess::MarkRegistered(owner);
    const VELDyadContext copy(owner);
    EXPECT_FALSE(ContextAccess::WasRegistered(copy));
    owner = copy;
    EXPECT_TRUE(ContextAccess::WasRegistered(owner));
    other = owner;
    EXPECT_FALSE(ContextAccess::WasRegistered(other));
}

TEST(VELDyadContextSize, APlainContextFitsIntoTheMemoryOfSixSmallTexts) {
    EXPECT_LE(sizeof(VELDyadContext), 88U);
}

} // namespace

} // namespace dyadctx::test
