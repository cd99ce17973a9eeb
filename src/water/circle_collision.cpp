// Keeping a circle out of the level's edges. Each edge is a line contact over
// its interior, from its free side, and a point contact at its ends and at the
// foot of the perpendicular, from any side, so corners need nothing of their own.
// Contacts are resolved in up to three passes; the mean normal and friction of
// all of them are left for the caller's velocity correction.
#include <cmath>

#include "foundation/foundation.h"
#include "level/level.h"
#include "water/water.h"

namespace CircleCollision {

namespace {

struct PointContact {
    Vector2D position;
    float friction;
};

constexpr int maximumPasses = 3;

uint32_t contactCount = 0;
Vector2D collisionNormal;
float collisionFriction = 1.0f;
float radius = 0.0f;
Vector2D* circle = nullptr;
// Kept in the order found; a pass walks them newest first.
std::vector<PointContact> points;
std::vector<const BspNode*> nodes;
std::vector<BspNode> collideableNodes;

// Single precision throughout: this is the inner loop of the game.
inline float dotOf(const Vector2D& a, const Vector2D& b) {
    return a.x * b.x + a.y * b.y;
}
inline float lengthOf(const Vector2D& v) {
    return std::sqrt(v.x * v.x + v.y * v.y);
}
inline float distanceToLine(const BspNode& node, const Vector2D& q) {
    return dotOf(q - node.start, node.normal);
}

// An edge whose line lies within the radius: a line contact where the centre's
// foot falls on it, a point contact at the foot or at the nearer end.
void gatherContacts(const BspNode& node) {
    const Vector2D offset = *circle - node.start;
    const float along = dotOf(offset, node.direction);
    if (along >= 0.0f && along <= node.length) {
        nodes.push_back(&node);
        points.push_back({node.start + node.direction * along, node.friction});
    } else if (along >= -radius && along <= node.length + radius) {
        const Vector2D end = along < 0.0f ? node.start : node.start + node.direction * node.length;
        points.push_back({end, node.friction});
    }
}

void buildDynamicPointsAndNodesList() {
    TRACE_LOCATION("CircleCollision::buildDynamicPointsAndNodesList");
    for (const BspNode& node : collideableNodes) {
        const float d = distanceToLine(node, *circle);
        if (d >= -radius && d <= radius) gatherContacts(node);
    }
}

// Only edges whose line lies within the radius of the centre are looked at;
// the walk goes down one side of every other edge.
void descend(const BspNode* node, const Vector2D& centre, float r) {
    while (node) {
        const float d = distanceToLine(*node, centre);
        if (d >= r) {
            node = node->positiveChild;
        } else if (d < -r) {
            node = node->negativeChild;
        } else {
            if (node->collideable) gatherContacts(*node);
            descend(node->negativeChild, centre, r);
            node = node->positiveChild;
        }
    }
}

void buildPointsAndNodesListRecursive(const BspNode* node) {
    TRACE_LOCATION("CircleCollision::buildPointsAndNodesListRecursive");
    descend(node, *circle, radius);
}

void addContact(const Vector2D& normal, float friction) {
    ++contactCount;
    collisionNormal += normal;
    collisionFriction += friction;
}

bool resolvePointCollisions() {
    TRACE_LOCATION("CircleCollision::resolvePointCollisions");
    bool hit = false;
    for (auto point = points.rbegin(); point != points.rend(); ++point) {
        const Vector2D toPoint = point->position - *circle;
        const float l = lengthOf(toPoint);
        if (!(l > 0.0f && l < radius)) continue;
        const Vector2D unit = toPoint / l;
        *circle -= unit * (radius - l);
        addContact(unit, point->friction);
        hit = true;
    }
    return hit;
}

// No upper bound on the distance: a centre that got behind a listed edge is
// carried right through to its free side.
bool resolveLineCollisions() {
    TRACE_LOCATION("CircleCollision::resolveLineCollisions");
    bool hit = false;
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
        const float d = distanceToLine(**node, *circle);
        if (d < -radius) continue;
        *circle -= (*node)->normal * (d + radius);
        addContact((*node)->normal, (*node)->friction);
        hit = true;
    }
    return hit;
}

bool runTest(Vector2D* centre, float circleRadius, bool withMovingEdges) {
    contactCount = 0;
    collisionNormal = Vector2D();
    collisionFriction = 0.0f;
    radius = circleRadius;
    circle = centre;
    // A centre that is not a number would be compared with no edge at all,
    // after a walk through the whole tree; it has no contact either way.
    const bool comparable = std::isfinite(centre->x) && std::isfinite(centre->y);
    if (withMovingEdges && comparable) buildDynamicPointsAndNodesList();
    if (comparable) buildPointsAndNodesListRecursive(LevelBspTree::getRoot());
    bool anyHit = false;
    for (int pass = 0; pass < maximumPasses; ++pass) {
        const bool pointHit = resolvePointCollisions();
        const bool lineHit = resolveLineCollisions();
        if (!pointHit && !lineHit) break;
        anyHit = true;
    }
    if (contactCount != 0) {
        const float share = 1.0f / static_cast<float>(contactCount);
        collisionNormal *= share;
        collisionFriction *= share;
    } else {
        collisionFriction = 1.0f;
    }
    points.clear();
    nodes.clear();
    return anyHit;
}

}  // namespace

bool collisionTest(Vector2D* centre, float circleRadius) {
    TRACE_LOCATION("CircleCollision::collisionTest");
    return runTest(centre, circleRadius, true);
}

bool collisionTestStatic(Vector2D* centre, float circleRadius) {
    TRACE_LOCATION("CircleCollision::collisionTestStatic");
    return runTest(centre, circleRadius, false);
}

Vector2D getCollisionNormal() {
    TRACE_LOCATION("CircleCollision::getCollisionNormal");
    return collisionNormal;
}

float getCollisionFriction() {
    TRACE_LOCATION("CircleCollision::getCollisionFriction");
    return collisionFriction;
}

uint32_t getContactCount() {
    TRACE_LOCATION("CircleCollision::getContactCount");
    return contactCount;
}

std::vector<BspNode>& getCollideableNodes() {
    TRACE_LOCATION("CircleCollision::getCollideableNodes");
    return collideableNodes;
}

}  // namespace CircleCollision
