// SPDX-License-Identifier: MIT
// Builds a document from what a parser reads, in file order.
#pragma once

#include "platform/detail/DomDocument.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace dyadctx {

// Without memory, operations throw std::bad_alloc; the document is then unusable.
class DomTreeBuilder {
public:
    explicit DomTreeBuilder(DomDocument& document) noexcept : document_(document) {}

    static constexpr std::size_t DeepestNesting = 5000;

    // The number of open elements.
    std::size_t Depth() const noexcept { return open_.size(); }
    // The name of the innermost open element, which must exist.
    std::string_view OpenName() const noexcept { return document_.TagName(*open_.back().node); }
    bool HasRoot() const noexcept { return document_.Root() != nullptr; }

    std::uint32_t Intern(std::string_view name) { return document_.InternReadName(name); }
    void StartElement(std::uint32_t name, std::span<const DomReadAttribute> attributes,
                      DomPosition position);
    void EndElement();
    // A piece of text; consecutive pieces form one child.
    void Text();
    // A comment or processing instruction. Outside the document element it is not a child.
    void Other();
    // A CDATA section is one child, whatever it contains.
    void StartSection();
    void EndSection() noexcept { text_ = NoText; }

private:
    enum TextState { NoText, InText, InSection };

    struct OpenElement {
        DomNode* node;
        std::size_t firstChild;
    };

    DomDocument& document_;
    std::vector<OpenElement> open_;
    // The children so far of all open elements, the innermost one's last.
    std::vector<DomNode*> children_;
    TextState text_ = NoText;
};

} // namespace dyadctx
