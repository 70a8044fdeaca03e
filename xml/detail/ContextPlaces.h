// Where in its file a reader found what it read, for those who show it to a person.
#pragma once

#include "context/VELDyadContext.h"
#include "platform/VELIXMLDOM.h"

#include <string>
#include <unordered_map>

namespace dyadctx {

// Line and column (in bytes) from 1; 0 where nothing is known.
struct Place {
    int line = 0;
    int column = 0;
};

struct ContextPlaces {
    // The element of every context handed to the collector.
    std::unordered_map<const VELDyadContext*, Place> contexts;
    // The element at which reading ended, or the place of the syntax error.
    Place fault;
    // Why the file is not well-formed; empty when it is.
    std::string syntaxError;
};

inline Place PlaceOf(const VELIDOMNode& node) {
    return {node.GetLine(), node.GetColumn()};
}

} // namespace dyadctx
