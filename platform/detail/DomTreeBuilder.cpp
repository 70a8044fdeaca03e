// SPDX-License-Identifier: MIT
#include "platform/detail/DomTreeBuilder.h"

namespace dyadctx {

void DomTreeBuilder::StartElement(std::uint32_t name, std::span<const DomReadAttribute> attributes,
                                  DomPosition position) {
    text_ = NoText;
    DomNode* node = document_.AddReadElement(name, attributes, position);
    if (!open_.empty())
        children_.push_back(node);
    open_.push_back({node, children_.size()});
}

void DomTreeBuilder::EndElement() {
    text_ = NoText;
    const OpenElement& element = open_.back();
    const std::size_t count = children_.size() - element.firstChild;
    document_.SetReadChildren(*element.node, children_.data() + element.firstChild,
                              static_cast<std::uint32_t>(count));
    children_.resize(element.firstChild);
    open_.pop_back();
}

void DomTreeBuilder::Text() {
    if (text_ != NoText)
        return;
    children_.push_back(nullptr);
    text_ = InText;
}

void DomTreeBuilder::Other() {
    text_ = NoText;
    if (!open_.empty())
        children_.push_back(nullptr);
}

void DomTreeBuilder::StartSection() {
    children_.push_back(nullptr);
    text_ = InSection;
}

} // namespace dyadctx
