// Where in its file a reader found what it read, for those who show it to a person.
#pragma once

#include "context/VELDyadContext.h"
#include "platform/VELIXMLDOM.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace dyadctx {

// Line and column (in bytes) from 1; 0 where nothing is known.
struct Place {
    int line = 0;
    int column = 0;
};

// The places of contexts, each known by its address. Adding one costs next to nothing; the list is
// put in order when one is first looked for.
class PlaceList {
public:
    using Entry = std::pair<const VELDyadContext*, Place>;

    // No context is added twice.
    void emplace(const VELDyadContext* context, const Place& place) {
        isSorted_ =
            isSorted_ && (entries_.empty() || std::less<>()(entries_.back().first, context));
        entries_.emplace_back(context, place);
    }
    std::size_t size() const noexcept { return entries_.size(); }
    // Null for a context that was not added.
    const Place* find(const VELDyadContext* context) const noexcept;
    // Throws std::out_of_range for a context that was not added.
    const Place& at(const VELDyadContext* context) const;

private:
    mutable std::vector<Entry> entries_;
    mutable bool isSorted_ = true;
};

struct ContextPlaces {
    // The element of every context handed to the collector.
    PlaceList contexts;
    // The element at which reading ended, or the place of the syntax error.
    Place fault;
    // Why the file is not well-formed; empty when it is.
    std::string syntaxError;
};

inline Place PlaceOf(const VELIDOMNode& node) {
    return {node.GetLine(), node.GetColumn()};
}

} // namespace dyadctx
