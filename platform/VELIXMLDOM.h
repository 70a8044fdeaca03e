// XML documents as trees: reading one from a file, making one, writing one to a file.
//
// The classes named VELIDOM... are handles: cheap to copy, null until something fills them, and
// keeping their document alive. Nodes belong to their document and go with it. Using a null handle
// throws VELNullHandleError. A document and all handles on it are used from one thread at a time.
//
// Element and attribute names are plain names; prefixes and namespace declarations mean nothing.
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

// Shares a document; the last handle on it frees it with everything in it.
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

// One attribute of an element, as it was when the handle was filled: after SetAttribute it is to be
// fetched again.
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

// A child of an element: an element, or something else (text, comment, processing instruction)
// that has neither name nor content here, only its place among the children.
class VELDYADCTX_EXPORT VELIDOMNode : public VELIDOMHandle {
public:
    VELIDOMNode() noexcept = default;

    // E_FAIL, and `name` as before, for what is not an element.
    VELResult GetTagName(VELUnicodeString& name) const;
    // All children in document order; an empty list for a node without children.
    VELResult GetChildNodes(VELIDOMNodeList& children) const;
    // Adds an element of the same document that has no parent yet as the last child. E_FAIL for
    // anything else, and for an element that would come to stand below itself.
    VELResult AppendChild(const VELIDOMNode& child) const;

    // Where the element begins in the file it was read from: line and column (in bytes, in UTF-16
    // in units of two bytes) from 1; 0 for what was not read from a file or is not an element. An
    // element out of an entity stands where the entity is used.
    int GetLine() const;
    int GetColumn() const;

protected:
    friend class VELIDOMNodeList;
    VELIDOMNode(dyadctx::DomDocument* document, dyadctx::DomNode* node) noexcept;
    // Throws VELNullHandleError when the handle is null; null for what is not an element.
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
    // Positions run from 0 in the order of the file. E_FAIL and a null handle outside.
    VELResult GetAttributeAtIndex(int index, VELIDOMAttr& attribute) const;
    // Sets or replaces; a replaced attribute keeps its place. E_FAIL for an invalid name.
    VELResult SetAttribute(const VELUnicodeString& name, const VELUnicodeString& value) const;
    // The descendants of that name in document order, without the element itself; at most `atMost`
    // of them when that is above 0. The list found is kept until the document goes.
    VELResult GetElementsByTagName(const VELUnicodeString& name, VELIDOMNodeList& elements,
                                   int atMost = 0) const;

private:
    friend class VELIDOMDocument;
    VELIDOMElement(dyadctx::DomDocument* document, dyadctx::DomNode* node) noexcept;
};

// Children or search results. Positions run from 0 to GetLength() - 1.
class VELDYADCTX_EXPORT VELIDOMNodeList : public VELIDOMHandle {
public:
    VELIDOMNodeList() noexcept = default;
    // 0 for the null handle.
    int GetLength() const noexcept;
    // Constant time. E_FAIL and a null handle outside the list.
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
    // A new element that still has to be appended somewhere. E_FAIL for an invalid name.
    VELResult CreateElement(const VELUnicodeString& name, VELIDOMElement& element) const;
    // Makes `element` the document element. E_FAIL when there is one already.
    VELResult AppendChild(const VELIDOMElement& element) const;

private:
    friend class VELIXMLDOMDocumentBuilder;
    explicit VELIDOMDocument(dyadctx::DomDocument* document) noexcept;
};

// Told why and where a document could not be read. Line and column as in VELIDOMNode, 0 when the
// reason has no place in the file. What it throws goes no further.
class VELDYADCTX_EXPORT VELISAXErrorHandler {
public:
    virtual ~VELISAXErrorHandler();
    virtual void FatalError(int line, int column, const char* reason) = 0;
};

// Nothing outside the document is ever loaded, so there is nothing to resolve: a resolver can be
// handed in, and is not called.
class VELDYADCTX_EXPORT VELISAXEntityResolver {
public:
    virtual ~VELISAXEntityResolver();
};

enum VELXMLParserClass { CLSID_XML4C_DOM = 1, CLSID_MSXML6_DOM = 2 };

// Reads, makes and writes documents.
class VELDYADCTX_EXPORT VELIXMLDOMDocumentBuilder {
public:
    VELIXMLDOMDocumentBuilder() noexcept = default;
    bool IsNull() const noexcept { return parserClass_ == 0; }

    // Reads a file. E_FAIL and a null document when it cannot be read, is not well-formed, or nests
    // its elements more than 5,000 deep. The options are two parallel lists; "VELDoValidation" with
    // "false" is the only behaviour there is. `errors` and `entities` may be null.
    VELResult Parse(const VELUnicodeString& file, VELISAXErrorHandler* errors,
                    VELISAXEntityResolver* entities, const VELListValVELUnicodeString& optionNames,
                    const VELListValVELUnicodeString& optionValues,
                    VELIDOMDocument& document) const;
    // The same for a text: the bytes of a file, in any encoding that a file may have.
    VELResult ParseText(const VELUnicodeString& text, VELISAXErrorHandler* errors,
                        VELIDOMDocument& document) const;

    // An empty document.
    VELResult CreateDocument(VELIDOMDocument& document) const;

    // Writes the elements of a document; what else a document that was read held is not kept.
    // Options: "VELEncoding" ("UTF-8" only), "VELIndentation" ("1" puts every element on a line of
    // its own); unknown ones are ignored. An existing file is replaced as a whole or not at all.
    // E_FAIL when there is no document element, a text holds a character XML cannot carry or the
    // file cannot be written; an existing file is then untouched.
    VELResult Write(const VELIDOMDocument& document, const VELUnicodeString& file,
                    const VELListValVELUnicodeString& optionNames,
                    const VELListValVELUnicodeString& optionValues) const;
    // The same bytes as a text; `text` is as before when there are none.
    VELResult WriteText(const VELIDOMDocument& document, VELUnicodeString& text,
                        const VELListValVELUnicodeString& optionNames,
                        const VELListValVELUnicodeString& optionValues) const;

private:
    friend VELDYADCTX_EXPORT VELResult
    CreateVELIXMLDOMDocumentBuilder(VELIXMLDOMDocumentBuilder& builder, int parserClass);
    int parserClass_ = 0;
};

// A builder of one of the two classes above; both can do everything. E_FAIL and a null builder for
// any other number.
VELDYADCTX_EXPORT VELResult CreateVELIXMLDOMDocumentBuilder(VELIXMLDOMDocumentBuilder& builder,
                                                            int parserClass);
