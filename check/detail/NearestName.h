// The likely meaning of a name that is not known.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx {

// Searches among many names. Each search looks at all names of similar length until the object has
// done as much as it may, and then finds nothing any more: a large file with many unknown names
// must not take long. Throws std::bad_alloc.
class NearestName {
public:
    // The names outlive the object.
    explicit NearestName(const std::vector<std::string_view>& names);

    // The name nearest to `word`, letter case and blanks aside, the first of equally near ones; no
    // more than a third of its letters differ. Empty when none is near. A word that is itself a
    // name is none.
    std::string_view Find(std::string_view word);

private:
    // What is compared of a name, and the name.
    struct Candidate {
        std::string letters;
        std::string_view name;
    };
    // Names of one length, and what letters each has; these are looked at first and lie together.
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
