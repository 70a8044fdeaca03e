// Messages for the user: texts of the library's catalog.
#pragma once

#include "platform/VELUnicodeString.h"

namespace dyadctx {

// The text of a key with its parameters; empty when the catalog lacks it.
VELUnicodeString CatalogText(const char* key, const VELUnicodeString* parameters = nullptr,
                             int count = 0);

// The same of the catalog of the check of a file. A host's source that lacks the key leaves the
// built-in text.
VELUnicodeString OwnText(const char* key, const VELUnicodeString* parameters = nullptr,
                         int count = 0);

// Adds that text of the library's catalog, and a line feed when `newLine` is not 0. A parameter may
// be `message` itself.
void AppendCatalogText(VELUnicodeString& message, const char* key,
                       const VELUnicodeString* parameters, int count, int newLine);

} // namespace dyadctx
