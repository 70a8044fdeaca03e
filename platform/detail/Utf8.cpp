#include "platform/detail/Utf8.h"

namespace dyadctx {

namespace {

struct LeadByte {
    std::size_t length;
    // The range of the second byte excludes overlong forms, surrogates and anything beyond
    // U+10FFFF.
    unsigned char secondLow;
    unsigned char secondHigh;
};

LeadByte Classify(unsigned char lead) noexcept {
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

} // namespace

std::size_t CharacterLength(std::string_view text) noexcept {
    const auto byteAt = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const LeadByte lead = Classify(byteAt(0));
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

void AppendCharacter(std::uint32_t character, std::string& text) {
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

int CountCharacters(std::string_view text) noexcept {
    int count = 0;
    for (std::size_t offset = 0; offset < text.size(); ++count)
        offset += CharacterLength(text.substr(offset));
    return count;
}

bool BeginsWithCharacters(std::string_view text, std::string_view characters) noexcept {
    if (!text.starts_with(characters))
        return false;
    std::size_t offset = 0;
    while (offset < characters.size())
        offset += CharacterLength(text.substr(offset));
    return offset == characters.size();
}

std::size_t OffsetOfCharacter(std::string_view text, int position) noexcept {
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
