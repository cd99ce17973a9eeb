// The store of triggers: adding one with its inside test made ready, finding
// the things it acts on, the inside test itself and the reset.
#include <algorithm>
#include <set>

#include "console/console.h"
#include "dynamics/dynamics.h"
#include "dynamics/trigger_state.h"
#include "graphics/graphics.h"

namespace TriggerManager {

State& state() {
    return singleInstance<State>();
}

bool limitReached(const Trigger& trigger) {
    TRACE_LOCATION("TriggerManager::limitReached");
    return trigger.typeInfo->fireLimit != 0 && trigger.fireCount >= trigger.typeInfo->fireLimit;
}

namespace {

constexpr int32_t nullType = -1;

void prepareTriangle(TriggerTriangle& triangle, Vector2D a, Vector2D b, Vector2D c) {
    fixTriangleWinding(a, b, c);
    triangle.corners[0] = a;
    triangle.corners[1] = b;
    triangle.corners[2] = c;
    for (int i = 0; i < 3; ++i) {
        Vector2D edge = triangle.corners[(i + 1) % 3] - triangle.corners[i];
        triangle.lengths[i] = length(edge);
        if (triangle.lengths[i] > 0.0f) edge /= triangle.lengths[i];
        triangle.edges[i] = edge;
        triangle.normals[i] = Vector2D(-edge.y, edge.x);
    }
}

const TriggerType* typeFor(int32_t type) {
    auto found = state().types.find(type);
    if (found != state().types.end()) return &found->second;
    found = state().types.find(nullType);
    if (found != state().types.end()) return &found->second;
    TriggerType& fallback = state().types[nullType];
    fallback.name = "Null Trigger";
    fallback.function = trigFuncNull;
    return &fallback;
}

void addTargets(Trigger& trigger, std::list<LevelObject>& objects) {
    for (LevelObject& object : objects)
        if (object.id == trigger.targetId) trigger.targets.push_back({&object, targetObject});
}

const GLConsoleCommand commands[] = {
    {"TriggerTypeList", conCmdTriggerTypeList},
    {"TriggerCreate", conCmdTriggerCreate},
    {"TriggerDraw", GLConsole::settingCommand<state, &State::drawTriggers>},
    {"TriggerCount", conCmdTriggerCount},
};
const GLConsole::Subsystem console("\nInitialising down trigger manager..",
                                   "\nShutting down trigger manager..", commands);

}  // namespace

void initialise() {
    TRACE_LOCATION("TriggerManager::initialise");
    shutdown();
    GLConsole::startSubsystem(console);
    createTriggerTypeMap();
}

void shutdown() {
    TRACE_LOCATION("TriggerManager::shutdown");
    GLConsole::stopSubsystem(console);
    state() = State();
}

void addTrigger(int32_t type, int32_t targetId, float delay, const Vector2D& a, const Vector2D& b,
                const Vector2D& c, const Vector2D& d) {
    TRACE_LOCATION("TriggerManager::addTrigger");
    state().triggers.emplace_front();
    Trigger& trigger = state().triggers.front();
    prepareTriangle(trigger.first, a, b, c);
    prepareTriangle(trigger.second, c, d, a);
    trigger.minX = std::min({a.x, b.x, c.x, d.x});
    trigger.maxX = std::max({a.x, b.x, c.x, d.x});
    trigger.minY = std::min({a.y, b.y, c.y, d.y});
    trigger.maxY = std::max({a.y, b.y, c.y, d.y});
    trigger.targetId = targetId;
    trigger.type = type;
    trigger.typeInfo = typeFor(type);
    trigger.delay = trigger.typeInfo->needsSubject ? 0.0f : delay;
    trigger.cooldown = 0.0f;
    trigger.fireCount = 0;
    findTargets(trigger);
}

void findTargets(Trigger& trigger) {
    TRACE_LOCATION("TriggerManager::findTargets");
    if (trigger.targetId == 0) return;
    addTargets(trigger, LevelObjectsManager::getStaticObjects());
    addTargets(trigger, LevelObjectsManager::getAnimatedObjects());
    for (Force& force : ForceManager::getForces())
        if (force.id == trigger.targetId) trigger.targets.push_back({&force, targetForce});
    for (Polygon2D& polygon : Level::getPolygons())
        if (polygon.id == trigger.targetId) trigger.targets.push_back({&polygon, targetPolygon});
    for (Mover& mover : MoverManager::getMovers())
        if (mover.id == trigger.targetId) trigger.targets.push_back({&mover, targetMover});
    for (FxParticleEmitter* emitter : FxParticleManager::findEmitters(trigger.targetId))
        trigger.targets.push_back({emitter, targetEmitter});
}

bool pointInTrigger(const Vector2D& point, const Trigger& trigger) {
    TRACE_LOCATION("TriggerManager::pointInTrigger");
    return insideTrigger(point, trigger);
}

void resetTriggers() {
    TRACE_LOCATION("TriggerManager::resetTriggers");
    state().delayedEvents.clear();
    for (Trigger& trigger : state().triggers) {
        trigger.cooldown = 0.0f;
        trigger.fireCount = 0;
    }
}

}  // namespace TriggerManager
