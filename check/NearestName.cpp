#include "check/detail/NearestName.h"

#include <algorithm>
#include <bit>
#include <numeric>

namespace dyadctx {

namespace {

// Longer words are not compared: the distance costs the product of the lengths.
constexpr std::size_t LongestWord = 200;
// What all searches together may take: a few hundredths of a second.
constexpr std::size_t Comparisons = 10'000'000;
constexpr std::size_t Distances = 50'000;

char ToLower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// Two bits for each of 32 groups of letters: one is there, two are there. A change of one letter
// changes two bits at most.
std::uint64_t LettersOf(std::string_view word) {
    std::uint64_t once = 0;
    std::uint64_t twice = 0;
    for (const char letter : word) {
        const std::uint64_t bit = std::uint64_t{1} << (static_cast<unsigned>(ToLower(letter)) % 32);
        twice |= once & bit;
        once |= bit;
    }
    return once | (twice << 32);
}

// The number of single-letter changes between two words, letter case aside.
std::size_t Distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t change = ToLower(from[i]) == ToLower(to[j]) ? 0 : 1;
            const std::size_t best = std::min({row[j] + 1, row[j + 1] + 1, diagonal + change});
            diagonal = row[j + 1];
            row[j + 1] = best;
        }
    }
    return row[to.size()];
}

// A distance that is too far for a word of that length.
std::size_t LimitFor(std::size_t length) {
    return std::min(length, std::max<std::size_t>(1, length / 3) + 1);
}

} // namespace

NearestName::NearestName(const std::vector<std::string_view>& names)
    : comparisonsLeft_(Comparisons), distancesLeft_(Distances) {
    for (const std::string_view name : names) {
        if (name.empty() || name.size() > LongestWord)
            continue;
        Candidates& candidates = byLength_[name.size()];
        candidates.letters.push_back(LettersOf(name));
        candidates.names.push_back(name);
    }
}

std::string_view NearestName::Find(std::string_view word) {
    if (word.empty() || word.size() > LongestWord)
        return {};
    std::string_view nearest;
    std::size_t limit = LimitFor(word.size());
    const auto tryLength = [&](std::size_t length) {
        const auto candidates = byLength_.find(length);
        if (candidates == byLength_.end())
            return;
        const std::string_view found = FindAmong(candidates->second, word, limit);
        nearest = found.empty() ? nearest : found;
    };
    tryLength(word.size());
    for (std::size_t difference = 1; difference < limit; ++difference) {
        tryLength(word.size() + difference);
        tryLength(word.size() - difference);
    }
    return nearest;
}

// Gives a name nearer than `limit`, and sets that to its distance.
std::string_view NearestName::FindAmong(const Candidates& candidates, std::string_view word,
                                        std::size_t& limit) {
    std::string_view nearest;
    const std::size_t count = candidates.names.size();
    if (count > comparisonsLeft_)
        return nearest;
    comparisonsLeft_ -= count;
    const std::uint64_t letters = LettersOf(word);
    for (std::size_t i = 0; i < count; ++i) {
        const int differing = std::popcount(candidates.letters[i] ^ letters);
        if (static_cast<std::size_t>(differing) >= 2 * limit || candidates.names[i] == word)
            continue;
        if (distancesLeft_ == 0)
            return nearest;
        --distancesLeft_;
        const std::size_t distance = Distance(word, candidates.names[i]);
        if (distance < limit) {
            limit = distance;
            nearest = candidates.names[i];
        }
    }
    return nearest;
}

} // namespace dyadctx
