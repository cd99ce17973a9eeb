// The loaded level: its polygons, which tree nodes carry each polygon's edges,
// the start points, and the order in which a level comes and goes.
#include "level/level.h"

#include "console/console.h"
#include "dynamics/dynamics.h"
#include "graphics/graphics.h"

namespace {

std::list<Polygon2D> polygons;
std::map<Polygon2D*, std::vector<BspNode*>> polyNodeMap;
Vector2D waterStart;
Vector2D cameraStart;
bool drawTriangles = false;
LevelRecords records;

constexpr int32_t triggerEntityRemove = 300;
constexpr int32_t triggerEntityAdd = 301;

void findDestructablePolygons() {
    TRACE_LOCATION("Level::findDestructablePolygons");
    for (const TriggerRecord& trigger : records.triggers) {
        if (trigger.type != triggerEntityRemove && trigger.type != triggerEntityAdd) continue;
        for (Polygon2D& polygon : polygons)
            if (polygon.id == trigger.targetId) polygon.destructable = true;
    }
}

void findMoveablePolygons() {
    TRACE_LOCATION("Level::findMoveablePolygons");
    for (const MoverRecord& mover : records.movers)
        for (Polygon2D& polygon : polygons)
            if (polygon.id == mover.id) polygon.moveable = true;
}

// Pieces of an edge that the tree cut apart all stay linked to their polygon.
void buildPolyNodeMap() {
    TRACE_LOCATION("Level::buildPolyNodeMap");
    std::vector<BspNode*> nodes;
    LevelBspTree::getNodeList(nodes);
    std::map<Polygon2D*, std::vector<BspNode*>> byPolygon;
    for (BspNode* node : nodes) byPolygon[node->polygon].push_back(node);
    polyNodeMap.clear();
    for (Polygon2D& polygon : polygons) {
        auto found = byPolygon.find(&polygon);
        if (found == byPolygon.end()) continue;
        polyNodeMap[&polygon] = std::move(found->second);
        byPolygon.erase(found);
    }
}

}  // namespace

namespace Level {

bool load(const std::string& fileName) {
    TRACE_LOCATION("Level::load");
    GLConsole::printTitle("Level loading");
    GLConsole::print("\nLoading level data...");
    if (!LevelLoader::loadLevel(fileName)) return false;
    drawTriangles = false;
    findDestructablePolygons();
    findMoveablePolygons();
    // Moveable polygons stay out of the tree and destructable edges in it, so
    // both kinds are marked before it is built.
    LevelBspTree::create();
    LevelGeometryRenderer::initialise();
    DynamicPolygonRenderer::initialise();
    buildPolyNodeMap();
    GLConsole::addCommand("DrawTriangles", conCmdDrawTriangles);
    return true;
}

void clear() {
    TRACE_LOCATION("Level::clear");
    GLConsole::print("\nClearing level data...");
    GLConsole::removeCommand("DrawTriangles");
    TriggerManager::shutdown();
    MoverManager::shutdown();
    ForceManager::shutdown();
    LevelGeometryRenderer::shutdown();
    LevelBspTree::clear();
    LevelObjectsManager::shutdown();
    DynamicPolygonRenderer::shutdown();
    records = LevelRecords();
    // Polygons go last: everything cleared before them points at them.
    polyNodeMap.clear();
    polygons.clear();
}

void reset() {
    TRACE_LOCATION("Level::reset");
    drawTriangles = false;
    for (Polygon2D& polygon : polygons) {
        polygon.present = true;
        polygon.offset = Vector2D();
        polygon.previousOffset = Vector2D();
    }
    LevelBspTree::resetTree();
    LevelObjectsManager::resetObjects();
    MoverManager::resetMovers();
    // Last, since the things that triggers changed are put back above.
    TriggerManager::resetTriggers();
}

void setPolygonCollideable(Polygon2D* polygon, bool value) {
    TRACE_LOCATION("Level::setPolygonCollideable");
    if (!polygon) return;
    auto found = polyNodeMap.find(polygon);
    if (found != polyNodeMap.end())
        for (BspNode* node : found->second) node->collideable = value;
    polygon->collideable = value;
}

void debugDraw() {
    TRACE_LOCATION("Level::debugDraw");
    LevelBspTree::debugDraw();
    if (!drawTriangles) return;
    for (const Polygon2D& polygon : polygons) polygon.drawTrianglesOutline();
}

std::list<Polygon2D>& getPolygons() {
    TRACE_LOCATION("Level::getPolygons");
    return polygons;
}

const std::map<Polygon2D*, std::vector<BspNode*>>& getPolyNodeMap() {
    TRACE_LOCATION("Level::getPolyNodeMap");
    return polyNodeMap;
}

Vector2D getWaterStart() {
    TRACE_LOCATION("Level::getWaterStart");
    return waterStart;
}

Vector2D getCameraStart() {
    TRACE_LOCATION("Level::getCameraStart");
    return cameraStart;
}

const LevelRecords& getRecords() {
    TRACE_LOCATION("Level::getRecords");
    return records;
}

bool getDrawTriangles() {
    TRACE_LOCATION("Level::getDrawTriangles");
    return drawTriangles;
}

bool conCmdDrawTriangles(bool value, bool set) {
    TRACE_LOCATION("Level::conCmdDrawTriangles");
    if (set) drawTriangles = value;
    return drawTriangles;
}

void addPolygon(const Polygon2D& polygon) {
    TRACE_LOCATION("Level::addPolygon");
    polygons.push_back(polygon);
}

void setStartPoints(const Vector2D& water, const Vector2D& camera) {
    TRACE_LOCATION("Level::setStartPoints");
    waterStart = water;
    cameraStart = camera;
}

LevelRecords& recordsForHandOver() {
    TRACE_LOCATION("Level::recordsForHandOver");
    return records;
}

}  // namespace Level
