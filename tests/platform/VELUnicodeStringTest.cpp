// SPDX-License-Identifier: MIT
#include "platform/VELUnicodeString.h"

#include <climits>
#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace {

std::string Bytes(const VELUnicodeString& text) {
    return std::string(text.AsView());
}

// Lengths round the border between a text inside the object and one outside it.
const std::size_t borderLengths[] = {0, 1, 14, 15, 16, 17, 31, 32, 33, 1000};

std::string TextOf(std::size_t length) {
    std::string text;
    for (std::size_t i = 0; i < length; ++i)
        text += static_cast<char>('a' + i % 26);
    return text;
}

} // namespace

TEST(VELUnicodeString, IsEmptyWhenMadeFromNothingOrNull) {
    EXPECT_TRUE(VELUnicodeString().IsEmpty());
    EXPECT_TRUE(VELUnicodeString(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_TRUE(VELUnicodeString(nullptr, 5).IsEmpty());
    EXPECT_TRUE(VELUnicodeString("").IsEmpty());
    EXPECT_STREQ("", VELUnicodeString().ConvertToChar());
}

TEST(VELUnicodeString, TakesSixteenBytes) {
    EXPECT_EQ(16U, sizeof(VELUnicodeString));
}

TEST(VELUnicodeString, KeepsTextsOfEveryLength) {
    for (const std::size_t length : borderLengths) {
        const std::string expected = TextOf(length);
        const VELUnicodeString text(expected.data(), length);
        EXPECT_EQ(expected, Bytes(text));
        EXPECT_STREQ(expected.c_str(), text.ConvertToChar());
        EXPECT_EQ(static_cast<int>(length), text.GetLengthInChar());
        EXPECT_EQ(length == 0, text.IsEmpty());
    }
}

TEST(VELUnicodeString, KeepsZeroBytesAndComparesThem) {
    const VELUnicodeString one("ab\0c", 4);
    const VELUnicodeString other("ab\0d", 4);

    EXPECT_EQ(4, one.GetLengthInChar());
    EXPECT_TRUE(one != other);
    EXPECT_TRUE(one != VELUnicodeString("ab"));
    EXPECT_TRUE(one == VELUnicodeString("ab\0c", 4));
    EXPECT_EQ(3, one.SearchSubString("c"));
    EXPECT_NE(VELUnicodeString("\0", 1).ComputeHashKey(), VELUnicodeString().ComputeHashKey());
}

TEST(VELUnicodeString, ComparesExactly) {
    EXPECT_FALSE(VELUnicodeString("Name") == VELUnicodeString("name"));
    EXPECT_FALSE(VELUnicodeString("name") == VELUnicodeString("name "));
    // The same letter, composed and decomposed.
    EXPECT_FALSE(VELUnicodeString("\xC3\xA9") == VELUnicodeString("e\xCC\x81"));
    EXPECT_TRUE(VELUnicodeString("name") == VELUnicodeString("name"));
}

TEST(VELUnicodeString, CountsCharactersNotBytes) {
    EXPECT_EQ(3, VELUnicodeString("a\xC3\xA9z").GetLengthInChar());
    EXPECT_EQ(1, VELUnicodeString("\xE2\x82\xAC").GetLengthInChar());
    EXPECT_EQ(1, VELUnicodeString("\xF0\x9F\x98\x80").GetLengthInChar());
}

TEST(VELUnicodeString, CopiesAreIndependent) {
    for (const std::size_t length : borderLengths) {
        const std::string expected = TextOf(length);
        VELUnicodeString source(expected.data(), length);
        const VELUnicodeString copy(source);
        VELUnicodeString assigned("something that was there before");
        assigned = source;
        source.Append("!");
        EXPECT_EQ(expected, Bytes(copy));
        EXPECT_EQ(expected, Bytes(assigned));
        EXPECT_EQ(expected + "!", Bytes(source));
    }
}

TEST(VELUnicodeString, MovesLeaveAnEmptyText) {
    for (const std::size_t length : borderLengths) {
        const std::string expected = TextOf(length);
        VELUnicodeString source(expected.data(), length);
        VELUnicodeString taken(std::move(source));
        EXPECT_EQ(expected, Bytes(taken));
        EXPECT_TRUE(source.IsEmpty()); // NOLINT(bugprone-use-after-move)
        VELUnicodeString target("something that was there before");
        target = std::move(taken);
        EXPECT_EQ(expected, Bytes(target));
        EXPECT_TRUE(taken.IsEmpty()); // NOLINT(bugprone-use-after-move)
    }
}

TEST(VELUnicodeString, AssignmentToItselfChangesNothing) {
    for (const std::size_t length : borderLengths) {
        const std::string expected = TextOf(length);
        VELUnicodeString text(expected.data(), length);
        VELUnicodeString& same = text;
        text = same;
        EXPECT_EQ(expected, Bytes(text));
        text = std::move(same);
        EXPECT_EQ(expected, Bytes(text));
    }
}

TEST(VELUnicodeString, AppendsAcrossTheBorder) {
    for (const std::size_t head : borderLengths) {
        for (const std::size_t tail : borderLengths) {
            VELUnicodeString text(TextOf(head));
            text.Append(VELUnicodeString(TextOf(tail)));
            EXPECT_EQ(TextOf(head) + TextOf(tail), Bytes(text));
            EXPECT_EQ(Bytes(text).size(), std::string(text.ConvertToChar()).size());
        }
    }
}

TEST(VELUnicodeString, AppendsItselfAndPartsOfItself) {
    for (const std::size_t length : borderLengths) {
        const std::string expected = TextOf(length);
        VELUnicodeString text(expected.data(), length);
        text.Append(text);
        EXPECT_EQ(expected + expected, Bytes(text));
        VELUnicodeString part(expected.data(), length);
        part.Append(part.AsView().substr(length / 2));
        EXPECT_EQ(expected + expected.substr(length / 2), Bytes(part));
    }
}

TEST(VELUnicodeString, AppendTakesNullAndEmptyTailsForNothing) {
    VELUnicodeString text("a");
    text.Append(static_cast<const char*>(nullptr)).Append("").Append(VELUnicodeString());
    EXPECT_EQ("a", Bytes(text));
}

TEST(VELUnicodeString, AppendByteByByteMovesTheTextRarely) {
    VELUnicodeString text;
    int moves = 0;
    const char* place = text.ConvertToChar();
    for (int i = 0; i < 100000; ++i) {
        text.Append("x");
        moves += text.ConvertToChar() != place ? 1 : 0;
        place = text.ConvertToChar();
    }
    EXPECT_EQ(100000, text.GetLengthInChar());
    EXPECT_LE(moves, 20);
}

TEST(VELUnicodeString, PlusLeavesItsOperandsAlone) {
    const VELUnicodeString head("a text of more than fifteen bytes");
    const VELUnicodeString tail(" and more");
    EXPECT_EQ("a text of more than fifteen bytes and more", Bytes(head + tail));
    EXPECT_EQ("a text of more than fifteen bytes", Bytes(head));
    EXPECT_EQ(" and more", Bytes(tail));
}

TEST(VELUnicodeString, EqualTextsHaveTheKnownHashKey) {
    // Published values of 32-bit FNV-1a.
    EXPECT_EQ(0x811C9DC5U, VELUnicodeString("").ComputeHashKey());
    EXPECT_EQ(0xE40C292CU, VELUnicodeString("a").ComputeHashKey());
    EXPECT_EQ(0xBF9CF968U, VELUnicodeString("foobar").ComputeHashKey());
}

struct SearchCase {
    const char* whole;
    const char* wanted;
    int from;
    VELUnicodeString::Direction direction;
    int expected;
};

TEST(VELUnicodeString, SearchReturnsPositionsInCharacters) {
    constexpr auto Forward = VELUnicodeString::Forward;
    constexpr auto Backward = VELUnicodeString::Backward;
    const SearchCase cases[] = {
        {"abcabc", "c", 0, Forward, 2},
        {"abcabc", "c", 2, Forward, 2},
        {"abcabc", "c", 3, Forward, 5},
        {"abcabc", "c", 0, Backward, 5},
        {"abcabc", "abc", 0, Backward, 3},
        {"abcabc", "abc", 4, Backward, -1},
        {"abcabc", "x", 0, Forward, -1},
        {"abcabc", "x", 0, Backward, -1},
        {"abc", "abcd", 0, Forward, -1},
        {"aaaa", "aa", 0, Backward, 2},
        {"!abc", "!", 0, Forward, 0},
        {"\xC3\xA9\xC3\xA8!", "!", 0, Forward, 2},
        {"\xC3\xA9!\xC3\xA8!", "!", 0, Backward, 3},
        {"\xC3\xA9!\xC3\xA8!", "!", 2, Forward, 3},
        {"a.b.xml", ".", 0, Backward, 3},
        // The empty text is everywhere.
        {"abc", "", 0, Forward, 0},
        {"abc", "", 2, Forward, 2},
        {"abc", "", 3, Forward, 3},
        {"abc", "", 0, Backward, 3},
        {"", "", 0, Forward, 0},
        {"", "a", 0, Forward, -1},
    };
    for (const SearchCase& row : cases) {
        const VELUnicodeString whole(row.whole);
        EXPECT_EQ(row.expected, whole.SearchSubString(row.wanted, row.from, row.direction))
            << '"' << row.wanted << "\" in \"" << row.whole << "\" from " << row.from;
    }
}

TEST(VELUnicodeString, SearchOutsideTheTextFindsNothing) {
    const VELUnicodeString text("abc");
    for (const int from : {-1, INT_MIN, 4, INT_MAX}) {
        EXPECT_EQ(-1, text.SearchSubString("a", from));
        EXPECT_EQ(-1, text.SearchSubString("", from));
        EXPECT_EQ(-1, text.SearchSubString("a", from, VELUnicodeString::Backward));
    }
}

TEST(VELUnicodeString, SearchDoesNotFindPartsOfACharacter) {
    const VELUnicodeString letter("\xC3\xA9");
    EXPECT_EQ(-1, letter.SearchSubString("\xA9"));
    EXPECT_EQ(-1, letter.SearchSubString("\xC3"));
    EXPECT_EQ(-1, letter.SearchSubString("\xA9", 0, VELUnicodeString::Backward));
    // As bytes that belong to no character they are characters of their own.
    EXPECT_EQ(1, VELUnicodeString("\xC3\xA9\xA9").SearchSubString("\xA9"));
    EXPECT_EQ(0, VELUnicodeString("\xC3(").SearchSubString("\xC3"));
}

struct ExtractCase {
    int pos;
    int length;
    const char* expected;
};

TEST(VELUnicodeString, ExtractsWhatLiesInsideTheText) {
    const VELUnicodeString text("a\xC3\xA9z");
    const ExtractCase cases[] = {
        {0, 3, "a\xC3\xA9z"},
        {0, 1, "a"},
        {1, 1, "\xC3\xA9"},
        {1, 2, "\xC3\xA9z"},
        {1, 99, "\xC3\xA9z"},
        {2, INT_MAX, "z"},
        {3, 1, ""},
        {4, 1, ""},
        {0, 0, ""},
        {0, -1, ""},
        {INT_MAX, INT_MAX, ""},
        {-1, 2, ""},
    };
    for (const ExtractCase& row : cases)
        EXPECT_EQ(row.expected, Bytes(text.ExtractSubString(row.pos, row.length)))
            << row.pos << ", " << row.length;
}
