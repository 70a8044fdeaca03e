// SPDX-License-Identifier: MIT
#include "platform/detail/DomDocument.h"

#include "platform/detail/XmlCharacters.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <new>
#include <vector>

namespace dyadctx {

namespace {

std::uint32_t Capacity(std::uint32_t count, bool grown) noexcept {
    constexpr std::uint32_t Smallest = 4;
    return grown ? std::max(Smallest, std::bit_ceil(count)) : count;
}

bool IsSelfOrAncestor(const DomNode& candidate, const DomNode& node) noexcept {
    // A node without children is no ancestor: this keeps top-down building cheap.
    if (candidate.childCount == 0)
        return &candidate == &node;
    // The ancestors of a node that was read were all read too, and are attached.
    const DomNode* above = &node;
    while (above != nullptr && above != &candidate)
        above = above->Is(DomNode::Created) ? above->origin.parent : nullptr;
    return above != nullptr;
}

// Walks the descendants of an element in document order.
class Descendants {
public:
    Descendants(const DomNode& top, std::vector<DomSiblings>& room) : open_(room) {
        open_.clear();
        Enter(top);
    }

    // Null after the last one.
    DomNode* Next() {
        while (!open_.empty()) {
            DomSiblings& siblings = open_.back();
            if (siblings.next == siblings.end) {
                open_.pop_back();
                continue;
            }
            DomNode* node = *siblings.next++;
            if (node == nullptr)
                continue;
            if (node->childCount > 0)
                Enter(*node);
            return node;
        }
        return nullptr;
    }

private:
    void Enter(const DomNode& node) {
        open_.push_back({node.children, node.children + node.childCount});
    }

