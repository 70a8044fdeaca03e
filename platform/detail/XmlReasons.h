// Why a file is not a document, in words for its author.
#pragma once

#include <expat.h>

namespace dyadctx {

const char* ReasonFor(XML_Error error) noexcept;

// Faults the parser has no name for; {0} and so on are filled in.
namespace reason {
inline constexpr const char* BareAmpersand =
    "\"&\" begins a reference such as \"&amp;\"; the character itself is written \"&amp;\"";
inline constexpr const char* OpenValue =
    "the value of \"{0}\" that begins at line {1}, column {2} has no closing quote";
inline constexpr const char* LessThanInValue =
    "\"<\" is not allowed in a value; it is written \"&lt;\"";
inline constexpr const char* NotUtf8 =
    "the byte {0} is not UTF-8; save the file as UTF-8 or declare its encoding";
inline constexpr const char* NulCharacter = "the file contains a NUL character here";
inline constexpr const char* ForbiddenCharacter = "XML does not allow the character {0}";
inline constexpr const char* DashesInComment = "\"--\" is not allowed inside a comment";
inline constexpr const char* TypographicQuote =
    "this is a typographic quote; values are put in \" or '";
inline constexpr const char* MissingBlank = "a blank is missing after the value of \"{0}\"";
inline constexpr const char* MissingEquals =
    "\"=\" and a value in quotes are missing after the attribute \"{0}\"";
inline constexpr const char* MissingQuotes = "the value of \"{0}\" is not in quotes";
inline constexpr const char* UndeclaredEntity = "the entity \"{0}\" is not declared";
inline constexpr const char* WrongEndTag =
    "the end tag \"{0}\" does not belong to the open element \"{1}\", which begins at line {2}, "
    "column {3}";
} // namespace reason

inline constexpr const char* UnreadableReason = "the file cannot be read";
inline constexpr const char* NoMemoryReason = "there is not enough memory to read the file";
inline constexpr const char* UnfinishedReason = "the file ends while an element is still open";
inline constexpr const char* TooDeepReason = "the elements are nested more than 5000 deep";

} // namespace dyadctx
