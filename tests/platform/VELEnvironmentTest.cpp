// SPDX-License-Identifier: MIT
#include "platform/VELEnvironment.h"

#include "support/EnvironmentVariable.h"

#include <gtest/gtest.h>
#include <optional>

using dyadctx::test::EnvironmentVariable;

TEST(VELEnvironment, DistinguishesUnsetFromEmpty) {
    const EnvironmentVariable unset("DYADCTX_TEST_VARIABLE", std::nullopt);
    EXPECT_EQ(nullptr, VELGetEnv("DYADCTX_TEST_VARIABLE"));
    const EnvironmentVariable empty("DYADCTX_TEST_VARIABLE", "");
    EXPECT_STREQ("", VELGetEnv("DYADCTX_TEST_VARIABLE"));
}

TEST(VELEnvironment, SeesTheValueOfTheMoment) {
    const EnvironmentVariable first("DYADCTX_TEST_VARIABLE", "one");
    EXPECT_STREQ("one", VELGetEnv("DYADCTX_TEST_VARIABLE"));
    const EnvironmentVariable second("DYADCTX_TEST_VARIABLE", "\\two=\xC3\xA9");
    EXPECT_STREQ("\\two=\xC3\xA9", VELGetEnv("DYADCTX_TEST_VARIABLE"));
}

TEST(VELEnvironment, HasNoVariableWithoutName) {
    EXPECT_EQ(nullptr, VELGetEnv(nullptr));
    EXPECT_EQ(nullptr, VELGetEnv(""));
}
