// SPDX-License-Identifier: MIT
#include "platform/VELIXMLDOM.h"

#include "platform/DomTesting.h"
#include "platform/VELBaseUnknown_var.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

using namespace dyadctx::test;

namespace {

std::string FoundIn(const VELIDOMElement& element, const char* name, int atMost = 0) {
    VELIDOMNodeList list;
    EXPECT_EQ(element.GetElementsByTagName(VELUnicodeString(name), list, atMost), S_OK);
    EXPECT_FALSE(list.IsNull());
    std::string found;
    for (int i = 0; i < list.GetLength(); ++i) {
        VELIDOMNode node;
        EXPECT_EQ(list.Item(i, node), S_OK);
        found += (i == 0 ? "" : " ") + AttributeOf(VELIDOMElement(node), "n");
    }
    return found;
}

} // namespace

TEST(VELIXMLDOM, EveryKindOfNodeIsAChild) {
    struct Case {
        const char* text;
        const char* outline;
    };
    for (const Case& c : {
             Case{"<a/>", "a"},
             Case{"<a></a>", "a"},
             Case{"<a> </a>", "a(#)"},
             Case{"<a>\n  \n</a>", "a(#)"},
             Case{"<a>one &amp; &#65; two\nthree</a>", "a(#)"},
             Case{"<a><!-- c --></a>", "a(#)"},
             Case{"<a><!-- c --><!-- c --></a>", "a(#,#)"},
             Case{"<a><?pi x?></a>", "a(#)"},
             Case{"<a><![CDATA[x]]></a>", "a(#)"},
             Case{"<a><![CDATA[]]></a>", "a(#)"},
             Case{"<a><![CDATA[x\ny\n]]></a>", "a(#)"},
             Case{"<a>x<![CDATA[y]]>z</a>", "a(#,#,#)"},
             Case{"<a><![CDATA[y]]><![CDATA[z]]></a>", "a(#,#)"},
             Case{"<a>x<!-- c -->y<?pi?>z</a>", "a(#,#,#,#,#)"},
             Case{"<a> <b/> <c> <d/></c>\n</a>", "a(#,b,#,c(#,d),#)"},
             Case{"<a><b/><b></b>x</a>", "a(b,b,#)"},
             Case{"<!-- c --><?pi?>\n<a/><!-- c -->\n<?pi?>", "a"},
             Case{"<!DOCTYPE a [<!-- c --><?pi?><!ENTITY e 'x'>]><a>&e;y&e;</a>", "a(#)"},
             Case{"<!DOCTYPE a [<!ENTITY e ''>]><a>&e;</a>", "a"},
         })
        EXPECT_EQ(OutlineOf(RootOf(DocumentOf(c.text))), c.outline) << c.text;
}

TEST(VELIXMLDOM, WhatIsNoElementHasNoNameAndNoChildren) {
    const VELIDOMNode text = ChildrenOf(RootOf(DocumentOf("<a>text</a>")))[0];
    VELUnicodeString name("before");

    EXPECT_FALSE(text.IsNull());
    EXPECT_EQ(text.GetTagName(name), E_FAIL);
    EXPECT_EQ(name, VELUnicodeString("before"));
    EXPECT_TRUE(ChildrenOf(text).empty());
    EXPECT_TRUE(VELIDOMElement(text).IsNull());
}

TEST(VELIXMLDOM, ANodeThatIsAnElementBecomesOne) {
    const VELIDOMNode node = ChildrenOf(RootOf(DocumentOf("<a><b x='1'/></a>")))[0];
    EXPECT_EQ(AttributeOf(VELIDOMElement(node), "x"), "1");
    EXPECT_TRUE(VELIDOMElement(VELIDOMNode()).IsNull());
}

TEST(VELIXMLDOM, ItemRefusesPositionsOutsideTheList) {
    VELIDOMNodeList list;
    ASSERT_EQ(RootOf(DocumentOf("<a><b/><c/></a>")).GetChildNodes(list), S_OK);
    VELIDOMNode node;
    ASSERT_EQ(list.Item(1, node), S_OK);
    EXPECT_EQ(TagOf(node), "c");

    for (const int index : {-1, 2, 1000000}) {
        ASSERT_EQ(list.Item(0, node), S_OK);
        EXPECT_EQ(list.Item(index, node), E_FAIL) << index;
        EXPECT_TRUE(node.IsNull()) << index;
    }
}

TEST(VELIXMLDOM, AttributesAreFoundByTheirWholeName) {
    const VELIDOMElement root =
        RootOf(DocumentOf("<a Name='N' name='n' empty='' Parameter='P' ParameterType='T'/>"));

    EXPECT_EQ(AttributeOf(root, "Name"), "N");
    EXPECT_EQ(AttributeOf(root, "name"), "n");
    EXPECT_EQ(AttributeOf(root, "empty"), "");
    EXPECT_EQ(AttributeOf(root, "Parameter"), "P");
    EXPECT_EQ(AttributeOf(root, "ParameterType"), "T");
    EXPECT_EQ(AttributeOf(root, "NAME"), "(none)");
    EXPECT_EQ(AttributeOf(root, ""), "(none)");
    EXPECT_EQ(AttributeOf(root, "a"), "(none)");
}

