// A place in a text file.
#pragma once

#include <compare>

// Line and column from 1; both 0 when unknown. Columns count characters, except those of XML nodes
// (VELIDOMNode::GetColumn), which count bytes because nodes do not keep the text; the check of a
// file converts.
struct VELPlace {
    int line = 0;
    int column = 0;

    // In file order.
    friend auto operator<=>(const VELPlace&, const VELPlace&) = default;
};
