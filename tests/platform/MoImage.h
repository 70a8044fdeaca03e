// SPDX-License-Identifier: MIT
// Gettext MO images for tests of those who read them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dyadctx::test {

using MoEntry = std::pair<std::string, std::string>;

// What the image holds for a text with a context.
inline std::string WithContext(std::string_view context, std::string_view text = "text") {
    return std::string(context) + '\4' + std::string(text);
}

enum class ByteOrder { Little, Big };

inline void PutNumber(std::string& bytes, std::size_t value, ByteOrder order) {
    for (std::size_t i = 0; i < sizeof(std::uint32_t); ++i) {
        const std::size_t place = order == ByteOrder::Little ? i : sizeof(std::uint32_t) - 1 - i;
        bytes += static_cast<char>(value >> (8 * place) & 0xFFU);
    }
}

// An image of the given originals and translations, in the order given.
inline std::string MoImageOf(const std::vector<MoEntry>& entries,
                             ByteOrder order = ByteOrder::Little) {
    const std::size_t headerSize = 28;
    const std::size_t tableSize = 8 * entries.size();
    std::string originals;
    std::string translations;
    std::string texts;
    for (const auto& [original, translation] : entries) {
        for (const auto& [table, text] :
             {std::pair(&originals, &original), std::pair(&translations, &translation)}) {
            PutNumber(*table, text->size(), order);
            PutNumber(*table, headerSize + 2 * tableSize + texts.size(), order);
            texts += *text + '\0';
        }
    }
    std::string image;
    const std::size_t hashTable = 0;
    for (const std::size_t number : {std::size_t{0x950412DE}, std::size_t{0}, entries.size(),
                                     headerSize, headerSize + tableSize, hashTable, hashTable})
        PutNumber(image, number, order);
    return image + originals + translations + texts;
}

} // namespace dyadctx::test
