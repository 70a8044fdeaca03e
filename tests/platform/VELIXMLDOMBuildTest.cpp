// SPDX-License-Identifier: MIT
#include "platform/VELIXMLDOM.h"

#include "platform/DomTesting.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <string>

using namespace dyadctx::test;

namespace {

std::string WrittenText(const VELIDOMDocument& document) {
    const TemporaryFolder folder;
    EXPECT_EQ(WriteXml(document, folder.PathOf("x.xml")), S_OK);
    return folder.Read("x.xml");
}

} // namespace

TEST(VELIXMLDOM, AnEmptyDocumentHasNoDocumentElement) {
    const VELIDOMDocument document = MakeDocument();
    VELIDOMElement root = RootOf(DocumentOf("<a/>"));

    EXPECT_EQ(document.GetDocumentElement(root), E_FAIL);
    EXPECT_TRUE(root.IsNull());
}

TEST(VELIXMLDOM, ADocumentHasOneDocumentElement) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement first = MakeElement(document, "first");

    EXPECT_EQ(document.AppendChild(first), S_OK);
    EXPECT_EQ(document.AppendChild(MakeElement(document, "second")), E_FAIL);
    EXPECT_EQ(document.AppendChild(first), E_FAIL);
    EXPECT_EQ(TagOf(RootOf(document)), "first");
}

TEST(VELIXMLDOM, ChildrenStandInTheOrderTheyWereAppended) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement root = MakeElement(document, "r");
    std::string expected = "r(";
    for (int i = 0; i < 100; ++i) {
        AddElement(document, root, "c" + std::to_string(i));
        expected += (i == 0 ? "c" : ",c") + std::to_string(i);
    }
    EXPECT_EQ(OutlineOf(root), expected + ")");
}

TEST(VELIXMLDOM, AnElementHasOneParent) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement root = MakeElement(document, "r");
    const VELIDOMElement one = AddElement(document, root, "one");
    const VELIDOMElement two = AddElement(document, root, "two");

    EXPECT_EQ(two.AppendChild(one), E_FAIL);
    EXPECT_EQ(root.AppendChild(one), E_FAIL);
    EXPECT_EQ(document.AppendChild(one), E_FAIL);
    EXPECT_EQ(OutlineOf(root), "r(one,two)");
}

TEST(VELIXMLDOM, AnElementCannotBecomeItsOwnDescendant) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement a = MakeElement(document, "a");
    const VELIDOMElement b = AddElement(document, a, "b");
    const VELIDOMElement c = AddElement(document, b, "c");

    EXPECT_EQ(a.AppendChild(a), E_FAIL);
    EXPECT_EQ(b.AppendChild(a), E_FAIL);
    EXPECT_EQ(c.AppendChild(a), E_FAIL);
    EXPECT_EQ(OutlineOf(a), "a(b(c))");
}

TEST(VELIXMLDOM, TreesCanBeBuiltFromTheBottom) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement inner = MakeElement(document, "inner");
    AddElement(document, inner, "leaf");
    const VELIDOMElement outer = MakeElement(document, "outer");

    EXPECT_EQ(outer.AppendChild(inner), S_OK);
    EXPECT_EQ(inner.AppendChild(outer), E_FAIL);
    EXPECT_EQ(OutlineOf(outer), "outer(inner(leaf))");
}

TEST(VELIXMLDOM, NothingMovesBetweenDocuments) {
    const VELIDOMDocument one = MakeDocument();
    const VELIDOMElement root = MakeElement(one, "r");
    const VELIDOMElement foreign = MakeElement(MakeDocument(), "foreign");

    EXPECT_EQ(root.AppendChild(foreign), E_FAIL);
    EXPECT_EQ(one.AppendChild(foreign), E_FAIL);
    EXPECT_EQ(OutlineOf(root), "r");
}

