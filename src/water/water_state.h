// The water's file-level state that more than one file looks at (the
// collision test's results and candidates), for the water's files and tests.
#pragma once

#include <vector>

#include "level/level.h"
#include "water/water.h"

namespace CircleCollision {

struct PointContact {
    Vector2D position;
    float friction;
};

struct State {
    uint32_t contactCount = 0;
    Vector2D collisionNormal;
    float collisionFriction = 1.0f;
    // Candidates of the test under way, kept in the order found (a pass walks
    // them newest first); their storage is reused from test to test.
    std::vector<PointContact> points;
    std::vector<const BspNode*> nodes;
    std::vector<BspNode> collideableNodes;
};
State& state();

}  // namespace CircleCollision
