// SPDX-License-Identifier: MIT
// What of a context file is not in the file that `write` makes of it.
#pragma once

#include "check/VELDyadCtxFileCheck.h"
#include "collector/VELDyadCtxCollector.h"

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

struct Loss {
    // "2 comments"
    std::string what;
    // Why, and what would keep it: "the library writes none".
    std::string why;
};

// `input` holds the bytes of the file, `check` what was found in it; `collector` was made from it
// and is in the view that is written.
std::vector<Loss> LossesOf(std::string_view input, const VELDyadCtxFileCheck& check,
                           VELDyadCtxCollector& collector);

} // namespace dyadctx::tool