TEST(VELIXMLDOM, AMissingAttributeReturnsANullHandle) {
    const VELIDOMElement root = RootOf(DocumentOf("<a x='1'/>"));
    VELIDOMAttr attribute;
    ASSERT_EQ(root.GetAttributeNode("x", attribute), S_OK);
    VELUnicodeString name;
    EXPECT_EQ(attribute.GetName(name), S_OK);
    EXPECT_EQ(name, VELUnicodeString("x"));

    EXPECT_EQ(root.GetAttributeNode("y", attribute), E_FAIL);
    EXPECT_TRUE(attribute.IsNull());
}

TEST(VELIXMLDOM, AttributesAreCountedInTheOrderOfTheFile) {
    const VELIDOMElement root = RootOf(DocumentOf("<a y='1' x='2'><b/></a>"));
    ASSERT_EQ(root.GetNbAttributes(), 2);
    VELIDOMAttr attribute;
    VELUnicodeString name;
    ASSERT_EQ(root.GetAttributeAtIndex(1, attribute), S_OK);
    EXPECT_EQ(attribute.GetName(name), S_OK);
    EXPECT_EQ(name, VELUnicodeString("x"));
    for (const int outside : {-1, 2}) {
        EXPECT_EQ(root.GetAttributeAtIndex(outside, attribute), E_FAIL);
        EXPECT_TRUE(attribute.IsNull());
    }
    EXPECT_EQ(VELIDOMElement(ChildrenOf(root)[0]).GetNbAttributes(), 0);
}

TEST(VELIXMLDOM, ValuesOfEveryLengthAreKept) {
    std::string text = "<a";
    for (std::size_t length = 0; length < 40; ++length)
        text += " x" + std::to_string(length) + "='" + std::string(length, 'v') + "'";
    const VELIDOMElement root = RootOf(DocumentOf(text + "/>"));
    for (std::size_t length = 0; length < 40; ++length)
        EXPECT_EQ(AttributeOf(root, "x" + std::to_string(length)), std::string(length, 'v'));
}

TEST(VELIXMLDOM, ValuesAreNormalisedAsXmlSays) {
    const VELIDOMElement root =
        RootOf(DocumentOf("<a x=' one\ttwo\nthree\r\nfour ' y='&#9;&#10;&#13;&lt;&quot;'/>"));
    EXPECT_EQ(AttributeOf(root, "x"), " one two three four ");
    EXPECT_EQ(AttributeOf(root, "y"), "\t\n\r<\"");
}

TEST(VELIXMLDOM, ElementsByTagNameAreTheDescendantsInDocumentOrder) {
    const VELIDOMElement root =
        RootOf(DocumentOf("<x n='0'><x n='1'><y><x n='2'/></y></x>text<y n='y'/><x n='3'/></x>"));

    EXPECT_EQ(FoundIn(root, "x"), "1 2 3");
    EXPECT_EQ(FoundIn(VELIDOMElement(ChildrenOf(root)[0]), "x"), "2");
    EXPECT_EQ(FoundIn(VELIDOMElement(ChildrenOf(root)[2]), "x"), "");
    EXPECT_EQ(FoundIn(root, "X"), "");
    EXPECT_EQ(FoundIn(root, "n"), "");
    EXPECT_EQ(FoundIn(root, ""), "");
}

TEST(VELIXMLDOM, ElementsByTagNameStopAtTheRequestedNumber) {
    const VELIDOMElement root =
        RootOf(DocumentOf("<r><x n='1'><x n='2'/></x><z/><x n='3'/><x n='4'/></r>"));

    EXPECT_EQ(FoundIn(root, "x", 1), "1");
    EXPECT_EQ(FoundIn(root, "x", 2), "1 2");
    EXPECT_EQ(FoundIn(root, "x", 9), "1 2 3 4");
    EXPECT_EQ(FoundIn(root, "x", -1), "1 2 3 4");
}

TEST(VELIXMLDOM, ElementsByTagNameAreFoundInBuiltDocuments) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement root = MakeElement(document, "r");
    MakeElement(document, "x");
    const VELIDOMElement inner = AddElement(document, AddElement(document, root, "y"), "x");
    EXPECT_EQ(inner.SetAttribute("n", "1"), S_OK);

    EXPECT_EQ(FoundIn(root, "x"), "1");
}

TEST(VELIXMLDOM, ElementsByTagNameAreFoundInDeepDocuments) {
    VELIDOMNodeList list;
    ASSERT_EQ(RootOf(DocumentOf(NestedXml(5000))).GetElementsByTagName("e", list), S_OK);
    EXPECT_EQ(list.GetLength(), 4999);
}

