// SPDX-License-Identifier: MIT
// The rows of a layered picture while it is made: which boxes and bends stand in them, in which
// order, and where.
#pragma once

#include "tools/dyadctx/layout/LayeredLayout.h"

#include <vector>

namespace dyadctx::tool {

struct RowVertex {
    double width = 0;
    double x = 0;
    int row = 0;
    // Counts from 0 within the row.
    int place = 0;
    // Where a long arc passes a row.
    bool isBend = false;
    // Neighbours in the rows next to this one.
    std::vector<int> above;
    std::vector<int> below;
};

struct LayerRows {
    // The boxes in their order, then the bends.
    std::vector<RowVertex> vertices;
    std::vector<std::vector<int>> rows;
    // For each arc the vertices it passes, from the upper to the lower one. Beyond a number of
    // bends that would take too long to order, the longest arcs pass none.
    std::vector<std::vector<int>> chains;

    RowVertex& At(int vertex) { return vertices[static_cast<std::size_t>(vertex)]; }
    const RowVertex& At(int vertex) const { return vertices[static_cast<std::size_t>(vertex)]; }
    // Makes the places follow the order in the row.
    void Renumber(const std::vector<int>& row);
};

// `arcs` lead from a row to a later one.
LayerRows MakeRows(const std::vector<LayoutBox>& boxes, const std::vector<Arc>& arcs,
                   const std::vector<int>& rowOf);

// Changes the order within the rows so that few arcs cross.
void OrderRows(LayerRows& rows);

// Sets the x of each vertex, such that none touch, arcs are short and long ones straight.
void PlaceRows(LayerRows& rows);

} // namespace dyadctx::tool
