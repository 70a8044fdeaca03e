// SPDX-License-Identifier: MIT
#include "trace/detail/UserMessage.h"

#include "platform/VELMsgCatalog.h"
#include "trace/VELDyadMessageKeys.h"

#include <exception>

namespace dyadctx {

namespace {

// Volatile, so that the name is a text of the library however much is optimised.
const char* const volatile LibraryCatalog = key::Catalog;

} // namespace

VELUnicodeString CatalogText(const char* key, const VELUnicodeString* parameters, int count) {
    try {
        return VELMsgCatalog::BuildMessage(VELString(LibraryCatalog), VELString(key), parameters,
                                           count, VELUnicodeString(), nullptr);
    } catch (const std::exception&) {
        return {};
    }
}

void AppendCatalogText(VELUnicodeString& message, const char* key,
                       const VELUnicodeString* parameters, int count, int newLine) {
    // Built first, then appended: a parameter may be `message`, and a failure must not leave half.
    VELUnicodeString text = CatalogText(key, parameters, count);
    if (newLine != 0)
        text.Append("\n");
    message.Append(text);
}

} // namespace dyadctx
