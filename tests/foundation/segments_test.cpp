#include <gtest/gtest.h>

#include "foundation/foundation.h"

namespace {

bool cross(float ax, float ay, float bx, float by, float cx, float cy, float dx, float dy) {
    return edgesCross({ax, ay}, {bx, by}, {cx, cy}, {dx, dy});
}

}  // namespace

TEST(EdgesCross, PlainCrossingsAndMisses) {
    EXPECT_TRUE(cross(0, 0, 10, 10, 0, 10, 10, 0));
    EXPECT_TRUE(cross(0, 0, 10, 0, 5, -5, 5, 5));
    EXPECT_FALSE(cross(0, 0, 10, 0, 5, 1, 5, 5));   // b stops short of a
    EXPECT_FALSE(cross(0, 0, 4, 0, 5, -5, 5, 5));   // a stops short of b
    EXPECT_FALSE(cross(0, 0, 10, 0, 0, 1, 10, 1));  // parallel
}

TEST(EdgesCross, SharedEndPointsNeverCrossEvenWhenOverlapping) {
    EXPECT_FALSE(cross(0, 0, 10, 0, 0, 0, 0, 10));
    EXPECT_FALSE(cross(0, 0, 10, 0, 10, 0, 5, 0));    // colinear, overlapping, shared end
    EXPECT_FALSE(cross(0, 0, 10, 10, 10, 10, 0, 0));  // the same segment both ways
}

TEST(EdgesCross, ColinearOverlapAndDegenerateSegmentsDoNotCross) {
    EXPECT_FALSE(cross(0, 0, 10, 0, 5, 0, 15, 0));
    EXPECT_FALSE(cross(0, 0, 0, 0, -5, 0, 5, 0));
    EXPECT_FALSE(cross(-5, 0, 5, 0, 1, 1, 1, 1));
}

TEST(EdgesCross, AnEndOnTheOtherInteriorCrosses) {
    EXPECT_TRUE(cross(0, 0, 10, 0, 5, 0, 5, 5));
    EXPECT_TRUE(cross(5, 5, 5, 0, 0, 0, 10, 0));
}

TEST(EdgesCross, UsesTheLongerAxisForSteepSegments) {
    // A vertical segment has no x extent: the fraction must be taken along y.
    EXPECT_TRUE(cross(3, 0, 3, 10, 0, 5, 6, 5));
    EXPECT_FALSE(cross(3, 0, 3, 4, 0, 5, 6, 5));
}

TEST(LineIntersection, InfiniteLinesAndParallelLeavesResult) {
    Vector2D result(7, 7);
    lineIntersection({0, 0}, {1, 0}, {5, 3}, {5, 4}, result);
    EXPECT_FLOAT_EQ(result.x, 5.0f);
    EXPECT_FLOAT_EQ(result.y, 0.0f);
    Vector2D untouched(7, 7);
    lineIntersection({0, 0}, {1, 0}, {0, 1}, {1, 1}, untouched);
    EXPECT_EQ(untouched, Vector2D(7, 7));
}

TEST(PointInConvexPolygon, InsideEdgesVerticesAndEmpty) {
    // Winding that the test expects: s = (y - p.y)(q.x - p.x) - (x - p.x)(q.y - p.y) >= 0 inside.
    const Vector2D square[4] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    EXPECT_TRUE(pointInConvexPolygon(5, 5, square, 4));
    EXPECT_TRUE(pointInConvexPolygon(0, 0, square, 4));
    EXPECT_TRUE(pointInConvexPolygon(10, 5, square, 4));
    EXPECT_FALSE(pointInConvexPolygon(11, 5, square, 4));
    EXPECT_FALSE(pointInConvexPolygon(5, -0.001f, square, 4));
    EXPECT_TRUE(pointInConvexPolygon(1000, 1000, square, 0));
}

TEST(FixTriangleWinding, EitherWindingEndsUsableByTheInsideTest) {
    Vector2D a(0, 0), b(10, 0), c(0, 10);
    Vector2D p0 = a, p1 = c, p2 = b;
    fixTriangleWinding(p0, p1, p2);
    Vector2D fixedA[3] = {p0, p1, p2};
    EXPECT_TRUE(pointInConvexPolygon(2, 2, fixedA, 3));

    Vector2D q0 = a, q1 = b, q2 = c;
    fixTriangleWinding(q0, q1, q2);
    Vector2D fixedB[3] = {q0, q1, q2};
    EXPECT_TRUE(pointInConvexPolygon(2, 2, fixedB, 3));
    EXPECT_FALSE(pointInConvexPolygon(8, 8, fixedB, 3));
}

TEST(FixTriangleWinding, SwapsOnlyWhenBothTestsAreNegative) {
    Vector2D p0(0, 0), p1(10, 0), p2(0, 10);
    fixTriangleWinding(p0, p1, p2);
    EXPECT_EQ(p1, Vector2D(10, 0));  // already usable: untouched
    Vector2D q0(0, 0), q1(0, 10), q2(10, 0);
    fixTriangleWinding(q0, q1, q2);
    EXPECT_EQ(q1, Vector2D(10, 0));
    EXPECT_EQ(q2, Vector2D(0, 10));
}
