// The places of findings in a source text.
#pragma once

#include "check/detail/SourceReader.h"
#include "platform/VELPlace.h"

#include <vector>

namespace dyadctx {

// An element, at the place the parser reports, or one of its attributes. The attribute's name
// outlives the spot.
struct Spot {
    VELPlace element;
    const char* attribute = nullptr;
};

// From the first character to the one after the last.
struct SourceRange {
    VELPlace begin;
    VELPlace end;
};

// The range of each spot, in characters: the attribute with its value, or else the start of the
// element with its name, or else one character. If the text has changed, a range begins at the
// spot. Takes one pass through the text up to the last spot. Throws std::bad_alloc.
std::vector<SourceRange> FindRanges(const std::vector<Spot>& spots, SourceReader& reader);

} // namespace dyadctx
