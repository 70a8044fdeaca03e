// The tool's own words in the language of the messages.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

// The text of a key of resources/messages/dyadctx.*.po with the parameters at their places {0},
// {1}.
std::string Words(std::string_view key, const std::vector<std::string>& parameters = {});

} // namespace dyadctx::tool
