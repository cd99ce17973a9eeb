// A step of the movers: each runs along its path, what rides on it follows,
// and the water in a moving polygon's way is pushed aside. Before that the
// edges of moving polygons near the view are placed for the collision code.
#include <algorithm>

#include "dynamics/dynamics.h"
#include "dynamics/mover_state.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "water/water.h"

using MoverManager::nearView;
using MoverManager::state;

namespace {

constexpr float collisionReach = 0.7f;

// Two passes, so that a thing on two movers gets the sum of both.
template <typename Thing>
void moveRiders(const std::map<Mover*, std::vector<Thing*>>& riders) {
    for (const auto& [mover, things] : riders)
        for (Thing* thing : things) thing->offset = Vector2D();
    for (const auto& [mover, things] : riders)
        for (Thing* thing : things) thing->offset += mover->direction * mover->position;
}

}  // namespace

namespace MoverManager {

void updateCollideableNodes() {
    TRACE_LOCATION("MoverManager::updateCollideableNodes");
    std::vector<BspNode>& nodes = state().collideableNodes;
    nodes.clear();
    const float h = std::max(Game::getViewAreaX(), Game::getViewAreaY()) * collisionReach * Camera::getZoom();
    for (const DynamicPolygon& entry : state().dynamicPolygons) {
        if (!entry.polygon->collideable || !nearView(entry, h)) continue;
        const Vector2D offset = entry.polygon->offset;
        for (const BspNode& edge : entry.edges) {
            BspNode placed = edge;
            placed.start += offset;
            placed.end += offset;
            nodes.push_back(placed);
        }
    }
    // Each edge went to the front of the list, newest first.
    std::reverse(nodes.begin(), nodes.end());
    CircleCollision::swapCollideableNodes(nodes);
}

void runMovers(float dt) {
    TRACE_LOCATION("MoverManager::runMovers");
    for (Mover& mover : state().movers) mover.run(dt);
    moveMoverObjects();
    moveMoverPolygons();
    pushPolygonParticles(dt);
}

void moveMoverObjects() {
    TRACE_LOCATION("MoverManager::moveMoverObjects");
    moveRiders(state().moverObjects);
}

void moveMoverPolygons() {
    TRACE_LOCATION("MoverManager::moveMoverPolygons");
    moveRiders(state().moverPolygons);
}

}  // namespace MoverManager
