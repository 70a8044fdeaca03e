// Help beyond the rules: what in a file looks like a mistake although the library takes it.
#pragma once

#include "check/detail/ContextPlaces.h"
#include "check/detail/FindingList.h"
#include "check/detail/ReferencePlaces.h"
#include "collector/VELDyadCtxCollector.h"
#include "platform/VELIXMLDOM.h"

namespace dyadctx {

// Elements and attributes that nothing is read from.
void HintAtWhatIsNotRead(const VELIDOMElement& root, FindingList& findings);

// One ring of more than two friends for each group of contexts that reach one another.
void HintAtFriendRings(VELDyadCtxCollector& collector, const ReferencePlaces& references,
                       const ContextPlaces& places, FindingList& findings);

// Paths and files that contexts name and that do not exist.
void HintAtMissingTargets(VELDyadCtxCollector& collector, const ContextPlaces& places,
                          FindingList& findings);

} // namespace dyadctx
