// SPDX-License-Identifier: MIT
// User messages from the library's catalogs.
#pragma once

#include "platform/VELUnicodeString.h"
#include "platform/detail/OwnText.h"

namespace dyadctx {

// The text of a key with its parameters; empty if the catalog lacks it.
VELUnicodeString CatalogText(const char* key, const VELUnicodeString* parameters = nullptr,
                             int count = 0);

// Appends a text of the library's catalog, and a line feed if `newLine` is not 0. A parameter may
// be `message` itself.
void AppendCatalogText(VELUnicodeString& message, const char* key,
                       const VELUnicodeString* parameters, int count, int newLine);

} // namespace dyadctx
