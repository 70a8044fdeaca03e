// SPDX-License-Identifier: MIT
#include "platform/VELIXMLDOM.h"

#include "platform/VELBaseUnknown_var.h"
#include "platform/detail/DomDocument.h"

#include <utility>

using dyadctx::DomDocument;
using dyadctx::DomNode;

namespace {

// Runs an operation that may allocate.
template<class Operation>
VELResult WithoutExceptions(Operation operation) noexcept {
    try {
        return operation() ? S_OK : E_FAIL;
    } catch (...) {
        return E_FAIL;
    }
}

VELResult Assign(VELUnicodeString& target, std::string_view text) noexcept {
    return WithoutExceptions([&] {
        target = VELUnicodeString(text);
        return true;
    });
}

} // namespace

VELIDOMHandle::VELIDOMHandle(DomDocument* document) noexcept : document_(document) {
    if (document_ != nullptr)
        document_->AddReference();
}

VELIDOMHandle::VELIDOMHandle(const VELIDOMHandle& other) noexcept
    : VELIDOMHandle(other.document_) {}

VELIDOMHandle::VELIDOMHandle(VELIDOMHandle&& other) noexcept
    : document_(std::exchange(other.document_, nullptr)) {}

VELIDOMHandle& VELIDOMHandle::operator=(const VELIDOMHandle& other) noexcept {
    if (document_ != other.document_)
        *this = VELIDOMHandle(other);
    return *this;
}

VELIDOMHandle& VELIDOMHandle::operator=(VELIDOMHandle&& other) noexcept {
    if (this == &other)
        return *this;
    DomDocument* former = std::exchange(document_, std::exchange(other.document_, nullptr));
    if (former != nullptr)
        former->Release();
    return *this;
}

VELIDOMHandle::~VELIDOMHandle() {
    if (document_ != nullptr)
        document_->Release();
}

DomDocument& VELIDOMHandle::Document() const {
    if (document_ == nullptr)
        VELBaseUnknown_var::ThrowErrorNullVar();
    return *document_;
}

VELIDOMAttr::VELIDOMAttr(DomDocument* document, const dyadctx::DomAttribute* attribute) noexcept
    : VELIDOMHandle(document), attribute_(attribute) {}

VELResult VELIDOMAttr::GetName(VELUnicodeString& name) const {
    return Assign(name, Document().Names().Text(attribute_->name));
}

VELResult VELIDOMAttr::GetValue(VELUnicodeString& value) const {
    Document();
    return Assign(value, attribute_->Value());
}

VELIDOMNode::VELIDOMNode(DomDocument* document, DomNode* node) noexcept
    : VELIDOMHandle(document), node_(node) {}

DomNode* VELIDOMNode::Node() const {
    Document();
    return node_;
}

VELResult VELIDOMNode::GetTagName(VELUnicodeString& name) const {
    const DomNode* node = Node();
    if (node == nullptr)
        return E_FAIL;
    return Assign(name, Document().TagName(*node));
}

VELResult VELIDOMNode::GetChildNodes(VELIDOMNodeList& children) const {
    const DomNode* node = Node();
    children = node != nullptr ? VELIDOMNodeList(DocumentOrNull(), node->children,
                                                 static_cast<int>(node->childCount))
                               : VELIDOMNodeList(DocumentOrNull(), nullptr, 0);
    return S_OK;
}

VELResult VELIDOMNode::AppendChild(const VELIDOMNode& child) const {
    DomNode* node = Node();
    DomNode* added = child.Node();
    if (node == nullptr || added == nullptr || child.DocumentOrNull() != DocumentOrNull())
        return E_FAIL;
    return WithoutExceptions([&] { return Document().AppendChild(*node, *added); });
}

int VELIDOMNode::GetLine() const {
    const DomNode* node = Node();
    return node != nullptr ? static_cast<int>(node->Position().line) : 0;
}

int VELIDOMNode::GetColumn() const {
    const DomNode* node = Node();
    return node != nullptr ? static_cast<int>(node->Position().column) : 0;
}

