// SPDX-License-Identifier: MIT
// The style sheet of an SVG picture, for a light and for a dark background.
#pragma once

#include <string>

namespace dyadctx::tool {

std::string SvgStyle();

} // namespace dyadctx::tool
