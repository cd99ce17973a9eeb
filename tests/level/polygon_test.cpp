#include <gtest/gtest.h>

#include <algorithm>

#include "level/level.h"

namespace {

Polygon2D polygonOf(const std::vector<Vector2D>& points) {
    Polygon2D polygon;
    for (const Vector2D& p : points) polygon.addPoint(p.x, p.y);
    return polygon;
}

// Every triangle centre lies inside the outline, by a ray-crossing count.
bool insideOutline(const Polygon2D& polygon, float x, float y) {
    bool inside = false;
    const std::size_t n = polygon.pointCount();
    for (std::size_t i = 0, j = n - 1; i < n; j = i++) {
        const Vector2D a = polygon.point(i), b = polygon.point(j);
        if ((a.y > y) != (b.y > y) && x < (b.x - a.x) * (y - a.y) / (b.y - a.y) + a.x) inside = !inside;
    }
    return inside;
}

void expectTrianglesInside(const Polygon2D& polygon) {
    for (uint32_t t = 0; t < polygon.triangleCount; ++t) {
        const float cx =
            (polygon.triangleX[t * 3] + polygon.triangleX[t * 3 + 1] + polygon.triangleX[t * 3 + 2]) / 3;
        const float cy =
            (polygon.triangleY[t * 3] + polygon.triangleY[t * 3 + 1] + polygon.triangleY[t * 3 + 2]) / 3;
        EXPECT_TRUE(insideOutline(polygon, cx, cy)) << "triangle " << t << " at " << cx << "," << cy;
    }
}

void expectSameState(const Polygon2D& a, const Polygon2D& b) {
    EXPECT_EQ(std::tuple(a.pointsX, a.pointsY, a.triangleCount, a.clockwise, a.triangleX, a.triangleY,
                         a.normalX, a.normalY),
              std::tuple(b.pointsX, b.pointsY, b.triangleCount, b.clockwise, b.triangleX, b.triangleY,
                         b.normalX, b.normalY));
}

}  // namespace

