// SPDX-License-Identifier: MIT
#include "tools/dyadctx/layout/LayeredLayout.h"

#include "tools/dyadctx/layout/ConnectedLayout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace dyadctx::tool {

namespace {

constexpr double Aspect = 1.7;
constexpr double GapOfParts = 48;
constexpr double GapOfGrid = 18;
// Half the height of a loop where it meets its box.
constexpr double LoopHeight = 8;

std::size_t Index(int value) {
    return static_cast<std::size_t>(value);
}

// A part of the whole with its own layout.
struct Part {
    std::vector<int> boxes;
    std::vector<int> arcs;
    Layout layout;
};

// Where the next part may stand: below the last one in its column, or beside the column.
struct Shelf {
    double x = 0;
    double columnWidth = 0;
    double top = 0;
    double nextY = 0;
    double bottom = 0;
};

// Joins numbers into sets, each named by its smallest member.
class DisjointSets {
public:
    explicit DisjointSets(std::size_t size) : parent_(size) {
        std::iota(parent_.begin(), parent_.end(), 0);
    }
    int Find(int member) {
        while (parent_[Index(member)] != member) {
            parent_[Index(member)] = parent_[Index(parent_[Index(member)])];
            member = parent_[Index(member)];
        }
        return member;
    }
    void Join(int a, int b) {
        a = Find(a);
        b = Find(b);
        parent_[Index(std::max(a, b))] = std::min(a, b);
    }

private:
    std::vector<int> parent_;
};

class Composition {
public:
    Composition(const std::vector<LayoutBox>& boxes, const std::vector<Arc>& arcs)
        : boxes_(boxes), arcs_(arcs), placeInPart_(boxes.size(), 0) {
        whole_.centres.resize(boxes.size());
        whole_.routes.resize(arcs.size());
    }

    Layout Compose() {
        MakeRoomForLoops();
        std::vector<Part> parts = Split();
        std::vector<int> alone;
        std::erase_if(parts, [&alone](const Part& part) {
            if (part.arcs.empty())
                alone.push_back(part.boxes.front());
            return part.arcs.empty();
        });
        for (Part& part : parts)
            LayOutPart(part);
        PutOnShelves(parts);
        PutInGrid(alone);
        DrawLoops();
        return std::move(whole_);
    }

private:
    void MakeRoomForLoops() {
        for (const Arc& arc : arcs_) {
            if (arc.from == arc.to)
                boxes_[Index(arc.from)].margin = LoopRoom;
        }
    }

    // In the order of the first box of each.
    std::vector<Part> Split() const {
        DisjointSets sets(boxes_.size());
        for (const Arc& arc : arcs_)
            sets.Join(arc.from, arc.to);
        std::vector<Part> parts;
        std::vector<int> partOf(boxes_.size(), 0);
        for (int box = 0; box < std::ssize(boxes_); ++box) {
            const int first = sets.Find(box);
            if (first == box) {
                partOf[Index(box)] = static_cast<int>(parts.size());
                parts.emplace_back();
            }
            parts[Index(partOf[Index(first)])].boxes.push_back(box);
        }
        for (int arc = 0; arc < std::ssize(arcs_); ++arc) {
            const int first = sets.Find(arcs_[Index(arc)].from);
            parts[Index(partOf[Index(first)])].arcs.push_back(arc);
        }
        return parts;
    }

    void LayOutPart(Part& part) {
        std::vector<LayoutBox> boxes;
        for (const int box : part.boxes) {
            placeInPart_[Index(box)] = static_cast<int>(boxes.size());
            boxes.push_back(boxes_[Index(box)]);
        }
        std::erase_if(part.arcs,
                      [this](int arc) { return arcs_[Index(arc)].from == arcs_[Index(arc)].to; });
        std::vector<Arc> arcs;
        for (const int arc : part.arcs)
            arcs.push_back({placeInPart_[Index(arcs_[Index(arc)].from)],
                            placeInPart_[Index(arcs_[Index(arc)].to)]});
        part.layout = LayOutConnected(boxes, arcs);
    }

    // The highest parts first, from left to right, on a new shelf where there is no more room. What
    // fits below the part before goes there.
    void PutOnShelves(std::vector<Part>& parts) {
        std::stable_sort(parts.begin(), parts.end(), [](const Part& a, const Part& b) {
            return a.layout.height > b.layout.height;
        });
        double area = 0;
        double widest = 0;
        for (const Part& part : parts) {
            area += (part.layout.width + GapOfParts) * (part.layout.height + GapOfParts);
            widest = std::max(widest, part.layout.width);
        }
        const double room = std::max(widest, std::sqrt(area * Aspect));
        Shelf shelf;
        for (const Part& part : parts) {
            MakeRoomOn(shelf, part.layout, room);
            Put(part, {shelf.x, shelf.nextY});
            shelf.nextY += part.layout.height + GapOfParts;
            whole_.width = std::max(whole_.width, shelf.x + part.layout.width);
        }
        whole_.height = shelf.bottom;
    }