    std::vector<DomSiblings>& open_;
};

} // namespace

const DomAttribute* DomDocument::FindAttribute(const DomNode& node,
                                               std::string_view name) const noexcept {
    const std::uint32_t id = names_.Find(name);
    return id != DomNames::None ? FindAttribute(node, id) : nullptr;
}

DomNodeSpan DomDocument::ElementsByTagName(const DomNode& node, std::string_view name, int atMost) {
    const std::uint32_t id = names_.Find(name);
    if (id == DomNames::None)
        return {};
    // Allows the walk to stop once all elements of that name are found.
    std::uint64_t wanted = names_.Elements(id);
    if (atMost > 0)
        wanted = std::min(wanted, static_cast<std::uint64_t>(atMost));
    found_.clear();
    Descendants descendants(node, open_);
    while (found_.size() < wanted) {
        DomNode* next = descendants.Next();
        if (next == nullptr)
            break;
        if (next->name == id)
            found_.push_back(next);
    }
    if (found_.empty())
        return {};
    DomNode** nodes = nodes_.AllocateArray<DomNode*>(found_.size());
    std::copy(found_.begin(), found_.end(), nodes);
    return {nodes, static_cast<std::uint32_t>(found_.size())};
}

DomNode* DomDocument::CreateElement(std::string_view name) {
    const std::uint32_t id = InternValid(name);
    if (id == DomNames::None)
        return nullptr;
    DomNode* node = NewElement(id);
    node->flags = DomNode::Created;
    node->origin.parent = nullptr;
    return node;
}

bool DomDocument::SetAttribute(DomNode& node, std::string_view name, std::string_view value) {
    const std::uint32_t id = InternValid(name);
    if (id == DomNames::None || value.size() > std::numeric_limits<std::uint32_t>::max())
        return false;
    if (DomAttribute* known = FindAttribute(node, id); known != nullptr) {
        SetValue(*known, value);
        return true;
    }
    DomAttribute added{id, 0, {}};
    SetValue(added, value);
    node.attributes =
        WithRoomForOneMore(node.attributes, node.attributeCount, node.Is(DomNode::GrownAttributes));
    node.flags |= DomNode::GrownAttributes;
    node.attributes[node.attributeCount++] = added;
    return true;
}

bool DomDocument::AppendChild(DomNode& parent, DomNode& child) {
    if (child.Is(DomNode::Attached) || IsSelfOrAncestor(child, parent))
        return false;
    parent.children =
        WithRoomForOneMore(parent.children, parent.childCount, parent.Is(DomNode::GrownChildren));
    parent.flags |= DomNode::GrownChildren;
    parent.children[parent.childCount++] = &child;
    child.flags |= DomNode::Attached;
    child.origin.parent = &parent;
    return true;
}

bool DomDocument::AppendRoot(DomNode& root) noexcept {
    if (root_ != nullptr || root.Is(DomNode::Attached))
        return false;
    root.flags |= DomNode::Attached;
    root_ = &root;
    return true;
}

DomNode* DomDocument::AddReadElement(std::uint32_t name,
                                     std::span<const DomReadAttribute> attributes,
                                     DomPosition position) {
    DomNode* node = NewElement(name);
    while (bytesOf_.size() < nodes_.ChunkCount())
        bytesOf_.push_back(bytes_.OpenChunk());
    node->flags = DomNode::Attached;
    node->origin.position = position;
    if (!attributes.empty())
        node->attributes = nodes_.AllocateArray<DomAttribute>(attributes.size());
    for (const DomReadAttribute& read : attributes) {
        DomAttribute& attribute = node->attributes[node->attributeCount++];
        attribute.name = read.name;
        SetValue(attribute, read.value);
    }
    if (root_ == nullptr)
        root_ = node;
    return node;
}

void DomDocument::SetReadChildren(DomNode& node, DomNode* const* children, std::uint32_t count) {
    if (count == 0)
        return;
    node.children = nodes_.AllocateArray<DomNode*>(count);
    std::copy_n(children, count, node.children);
    node.childCount = count;
}

void DomDocument::ForgetBefore(const DomNode& node) noexcept {
    // Nodes and their data are in file order; only child lists come later, when their element ends.
    std::size_t chunk = nodesForgotten_;
    while (chunk < bytesOf_.size() && !nodes_.Holds(chunk, &node))
        ++chunk;
    if (chunk == bytesOf_.size())
        return;
    if (chunk > 0)
        root_ = nullptr;
    while (nodesForgotten_ < chunk)
        nodes_.Discard(nodesForgotten_++);
    while (bytesForgotten_ < bytesOf_[chunk])
        bytes_.Discard(bytesForgotten_++);
}

DomNode* DomDocument::NewElement(std::uint32_t name) {
    // Two tags and typical indentation.
    constexpr std::size_t Marks = 20;
    DomNode* node = ::new (nodes_.AllocateArray<DomNode>(1)) DomNode();
    node->name = name;
    names_.CountElement(name);
    estimatedTextSize_ += 2 * names_.Text(name).size() + Marks;
    return node;
}

// Names in the table are valid, so only new ones are checked.
std::uint32_t DomDocument::InternValid(std::string_view name) {
    const std::uint32_t known = names_.Find(name);
    if (known != DomNames::None)
        return known;
    return IsXmlName(name) ? names_.Intern(name) : DomNames::None;
}

void DomDocument::SetValue(DomAttribute& attribute, std::string_view value) {
    if (value.size() > sizeof attribute.shortBytes)
        attribute.bytes = bytes_.CopyBytes(value);
    else if (!value.empty())
        std::memcpy(attribute.shortBytes, value.data(), value.size());
    attribute.length = static_cast<std::uint32_t>(value.size());
    // Blank, equals sign and quotes.
    constexpr std::size_t Marks = 4;
    estimatedTextSize_ += names_.Text(attribute.name).size() + value.size() + Marks;
}

template<class T>
T* DomDocument::WithRoomForOneMore(T* items, std::uint32_t count, bool grown) {
    const std::uint32_t capacity = Capacity(count, grown);
    if (count < capacity)
        return items;
    const std::uint32_t wanted = Capacity(count + 1, true);
    if (nodes_.Extend(items, capacity * SizeInArena<T>, wanted * SizeInArena<T>))
        return items;
    T* room = nodes_.AllocateArray<T>(wanted);
    std::copy_n(items, count, room);
    return room;
}

} // namespace dyadctx
