// The loaded level: its polygons, which tree nodes carry each polygon's edges,
// the start points, and the order in which a level comes and goes.
#include "level/level.h"

#include "audio/audio.h"
#include "console/console.h"
#include "dynamics/dynamics.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "level/level_state.h"

namespace Level {
State& state() {
    return singleInstance<State>();
}
}  // namespace Level

namespace {

using Level::state;

constexpr int32_t triggerEntityRemove = 300;
constexpr int32_t triggerEntityAdd = 301;

void findDestructablePolygons() {
    TRACE_LOCATION("Level::findDestructablePolygons");
    for (const TriggerRecord& trigger : state().records.triggers) {
        if (trigger.type != triggerEntityRemove && trigger.type != triggerEntityAdd) continue;
        for (Polygon2D& polygon : state().polygons)
            if (polygon.id == trigger.targetId) polygon.destructable = true;
    }
}

void findMoveablePolygons() {
    TRACE_LOCATION("Level::findMoveablePolygons");
    for (const MoverRecord& mover : state().records.movers)
        for (Polygon2D& polygon : state().polygons)
            if (polygon.id == mover.id) polygon.moveable = true;
}

// Pieces of an edge that the tree cut apart all stay linked to their polygon.
void buildPolyNodeMap() {
    TRACE_LOCATION("Level::buildPolyNodeMap");
    std::vector<BspNode*> nodes;
    LevelBspTree::getNodeList(nodes);
    std::map<Polygon2D*, std::vector<BspNode*>> byPolygon;
    for (BspNode* node : nodes) byPolygon[node->polygon].push_back(node);
    state().polyNodeMap.clear();
    for (Polygon2D& polygon : state().polygons) {
        auto found = byPolygon.find(&polygon);
        if (found == byPolygon.end()) continue;
        state().polyNodeMap[&polygon] = std::move(found->second);
        byPolygon.erase(found);
    }
}

}  // namespace

namespace Level {

namespace {
const GLConsoleCommand commands[] = {
    {"DrawTriangles", GLConsole::settingCommand<state, &State::drawTriangles>},
};
}  // namespace

bool load(const std::string& fileName) {
    TRACE_LOCATION("Level::load");
    GLConsole::printTitle("Level loading");
    GLConsole::print("\nLoading level data...");
    if (!LevelLoader::loadLevel(fileName)) return false;
    state().drawTriangles = false;
    findDestructablePolygons();
    findMoveablePolygons();
    // Moveable polygons stay out of the tree and destructable edges in it, so
    // both kinds are marked before it is built.
    LevelBspTree::create();
    LevelGeometryRenderer::initialise();
    DynamicPolygonRenderer::initialise();
    CheckPointTimesManager::initialise();
    buildPolyNodeMap();
    playUntargetedSounds();
    GLConsole::addCommands(commands);
    return true;
}

void clear() {
    TRACE_LOCATION("Level::clear");
    GLConsole::print("\nClearing level data...");
    GLConsole::removeCommands(commands);
    LevelGeometryRenderer::shutdown();
    LevelBspTree::clear();
    LevelObjectsManager::shutdown();
    ForceManager::shutdown();
    DynamicPolygonRenderer::shutdown();
    TriggerManager::shutdown();
    SoundSourceManager::shutdown();
    CheckPointTimesManager::shutdown();
    MoverManager::shutdown();
    // Polygons go last: everything cleared before them points at them.
    state() = State();
}

void reset() {
    TRACE_LOCATION("Level::reset");
    state().drawTriangles = false;
    for (Polygon2D& polygon : state().polygons) {
        polygon.present = true;
        polygon.offset = Vector2D();
        polygon.previousOffset = Vector2D();
    }
    LevelBspTree::resetTree();
    LevelObjectsManager::resetObjects();
    MoverManager::resetMovers();
    SoundSourceManager::resetSounds();
    // After the things that triggers changed are put back above.
    TriggerManager::resetTriggers();
    playUntargetedSounds();
}

// Loops that no "Sound_play_1" trigger starts are on from the beginning of the level.
void playUntargetedSounds() {
    TRACE_LOCATION("Level::playUntargetedSounds");
    constexpr int32_t triggerSoundPlay = 100;
    std::vector<int32_t> started;
    for (const TriggerRecord& trigger : state().records.triggers)
        if (trigger.type == triggerSoundPlay) started.push_back(trigger.targetId);
    SoundSourceManager::playExcludedSounds(started);
    SoundSourceManager::updateAllSounds();
}

void setPolygonCollideable(Polygon2D* polygon, bool value) {
    TRACE_LOCATION("Level::setPolygonCollideable");
    if (!polygon) return;
    auto found = state().polyNodeMap.find(polygon);
    if (found != state().polyNodeMap.end())
        for (BspNode* node : found->second) node->collideable = value;
    polygon->collideable = value;
}

void debugDraw() {
    TRACE_LOCATION("Level::debugDraw");
    LevelBspTree::debugDraw();
    if (!state().drawTriangles) return;
    for (const Polygon2D& polygon : state().polygons) polygon.drawTrianglesOutline();
}

std::list<Polygon2D>& getPolygons() {
    TRACE_LOCATION("Level::getPolygons");
    return state().polygons;
}

Vector2D getWaterStart() {
    TRACE_LOCATION("Level::getWaterStart");
    return state().waterStart;
}

Vector2D getCameraStart() {
    TRACE_LOCATION("Level::getCameraStart");
    return state().cameraStart;
}

void addPolygon(const Polygon2D& polygon) {
    TRACE_LOCATION("Level::addPolygon");
    state().polygons.push_back(polygon);
}

}  // namespace Level
