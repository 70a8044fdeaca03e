// SPDX-License-Identifier: MIT
// The order of boxes and bends within their rows: barycentre sweeps, then swaps of neighbours.
#include "tools/dyadctx/layout/LayerRows.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace dyadctx::tool {

namespace {

using Neighbours = std::vector<int> RowVertex::*;

// Beyond this many bends and boxes a picture cannot be read anyhow, and time counts more.
constexpr std::size_t ManyVertices = 4000;
constexpr int SweepsOfFew = 24;
constexpr int SweepsOfMany = 6;

// Counts how many earlier values are greater than a new one.
class Inversions {
public:
    explicit Inversions(std::size_t values) : tree_(values + 1, 0) {}

    std::int64_t GreaterThan(int value) const {
        std::int64_t smaller = 0;
        for (std::size_t i = static_cast<std::size_t>(value) + 1; i > 0; i &= i - 1)
            smaller += tree_[i];
        return added_ - smaller;
    }
    void Add(int value) {
        ++added_;
        for (std::size_t i = static_cast<std::size_t>(value) + 1; i < tree_.size();
             i += i & (~i + 1))
            ++tree_[i];
    }

private:
    std::vector<std::int64_t> tree_;
    std::int64_t added_ = 0;
};

class Ordering {
public:
    explicit Ordering(LayerRows& rows) : rows_(rows) {}

    void Run() {
        const bool many = rows_.vertices.size() > ManyVertices;
        best_ = rows_.rows;
        fewest_ = Crossings();
        const int sweeps = many ? SweepsOfMany : SweepsOfFew;
        for (int sweep = 0; sweep < sweeps && fewest_ > 0; ++sweep) {
            if (sweep % 2 == 0)
                SweepDown();
            else
                SweepUp();
            if (!many)
                SwapNeighbours();
            KeepIfBetter();
        }
        Restore();
    }

private:
    void SweepDown() {
        for (std::size_t row = 1; row < rows_.rows.size(); ++row)
            SortByNeighbours(rows_.rows[row], &RowVertex::above);
    }
    void SweepUp() {
        for (std::size_t row = rows_.rows.size() - 1; row-- > 0;)
            SortByNeighbours(rows_.rows[row], &RowVertex::below);
    }

    // A vertex without neighbours there keeps its place.
    void SortByNeighbours(std::vector<int>& row, Neighbours side) {
        std::vector<std::pair<double, int>> keyed;
        for (const int vertex : row) {
            const std::vector<int>& others = rows_.At(vertex).*side;
            if (others.empty())
                continue;
            double sum = 0;
            for (const int other : others)
                sum += rows_.At(other).place;
            keyed.emplace_back(sum / static_cast<double>(others.size()), vertex);
        }
        std::stable_sort(keyed.begin(), keyed.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        auto next = keyed.begin();
        for (int& vertex : row) {
            if (!(rows_.At(vertex).*side).empty())
                vertex = (next++)->second;
        }
        rows_.Renumber(row);
    }

    void SwapNeighbours() {
        constexpr int maxRounds = 8;
        bool changed = true;
        for (int round = 0; round < maxRounds && changed; ++round) {
            changed = false;
            for (std::vector<int>& row : rows_.rows)
                changed = SwapWithin(row) || changed;
        }
    }

    bool SwapWithin(std::vector<int>& row) {
        bool changed = false;
        for (std::size_t i = 1; i < row.size(); ++i) {
            if (Gain(row[i - 1], row[i]) <= 0)
                continue;
            std::swap(row[i - 1], row[i]);
            std::swap(rows_.At(row[i - 1]).place, rows_.At(row[i]).place);
            changed = true;
        }
        return changed;
    }

    // How many crossings go when the right one of two neighbours in a row becomes the left one.
    std::int64_t Gain(int left, int right) const {
        std::int64_t gain = 0;
        for (const Neighbours side : {&RowVertex::above, &RowVertex::below}) {
            for (const int a : rows_.At(left).*side) {
                for (const int b : rows_.At(right).*side) {
                    const int difference = rows_.At(a).place - rows_.At(b).place;
                    gain += difference > 0 ? 1 : (difference < 0 ? -1 : 0);
                }
            }
        }
        return gain;
    }

    std::int64_t Crossings() const {
        std::int64_t crossings = 0;
        for (std::size_t row = 0; row + 1 < rows_.rows.size(); ++row)
            crossings += CrossingsBelow(rows_.rows[row], rows_.rows[row + 1].size());
        return crossings;
    }

    std::int64_t CrossingsBelow(const std::vector<int>& row, std::size_t sizeBelow) const {
        Inversions inversions(sizeBelow);
        std::int64_t crossings = 0;
        for (const int vertex : row) {
            for (const int other : rows_.At(vertex).below)
                crossings += inversions.GreaterThan(rows_.At(other).place);
            for (const int other : rows_.At(vertex).below)
                inversions.Add(rows_.At(other).place);
        }
        return crossings;
    }

    void KeepIfBetter() {
        const std::int64_t crossings = Crossings();
        if (crossings >= fewest_)
            return;
        fewest_ = crossings;
        best_ = rows_.rows;
    }

    void Restore() {
        rows_.rows = std::move(best_);
        for (const std::vector<int>& row : rows_.rows)
            rows_.Renumber(row);
    }

    LayerRows& rows_;
    std::vector<std::vector<int>> best_;
    std::int64_t fewest_ = 0;
};

} // namespace

void OrderRows(LayerRows& rows) {
    Ordering(rows).Run();
}

} // namespace dyadctx::tool
