// What XML 1.0 allows in names and values.
#pragma once

#include <cstdint>
#include <string_view>

namespace dyadctx {

// What a name of ASCII begins with and is made of.
constexpr bool IsAsciiNameStart(char c) noexcept {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':';
}
constexpr bool IsAsciiNamePart(char c) noexcept {
    return IsAsciiNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

// A name that the parser will take again. Throws std::bad_alloc.
bool IsXmlName(std::string_view name);

// Whether XML can carry a character of UTF-8 text, as platform/detail/Utf8.h divides it. A byte
// that is not part of well-formed UTF-8 cannot be carried.
bool IsXmlCharacter(std::string_view character) noexcept;
// The same of a character by its number.
bool IsXmlCharacter(std::uint32_t number) noexcept;

} // namespace dyadctx
