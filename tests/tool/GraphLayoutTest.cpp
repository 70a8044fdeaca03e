// SPDX-License-Identifier: MIT
// The layered layout: what holds for every picture, whatever the graph.
#include "tools/dyadctx/layout/LayeredLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace dyadctx::test {

namespace {

using namespace dyadctx::tool;

constexpr double BoxHeight = 40;

struct GraphCase {
    std::string name;
    int boxes = 0;
    std::vector<Arc> arcs;
};

GraphCase Chain(int length) {
    GraphCase example{"chain of " + std::to_string(length), length, {}};
    for (int i = 0; i + 1 < length; ++i)
        example.arcs.push_back({i, i + 1});
    return example;
}

GraphCase Ring(int length) {
    GraphCase example = Chain(length);
    example.name = "ring of " + std::to_string(length);
    example.arcs.push_back({length - 1, 0});
    return example;
}

GraphCase Hub(int friends, bool inwards) {
    GraphCase example{
        std::to_string(friends) + (inwards ? " into one" : " out of one"), friends + 1, {}};
    for (int i = 1; i <= friends; ++i)
        example.arcs.push_back(inwards ? Arc{i, 0} : Arc{0, i});
    return example;
}

GraphCase Random(int boxes, int arcs, unsigned seed) {
    GraphCase example{"random " + std::to_string(boxes) + "/" + std::to_string(arcs), boxes, {}};
    std::mt19937 generator(seed);
    const auto any = [&] { return static_cast<int>(generator() % static_cast<unsigned>(boxes)); };
    for (int i = 0; i < arcs; ++i) {
        const int from = any();
        example.arcs.push_back({from, any()});
    }
    return example;
}

std::vector<GraphCase> Graphs() {
    return {{"nothing", 0, {}},
            {"one", 1, {}},
            {"one loop", 1, {{0, 0}}},
            {"both ways, twice", 2, {{0, 1}, {1, 0}, {0, 1}}},
            {"alone", 50, {}},
            Chain(20),
            Ring(7),
            Hub(30, false),
            Hub(30, true),
            Random(40, 100, 1),
            Random(60, 45, 2),
            Random(200, 260, 3)};
}

// Of different widths.
std::vector<LayoutBox> BoxesFor(const GraphCase& example) {
    std::vector<LayoutBox> boxes;
    for (int i = 0; i < example.boxes; ++i)
        boxes.push_back({80.0 + 25 * (i % 7), BoxHeight, 0});
    return boxes;
}

struct Area {
    double left, right, top, bottom;
};

Area AreaOf(const LayoutBox& box, const Point& centre) {
    return {centre.x - box.width / 2, centre.x + box.width / 2, centre.y - box.height / 2,
            centre.y + box.height / 2};
}

bool Overlap(const Area& a, const Area& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// A point of a curve that starts and ends vertically.
Point OnCurve(const Point& from, const Point& to, double t) {
    const double middle = (from.y + to.y) / 2;
    const double u = 1 - t;
    const double start = u * u * u + 3 * u * u * t;
    const double end = t * t * t + 3 * u * t * t;
    return {from.x * start + to.x * end, u * u * u * from.y + 3 * u * u * t * middle +
                                             3 * u * t * t * middle + t * t * t * to.y};
}

void ExpectFreeWay(const Route& route, const std::vector<Area>& areas) {
    constexpr double tolerance = 0.5;
    for (std::size_t i = 1; i < route.points.size(); ++i) {
        for (int step = 0; step <= 20; ++step) {
            const Point point = OnCurve(route.points[i - 1], route.points[i], step / 20.0);
            for (const Area& area : areas)
                ASSERT_FALSE(point.x > area.left + tolerance && point.x < area.right - tolerance &&
                             point.y > area.top + tolerance && point.y < area.bottom - tolerance);
        }
    }
}

std::vector<Area> AreasOf(const std::vector<LayoutBox>& boxes, const Layout& layout) {
    std::vector<Area> areas;
    for (std::size_t i = 0; i < boxes.size(); ++i)
        areas.push_back(AreaOf(boxes[i], layout.centres[i]));
    return areas;
}

class GraphLayout : public testing::TestWithParam<GraphCase> {
protected:
    const std::vector<LayoutBox> boxes_ = BoxesFor(GetParam());
    const Layout layout_ = LayOut(boxes_, GetParam().arcs);
    const std::vector<Area> areas_ = AreasOf(boxes_, layout_);
};

} // namespace

TEST_P(GraphLayout, BoxesNeitherOverlapNorLeaveThePicture) {
    ASSERT_EQ(layout_.centres.size(), boxes_.size());
    constexpr double tiny = 0.001;
    for (std::size_t i = 0; i < areas_.size(); ++i) {
        EXPECT_GE(areas_[i].left, -tiny);
        EXPECT_GE(areas_[i].top, -tiny);
        EXPECT_LE(areas_[i].right, layout_.width + tiny);
        EXPECT_LE(areas_[i].bottom, layout_.height + tiny);
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_FALSE(Overlap(areas_[i], areas_[j])) << i << " and " << j;
    }
}

TEST_P(GraphLayout, ArcsLeadDownwardsUnlessTheyAreMarked) {
    ASSERT_EQ(layout_.routes.size(), GetParam().arcs.size());
    for (std::size_t i = 0; i < layout_.routes.size(); ++i) {
        const Arc& arc = GetParam().arcs[i];
        const Area& from = areas_[static_cast<std::size_t>(arc.from)];
        const Area& to = areas_[static_cast<std::size_t>(arc.to)];
        if (layout_.routes[i].isLoop)
            EXPECT_EQ(arc.from, arc.to);
        else if (layout_.routes[i].isUpward)
            EXPECT_GT(from.top, to.bottom);
        else
            EXPECT_LT(from.bottom, to.top);
    }
}

TEST_P(GraphLayout, OnlyArcsOnACycleLeadUpwards) {
    const std::vector<int> component = StrongComponents(GetParam().boxes, GetParam().arcs);
    for (std::size_t i = 0; i < layout_.routes.size(); ++i) {
        const Arc& arc = GetParam().arcs[i];
        const bool onCycle = component[static_cast<std::size_t>(arc.from)] ==
                             component[static_cast<std::size_t>(arc.to)];
        EXPECT_TRUE(onCycle || !layout_.routes[i].isUpward);
    }
}

TEST_P(GraphLayout, ArcsEndAtTheirBoxesAndPassThroughNone) {
    for (std::size_t i = 0; i < layout_.routes.size(); ++i) {
        const Route& route = layout_.routes[i];
        ASSERT_GE(route.points.size(), 2U);
        const Arc& arc = GetParam().arcs[i];
        const Area& from = areas_[static_cast<std::size_t>(arc.from)];
        const Area& to = areas_[static_cast<std::size_t>(arc.to)];
        EXPECT_GE(route.points.front().x, from.left);
        EXPECT_LE(route.points.front().x, from.right);
        EXPECT_GE(route.points.back().x, to.left);
        EXPECT_LE(route.points.back().x, to.right);
        if (route.isLoop)
            continue;
        EXPECT_NEAR(route.points.front().y, route.isUpward ? from.top : from.bottom, 0.02);
        EXPECT_NEAR(route.points.back().y, route.isUpward ? to.bottom : to.top, 0.02);
        ExpectFreeWay(route, areas_);
    }
}

TEST_P(GraphLayout, TheSameGraphProducesTheSamePicture) {
    const Layout again = LayOut(boxes_, GetParam().arcs);
    for (std::size_t i = 0; i < layout_.centres.size(); ++i) {
        EXPECT_EQ(again.centres[i].x, layout_.centres[i].x);
        EXPECT_EQ(again.centres[i].y, layout_.centres[i].y);
    }
    for (std::size_t i = 0; i < layout_.routes.size(); ++i) {
        ASSERT_EQ(again.routes[i].points.size(), layout_.routes[i].points.size());
        for (std::size_t j = 0; j < layout_.routes[i].points.size(); ++j)
            EXPECT_EQ(again.routes[i].points[j].x, layout_.routes[i].points[j].x);
    }
}

INSTANTIATE_TEST_SUITE_P(Graphs, GraphLayout, testing::ValuesIn(Graphs()),
                         [](const testing::TestParamInfo<GraphCase>& example) {
                             std::string name = example.param.name;
                             std::replace_if(
                                 name.begin(), name.end(),
                                 [](char letter) { return std::isalnum(letter) == 0; }, '_');
                             return name;
                         });

TEST(GraphLayoutShape, AChainIsStraight) {
    const GraphCase chain = Chain(20);
    const Layout layout = LayOut(BoxesFor(chain), chain.arcs);
    for (const Point& centre : layout.centres)
        EXPECT_NEAR(centre.x, layout.centres.front().x, 0.01);
}

TEST(GraphLayoutShape, ATreeIsDrawnWithoutCrossings) {
    // Left to right, the leaves are in the order of their parents.
    const std::vector<Arc> arcs{{0, 1}, {0, 2}, {1, 5}, {2, 3}, {2, 4}, {1, 6}};
    const Layout layout = LayOut(std::vector<LayoutBox>(7, {80, BoxHeight, 0}), arcs);
    const auto x = [&](std::size_t box) { return layout.centres[box].x; };
    const bool oneIsLeft = x(1) < x(2);
    for (const std::size_t leafOfOne : {5U, 6U}) {
        for (const std::size_t leafOfTwo : {3U, 4U})
            EXPECT_EQ(x(leafOfOne) < x(leafOfTwo), oneIsLeft);
    }
}

TEST(GraphLayoutShape, ManyFriendsAreWrappedIntoSeveralRows) {
    const GraphCase hub = Hub(100, false);
    const Layout layout = LayOut(BoxesFor(hub), hub.arcs);
    EXPECT_LT(layout.width, 4000);
    EXPECT_GT(layout.height, 400);
}

TEST(GraphLayoutShape, ContextsWithoutLinksFormAGridInTheirOrder) {
    const Layout layout = LayOut(std::vector<LayoutBox>(200, {100, BoxHeight, 0}), {});
    EXPECT_GT(layout.width, layout.height);
    EXPECT_LT(layout.width, 3 * layout.height);
    for (std::size_t i = 1; i < layout.centres.size(); ++i) {
        const Point& before = layout.centres[i - 1];
        const Point& after = layout.centres[i];
        EXPECT_TRUE(after.y > before.y || (after.y == before.y && after.x > before.x));
    }
}

TEST(GraphLayoutShape, ThousandsOfContextsAreLaidOut) {
    const GraphCase large = Random(5000, 9000, 11);
    const Layout layout = LayOut(BoxesFor(large), large.arcs);
    EXPECT_TRUE(std::all_of(layout.centres.begin(), layout.centres.end(), [](const Point& centre) {
        return std::isfinite(centre.x) && std::isfinite(centre.y);
    }));
    EXPECT_EQ(layout.routes.size(), 9000U);
}

} // namespace dyadctx::test