VELIDOMElement::VELIDOMElement(const VELIDOMNode& node) noexcept : VELIDOMNode(node) {
    if (!IsNull() && Node() == nullptr)
        *this = VELIDOMElement();
}

VELIDOMElement::VELIDOMElement(DomDocument* document, DomNode* node) noexcept
    : VELIDOMNode(document, node) {}

VELResult VELIDOMElement::GetAttributeNode(const VELUnicodeString& name,
                                           VELIDOMAttr& attribute) const {
    const dyadctx::DomAttribute* found = Document().FindAttribute(*Node(), name.AsView());
    if (found == nullptr) {
        attribute = VELIDOMAttr();
        return E_FAIL;
    }
    attribute = VELIDOMAttr(DocumentOrNull(), found);
    return S_OK;
}

int VELIDOMElement::GetNbAttributes() const {
    return static_cast<int>(Node()->attributeCount);
}

VELResult VELIDOMElement::GetAttributeAtIndex(int index, VELIDOMAttr& attribute) const {
    const DomNode& node = *Node();
    if (index < 0 || index >= static_cast<int>(node.attributeCount)) {
        attribute = VELIDOMAttr();
        return E_FAIL;
    }
    attribute = VELIDOMAttr(DocumentOrNull(), &node.attributes[index]);
    return S_OK;
}

VELResult VELIDOMElement::SetAttribute(const VELUnicodeString& name,
                                       const VELUnicodeString& value) const {
    DomNode* node = Node();
    return WithoutExceptions(
        [&] { return Document().SetAttribute(*node, name.AsView(), value.AsView()); });
}

VELResult VELIDOMElement::GetElementsByTagName(const VELUnicodeString& name,
                                               VELIDOMNodeList& elements, int atMost) const {
    const DomNode* node = Node();
    VELIDOMNodeList found;
    const VELResult result = WithoutExceptions([&] {
        const auto span = Document().ElementsByTagName(*node, name.AsView(), atMost);
        found = VELIDOMNodeList(DocumentOrNull(), span.nodes, static_cast<int>(span.length));
        return true;
    });
    elements = std::move(found);
    return result;
}

VELIDOMNodeList::VELIDOMNodeList(DomDocument* document, DomNode* const* nodes, int length) noexcept
    : VELIDOMHandle(document), nodes_(nodes), length_(length) {}

int VELIDOMNodeList::GetLength() const noexcept {
    return length_;
}

VELResult VELIDOMNodeList::Item(int index, VELIDOMNode& node) const {
    Document();
    if (index < 0 || index >= length_) {
        node = VELIDOMNode();
        return E_FAIL;
    }
    // Iterating with one handle does not touch the document's reference count.
    if (node.DocumentOrNull() == DocumentOrNull())
        node.node_ = nodes_[index];
    else
        node = VELIDOMNode(DocumentOrNull(), nodes_[index]);
    return S_OK;
}

VELIDOMDocument::VELIDOMDocument(DomDocument* document) noexcept : VELIDOMHandle(document) {}

VELResult VELIDOMDocument::GetDocumentElement(VELIDOMElement& element) const {
    DomNode* root = Document().Root();
    if (root == nullptr) {
        element = VELIDOMElement();
        return E_FAIL;
    }
    element = VELIDOMElement(DocumentOrNull(), root);
    return S_OK;
}

VELResult VELIDOMDocument::CreateElement(const VELUnicodeString& name,
                                         VELIDOMElement& element) const {
    DomDocument& document = Document();
    VELIDOMElement created;
    const VELResult result = WithoutExceptions([&] {
        DomNode* node = document.CreateElement(name.AsView());
        if (node != nullptr)
            created = VELIDOMElement(&document, node);
        return node != nullptr;
    });
    element = std::move(created);
    return result;
}

VELResult VELIDOMDocument::AppendChild(const VELIDOMElement& element) const {
    Document();
    DomNode* root = element.Node();
    if (element.DocumentOrNull() != DocumentOrNull())
        return E_FAIL;
    return Document().AppendRoot(*root) ? S_OK : E_FAIL;
}

VELISAXErrorHandler::~VELISAXErrorHandler() = default;

VELISAXEntityResolver::~VELISAXEntityResolver() = default;