TEST(VELIXMLDOM, ADocumentThatWasReadCanBeExtended) {
    const VELIDOMDocument document = DocumentOf("<r x='1' y='2' z='3'><a/><b/><c/></r>");
    const VELIDOMElement root = RootOf(document);
    const VELIDOMElement added = MakeElement(document, "d");
    AddElement(document, added, "e");

    EXPECT_EQ(root.AppendChild(added), S_OK);
    EXPECT_EQ(VELIDOMElement(ChildrenOf(root)[1]).AppendChild(MakeElement(document, "f")), S_OK);
    EXPECT_EQ(root.SetAttribute("w", "4"), S_OK);
    EXPECT_EQ(added.AppendChild(root), E_FAIL);
    EXPECT_EQ(WrittenText(document), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<r x=\"1\" y=\"2\" z=\"3\" w=\"4\">\n"
                                     "  <a/>\n"
                                     "  <b>\n"
                                     "    <f/>\n"
                                     "  </b>\n"
                                     "  <c/>\n"
                                     "  <d>\n"
                                     "    <e/>\n"
                                     "  </d>\n"
                                     "</r>\n");
}

TEST(VELIXMLDOM, WhatIsNoElementTakesNoChild) {
    const VELIDOMDocument document = DocumentOf("<r>text</r>");
    const VELIDOMElement root = RootOf(document);
    const VELIDOMNode text = ChildrenOf(root)[0];

    EXPECT_EQ(text.AppendChild(MakeElement(document, "a")), E_FAIL);
    EXPECT_EQ(root.AppendChild(text), E_FAIL);
    EXPECT_EQ(OutlineOf(root), "r(#)");
}

TEST(VELIXMLDOM, AReplacedAttributeKeepsItsPlace) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement root = MakeElement(document, "r");
    EXPECT_EQ(document.AppendChild(root), S_OK);
    EXPECT_EQ(root.SetAttribute("Name", "a name of some length"), S_OK);
    EXPECT_EQ(root.SetAttribute("Role", "r"), S_OK);

    EXPECT_EQ(root.SetAttribute("Name", "n"), S_OK);
    EXPECT_EQ(root.SetAttribute("Role", "a role of some length"), S_OK);

    EXPECT_EQ(WrittenText(document), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<r Name=\"n\" Role=\"a role of some length\"/>\n");
}

TEST(VELIXMLDOM, ElementsMayBeFilledInTurns) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement one = MakeElement(document, "one");
    const VELIDOMElement two = MakeElement(document, "two");
    for (int i = 0; i < 100; ++i) {
        const VELUnicodeString name(("x" + std::to_string(i)).c_str());
        EXPECT_EQ(one.SetAttribute(name, VELUnicodeString(std::to_string(i).c_str())), S_OK);
        EXPECT_EQ(two.SetAttribute(name, VELUnicodeString(std::to_string(-i).c_str())), S_OK);
    }
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(AttributeOf(one, "x" + std::to_string(i)), std::to_string(i));
        EXPECT_EQ(AttributeOf(two, "x" + std::to_string(i)), std::to_string(-i));
    }
}

TEST(VELIXMLDOM, NamesThatXmlAllowsAreTaken) {
    const VELIDOMDocument document = MakeDocument();
    for (const char* name : {"a", "A-b.c_1", "_", ":", "x:y", "xml", "\xC3\xA9t\xC3\xA9",
                             "\xE5\x90\x8D\xE5\x89\x8D", "a\xC2\xB7", "a\xCC\x81"}) {
        VELIDOMElement element;
        EXPECT_EQ(document.CreateElement(name, element), S_OK) << name;
        EXPECT_EQ(TagOf(element), name);
        EXPECT_EQ(element.SetAttribute(name, "v"), S_OK) << name;
        EXPECT_EQ(AttributeOf(element, name), "v");
    }
}

TEST(VELIXMLDOM, NamesThatXmlForbidsAreRefused) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement root = MakeElement(document, "r");
    for (const std::string& name :
         {std::string(), std::string("1a"), std::string("-a"), std::string(".a"),
          std::string("a b"), std::string("a/"), std::string("a>"), std::string("a='1'"),
          std::string("a\0b", 3), std::string("a&b"), std::string("a\n"), std::string("\xFF"),
          std::string("a\xED\xA0\x80"), std::string("a\xC3"), std::string("\xC2\xB7"),
          std::string("a\xC3\x97"), std::string("\xC3\xA9 x"), std::string("a%s%n")}) {
        VELIDOMElement element = root;
        EXPECT_EQ(document.CreateElement(VELUnicodeString(name), element), E_FAIL) << name;
        EXPECT_TRUE(element.IsNull()) << name;
        EXPECT_EQ(root.SetAttribute(VELUnicodeString(name), "v"), E_FAIL) << name;
    }
    EXPECT_EQ(document.AppendChild(root), S_OK);
    EXPECT_EQ(WrittenText(document), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r/>\n");
}
