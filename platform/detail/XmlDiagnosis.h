// SPDX-License-Identifier: MIT
// Explains why the parser refused a document.
//
// The parser reports little more than where it stopped. The text from the last tag before that
// place shows what was left out or is too much, so it is read again, in pieces.
#pragma once

#include "platform/detail/XmlParser.h"

namespace dyadctx {

// Gives a failure from ParseXml a better reason and the place of the faulty character. Leaves it
// unchanged if there is none, if the source cannot be rewound or read, and without memory.
void DiagnoseXml(XmlSource& source, XmlFailure& failure) noexcept;

} // namespace dyadctx
