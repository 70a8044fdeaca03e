// SPDX-License-Identifier: MIT
#include "context/detail/TextHash.h"

#include <chrono>
#include <cstring>
#include <exception>
#include <random>

namespace dyadctx {

namespace {

struct Secret {
    std::uint64_t first;
    std::uint64_t second;
};

Secret MakeSecret() noexcept {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    Secret secret{static_cast<std::uint64_t>(now), reinterpret_cast<std::uintptr_t>(&now)};
    try {
        std::random_device random;
        secret.first ^= (std::uint64_t{random()} << 32) | random();
        secret.second ^= (std::uint64_t{random()} << 32) | random();
    } catch (const std::exception&) {
        // Without a source of randomness, time and address must do.
    }
    // Multiplying by an odd number loses no bits.
    secret.second |= 1;
    return secret;
}

const Secret& ProcessSecret() noexcept {
    static const Secret secret = MakeSecret();
    return secret;
}

// Multiplies to twice the width and folds the halves together: few steps, so that look-ups wait
// only for memory and many of them overlap.
std::uint64_t Fold(std::uint64_t first, std::uint64_t second) noexcept {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(first) * second;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

template<class Word>
std::uint64_t Load(const char* bytes) noexcept {
    Word word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

struct Block {
    std::uint64_t head;
    std::uint64_t tail;
};

// All bytes of a text of at most 16, some of them twice.
Block LastBlock(const char* bytes, std::size_t length) noexcept {
    if (length >= 8)
        return {Load<std::uint64_t>(bytes), Load<std::uint64_t>(bytes + length - 8)};
    if (length >= 4)
        return {Load<std::uint32_t>(bytes), Load<std::uint32_t>(bytes + length - 4)};
    if (length == 0)
        return {0, 0};
    return {Load<unsigned char>(bytes), (Load<unsigned char>(bytes + length / 2) << 8) |
                                            Load<unsigned char>(bytes + length - 1)};
}

} // namespace

std::uint64_t HashOfText(std::string_view text) noexcept {
    constexpr std::size_t blockSize = 16;
    const Secret& secret = ProcessSecret();
    const char* bytes = text.data();
    std::size_t length = text.size();
    // The length is multiplied by the secret, so that no text can cancel it out.
    std::uint64_t hash = secret.first + length * secret.second;
    for (; length > blockSize; bytes += blockSize, length -= blockSize) {
        hash = Fold(Load<std::uint64_t>(bytes) ^ secret.second,
                    Load<std::uint64_t>(bytes + blockSize / 2) ^ hash);
    }
    const Block last = LastBlock(bytes, length);
    hash = Fold(last.head ^ secret.second, last.tail ^ hash);
    return Fold(hash ^ secret.first, secret.second);
}

TextSet SetOf(const VELListValVELUnicodeString& texts) {
    TextSet set;
    set.reserve(static_cast<std::size_t>(texts.Size()));
    for (int pos = 1; pos <= texts.Size(); ++pos)
        set.insert(texts[pos].AsView());
    return set;
}

} // namespace dyadctx
