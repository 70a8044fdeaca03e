#include "platform/detail/DomFaults.h"

#include "platform/DomTesting.h"

#include <gtest/gtest.h>

using namespace dyadctx;
using namespace dyadctx::test;

TEST(DomFaults, TheChosenCallFailsAndNoOther) {
    const VELIDOMElement root = RootOf(DocumentOf("<a><b/></a>"));
    VELUnicodeString name;
    const DomFaultScope scope(DomCall::GetTagName, 2);

    EXPECT_EQ(root.GetTagName(name), S_OK);
    EXPECT_FALSE(DomFaultScope::HasStruck());
    EXPECT_EQ(root.GetTagName(name), E_FAIL);
    EXPECT_TRUE(DomFaultScope::HasStruck());
    EXPECT_EQ(root.GetTagName(name), S_OK);
    EXPECT_EQ(name, VELUnicodeString("a"));
}

TEST(DomFaults, NothingFailsAfterTheScope) {
    const VELIDOMElement root = RootOf(DocumentOf("<a/>"));
    VELIDOMNodeList list;
    { const DomFaultScope scope(DomCall::GetChildNodes, 1); }
    EXPECT_EQ(root.GetChildNodes(list), S_OK);
}

TEST(DomFaults, QueriesFailOrGiveANullHandle) {
    const VELIDOMDocument document = DocumentOf("<a><b/></a>");
    const VELIDOMElement root = RootOf(document);
    VELIDOMNodeList children;
    ASSERT_EQ(root.GetChildNodes(children), S_OK);
    for (const auto& [fault, result] :
         {std::pair{DomFault::Fail, E_FAIL}, std::pair{DomFault::NullHandle, S_OK}}) {
        VELIDOMNodeList list = children;
        {
            const DomFaultScope scope(DomCall::GetChildNodes, 1, fault);
            EXPECT_EQ(root.GetChildNodes(list), result);
            EXPECT_TRUE(list.IsNull());
            EXPECT_EQ(list.GetLength(), 0);
        }
        {
            const DomFaultScope scope(DomCall::GetElementsByTagName, 1, fault);
            EXPECT_EQ(root.GetElementsByTagName("b", list), result);
            EXPECT_TRUE(list.IsNull());
        }
        {
            const DomFaultScope scope(DomCall::Item, 1, fault);
            VELIDOMNode node = root;
            EXPECT_EQ(children.Item(0, node), result);
            EXPECT_TRUE(node.IsNull());
        }
        {
            const DomFaultScope scope(DomCall::GetDocumentElement, 1, fault);
            VELIDOMElement element = root;
            EXPECT_EQ(document.GetDocumentElement(element), result);
            EXPECT_TRUE(element.IsNull());
        }
    }
}

TEST(DomFaults, MakersFailOrGiveANullHandle) {
    const VELIXMLDOMDocumentBuilder maker = MakeBuilder();
    const VELIDOMDocument document = MakeDocument();
    for (const auto& [fault, result] :
         {std::pair{DomFault::Fail, E_FAIL}, std::pair{DomFault::NullHandle, S_OK}}) {
        {
            const DomFaultScope scope(DomCall::CreateBuilder, 1, fault);
            VELIXMLDOMDocumentBuilder builder = maker;
            EXPECT_EQ(CreateVELIXMLDOMDocumentBuilder(builder, CLSID_MSXML6_DOM), result);
            EXPECT_TRUE(builder.IsNull());
        }
        {
            const DomFaultScope scope(DomCall::CreateDocument, 1, fault);
            VELIDOMDocument made = document;
            EXPECT_EQ(maker.CreateDocument(made), result);
            EXPECT_TRUE(made.IsNull());
        }
        {
            const DomFaultScope scope(DomCall::CreateElement, 1, fault);
            VELIDOMElement element;
            EXPECT_EQ(document.CreateElement("x", element), result);
            EXPECT_TRUE(element.IsNull());
        }
    }
}

TEST(DomFaults, ChangesFailAndChangeNothing) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement root = MakeElement(document, "r");
    const VELIDOMElement child = MakeElement(document, "c");
    {
        const DomFaultScope scope(DomCall::SetAttribute, 1);
        EXPECT_EQ(root.SetAttribute("x", "1"), E_FAIL);
        EXPECT_EQ(AttributeOf(root, "x"), "(none)");
    }
    {
        const DomFaultScope scope(DomCall::AppendChild, 1);
        EXPECT_EQ(root.AppendChild(child), E_FAIL);
        EXPECT_EQ(root.AppendChild(child), S_OK);
    }
    const DomFaultScope scope(DomCall::AppendChild, 1);
    EXPECT_EQ(document.AppendChild(root), E_FAIL);
    EXPECT_EQ(document.AppendChild(root), S_OK);
    EXPECT_EQ(OutlineOf(RootOf(document)), "r(c)");
}
