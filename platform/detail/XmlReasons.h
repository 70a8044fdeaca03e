// Why a file is no document, in words for its author.
#pragma once

#include <expat.h>

namespace dyadctx {

const char* ReasonFor(XML_Error error) noexcept;

inline constexpr const char* UnreadableReason = "the file cannot be read";
inline constexpr const char* NoMemoryReason = "there is not enough memory to read the file";
inline constexpr const char* UnfinishedReason = "the file ends while an element is still open";
inline constexpr const char* TooDeepReason = "the elements are nested more than 5000 deep";

} // namespace dyadctx
