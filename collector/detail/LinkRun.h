// Links the friends and associated contexts of declared contexts, read as names, to the declared
// contexts of these names.
#pragma once

#include "collector/VELDyadCtxCollector.h"
#include "collector/detail/Fault.h"

namespace dyadctx {

// How far to go when a name is not declared: as far as the collector does for its clients, or
// through everything. What cannot be linked stays as it is.
enum class LinkExtent { AsCollector, Everything };

// Whether everything is linked. Considers the first `count` declared contexts.
bool LinkFriendsAndAssociated(VELDyadCtxCollector& collector, int count, LinkExtent extent,
                              FaultReporter& reporter);

} // namespace dyadctx
