// SPDX-License-Identifier: MIT
#include "platform/VELIXMLDOM.h"

#include "platform/DomTesting.h"

#include <gtest/gtest.h>
#include <string>

using namespace dyadctx::test;
using namespace std::string_literals;

namespace {

// The places of the element children of the document element, as "line:column", in order.
std::string PlacesIn(std::string_view text) {
    std::string places;
    for (const VELIDOMNode& child : ChildrenOf(RootOf(DocumentOf(text)))) {
        if (TagOf(child) != "(none)")
            places += (places.empty() ? "" : " ") + std::to_string(child.GetLine()) + ":" +
                      std::to_string(child.GetColumn());
    }
    return places;
}

std::string Utf16(std::string_view text, bool bigEndian) {
    std::string units;
    for (const char c : text)
        units += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    return units;
}

} // namespace

TEST(VELIXMLDOM, ElementsKnowTheirPlaceWhateverTheLineEnds) {
    EXPECT_EQ(PlacesIn("<a>\n  <b/>\n\n<b/> <b/></a>"), "2:3 4:1 4:6");
    EXPECT_EQ(PlacesIn("<a>\r\n  <b/>\r\n\r\n<b/> <b/></a>"), "2:3 4:1 4:6");
    EXPECT_EQ(PlacesIn("<a>\r  <b/>\r\r<b/> <b/></a>"), "2:3 4:1 4:6");
    EXPECT_EQ(PlacesIn("<a>\n\r\n\r<b/>\r\n\n<b/></a>"), "4:1 6:1");
}

TEST(VELIXMLDOM, ColumnsCountBytes) {
    EXPECT_EQ(PlacesIn("<a>\n\xC3\xA9<b/><b x='\xE2\x82\xAC'/><b/></a>"), "2:3 2:7 2:19");
    EXPECT_EQ(PlacesIn("<a><b\n x='1'\n/><b/></a>"), "1:4 3:3");
}

TEST(VELIXMLDOM, AByteOrderMarkDoesNotCount) {
    EXPECT_EQ(PlacesIn("\xEF\xBB\xBF<a><b/>\n<b/></a>"), "1:4 2:1");
    EXPECT_EQ(RootOf(DocumentOf("\xEF\xBB\xBF<a/>")).GetColumn(), 1);
}

TEST(VELIXMLDOM, PlacesInUtf16CountUnits) {
    const std::string text = "<a>\r\n <b/>\n<b/>\r<b/></a>";
    EXPECT_EQ(PlacesIn("\xFF\xFE" + Utf16(text, false)), "2:2 3:1 4:1");
    EXPECT_EQ(PlacesIn("\xFE\xFF" + Utf16(text, true)), "2:2 3:1 4:1");
}

TEST(VELIXMLDOM, AnElementOfAnEntityIsPlacedWhereTheEntityIsUsed) {
    EXPECT_EQ(PlacesIn("<!DOCTYPE a [<!ENTITY e '<b/>\n<b/>'>]>\n<a>\n  &e;<b/></a>"),
              "4:3 4:3 4:6");
}

TEST(VELIXMLDOM, PlacesAreRightInFilesOfManyBuffers) {
    for (const std::string& lineEnd : {"\n"s, "\r\n"s, "\r"s}) {
        std::string text = "<a>" + lineEnd;
        for (int i = 0; i < 40000; ++i)
            text += std::string(static_cast<std::size_t>(i % 37), ' ') + "<b n='" +
                    std::to_string(i) + "'/>" + lineEnd;
        const VELIDOMDocument document = DocumentOf(text + "</a>");

        int line = 2;
        for (const VELIDOMNode& child : ChildrenOf(RootOf(document))) {
            if (TagOf(child) == "(none)")
                continue;
            ASSERT_EQ(child.GetLine(), line);
            ASSERT_EQ(child.GetColumn(), (line - 2) % 37 + 1);
            ++line;
        }
        EXPECT_EQ(line, 40002);
    }
}

TEST(VELIXMLDOM, WhatWasNotReadHasNoPlace) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement made = MakeElement(document, "a");
    EXPECT_EQ(document.AppendChild(made), S_OK);
    const VELIDOMElement child = AddElement(document, made, "b");
    EXPECT_EQ(made.GetLine(), 0);
    EXPECT_EQ(made.GetColumn(), 0);
    EXPECT_EQ(child.GetLine(), 0);
    EXPECT_EQ(child.GetColumn(), 0);

    const VELIDOMNode text = ChildrenOf(RootOf(DocumentOf("<a>\n</a>")))[0];
    EXPECT_EQ(text.GetLine(), 0);
    EXPECT_EQ(text.GetColumn(), 0);
}

TEST(VELIXMLDOM, ColumnsOfVeryLongLinesAreExact) {
    const VELIDOMElement root =
        RootOf(DocumentOf("<a>" + std::string(1'000'000, ' ') + "<b/></a>"));
    EXPECT_EQ(ChildrenOf(root)[1].GetColumn(), 1'000'004);
}
