// Links the friends and associated contexts of declared contexts, which the reader enters by name,
// to the declared contexts of these names.
#pragma once

#include "collector/detail/CollectorIndex.h"
#include "collector/detail/Fault.h"
#include "context/VELListPtrVELDyadContext.h"

namespace dyadctx {

// How far to go when a name is not that of a declared context: as far as the collector does for its
// clients, or through everything. What cannot be linked stays as it is.
enum class LinkExtent { AsCollector, Everything };

// Whether all is linked. Looks at the first `count` declared contexts.
bool LinkFriendsAndAssociated(const VELListPtrVELDyadContext& declared, CollectorIndex& index,
                              int count, LinkExtent extent, FaultReporter& reporter);

} // namespace dyadctx
