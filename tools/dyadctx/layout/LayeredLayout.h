// SPDX-License-Identifier: MIT
// Places boxes and the arcs between them on a plane: in rows, so that arcs lead downwards.
//
// Arcs that would close a cycle lead upwards. Connected parts stand side by side, boxes without
// arcs in a grid below them. The same input always gives the same picture.
#pragma once

#include "check/detail/StrongComponents.h"

#include <vector>

namespace dyadctx::tool {

struct LayoutBox {
    double width = 0;
    double height = 0;
    // Kept free left and right of it.
    double margin = 0;
};

struct Point {
    double x = 0;
    double y = 0;
};

// From the edge of the box where the arc starts to that of the box where it ends. Where two points
// do not stand above each other, the line between them lies in the space between two rows and is
// meant as a curve that starts and ends vertically.
struct Route {
    std::vector<Point> points;
    bool isUpward = false;
    // From a box to itself: it leaves at the first point and comes back at the second one, both on
    // the right side of the box. The width `LoopRoom` is free there.
    bool isLoop = false;
};

inline constexpr double LoopRoom = 30;

struct Layout {
    // Of the boxes, in their order.
    std::vector<Point> centres;
    // Of the arcs, in their order.
    std::vector<Route> routes;
    double width = 0;
    double height = 0;
};

Layout LayOut(const std::vector<LayoutBox>& boxes, const std::vector<Arc>& arcs);

} // namespace dyadctx::tool
