// Ear clipping along the chain of outline edges. The first attempt assumes the
// points run clockwise and the second counter-clockwise, so that a level file
// never has to declare its winding.
#include <cmath>

#include "level/level.h"

namespace {

using Edge = Polygon2D::Edge;

Vector2D unitDirection(const Edge& edge) {
    Vector2D direction = edge.end - edge.start;
    normalise(direction);
    return direction;
}

// The corner at b is convex under the assumed winding.
bool cornerIsConvex(const Vector2D& a, const Vector2D& b, const Vector2D& d, bool clockwise) {
    const Vector2D toMiddle = (a + d) * 0.5f - b;
    const Vector2D first = b - a;
    const Vector2D second = d - b;
    Vector2D n1(-first.y, first.x);
    Vector2D n2(-second.y, second.x);
    if (!clockwise) {
        n1 = -n1;
        n2 = -n2;
    }
    return dot(toMiddle, n1) >= 0.0f && dot(toMiddle, n2) >= 0.0f;
}

bool isEar(const Edge& e1, const Edge& e2, const std::vector<Edge>& outline, bool clockwise) {
    if (dot(unitDirection(e1), unitDirection(e2)) >= 0.9999f) return false;
    const Vector2D& a = e1.start;
    const Vector2D& b = e1.end;
    const Vector2D& d = e2.end;
    if (Polygon2D::edgeCrossesEdges(Edge{a, d}, outline)) return false;
    if (!cornerIsConvex(a, b, d, clockwise)) return false;
    const Vector2D triangle[3] = {a, clockwise ? b : d, clockwise ? d : b};
    return !Polygon2D::triangleCoversPolyPoint(triangle, outline);
}

}  // namespace

void Polygon2D::triangulate(bool clockwiseWinding) {
    TRACE_LOCATION("Polygon2D::triangulate");
    clearTriangles();
    if (isDegenerate()) return;
    clockwise = clockwiseWinding;

    std::vector<Edge> edges;
    edges.reserve(pointCount());
    for (std::size_t i = 0; i + 1 < pointCount(); ++i) edges.push_back(Edge{point(i), point(i + 1)});
    removeColinearEdges(edges);

    bool failed = edges.size() <= 1;
    if (!failed) {
        triangleCount = static_cast<uint32_t>(edges.size() - 1);
        triangleX.assign(triangleCount * 3, 0.0f);
        triangleY.assign(triangleCount * 3, 0.0f);
        const std::vector<Edge> outline = edges;
        std::size_t written = 0;
        while (edges.size() >= 2 && !failed) {
            std::size_t ear = 0;
            while (ear + 1 < edges.size() && !isEar(edges[ear], edges[ear + 1], outline, clockwise)) ++ear;
            if (ear + 1 >= edges.size()) {
                failed = true;
                break;
            }
            const Vector2D vertices[3] = {edges[ear].start, edges[ear].end, edges[ear + 1].end};
            for (int v = 0; v < 3; ++v) {
                triangleX[written * 3 + v] = vertices[v].x;
                triangleY[written * 3 + v] = vertices[v].y;
            }
            ++written;
            edges[ear].end = edges[ear + 1].end;
            edges.erase(edges.begin() + static_cast<std::ptrdiff_t>(ear) + 1);
        }
    }
    if (failed) {
        clearTriangles();
        if (clockwiseWinding) triangulate(false);
    }
    calculateNormals();
}

void Polygon2D::removeColinearEdges(std::vector<Edge>& edges) {
    TRACE_LOCATION("Polygon2D::removeColinearEdges");
    std::size_t i = 0;
    while (i + 1 < edges.size()) {
        if (dot(unitDirection(edges[i]), unitDirection(edges[i + 1])) >= 0.9999f) {
            edges[i].end = edges[i + 1].end;
            edges.erase(edges.begin() + static_cast<std::ptrdiff_t>(i) + 1);
        } else {
            ++i;
        }
    }
    if (edges.size() <= 1) return;
    const Vector2D closing = unitDirection(Edge{edges.back().end, edges.front().start});
    if (dot(unitDirection(edges.front()), closing) >= 0.9999f &&
        dot(unitDirection(edges.back()), closing) >= 0.9999f) {
        edges.front().start = edges.back().end;
        edges.pop_back();
    }
}

bool Polygon2D::edgeCrossesEdges(const Edge& edge, const std::vector<Edge>& edges) {
    TRACE_LOCATION("Polygon2D::edgeCrossesEdges");
    for (const Edge& other : edges)
        if (edgesCross(edge.start, edge.end, other.start, other.end)) return true;
    if (edges.empty()) return false;
    return edgesCross(edge.start, edge.end, edges.back().end, edges.front().start);
}

bool Polygon2D::triangleCoversPolyPoint(const Vector2D* triangle, const std::vector<Edge>& edges) {
    TRACE_LOCATION("Polygon2D::triangleCoversPolyPoint");
    if (!triangle || edges.empty()) return false;
    auto covers = [triangle](const Vector2D& p) {
        if (p == triangle[0] || p == triangle[1] || p == triangle[2]) return false;
        return pointInConvexPolygon(p.x, p.y, triangle, 3);
    };
    for (const Edge& edge : edges)
        if (covers(edge.start)) return true;
    return covers(edges.back().end);
}

void Polygon2D::clearTriangles() {
    TRACE_LOCATION("Polygon2D::clearTriangles");
    triangleX.clear();
    triangleX.shrink_to_fit();
    triangleY.clear();
    triangleY.shrink_to_fit();
    triangleCount = 0;
}

void Polygon2D::clearNormals() {
    TRACE_LOCATION("Polygon2D::clearNormals");
    normalX.clear();
    normalX.shrink_to_fit();
    normalY.clear();
    normalY.shrink_to_fit();
}

void Polygon2D::calculateNormals() {
    TRACE_LOCATION("Polygon2D::calculateNormals");
    clearNormals();
    if (triangleCount == 0 || triangleX.empty()) return;
    normalX.assign(triangleCount * 3, 0.0f);
    normalY.assign(triangleCount * 3, 0.0f);
    for (uint32_t t = 0; t < triangleCount; ++t) {
        for (uint32_t v = 0; v < 3; ++v) {
            const uint32_t from = t * 3 + v;
            const uint32_t to = t * 3 + (v + 1) % 3;
            Vector2D direction(triangleX[to] - triangleX[from], triangleY[to] - triangleY[from]);
            if (length(direction) != 0.0f) normalise(direction);
            normalX[from] = -direction.y;
            normalY[from] = direction.x;
        }
    }
}
