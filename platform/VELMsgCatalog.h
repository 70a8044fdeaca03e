// SPDX-License-Identifier: MIT
// The texts a person reads, looked up by catalog and key.
//
// The built-in catalog has English, French, German and Japanese. The language comes from the
// environment variable VELMessageLanguage, else LC_ALL, LC_MESSAGES, LANG (on Windows the user's
// display language); it falls back from region to language to English. A folder named by
// VELMessageCatalogPath overrides texts with <catalog>.<language>.mo. Both are read when the first
// text is built, and again by SetLanguage.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELResult.h"
#include "platform/VELString.h"
#include "platform/VELUnicodeString.h"

// Implemented by a host to bring its own texts.
class VELDYADCTX_EXPORT VELMsgCatalogSource {
public:
    virtual ~VELMsgCatalogSource();
    // Builds the text of `key` with `count` parameters (`parameters` may be null if there are
    // none). A negative code when the key is unknown; the text is then ignored.
    virtual VELResult Build(const VELString& catalog, const VELString& key,
                            const VELUnicodeString* parameters, int count,
                            VELUnicodeString& text) = 0;
};

class VELDYADCTX_EXPORT VELMsgCatalog {
public:
    // The name of the catalog of what the check and the tool say beyond the library's messages; the
    // id of a finding is the key of its text.
    static constexpr const char* OwnCatalog = "dyadctx";

    // The text of `key` with {0} to {9} replaced by `parameters`; `defaultText` when the catalog or
    // the key is unknown. A parameter is inserted verbatim; a missing one is empty; a count without
    // parameters leaves the placeholders. Empty when memory runs out. The last argument is not
    // used.
    static VELUnicodeString BuildMessage(const VELString& catalog, const VELString& key,
                                         const VELUnicodeString* parameters, int count,
                                         const VELUnicodeString& defaultText,
                                         const void* unused = nullptr);

    // Replaces the built-in catalog with a host's source and returns the previous one (null for the
    // built-in one). Null restores it. The host keeps ownership.
    static VELMsgCatalogSource* SetSource(VELMsgCatalogSource* source) noexcept;

    // The built-in catalog, for a host's source that extends it.
    static VELMsgCatalogSource& BuiltInSource() noexcept;

    // Sets the built-in catalog's language, as a tag such as "fr" or "de-AT"; an unknown one means
    // English. Null: as the environment says.
    static void SetLanguage(const char* tag);

    // Whether the built-in catalog or the folder of VELMessageCatalogPath has texts for that tag,
    // so that SetLanguage would not fall back to English. False without memory.
    static bool HasLanguage(const char* tag);
};
