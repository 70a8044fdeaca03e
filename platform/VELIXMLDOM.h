// SPDX-License-Identifier: MIT
// XML documents as trees: read, create and write them.
//
// The VELIDOM... classes are handles: cheap to copy, null until filled, and keeping their document
// alive. Nodes belong to their document. Using a null handle throws VELNullHandleError. Use a
// document and all its handles from one thread at a time.
//
// Element and attribute names are plain: prefixes and namespace declarations have no meaning.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELListVal.h"
#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

namespace dyadctx {
class DomDocument;
struct DomAccess;
struct DomNode;
struct DomAttribute;
} // namespace dyadctx

class VELIDOMNodeList;

// Shares a document; the last handle frees it with all its nodes.
class VELDYADCTX_EXPORT VELIDOMHandle {
public:
    VELIDOMHandle() noexcept = default;
    VELIDOMHandle(const VELIDOMHandle& other) noexcept;
    VELIDOMHandle(VELIDOMHandle&& other) noexcept;
    VELIDOMHandle& operator=(const VELIDOMHandle& other) noexcept;
    VELIDOMHandle& operator=(VELIDOMHandle&& other) noexcept;
    ~VELIDOMHandle();

    bool IsNull() const noexcept { return document_ == nullptr; }

protected:
    explicit VELIDOMHandle(dyadctx::DomDocument* document) noexcept;
    // Throws VELNullHandleError when the handle is null.
    dyadctx::DomDocument& Document() const;
    dyadctx::DomDocument* DocumentOrNull() const noexcept { return document_; }

private:
    friend struct dyadctx::DomAccess;
    dyadctx::DomDocument* document_ = nullptr;
};

// A snapshot of an element's attribute: fetch it again after SetAttribute.
class VELDYADCTX_EXPORT VELIDOMAttr : public VELIDOMHandle {
public:
    VELIDOMAttr() noexcept = default;
    VELResult GetName(VELUnicodeString& name) const;
    VELResult GetValue(VELUnicodeString& value) const;

private:
    friend class VELIDOMElement;
    VELIDOMAttr(dyadctx::DomDocument* document, const dyadctx::DomAttribute* attribute) noexcept;
    const dyadctx::DomAttribute* attribute_ = nullptr;
};

// A child of an element: an element, or a text, comment or processing instruction. The latter have
// no name or content here, only a position.
class VELDYADCTX_EXPORT VELIDOMNode : public VELIDOMHandle {
public:
    VELIDOMNode() noexcept = default;

    // E_FAIL, with `name` unchanged, for non-elements.
    VELResult GetTagName(VELUnicodeString& name) const;
    // All children in document order; empty for a node without children.
    VELResult GetChildNodes(VELIDOMNodeList& children) const;
    // Appends a parentless element of the same document. E_FAIL for anything else, and for an
    // element that would become its own descendant.
    VELResult AppendChild(const VELIDOMNode& child) const;

    // Where the element begins in its file: line and column from 1 (columns in bytes, in UTF-16 in
    // code units); 0 if it was not read from a file or is not an element. An element from an entity
    // has the place where the entity is used.
    int GetLine() const;
    int GetColumn() const;

protected:
    friend class VELIDOMNodeList;
    VELIDOMNode(dyadctx::DomDocument* document, dyadctx::DomNode* node) noexcept;
    // Throws VELNullHandleError when the handle is null; returns null for non-elements.
    dyadctx::DomNode* Node() const;

private:
    friend struct dyadctx::DomAccess;
    dyadctx::DomNode* node_ = nullptr;
};

class VELDYADCTX_EXPORT VELIDOMElement : public VELIDOMNode {
public:
    VELIDOMElement() noexcept = default;
    // Null when the node is not an element.
    explicit VELIDOMElement(const VELIDOMNode& node) noexcept;

    // E_FAIL and a null handle when the element has no such attribute.
    VELResult GetAttributeNode(const VELUnicodeString& name, VELIDOMAttr& attribute) const;
    int GetNbAttributes() const;
    // Positions start at 0, in file order. E_FAIL and a null handle when out of range.
    VELResult GetAttributeAtIndex(int index, VELIDOMAttr& attribute) const;
    // Adds or replaces; a replaced attribute keeps its position. E_FAIL for an invalid name.
    VELResult SetAttribute(const VELUnicodeString& name, const VELUnicodeString& value) const;
    // The descendants of that name in document order, without the element itself; at most `atMost`
    // when that is above 0. The list lives as long as the document.
    VELResult GetElementsByTagName(const VELUnicodeString& name, VELIDOMNodeList& elements,
                                   int atMost = 0) const;

private:
    friend class VELIDOMDocument;
    VELIDOMElement(dyadctx::DomDocument* document, dyadctx::DomNode* node) noexcept;
};

