// SPDX-License-Identifier: MIT
#include "support/DomFaults.h"

#include "platform/VELIXMLDOM.h"

#include <cstdlib>
#include <expat.h>

namespace dyadctx::test {

namespace {

DomCall armedCall = DomCall::CreateBuilder;
DomFault armedFault = DomFault::None;
int callsToGo = 0;

// The fault of this call.
DomFault Take(DomCall call) noexcept {
    if (call != armedCall || callsToGo == 0)
        return DomFault::None;
    return --callsToGo == 0 ? armedFault : DomFault::None;
}

// The result of a call that fills `handle`.
template<class Handle, class Real>
VELResult Filling(DomCall call, Handle& handle, Real real) {
    const DomFault fault = Take(call);
    if (fault == DomFault::None)
        return real();
    handle = Handle();
    return fault == DomFault::NullHandle ? S_OK : E_FAIL;
}

// The result of a call that fills none.
template<class Real>
VELResult Changing(DomCall call, Real real) {
    return Take(call) == DomFault::None ? real() : E_FAIL;
}

void* AllocateForParser(std::size_t size) {
    return Take(DomCall::ParserMemory) == DomFault::None ? std::malloc(size) : nullptr;
}

void* ReallocateForParser(void* block, std::size_t size) {
    return Take(DomCall::ParserMemory) == DomFault::None ? std::realloc(block, size) : nullptr;
}

} // namespace

DomFaultScope::DomFaultScope(DomCall call, int nth, DomFault fault) noexcept {
    armedCall = call;
    armedFault = fault;
    callsToGo = nth;
}

DomFaultScope::~DomFaultScope() {
    callsToGo = 0;
}

bool DomFaultScope::HasStruck() noexcept {
    return callsToGo == 0;
}

} // namespace dyadctx::test

// The linker option --wrap=X makes every call of X from another source one of __wrap_X; __real_X is
// then the X that was wrapped. A member function takes its object as the first argument.

using namespace dyadctx::test;

using Builder = VELIXMLDOMDocumentBuilder;
using Text = VELUnicodeString;

VELResult RealCreateBuilder(Builder&, int) __asm__(
    "__real__Z31CreateVELIXMLDOMDocumentBuilderR25VELIXMLDOMDocumentBuilderi");
VELResult CreateBuilder(Builder& builder, int parserClass) __asm__(
    "__wrap__Z31CreateVELIXMLDOMDocumentBuilderR25VELIXMLDOMDocumentBuilderi");
VELResult CreateBuilder(Builder& builder, int parserClass) {
    return Filling(DomCall::CreateBuilder, builder,
                   [&] { return RealCreateBuilder(builder, parserClass); });
}

VELResult RealCreateDocument(const Builder*, VELIDOMDocument&) __asm__(
    "__real__ZNK25VELIXMLDOMDocumentBuilder14CreateDocumentER15VELIDOMDocument");
VELResult CreateDocument(const Builder* builder, VELIDOMDocument& document) __asm__(
    "__wrap__ZNK25VELIXMLDOMDocumentBuilder14CreateDocumentER15VELIDOMDocument");
VELResult CreateDocument(const Builder* builder, VELIDOMDocument& document) {
    return Filling(DomCall::CreateDocument, document,
                   [&] { return RealCreateDocument(builder, document); });
}

VELResult RealGetDocumentElement(const VELIDOMDocument*, VELIDOMElement&) __asm__(
    "__real__ZNK15VELIDOMDocument18GetDocumentElementER14VELIDOMElement");
VELResult GetDocumentElement(const VELIDOMDocument* document, VELIDOMElement& element) __asm__(
    "__wrap__ZNK15VELIDOMDocument18GetDocumentElementER14VELIDOMElement");
VELResult GetDocumentElement(const VELIDOMDocument* document, VELIDOMElement& element) {
    return Filling(DomCall::GetDocumentElement, element,
                   [&] { return RealGetDocumentElement(document, element); });
}

VELResult RealCreateElement(const VELIDOMDocument*, const Text&, VELIDOMElement&) __asm__(
    "__real__ZNK15VELIDOMDocument13CreateElementERK16VELUnicodeStringR14VELIDOMElement");
VELResult
CreateElement(const VELIDOMDocument* document, const Text& name, VELIDOMElement& element) __asm__(
    "__wrap__ZNK15VELIDOMDocument13CreateElementERK16VELUnicodeStringR14VELIDOMElement");
VELResult CreateElement(const VELIDOMDocument* document, const Text& name,
                        VELIDOMElement& element) {
    return Filling(DomCall::CreateElement, element,
                   [&] { return RealCreateElement(document, name, element); });
}

