#include "tools/dyadctx/graph/GraphFaults.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace dyadctx::tool {

namespace {

// Where the elements of contexts begin, and the nodes that stand for these.
using Starts = std::vector<std::pair<VELPlace, std::size_t>>;

class Marker {
public:
    Marker(Graph& graph, const std::vector<VELDyadContext*>& declared,
           const VELDyadCtxFileCheck& check)
        : graph_(graph) {
        for (std::size_t i = 0; i < declared.size(); ++i) {
            VELPlace place;
            if (check.GetPlace(declared[i], place) >= 0)
                starts_.emplace_back(place, i);
            byName_.emplace(graph_.nodes[i].name, i);
        }
        std::sort(starts_.begin(), starts_.end());
    }

    void Mark(const VELDyadCtxFinding& finding) {
        if (!finding.hasContext) {
            MarkElement(finding.place, finding);
            return;
        }
        const std::string_view name = finding.context.AsView();
        std::set<std::size_t> nodes;
        AddNodeAt(finding.place, name, nodes);
        for (int i = 1; i <= finding.related.Size(); ++i)
            AddNodeAt(finding.related[i].place, name, nodes);
        const auto first = byName_.find(std::string(name));
        if (nodes.empty() && first != byName_.end())
            nodes.insert(first->second);
        for (const std::size_t node : nodes)
            graph_.nodes[node].faults.emplace_back(finding.text.AsView());
    }

private:
    // The context whose element stands at that very place: one without a name.
    void MarkElement(const VELPlace& place, const VELDyadCtxFinding& finding) {
        const auto next = FirstBehind(place);
        if (next != starts_.begin() && std::prev(next)->first == place)
            graph_.nodes[std::prev(next)->second].faults.emplace_back(finding.text.AsView());
    }

    // The context in whose element that place is, if it has the name.
    void AddNodeAt(const VELPlace& place, std::string_view name,
                   std::set<std::size_t>& nodes) const {
        const auto next = FirstBehind(place);
        if (next == starts_.begin())
            return;
        const std::size_t node = std::prev(next)->second;
        if (graph_.nodes[node].name == name)
            nodes.insert(node);
    }

    Starts::const_iterator FirstBehind(const VELPlace& place) const {
        return std::upper_bound(
            starts_.begin(), starts_.end(), place,
            [](const VELPlace& wanted, const auto& start) { return wanted < start.first; });
    }

    Graph& graph_;
    // In the order of the file.
    Starts starts_;
    std::unordered_map<std::string, std::size_t> byName_;
};

} // namespace

void MarkFaults(Graph& graph, const std::vector<VELDyadContext*>& declared,
                const VELDyadCtxFileCheck& check) {
    Marker marker(graph, declared, check);
    for (int i = 1; i <= check.GetNbFindings(); ++i) {
        const VELDyadCtxFinding& finding = check.GetFindingAt(i);
        if (finding.severity == VELDyadCtxSeverity::Error)
            marker.Mark(finding);
    }
}

} // namespace dyadctx::tool
