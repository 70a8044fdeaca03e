// Puts parameters into the text of a message.
#pragma once

#include "platform/VELUnicodeString.h"

#include <string_view>

namespace dyadctx {

// The text with {0} to {9} replaced by the parameter of that number, and "{{" and "}}" by a single
// brace. A parameter is put in as it is and not looked at again. One beyond `count` is empty.
// Whatever else stands in braces stays as it is; so do all placeholders when there is a count but
// no parameters. May throw std::bad_alloc.
VELUnicodeString FillPlaceholders(std::string_view text, const VELUnicodeString* parameters,
                                  int count);

} // namespace dyadctx
