// Finds the words for a fault once the parser has refused a document.
//
// The parser says little more than where it stopped. The text from the last tag before that place
// shows what the author has left out or written too much; it is read again for that, in pieces.
#pragma once

#include "platform/detail/XmlParser.h"

namespace dyadctx {

// Gives a failure that ParseXml has told the words and the place of the character at fault. It
// stays as it is where there are no better ones, when the source cannot go back to its start or be
// read, and when memory runs out.
void DiagnoseXml(XmlSource& source, XmlFailure& failure) noexcept;

} // namespace dyadctx
