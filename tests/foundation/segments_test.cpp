#include <gtest/gtest.h>

#include "foundation/foundation.h"

TEST(EdgesCross, CrossingsMissesSharedEndsAndDegenerateSegmentsAndLinesMeetAsInfiniteOnes) {
    const std::tuple<float, float, float, float, float, float, float, float, bool> cases[] = {
        {0, 0, 10, 10, 0, 10, 10, 0, true},
        {0, 0, 10, 0, 5, -5, 5, 5, true},
        {0, 0, 10, 0, 5, 1, 5, 5, false},     // the second stops short of the first
        {0, 0, 4, 0, 5, -5, 5, 5, false},     // the first stops short of the second
        {0, 0, 10, 0, 0, 1, 10, 1, false},    // parallel
        {0, 0, 10, 0, 0, 0, 0, 10, false},    // a shared end never crosses
        {0, 0, 10, 0, 10, 0, 5, 0, false},    // even colinear and overlapping
        {0, 0, 10, 10, 10, 10, 0, 0, false},  // the same segment both ways
        {0, 0, 10, 0, 5, 0, 15, 0, false},    // colinear overlap
        {0, 0, 0, 0, -5, 0, 5, 0, false},
        {-5, 0, 5, 0, 1, 1, 1, 1, false},  // a point
        {0, 0, 10, 0, 5, 0, 5, 5, true},   // an end on the other's interior
        {5, 5, 5, 0, 0, 0, 10, 0, true},
        {3, 0, 3, 10, 0, 5, 6, 5, true},  // a vertical segment: the fraction is taken along y
        {3, 0, 3, 4, 0, 5, 6, 5, false},
    };
    for (const auto& [ax, ay, bx, by, cx, cy, dx, dy, crosses] : cases)
        EXPECT_EQ(edgesCross({ax, ay}, {bx, by}, {cx, cy}, {dx, dy}), crosses)
            << ax << "," << ay << " " << bx << "," << by << " / " << cx << "," << cy << " " << dx << ","
            << dy;
    Vector2D result(7, 7);
    lineIntersection({0, 0}, {1, 0}, {5, 3}, {5, 4}, result);
    EXPECT_EQ(result, Vector2D(5, 0));
    lineIntersection({0, 0}, {1, 0}, {0, 1}, {1, 1}, result);
    EXPECT_EQ(result, Vector2D(5, 0));
}

TEST(PointInConvexPolygon, InsideEdgesVerticesAndEmptyAndFixTriangleWindingSwapsOnlyTheWindingItRejects) {
    const Vector2D square[4] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    EXPECT_EQ(
        std::tuple(pointInConvexPolygon(5, 5, square, 4), pointInConvexPolygon(0, 0, square, 4),
                   pointInConvexPolygon(10, 5, square, 4), pointInConvexPolygon(11, 5, square, 4),
                   pointInConvexPolygon(5, -0.001f, square, 4), pointInConvexPolygon(1000, 1000, square, 0)),
        std::tuple(true, true, true, false, false, true));
    Vector2D usable[3] = {{0, 0}, {10, 0}, {0, 10}};
    fixTriangleWinding(usable[0], usable[1], usable[2]);
    EXPECT_EQ(usable[1], Vector2D(10, 0));  // untouched
    Vector2D turned[3] = {{0, 0}, {0, 10}, {10, 0}};
    fixTriangleWinding(turned[0], turned[1], turned[2]);
    EXPECT_EQ(std::tuple(turned[1], turned[2], pointInConvexPolygon(2, 2, turned, 3),
                         pointInConvexPolygon(8, 8, turned, 3)),
              std::tuple(Vector2D(10, 0), Vector2D(0, 10), true, false));
}
