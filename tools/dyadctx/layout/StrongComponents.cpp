#include "tools/dyadctx/layout/StrongComponents.h"

#include <algorithm>
#include <cstddef>

namespace dyadctx::tool {

namespace {

// Tarjan's algorithm with a stack of its own in place of recursion.
class Search {
public:
    Search(int nodes, const std::vector<Arc>& arcs)
        : successors_(nodes, arcs), order_(Size(nodes), Unseen), low_(Size(nodes), 0),
          component_(Size(nodes), Unseen) {}

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

    static std::size_t Size(int value) { return static_cast<std::size_t>(value); }

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
        order_[Size(node)] = low_[Size(node)] = counter_++;
        open_.push_back(node);
        steps_.push_back({node, 0});
    }

    void Follow(int node, int target) {
        if (order_[Size(target)] == Unseen)
            Enter(target);
        else if (component_[Size(target)] == Unseen)
            low_[Size(node)] = std::min(low_[Size(node)], order_[Size(target)]);
    }

    void Leave() {
        const int node = steps_.back().node;
        steps_.pop_back();
        if (!steps_.empty()) {
            int& low = low_[Size(steps_.back().node)];
            low = std::min(low, low_[Size(node)]);
        }
        if (low_[Size(node)] == order_[Size(node)])
            CloseComponent(node);
    }

    void CloseComponent(int root) {
        int node = Unseen;
        do {
            node = open_.back();
            open_.pop_back();
            component_[Size(node)] = components_;
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

} // namespace

Successors::Successors(int nodes, const std::vector<Arc>& arcs)
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

std::vector<int> StrongComponents(int nodes, const std::vector<Arc>& arcs) {
    return Search(nodes, arcs).Run();
}

} // namespace dyadctx::tool
