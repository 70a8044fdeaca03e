// Which nodes of a graph can reach each other.
#pragma once

#include <vector>

namespace dyadctx::tool {

struct Arc {
    int from = 0;
    int to = 0;
};

// For each node the targets of its arcs, in their order, in one piece of memory.
class Successors {
public:
    Successors(int nodes, const std::vector<Arc>& arcs);
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

// The number of its component for each node: two nodes have the same one exactly when each can be
// reached from the other. Does not recurse, so the depth of the graph does not matter.
std::vector<int> StrongComponents(int nodes, const std::vector<Arc>& arcs);

} // namespace dyadctx::tool
