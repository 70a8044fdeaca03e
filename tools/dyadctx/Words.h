// SPDX-License-Identifier: MIT
// The tool's own words in the language of the messages.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace dyadctx::tool {

// The text of a key of resources/messages/dyadctx.*.po with its parameters.
std::string Words(std::string_view key, const std::vector<std::string>& parameters = {});

// The text of `key`.one for a count of 1, else of `key`.many: the count at {0}, the parameter at
// {1}.
std::string CountedWords(std::ptrdiff_t count, const std::string& key,
                         const std::string& parameter = "");

} // namespace dyadctx::tool
