// SPDX-License-Identifier: MIT
#include "platform/detail/XmlSerializer.h"

#include "platform/detail/Utf8.h"
#include "platform/detail/XmlCharacters.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace dyadctx {

namespace {

constexpr std::string_view Declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
// Deeper elements are not indented further, so that the text stays in proportion to the document.
constexpr std::size_t DeepestIndentation = 32;

// A line end in a value would be read as a blank, so it is written as a reference.
std::string_view ReferenceFor(char c) noexcept {
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    case '\r':
        return "&#13;";
    default:
        return {};
    }
}

// Single-byte characters that are written unchanged.
constexpr std::array<bool, 256> PlainBytes = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0x20; byte < 0x80; ++byte)
        plain[byte] = byte != '&' && byte != '<' && byte != '>' && byte != '"';
    return plain;
}();

class Serializer {
public:
    Serializer(const DomDocument& document, XmlLayout layout, std::string& text)
        : document_(document), layout_(layout), text_(text) {}

    bool Run(const DomNode& root);

private:
    struct OpenElement {
        const DomNode* node;
        std::uint32_t nextChild;
    };

    bool Start(const DomNode& node);
    void End(const DomNode& node);
    bool AppendAttributes(const DomNode& node);
    bool AppendValue(std::string_view value);
    void BeginLine();
    void EndLine();

    const DomDocument& document_;
    XmlLayout layout_;
    std::string& text_;
    std::vector<OpenElement> open_;
};

bool Serializer::Run(const DomNode& root) {
    text_.reserve(Declaration.size() + document_.EstimatedTextSize());
    text_ = Declaration;
    if (!Start(root))
        return false;
    while (!open_.empty()) {
        OpenElement& element = open_.back();
        const DomNode& node = *element.node;
        if (element.nextChild == node.childCount) {
            open_.pop_back();
            End(node);
            continue;
        }
        const DomNode* child = node.children[element.nextChild++];
        if (child != nullptr && !Start(*child))
            return false;
    }
    if (layout_ == XmlLayout::OneLine)
        text_ += '\n';
    return true;
}

bool Serializer::Start(const DomNode& node) {
    BeginLine();
    text_ += '<';
    text_ += document_.TagName(node);
    if (!AppendAttributes(node))
        return false;
    DomNode* const* end = node.children + node.childCount;
    const bool isEmpty = std::all_of(static_cast<DomNode* const*>(node.children), end,
                                     [](const DomNode* child) { return child == nullptr; });
    text_ += isEmpty ? "/>" : ">";
    EndLine();
    if (!isEmpty)
        open_.push_back({&node, 0});
    return true;
}

void Serializer::End(const DomNode& node) {
    BeginLine();
    text_ += "</";
    text_ += document_.TagName(node);
    text_ += '>';
    EndLine();
}

bool Serializer::AppendAttributes(const DomNode& node) {
    const DomAttribute* end = node.attributes + node.attributeCount;
    for (const DomAttribute* attribute = node.attributes; attribute != end; ++attribute) {
        text_ += ' ';
        text_ += document_.Names().Text(attribute->name);
        text_ += "=\"";
        if (!AppendValue(attribute->Value()))
            return false;
        text_ += '"';
    }
    return true;
}

bool Serializer::AppendValue(std::string_view value) {
    std::size_t copied = 0;
    std::size_t next = 0;
    while (next < value.size()) {
        if (PlainBytes[static_cast<unsigned char>(value[next])]) {
            ++next;
            continue;
        }
        const std::size_t length = CharacterLength(value.substr(next));
        if (!IsXmlCharacter(value.substr(next, length)))
            return false;
        const std::string_view reference = ReferenceFor(value[next]);
        if (!reference.empty()) {
            text_ += value.substr(copied, next - copied);
            text_ += reference;
            copied = next + length;
        }
        next += length;
    }
    text_ += value.substr(copied);
    return true;
}

void Serializer::BeginLine() {
    if (layout_ == XmlLayout::OneLine)
        return;
    constexpr std::size_t Step = 2;
    text_.append(Step * std::min(open_.size(), DeepestIndentation), ' ');
}

void Serializer::EndLine() {
    if (layout_ == XmlLayout::Indented)
        text_ += '\n';
}

} // namespace

bool SerializeXml(const DomDocument& document, XmlLayout layout, std::string& text) {
    const DomNode* root = document.Root();
    return root != nullptr && Serializer(document, layout, text).Run(*root);
}

} // namespace dyadctx
