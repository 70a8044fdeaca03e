// SPDX-License-Identifier: MIT
#include "tools/dyadctx/layout/LayerAssignment.h"

#include <algorithm>
#include <cstddef>
#include <queue>
#include <utility>

namespace dyadctx::tool {

namespace {

std::size_t At(int value) {
    return static_cast<std::size_t>(value);
}

std::vector<int> CountOfEntries(std::size_t nodes, const std::vector<Arc>& arcs) {
    std::vector<int> counts(nodes, 0);
    for (const Arc& arc : arcs)
        ++counts[At(arc.to)];
    return counts;
}

// A walk that notes where it comes back to a node it is still on the way from.
class DepthFirstWalk {
public:
    DepthFirstWalk(int nodes, const std::vector<Arc>& arcs)
        : successors_(nodes, arcs), states_(At(nodes), State::New), isBack_(arcs.size(), false) {}

    void From(int root) {
        if (states_[At(root)] == State::New)
            Enter(root);
        while (!steps_.empty()) {
            auto& [node, next] = steps_.back();
            if (next == successors_.Count(node)) {
                states_[At(node)] = State::Left;
                steps_.pop_back();
                continue;
            }
            const int arc = next++;
            Follow(successors_.ArcAt(node, arc), successors_.TargetAt(node, arc));
        }
    }
    std::vector<bool> TakeBackArcs() { return std::move(isBack_); }

private:
    enum class State { New, OnTheWay, Left };

    void Enter(int node) {
        states_[At(node)] = State::OnTheWay;
        steps_.emplace_back(node, 0);
    }
    void Follow(int arc, int target) {
        if (states_[At(target)] == State::OnTheWay)
            isBack_[At(arc)] = true;
        if (states_[At(target)] == State::New)
            Enter(target);
    }

    Successors successors_;
    std::vector<State> states_;
    std::vector<bool> isBack_;
    std::vector<std::pair<int, int>> steps_;
};

// Rows that fill up. The first one with room is found without walking over the full ones.
class Rows {
public:
    explicit Rows(double maxWidth) : maxWidth_(maxWidth) {}

    int Put(double width, int firstRow) {
        Reach(firstRow);
        const int row = FirstOpen(firstRow);
        widths_[At(row)] += width;
        if (widths_[At(row)] > maxWidth_) {
            Reach(row + 1);
            nextOpen_[At(row)] = row + 1;
        }
        return row;
    }
    bool HasRoom(int row, double width) const { return widths_[At(row)] + width <= maxWidth_; }
    void Move(double width, int from, int to) {
        widths_[At(from)] -= width;
        widths_[At(to)] += width;
    }

private:
    void Reach(int row) {
        while (std::ssize(widths_) <= row) {
            nextOpen_.push_back(static_cast<int>(widths_.size()));
            widths_.push_back(0);
        }
    }
    int FirstOpen(int row) {
        while (nextOpen_[At(row)] != row) {
            Reach(nextOpen_[At(row)]);
            // Shorten the way for the next one.
            nextOpen_[At(row)] = nextOpen_[At(nextOpen_[At(row)])];
            row = nextOpen_[At(row)];
        }
        return row;
    }

    double maxWidth_;
    std::vector<double> widths_;
    std::vector<int> nextOpen_;
};

class Assignment {
public:
    Assignment(const std::vector<double>& widths, const std::vector<Arc>& arcs, double maxWidth)
        : widths_(widths), successors_(static_cast<int>(widths.size()), arcs),
          entries_(CountOfEntries(widths.size(), arcs)), rowOf_(widths.size(), 0), rows_(maxWidth) {
    }

    std::vector<int> Run() {
        MeasureWaysDown();
        PutNodes();
        PullSourcesDown();
        CloseGaps();
        return std::move(rowOf_);
    }

private:
    int NodeCount() const { return static_cast<int>(widths_.size()); }

