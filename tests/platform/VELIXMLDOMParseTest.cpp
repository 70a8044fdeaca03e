// SPDX-License-Identifier: MIT
#include "platform/VELIXMLDOM.h"

#include "platform/DomTesting.h"
#include "platform/VELBaseUnknown_var.h"
#include "support/SpecialFiles.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

using namespace dyadctx::test;
using namespace std::string_literals;

namespace {

const VELListValVELUnicodeString NoOptions;

struct RefusedText {
    std::string_view what;
    std::string_view text;
    DomFailure failure;
};

void PrintTo(const RefusedText& refused, std::ostream* out) {
    *out << refused.what;
}

class VELIXMLDOMParseRefuses : public testing::TestWithParam<RefusedText> {};

} // namespace

TEST_P(VELIXMLDOMParseRefuses, WhatIsNoDocument) {
    const DomReading reading = ReadXml(GetParam().text);

    EXPECT_EQ(reading.result, E_FAIL);
    EXPECT_TRUE(reading.document.IsNull());
    ASSERT_EQ(reading.failures.size(), 1U);
    EXPECT_EQ(reading.failures[0].line, GetParam().failure.line);
    EXPECT_EQ(reading.failures[0].column, GetParam().failure.column);
    EXPECT_EQ(reading.failures[0].reason, GetParam().failure.reason);
}

INSTANTIATE_TEST_SUITE_P(
    VELIXMLDOM, VELIXMLDOMParseRefuses,
    testing::Values(
        RefusedText{"empty file", "", {1, 1, "the file holds no element"}},
        RefusedText{"no element", "<!-- a -->\n\n", {3, 1, "the file holds no element"}},
        RefusedText{"text only", "hello", {1, 1, "this is not XML"}},
        RefusedText{"element left open",
                    "<a>\n <b/>\n",
                    {3, 1, "the file ends while an element is still open"}},
        RefusedText{"wrong end tag",
                    "<a>\n  <b></a>",
                    {2, 8,
                     "the end tag \"a\" does not belong to the open element \"b\", which begins "
                     "at line 2, column 3"}},
        RefusedText{"attribute twice",
                    "<a>\n <b x='1' x='2'/></a>",
                    {2, 11, "the element has the same attribute twice"}},
        RefusedText{
            "two roots", "<a/>\n<b/>", {2, 1, "something follows the end of the root element"}},
        RefusedText{"end inside a tag",
                    "<a>\n<b x='1'",
                    {2, 1, "the file ends inside a tag, comment or reference"}},
        RefusedText{
            "unknown entity", "<a>&nbsp;</a>", {1, 4, "the entity \"nbsp\" is not declared"}},
        RefusedText{"forbidden character by number",
                    "<a>&#1;</a>",
                    {1, 4, "the number is not that of a character XML allows"}},
        RefusedText{"late declaration",
                    "\n<?xml version='1.0'?><a/>",
                    {2, 1, "the XML declaration is not at the start of the file"}},
        RefusedText{"CDATA left open",
                    "<a><![CDATA[x</a>",
                    {1, 18, "the file ends inside a CDATA section"}},
        RefusedText{"unknown encoding",
                    "<?xml version='1.0' encoding='EBCDIC-XX'?><a/>",
                    {1, 31, "the declared encoding is not known"}},
        RefusedText{"entity that contains itself",
                    "<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a>",
                    {1, 36, "the entity contains itself"}},
        RefusedText{"external entity in a value",
                    "<!DOCTYPE a [<!ENTITY e SYSTEM 'e.txt'>]>\n<a x='&e;'/>",
                    {2, 7, "an attribute value cannot use an entity from outside the file"}}));

TEST(VELIXMLDOM, ParseRefusesBytesThatAreNoText) {
    for (const std::string& text :
         {"<a x='1\0'/>"s, "<a>\0</a>"s, "<a/>\0"s, "<a x='\xFF'/>"s, "<a x='\xED\xA0\x80'/>"s,
          "<a x='\xEF\xBF\xBE'/>"s, "<a x='\x01'/>"s}) {
        const DomReading reading = ReadXml(text);

        EXPECT_EQ(reading.result, E_FAIL) << testing::PrintToString(text);
        EXPECT_TRUE(reading.document.IsNull());
        EXPECT_EQ(reading.failures.size(), 1U);
    }
}

