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

// The place of each spot, in characters: of the attribute where it is written there, else of the
// element. Where the text has changed a place stays as it is. One pass through the text as far as
// the last spot, however many there are. Throws std::bad_alloc.
std::vector<VELPlace> FindPlaces(const std::vector<Spot>& spots, SourceReader& reader);

} // namespace dyadctx