    // The number of arcs on the longest way down from each node.
    void MeasureWaysDown() {
        std::vector<int> left = entries_;
        std::vector<int> order;
        for (int node = 0; node < NodeCount(); ++node) {
            if (left[At(node)] == 0)
                order.push_back(node);
        }
        for (std::size_t i = 0; i < order.size(); ++i)
            ForEachTarget(order[i], [&](int target) {
                if (--left[At(target)] == 0)
                    order.push_back(target);
            });
        wayDown_.assign(widths_.size(), 0);
        for (auto node = order.rbegin(); node != order.rend(); ++node)
            ForEachTarget(*node, [&](int target) {
                wayDown_[At(*node)] = std::max(wayDown_[At(*node)], wayDown_[At(target)] + 1);
            });
    }

    // Where a row cannot take all, those with the longest way down below them go first.
    void PutNodes() {
        std::vector<int> left = entries_;
        std::vector<int> firstRow(widths_.size(), 0);
        std::priority_queue<std::pair<int, int>> ready;
        const auto makeReady = [&](int node) { ready.emplace(wayDown_[At(node)], -node); };
        for (int node = 0; node < NodeCount(); ++node) {
            if (left[At(node)] == 0)
                makeReady(node);
        }
        while (!ready.empty()) {
            const int node = -ready.top().second;
            ready.pop();
            rowOf_[At(node)] = rows_.Put(widths_[At(node)], firstRow[At(node)]);
            ForEachTarget(node, [&](int target) {
                firstRow[At(target)] = std::max(firstRow[At(target)], rowOf_[At(node)] + 1);
                if (--left[At(target)] == 0)
                    makeReady(target);
            });
        }
    }

    // What nothing leads to stands right above what it leads to, where there is room.
    void PullSourcesDown() {
        constexpr int maxTries = 50;
        for (int node = 0; node < NodeCount(); ++node) {
            if (entries_[At(node)] > 0 || successors_.Count(node) == 0)
                continue;
            int row = rowOf_[At(successors_.TargetAt(node, 0))] - 1;
            ForEachTarget(node, [&](int target) { row = std::min(row, rowOf_[At(target)] - 1); });
            const double width = widths_[At(node)];
            const int last = std::max(rowOf_[At(node)], row - maxTries);
            while (row > last && !rows_.HasRoom(row, width))
                --row;
            if (row <= rowOf_[At(node)] || !rows_.HasRoom(row, width))
                continue;
            rows_.Move(width, rowOf_[At(node)], row);
            rowOf_[At(node)] = row;
        }
    }

    void CloseGaps() {
        const auto highest = std::max_element(rowOf_.begin(), rowOf_.end());
        if (highest == rowOf_.end())
            return;
        std::vector<int> newRow(At(*highest) + 1, 0);
        for (const int row : rowOf_)
            newRow[At(row)] = 1;
        int next = 0;
        for (int& row : newRow)
            row = row == 1 ? next++ : -1;
        for (int& row : rowOf_)
            row = newRow[At(row)];
    }

    template<class Action>
    void ForEachTarget(int node, const Action& action) const {
        for (int i = 0; i < successors_.Count(node); ++i)
            action(successors_.TargetAt(node, i));
    }

    const std::vector<double>& widths_;
    Successors successors_;
    std::vector<int> entries_;
    std::vector<int> wayDown_;
    std::vector<int> rowOf_;
    Rows rows_;
};

} // namespace

std::vector<bool> BackArcs(int nodes, const std::vector<Arc>& arcs) {
    const std::vector<int> entries = CountOfEntries(At(nodes), arcs);
    DepthFirstWalk walk(nodes, arcs);
    for (int node = 0; node < nodes; ++node) {
        if (entries[At(node)] == 0)
            walk.From(node);
    }
    for (int node = 0; node < nodes; ++node)
        walk.From(node);
    return walk.TakeBackArcs();
}

std::vector<int> AssignRows(const std::vector<double>& widths, const std::vector<Arc>& arcs,
                            double maxWidth) {
    return Assignment(widths, arcs, maxWidth).Run();
}

} // namespace dyadctx::tool