TEST(VELIXMLDOM, ParseRefusesWhatIsNoReadableFile) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path() / "folder.xml");
    for (const char* name : {"missing.xml", "folder.xml", "missing/x.xml"}) {
        const DomReading reading = ReadXmlFile(folder.PathOf(name));

        EXPECT_EQ(reading.result, E_FAIL) << name;
        EXPECT_TRUE(reading.document.IsNull()) << name;
        const std::vector<DomFailure> expected{{0, 0, "the file cannot be read"}};
        EXPECT_EQ(reading.failures, expected) << name;
    }
    EXPECT_EQ(ReadXmlFile("").result, E_FAIL);
}

TEST(VELIXMLDOM, ParseDoesNotWaitForAFifo) {
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("x.xml");
    MakeFifo(path);

    const DomReading reading = ReadXmlFile(path);

    EXPECT_EQ(reading.result, E_FAIL);
    EXPECT_TRUE(reading.document.IsNull());
}

TEST(VELIXMLDOM, ParseEmptiesTheDocumentWhenItFails) {
    VELIDOMDocument document = DocumentOf("<old/>");
    const TemporaryFolder folder;
    const std::string path = folder.Write("bad.xml", "<a>");

    EXPECT_EQ(MakeBuilder().Parse(path.c_str(), nullptr, nullptr, NoOptions, NoOptions, document),
              E_FAIL);
    EXPECT_TRUE(document.IsNull());
}

TEST(VELIXMLDOM, ParseReplacesTheDocumentItIsGiven) {
    VELIDOMDocument document = DocumentOf("<old/>");
    const TemporaryFolder folder;
    const std::string path = folder.Write("good.xml", "<new/>");

    EXPECT_EQ(MakeBuilder().Parse(path.c_str(), nullptr, nullptr, NoOptions, NoOptions, document),
              S_OK);
    EXPECT_EQ(TagOf(RootOf(document)), "new");
}

TEST(VELIXMLDOM, ParseContainsWhatTheErrorHandlerThrows) {
    struct ThrowingErrors final : VELISAXErrorHandler {
        void FatalError(int, int, const char*) override { throw std::runtime_error("handler"); }
    } errors;
    const TemporaryFolder folder;
    const std::string path = folder.Write("bad.xml", "<a>");
    VELIDOMDocument document;

    EXPECT_EQ(MakeBuilder().Parse(path.c_str(), &errors, nullptr, NoOptions, NoOptions, document),
              E_FAIL);
    EXPECT_TRUE(document.IsNull());
}

TEST(VELIXMLDOM, ParseReadsTheEncodingsOfTheFormat) {
    const std::string utf16 = "\xFF\xFE<\0a\0 \0x\0=\0'\0\xE9\0'\0/\0>\0"s;
    const std::string utf16Big = "\xFE\xFF\0<\0a\0 \0x\0=\0'\0\xE9\0'\0/\0>"s;
    for (const std::string& text :
         {"<a x='\xC3\xA9'/>"s, "\xEF\xBB\xBF<a x='\xC3\xA9'/>"s, utf16, utf16Big,
          "<?xml version='1.0' encoding='ISO-8859-1'?><a x='\xE9'/>"s,
          "<?xml version='1.0' encoding='US-ASCII'?><a x='&#233;'/>"s}) {
        EXPECT_EQ(AttributeOf(RootOf(DocumentOf(text)), "x"), "\xC3\xA9")
            << testing::PrintToString(text);
    }
}

TEST(VELIXMLDOM, ParseTakesNamesWithPrefixesAsTheyAre) {
    const VELIDOMElement prefixed = RootOf(DocumentOf("<x:Root y:a='1'/>"));
    EXPECT_EQ(TagOf(prefixed), "x:Root");
    EXPECT_EQ(AttributeOf(prefixed, "y:a"), "1");

    const VELIDOMElement declared = RootOf(DocumentOf("<Root xmlns='urn:x'/>"));
    EXPECT_EQ(TagOf(declared), "Root");
    EXPECT_EQ(AttributeOf(declared, "xmlns"), "urn:x");
}

