// What XML 1.0 allows in names and values.
#pragma once

#include <string_view>

namespace dyadctx {

// A name that the parser will take again. Throws std::bad_alloc.
bool IsXmlName(std::string_view name);

// Whether XML can carry a character of UTF-8 text, as platform/detail/Utf8.h divides it. A byte
// that is not part of well-formed UTF-8 cannot be carried.
bool IsXmlCharacter(std::string_view character) noexcept;

} // namespace dyadctx
