// SPDX-License-Identifier: MIT
// Documents of a test: read from texts, and shown as texts.
#pragma once

#include "platform/VELIXMLDOM.h"

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::test {

struct DomFailure {
    int line = 0;
    int column = 0;
    std::string reason;
    bool operator==(const DomFailure&) const = default;
};

struct DomReading {
    VELResult result = 0;
    VELIDOMDocument document;
    std::vector<DomFailure> failures;
};

DomReading ReadXmlFile(const std::string& path);
// Reads a text through a file.
DomReading ReadXml(std::string_view text);
// The document of a text that can be read.
VELIDOMDocument DocumentOf(std::string_view text);

VELIXMLDOMDocumentBuilder MakeBuilder();
VELIDOMDocument MakeDocument();
VELIDOMElement MakeElement(const VELIDOMDocument& document, std::string_view name);
// A new element that is the last child of `parent`.
VELIDOMElement AddElement(const VELIDOMDocument& document, const VELIDOMElement& parent,
                          std::string_view name);
// The result of writing with the options of a context file.
VELResult WriteXml(const VELIDOMDocument& document, const std::string& path);

VELIDOMElement RootOf(const VELIDOMDocument& document);
std::vector<VELIDOMNode> ChildrenOf(const VELIDOMNode& node);
// "(none)" for what is not an element.
std::string TagOf(const VELIDOMNode& node);
// "(none)" when there is no such attribute.
std::string AttributeOf(const VELIDOMElement& element, std::string_view name);
// An element and what is in it: `a(b,#,c(d))`, where # is a child that is not an element.
std::string OutlineOf(const VELIDOMNode& node);

// A document that has `depth` elements, each but the last holding the next.
std::string NestedXml(int depth);

} // namespace dyadctx::test