    static void MakeRoomOn(Shelf& shelf, const Layout& part, double room) {
        const bool isEmpty = shelf.columnWidth <= 0;
        const bool fitsBelow =
            !isEmpty && shelf.nextY + part.height <= shelf.bottom && shelf.x + part.width <= room;
        if (fitsBelow) {
            shelf.columnWidth = std::max(shelf.columnWidth, part.width);
            return;
        }
        const double x = isEmpty ? 0 : shelf.x + shelf.columnWidth + GapOfParts;
        if (isEmpty || x + part.width > room) {
            const double top = isEmpty ? 0 : shelf.bottom + GapOfParts;
            shelf = {0, part.width, top, top, top + part.height};
            return;
        }
        shelf.x = x;
        shelf.columnWidth = part.width;
        shelf.nextY = shelf.top;
    }

    void Put(const Part& part, const Point& corner) {
        for (std::size_t i = 0; i < part.boxes.size(); ++i) {
            const Point& centre = part.layout.centres[i];
            whole_.centres[Index(part.boxes[i])] = {corner.x + centre.x, corner.y + centre.y};
        }
        for (std::size_t i = 0; i < part.arcs.size(); ++i) {
            Route route = part.layout.routes[i];
            for (Point& point : route.points)
                point = {corner.x + point.x, corner.y + point.y};
            whole_.routes[Index(part.arcs[i])] = std::move(route);
        }
    }

    void PutInGrid(const std::vector<int>& alone) {
        if (alone.empty())
            return;
        const std::vector<double> columns = ColumnsFor(alone);
        double y = whole_.height > 0 ? whole_.height + GapOfParts : 0;
        double x = 0;
        double height = 0;
        for (std::size_t i = 0; i < alone.size(); ++i) {
            const std::size_t column = i % columns.size();
            if (column == 0 && i > 0) {
                y += height + GapOfGrid;
                x = height = 0;
            }
            const LayoutBox& box = boxes_[Index(alone[i])];
            whole_.centres[Index(alone[i])] = {x + columns[column] / 2, y + box.height / 2};
            x += columns[column];
            whole_.width = std::max(whole_.width, x);
            x += GapOfGrid;
            height = std::max(height, box.height);
        }
        whole_.height = y + height;
    }

    // The widths of as many columns as fit.
    std::vector<double> ColumnsFor(const std::vector<int>& alone) const {
        double area = 0;
        double sum = 0;
        for (const int box : alone) {
            const LayoutBox& size = boxes_[Index(box)];
            area += (size.width + GapOfGrid) * (size.height + GapOfGrid);
            sum += size.width + GapOfGrid;
        }
        const double room = std::max(whole_.width, std::sqrt(area * Aspect));
        const double average = sum / static_cast<double>(alone.size());
        std::size_t count = static_cast<std::size_t>(std::max(1.0, room / average));
        for (count = std::min(count, alone.size()); count > 1; --count) {
            std::vector<double> columns = ColumnWidths(alone, count);
            const double gaps = GapOfGrid * static_cast<double>(count - 1);
            if (std::accumulate(columns.begin(), columns.end(), gaps) <= room)
                return columns;
        }
        return ColumnWidths(alone, 1);
    }

    std::vector<double> ColumnWidths(const std::vector<int>& alone, std::size_t count) const {
        std::vector<double> widths(count, 0);
        for (std::size_t i = 0; i < alone.size(); ++i)
            widths[i % count] = std::max(widths[i % count], boxes_[Index(alone[i])].width);
        return widths;
    }

    void DrawLoops() {
        for (std::size_t i = 0; i < arcs_.size(); ++i) {
            if (arcs_[i].from != arcs_[i].to)
                continue;
            const Point& centre = whole_.centres[Index(arcs_[i].from)];
            const double side = centre.x + boxes_[Index(arcs_[i].from)].width / 2;
            whole_.routes[i].points = {{side, centre.y - LoopHeight},
                                       {side, centre.y + LoopHeight}};
            whole_.routes[i].isLoop = true;
        }
    }

    std::vector<LayoutBox> boxes_;
    const std::vector<Arc>& arcs_;
    std::vector<int> placeInPart_;
    Layout whole_;
};

} // namespace

Layout LayOut(const std::vector<LayoutBox>& boxes, const std::vector<Arc>& arcs) {
    return Composition(boxes, arcs).Compose();
}

} // namespace dyadctx::tool
