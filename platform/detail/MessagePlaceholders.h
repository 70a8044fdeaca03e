// SPDX-License-Identifier: MIT
// Inserts parameters into a message text.
#pragma once

#include "platform/VELUnicodeString.h"

#include <string_view>

namespace dyadctx {

// The text with {0} to {9} replaced by the parameter of that number, and "{{" and "}}" by a single
// brace. Parameters are inserted verbatim and not scanned again; one beyond `count` is empty.
// Anything else in braces stays; so do all placeholders when there is a count but no parameters.
// May throw std::bad_alloc.
VELUnicodeString FillPlaceholders(std::string_view text, const VELUnicodeString* parameters,
                                  int count);

} // namespace dyadctx
