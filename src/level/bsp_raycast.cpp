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

// How far from p1 towards p2 the point lies, measured on the segment's longer
// axis: x only where its extent is strictly the larger. The doubled bit
// patterns shift the sign out, so the compare is of the absolute extents.
float fractionAlong(const Vector2D& p1, const Vector2D& p2, double x, double y) {
    const float dx = p2.x - p1.x, dy = p2.y - p1.y;
    if ((bitsOf(dx) << 1) > (bitsOf(dy) << 1))
        return static_cast<float>((x - p1.x) / (static_cast<double>(p2.x) - p1.x));
    return static_cast<float>((y - p1.y) / (static_cast<double>(p2.y) - p1.y));
}

// Shortens the ray to the crossing with the node's edge, if there is one.
bool edgeIntersectFast(const Vector2D& a1, Vector2D& a2, const BspNode& node) {
    TRACE_LOCATION("LevelBspTree::edgeIntersectFast");
    double x, y;
    if (!lineCrossing(a1, a2, node.start, node.end, x, y)) return false;
    if (!withinUnit(fractionAlong(a1, a2, x, y)) || !withinUnit(fractionAlong(node.start, node.end, x, y)))
        return false;
    a2 = Vector2D(static_cast<float>(x), static_cast<float>(y));
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
