// SPDX-License-Identifier: MIT
#include "platform/VELString.h"

#include <gtest/gtest.h>

TEST(VELString, NullIsTheEmptyText) {
    EXPECT_TRUE(VELString().IsEmpty());
    EXPECT_TRUE(VELString(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_STREQ("", VELString().ConvertToChar());
}

TEST(VELString, ComparesExactly) {
    EXPECT_TRUE(VELString("Ctx.Check") == VELString("Ctx.Check"));
    EXPECT_TRUE(VELString("Ctx.Check") != VELString("Ctx.check"));
}

TEST(VELString, AppendsAlsoItself) {
    VELString text("Ctx.");
    text.Append("Check").Append(text);
    EXPECT_STREQ("Ctx.CheckCtx.Check", text.ConvertToChar());
    EXPECT_EQ("Ctx.CheckCtx.Check", text.AsView());
}