// Children or search results, at positions 0 to GetLength() - 1.
class VELDYADCTX_EXPORT VELIDOMNodeList : public VELIDOMHandle {
public:
    VELIDOMNodeList() noexcept = default;
    // 0 for the null handle.
    int GetLength() const noexcept;
    // Constant time. E_FAIL and a null handle when out of range.
    VELResult Item(int index, VELIDOMNode& node) const;

private:
    friend class VELIDOMNode;
    friend class VELIDOMElement;
    VELIDOMNodeList(dyadctx::DomDocument* document, dyadctx::DomNode* const* nodes,
                    int length) noexcept;
    dyadctx::DomNode* const* nodes_ = nullptr;
    int length_ = 0;
};

class VELDYADCTX_EXPORT VELIDOMDocument : public VELIDOMHandle {
public:
    VELIDOMDocument() noexcept = default;
    // E_FAIL and a null handle when the document has none.
    VELResult GetDocumentElement(VELIDOMElement& element) const;
    // A new element without a parent. E_FAIL for an invalid name.
    VELResult CreateElement(const VELUnicodeString& name, VELIDOMElement& element) const;
    // Makes `element` the document element. E_FAIL if there already is one.
    VELResult AppendChild(const VELIDOMElement& element) const;

private:
    friend class VELIXMLDOMDocumentBuilder;
    explicit VELIDOMDocument(dyadctx::DomDocument* document) noexcept;
};

// Called with why and where reading failed. Line and column as in VELIDOMNode, 0 when the reason
// has no place in the file. The reason is in the language of the messages and valid during the
// call. Exceptions are ignored.
class VELDYADCTX_EXPORT VELISAXErrorHandler {
public:
    virtual ~VELISAXErrorHandler();
    virtual void FatalError(int line, int column, const char* reason) = 0;
};

// Accepted but never called: nothing outside the document is ever loaded.
class VELDYADCTX_EXPORT VELISAXEntityResolver {
public:
    virtual ~VELISAXEntityResolver();
};

enum VELXMLParserClass { CLSID_XML4C_DOM = 1, CLSID_MSXML6_DOM = 2 };

// Reads, creates and writes documents.
class VELDYADCTX_EXPORT VELIXMLDOMDocumentBuilder {
public:
    VELIXMLDOMDocumentBuilder() noexcept = default;
    bool IsNull() const noexcept { return parserClass_ == 0; }

    // Reads a file. E_FAIL and a null document when it cannot be read, is not well-formed, or nests
    // elements more than 5,000 deep. The options are two parallel lists without effect: the
    // behaviour is always that of "VELDoValidation" "false". `errors` and `entities` may be null.
    VELResult Parse(const VELUnicodeString& file, VELISAXErrorHandler* errors,
                    VELISAXEntityResolver* entities, const VELListValVELUnicodeString& optionNames,
                    const VELListValVELUnicodeString& optionValues,
                    VELIDOMDocument& document) const;
    // Like Parse, for a text that holds the bytes of a file, in any encoding.
    VELResult ParseText(const VELUnicodeString& text, VELISAXErrorHandler* errors,
                        VELIDOMDocument& document) const;

    // Creates an empty document.
    VELResult CreateDocument(VELIDOMDocument& document) const;

    // Writes a document's elements; anything else it held when read is dropped. Options:
    // "VELEncoding" ("UTF-8" only), "VELIndentation" ("1" writes one element per line); unknown
    // ones are ignored. An existing file is replaced as a whole or not at all. E_FAIL when there is
    // no document element, a text holds a character XML does not allow, or the file cannot be
    // written; an existing file is then untouched.
    VELResult Write(const VELIDOMDocument& document, const VELUnicodeString& file,
                    const VELListValVELUnicodeString& optionNames,
                    const VELListValVELUnicodeString& optionValues) const;
    // Returns the same bytes as text; on failure `text` is unchanged.
    VELResult WriteText(const VELIDOMDocument& document, VELUnicodeString& text,
                        const VELListValVELUnicodeString& optionNames,
                        const VELListValVELUnicodeString& optionValues) const;

private:
    friend VELDYADCTX_EXPORT VELResult
    CreateVELIXMLDOMDocumentBuilder(VELIXMLDOMDocumentBuilder& builder, int parserClass);
    int parserClass_ = 0;
};

// Creates either of the two classes above; both can do everything. E_FAIL and a null builder for
// any other number.
VELDYADCTX_EXPORT VELResult CreateVELIXMLDOMDocumentBuilder(VELIXMLDOMDocumentBuilder& builder,
                                                            int parserClass);
