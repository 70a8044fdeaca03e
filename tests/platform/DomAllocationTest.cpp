// SPDX-License-Identifier: MIT
// What the XML layer does when memory runs out at any one allocation.
#include "platform/DomTesting.h"
#include "support/DomFaults.h"
#include "support/FailingAllocation.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <string>

using namespace dyadctx;
using namespace dyadctx::test;

namespace {

constexpr const char* Text = "<!DOCTYPE a [<!ENTITY e 'x'><!ATTLIST a d CDATA 'usual'>]>\n"
                             "<a long-name-of-an-attribute='a value that is not short'>\n"
                             "  <b x='1'>&e;<c/><!-- c --></b><![CDATA[x]]><d/>\n"
                             "</a>\n";
const VELListValVELUnicodeString NoOptions;

// Reads like a program does whose error handler needs no memory.
struct Outcome final : VELISAXErrorHandler {
    void FatalError(int, int, const char* why) override { reason = why; }
    VELResult result = 0;
    VELIDOMDocument document;
    std::string_view reason;
};

void Read(const VELIXMLDOMDocumentBuilder& builder, const VELUnicodeString& path,
          Outcome& outcome) {
    outcome.result = builder.Parse(path, &outcome, nullptr, NoOptions, NoOptions, outcome.document);
}

void ExpectNoMemory(const Outcome& outcome) {
    EXPECT_EQ(outcome.result, E_FAIL);
    EXPECT_TRUE(outcome.document.IsNull());
    EXPECT_EQ(outcome.reason, "there is not enough memory to read the file");
}

} // namespace

TEST(DomAllocation, ReadingFailsWhereTheTreeFindsNoMemory) {
    const TemporaryFolder folder;
    const VELUnicodeString path(folder.Write("a.xml", Text).c_str());
    const VELIXMLDOMDocumentBuilder builder = MakeBuilder();

    const int failures = ForEachAllocation([&](int number) {
        Outcome outcome;
        bool failed = false;
        {
            const FailingAllocation failing(number);
            Read(builder, path, outcome);
            failed = failing.HasFailed();
        }
        if (failed)
            ExpectNoMemory(outcome);
        else
            EXPECT_EQ(OutlineOf(RootOf(outcome.document)), "a(#,b(#,c,#),#,d,#)");
        return failed;
    });
    EXPECT_GT(failures, 5);
}

TEST(DomAllocation, ReadingFailsWhereTheParserFindsNoMemory) {
    const TemporaryFolder folder;
    const VELUnicodeString path(folder.Write("a.xml", Text).c_str());
    const VELIXMLDOMDocumentBuilder builder = MakeBuilder();

    const int failures = ForEachAllocation([&](int number) {
        Outcome outcome;
        const DomFaultScope fault(DomCall::ParserMemory, number);
        Read(builder, path, outcome);
        if (DomFaultScope::HasStruck())
            ExpectNoMemory(outcome);
        else
            EXPECT_EQ(outcome.result, S_OK);
        return DomFaultScope::HasStruck();
    });
    EXPECT_GT(failures, 10);
}

TEST(DomAllocation, BuildingIsRefusedAndLeavesTheDocumentAsItWas) {
    const VELUnicodeString tag("\xC3\xA9l\xC3\xA9ment-of-a-long-name");
    const VELUnicodeString value("a value that is not short");
    const int failures = ForEachAllocation([&](int number) {
        const VELIDOMDocument document = MakeDocument();
        const VELIDOMElement root = MakeElement(document, "r");
        VELIDOMElement made;
        VELResult created = S_OK;
        VELResult set = S_OK;
        VELResult appended = S_OK;
        bool failed = false;
        {
            const FailingAllocation failing(number);
            created = document.CreateElement(tag, made);
            set = root.SetAttribute(tag, value);
            appended = created == S_OK ? root.AppendChild(made) : E_FAIL;
            failed = failing.HasFailed();
        }
        EXPECT_EQ(made.IsNull(), created != S_OK);
        EXPECT_EQ(AttributeOf(root, tag.AsView()), set == S_OK ? value.AsView() : "(none)");
        EXPECT_EQ(ChildrenOf(root).size(), appended == S_OK ? 1U : 0U);
        EXPECT_EQ(failed, created != S_OK || set != S_OK);
        return failed;
    });
    EXPECT_GT(failures, 2);
}

TEST(DomAllocation, GrowingListsAreLeftAsTheyWere) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement root = MakeElement(document, "r");
    int refused = 0;
    for (int i = 0; i < 2000; ++i) {
        const VELIDOMElement child = MakeElement(document, "c");
        VELResult result = S_OK;
        {
            const FailingAllocation failing(1);
            result = root.AppendChild(child);
        }
        if (result == S_OK)
            continue;
        ++refused;
        EXPECT_EQ(ChildrenOf(root).size(), static_cast<std::size_t>(i));
        EXPECT_EQ(root.AppendChild(child), S_OK);
    }
    EXPECT_EQ(ChildrenOf(root).size(), 2000U);
    EXPECT_GT(refused, 0);
}

TEST(DomAllocation, QueriesAreRefused) {
    const VELUnicodeString b("b");
    const int failures = ForEachAllocation([&](int number) {
        const VELIDOMElement root =
            RootOf(DocumentOf("<an-element-of-a-long-name><b x='a value that is not short'/>"
                              "</an-element-of-a-long-name>"));
        VELUnicodeString name("before");
        VELIDOMNodeList list;
        VELResult named = S_OK;
        VELResult found = S_OK;
        bool failed = false;
        {
            const FailingAllocation failing(number);
            named = root.GetTagName(name);
            found = root.GetElementsByTagName(b, list);
            failed = failing.HasFailed();
        }
        EXPECT_EQ(failed, named != S_OK || found != S_OK);
        EXPECT_EQ(name, VELUnicodeString(named == S_OK ? "an-element-of-a-long-name" : "before"));
        EXPECT_EQ(list.IsNull(), found != S_OK);
        return failed;
    });
    EXPECT_GE(failures, 3);
}

TEST(DomAllocation, WritingIsRefusedAndLeavesTheFileAsItWas) {
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("x.xml");
    const VELUnicodeString file(path.c_str());
    const VELIXMLDOMDocumentBuilder builder = MakeBuilder();
    const VELIDOMDocument document = DocumentOf(Text);
    const int failures = ForEachAllocation([&](int number) {
        folder.Write("x.xml", "old");
        VELResult result = S_OK;
        bool failed = false;
        {
            const FailingAllocation failing(number);
            result = builder.Write(document, file, NoOptions, NoOptions);
            failed = failing.HasFailed();
        }
        EXPECT_EQ(result, failed ? E_FAIL : S_OK);
        EXPECT_EQ(folder.Read("x.xml") == "old", failed);
        return failed;
    });
    EXPECT_GT(failures, 1);
}

TEST(DomAllocation, MakingADocumentIsRefused) {
    const VELIXMLDOMDocumentBuilder builder = MakeBuilder();
    VELIDOMDocument document;
    VELResult result = S_OK;
    {
        const FailingAllocation failing(1);
        result = builder.CreateDocument(document);
    }
    EXPECT_EQ(result, E_FAIL);
    EXPECT_TRUE(document.IsNull());
}
