// Characters of UTF-8 text. A byte that is not part of well-formed UTF-8 is a character by itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace dyadctx {

// The number of bytes of the character at the start of a text that is not empty.
std::size_t CharacterLength(std::string_view text) noexcept;

// Appends the character of that number, which is one of Unicode and no surrogate.
void AppendCharacter(std::uint32_t character, std::string& text);

// The number of characters.
int CountCharacters(std::string_view text) noexcept;

// Whether the first characters of a text are those of `characters`. Equal bytes are not enough: the
// last of them may be the beginning of a longer character.
bool BeginsWithCharacters(std::string_view text, std::string_view characters) noexcept;

// Where the character at `position` begins, or the end for the position behind the last one; npos
// for any other position.
std::size_t OffsetOfCharacter(std::string_view text, int position) noexcept;

} // namespace dyadctx
