// SPDX-License-Identifier: MIT
// Characters of UTF-8 text. A byte that is not part of well-formed UTF-8 is its own character.
//
// Complete in this header: the tool, which links the library as any client does, splits texts too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace dyadctx {

struct Utf8Lead {
    std::size_t length;
    // The range of the second byte excludes overlong forms, surrogates and anything beyond
    // U+10FFFF.
    unsigned char secondLow;
    unsigned char secondHigh;
};

inline Utf8Lead ClassifyLead(unsigned char lead) noexcept {
    if (lead >= 0xC2 && lead <= 0xDF)
        return {2, 0x80, 0xBF};
    if (lead == 0xE0)
        return {3, 0xA0, 0xBF};
    if (lead == 0xED)
        return {3, 0x80, 0x9F};
    if (lead >= 0xE1 && lead <= 0xEF)
        return {3, 0x80, 0xBF};
    if (lead == 0xF0)
        return {4, 0x90, 0xBF};
    if (lead >= 0xF1 && lead <= 0xF3)
        return {4, 0x80, 0xBF};
    if (lead == 0xF4)
        return {4, 0x80, 0x8F};
    return {1, 0, 0};
}

// The length in bytes of the first character of a non-empty text.
inline std::size_t CharacterLength(std::string_view text) noexcept {
    const auto byteAt = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const Utf8Lead lead = ClassifyLead(byteAt(0));
    if (lead.length == 1 || text.size() < lead.length)
        return 1;
    if (byteAt(1) < lead.secondLow || byteAt(1) > lead.secondHigh)
        return 1;
    for (std::size_t i = 2; i < lead.length; ++i) {
        if (byteAt(i) < 0x80 || byteAt(i) > 0xBF)
            return 1;
    }
    return lead.length;
}

// The Unicode number of a character split off by CharacterLength; of a single byte its value.
inline std::uint32_t CharacterNumber(std::string_view character) noexcept {
    const auto lead = static_cast<unsigned char>(character.front());
    if (character.size() == 1)
        return lead;
    std::uint32_t number = lead & (0xFFU >> (character.size() + 1));
    for (const char byte : character.substr(1))
        number = number << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    return number;
}

// Appends a Unicode character by its number.
inline void AppendCharacter(std::uint32_t character, std::string& text) {
    const auto byte = [character](std::uint32_t mark, unsigned int shift, std::uint32_t bits) {
        return static_cast<char>(mark | ((character >> shift) & bits));
    };
    if (character < 0x80)
        text += {byte(0, 0, 0x7F)};
    else if (character < 0x800)
        text += {byte(0xC0, 6, 0x1F), byte(0x80, 0, 0x3F)};
    else if (character < 0x10000)
        text += {byte(0xE0, 12, 0x0F), byte(0x80, 6, 0x3F), byte(0x80, 0, 0x3F)};
    else
        text +=
            {byte(0xF0, 18, 0x07), byte(0x80, 12, 0x3F), byte(0x80, 6, 0x3F), byte(0x80, 0, 0x3F)};
}

// The number of characters.
inline int CountCharacters(std::string_view text) noexcept {
    int count = 0;
    for (std::size_t offset = 0; offset < text.size(); ++count)
        offset += CharacterLength(text.substr(offset));
    return count;
}

// Whether a text starts with the characters of `characters`. Equal bytes are not enough: the last
// ones may begin a longer character.
inline bool BeginsWithCharacters(std::string_view text, std::string_view characters) noexcept {
    if (!text.starts_with(characters))
        return false;
    std::size_t offset = 0;
    while (offset < characters.size())
        offset += CharacterLength(text.substr(offset));
    return offset == characters.size();
}

// The byte offset of the character at `position`, or of the end for the position after the last
// character; npos for any other.
inline std::size_t OffsetOfCharacter(std::string_view text, int position) noexcept {
    if (position < 0)
        return std::string_view::npos;
    std::size_t offset = 0;
    for (int passed = 0; passed < position; ++passed) {
        if (offset >= text.size())
            return std::string_view::npos;
        offset += CharacterLength(text.substr(offset));
    }
    return offset;
}

} // namespace dyadctx
