// Characters of UTF-8 text. A byte that is not part of well-formed UTF-8 is its own character.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace dyadctx {

// The length in bytes of the first character of a non-empty text.
std::size_t CharacterLength(std::string_view text) noexcept;

// Appends a Unicode character by its number, which must not be a surrogate.
void AppendCharacter(std::uint32_t character, std::string& text);

// The number of characters.
int CountCharacters(std::string_view text) noexcept;

// Whether a text starts with the characters of `characters`. Equal bytes are not enough: the last
// ones may begin a longer character.
bool BeginsWithCharacters(std::string_view text, std::string_view characters) noexcept;

// The byte offset of the character at `position`, or of the end for the position after the last
// character; npos for any other.
std::size_t OffsetOfCharacter(std::string_view text, int position) noexcept;

} // namespace dyadctx
