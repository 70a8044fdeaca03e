// SPDX-License-Identifier: MIT
#include "platform/detail/MoCatalog.h"

#include "platform/detail/Utf8.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace dyadctx {

namespace {

constexpr std::uint32_t Magic = 0x950412DE;
constexpr std::uint32_t MagicOfOtherByteOrder = 0xDE120495;
// Offsets in the header.
constexpr std::size_t RevisionOffset = 4;
constexpr std::size_t CountOffset = 8;
constexpr std::size_t OriginalsOffset = 12;
constexpr std::size_t TranslationsOffset = 16;
// A row of either table is a length and an offset.
constexpr std::size_t RowSize = 8;

// Separates a context from its text.
constexpr char ContextEnd = '\4';
constexpr std::size_t LongestKey = 255;
constexpr std::size_t LongestText = 65536;

// Reads the image, never out of bounds.
class MoImage {
public:
    explicit MoImage(std::span<const unsigned char> bytes) : bytes_(bytes) {
        const auto magic = NumberAt(0);
        swapped_ = magic == MagicOfOtherByteOrder;
        const auto revision = NumberAt(RevisionOffset);
        isSound_ = (magic == Magic || swapped_) && revision && *revision >> 16U <= 1;
    }

    bool IsSound() const { return isSound_; }

    std::optional<std::uint32_t> NumberAt(std::size_t offset) const {
        if (offset > bytes_.size() || bytes_.size() - offset < sizeof(std::uint32_t))
            return std::nullopt;
        std::uint32_t number = 0;
        std::memcpy(&number, bytes_.data() + offset, sizeof number);
        return std::endian::native == std::endian::little ? Ordered(number)
                                                          : Ordered(Reversed(number));
    }

    // The text that a table row refers to.
    std::optional<std::string_view> TextAt(std::size_t row) const {
        const auto length = NumberAt(row);
        const auto offset = NumberAt(row + sizeof(std::uint32_t));
        if (!length || !offset || *offset > bytes_.size() || bytes_.size() - *offset < *length)
            return std::nullopt;
        return std::string_view(reinterpret_cast<const char*>(bytes_.data()) + *offset, *length);
    }

private:
    static std::uint32_t Reversed(std::uint32_t number) {
        return number >> 24U | (number >> 8U & 0xFF00U) | (number << 8U & 0xFF0000U) |
               number << 24U;
    }
    std::uint32_t Ordered(std::uint32_t number) const {
        return swapped_ ? Reversed(number) : number;
    }

    std::span<const unsigned char> bytes_;
    bool swapped_ = false;
    bool isSound_ = false;
};

std::optional<std::string_view> KeyOf(std::string_view original) {
    const std::size_t end = original.substr(0, LongestKey + 1).find(ContextEnd);
    if (end == std::string_view::npos)
        return std::nullopt;
    return original.substr(0, end);
}

bool IsWellFormed(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 1 && static_cast<unsigned char>(text.front()) >= 0x80)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

} // namespace

MoCatalog::MoCatalog(std::span<const unsigned char> bytes) {
    const MoImage image(bytes);
    const auto count = image.NumberAt(CountOffset);
    const auto originals = image.NumberAt(OriginalsOffset);
    const auto translations = image.NumberAt(TranslationsOffset);
    if (!image.IsSound() || !count || !originals || !translations)
        return;
    // Ignores a claimed length beyond the image.
    const std::size_t rows = std::min<std::size_t>(*count, bytes.size() / RowSize);
    for (std::size_t row = 0; row < rows; ++row) {
        const auto original = image.TextAt(*originals + row * RowSize);
        const auto translation = image.TextAt(*translations + row * RowSize);
        const auto key = original ? KeyOf(*original) : std::nullopt;
        if (key && translation)
            texts_.emplace(*key, *translation);
    }
}

std::optional<std::string_view> MoCatalog::Find(std::string_view key) const {
    const auto found = texts_.find(key);
    if (found == texts_.end())
        return std::nullopt;
    // Plural forms follow a zero byte; the library does not use them.
    const std::string_view text = found->second.substr(0, found->second.find('\0'));
    if (text.size() > LongestText || !IsWellFormed(text))
        return std::nullopt;
    return text;
}

} // namespace dyadctx
