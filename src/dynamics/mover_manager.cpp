// The store of movers and of the polygons that ride on them. Moving polygons
// are kept out of the level's tree; their edges are kept here in the polygon's
// own frame and placed at its offset when the water needs them.
#include "console/console.h"
#include "dynamics/dynamics.h"
#include "dynamics/mover_state.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "water/water.h"

namespace MoverState {
std::list<Mover> movers;
std::map<Mover*, std::vector<LevelObject*>> moverObjects;
std::map<Mover*, std::vector<Polygon2D*>> moverPolygons;
std::list<DynamicPolygon> dynamicPolygons;
bool moverDraw = false;
bool dynamicNodeDraw = false;

bool nearView(const DynamicPolygon& entry, float halfWidth) {
    const Vector2D c = Camera::getViewCentre();
    const Vector2D offset = entry.polygon->offset;
    return entry.minX + offset.x <= c.x + halfWidth && entry.maxX + offset.x >= c.x - halfWidth &&
           entry.minY + offset.y <= c.y + halfWidth && entry.maxY + offset.y >= c.y - halfWidth;
}
}  // namespace MoverState

using namespace MoverState;

namespace {

// Edges this short are dropped, as the level's tree drops them.
constexpr float shortestEdge = 0.01f;

bool isDynamic(const Polygon2D* polygon) {
    for (const DynamicPolygon& entry : dynamicPolygons)
        if (entry.polygon == polygon) return true;
    return false;
}

void addRiders(Mover& mover, std::list<LevelObject>& objects) {
    for (LevelObject& object : objects)
        if (object.id == mover.id) moverObjects[&mover].push_back(&object);
}

// Outline order with the closing edge last, each edge at the front of the list.
void buildEdges(DynamicPolygon& entry) {
    Polygon2D& polygon = *entry.polygon;
    const std::size_t n = polygon.pointCount();
    for (std::size_t i = 0; i < n; ++i) {
        const Vector2D from = polygon.point(i), to = polygon.point((i + 1) % n);
        BspNode node;
        node.start = polygon.clockwise ? from : to;
        node.end = polygon.clockwise ? to : from;
        node.direction = node.end - node.start;
        node.length = length(node.direction);
        if (node.length <= shortestEdge) continue;
        normalise(node.direction);
        node.normal = Vector2D(-node.direction.y, node.direction.x);
        node.collideable = true;
        node.friction = polygon.friction;
        node.polygon = &polygon;
        entry.edges.push_front(node);
    }
}

}  // namespace

namespace MoverManager {

void initialise() {
    TRACE_LOCATION("MoverManager::initialise");
    shutdown();
    moverDraw = false;
    dynamicNodeDraw = false;
    GLConsole::print("\nInitialising down mover manager..");
    GLConsole::addCommand("MoverCount", conCmdMoverCount);
    GLConsole::addCommand("MoverDraw", conCmdMoverDraw);
    GLConsole::addCommand("DynamicNodeDraw", conCmdDynamicNodeDraw);
}

void shutdown() {
    TRACE_LOCATION("MoverManager::shutdown");
    GLConsole::print("\nShutting down mover manager..");
    moverObjects.clear();
    moverPolygons.clear();
    dynamicPolygons.clear();
    movers.clear();
    CircleCollision::getCollideableNodes().clear();
    for (const char* name : {"MoverCount", "MoverDraw", "DynamicNodeDraw"}) GLConsole::removeCommand(name);
}

void addMover(const Mover& mover) {
    TRACE_LOCATION("MoverManager::addMover");
    movers.push_back(mover);
    Mover& added = movers.back();
    addRiders(added, LevelObjectsManager::getAnimatedObjects());
    addRiders(added, LevelObjectsManager::getStaticObjects());
    for (Polygon2D& polygon : Level::getPolygons()) {
        if (polygon.id != added.id) continue;
        moverPolygons[&added].push_back(&polygon);
        if (polygon.collideable && !isDynamic(&polygon)) addDynamicPolygon(&polygon);
    }
}

void addDynamicPolygon(Polygon2D* polygon) {
    TRACE_LOCATION("MoverManager::addDynamicPolygon");
    if (polygon->isDegenerate() || polygon->triangleCount == 0 || polygon->pointCount() < 2) return;
    dynamicPolygons.emplace_front();
    DynamicPolygon& entry = dynamicPolygons.front();
    entry.polygon = polygon;
    buildEdges(entry);
    DynamicPolygonRenderer::findPolygonBounds(*polygon, entry.minX, entry.maxX, entry.minY, entry.maxY);
}

void resetMovers() {
    TRACE_LOCATION("MoverManager::resetMovers");
    moverDraw = false;
    dynamicNodeDraw = false;
    for (Mover& mover : movers) mover.reset();
}

std::list<Mover>& getMovers() {
    TRACE_LOCATION("MoverManager::getMovers");
    return movers;
}

const std::list<DynamicPolygon>& getDynamicPolygons() {
    TRACE_LOCATION("MoverManager::getDynamicPolygons");
    return dynamicPolygons;
}

const std::map<Mover*, std::vector<Polygon2D*>>& getMoverPolygons() {
    TRACE_LOCATION("MoverManager::getMoverPolygons");
    return moverPolygons;
}

const std::map<Mover*, std::vector<LevelObject*>>& getMoverObjects() {
    TRACE_LOCATION("MoverManager::getMoverObjects");
    return moverObjects;
}

int conCmdMoverCount() {
    TRACE_LOCATION("MoverManager::conCmdMoverCount");
    return static_cast<int>(movers.size());
}

bool conCmdMoverDraw(bool value, bool set) {
    TRACE_LOCATION("MoverManager::conCmdMoverDraw");
    if (set) moverDraw = value;
    return moverDraw;
}

bool conCmdDynamicNodeDraw(bool value, bool set) {
    TRACE_LOCATION("MoverManager::conCmdDynamicNodeDraw");
    if (set) dynamicNodeDraw = value;
    return dynamicNodeDraw;
}

}  // namespace MoverManager
