// SPDX-License-Identifier: MIT
// Texts of the check and of the tool beyond the library's messages.
#pragma once

#include "platform/VELUnicodeString.h"

namespace dyadctx {

// The text of a key with its parameters. If a host's source lacks the key, the built-in text. Empty
// without memory.
VELUnicodeString OwnText(const char* key, const VELUnicodeString* parameters = nullptr,
                         int count = 0) noexcept;

} // namespace dyadctx
