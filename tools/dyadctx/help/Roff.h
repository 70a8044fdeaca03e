// SPDX-License-Identifier: MIT
// Text in the language of manual pages.
#pragma once

#include <string>
#include <string_view>

namespace dyadctx::tool {

// The text with what the formatter would take for its own written as escapes.
std::string RoffEscaped(std::string_view text);

// A line of escaped text that is no request of the formatter, however it begins.
std::string RoffLine(const std::string& escaped);

} // namespace dyadctx::tool