TEST(VELIXMLDOM, ParseAppliesTheInternalDeclarations) {
    const VELIDOMElement root = RootOf(DocumentOf("<!DOCTYPE a [\n"
                                                  "  <!ATTLIST a kind CDATA 'usual'>\n"
                                                  "  <!ENTITY who 'Ada &amp; Bob'>\n"
                                                  "  <!ENTITY part '<b/><c/>'>\n"
                                                  "]>\n"
                                                  "<a name='&who;'>&part;</a>"));

    EXPECT_EQ(AttributeOf(root, "kind"), "usual");
    EXPECT_EQ(AttributeOf(root, "name"), "Ada & Bob");
    EXPECT_EQ(OutlineOf(root), "a(b,c)");
}

TEST(VELIXMLDOM, ParseNeverLoadsAnythingExternal) {
    const TemporaryFolder folder;
    folder.Write("outside.dtd", "<!ATTLIST a x CDATA 'loaded'><!ENTITY e '<loaded/>'>");
    folder.Write("outside.xml", "<loaded/>");
    const std::string path =
        folder.Write("main.xml", "<!DOCTYPE a SYSTEM 'outside.dtd' [\n"
                                 "<!ENTITY % more SYSTEM 'outside.dtd'> %more;\n"
                                 "<!ENTITY inner SYSTEM 'outside.xml'>]>\n"
                                 "<a>&inner;&e;<b/></a>");

    const DomReading reading = ReadXmlFile(path);

    ASSERT_EQ(reading.result, S_OK);
    EXPECT_EQ(OutlineOf(RootOf(reading.document)), "a(b)");
    EXPECT_EQ(AttributeOf(RootOf(reading.document), "x"), "(none)");
}

TEST(VELIXMLDOM, ParseAcceptsADoctypeThatNamesAMissingFile) {
    EXPECT_EQ(TagOf(RootOf(DocumentOf("<!DOCTYPE a SYSTEM 'http://localhost/none.dtd'><a/>"))),
              "a");
    EXPECT_EQ(TagOf(RootOf(DocumentOf("<!DOCTYPE a PUBLIC '-//x' 'none.dtd'><a/>"))), "a");
}

TEST(VELIXMLDOM, ParseRefusesEntitiesThatGrowOutOfProportion) {
    std::string text = "<!DOCTYPE a [<!ENTITY e0 'laugh laugh laugh laugh laugh laugh'>";
    for (int level = 1; level <= 12; ++level) {
        text += "<!ENTITY e" + std::to_string(level) + " '";
        for (int i = 0; i < 10; ++i)
            text += "&e" + std::to_string(level - 1) + ";";
        text += "'>";
    }
    const DomReading reading = ReadXml(text + "]><a>&e12;</a>");

    EXPECT_EQ(reading.result, E_FAIL);
    ASSERT_EQ(reading.failures.size(), 1U);
    EXPECT_EQ(reading.failures[0].reason,
              "the entities would grow far beyond the size of the file");
}

TEST(VELIXMLDOM, ParseTakesElementsNested5000Deep) {
    VELIDOMNode node = RootOf(DocumentOf(NestedXml(5000)));
    int depth = 1;
    for (VELIDOMNodeList list; node.GetChildNodes(list) == S_OK && list.GetLength() == 1; ++depth)
        ASSERT_EQ(list.Item(0, node), S_OK);

    EXPECT_EQ(depth, 5000);
}

TEST(VELIXMLDOM, ParseRefusesElementsNested5001Deep) {
    const std::vector<DomFailure> expected{
        {1, 15001, "the elements are nested more than 5000 deep"}};

    const DomReading reading = ReadXml(NestedXml(5001));

    EXPECT_EQ(reading.result, E_FAIL);
    EXPECT_TRUE(reading.document.IsNull());
    EXPECT_EQ(reading.failures, expected);
}

TEST(VELIXMLDOM, ParseCountsTheDepthOfElementsInEntities) {
    const std::string within = "<!DOCTYPE e [<!ENTITY inner '" + NestedXml(2) + "'>]>";
    const auto nestedRound = [](int depth, const std::string& content) {
        std::string text = NestedXml(depth);
        return text.insert(static_cast<std::size_t>(depth) * 3, content);
    };

    EXPECT_EQ(ReadXml(within + nestedRound(4998, "&inner;")).result, S_OK);
    EXPECT_EQ(ReadXml(within + nestedRound(4999, "&inner;")).result, E_FAIL);
    EXPECT_EQ(ReadXml(within + nestedRound(4999, "<last/>")).result, S_OK);
    EXPECT_EQ(ReadXml(within + nestedRound(5000, "<last/>")).result, E_FAIL);
}

