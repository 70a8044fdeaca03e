// SPDX-License-Identifier: MIT
// Reading on while what was read is freed.
#include "platform/DomTesting.h"
#include "platform/detail/DomAccess.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace dyadctx::test {

namespace {

// Elements that differ much in what they hold: long values, many attributes, many children.
class UnevenElements {
public:
    explicit UnevenElements(unsigned int seed) : random_(seed) {}

    std::string Next() {
        const std::string number = std::to_string(++count_);
        std::string text = "<e n='" + number + "' v='" + std::string(LengthOfValue(), 'v') + "'";
        for (int left = Below(50) == 0 ? 3000 : Below(4); left > 0; --left)
            text += " a" + std::to_string(left) + "='a value that is not short " + number + "'";
        text += ">";
        for (int left = Below(50) == 0 ? 9000 : Below(4); left > 0; --left)
            text += "<c n='child " + std::to_string(left) + " of " + number + "'/> ";
        return text + "</e>";
    }

private:
    int Below(int bound) { return static_cast<int>(random_() % static_cast<unsigned int>(bound)); }
    std::size_t LengthOfValue() {
        return static_cast<std::size_t>(Below(40) == 0 ? 200000 : Below(60));
    }

    std::mt19937 random_;
    int count_ = 0;
};

std::string Describe(const VELIDOMElement& element) {
    std::string text = TagOf(element);
    for (int i = 0; i < element.GetNbAttributes(); ++i) {
        VELIDOMAttr attribute;
        element.GetAttributeAtIndex(i, attribute);
        VELUnicodeString name;
        VELUnicodeString value;
        attribute.GetName(name);
        attribute.GetValue(value);
        text += " " + std::string(name.AsView()) + "=" + std::string(value.AsView());
    }
    for (const VELIDOMNode& child : ChildrenOf(element))
        text += "/" + (TagOf(child) == "c" ? AttributeOf(VELIDOMElement(child), "n") : "#");
    return text;
}

} // namespace

TEST(DomForgetting, WhatComesLaterStaysWhole) {
    for (unsigned int seed = 1; seed <= 3; ++seed) {
        UnevenElements elements(seed);
        std::string text = "<root>";
        for (int i = 0; i < 600; ++i)
            text += elements.Next();
        text += "</root>";
        const VELIDOMDocument kept = DocumentOf(text);
        const VELIDOMDocument forgetting = DocumentOf(text);
        const std::vector<VELIDOMNode> expected = ChildrenOf(RootOf(kept));
        VELIDOMNodeList children;
        ASSERT_EQ(RootOf(forgetting).GetChildNodes(children), S_OK);
        ASSERT_EQ(children.GetLength(), 600);
        for (int i = 0; i < 600; ++i) {
            VELIDOMNode node;
            ASSERT_EQ(children.Item(i, node), S_OK);
            const VELIDOMElement element(node);
            DomAccess::ForgetBefore(element);
            ASSERT_EQ(Describe(element),
                      Describe(VELIDOMElement(expected[static_cast<std::size_t>(i)])));
        }
    }
}

TEST(DomForgetting, TheDocumentElementMayGo) {
    UnevenElements elements(1);
    std::string text = "<root>";
    for (int i = 0; i < 600; ++i)
        text += elements.Next();
    const VELIDOMDocument document = DocumentOf(text + "</root>");
    {
        VELIDOMNodeList children;
        ASSERT_EQ(RootOf(document).GetChildNodes(children), S_OK);
        VELIDOMNode last;
        ASSERT_EQ(children.Item(599, last), S_OK);
        DomAccess::ForgetBefore(VELIDOMElement(last));
    }
    VELIDOMElement root;
    EXPECT_EQ(document.GetDocumentElement(root), E_FAIL);
    EXPECT_TRUE(root.IsNull());
}

TEST(DomForgetting, BeforeTheFirstElementThereIsNothing) {
    const VELIDOMDocument document = DocumentOf("<root><e n='1'/><e n='2'/></root>");
    DomAccess::ForgetBefore(VELIDOMElement(ChildrenOf(RootOf(document))[1]));
    EXPECT_EQ(OutlineOf(RootOf(document)), "root(e,e)");
}

} // namespace dyadctx::test
