// SPDX-License-Identifier: MIT
// Where boxes and bends stand in their rows. Each row in turn moves as near to its neighbours as
// the order and the distances within the row allow, which is a weighted isotonic regression.
#include "tools/dyadctx/layout/LayerRows.h"

#include <algorithm>
#include <cstddef>

namespace dyadctx::tool {

namespace {

constexpr double GapOfBoxes = 28;
constexpr double GapToBend = 18;
constexpr double GapOfBends = 11;
// Of a vertex that nothing draws anywhere.
constexpr double IdleWeight = 0.01;

constexpr std::size_t ManyVertices = 20000;
constexpr int RoundsOfFew = 24;
constexpr int RoundsOfMany = 8;

double Distance(const RowVertex& left, const RowVertex& right) {
    const double gap = left.isBend && right.isBend   ? GapOfBends
                       : left.isBend || right.isBend ? GapToBend
                                                     : GapOfBoxes;
    return (left.width + right.width) / 2 + gap;
}

// Long arcs are to be straight before anything else.
double Weight(const RowVertex& a, const RowVertex& b) {
    if (a.isBend && b.isBend)
        return 8;
    return a.isBend || b.isBend ? 2 : 1;
}

struct Wish {
    double sum = 0;
    double weight = 0;
    void Add(double x, double by) {
        sum += x * by;
        weight += by;
    }
    double Mean() const { return sum / weight; }
};

enum class Side { Above, Below, Both };

class Placement {
public:
    explicit Placement(LayerRows& rows) : rows_(rows) {}

    void Run() {
        for (const std::vector<int>& row : rows_.rows)
            PutSideBySide(row);
        const int rounds = rows_.vertices.size() > ManyVertices ? RoundsOfMany : RoundsOfFew;
        for (int round = 0; round < rounds; ++round) {
            Sweep(Side::Above);
            SweepUp(Side::Below);
        }
        for (int round = 0; round < rounds / 2; ++round) {
            Sweep(Side::Both);
            SweepUp(Side::Both);
        }
    }

private:
    void Sweep(Side side) {
        for (const std::vector<int>& row : rows_.rows)
            Align(row, side);
    }
    void SweepUp(Side side) {
        for (auto row = rows_.rows.rbegin(); row != rows_.rows.rend(); ++row)
            Align(*row, side);
    }

    // Around 0.
    void PutSideBySide(const std::vector<int>& row) {
        double x = 0;
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i > 0)
                x += Distance(rows_.At(row[i - 1]), rows_.At(row[i]));
            rows_.At(row[i]).x = x;
        }
        for (const int vertex : row)
            rows_.At(vertex).x -= x / 2;
    }

    Wish WishOf(const RowVertex& vertex, Side side) const {
        Wish wish;
        if (side != Side::Below)
            for (const int other : vertex.above)
                wish.Add(rows_.At(other).x, Weight(vertex, rows_.At(other)));
        if (side != Side::Above)
            for (const int other : vertex.below)
                wish.Add(rows_.At(other).x, Weight(vertex, rows_.At(other)));
        if (wish.weight <= 0)
            wish.Add(vertex.x, IdleWeight);
        return wish;
    }

    // Neighbours that wish to stand nearer than they may form a block, which stands where its
    // members together wish to be.
    void Align(const std::vector<int>& row, Side side) {
        struct Block {
            Wish wish;
            std::size_t size;
        };
        std::vector<Block> blocks;
        double offset = 0;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const RowVertex& vertex = rows_.At(row[i]);
            if (i > 0)
                offset += Distance(rows_.At(row[i - 1]), vertex);
            Wish wish = WishOf(vertex, side);
            wish.sum -= offset * wish.weight;
            blocks.push_back({wish, 1});
            while (blocks.size() > 1 &&
                   blocks[blocks.size() - 2].wish.Mean() >= blocks.back().wish.Mean()) {
                const Block last = blocks.back();
                blocks.pop_back();
                blocks.back().wish.sum += last.wish.sum;
                blocks.back().wish.weight += last.wish.weight;
                blocks.back().size += last.size;
            }
        }
        std::size_t next = 0;
        offset = 0;
        for (const Block& block : blocks) {
            for (std::size_t i = 0; i < block.size; ++i, ++next) {
                if (next > 0)
                    offset += Distance(rows_.At(row[next - 1]), rows_.At(row[next]));
                rows_.At(row[next]).x = block.wish.Mean() + offset;
            }
        }
    }

    LayerRows& rows_;
};

} // namespace

void PlaceRows(LayerRows& rows) {
    Placement(rows).Run();
}

} // namespace dyadctx::tool
