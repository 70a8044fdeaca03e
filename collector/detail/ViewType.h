// The values of a collector's type filter: which contexts the current view serves.
#pragma once

namespace dyadctx {

enum ViewType : int { AllContexts = 0, PathContexts = 1, DatabaseContexts = 2, FileContexts = 3 };

} // namespace dyadctx
