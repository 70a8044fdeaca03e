// SPDX-License-Identifier: MIT
#include "context/detail/TextHash.h"

#include "support/ContextFile.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace dyadctx::test {

namespace {

TEST(TextHash, EqualTextsHaveEqualHashesWhereverTheyLie) {
    for (std::size_t length = 0; length < 40; ++length) {
        const std::string text(length, 'x');
        const std::string shifted = "y" + text;
        EXPECT_EQ(HashOfText(text), HashOfText(std::string_view(shifted).substr(1))) << length;
    }
}

TEST(TextHash, DistinguishesTextsThatDifferInOneByteOrInLength) {
    std::set<std::uint64_t> hashes;
    std::size_t texts = 0;
    for (std::size_t length = 0; length < 40; ++length) {
        hashes.insert(HashOfText(std::string(length, '\0')));
        ++texts;
        for (std::size_t at = 0; at < length; ++at) {
            std::string text(length, '\0');
            text[at] = 'x';
            hashes.insert(HashOfText(text));
            ++texts;
        }
    }
    EXPECT_EQ(hashes.size(), texts);
}

// Texts whose bytes could make up for their different lengths.
TEST(TextHash, DistinguishesRepeatedBytesOfDifferentLength) {
    std::set<std::uint64_t> hashes;
    std::size_t texts = 0;
    for (const char first : {'\0', '`', 'a', 'b'}) {
        for (std::size_t length = 0; length < 70; ++length) {
            hashes.insert(HashOfText(first + std::string(length, 'a')));
            ++texts;
        }
    }
    EXPECT_EQ(hashes.size(), texts);
}

TEST(TextHash, SpreadsCountedNamesOverItsUpperHalf) {
    std::set<std::uint64_t> hashes;
    constexpr std::size_t names = 20000;
    for (std::size_t i = 0; i < names; ++i)
        hashes.insert(HashOfText("context " + std::to_string(i)) >> 32);
    // Among so many numbers of 32 bits hardly any two are equal.
    EXPECT_GE(hashes.size(), names - 5);
}

TEST(TextHash, SetOfAListHoldsEachTextOnce) {
    const VELListValVELUnicodeString list = ListOf({"a", "", "a", std::string("a\0b", 3)});
    const TextSet set = SetOf(list);
    EXPECT_EQ(set.size(), 3U);
    EXPECT_TRUE(set.contains(""));
    EXPECT_TRUE(set.contains(std::string_view("a\0b", 3)));
    EXPECT_FALSE(set.contains("A"));
}

} // namespace

} // namespace dyadctx::test
