// SPDX-License-Identifier: MIT
#include "support/ScannerComparison.h"

#include "platform/detail/PlainXmlScanner.h"
#include "platform/detail/XmlParser.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

namespace dyadctx::test {

namespace {

// Cannot go back to its start, so that nothing but the parser reads it.
class TextSource final : public XmlSource {
public:
    explicit TextSource(std::string_view text) : text_(text) {}

    std::int64_t Read(void* buffer, std::size_t size) override {
        const std::size_t count = std::min(size, text_.size());
        if (count > 0)
            std::memcpy(buffer, text_.data(), count);
        text_.remove_prefix(count);
        return static_cast<std::int64_t>(count);
    }

private:
    std::string_view text_;
};

std::unique_ptr<DomDocument> ReadByParser(std::string_view text) {
    TextSource source(text);
    XmlFailure failure;
    return ParseXml(source, failure);
}

std::string PlaceOf(const DomNode& node) {
    return std::to_string(node.Position().line) + ":" + std::to_string(node.Position().column);
}

std::string AttributesOf(const DomDocument& document, const DomNode& node) {
    std::string text;
    for (std::uint32_t i = 0; i < node.attributeCount; ++i) {
        const DomAttribute& attribute = node.attributes[i];
        text += ' ';
        text += document.Names().Text(attribute.name);
        text += "='";
        text += attribute.Value();
        text += '\'';
    }
    return text;
}

// An element without what is in it: place, name, attributes, and which children are elements.
std::string Describe(const DomDocument& document, const DomNode& node) {
    std::string text = PlaceOf(node);
    text += " <";
    text += document.TagName(node);
    text += AttributesOf(document, node) + ">";
    for (std::uint32_t i = 0; i < node.childCount; ++i)
        text += node.children[i] != nullptr ? 'e' : '#';
    return text;
}

std::string DifferenceOf(const DomDocument& scanned, const DomDocument& parsed) {
    std::vector<std::pair<const DomNode*, const DomNode*>> open{{scanned.Root(), parsed.Root()}};
    while (!open.empty()) {
        const auto [ours, theirs] = open.back();
        open.pop_back();
        const std::string here = Describe(scanned, *ours);
        const std::string there = Describe(parsed, *theirs);
        if (here != there)
            return "scanner: " + here + "\nparser:  " + there;
        for (std::uint32_t i = 0; i < ours->childCount; ++i) {
            if (ours->children[i] != nullptr)
                open.emplace_back(ours->children[i], theirs->children[i]);
        }
    }
    return {};
}

} // namespace

ScannerComparison CompareScanner(std::string_view text, std::size_t pieceSize) {
    TextSource source(text);
    const auto scanned = ScanPlainXml(source, pieceSize);
    if (scanned == nullptr)
        return {};
    const auto parsed = ReadByParser(text);
    if (parsed == nullptr)
        return {true, "the parser refuses it"};
    return {true, DifferenceOf(*scanned, *parsed)};
}

bool IsReadByParser(std::string_view text) {
    return ReadByParser(text) != nullptr;
}

} // namespace dyadctx::test
