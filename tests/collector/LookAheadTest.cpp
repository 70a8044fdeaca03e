// SPDX-License-Identifier: MIT
#include "collector/detail/LookAhead.h"

#include "collector/DeclaredContexts.h"
#include "support/ContextFile.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace dyadctx::test {

namespace {

using Names = std::vector<std::string>;

struct Visits {
    Names first;
    Names second;
};

// What a walk through all positions looks at ahead of position `pos`.
Visits VisitsAt(DeclaredContexts& contexts, int pos) {
    Visits visits;
    LookAhead(
        CollectorInternals::MainContexts(contexts.Collector()), pos,
        [&](const VELDyadContext& one) { visits.first.push_back(Text(one.GetName())); },
        [&](const VELDyadContext& one) { visits.second.push_back(Text(one.GetName())); });
    return visits;
}

} // namespace

TEST(LookAhead, VisitsTheFriendsOfLaterContextsTwiceTheSecondTimeNearer) {
    DeclaredContexts contexts;
    for (int pos = 1; pos <= 40; ++pos) {
        VELDyadContext& context = contexts.Declare("C" + std::to_string(pos));
        contexts.NameFriend(context, "F" + std::to_string(pos));
    }
    Names first;
    Names second;
    for (int pos = 1; pos <= 40; ++pos) {
        const Visits visits = VisitsAt(contexts, pos);
        first.insert(first.end(), visits.first.begin(), visits.first.end());
        second.insert(second.end(), visits.second.begin(), visits.second.end());
        EXPECT_EQ(std::find(visits.second.begin(), visits.second.end(), "F" + std::to_string(pos)),
                  visits.second.end());
    }
    // Each once, in order, but for those too near to the start.
    EXPECT_EQ(first.size(), 24U);
    EXPECT_EQ(first.front(), "F17");
    EXPECT_EQ(first.back(), "F40");
    EXPECT_EQ(second.size(), 32U);
    EXPECT_EQ(second.front(), "F9");
    EXPECT_EQ(second.back(), "F40");
}

TEST(LookAhead, LeavesOutEmptyPositionsAndFriendSlots) {
    DeclaredContexts contexts;
    for (int pos = 1; pos <= 8; ++pos)
        contexts.DeclareNull();
    VELDyadContext& context = contexts.Declare("C");
    DeclaredContexts::AddNullFriend(context);
    contexts.NameFriend(context, "F");
    EXPECT_EQ(VisitsAt(contexts, 1).second, Names{"F"});
    EXPECT_EQ(VisitsAt(contexts, 2).second, Names());
    EXPECT_EQ(VisitsAt(contexts, 1).first, Names());
}

} // namespace dyadctx::test
