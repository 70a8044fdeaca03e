// The likely meaning of a name that is not known.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
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

    // The name nearest to `word`, letter case aside, the first of equally near ones; empty when
    // none is near. A word that is itself a name is none.
    std::string_view Find(std::string_view word);

private:
    // Names of one length, and what letters each has; these are looked at first and lie together.
    struct Candidates {
        std::vector<std::uint64_t> letters;
        std::vector<std::string_view> names;
    };

    std::string_view FindAmong(const Candidates& candidates, std::string_view word,
                               std::size_t& limit);

    std::map<std::size_t, Candidates> byLength_;
    std::size_t comparisonsLeft_;
    std::size_t distancesLeft_;
};

} // namespace dyadctx
