// SPDX-License-Identifier: MIT
#include "platform/VELResult.h"

#include <gtest/gtest.h>
#include <type_traits>

TEST(VELResult, HasThirtyTwoBitsAndASign) {
    EXPECT_EQ(4U, sizeof(VELResult));
    EXPECT_TRUE(std::is_signed_v<VELResult>);
}

TEST(VELResult, FailureIsNegativeOnEverySystem) {
    const VELResult result = E_FAIL;
    EXPECT_LT(result, 0);
    EXPECT_EQ(0x80004005U, static_cast<unsigned int>(result));
    const long widened = result;
    EXPECT_LT(widened, 0L);
}

TEST(VELResult, SuccessHasTwoCodes) {
    EXPECT_EQ(0, S_OK);
    EXPECT_EQ(1, S_FALSE);
}
