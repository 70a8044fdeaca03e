// SPDX-License-Identifier: MIT
// The program `dot` of Graphviz, where it is installed.
#pragma once

#include <string>

namespace dyadctx::tool {

struct GraphvizAnswer {
    std::string svg;
    // Empty when the picture was drawn.
    std::string fault;
};

// Lets `dot` draw a text in DOT as SVG. What it says itself goes to standard error.
GraphvizAnswer DrawWithGraphviz(const std::string& dot);

} // namespace dyadctx::tool
