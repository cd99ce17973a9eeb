// Keeping a circle out of the level's edges. Each edge is a line contact over
// its interior, from its free side, and a point contact at its ends and at the
// foot of the perpendicular, from any side, so corners need nothing of their own.
// Contacts are resolved in up to three passes; the mean normal and friction of
// all of them are left for the caller's velocity correction.
#include <cmath>

#include "foundation/foundation.h"
#include "level/level.h"
#include "water/water.h"
#include "water/water_state.h"

namespace CircleCollision {

State& state() {
    return singleInstance<State>();
}

namespace {

constexpr int maximumPasses = 3;

// The circle of the test under way, changed in place.
struct Circle {
    Vector2D* centre;
    float radius;
};

float distanceToLine(const BspNode& node, const Vector2D& q) {
    return dot(q - node.start, node.normal);
}

// An edge whose line lies within the radius: a line contact where the centre's
// foot falls on it, a point contact at the foot or at the nearer end.
void gatherContacts(State& s, const BspNode& node, const Circle& circle) {
    const Vector2D offset = *circle.centre - node.start;
    const float along = dot(offset, node.direction);
    if (along >= 0.0f && along <= node.length) {
        s.nodes.push_back(&node);
        s.points.push_back({node.start + node.direction * along, node.friction});
    } else if (along >= -circle.radius && along <= node.length + circle.radius) {
        const Vector2D end = along < 0.0f ? node.start : node.start + node.direction * node.length;
        s.points.push_back({end, node.friction});
    }
}

void buildDynamicPointsAndNodesList(State& s, const Circle& circle) {
    TRACE_LOCATION("CircleCollision::buildDynamicPointsAndNodesList");
    for (const BspNode& node : s.collideableNodes) {
        const float d = distanceToLine(node, *circle.centre);
        if (d >= -circle.radius && d <= circle.radius) gatherContacts(s, node, circle);
    }
}

// Only edges whose line lies within the radius of the centre are looked at;
// the walk goes down one side of every other edge.
void descend(State& s, const BspNode* node, const Circle& circle) {
    const float r = circle.radius;
    while (node) {
        const float d = distanceToLine(*node, *circle.centre);
        if (d >= r) {
            node = node->positiveChild;
        } else if (d < -r) {
            node = node->negativeChild;
        } else {
            if (node->collideable) gatherContacts(s, *node, circle);
            descend(s, node->negativeChild, circle);
            node = node->positiveChild;
        }
    }
}

void buildPointsAndNodesListRecursive(State& s, const BspNode* node, const Circle& circle) {
    TRACE_LOCATION("CircleCollision::buildPointsAndNodesListRecursive");
    descend(s, node, circle);
}

void addContact(State& s, const Vector2D& normal, float friction) {
    ++s.contactCount;
    s.collisionNormal += normal;
    s.collisionFriction += friction;
}

bool resolvePointCollisions(State& s, const Circle& circle) {
    TRACE_LOCATION("CircleCollision::resolvePointCollisions");
    bool hit = false;
    for (auto point = s.points.rbegin(); point != s.points.rend(); ++point) {
        const Vector2D toPoint = point->position - *circle.centre;
        const float l = length(toPoint);
        if (!(l > 0.0f && l < circle.radius)) continue;
        const Vector2D unit = toPoint / l;
        *circle.centre -= unit * (circle.radius - l);
        addContact(s, unit, point->friction);
        hit = true;
    }
    return hit;
}

// No upper bound on the distance: a centre that got behind a listed edge is
// carried right through to its free side.
bool resolveLineCollisions(State& s, const Circle& circle) {
    TRACE_LOCATION("CircleCollision::resolveLineCollisions");
    bool hit = false;
    for (auto node = s.nodes.rbegin(); node != s.nodes.rend(); ++node) {
        const float d = distanceToLine(**node, *circle.centre);
        if (d < -circle.radius) continue;
        *circle.centre -= (*node)->normal * (d + circle.radius);
        addContact(s, (*node)->normal, (*node)->friction);
        hit = true;
    }
    return hit;
}

bool runTest(const Circle& circle, bool withMovingEdges) {
    State& s = state();
    s.contactCount = 0;
    s.collisionNormal = Vector2D();
    s.collisionFriction = 0.0f;
    // A centre that is not a number would be compared with no edge at all,
    // after a walk through the whole tree; it has no contact either way.
    const bool comparable = isFinite(*circle.centre);
    if (withMovingEdges && comparable) buildDynamicPointsAndNodesList(s, circle);
    if (comparable) buildPointsAndNodesListRecursive(s, LevelBspTree::getRoot(), circle);
    bool anyHit = false;
    for (int pass = 0; pass < maximumPasses; ++pass) {
        const bool pointHit = resolvePointCollisions(s, circle);
        const bool lineHit = resolveLineCollisions(s, circle);
        if (!pointHit && !lineHit) break;
        anyHit = true;
    }
    if (s.contactCount != 0) {
        const float share = 1.0f / static_cast<float>(s.contactCount);
        s.collisionNormal *= share;
        s.collisionFriction *= share;
    } else {
        s.collisionFriction = 1.0f;
    }
    s.points.clear();
    s.nodes.clear();
    return anyHit;
}

}  // namespace

bool collisionTest(Vector2D* centre, float circleRadius) {
    TRACE_LOCATION("CircleCollision::collisionTest");
    return runTest({centre, circleRadius}, true);
}

bool collisionTestStatic(Vector2D* centre, float circleRadius) {
    TRACE_LOCATION("CircleCollision::collisionTestStatic");
    return runTest({centre, circleRadius}, false);
}

Vector2D getCollisionNormal() {
    TRACE_LOCATION("CircleCollision::getCollisionNormal");
    return state().collisionNormal;
}

float getCollisionFriction() {
    TRACE_LOCATION("CircleCollision::getCollisionFriction");
    return state().collisionFriction;
}

void swapCollideableNodes(std::vector<BspNode>& nodes) {
    TRACE_LOCATION("CircleCollision::swapCollideableNodes");
    state().collideableNodes.swap(nodes);
}

void clearCollideableNodes() {
    TRACE_LOCATION("CircleCollision::clearCollideableNodes");
    state().collideableNodes.clear();
}

}  // namespace CircleCollision
