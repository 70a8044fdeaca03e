// SPDX-License-Identifier: MIT
// What XML 1.0 allows in names and values.
#pragma once

#include <cstdint>
#include <string_view>

namespace dyadctx {

// The characters an ASCII name starts with and consists of.
constexpr bool IsAsciiNameStart(char c) noexcept {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':';
}
constexpr bool IsAsciiNamePart(char c) noexcept {
    return IsAsciiNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

// Whether the parser accepts the name. Throws std::bad_alloc.
bool IsXmlName(std::string_view name);

// Whether XML allows a character of UTF-8 text, as split by platform/detail/Utf8.h. A byte that is
// not part of well-formed UTF-8 is not allowed.
bool IsXmlCharacter(std::string_view character) noexcept;
// The same for a character's number.
bool IsXmlCharacter(std::uint32_t number) noexcept;

} // namespace dyadctx
