// SPDX-License-Identifier: MIT
#include "platform/VELListVal.h"

#include "platform/VELDyadDbProviderServices.h"

#include <climits>
#include <gtest/gtest.h>
#include <string>

namespace {

VELListValVELUnicodeString Letters() {
    VELListValVELUnicodeString list;
    for (const char* letter : {"a", "b", "a", "c"})
        list.Append(letter);
    return list;
}

std::string Joined(const VELListValVELUnicodeString& list) {
    std::string text;
    for (int pos = 1; pos <= list.Size(); ++pos)
        text.append(list[pos].AsView()).append(";");
    return text;
}

const int outsideFour[] = {0, -1, INT_MIN, 5, INT_MAX};

} // namespace

TEST(VELListVal, PositionsRunFromOne) {
    VELListValVELUnicodeString list;
    EXPECT_EQ(0, list.Size());
    EXPECT_EQ(1, list.Append("first"));
    EXPECT_EQ(2, list.Append("second"));
    EXPECT_STREQ("first", list[1].ConvertToChar());
    EXPECT_STREQ("second", list[2].ConvertToChar());
}

TEST(VELListVal, LocateReturnsTheFirstPositionAtOrAfterAnother) {
    const VELListValVELUnicodeString list = Letters();
    EXPECT_EQ(1, list.Locate("a"));
    EXPECT_EQ(3, list.Locate("a", 2));
    EXPECT_EQ(3, list.Locate("a", 3));
    EXPECT_EQ(0, list.Locate("a", 4));
    EXPECT_EQ(0, list.Locate("A"));
    EXPECT_EQ(0, list.Locate(""));
    EXPECT_EQ(1, list.Locate("a", -7));
    EXPECT_EQ(0, list.Locate("a", INT_MAX));
}

TEST(VELListVal, RemovesOnePositionAndMovesLaterOnesUp) {
    VELListValVELUnicodeString list = Letters();
    list.RemovePosition(2);
    EXPECT_EQ("a;a;c;", Joined(list));
    list.RemovePosition(3);
    EXPECT_EQ("a;a;", Joined(list));
    list.RemoveAll();
    EXPECT_EQ(0, list.Size());
}

TEST(VELListVal, PositionsOutsideAreHarmless) {
    VELListValVELUnicodeString list = Letters();
    const VELListValVELUnicodeString& readOnly = list;
    for (const int pos : outsideFour) {
        list[pos] = "lost";
        EXPECT_TRUE(list[pos].IsEmpty()) << pos;
        EXPECT_TRUE(readOnly[pos].IsEmpty()) << pos;
        list.RemovePosition(pos);
    }
    EXPECT_EQ("a;b;a;c;", Joined(list));
}

TEST(VELListVal, AppendsItsOwnElements) {
    VELListValVELUnicodeString list;
    list.Append("a text of more than fifteen bytes");
    for (int i = 0; i < 100; ++i)
        list.Append(list[1]);
    EXPECT_EQ(101, list.Size());
    EXPECT_STREQ("a text of more than fifteen bytes", list[101].ConvertToChar());
}

TEST(VELListVal, CopiesAreIndependent) {
    VELListValVELUnicodeString list = Letters();
    const VELListValVELUnicodeString copy = list;
    list[1] = "changed";
    list.RemovePosition(4);
    EXPECT_EQ("a;b;a;c;", Joined(copy));
    VELListValVELUnicodeString& same = list;
    list = same;
    EXPECT_EQ("changed;b;a;", Joined(list));
}

TEST(VELListVal, NegativeReservationsAreNothing) {
    VELListValVELUnicodeString list;
    list.Reserve(-5);
    list.Reserve(3);
    EXPECT_EQ(0, list.Size());
}

TEST(VELListVal, HoldsCountedHandles) {
    VELIDyadDbProvider_var provider;
    ASSERT_EQ(S_OK, VELDyadDbProviderServices::CreateDyadDbProvider(provider));
    VELListValVELIDyadDbProvider_var list;
    list.Append(provider);
    list.Append(VELIDyadDbProvider_var());

    EXPECT_EQ(1, list.Locate(provider));
    EXPECT_TRUE(list[2].IsNull());
    EXPECT_TRUE(list[3].IsNull());
    list.RemoveAll();
    EXPECT_EQ(2U, provider->AddRef());
    provider->Release();
}
