// SPDX-License-Identifier: MIT
// Text that stays on its line, for logs and terminals.
//
// Complete in this header, like Utf8.h, as the tool shows texts in the same way.
#pragma once

#include "platform/detail/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace dyadctx {

// Whether a character acts on the text around it or on a terminal: control characters, line and
// paragraph separators, and marks that turn the direction of writing.
inline bool IsSteering(std::uint32_t character) noexcept {
    struct Range {
        std::uint32_t first;
        std::uint32_t last;
    };
    constexpr std::array<Range, 6> ranges{{{0x00, 0x1F},
                                           {0x7F, 0x9F},
                                           {0x061C, 0x061C},
                                           {0x200E, 0x200F},
                                           {0x2028, 0x202E},
                                           {0x2066, 0x2069}}};
    return std::any_of(ranges.begin(), ranges.end(), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

// "\n" for a line feed; else the number of a byte, "\x1b", or of a longer character, "\u202e".
inline std::string WrittenOut(std::uint32_t number, bool isByte) {
    switch (number) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    std::array<char, 16> escape{};
    std::snprintf(escape.data(), escape.size(), isByte ? "\\x%02x" : "\\u%04x",
                  static_cast<unsigned int>(number));
    return escape.data();
}

// Appends a text with steering characters and bytes that are not well-formed UTF-8 written out.
inline void AppendVisible(std::string_view text, std::string& visible) {
    while (!text.empty()) {
        const std::string_view character = text.substr(0, CharacterLength(text));
        const std::uint32_t number = CharacterNumber(character);
        const bool isByte = character.size() == 1;
        if (IsSteering(number) || (isByte && number >= 0x80))
            visible += WrittenOut(number, isByte);
        else
            visible += character;
        text.remove_prefix(character.size());
    }
}

} // namespace dyadctx
