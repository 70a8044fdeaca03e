// SPDX-License-Identifier: MIT
// A place in a text file.
#pragma once

// Line and column from 1; both 0 when unknown. Columns count characters, except those of XML nodes
// (VELIDOMNode::GetColumn), which count bytes because nodes do not keep the text; the check of a
// file converts.
struct VELPlace {
    int line = 0;
    int column = 0;

    friend bool operator==(const VELPlace&, const VELPlace&) = default;
    // In file order.
    friend bool operator<(const VELPlace& left, const VELPlace& right) noexcept {
        return left.line != right.line ? left.line < right.line : left.column < right.column;
    }
};
