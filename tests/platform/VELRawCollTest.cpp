// SPDX-License-Identifier: MIT
#include "platform/VELRawColl.h"

#include <climits>
#include <gtest/gtest.h>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

VELRawCollint ListOf(const std::vector<int>& numbers) {
    VELRawCollint list;
    for (const int number : numbers)
        list.Append(number);
    return list;
}

std::vector<int> Numbers(const VELRawCollint& list) {
    std::vector<int> numbers;
    for (int pos = 1; pos <= list.Size(); ++pos)
        numbers.push_back(list[pos]);
    return numbers;
}

const int outsideThree[] = {0, -1, INT_MIN, 4, INT_MAX};

} // namespace

TEST(VELRawColl, MayBeDeletedThroughItsBase) {
    EXPECT_TRUE(std::has_virtual_destructor_v<VELRawCollPV>);
}

TEST(VELRawColl, InitialSizeAddsNoElements) {
    for (const int initialSize : {0, 10, -1, INT_MIN})
        EXPECT_EQ(0, VELRawCollint(initialSize).Size());
}

TEST(VELRawColl, AppendsFromPositionOne) {
    VELRawCollint list;
    EXPECT_EQ(1, list.Append(7));
    EXPECT_EQ(2, list.Append(8));
    EXPECT_EQ((std::vector<int>{7, 8}), Numbers(list));
}

TEST(VELRawColl, InsertsUpToThePositionAfterTheLast) {
    VELRawCollint list = ListOf({7, 8});
    EXPECT_EQ(1, list.InsertAt(1, 6));
    EXPECT_EQ(4, list.InsertAt(4, 9));
    EXPECT_EQ((std::vector<int>{6, 7, 8, 9}), Numbers(list));
    for (const int pos : {0, -1, 6, INT_MAX, INT_MIN})
        EXPECT_EQ(0, list.InsertAt(pos, 5));
    EXPECT_EQ(4, list.Size());
}

TEST(VELRawColl, LocatesTheSameElementFromAPositionOn) {
    const VELRawCollint list = ListOf({5, 6, 5});
    EXPECT_EQ(1, list.Locate(5));
    EXPECT_EQ(3, list.Locate(5, 2));
    EXPECT_EQ(3, list.Locate(5, 3));
    EXPECT_EQ(0, list.Locate(5, 4));
    EXPECT_EQ(0, list.Locate(4));
    EXPECT_EQ(1, list.Locate(5, 0));
    EXPECT_EQ(1, list.Locate(5, INT_MIN));
    EXPECT_EQ(0, list.Locate(5, INT_MAX));
}

TEST(VELRawColl, LocatesPointersByIdentity) {
    int one = 1;
    int equal = 1;
    VELRawCollPV list;
    list.Append(&one);
    list.Append(nullptr);
    EXPECT_EQ(1, list.Locate(&one));
    EXPECT_EQ(0, list.Locate(&equal));
    EXPECT_EQ(2, list.Locate(nullptr));
}

TEST(VELRawColl, RemovesTheFirstOccurrence) {
    VELRawCollint list = ListOf({5, 6, 5});
    EXPECT_EQ(0, list.RemoveValue(9));
    EXPECT_EQ(1, list.RemoveValue(5));
    EXPECT_EQ((std::vector<int>{6, 5}), Numbers(list));
}

TEST(VELRawColl, RemovesRowsOfElements) {
    VELRawCollint list = ListOf({1, 2, 3, 4, 5});
    EXPECT_EQ(0, list.RemovePosition(2, 0U));
    EXPECT_EQ(2, list.RemovePosition(2, 2U));
    EXPECT_EQ((std::vector<int>{1, 4, 5}), Numbers(list));
    EXPECT_EQ(2, list.RemovePosition(2, UINT_MAX));
    EXPECT_EQ((std::vector<int>{1}), Numbers(list));
    list.RemovePosition(1);
    EXPECT_EQ(0, list.Size());
}

TEST(VELRawColl, PositionsOutsideAreHarmless) {
    VELRawCollint list = ListOf({1, 2, 3});
    const VELRawCollint& readOnly = list;
    for (const int pos : outsideThree) {
        list[pos] = 99;
        EXPECT_EQ(0, list[pos]) << pos;
        EXPECT_EQ(0, readOnly[pos]) << pos;
        EXPECT_EQ(0, list.RemovePosition(pos, 1U)) << pos;
        list.RemovePosition(pos);
    }
    EXPECT_EQ((std::vector<int>{1, 2, 3}), Numbers(list));
}

TEST(VELRawColl, SlotsOutsideBelongToOneList) {
    VELRawCollint one;
    VELRawCollint other;
    int& slot = one[0];
    other[0] = 5;
    EXPECT_EQ(0, slot);
}

TEST(VELRawColl, ComparesNumberAndOrderOfElements) {
    const std::pair<std::vector<int>, std::vector<int>> different[] = {
        {{1, 2}, {2, 1}}, {{1}, {1, 1}}, {{}, {0}}};
    for (const auto& [one, other] : different) {
        EXPECT_EQ(1, ListOf(one) != ListOf(other));
        EXPECT_EQ(0, ListOf(one) == ListOf(other));
    }
    EXPECT_EQ(0, ListOf({1, 2}) != ListOf({1, 2}));
    EXPECT_EQ(1, ListOf({1, 2}) == ListOf({1, 2}));
}

TEST(VELRawColl, AssignmentCopiesAndToleratesItself) {
    VELRawCollint list = ListOf({1, 2});
    VELRawCollint copy = ListOf({9, 9, 9});
    copy = list;
    list.Append(3);
    EXPECT_EQ((std::vector<int>{1, 2}), Numbers(copy));
    VELRawCollint& same = list;
    list = same;
    EXPECT_EQ((std::vector<int>{1, 2, 3}), Numbers(list));
}

TEST(VELRawColl, EmptiesInBothModes) {
    for (const auto mode : {VELCollec::ReleaseMemory, VELCollec::KeepMemory}) {
        VELRawCollint list = ListOf({1, 2});
        list.RemoveAll(mode);
        EXPECT_EQ(0, list.Size());
        EXPECT_EQ(1, list.Append(4));
    }
    EXPECT_EQ(1, VELCollec::KeepMemory);
}
