// SPDX-License-Identifier: MIT
#include "platform/DomTesting.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace dyadctx::test {

namespace {

class RecordingErrors final : public VELISAXErrorHandler {
public:
    explicit RecordingErrors(std::vector<DomFailure>& failures) : failures_(failures) {}
    void FatalError(int line, int column, const char* reason) override {
        failures_.push_back({line, column, reason});
    }

private:
    std::vector<DomFailure>& failures_;
};

VELUnicodeString Text(std::string_view text) {
    return VELUnicodeString(text);
}

} // namespace

DomReading ReadXmlFile(const std::string& path) {
    DomReading reading;
    RecordingErrors errors(reading.failures);
    VELListValVELUnicodeString names;
    VELListValVELUnicodeString values;
    names.Append(VELUnicodeString("VELDoValidation"));
    values.Append(VELUnicodeString("false"));
    reading.result =
        MakeBuilder().Parse(Text(path), &errors, nullptr, names, values, reading.document);
    return reading;
}

DomReading ReadXml(std::string_view text) {
    const TemporaryFolder folder;
    return ReadXmlFile(folder.Write("read.xml", text));
}

VELIDOMDocument DocumentOf(std::string_view text) {
    const DomReading reading = ReadXml(text);
    EXPECT_EQ(reading.result, S_OK) << text.substr(0, 200);
    EXPECT_FALSE(reading.document.IsNull());
    EXPECT_TRUE(reading.failures.empty());
    return reading.document;
}

VELIXMLDOMDocumentBuilder MakeBuilder() {
    VELIXMLDOMDocumentBuilder builder;
    EXPECT_EQ(CreateVELIXMLDOMDocumentBuilder(builder, CLSID_XML4C_DOM), S_OK);
    return builder;
}

VELIDOMDocument MakeDocument() {
    VELIDOMDocument document;
    EXPECT_EQ(MakeBuilder().CreateDocument(document), S_OK);
    return document;
}

VELIDOMElement MakeElement(const VELIDOMDocument& document, std::string_view name) {
    VELIDOMElement element;
    EXPECT_EQ(document.CreateElement(Text(name), element), S_OK) << name;
    return element;
}

VELIDOMElement AddElement(const VELIDOMDocument& document, const VELIDOMElement& parent,
                          std::string_view name) {
    VELIDOMElement element = MakeElement(document, name);
    EXPECT_EQ(parent.AppendChild(element), S_OK);
    return element;
}

VELResult WriteXml(const VELIDOMDocument& document, const std::string& path) {
    VELListValVELUnicodeString names;
    VELListValVELUnicodeString values;
    names.Append(VELUnicodeString("VELEncoding"));
    values.Append(VELUnicodeString("UTF-8"));
    names.Append(VELUnicodeString("VELIndentation"));
    values.Append(VELUnicodeString("1"));
    return MakeBuilder().Write(document, Text(path), names, values);
}

VELIDOMElement RootOf(const VELIDOMDocument& document) {
    VELIDOMElement root;
    EXPECT_EQ(document.GetDocumentElement(root), S_OK);
    return root;
}

std::vector<VELIDOMNode> ChildrenOf(const VELIDOMNode& node) {
    VELIDOMNodeList list;
    EXPECT_EQ(node.GetChildNodes(list), S_OK);
    EXPECT_FALSE(list.IsNull());
    std::vector<VELIDOMNode> children(static_cast<std::size_t>(list.GetLength()));
    for (std::size_t i = 0; i < children.size(); ++i)
        EXPECT_EQ(list.Item(static_cast<int>(i), children[i]), S_OK);
    return children;
}

std::string TagOf(const VELIDOMNode& node) {
    VELUnicodeString name;
    return node.GetTagName(name) == S_OK ? std::string(name.AsView()) : "(none)";
}

std::string AttributeOf(const VELIDOMElement& element, std::string_view name) {
    VELIDOMAttr attribute;
    VELUnicodeString value;
    if (element.GetAttributeNode(Text(name), attribute) != S_OK)
        return "(none)";
    EXPECT_EQ(attribute.GetValue(value), S_OK);
    return std::string(value.AsView());
}

std::string OutlineOf(const VELIDOMNode& node) {
    if (VELIDOMElement(node).IsNull())
        return "#";
    std::string children;
    for (const VELIDOMNode& child : ChildrenOf(node))
        children += (children.empty() ? "" : ",") + OutlineOf(child);
    return TagOf(node) + (children.empty() ? "" : "(" + children + ")");
}

std::string NestedXml(int depth) {
    std::string text;
    for (int level = 0; level < depth; ++level)
        text += "<e>";
    for (int level = 0; level < depth; ++level)
        text += "</e>";
    return text;
}

} // namespace dyadctx::test
