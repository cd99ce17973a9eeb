// Casting rays through the tree. The walk stays a loop while the ray lies on one
// side of an edge's line and recurses only where it crosses one.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "level/bsp_state.h"

namespace {

// The ray being cast; its end is pulled in to each hit.
struct Ray {
    Vector2D start;
    Vector2D end;
};

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

// Shortens the ray to the crossing with the node's edge, if there is one. Both
// parameters come from one division, and the hit point is only made on a hit.
bool edgeIntersectFast(const Vector2D& a1, Vector2D& a2, const BspNode& node) {
    const double rx = static_cast<double>(a2.x) - a1.x, ry = static_cast<double>(a2.y) - a1.y;
    const double sx = static_cast<double>(node.end.x) - node.start.x;
    const double sy = static_cast<double>(node.end.y) - node.start.y;
    const double denominator = rx * sy - ry * sx;
    if (denominator == 0.0) return false;
    const double qx = static_cast<double>(node.start.x) - a1.x, qy = static_cast<double>(node.start.y) - a1.y;
    const double reciprocal = 1.0 / denominator;
    const double alongRay = (qx * sy - qy * sx) * reciprocal;
    const double alongEdge = (qx * ry - qy * rx) * reciprocal;
    if (!withinUnit(static_cast<float>(alongRay)) || !withinUnit(static_cast<float>(alongEdge))) return false;
    a2 = Vector2D(static_cast<float>(a1.x + rx * alongRay), static_cast<float>(a1.y + ry * alongRay));
    return true;
}

BspNode* raycastRecursive(BspNode* node, Ray& ray) {
    while (node) {
        const float ds = node->signedDistance(ray.start);
        const float de = node->signedDistance(ray.end);
        if (std::fabs(ds) <= 0.025f) {
            float along = dot(ray.start - node->start, node->direction);
            if (along > -0.025f && along < node->length + 0.025f) {
                along = std::min(std::max(along, 0.025f), node->length - 0.025f);
                ray.end = node->start + node->direction * along;
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
                if (BspNode* hit = raycastRecursive(nearSide, ray)) return hit;
            if (node->collideable && edgeIntersectFast(ray.start, ray.end, *node)) return node;
            node = farSide;
        }
    }
    return nullptr;
}

}  // namespace

namespace LevelBspTree {

BspNode* raycast(const Vector2D& start, Vector2D& end) {
    TRACE_LOCATION("LevelBspTree::raycast");
    if (!state().root || start == end) return nullptr;
    Ray ray{start, end};
    BspNode* hit = raycastRecursive(state().root, ray);
    end = ray.end;
    return hit;
}

}  // namespace LevelBspTree