TEST(VELIXMLDOM, ChildListsOfAnySizeAreServed) {
    std::string text = "<a>";
    for (int i = 0; i < 50000; ++i)
        text += "<b n='" + std::to_string(i) + "'/>\n";
    VELIDOMNodeList list;
    ASSERT_EQ(RootOf(DocumentOf(text + "</a>")).GetChildNodes(list), S_OK);

    ASSERT_EQ(list.GetLength(), 100000);
    for (int i = 0; i < 50000; ++i) {
        VELIDOMNode node;
        ASSERT_EQ(list.Item(2 * i, node), S_OK);
        ASSERT_EQ(AttributeOf(VELIDOMElement(node), "n"), std::to_string(i));
        ASSERT_EQ(list.Item(2 * i + 1, node), S_OK);
        ASSERT_EQ(TagOf(node), "(none)");
    }
}

TEST(VELIXMLDOM, AnyHandleKeepsTheDocumentAlive) {
    VELIDOMNodeList children;
    VELIDOMAttr attribute;
    {
        const VELIDOMElement root = RootOf(DocumentOf("<a x='a value that is long'><b/></a>"));
        ASSERT_EQ(root.GetChildNodes(children), S_OK);
        ASSERT_EQ(root.GetAttributeNode("x", attribute), S_OK);
    }
    VELIDOMNode child;
    EXPECT_EQ(children.Item(0, child), S_OK);
    children = VELIDOMNodeList();
    EXPECT_EQ(TagOf(child), "b");
    VELUnicodeString value;
    EXPECT_EQ(attribute.GetValue(value), S_OK);
    EXPECT_EQ(value, VELUnicodeString("a value that is long"));
}

TEST(VELIXMLDOM, HandlesAreCopiedMovedAndGivenOtherDocuments) {
    VELIDOMElement one = RootOf(DocumentOf("<one/>"));
    VELIDOMElement two = RootOf(DocumentOf("<two/>"));
    const VELIDOMElement copy = one;

    VELIDOMElement& same = one;
    one = same;
    EXPECT_EQ(TagOf(one), "one");
    one = two;
    EXPECT_EQ(TagOf(one), "two");
    two = copy;
    EXPECT_EQ(TagOf(two), "one");
    VELIDOMElement moved = std::move(one);
    EXPECT_EQ(TagOf(moved), "two");
    EXPECT_TRUE(one.IsNull()); // NOLINT(bugprone-use-after-move)
    moved = std::move(two);
    EXPECT_EQ(TagOf(moved), "one");
    EXPECT_TRUE(two.IsNull()); // NOLINT(bugprone-use-after-move)
    moved = VELIDOMElement();
    EXPECT_TRUE(moved.IsNull());
    EXPECT_EQ(TagOf(copy), "one");
}

TEST(VELIXMLDOM, ItemMovesAHandleOfAnotherDocument) {
    VELIDOMNode node = RootOf(DocumentOf("<other/>"));
    VELIDOMNodeList list;
    ASSERT_EQ(RootOf(DocumentOf("<a><b/></a>")).GetChildNodes(list), S_OK);
    ASSERT_EQ(list.Item(0, node), S_OK);
    list = VELIDOMNodeList();
    EXPECT_EQ(TagOf(node), "b");
}

TEST(VELIXMLDOM, UsingANullHandleThrows) {
    VELUnicodeString text;
    VELIDOMNodeList list;
    VELIDOMNode node;
    VELIDOMElement element;
    VELIDOMAttr attribute;
    const VELIDOMDocument document;

    EXPECT_THROW(node.GetTagName(text), VELNullHandleError);
    EXPECT_THROW(node.GetChildNodes(list), VELNullHandleError);
    EXPECT_THROW(node.AppendChild(node), VELNullHandleError);
    EXPECT_THROW(node.GetLine(), VELNullHandleError);
    EXPECT_THROW(node.GetColumn(), VELNullHandleError);
    EXPECT_THROW(element.GetAttributeNode("x", attribute), VELNullHandleError);
    EXPECT_THROW(element.SetAttribute("x", "y"), VELNullHandleError);
    EXPECT_THROW(element.GetElementsByTagName("x", list), VELNullHandleError);
    EXPECT_THROW(list.Item(0, node), VELNullHandleError);
    EXPECT_EQ(list.GetLength(), 0);
    EXPECT_THROW(attribute.GetName(text), VELNullHandleError);
    EXPECT_THROW(attribute.GetValue(text), VELNullHandleError);
    EXPECT_THROW(document.GetDocumentElement(element), VELNullHandleError);
    EXPECT_THROW(document.CreateElement("x", element), VELNullHandleError);
    EXPECT_THROW(document.AppendChild(element), VELNullHandleError);
    EXPECT_THROW(MakeDocument().AppendChild(element), VELNullHandleError);
    EXPECT_THROW(WriteXml(document, "x.xml"), VELNullHandleError);
}
