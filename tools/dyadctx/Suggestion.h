// SPDX-License-Identifier: MIT
// The likely meaning of a word that is not known.
#pragma once

#include "tools/dyadctx/ExitStatus.h"

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

// The word nearest to `word`; empty when none is near.
std::string Nearest(std::string_view word, const std::vector<std::string>& known);

// "; did you mean 'list'?", or empty when no word is near.
std::string DidYouMean(std::string_view word, const std::vector<std::string>& known);

// What to throw for a name that is none of a file's contexts, which have the known names.
Failure NoSuchContext(const std::string& name, const std::string& file,
                      const std::vector<std::string>& known);

} // namespace dyadctx::tool
