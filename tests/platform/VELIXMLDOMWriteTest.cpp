// SPDX-License-Identifier: MIT
#include "platform/VELIXMLDOM.h"

#include "platform/DomTesting.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

using namespace dyadctx::test;
using namespace std::string_literals;

namespace {

VELIDOMDocument DocumentWithValue(std::string_view value) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement root = MakeElement(document, "r");
    EXPECT_EQ(document.AppendChild(root), S_OK);
    EXPECT_EQ(root.SetAttribute("x", VELUnicodeString(value)), S_OK);
    return document;
}

std::string Written(const VELIDOMDocument& document) {
    const TemporaryFolder folder;
    EXPECT_EQ(WriteXml(document, folder.PathOf("x.xml")), S_OK);
    return folder.Read("x.xml");
}

// Writes <a><b/></a> with one option.
VELResult WriteWith(const char* option, const char* value, const std::string& path) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement root = MakeElement(document, "a");
    EXPECT_EQ(document.AppendChild(root), S_OK);
    AddElement(document, root, "b");
    VELListValVELUnicodeString names;
    VELListValVELUnicodeString values;
    names.Append(VELUnicodeString(option));
    values.Append(VELUnicodeString(value));
    return MakeBuilder().Write(document, VELUnicodeString(path.c_str()), names, values);
}

} // namespace

TEST(VELIXMLDOM, WritePutsEveryElementOnALineOfItsOwn) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement root = MakeElement(document, "DyAdDescription");
    EXPECT_EQ(document.AppendChild(root), S_OK);
    const VELIDOMElement data = AddElement(document, root, "CtxData");
    const VELIDOMElement context = AddElement(document, data, "Context");
    EXPECT_EQ(context.SetAttribute("Name", "Design"), S_OK);
    EXPECT_EQ(context.SetAttribute("Parameter", ""), S_OK);
    AddElement(document, AddElement(document, context, "CtxFriends"), "Context");
    AddElement(document, data, "Context");

    EXPECT_EQ(Written(document), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                 "<DyAdDescription>\n"
                                 "  <CtxData>\n"
                                 "    <Context Name=\"Design\" Parameter=\"\">\n"
                                 "      <CtxFriends>\n"
                                 "        <Context/>\n"
                                 "      </CtxFriends>\n"
                                 "    </Context>\n"
                                 "    <Context/>\n"
                                 "  </CtxData>\n"
                                 "</DyAdDescription>\n");
}

TEST(VELIXMLDOM, WritePutsNothingIntoAnEmptyElement) {
    const VELIDOMDocument document = MakeDocument();
    const VELIDOMElement root = MakeElement(document, "DyAdDescription");
    EXPECT_EQ(document.AppendChild(root), S_OK);
    AddElement(document, root, "CtxData");

    EXPECT_EQ(Written(document), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                 "<DyAdDescription>\n"
                                 "  <CtxData/>\n"
                                 "</DyAdDescription>\n");
}

TEST(VELIXMLDOM, WriteEscapesWhatAReaderWouldChange) {
    struct Case {
        std::string value;
        const char* written;
    };
    for (const Case& c : {
             Case{"a & b", "a &amp; b"},
             Case{"<tag>", "&lt;tag&gt;"},
             Case{"say \"x\"", "say &quot;x&quot;"},
             Case{"it's", "it's"},
             Case{"\t\n\r\r\n", "&#9;&#10;&#13;&#13;&#10;"},
             Case{"]]>", "]]&gt;"},
             Case{"&amp;", "&amp;amp;"},
             Case{"  blanks  ", "  blanks  "},
             Case{"100%s%n", "100%s%n"},
             Case{"\x7F", "\x7F"},
             Case{"\xC2\x85\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80",
                  "\xC2\x85\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"},
             Case{"\xEF\xBF\xBD\xEE\x80\x80\xF4\x8F\xBF\xBF",
                  "\xEF\xBF\xBD\xEE\x80\x80\xF4\x8F\xBF\xBF"},
         }) {
        const VELIDOMDocument document = DocumentWithValue(c.value);
        const std::string text = Written(document);
        EXPECT_EQ(text,
                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r x=\""s + c.written + "\"/>\n");
        EXPECT_EQ(AttributeOf(RootOf(DocumentOf(text)), "x"), c.value);
    }
}

