#include "shapes.h"

#include <algorithm>
#include <cmath>

float distanceToSegment(Point p, Point a, Point b) {
    const float ex = b.x - a.x, ey = b.y - a.y;
    const float lengthSquared = ex * ex + ey * ey;
    float t = lengthSquared > 0.0f ? ((p.x - a.x) * ex + (p.y - a.y) * ey) / lengthSquared : 0.0f;
    t = std::min(1.0f, std::max(0.0f, t));
    return std::hypot(p.x - (a.x + t * ex), p.y - (a.y + t * ey));
}

bool insidePolygon(Point p, const std::vector<Point>& polygon) {
    bool inside = false;
    for (size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const Point& a = polygon[i];
        const Point& b = polygon[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            inside = !inside;
    }
    return inside;
}

float distanceToOutline(Point p, const std::vector<Point>& polygon) {
    float best = 1e9f;
    for (size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++)
        best = std::min(best, distanceToSegment(p, polygon[j], polygon[i]));
    return best;
}

Point rotateAbout(Point p, Point centre, float angle) {
    const float c = std::cos(angle), s = std::sin(angle);
    const float dx = p.x - centre.x, dy = p.y - centre.y;
    return {centre.x + dx * c - dy * s, centre.y + dx * s + dy * c};
}

float coverage(float signedDistance) {
    return std::min(1.0f, std::max(0.0f, 0.5f - signedDistance));
}
