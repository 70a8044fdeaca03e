// What a collector keeps besides its fields.
#pragma once

#include "collector/detail/CollectorIndex.h"
#include "collector/detail/ContextWatch.h"

namespace dyadctx {

struct CollectorState {
    // Derived from the collector's lists; rebuilt when it is out of date.
    CollectorIndex index;
    // Of the operations in progress.
    ContextWatches watches;
};

} // namespace dyadctx
