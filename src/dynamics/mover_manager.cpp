// The store of movers and of the polygons that ride on them. Moving polygons
// are kept out of the level's tree; their edges are kept here in the polygon's
// own frame and placed at its offset when the water needs them.
#include "console/console.h"
#include "dynamics/dynamics.h"
#include "dynamics/mover_state.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "water/water.h"

namespace MoverManager {

State& state() {
    return singleInstance<State>();
}

bool nearView(const DynamicPolygon& entry, float halfWidth) {
    TRACE_LOCATION("MoverManager::nearView");
    const Vector2D c = Camera::getViewCentre();
    const Vector2D offset = entry.polygon->offset;
    return entry.minX + offset.x <= c.x + halfWidth && entry.maxX + offset.x >= c.x - halfWidth &&
           entry.minY + offset.y <= c.y + halfWidth && entry.maxY + offset.y >= c.y - halfWidth;
}

namespace {

bool isDynamic(const Polygon2D* polygon) {
    for (const DynamicPolygon& entry : state().dynamicPolygons)
        if (entry.polygon == polygon) return true;
    return false;
}

void addRiders(Mover& mover, std::list<LevelObject>& objects) {
    for (LevelObject& object : objects)
        if (object.id == mover.id) state().moverObjects[&mover].push_back(&object);
}

const GLConsoleCommand commands[] = {
    {"MoverCount", conCmdMoverCount},
    {"MoverDraw", GLConsole::settingCommand<state, &State::moverDraw>},
    {"DynamicNodeDraw", GLConsole::settingCommand<state, &State::dynamicNodeDraw>},
};
const GLConsole::Subsystem console("\nInitialising down mover manager..", "\nShutting down mover manager..",
                                   commands);

}  // namespace

void initialise() {
    TRACE_LOCATION("MoverManager::initialise");
    shutdown();
    GLConsole::startSubsystem(console);
}

void shutdown() {
    TRACE_LOCATION("MoverManager::shutdown");
    GLConsole::stopSubsystem(console);
    state() = State();
    CircleCollision::clearCollideableNodes();
}

void addMover(const Mover& mover) {
    TRACE_LOCATION("MoverManager::addMover");
    state().movers.push_back(mover);
    Mover& added = state().movers.back();
    addRiders(added, LevelObjectsManager::getAnimatedObjects());
    addRiders(added, LevelObjectsManager::getStaticObjects());
    for (Polygon2D& polygon : Level::getPolygons()) {
        if (polygon.id != added.id) continue;
        state().moverPolygons[&added].push_back(&polygon);
        if (polygon.collideable && !isDynamic(&polygon)) addDynamicPolygon(&polygon);
    }
}

void addDynamicPolygon(Polygon2D* polygon) {
    TRACE_LOCATION("MoverManager::addDynamicPolygon");
    if (polygon->isDegenerate() || polygon->triangleCount == 0 || polygon->pointCount() < 2) return;
    state().dynamicPolygons.emplace_front();
    DynamicPolygon& entry = state().dynamicPolygons.front();
    entry.polygon = polygon;
    // Outline order with the closing edge last, each edge at the front of the list.
    for (const BspNode& edge : LevelBspTree::polygonEdges(*polygon)) entry.edges.push_front(edge);
    DynamicPolygonRenderer::findPolygonBounds(*polygon, entry.minX, entry.maxX, entry.minY, entry.maxY);
}

void resetMovers() {
    TRACE_LOCATION("MoverManager::resetMovers");
    state().moverDraw = false;
    state().dynamicNodeDraw = false;
    for (Mover& mover : state().movers) mover.reset();
}

std::list<Mover>& getMovers() {
    TRACE_LOCATION("MoverManager::getMovers");
    return state().movers;
}

int conCmdMoverCount() {
    TRACE_LOCATION("MoverManager::conCmdMoverCount");
    return static_cast<int>(state().movers.size());
}

}  // namespace MoverManager
