// SPDX-License-Identifier: MIT
#include "tools/dyadctx/DisplayText.h"

#include "platform/detail/Utf8.h"
#include "platform/detail/VisibleText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace dyadctx::tool {

namespace {

struct Character {
    // U+FFFFFFFF for a byte that is no part of well-formed UTF-8.
    std::uint32_t code;
    std::size_t length;
};

constexpr std::uint32_t IllFormed = 0xFFFFFFFF;

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

// Blocks of characters without a width of their own.
constexpr std::array<Range, 14> Combining{{{0x0300, 0x036F},
                                           {0x0483, 0x0489},
                                           {0x0591, 0x05BD},
                                           {0x0610, 0x061A},
                                           {0x064B, 0x065F},
                                           {0x093C, 0x093C},
                                           {0x0E34, 0x0E3A},
                                           {0x1AB0, 0x1AFF},
                                           {0x1DC0, 0x1DFF},
                                           {0x200B, 0x200F},
                                           {0x20D0, 0x20FF},
                                           {0x3099, 0x309A},
                                           {0xFE00, 0xFE0F},
                                           {0xFE20, 0xFE2F}}};

// Blocks of characters that terminals show two columns wide.
constexpr std::array<Range, 11> Wide{{{0x1100, 0x115F},
                                      {0x2E80, 0x303E},
                                      {0x3041, 0x33FF},
                                      {0x3400, 0x4DBF},
                                      {0x4E00, 0x9FFF},
                                      {0xA000, 0xA4CF},
                                      {0xAC00, 0xD7A3},
                                      {0xF900, 0xFAFF},
                                      {0xFE30, 0xFE6F},
                                      {0xFF01, 0xFF60},
                                      {0xFFE0, 0xFFE6}}};

constexpr std::array<Range, 3> WideBeyondBasicPlane{
    {{0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}}};

bool Holds(std::span<const Range> ranges, std::uint32_t code) {
    return std::any_of(ranges.begin(), ranges.end(), [code](const Range& range) {
        return code >= range.first && code <= range.last;
    });
}

std::uint32_t ByteAt(std::string_view text, std::size_t pos) {
    return static_cast<unsigned char>(text[pos]);
}

// The character at the start of a text that is not empty.
Character FirstCharacter(std::string_view text) {
    const std::size_t length = CharacterLength(text);
    if (length == 1 && ByteAt(text, 0) >= 0x80)
        return {IllFormed, 1};
    return {CharacterNumber(text.substr(0, length)), length};
}

int WidthOf(std::uint32_t code) {
    if (Holds(Combining, code))
        return 0;
    return Holds(Wide, code) || Holds(WideBeyondBasicPlane, code) ? 2 : 1;
}

// For the whole run, by --show-secrets.
bool areSecretsShown = false;

struct Secret {
    std::size_t begin = 0;
    // 0 for none.
    std::size_t length = 0;
};

// The first password of a URL that begins at `from` or later.
Secret NextSecret(std::string_view text, std::size_t from) {
    constexpr std::string_view slashes = "//";
    constexpr std::string_view ends = "/?#<>\"' \t\r\n";
    for (std::size_t at = text.find(slashes, from); at != std::string_view::npos;
         at = text.find(slashes, at)) {
        at = text.find_first_not_of('/', at);
        if (at == std::string_view::npos)
            break;
        const std::string_view authority = text.substr(at, text.find_first_of(ends, at) - at);
        const std::size_t host = authority.rfind('@');
        const std::size_t colon = authority.find(':');
        if (host != std::string_view::npos && colon != std::string_view::npos && colon + 1 < host)
            return {at + colon + 1, host - colon - 1};
        at += authority.size();
    }
    return {};
}

std::vector<std::string_view> SecretsIn(std::string_view text) {
    std::vector<std::string_view> secrets;
    std::size_t from = 0;
    for (Secret one = NextSecret(text, from); one.length > 0; one = NextSecret(text, from)) {
        secrets.push_back(text.substr(one.begin, one.length));
        from = one.begin + one.length;
    }
    return secrets;
}

} // namespace

void ShowSecrets(bool shown) noexcept {
    areSecretsShown = shown;
}

std::string Masked(std::string_view text) {
    std::string masked;
    std::size_t taken = 0;
    for (Secret secret = NextSecret(text, 0); secret.length > 0 && !areSecretsShown;
         secret = NextSecret(text, taken)) {
        masked += text.substr(taken, secret.begin - taken);
        masked += "***";
        taken = secret.begin + secret.length;
    }
    return masked.append(text.substr(taken));
}

bool HaveOtherSecrets(std::string_view left, std::string_view right) {
    return SecretsIn(left) != SecretsIn(right);
}

std::string Visible(std::string_view text) {
    std::string visible;
    visible.reserve(text.size());
    AppendVisible(Masked(text), visible);
    return visible;
}

std::string InSmallLetters(std::string_view text) {
    std::string small(text);
    for (char& letter : small) {
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    }
    return small;
}

int DisplayWidth(std::string_view text) {
    int width = 0;
    while (!text.empty()) {
        const Character character = FirstCharacter(text);
        width += WidthOf(character.code);
        text.remove_prefix(character.length);
    }
    return width;
}

} // namespace dyadctx::tool
