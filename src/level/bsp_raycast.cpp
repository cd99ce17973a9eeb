// Casting rays through the tree. The walk stays a loop while the ray lies on one
// side of an edge's line and recurses only where it crosses one.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "level/bsp_state.h"

namespace {

Vector2D rayStart;
Vector2D rayEnd;

uint32_t bitsOf(float value) {
    uint32_t bits;
    std::memcpy(&bits, &value, 4);
    return bits;
}

// 0 to 1 inclusive in one unsigned compare: a sign bit or a NaN makes the
// pattern larger than the one just above 1.0.
bool withinUnit(float t) {
    return bitsOf(t) < 0x3F800001u;
}

// |a| > |b| with the sign shifted out of both patterns.
bool magnitudeGreater(float a, float b) {
    return (bitsOf(a) << 1) > (bitsOf(b) << 1);
}

float fractionAlong(const Vector2D& from, const Vector2D& to, double x, double y) {
    const float dx = to.x - from.x, dy = to.y - from.y;
    if (magnitudeGreater(dx, dy)) return static_cast<float>((x - from.x) / dx);
    return static_cast<float>((y - from.y) / dy);
}

// Shortens the ray to the crossing with the node's edge, if there is one.
bool edgeIntersectFast(const Vector2D& a1, Vector2D& a2, const BspNode& node) {
    const Vector2D& b1 = node.start;
    const Vector2D& b2 = node.end;
    const double denominator = (static_cast<double>(a1.x) - a2.x) * (static_cast<double>(b1.y) - b2.y) -
                               (static_cast<double>(a1.y) - a2.y) * (static_cast<double>(b1.x) - b2.x);
    if (denominator == 0.0) return false;
    const double d1 = static_cast<double>(a1.x) * a2.y - static_cast<double>(a1.y) * a2.x;
    const double d2 = static_cast<double>(b1.x) * b2.y - static_cast<double>(b1.y) * b2.x;
    const double x =
        (d1 * (static_cast<double>(b1.x) - b2.x) - d2 * (static_cast<double>(a1.x) - a2.x)) / denominator;
    const double y =
        (d1 * (static_cast<double>(b1.y) - b2.y) - d2 * (static_cast<double>(a1.y) - a2.y)) / denominator;
    if (!withinUnit(fractionAlong(a1, a2, x, y)) || !withinUnit(fractionAlong(b1, b2, x, y))) return false;
    a2 = Vector2D(static_cast<float>(x), static_cast<float>(y));
    return true;
}

BspNode* raycastRecursive(BspNode* node) {
    while (node) {
        const float ds = node->signedDistance(rayStart);
        const float de = node->signedDistance(rayEnd);
        if (std::fabs(ds) <= 0.025f) {
            float along = dot(rayStart - node->start, node->direction);
            if (along > -0.025f && along < node->length + 0.025f) {
                along = std::min(std::max(along, 0.025f), node->length - 0.025f);
                rayEnd = node->start + node->direction * along;
                return node;
            }
        }
        if (ds >= 0.0f && de >= 0.0f) {
            node = node->positiveChild;
        } else if (ds < 0.0f && de < 0.0f) {
            node = node->negativeChild;
        } else {
            BspNode* nearSide = ds >= 0.0f ? node->positiveChild : node->negativeChild;
            BspNode* farSide = ds >= 0.0f ? node->negativeChild : node->positiveChild;
            if (nearSide)
                if (BspNode* hit = raycastRecursive(nearSide)) return hit;
            if (node->collideable && edgeIntersectFast(rayStart, rayEnd, *node)) return node;
            node = farSide;
        }
    }
    return nullptr;
}

}  // namespace

namespace LevelBspTree {

BspNode* raycast(const Vector2D& start, Vector2D& end) {
    TRACE_LOCATION("LevelBspTree::raycast");
    if (!State::root || start == end) return nullptr;
    rayStart = start;
    rayEnd = end;
    BspNode* hit = raycastRecursive(State::root);
    end = rayEnd;
    return hit;
}

}  // namespace LevelBspTree
