// SPDX-License-Identifier: MIT
// Which nodes of a graph can reach each other.
//
// Complete in this header: the tool, which links the library as any client does, asks it too.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace dyadctx {

struct Arc {
    int from = 0;
    int to = 0;
};

// For each node the targets of its arcs, in their order, in one piece of memory.
class Successors {
public:
    Successors(int nodes, const std::vector<Arc>& arcs)
        : starts_(Index(nodes) + 1, 0), arcs_(arcs.size()), targets_(arcs.size()) {
        for (const Arc& arc : arcs)
            ++starts_[Index(arc.from) + 1];
        for (std::size_t i = 1; i < starts_.size(); ++i)
            starts_[i] += starts_[i - 1];
        std::vector<int> next(starts_.begin(), starts_.end() - 1);
        for (std::size_t i = 0; i < arcs.size(); ++i) {
            const std::size_t place = Index(next[Index(arcs[i].from)]++);
            arcs_[place] = static_cast<int>(i);
            targets_[place] = arcs[i].to;
        }
    }

    int Count(int node) const { return starts_[Index(node) + 1] - starts_[Index(node)]; }
    // The number of the arc, and its target; `i` counts from 0.
    int ArcAt(int node, int i) const { return arcs_[Index(starts_[Index(node)] + i)]; }
    int TargetAt(int node, int i) const { return targets_[Index(starts_[Index(node)] + i)]; }

private:
    static std::size_t Index(int value) { return static_cast<std::size_t>(value); }

    std::vector<int> starts_;
    std::vector<int> arcs_;
    std::vector<int> targets_;
};

// Tarjan's algorithm with a stack of its own instead of recursion.
class StrongComponentSearch {
public:
    StrongComponentSearch(int nodes, const std::vector<Arc>& arcs)
        : successors_(nodes, arcs), order_(Index(nodes), Unseen), low_(Index(nodes), 0),
          component_(Index(nodes), Unseen) {}

    std::vector<int> Run() {
        for (std::size_t node = 0; node < order_.size(); ++node) {
            if (order_[node] == Unseen)
                VisitFrom(static_cast<int>(node));
        }
        return component_;
    }

private:
    static constexpr int Unseen = -1;

    struct Step {
        int node;
        int nextArc;
    };

    static std::size_t Index(int value) { return static_cast<std::size_t>(value); }

    void VisitFrom(int root) {
        Enter(root);
        while (!steps_.empty()) {
            Step& step = steps_.back();
            if (step.nextArc < successors_.Count(step.node))
                Follow(step.node, successors_.TargetAt(step.node, step.nextArc++));
            else
                Leave();
        }
    }

    void Enter(int node) {
        order_[Index(node)] = low_[Index(node)] = counter_++;
        open_.push_back(node);
        steps_.push_back({node, 0});
    }

    void Follow(int node, int target) {
        if (order_[Index(target)] == Unseen)
            Enter(target);
        else if (component_[Index(target)] == Unseen)
            low_[Index(node)] = std::min(low_[Index(node)], order_[Index(target)]);
    }

    void Leave() {
        const int node = steps_.back().node;
        steps_.pop_back();
        if (!steps_.empty()) {
            int& low = low_[Index(steps_.back().node)];
            low = std::min(low, low_[Index(node)]);
        }
        if (low_[Index(node)] == order_[Index(node)])
            CloseComponent(node);
    }

    void CloseComponent(int root) {
        int node = Unseen;
        do {
            node = open_.back();
            open_.pop_back();
            component_[Index(node)] = components_;
        } while (node != root);
        ++components_;
    }

    Successors successors_;
    std::vector<int> order_;
    std::vector<int> low_;
    std::vector<int> component_;
    std::vector<int> open_;
    std::vector<Step> steps_;
    int counter_ = 0;
    int components_ = 0;
};

// The number of its component for each node: two nodes have the same one exactly when each can be
// reached from the other. Does not recurse, so the depth of the graph does not matter.
inline std::vector<int> StrongComponents(int nodes, const std::vector<Arc>& arcs) {
    return StrongComponentSearch(nodes, arcs).Run();
}

} // namespace dyadctx
