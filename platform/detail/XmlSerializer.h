// Writes a document as text.
//
// Only elements are written: the XML declaration, then one element per line or all in one line.
// What stands between the elements of a document that was read is not kept.
#pragma once

#include "platform/detail/DomDocument.h"

#include <string>

namespace dyadctx {

enum class XmlLayout { OneLine, Indented };

// False when the document has no element or a value holds what XML cannot carry. Throws
// std::bad_alloc.
bool SerializeXml(const DomDocument& document, XmlLayout layout, std::string& text);

} // namespace dyadctx
