// SPDX-License-Identifier: MIT
// Why a file is not a document, by keys of the catalog of own texts.
#pragma once

#include "platform/VELUnicodeString.h"

#include <expat.h>
#include <vector>

namespace dyadctx {

const char* ReasonFor(XML_Error error) noexcept;

namespace reason {
// Faults the parser has no name for; those with parameters tell them.
inline constexpr const char* BareAmpersand = "xml.bare-ampersand";
// Attribute, line, column.
inline constexpr const char* OpenValue = "xml.open-value";
inline constexpr const char* LessThanInValue = "xml.less-than-in-value";
// The byte.
inline constexpr const char* NotUtf8 = "xml.not-utf-8";
inline constexpr const char* NulCharacter = "xml.nul";
// The character.
inline constexpr const char* ForbiddenCharacter = "xml.forbidden-character";
inline constexpr const char* DashesInComment = "xml.dashes-in-comment";
inline constexpr const char* TypographicQuote = "xml.typographic-quote";
// Attribute.
inline constexpr const char* MissingBlank = "xml.missing-blank";
inline constexpr const char* MissingEquals = "xml.missing-equals";
inline constexpr const char* MissingQuotes = "xml.missing-quotes";
// Entity.
inline constexpr const char* UndeclaredEntity = "xml.undeclared-entity";
// End tag, open element, line, column.
inline constexpr const char* WrongEndTag = "xml.wrong-end-tag";

inline constexpr const char* Unreadable = "xml.unreadable";
inline constexpr const char* Unfinished = "xml.unfinished";
inline constexpr const char* TooDeep = "xml.too-deep";
// No key: its text must need no memory.
inline constexpr const char* NoMemory = "there is not enough memory to read the file";
} // namespace reason

// In the language of the messages. Empty for NoMemory, and without memory.
VELUnicodeString TextOfReason(const char* reason, const std::vector<VELUnicodeString>& parameters);

} // namespace dyadctx
