#include "tools/dyadctx/Suggestion.h"

#include "tools/dyadctx/DisplayText.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace dyadctx::tool {

namespace {

// Longer words are not compared: the distance costs the product of the lengths.
constexpr std::size_t LongestWord = 200;

char Folded(char letter) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

// The number of single-letter changes between two words, letter case aside.
std::size_t Distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t change = Folded(from[i]) == Folded(to[j]) ? 0 : 1;
            const std::size_t best = std::min({row[j] + 1, row[j + 1] + 1, diagonal + change});
            diagonal = row[j + 1];
            row[j + 1] = best;
        }
    }
    return row[to.size()];
}

std::size_t SizeDifference(std::string_view a, std::string_view b) {
    return a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
}

} // namespace

std::string Nearest(std::string_view word, const std::vector<std::string>& known) {
    std::string nearest;
    std::size_t limit = std::max<std::size_t>(1, word.size() / 3) + 1;
    for (const std::string& candidate : known) {
        const bool tooFar = SizeDifference(word, candidate) >= limit;
        if (tooFar || candidate == word || word.size() > LongestWord ||
            candidate.size() > LongestWord)
            continue;
        const std::size_t distance = Distance(word, candidate);
        if (distance < limit && distance < word.size()) {
            limit = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string DidYouMean(std::string_view word, const std::vector<std::string>& known) {
    const std::string nearest = Nearest(word, known);
    return nearest.empty() ? "" : "; did you mean '" + Visible(nearest) + "'?";
}

} // namespace dyadctx::tool
