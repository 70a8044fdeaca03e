// SPDX-License-Identifier: MIT
#include "tools/dyadctx/layout/LayerRows.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <numeric>
#include <utility>

namespace dyadctx::tool {

namespace {

constexpr int MaxBends = 60000;
constexpr double BendWidth = 2;

std::size_t Index(int value) {
    return static_cast<std::size_t>(value);
}

class Maker {
public:
    Maker(const std::vector<LayoutBox>& boxes, const std::vector<Arc>& arcs,
          const std::vector<int>& rowOf)
        : arcs_(arcs), rowOf_(rowOf) {
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            RowVertex vertex;
            vertex.width = boxes[i].width + 2 * boxes[i].margin;
            vertex.row = rowOf[i];
            rows_.vertices.push_back(std::move(vertex));
        }
    }

    LayerRows Make() {
        RankNodes();
        MakeChains();
        FillRows();
        return std::move(rows_);
    }

private:
    int SpanOf(const Arc& arc) const { return rowOf_[Index(arc.to)] - rowOf_[Index(arc.from)]; }

    // The order in which a walk over all arcs, from the best connected node on, meets the nodes.
    // What hangs together then stands together from the start.
    void RankNodes() {
        MakeNeighbours();
        rank_.assign(rowOf_.size(), -1);
        std::vector<int> starts(rowOf_.size());
        std::iota(starts.begin(), starts.end(), 0);
        std::stable_sort(starts.begin(), starts.end(), [this](int a, int b) {
            return neighbours_[Index(a)].size() > neighbours_[Index(b)].size();
        });
        int next = 0;
        for (const int start : starts) {
            std::vector<int> open{start};
            while (!open.empty()) {
                const int node = open.back();
                open.pop_back();
                if (rank_[Index(node)] >= 0)
                    continue;
                rank_[Index(node)] = next++;
                const std::vector<int>& others = neighbours_[Index(node)];
                open.insert(open.end(), others.rbegin(), others.rend());
            }
        }
    }

    void MakeNeighbours() {
        neighbours_.resize(rowOf_.size());
        for (const Arc& arc : arcs_) {
            neighbours_[Index(arc.from)].push_back(arc.to);
            neighbours_[Index(arc.to)].push_back(arc.from);
        }
        for (std::vector<int>& others : neighbours_)
            Interleave(others);
    }

    // Spreads the neighbours of each row evenly among those of the others, so that the arcs to a
    // far row pass between the boxes of a near one.
    void Interleave(std::vector<int>& nodes) const {
        std::map<int, int> countOfRow;
        for (const int node : nodes)
            ++countOfRow[rowOf_[Index(node)]];
        std::map<int, int> seenOfRow;
        std::vector<std::pair<double, int>> keyed;
        for (const int node : nodes) {
            const int row = rowOf_[Index(node)];
            keyed.emplace_back((seenOfRow[row]++ + 0.5) / countOfRow[row], node);
        }
        std::sort(keyed.begin(), keyed.end());
        std::transform(keyed.begin(), keyed.end(), nodes.begin(),
                       [](const auto& entry) { return entry.second; });
    }

    void MakeChains() {
        std::vector<int> byLength(arcs_.size());
        std::iota(byLength.begin(), byLength.end(), 0);
        std::stable_sort(byLength.begin(), byLength.end(), [this](int a, int b) {
            return SpanOf(arcs_[Index(a)]) < SpanOf(arcs_[Index(b)]);
        });
        rows_.chains.resize(arcs_.size());
        int bends = 0;
        for (const int arc : byLength) {
            const int needed = SpanOf(arcs_[Index(arc)]) - 1;
            const bool isFree = needed > MaxBends - bends;
            bends += isFree ? 0 : needed;
            rows_.chains[Index(arc)] =
                isFree ? EndsOf(arcs_[Index(arc)]) : Chain(arcs_[Index(arc)]);
        }
    }

    static std::vector<int> EndsOf(const Arc& arc) { return {arc.from, arc.to}; }

    std::vector<int> Chain(const Arc& arc) {
        std::vector<int> chain{arc.from};
        const int rank = std::max(rank_[Index(arc.from)], rank_[Index(arc.to)]);
        for (int row = rowOf_[Index(arc.from)] + 1; row < rowOf_[Index(arc.to)]; ++row) {
            RowVertex bend;
            bend.width = BendWidth;
            bend.row = row;
            bend.isBend = true;
            chain.push_back(static_cast<int>(rows_.vertices.size()));
            rows_.vertices.push_back(std::move(bend));
            rank_.push_back(rank);
        }
        chain.push_back(arc.to);
        for (std::size_t i = 1; i < chain.size(); ++i) {
            rows_.At(chain[i - 1]).below.push_back(chain[i]);
            rows_.At(chain[i]).above.push_back(chain[i - 1]);
        }
        return chain;
    }

    void FillRows() {
        const auto highest = std::max_element(rowOf_.begin(), rowOf_.end());
        rows_.rows.resize(highest == rowOf_.end() ? 0 : Index(*highest) + 1);
        for (std::size_t i = 0; i < rows_.vertices.size(); ++i)
            rows_.rows[Index(rows_.vertices[i].row)].push_back(static_cast<int>(i));
        for (std::vector<int>& row : rows_.rows) {
            std::stable_sort(row.begin(), row.end(),
                             [this](int a, int b) { return rank_[Index(a)] < rank_[Index(b)]; });
            rows_.Renumber(row);
        }
    }

    const std::vector<Arc>& arcs_;
    const std::vector<int>& rowOf_;
    LayerRows rows_;
    std::vector<std::vector<int>> neighbours_;
    // Of nodes, then of bends.
    std::vector<int> rank_;
};

} // namespace

void LayerRows::Renumber(const std::vector<int>& row) {
    int place = 0;
    for (const int vertex : row)
        At(vertex).place = place++;
}

LayerRows MakeRows(const std::vector<LayoutBox>& boxes, const std::vector<Arc>& arcs,
                   const std::vector<int>& rowOf) {
    return Maker(boxes, arcs, rowOf).Make();
}

} // namespace dyadctx::tool
