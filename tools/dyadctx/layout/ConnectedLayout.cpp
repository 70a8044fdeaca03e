// SPDX-License-Identifier: MIT
#include "tools/dyadctx/layout/ConnectedLayout.h"

#include "tools/dyadctx/layout/LayerAssignment.h"
#include "tools/dyadctx/layout/LayerRows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace dyadctx::tool {

namespace {

constexpr double MinRowWidth = 900;
// Width to height of what the rows should fill.
constexpr double Aspect = 1.5;
// What a box takes beside itself, on an average.
constexpr double RoomBeside = 30;
constexpr double RoomBelow = 60;

constexpr double MinGapOfRows = 42;
constexpr double MaxGapOfRows = 130;
constexpr double GapPerDistance = 0.07;

constexpr double MaxPortDistance = 18;
// Of a box, left and right, where no arc ends: shapes are round there.
constexpr double PortlessEdge = 22;

std::size_t Index(int value) {
    return static_cast<std::size_t>(value);
}

double RowWidthFor(const std::vector<LayoutBox>& boxes) {
    double area = 0;
    for (const LayoutBox& box : boxes)
        area += (box.width + RoomBeside) * (box.height + RoomBelow);
    return std::max(MinRowWidth, std::sqrt(area * Aspect));
}

class Drawing {
public:
    Drawing(const std::vector<LayoutBox>& boxes, const std::vector<Arc>& arcs)
        : boxes_(boxes), isBack_(BackArcs(static_cast<int>(boxes.size()), arcs)) {
        for (std::size_t i = 0; i < arcs.size(); ++i)
            downward_.push_back(isBack_[i] ? Arc{arcs[i].to, arcs[i].from} : arcs[i]);
    }

    Layout Draw() {
        std::vector<double> widths;
        for (const LayoutBox& box : boxes_)
            widths.push_back(box.width + 2 * box.margin + RoomBeside);
        rows_ = MakeRows(boxes_, downward_, AssignRows(widths, downward_, RowWidthFor(boxes_)));
        OrderRows(rows_);
        PlaceRows(rows_);
        MoveToOrigin();
        AssignPorts();
        StackRows();
        return Finish();
    }

private:
    struct Ends {
        double upper = 0;
        double lower = 0;
    };

    void MoveToOrigin() {
        double left = std::numeric_limits<double>::max();
        for (const RowVertex& vertex : rows_.vertices)
            left = std::min(left, vertex.x - vertex.width / 2);
        for (RowVertex& vertex : rows_.vertices) {
            vertex.x -= left;
            layout_.width = std::max(layout_.width, vertex.x + vertex.width / 2);
        }
    }

    // Arcs end side by side on the edge of a box, in the order of where they come from.
    void AssignPorts() {
        ends_.resize(downward_.size());
        std::vector<std::vector<int>> leaving(boxes_.size());
        std::vector<std::vector<int>> entering(boxes_.size());
        for (std::size_t i = 0; i < downward_.size(); ++i) {
            leaving[Index(downward_[i].from)].push_back(static_cast<int>(i));
            entering[Index(downward_[i].to)].push_back(static_cast<int>(i));
        }
        for (std::size_t box = 0; box < boxes_.size(); ++box) {
            SpreadPorts(box, leaving[box], &Ends::upper,
                        [](const std::vector<int>& chain) { return chain[1]; });
            SpreadPorts(box, entering[box], &Ends::lower,
                        [](const std::vector<int>& chain) { return chain[chain.size() - 2]; });
        }
    }

    template<class NextOnTheWay>
    void SpreadPorts(std::size_t box, std::vector<int>& arcs, double Ends::*end,
                     const NextOnTheWay& next) {
        const auto xOfNext = [&](int arc) { return rows_.At(next(rows_.chains[Index(arc)])).x; };
        std::stable_sort(arcs.begin(), arcs.end(),
                         [&](int a, int b) { return xOfNext(a) < xOfNext(b); });
        const double room = std::max(0.0, boxes_[box].width - 2 * PortlessEdge);
        const double gaps = static_cast<double>(arcs.size()) - 1;
        const double distance = gaps > 0 ? std::min(MaxPortDistance, room / gaps) : 0;
        double x = rows_.vertices[box].x - distance * gaps / 2;
        for (const int arc : arcs) {
            ends_[Index(arc)].*end = x;
            x += distance;
        }
    }

    // Rows stand further apart where an arc between them has far to go.
    void StackRows() {
        heights_.assign(rows_.rows.size(), 0);
        for (std::size_t box = 0; box < boxes_.size(); ++box) {
            double& height = heights_[Index(rows_.vertices[box].row)];
            height = std::max(height, boxes_[box].height);
        }
        double y = 0;
        for (std::size_t row = 0; row < rows_.rows.size(); ++row) {
            tops_.push_back(y);
            y += heights_[row] + GapBelow(row);
        }
        if (!tops_.empty())
            layout_.height = tops_.back() + heights_.back();
    }

    double GapBelow(std::size_t row) const {
        double distance = 0;
        for (const int vertex : rows_.rows[row]) {
            for (const int other : rows_.At(vertex).below)
                distance = std::max(distance, std::abs(rows_.At(other).x - rows_.At(vertex).x));
        }
        return std::min(MaxGapOfRows, MinGapOfRows + GapPerDistance * distance);
    }

    double Top(int vertex) const { return tops_[Index(rows_.At(vertex).row)]; }
    double Bottom(int vertex) const { return Top(vertex) + heights_[Index(rows_.At(vertex).row)]; }
    double Middle(int vertex) const { return (Top(vertex) + Bottom(vertex)) / 2; }

    Layout Finish() {
        for (std::size_t box = 0; box < boxes_.size(); ++box)
            layout_.centres.push_back({rows_.vertices[box].x, Middle(static_cast<int>(box))});
        for (std::size_t arc = 0; arc < downward_.size(); ++arc)
            layout_.routes.push_back(RouteOf(arc));
        return std::move(layout_);
    }

    Route RouteOf(std::size_t arc) const {
        const std::vector<int>& chain = rows_.chains[arc];
        const int from = chain.front();
        const int to = chain.back();
        Route route;
        AddPoint(route, ends_[arc].upper, Middle(from) + boxes_[Index(from)].height / 2);
        AddPoint(route, ends_[arc].upper, Bottom(from));
        for (std::size_t i = 1; i + 1 < chain.size(); ++i) {
            AddPoint(route, rows_.At(chain[i]).x, Top(chain[i]));
            AddPoint(route, rows_.At(chain[i]).x, Bottom(chain[i]));
        }
        AddPoint(route, ends_[arc].lower, Top(to));
        AddPoint(route, ends_[arc].lower, Middle(to) - boxes_[Index(to)].height / 2);
        route.isUpward = isBack_[arc];
        if (route.isUpward)
            std::reverse(route.points.begin(), route.points.end());
        return route;
    }

    static void AddPoint(Route& route, double x, double y) {
        constexpr double tiny = 0.01;
        if (!route.points.empty() && std::abs(route.points.back().y - y) < tiny)
            return;
        route.points.push_back({x, y});
    }

    const std::vector<LayoutBox>& boxes_;
    std::vector<bool> isBack_;
    // Back arcs the other way round.
    std::vector<Arc> downward_;
    LayerRows rows_;
    std::vector<Ends> ends_;
    std::vector<double> tops_;
    std::vector<double> heights_;
    Layout layout_;
};

} // namespace

Layout LayOutConnected(const std::vector<LayoutBox>& boxes, const std::vector<Arc>& arcs) {
    return Drawing(boxes, arcs).Draw();
}

} // namespace dyadctx::tool
