// SPDX-License-Identifier: MIT
// Finds the likely meaning of an unknown name.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx {

// Searches among many names of similar length. All searches share a budget, after which nothing is
// found: a large file with many unknown names must not take long. Throws std::bad_alloc.
class NearestName {
public:
    // The names outlive the object.
    explicit NearestName(const std::vector<std::string_view>& names);

    // The name nearest to `word`, letter case and blanks aside, the first of equally near ones; at
    // most a third of its letters differ. Empty when none is near. A name equal to `word` does not
    // count.
    std::string_view Find(std::string_view word);

private:
    // A name as it is compared, and the name itself.
    struct Candidate {
        std::string letters;
        std::string_view name;
    };
    // Names of one length and their letter sets, which are compared first and are contiguous.
    struct Candidates {
        std::vector<std::uint64_t> letterSets;
        std::vector<Candidate> names;
    };

    std::string_view FindAmong(const Candidates& candidates, std::string_view word,
                               std::string_view letters, std::size_t& limit);

    std::map<std::size_t, Candidates> byLength_;
    std::size_t comparisonsLeft_;
    std::size_t distancesLeft_;
};

} // namespace dyadctx
