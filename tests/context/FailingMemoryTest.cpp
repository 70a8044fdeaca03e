// SPDX-License-Identifier: MIT
#include "context/VELDyadContext.h"

#include "context/detail/ContextAccess.h"
#include "support/ContextFile.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>
#include <new>

namespace dyadctx::test {

namespace {

constexpr const char* LongName = "A name that does not fit into a short text";
constexpr const char* LongParameter = "/a/path/that/does/not/fit/into/a/short/text";

// Whether the operation met the failing allocation.
template<class Operation>
bool FailsAt(int number, Operation operation) {
    FailingAllocation failing(number);
    operation();
    return failing.HasFailed();
}

// The same for an operation that throws.
template<class Operation>
bool ThrowsAt(int number, Operation operation) {
    bool threw = false;
    const bool failed = FailsAt(number, [&] {
        try {
            operation();
        } catch (const std::bad_alloc&) {
            threw = true;
        }
    });
    EXPECT_EQ(threw, failed);
    return failed;
}

TEST(VELDyadContextMemory, AddFriendRefusesAndKeepsTheFriendsThereWere) {
    const int failures = ForEachAllocation([](int number) {
        VELDyadContext context(LongName, "", "Path");
        VELResult added = S_OK;
        const bool failed = FailsAt(number, [&] { added = context.AddFriend(&context); });
        EXPECT_EQ(added, failed ? E_FAIL : S_OK);
        EXPECT_EQ(ContextAccess::Friends(context).Size(), failed ? 0 : 1);
        return failed;
    });
    EXPECT_GE(failures, 1);
}

TEST(VELDyadContextMemory, GetFriendsReturnsNoneAndLeavesTheListAlone) {
    VELDyadContext context("A", "", "Path");
    for (int i = 0; i < 10; ++i)
        context.AddFriend(&context);
    const int failures = ForEachAllocation([&](int number) {
        VELListPtrVELDyadContext list;
        list.Append(nullptr);
        int count = -1;
        const bool failed = FailsAt(number, [&] { count = context.GetFriends(list); });
        EXPECT_EQ(count, failed ? 0 : 10);
        EXPECT_EQ(list.Size(), failed ? 1 : 10);
        return failed;
    });
    EXPECT_GE(failures, 1);
}

TEST(VELDyadContextMemory, ConstructionAndCopyThrowAndLeaveNothing) {
    VELDyadContext source(LongName, LongParameter, "Database");
    source.AddFriend(&source);
    const VELUnicodeString name(LongName);
    const VELUnicodeString parameter(LongParameter);
    const int constructing = ForEachAllocation([&](int number) {
        return ThrowsAt(number, [&] { const VELDyadContext context(name, parameter, name); });
    });
    EXPECT_EQ(constructing, 3);
    const int copying = ForEachAllocation(
        [&](int number) { return ThrowsAt(number, [&] { const VELDyadContext copy(source); }); });
    EXPECT_GE(copying, 3);
}

TEST(VELDyadContextMemory, AssignmentThrowsAndLeavesTheTargetAsItWas) {
    VELDyadContext source(LongName, LongParameter, LongParameter);
    source.AddFriend(&source);
    source.AddAssociatedContext(&source);
    const int failures = ForEachAllocation([&](int number) {
        VELDyadContext target("Target", "parameter", "Path");
        const bool failed = ThrowsAt(number, [&] { target = source; });
        EXPECT_EQ(Text(target.GetName()), failed ? "Target" : LongName);
        EXPECT_EQ(Text(target.GetParameter()), failed ? "parameter" : LongParameter);
        EXPECT_EQ(Text(target.GetParameterType()), failed ? "Path" : LongParameter);
        EXPECT_EQ(ContextAccess::Friends(target).Size(), failed ? 0 : 1);
        EXPECT_EQ(ContextAccess::Associated(target), failed ? nullptr : &source);
        return failed;
    });
    EXPECT_GE(failures, 4);
}

TEST(VELDyadContextMemory, TheLabelIsEmptyOrWhole) {
    const VELDyadContext context("A", "", "Path");
    const VELUnicodeString label = context.GetNLSParameterType();
    EXPECT_FALSE(label.IsEmpty());
    ForEachAllocation([&](int number) {
        VELUnicodeString given;
        const bool failed = FailsAt(number, [&] { given = context.GetNLSParameterType(); });
        EXPECT_TRUE(given == label || (failed && given.IsEmpty()));
        return failed;
    });
}

} // namespace

} // namespace dyadctx::test
