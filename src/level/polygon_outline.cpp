// The outline of a polygon: adding points, self-crossing tests, friction and
// pushing the outline outward.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <unordered_set>

#include "level/level.h"

namespace {

// Exact-equality key of a point; +0 and -0 are one value, as they compare equal.
uint64_t pointKey(float x, float y) {
    x += 0.0f;
    y += 0.0f;
    uint32_t bx, by;
    std::memcpy(&bx, &x, 4);
    std::memcpy(&by, &y, 4);
    return (uint64_t{bx} << 32) | by;
}

}  // namespace

Polygon2D::Polygon2D(const Polygon2D& other) {
    *this = other;
}

Polygon2D& Polygon2D::operator=(const Polygon2D& other) {
    TRACE_LOCATION("Polygon2D::operator=");
    if (this == &other) return *this;
    collideable = other.collideable;
    present = other.present;
    visible = other.visible;
    moveable = other.moveable;
    destructable = other.destructable;
    clockwise = other.clockwise;
    triangleCount = other.triangleCount;
    id = other.id;
    friction = other.friction;
    offset = other.offset;
    previousOffset = other.previousOffset;
    texture = other.texture;
    pointsX = other.pointsX;
    pointsY = other.pointsY;
    triangleX = other.triangleX;
    triangleY = other.triangleY;
    normalX = other.triangleCount ? other.normalX : std::vector<float>();
    normalY = other.triangleCount ? other.normalY : std::vector<float>();
    layer = other.layer;
    return *this;
}

void Polygon2D::setFrictionLevel(float value) {
    TRACE_LOCATION("Polygon2D::setFrictionLevel");
    friction = std::clamp(value, 0.0f, 1.0f);
}

void Polygon2D::addPoint(float x, float y) {
    TRACE_LOCATION("Polygon2D::addPoint");
    for (std::size_t i = pointCount(); i-- > 0;)
        if (pointsX[i] == x && pointsY[i] == y) return;
    pointsX.push_back(x);
    pointsY.push_back(y);
    triangulate(true);
}

// Every triangulation starts afresh, so only the last one decides the triangles.
// What an earlier one leaves behind shows only when the whole outline turns out
// degenerate: then the winding and the normals are those of the longest outline
// that was not, and that one is triangulated to find them.
void Polygon2D::addPoints(const std::vector<Vector2D>& points) {
    TRACE_LOCATION("Polygon2D::addPoints");
    std::unordered_set<uint64_t> seen;
    for (std::size_t i = 0; i < pointCount(); ++i) seen.insert(pointKey(pointsX[i], pointsY[i]));
    const std::size_t before = pointCount();
    for (const Vector2D& p : points) {
        const bool comparable = !std::isnan(p.x) && !std::isnan(p.y);
        if (comparable && !seen.insert(pointKey(p.x, p.y)).second) continue;
        pointsX.push_back(p.x);
        pointsY.push_back(p.y);
    }
    if (pointCount() == before) return;
    if (!isDegenerate()) {
        triangulate(true);
        return;
    }
    const std::size_t usable = longestUsableOutline(before);
    if (usable == 0) {
        clearTriangles();
        return;
    }
    const std::vector<float> allX = pointsX, allY = pointsY;
    pointsX.resize(usable);
    pointsY.resize(usable);
    triangulate(true);
    pointsX = allX;
    pointsY = allY;
    clearTriangles();
}

// The greatest count above shortest of leading points whose outline is not
// degenerate, or 0. An outline is degenerate when an edge of its open chain
// crosses another chain edge or its closing edge. Chain crossings only grow as
// points are added, so beyond the first one no outline is usable, and below it
// only the closing edge has to be tested: O(n^2) instead of one isDegenerate
// (itself O(n^2)) for every count.
std::size_t Polygon2D::longestUsableOutline(std::size_t shortest) const {
    TRACE_LOCATION("Polygon2D::longestUsableOutline");
    const std::size_t n = pointCount();
    // Outlines of chainClean points or fewer have no crossing within their chain.
    std::size_t chainClean = n;
    for (std::size_t last = 1; last + 1 < n && chainClean == n; ++last) {
        const Vector2D a = point(last), b = point(last + 1);
        for (std::size_t i = 0; i < last && chainClean == n; ++i) {
            const Vector2D c = point(i), d = point(i + 1);
            if (edgesCross(a, b, c, d) || edgesCross(c, d, a, b)) chainClean = last + 1;
        }
    }
    for (std::size_t count = std::min(n - 1, chainClean); count > shortest; --count) {
        if (count < 3) break;
        const Vector2D closingStart = point(count - 1), closingEnd = point(0);
        bool crossed = false;
        for (std::size_t i = 0; i + 1 < count && !crossed; ++i)
            crossed = edgesCross(point(i), point(i + 1), closingStart, closingEnd);
        if (!crossed) return count;
    }
    return 0;
}

bool Polygon2D::isDegenerate() const {
    TRACE_LOCATION("Polygon2D::isDegenerate");
    if (pointCount() < 3) return true;
    for (std::size_t i = 0; i + 1 < pointCount(); ++i)
        if (edgeCrossesPolygonEdges(point(i), point(i + 1))) return true;
    return false;
}

bool Polygon2D::edgeCrossesPolygonEdges(const Vector2D& p1, const Vector2D& p2) const {
    TRACE_LOCATION("Polygon2D::edgeCrossesPolygonEdges");
    const std::size_t n = pointCount();
    for (std::size_t i = 0; i < n; ++i)
        if (edgesCross(p1, p2, point(i), point((i + 1) % n))) return true;
    return false;
}

void Polygon2D::expand(float distance) {
    TRACE_LOCATION("Polygon2D::expand");
    const std::size_t n = pointCount();
    if (n <= 2 || triangleCount == 0) return;
    const float side = clockwise ? -1.0f : 1.0f;
    auto outward = [side](const Vector2D& from, const Vector2D& to) {
        Vector2D normal(-(to.y - from.y) * side, (to.x - from.x) * side);
        normalise(normal);
        return normal;
    };
    std::vector<Vector2D> corners(n);
    for (std::size_t i = 0; i < n; ++i) {
        const Vector2D q = point((i + n - 1) % n), p = point(i), r = point((i + 1) % n);
        const Vector2D before = outward(q, p) * distance;
        const Vector2D after = outward(p, r) * distance;
        // Where both edges run on in one line there is no crossing: the corner
        // simply moves out with them.
        corners[i] = p + after;
        lineIntersection(q + before, p + before, p + after, r + after, corners[i]);
    }
    for (std::size_t i = 0; i < n; ++i) {
        pointsX[i] = corners[i].x;
        pointsY[i] = corners[i].y;
    }
    triangulate(true);
}