VELResult RealAppendRoot(const VELIDOMDocument*, const VELIDOMElement&) __asm__(
    "__real__ZNK15VELIDOMDocument11AppendChildERK14VELIDOMElement");
VELResult AppendRoot(const VELIDOMDocument* document, const VELIDOMElement& element) __asm__(
    "__wrap__ZNK15VELIDOMDocument11AppendChildERK14VELIDOMElement");
VELResult AppendRoot(const VELIDOMDocument* document, const VELIDOMElement& element) {
    return Changing(DomCall::AppendChild, [&] { return RealAppendRoot(document, element); });
}

VELResult RealAppendChild(const VELIDOMNode*,
                          const VELIDOMNode&) __asm__("__real__ZNK11VELIDOMNode11AppendChildERKS_");
VELResult
AppendChild(const VELIDOMNode* node,
            const VELIDOMNode& child) __asm__("__wrap__ZNK11VELIDOMNode11AppendChildERKS_");
VELResult AppendChild(const VELIDOMNode* node, const VELIDOMNode& child) {
    return Changing(DomCall::AppendChild, [&] { return RealAppendChild(node, child); });
}

VELResult RealGetTagName(const VELIDOMNode*,
                         Text&) __asm__("__real__ZNK11VELIDOMNode10GetTagNameER16VELUnicodeString");
VELResult
GetTagName(const VELIDOMNode* node,
           Text& name) __asm__("__wrap__ZNK11VELIDOMNode10GetTagNameER16VELUnicodeString");
VELResult GetTagName(const VELIDOMNode* node, Text& name) {
    return Changing(DomCall::GetTagName, [&] { return RealGetTagName(node, name); });
}

VELResult RealGetChildNodes(const VELIDOMNode*, VELIDOMNodeList&) __asm__(
    "__real__ZNK11VELIDOMNode13GetChildNodesER15VELIDOMNodeList");
VELResult GetChildNodes(const VELIDOMNode* node, VELIDOMNodeList& children) __asm__(
    "__wrap__ZNK11VELIDOMNode13GetChildNodesER15VELIDOMNodeList");
VELResult GetChildNodes(const VELIDOMNode* node, VELIDOMNodeList& children) {
    return Filling(DomCall::GetChildNodes, children,
                   [&] { return RealGetChildNodes(node, children); });
}

VELResult RealItem(const VELIDOMNodeList*, int,
                   VELIDOMNode&) __asm__("__real__ZNK15VELIDOMNodeList4ItemEiR11VELIDOMNode");
VELResult Item(const VELIDOMNodeList* list, int index,
               VELIDOMNode& node) __asm__("__wrap__ZNK15VELIDOMNodeList4ItemEiR11VELIDOMNode");
VELResult Item(const VELIDOMNodeList* list, int index, VELIDOMNode& node) {
    return Filling(DomCall::Item, node, [&] { return RealItem(list, index, node); });
}

VELResult RealSetAttribute(const VELIDOMElement*, const Text&, const Text&) __asm__(
    "__real__ZNK14VELIDOMElement12SetAttributeERK16VELUnicodeStringS2_");
VELResult SetAttribute(const VELIDOMElement* element, const Text& name, const Text& value) __asm__(
    "__wrap__ZNK14VELIDOMElement12SetAttributeERK16VELUnicodeStringS2_");
VELResult SetAttribute(const VELIDOMElement* element, const Text& name, const Text& value) {
    return Changing(DomCall::SetAttribute, [&] { return RealSetAttribute(element, name, value); });
}

VELResult
RealGetElementsByTagName(const VELIDOMElement*, const Text&, VELIDOMNodeList&, int) __asm__(
    "__real__ZNK14VELIDOMElement20GetElementsByTagNameERK16VELUnicodeStringR15VELIDOMNodeListi");
VELResult GetElementsByTagName(const VELIDOMElement* element, const Text& name,
                               VELIDOMNodeList& elements,
                               int atMost) __asm__("__wrap__"
                                                   "ZNK14VELIDOMElement20GetElementsByTagNameERK16V"
                                                   "ELUnicodeStringR15VELIDOMNodeListi");
VELResult GetElementsByTagName(const VELIDOMElement* element, const Text& name,
                               VELIDOMNodeList& elements, int atMost) {
    return Filling(DomCall::GetElementsByTagName, elements,
                   [&] { return RealGetElementsByTagName(element, name, elements, atMost); });
}

XML_Parser CreateParser(const XML_Char* encoding) __asm__("__wrap_XML_ParserCreate");
XML_Parser CreateParser(const XML_Char* encoding) {
    const XML_Memory_Handling_Suite memory{AllocateForParser, ReallocateForParser, std::free};
    return XML_ParserCreate_MM(encoding, &memory, nullptr);
}
