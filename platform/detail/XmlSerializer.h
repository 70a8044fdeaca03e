// SPDX-License-Identifier: MIT
// Writes a document as text.
//
// Only the XML declaration and the elements, one per line or all on one line; anything between the
// elements is dropped.
#pragma once

#include "platform/detail/DomDocument.h"

#include <string>

namespace dyadctx {

enum class XmlLayout { OneLine, Indented };

// False if the document has no element or a value holds what XML does not allow. Throws
// std::bad_alloc.
bool SerializeXml(const DomDocument& document, XmlLayout layout, std::string& text);

} // namespace dyadctx