TEST(VELIXMLDOM, WriteRefusesWhatXmlCannotCarryAndTouchesNothing) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("x.xml", "old content");
    for (const std::string& value :
         {"\0"s, "a\x01"s, "\x08"s, "\x0B"s, "\x1F"s, "\xEF\xBF\xBE"s, "long text \xEF\xBF\xBF"s,
          "\xED\xA0\x80"s, "\xED\xBF\xBF"s, "\xFF"s, "\x80"s, "\xC3"s, "\xC0\xAF"s,
          "\xF4\x90\x80\x80"s, "\xE2\x82"s}) {
        EXPECT_EQ(WriteXml(DocumentWithValue(value), path), E_FAIL)
            << testing::PrintToString(value);
        EXPECT_EQ(WriteXml(DocumentWithValue(value), folder.PathOf("new.xml")), E_FAIL);
    }
    EXPECT_EQ(folder.Read("x.xml"), "old content");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(VELIXMLDOM, WriteReplacesAnExistingFile) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("x.xml", std::string(10000, 'o'));

    EXPECT_EQ(WriteXml(DocumentWithValue("v"), path), S_OK);
    EXPECT_EQ(folder.Read("x.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r x=\"v\"/>\n");
}

TEST(VELIXMLDOM, WriteRefusesATargetThatCannotBeAFile) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path() / "folder.xml");
    const VELIDOMDocument document = DocumentWithValue("v");

    EXPECT_EQ(WriteXml(document, folder.PathOf("missing/x.xml")), E_FAIL);
    EXPECT_EQ(WriteXml(document, folder.PathOf("folder.xml")), E_FAIL);
    EXPECT_EQ(WriteXml(document, ""), E_FAIL);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "missing"));
}

TEST(VELIXMLDOM, WriteRefusesADocumentWithoutElement) {
    const TemporaryFolder folder;
    EXPECT_EQ(WriteXml(MakeDocument(), folder.PathOf("x.xml")), E_FAIL);
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("x.xml")));
}

TEST(VELIXMLDOM, WriteWithoutIndentationPutsAllElementsIntoOneLine) {
    const std::string oneLine = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a><b/></a>\n";
    const TemporaryFolder folder;
    const std::string path = folder.PathOf("x.xml");

    EXPECT_EQ(WriteWith("VELEncoding", "UTF-8", path), S_OK);
    EXPECT_EQ(folder.Read("x.xml"), oneLine);
    EXPECT_EQ(WriteWith("VELIndentation", "0", path), S_OK);
    EXPECT_EQ(folder.Read("x.xml"), oneLine);
    EXPECT_EQ(WriteWith("VELUnheard", "1", path), S_OK);
    EXPECT_EQ(folder.Read("x.xml"), oneLine);
    EXPECT_EQ(WriteWith("VELIndentation", "1", path), S_OK);
    EXPECT_NE(folder.Read("x.xml"), oneLine);
}

TEST(VELIXMLDOM, WriteRefusesAnotherEncoding) {
    const TemporaryFolder folder;
    EXPECT_EQ(WriteWith("VELEncoding", "ISO-8859-1", folder.PathOf("x.xml")), E_FAIL);
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("x.xml")));
}

TEST(VELIXMLDOM, WriteKeepsTheElementsOfADocumentThatWasRead) {
    const VELIDOMDocument document =
        DocumentOf("<!-- c --><a>\n text <b x='1'> </b><!-- d --></a>");

    EXPECT_EQ(Written(document), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                 "<a>\n"
                                 "  <b x=\"1\"/>\n"
                                 "</a>\n");
}

TEST(VELIXMLDOM, WriteTakesDocumentsOfAnyDepth) {
    const VELIDOMDocument document = MakeDocument();
    VELIDOMElement element = MakeElement(document, "e");
    EXPECT_EQ(document.AppendChild(element), S_OK);
    for (int level = 1; level < 50000; ++level)
        element = AddElement(document, element, "e");

    const std::string text = Written(document);

    // Every element but the innermost has two lines, none with more than 64 blanks before its tag.
    EXPECT_LT(text.size(), 2 * 50000U * (64 + 5) + 100);
    EXPECT_GT(text.size(), 50000U * 8);
}

TEST(VELIXMLDOM, WritingTwiceProducesTheSameBytes) {
    const VELIDOMDocument document = DocumentWithValue("v\n\xC3\xA9");
    EXPECT_EQ(Written(document), Written(document));
}