// Outlines with their point count, triangle count and winding after repeated
// points, straight runs and crossings have been dealt with.
TEST(Polygon2D, SimpleOutlinesGetTheirTrianglesAndWinding) {
    // Name, outline, point count, triangles, degenerate, clockwise.
    const std::tuple<const char*, std::vector<Vector2D>, std::size_t, uint32_t, bool, bool> cases[] = {
        {"two points", {{0, 0}, {10, 0}}, 2, 0, true, false},
        {"three in a line", {{0, 0}, {10, 0}, {20, 0}}, 3, 0, false, false},
        {"repeated points", {{0, 0}, {10, 0}, {10, 10}, {0, 0}, {10, 0}}, 3, 1, false, true},
        {"clockwise square", {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, 4, 2, false, true},
        {"counter-clockwise square", {{0, 0}, {0, 10}, {10, 10}, {10, 0}}, 4, 2, false, false},
        {"a point on a side", {{0, 0}, {5, 0}, {10, 0}, {10, 10}, {0, 10}}, 5, 2, false, true},
        // A straight run over the closing edge: the first edge takes over the last
        // one's place, leaving four edges and three triangles, not four.
        {"a run over the end", {{5, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {2, 0}}, 6, 3, false, true},
        {"bow tie", {{0, 0}, {10, 10}, {10, 0}, {0, 10}}, 4, 0, true, false},
    };
    for (const auto& [name, points, pointCount, triangles, degenerate, clockwise] : cases) {
        const Polygon2D polygon = polygonOf(points);
        EXPECT_EQ(polygon.pointCount(), pointCount) << name;
        EXPECT_EQ(polygon.triangleCount, triangles) << name;
        EXPECT_EQ(polygon.isDegenerate(), degenerate) << name;
        if (degenerate) continue;
        EXPECT_EQ(polygon.normalX.size(), 3u * triangles) << name;
        if (triangles == 0) continue;
        EXPECT_EQ(polygon.clockwise, clockwise) << name;
    }
}

TEST(Polygon2D, ConcavePolygonsAreCutOnlyInsideTheirOutline) {
    // An L shape and a comb of three teeth, in both windings.
    std::vector<Vector2D> comb = {{0, 0}, {50, 0}, {50, 30}};
    for (float x = 40; x > 0; x -= 20)
        comb.insert(comb.end(), {{x, 30}, {x, 10}, {x - 10, 10}, {x - 10, 30}});
    comb.emplace_back(0, 30);
    const std::vector<Vector2D> shapes[] = {{{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}}, comb};
    for (const auto& shape : shapes) {
        for (bool reversed : {false, true}) {
            std::vector<Vector2D> points = shape;
            if (reversed) std::reverse(points.begin(), points.end());
            const Polygon2D polygon = polygonOf(points);
            EXPECT_EQ(polygon.triangleCount, points.size() - 2);
            EXPECT_EQ(polygon.clockwise, !reversed);
            expectTrianglesInside(polygon);
        }
    }
}

TEST(Polygon2D, NormalsAreUnitAndTurnedFromEachTriangleEdgeAndFrictionIsClamped) {
    Polygon2D polygon = polygonOf({{0, 0}, {10, 0}, {0, 10}});
    ASSERT_EQ(polygon.triangleCount, 1u);
    // First edge runs from vertex 0 to 1: (10, 0) gives normal (0, 1).
    EXPECT_FLOAT_EQ(polygon.normalX[0], 0.0f);
    EXPECT_FLOAT_EQ(polygon.normalY[0], 1.0f);
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(polygon.normalX[i] * polygon.normalX[i] + polygon.normalY[i] * polygon.normalY[i], 1.0f,
                    1e-6);
    for (const auto& [given, kept] : {std::pair{1.5f, 1.0f}, {-1.0f, 0.0f}, {0.25f, 0.25f}}) {
        polygon.setFrictionLevel(given);
        EXPECT_EQ(polygon.friction, kept) << given;
    }
}

TEST(Polygon2D, CopiesAreDeepWithoutStaleNormalsAndExpandMovesEdgesOutward) {
    Polygon2D original = polygonOf({{0, 0}, {10, 0}, {10, 10}});
    Polygon2D grown = original;
    grown.addPoint(0, 10);
    EXPECT_EQ(std::tuple(original.triangleCount, grown.triangleCount), std::tuple(1u, 2u));
    // The square's normals stay behind when a crossing point makes it degenerate.
    Polygon2D crossed = polygonOf({{0, 0}, {10, 0}, {10, 10}, {0, 10}, {20, 5}});
    EXPECT_EQ(std::tuple(crossed.triangleCount, crossed.normalX.empty()), std::tuple(0u, false));
    Polygon2D copy(crossed);
    EXPECT_EQ(std::tuple(copy.normalX.empty(), copy.pointsX), std::tuple(true, crossed.pointsX));
    Polygon2D assigned;
    assigned = crossed;
    EXPECT_TRUE(assigned.normalY.empty());
    for (bool reversed : {false, true}) {
        Polygon2D square = reversed ? polygonOf({{0, 0}, {0, 10}, {10, 10}, {10, 0}})
                                    : polygonOf({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
        square.expand(1.0f);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_FLOAT_EQ(std::fabs(square.pointsX[i] - 5.0f), 6.0f);
            EXPECT_FLOAT_EQ(std::fabs(square.pointsY[i] - 5.0f), 6.0f);
        }
        EXPECT_EQ(square.triangleCount, 2u);
    }
}

TEST(Polygon2D, AddPointsLeavesWhatAddPointForEachLeaves) {
    const std::vector<std::vector<Vector2D>> outlines = {
        {{0, 0}, {10, 0}, {10, 10}, {0, 10}},
        {{0, 0}, {0, 10}, {10, 10}, {10, 0}},
        {{0, 0}, {10, 10}, {10, 0}, {0, 10}},           // ends degenerate
        {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {20, 5}},  // turns degenerate at the last point
        {{0, 0}, {10, 0}, {20, 0}},
        {{0, 0}, {10, 0}, {0, 0}, {10, 10}, {10, 0}},
        {{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}},
    };
    // A long outline that crosses itself early and a long one that crosses at the end.
    std::vector<Vector2D> crossedEarly = {{0, 0}, {10, 10}, {10, 0}, {0, 10}};
    std::vector<Vector2D> crossedLate;
    for (int i = 0; i < 80; ++i) {
        const float angle = 6.2831855f * static_cast<float>(i) / 80.0f;
        crossedEarly.emplace_back(100 + 50 * std::cos(angle), 50 * std::sin(angle));
        crossedLate.emplace_back(std::round(50 * std::cos(angle)), std::round(50 * std::sin(angle)));
    }
    crossedLate.emplace_back(-80.0f, 0.0f);
    crossedLate.emplace_back(80.0f, 1.0f);
    EXPECT_EQ(polygonOf(crossedEarly).triangleCount, 0u);
    EXPECT_EQ(polygonOf(crossedLate).triangleCount, 0u);
    std::vector<std::vector<Vector2D>> all = outlines;
    all.insert(all.end(), {crossedEarly, crossedLate});
    for (const auto& outline : all) {
        Polygon2D batch;
        batch.addPoints(outline);
        expectSameState(polygonOf(outline), batch);
    }
    // Random outlines, many of them self-crossing, and batches on top of points.
    setRandomSeed(1234);
    for (int round = 0; round < 300; ++round) {
        std::vector<Vector2D> outline;
        const int n = 3 + static_cast<int>(randomBits() % 7);
        for (int i = 0; i < n; ++i)
            outline.emplace_back(static_cast<float>(randomBits() % 8), static_cast<float>(randomBits() % 8));
        Polygon2D batch;
        batch.addPoint(outline[0].x, outline[0].y);
        batch.addPoints(std::vector<Vector2D>(outline.begin() + 1, outline.end()));
        expectSameState(polygonOf(outline), batch);
    }
}