TEST(VELIXMLDOM, ParseReadsTokensLongerThanAnyBuffer) {
    const std::string value(5'000'000, 'v');
    const std::string comment(3'000'000, 'c');

    const VELIDOMElement root =
        RootOf(DocumentOf("<a><!--" + comment + "--><b x='" + value + "'/></a>"));

    EXPECT_EQ(OutlineOf(root), "a(#,b)");
    EXPECT_EQ(AttributeOf(VELIDOMElement(ChildrenOf(root)[1]), "x"), value);
}

TEST(VELIXMLDOM, ParseIgnoresOptionsItDoesNotKnow) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("x.xml", "<a/>");
    VELListValVELUnicodeString names;
    names.Append(VELUnicodeString("Unheard"));
    VELIDOMDocument document;

    EXPECT_EQ(MakeBuilder().Parse(path.c_str(), nullptr, nullptr, names, NoOptions, document),
              S_OK);
    EXPECT_EQ(TagOf(RootOf(document)), "a");
}

TEST(VELIXMLDOM, BuildersExistForTheTwoParserClassesOnly) {
    VELIXMLDOMDocumentBuilder builder;
    EXPECT_TRUE(builder.IsNull());
    for (const int parserClass : {CLSID_XML4C_DOM, CLSID_MSXML6_DOM}) {
        EXPECT_EQ(CreateVELIXMLDOMDocumentBuilder(builder, parserClass), S_OK);
        EXPECT_FALSE(builder.IsNull());
    }
    for (const int parserClass : {0, -1, 3}) {
        EXPECT_EQ(CreateVELIXMLDOMDocumentBuilder(builder, parserClass), E_FAIL);
        EXPECT_TRUE(builder.IsNull());
    }
}

TEST(VELIXMLDOM, ANullBuilderThrows) {
    const VELIXMLDOMDocumentBuilder builder;
    VELIDOMDocument document = MakeDocument();

    EXPECT_THROW(builder.Parse("x.xml", nullptr, nullptr, NoOptions, NoOptions, document),
                 VELNullHandleError);
    EXPECT_THROW(builder.ParseText("<a/>", nullptr, document), VELNullHandleError);
    EXPECT_THROW(builder.CreateDocument(document), VELNullHandleError);
    EXPECT_THROW(builder.Write(document, "x.xml", NoOptions, NoOptions), VELNullHandleError);
}

TEST(VELIXMLDOM, ATextIsReadAsTheFileThatHoldsIt) {
    const std::string wide("\xFF\xFE<\0a\0/\0>\0", 10);
    for (const std::string& text :
         {NestedXml(3), wide, "<a>" + std::string(300000, 'x') + "</a>"}) {
        const DomReading file = ReadXml(text);
        VELIDOMDocument document;
        ASSERT_EQ(MakeBuilder().ParseText(VELUnicodeString(text), nullptr, document), S_OK);
        EXPECT_EQ(OutlineOf(RootOf(document)), OutlineOf(RootOf(file.document)));
        EXPECT_EQ(RootOf(document).GetColumn(), RootOf(file.document).GetColumn());
    }
}

TEST(VELIXMLDOM, ATextThatIsNoDocumentIsRefusedAsAFileIs) {
    class Recorder : public VELISAXErrorHandler {
    public:
        void FatalError(int line, int column, const char* reason) override {
            failures.push_back({line, column, reason});
        }
        std::vector<DomFailure> failures;
    };
    VELIDOMDocument document = MakeDocument();
    Recorder errors;
    EXPECT_EQ(MakeBuilder().ParseText("<a>\n <b x='1' x='2'/></a>", &errors, document), E_FAIL);
    EXPECT_TRUE(document.IsNull());
    EXPECT_EQ(errors.failures,
              std::vector<DomFailure>({{2, 11, "the element has the same attribute twice"}}));
    EXPECT_EQ(MakeBuilder().ParseText("", nullptr, document), E_FAIL);
}
