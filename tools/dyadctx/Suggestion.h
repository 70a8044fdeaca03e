// The likely meaning of a word that is not known.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

// The word nearest to `word`; empty when none is near.
std::string Nearest(std::string_view word, const std::vector<std::string>& known);

// "; did you mean 'list'?", or empty when no word is near.
std::string DidYouMean(std::string_view word, const std::vector<std::string>& known);

} // namespace dyadctx::tool
