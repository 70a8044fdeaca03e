// SPDX-License-Identifier: MIT
#include "platform/detail/NativePath.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

using dyadctx::NativePath;

TEST(NativePath, HasTheSystemsSeparators) {
    const std::string separator(1, dyadctx::SystemSeparator());
    EXPECT_EQ(separator + "a" + separator + "b", NativePath("\\a/b"));
    EXPECT_EQ("root" + separator + separator + "resources", NativePath("root/\\resources"));
    EXPECT_EQ("", NativePath(""));
}

TEST(NativePath, KeepsEveryOtherByte) {
    EXPECT_EQ("%s \xFF \xC3\xA9:*?\n", NativePath("%s \xFF \xC3\xA9:*?\n"));
}

TEST(NativePath, RefusesZeroBytes) {
    EXPECT_EQ(std::nullopt, NativePath(std::string_view("a\0b", 3)));
    EXPECT_EQ(std::nullopt, NativePath(std::string_view("a\0", 2)));
}
