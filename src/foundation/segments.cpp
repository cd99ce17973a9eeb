#include <cmath>
#include <utility>

#include "foundation/foundation.h"

namespace {

// How far along the segment p1..p2 the point (x, y) lies, along its longer axis.
double fractionAlong(const Vector2D& p1, const Vector2D& p2, double x, double y) {
    if (std::fabs(static_cast<double>(p1.x) - p2.x) >= std::fabs(static_cast<double>(p1.y) - p2.y))
        return (x - p1.x) / (static_cast<double>(p2.x) - p1.x);
    return (y - p1.y) / (static_cast<double>(p2.y) - p1.y);
}

double denominatorOf(const Vector2D& a1, const Vector2D& a2, const Vector2D& b1, const Vector2D& b2) {
    return (static_cast<double>(a1.x) - a2.x) * (static_cast<double>(b1.y) - b2.y) -
           (static_cast<double>(a1.y) - a2.y) * (static_cast<double>(b1.x) - b2.x);
}

void intersectionOf(const Vector2D& a1, const Vector2D& a2, const Vector2D& b1, const Vector2D& b2,
                    double denominator, double& x, double& y) {
    const double d1 = static_cast<double>(a1.x) * a2.y - static_cast<double>(a1.y) * a2.x;
    const double d2 = static_cast<double>(b1.x) * b2.y - static_cast<double>(b1.y) * b2.x;
    x = (d1 * (static_cast<double>(b1.x) - b2.x) - d2 * (static_cast<double>(a1.x) - a2.x)) / denominator;
    y = (d1 * (static_cast<double>(b1.y) - b2.y) - d2 * (static_cast<double>(a1.y) - a2.y)) / denominator;
}

}  // namespace

bool edgesCross(const Vector2D& a1, const Vector2D& a2, const Vector2D& b1, const Vector2D& b2) {
    TRACE_LOCATION("edgesCross");
    if (a1 == b1 || a1 == b2 || a2 == b1 || a2 == b2) return false;
    if (a1 == a2 || b1 == b2) return false;
    const double denominator = denominatorOf(a1, a2, b1, b2);
    if (denominator == 0.0) return false;
    double x, y;
    intersectionOf(a1, a2, b1, b2, denominator, x, y);
    const double alongA = fractionAlong(a1, a2, x, y);
    if (alongA < 0.0 || alongA > 1.0) return false;
    const double alongB = fractionAlong(b1, b2, x, y);
    return alongB >= 0.0 && alongB <= 1.0;
}

void lineIntersection(const Vector2D& a1, const Vector2D& a2, const Vector2D& b1, const Vector2D& b2,
                      Vector2D& result) {
    TRACE_LOCATION("lineIntersection");
    double x, y;
    if (lineCrossing(a1, a2, b1, b2, x, y)) result = Vector2D(static_cast<float>(x), static_cast<float>(y));
}

bool lineCrossing(const Vector2D& a1, const Vector2D& a2, const Vector2D& b1, const Vector2D& b2, double& x,
                  double& y) {
    TRACE_LOCATION("lineCrossing");
    const double denominator = denominatorOf(a1, a2, b1, b2);
    if (denominator == 0.0) return false;
    intersectionOf(a1, a2, b1, b2, denominator, x, y);
    return true;
}

bool pointInConvexPolygon(float x, float y, const Vector2D* vertices, int count) {
    TRACE_LOCATION("pointInConvexPolygon");
    for (int i = 0; i < count; ++i) {
        const Vector2D& p = vertices[i];
        const Vector2D& q = vertices[(i + 1) % count];
        const double s = (static_cast<double>(y) - p.y) * (static_cast<double>(q.x) - p.x) -
                         (static_cast<double>(x) - p.x) * (static_cast<double>(q.y) - p.y);
        if (s < 0.0) return false;
    }
    return true;
}

void fixTriangleWinding(Vector2D& p0, Vector2D& p1, Vector2D& p2) {
    TRACE_LOCATION("fixTriangleWinding");
    const double mx = (static_cast<double>(p0.x) + p2.x) * 0.5;
    const double my = (static_cast<double>(p0.y) + p2.y) * 0.5;
    const double c1 =
        (my - p0.y) * (static_cast<double>(p1.x) - p0.x) - (static_cast<double>(p1.y) - p0.y) * (mx - p0.x);
    const double c2 =
        (static_cast<double>(p2.x) - p1.x) * (my - p1.y) - (static_cast<double>(p2.y) - p1.y) * (mx - p1.x);
    if (c1 < 0.0 && c2 < 0.0) std::swap(p1, p2);
}
