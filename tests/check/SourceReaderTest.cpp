// SPDX-License-Identifier: MIT
#include "check/detail/SourceReader.h"

#include "check/detail/SourceTokenizer.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

using Places = std::pair<int, int>;

constexpr std::size_t Piece = 65536;

Places PlaceAfterMoving(std::string_view text, VELPlace place) {
    SourceReader reader(text);
    if (!reader.MoveTo(place))
        return {0, 0};
    return {reader.Here().line, reader.Here().column};
}

// Each character below U+0100 in both of the bytes.
std::string Widen(std::string_view text, bool isBigEndian) {
    std::string wide = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char letter : text)
        wide += isBigEndian ? std::string({'\0', letter}) : std::string({letter, '\0'});
    return wide;
}

std::string Rest(SourceReader& reader) {
    std::string rest;
    for (; reader.HasMore(); reader.Pass())
        rest += reader.Next();
    return rest;
}

// "NAME LINE:COLUMN" of each attribute of the start tag at a place.
std::vector<std::string> AttributesAt(SourceReader& reader, VELPlace place) {
    std::vector<std::string> attributes;
    SourceTokenizer tokenizer(reader);
    std::string element;
    SourceTokenizer::Attribute attribute;
    if (!reader.MoveTo(place) || !tokenizer.ReadElement(element))
        return {"no element"};
    while (tokenizer.ReadAttribute(attribute))
        attributes.push_back(attribute.name + " " + std::to_string(attribute.place.line) + ":" +
                             std::to_string(attribute.place.column));
    return attributes;
}

using Lines = std::vector<std::string>;

} // namespace

TEST(SourceReader, LinesEndAsInXml) {
    const std::string_view text = "a\nb\rc\r\nd\n\re";
    for (const auto& [line, letter] :
         std::vector<std::pair<int, char>>{{1, 'a'}, {2, 'b'}, {3, 'c'}, {4, 'd'}, {6, 'e'}}) {
        SourceReader reader(text);
        ASSERT_TRUE(reader.MoveTo({line, 1}) && reader.HasMore()) << line;
        EXPECT_EQ(reader.Next(), letter);
    }
    EXPECT_EQ(PlaceAfterMoving(text, {7, 1}), Places(0, 0));
    EXPECT_EQ(PlaceAfterMoving(text, {4, 2}), Places(4, 2));
    EXPECT_EQ(PlaceAfterMoving(text, {4, 3}), Places(0, 0));
}

TEST(SourceReader, ColumnsGoInAsUnitsAndComeOutAsCharacters) {
    EXPECT_EQ(PlaceAfterMoving("\xC3\xA4\xE5\x9B\xB3<", {1, 6}), Places(1, 3));
    EXPECT_EQ(PlaceAfterMoving("\xEF\xBB\xBF<", {1, 1}), Places(1, 1));
    EXPECT_EQ(PlaceAfterMoving("<?xml version='1.0' encoding='iso-8859-1'?>\n\xE4\xA0<", {2, 3}),
              Places(2, 3));
    // U+10000 and U+00E4 in UTF-16.
    const std::string little("\xFF\xFE\x00\xD8\x00\xDC\xE4\x00<\x00", 10);
    const std::string big("\xFE\xFF\xD8\x00\xDC\x00\x00\xE4\x00<", 10);
    EXPECT_EQ(PlaceAfterMoving(little, {1, 4}), Places(1, 3));
    EXPECT_EQ(PlaceAfterMoving(big, {1, 4}), Places(1, 3));
}

TEST(SourceReader, HandsOutUtf8) {
    const std::string big("\xFE\xFF\xD8\x00\xDC\x00\x00\xE4\x20\xAC\x00<", 12);
    SourceReader wide(big);
    EXPECT_EQ(Rest(wide), "\xF0\x90\x80\x80\xC3\xA4\xE2\x82\xAC<");
    SourceReader latin(std::string_view("<?xml version='1.0' encoding='ISO-8859-1'?>\xE4"));
    EXPECT_EQ(Rest(latin), "<?xml version='1.0' encoding='ISO-8859-1'?>\xC3\xA4");
    const std::string unmarked("<\0a\0", 4);
    SourceReader withoutMark(unmarked);
    EXPECT_EQ(Rest(withoutMark), "<a");
    SourceReader empty(std::string_view{});
    EXPECT_EQ(Rest(empty), "");
}

TEST(SourceReader, DoesNotGoBack) {
    SourceReader reader(std::string_view("abc\ndef"));
    ASSERT_TRUE(reader.MoveTo({2, 2}));
    EXPECT_TRUE(reader.MoveTo({2, 2}));
    EXPECT_FALSE(reader.MoveTo({2, 1}));
    EXPECT_FALSE(reader.MoveTo({1, 3}));
}

TEST(SourceReader, WhatAPieceOfAFileCutsInTwoStaysWhole) {
    const TemporaryFolder folder;
    const auto beginning = [](std::size_t size) { return std::string(size, 'x'); };
    const std::string pair = folder.Write("pair", beginning(Piece - 1) + "\r\n<a b='c'/>");
    SourceReader ofPair{VELUnicodeString(pair)};
    EXPECT_EQ(AttributesAt(ofPair, {2, 1}), Lines({"b 2:4"}));
    const std::string letter = folder.Write("letter", beginning(Piece - 1) + "\xC3\xA4<a b='c'/>");
    SourceReader ofLetter{VELUnicodeString(letter)};
    EXPECT_EQ(AttributesAt(ofLetter, {1, Piece + 2}), Lines({"b 1:65540"}));
    // The mark takes the room of one unit.
    const std::string half =
        Widen(beginning(Piece / 2 - 2), true) + std::string("\xD8\x00\xDC\x00\x00<\x00"
                                                            "a\x00/",
                                                            10);
    SourceReader ofHalf{VELUnicodeString(folder.Write("half", half))};
    ASSERT_TRUE(ofHalf.MoveTo({1, Piece / 2 + 1}));
    EXPECT_EQ(ofHalf.Here().column, static_cast<int>(Piece / 2));
    EXPECT_EQ(Rest(ofHalf), "<a/");
}

TEST(SourceReader, AFileThatCannotBeReadIsEmpty) {
    SourceReader reader(VELUnicodeString("/nowhere/file.xml"));
    EXPECT_FALSE(reader.HasMore());
    EXPECT_FALSE(reader.MoveTo({1, 2}));
}

TEST(SourceTokenizer, ReadsAttributesInAnyQuotesAndOnAnyLine) {
    const std::string text = "<a>\n<ns:b c='>' \n\td = \"'\" e=''f='\xC3\xA4'\tg='h'/>";
    for (const std::string& source : {text, Widen(text, false), Widen(text, true)}) {
        SourceReader reader{std::string_view(source)};
        const bool isWide = source.size() > text.size();
        EXPECT_EQ(AttributesAt(reader, {2, 1}),
                  Lines({"c 2:7", "d 3:2", "e 3:10", "f 3:14", isWide ? "g 3:21" : "g 3:20"}));
    }
}

TEST(SourceTokenizer, EndsWhereTheTextIsNoTag) {
    for (const std::string_view text : {"<a b", "<a b=", "<a b='", "<a b=c", "<a 'b'", "<a =''"}) {
        SourceReader reader(text);
        EXPECT_EQ(AttributesAt(reader, {1, 1}), Lines()) << text;
    }
    for (const std::string_view text : {"", "a", "</a>", "<", "<>"}) {
        SourceReader reader(text);
        EXPECT_EQ(AttributesAt(reader, {1, 1}), Lines({"no element"})) << text;
    }
}

} // namespace dyadctx::test
