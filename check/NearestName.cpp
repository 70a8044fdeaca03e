// SPDX-License-Identifier: MIT
#include "check/detail/NearestName.h"

#include <algorithm>
#include <bit>
#include <numeric>
#include <utility>

namespace dyadctx {

namespace {

// Longer words are not compared: the cost grows with the product of the lengths.
constexpr std::size_t LongestWord = 200;
// The budget of all searches together: a few hundredths of a second.
constexpr std::size_t Comparisons = 10'000'000;
constexpr std::size_t Distances = 50'000;

constexpr std::string_view Blanks = " \t\r\n";
constexpr std::string_view NoBreakSpace = "\xC2\xA0";

char ToLower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// The name as it is compared: without letter case and blanks.
std::string LettersOf(std::string_view word) {
    std::string letters;
    for (std::size_t at = 0; at < word.size(); ++at) {
        if (word.substr(at, NoBreakSpace.size()) == NoBreakSpace)
            ++at;
        else if (Blanks.find(word[at]) == std::string_view::npos)
            letters += ToLower(word[at]);
    }
    return letters;
}

// Two bits for each of 32 groups of letters: set for one and for two of them. Changing one letter
// changes at most two bits.
std::uint64_t LetterSetOf(std::string_view letters) {
    std::uint64_t once = 0;
    std::uint64_t twice = 0;
    for (const char letter : letters) {
        const std::uint64_t bit = std::uint64_t{1} << (static_cast<unsigned>(letter) % 32);
        twice |= once & bit;
        once |= bit;
    }
    return once | (twice << 32);
}

// The number of single-letter changes between two words.
std::size_t Distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t change = from[i] == to[j] ? 0 : 1;
            const std::size_t best = std::min({row[j] + 1, row[j + 1] + 1, diagonal + change});
            diagonal = row[j + 1];
            row[j + 1] = best;
        }
    }
    return row[to.size()];
}

// The smallest distance that is too far for a word of that length.
std::size_t LimitFor(std::size_t length) {
    return length / 3 + 1;
}

} // namespace

NearestName::NearestName(const std::vector<std::string_view>& names)
    : comparisonsLeft_(Comparisons), distancesLeft_(Distances) {
    for (const std::string_view name : names) {
        if (name.size() > LongestWord)
            continue;
        std::string letters = LettersOf(name);
        if (letters.empty())
            continue;
        Candidates& candidates = byLength_[letters.size()];
        candidates.letterSets.push_back(LetterSetOf(letters));
        candidates.names.push_back({std::move(letters), name});
    }
}

std::string_view NearestName::Find(std::string_view word) {
    if (word.size() > LongestWord)
        return {};
    const std::string letters = LettersOf(word);
    std::string_view nearest;
    std::size_t limit = letters.size();
    const auto tryLength = [&](std::size_t length) {
        const auto candidates = byLength_.find(length);
        if (candidates == byLength_.end())
            return;
        std::size_t distance = std::min(limit, LimitFor(length));
        const std::string_view found = FindAmong(candidates->second, word, letters, distance);
        if (found.empty())
            return;
        nearest = found;
        limit = distance;
    };
    tryLength(letters.size());
    for (std::size_t difference = 1; difference < limit; ++difference) {
        tryLength(letters.size() + difference);
        tryLength(letters.size() - difference);
    }
    return nearest;
}

// Returns a name nearer than `limit` and sets `limit` to its distance.
std::string_view NearestName::FindAmong(const Candidates& candidates, std::string_view word,
                                        std::string_view letters, std::size_t& limit) {
    std::string_view nearest;
    const std::size_t count = candidates.names.size();
    if (count > comparisonsLeft_)
        return nearest;
    comparisonsLeft_ -= count;
    const std::uint64_t letterSet = LetterSetOf(letters);
    for (std::size_t i = 0; i < count; ++i) {
        const Candidate& candidate = candidates.names[i];
        const int differing = std::popcount(candidates.letterSets[i] ^ letterSet);
        if (static_cast<std::size_t>(differing) >= 2 * limit || candidate.name == word)
            continue;
        if (distancesLeft_ == 0)
            return nearest;
        --distancesLeft_;
        const std::size_t distance = Distance(letters, candidate.letters);
        if (distance < limit) {
            limit = distance;
            nearest = candidate.name;
        }
    }
    return nearest;
}

} // namespace dyadctx
