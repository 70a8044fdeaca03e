// Where findings stand in a source text.
#pragma once

#include "check/detail/SourceReader.h"
#include "platform/VELPlace.h"

#include <vector>

namespace dyadctx {

// An element, as the parser tells its place, or one of its attributes. The attribute's name
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

// The range of each spot, in characters: of the attribute with its value where it is written there,
// else of the beginning of the element with its name; of one character where there is neither.
// Where the text has changed a range begins where the spot is. One pass through the text as far as
// the last spot, however many there are. Throws std::bad_alloc.
std::vector<SourceRange> FindRanges(const std::vector<Spot>& spots, SourceReader& reader);

} // namespace dyadctx
