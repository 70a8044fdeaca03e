// SPDX-License-Identifier: MIT
#include "platform/detail/Utf8.h"

#include <climits>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

using dyadctx::BeginsWithCharacters;
using dyadctx::CharacterLength;
using dyadctx::CountCharacters;
using dyadctx::OffsetOfCharacter;

namespace {

struct LengthCase {
    std::string_view text;
    std::size_t length;
    int characters;
};

} // namespace

TEST(Utf8, WellFormedSequencesAreOneCharacter) {
    const LengthCase cases[] = {
        {{"\0", 1}, 1, 1},          {"\x7F", 1, 1},
        {"\xC2\x80", 2, 1},         {"\xDF\xBF", 2, 1},
        {"\xE0\xA0\x80", 3, 1},     {"\xED\x9F\xBF", 3, 1},
        {"\xEE\x80\x80", 3, 1},     {"\xEF\xBF\xBF", 3, 1},
        {"\xF0\x90\x80\x80", 4, 1}, {"\xF3\xBF\xBF\xBF", 4, 1},
        {"\xF4\x8F\xBF\xBF", 4, 1},
    };
    for (const LengthCase& row : cases) {
        EXPECT_EQ(row.length, CharacterLength(row.text));
        EXPECT_EQ(row.characters, CountCharacters(row.text));
    }
}

TEST(Utf8, EachByteOfIllFormedTextIsACharacter) {
    const LengthCase cases[] = {
        {"\x80", 1, 1},                 // a continuation alone
        {"\xC3", 1, 1},                 // cut off
        {"\xE2\x82", 1, 2},             // cut off
        {"\xF0\x9F\x98", 1, 3},         // cut off
        {"\xC0\x80", 1, 2},             // overlong
        {"\xC1\xBF", 1, 2},             // overlong
        {"\xE0\x9F\xBF", 1, 3},         // overlong
        {"\xF0\x8F\xBF\xBF", 1, 4},     // overlong
        {"\xED\xA0\x80", 1, 3},         // a surrogate
        {"\xF4\x90\x80\x80", 1, 4},     // beyond U+10FFFF
        {"\xF5\x80\x80\x80", 1, 4},     // no lead byte
        {"\xFF", 1, 1},                 // no byte of UTF-8
        {"\xC3(", 1, 2},                // the second byte is none
        {"\xE2\x82(", 1, 3},            // the third byte is none
        {"\xE2\xC3\xA9", 1, 2},         // a whole character follows
        {"\xF0\x9F\x98\xC3\xA9", 1, 4}, // a whole character follows
    };
    for (const LengthCase& row : cases) {
        EXPECT_EQ(row.length, CharacterLength(row.text));
        EXPECT_EQ(row.characters, CountCharacters(row.text));
    }
}

TEST(Utf8, CharactersAreAppendedByTheirNumber) {
    const struct {
        std::uint32_t number;
        std::string_view bytes;
    } cases[] = {{0, {"\0", 1}},
                 {0x7F, "\x7F"},
                 {0x80, "\xC2\x80"},
                 {0x7FF, "\xDF\xBF"},
                 {0x800, "\xE0\xA0\x80"},
                 {0xFFFF, "\xEF\xBF\xBF"},
                 {0x10000, "\xF0\x90\x80\x80"},
                 {0x10FFFF, "\xF4\x8F\xBF\xBF"}};
    for (const auto& [number, bytes] : cases) {
        std::string text = "before ";
        dyadctx::AppendCharacter(number, text);
        EXPECT_EQ(text, "before " + std::string(bytes)) << number;
    }
}

TEST(Utf8, OffsetsBelongToTheBeginningsOfCharacters) {
    const std::string_view text = "a\xC3\xA9\xFFz";
    EXPECT_EQ(0U, OffsetOfCharacter(text, 0));
    EXPECT_EQ(1U, OffsetOfCharacter(text, 1));
    EXPECT_EQ(3U, OffsetOfCharacter(text, 2));
    EXPECT_EQ(4U, OffsetOfCharacter(text, 3));
    EXPECT_EQ(5U, OffsetOfCharacter(text, 4));
    for (const int outside : {-1, INT_MIN, 5, INT_MAX})
        EXPECT_EQ(std::string_view::npos, OffsetOfCharacter(text, outside));
    EXPECT_EQ(0U, OffsetOfCharacter("", 0));
    EXPECT_EQ(std::string_view::npos, OffsetOfCharacter("", 1));
}

TEST(Utf8, BeginningsAreWholeCharacters) {
    EXPECT_TRUE(BeginsWithCharacters("\xC3\xA9z", "\xC3\xA9"));
    EXPECT_TRUE(BeginsWithCharacters("abc", ""));
    EXPECT_FALSE(BeginsWithCharacters("\xC3\xA9z", "\xC3"));
    EXPECT_FALSE(BeginsWithCharacters("\xF0\x9F\x98\x80", "\xF0\x9F\x98"));
    EXPECT_TRUE(BeginsWithCharacters("\xC3z", "\xC3"));
    EXPECT_FALSE(BeginsWithCharacters("ab", "abc"));
}
