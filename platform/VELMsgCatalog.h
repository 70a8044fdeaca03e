// The texts a person reads, looked up by catalog and key.
//
// The built-in catalog speaks English, French, German and Japanese. The language is the environment
// variable VELMessageLanguage, else LC_ALL, LC_MESSAGES, LANG (on Windows the user's display
// language); it falls back from region to language to English. A folder named by
// VELMessageCatalogPath overrides texts with <catalog>.<language>.mo. Both are read once, when the
// first text is built, and again by SetLanguage.
#pragma once

#include "platform/VELExport.h"
#include "platform/VELResult.h"
#include "platform/VELString.h"
#include "platform/VELUnicodeString.h"

// What a host implements to bring its own texts.
class VELDYADCTX_EXPORT VELMsgCatalogSource {
public:
    virtual ~VELMsgCatalogSource();
    // Builds the text of `key` with `count` parameters (`parameters` may be null when there are
    // none). A negative code when the key is unknown; the text is then not looked at.
    virtual VELResult Build(const VELString& catalog, const VELString& key,
                            const VELUnicodeString* parameters, int count,
                            VELUnicodeString& text) = 0;
};

class VELDYADCTX_EXPORT VELMsgCatalog {
public:
    // The text of `key` with `parameters` put in the places {0} to {9}; `defaultText` when the
    // catalog or the key is unknown. A parameter is put in as it is, whatever it looks like; a
    // missing one is empty; a count without parameters leaves the places as they are. Without
    // memory the text is empty. The last argument is not used.
    static VELUnicodeString BuildMessage(const VELString& catalog, const VELString& key,
                                         const VELUnicodeString* parameters, int count,
                                         const VELUnicodeString& defaultText,
                                         const void* unused = nullptr);

    // Puts a host's source in place of the built-in catalog and gives the one it replaces (null for
    // the built-in one). Null puts the built-in one back. The source stays the host's.
    static VELMsgCatalogSource* SetSource(VELMsgCatalogSource* source) noexcept;

    // The built-in catalog, for a host's source that wants to add to it.
    static VELMsgCatalogSource& BuiltInSource() noexcept;

    // The language of the built-in catalog from now on, as a tag such as "fr" or "de-AT"; an
    // unknown one means English. Null: as the environment says.
    static void SetLanguage(const char* tag);

    // Whether the built-in catalog or the folder of VELMessageCatalogPath has texts in the language
    // of that tag, so that SetLanguage would not fall back to English. False without memory.
    static bool HasLanguage(const char* tag);
};
