// Where something is in a text file.
#pragma once

#include <compare>

// Line and column from 1; both 0 where there is no place. Columns count characters. Only the nodes
// of an XML document count bytes instead (VELIDOMNode::GetColumn), for they do not keep the text;
// the check of a file converts.
struct VELPlace {
    int line = 0;
    int column = 0;

    // In the order of the file.
    friend auto operator<=>(const VELPlace&, const VELPlace&) = default;
};
