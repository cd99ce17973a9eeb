// The checks of a level's records: what triggers cover and act on, what movers
// carry and how fast, which files the level names, where the water starts.
#include "level_checks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "dynamics/dynamics.h"
#include "game/game.h"
#include "level_tools/level_text_names.h"
#include "platform/platform.h"

namespace LevelChecks {

namespace {

using namespace LevelTextNames;

constexpr int32_t levelEndType = 801;

std::string quoted(const std::string& name) {
    return "\"" + name + "\"";
}

std::string point(const LevelPoint& p) {
    return std::to_string(p.x) + " " + std::to_string(p.y);
}

std::string record(const char* kind, std::size_t index, int32_t id) {
    return std::string(kind) + " " + std::to_string(index) + " (id " + std::to_string(id) + ")";
}

std::string triggerName(std::size_t index, const TriggerRecord& trigger) {
    const char* type = nameOf(triggerTypes, triggerTypeCount, trigger.type);
    return "trigger " + std::to_string(index) + " (" +
           (type ? type : "type " + std::to_string(trigger.type)) + ")";
}

// Names are looked up as the game looks them up, relative to its data directory.
bool holds(const std::string& dataDirectory, const std::string& name) {
    return Platform::fileExists(dataDirectory.empty() ? name : dataDirectory + "/" + name);
}

void checkFile(Warnings& warnings, const std::string& dataDirectory, const std::string& recordName,
               const char* what, const std::string& name, const char* consequence) {
    if (name.empty() || holds(dataDirectory, name)) return;
    warnings.add(recordName,
                 std::string(what) + " " + quoted(name) + " is not in the data directory: " + consequence);
}

// Twice the area of triangle a, b, c; 0 when the three lie on one line.
double doubleArea(const LevelPoint& a, const LevelPoint& b, const LevelPoint& c) {
    return (static_cast<double>(b.x) - a.x) * (static_cast<double>(c.y) - a.y) -
           (static_cast<double>(c.x) - a.x) * (static_cast<double>(b.y) - a.y);
}

bool samePoint(const LevelPoint& a, const LevelPoint& b) {
    return a.x == b.x && a.y == b.y;
}

// The game splits the area into corners 1, 2, 3 and corners 3, 4, 1. A half
// whose three corners are one point has no edge to be outside of: every point
// of the level is inside it.
void checkTriggerArea(Warnings& warnings, const std::string& name, const TriggerRecord& trigger) {
    const LevelPoint* c = trigger.corners;
    if (doubleArea(c[0], c[1], c[2]) != 0.0 || doubleArea(c[2], c[3], c[0]) != 0.0) return;
    const bool firstIsPoint = samePoint(c[0], c[1]) && samePoint(c[1], c[2]);
    const bool secondIsPoint = samePoint(c[2], c[3]) && samePoint(c[3], c[0]);
    if (firstIsPoint || secondIsPoint)
        warnings.add(name, "its corners enclose no area, so it fires for all the water wherever its point (" +
                               point(firstIsPoint ? c[0] : c[2]) + ") is near the view");
    else
        warnings.add(name, "its corners enclose no area: only water exactly on its line fires it");
}

template <typename Record>
bool hasId(const std::vector<Record>& records, int32_t id) {
    return std::any_of(records.begin(), records.end(), [id](const Record& r) { return r.id == id; });
}

// A kind of record a trigger may act on, and whether the level has one of that
// kind under the trigger's target.
struct TargetKind {
    unsigned bit;
    const char* word;
    bool named;
};

// Target 0 means none, except for sounds, which are looked up by id when the
// trigger fires.
void checkTriggerTarget(Warnings& warnings, const std::string& name, const TriggerRecord& trigger,
                        const LevelFile& level) {
    const unsigned kinds = triggerActsOn(trigger.type) & actsOnTargets;
    if (kinds == 0) return;
    const int32_t id = trigger.targetId;
    const bool some = id != 0;
    const TargetKind targets[] = {
        {actsOnPolygons, "polygon", some && hasId(level.polygons, id)},
        {actsOnObjects, "object", some && hasId(level.objects, id)},
        {actsOnForces, "force", some && hasId(level.forces, id)},
        {actsOnMovers, "mover", some && hasId(level.movers, id)},
        {actsOnEmitters, "emitter", some && hasId(level.emitters, id)},
        {actsOnSounds, "sound", hasId(level.sounds, id)},
    };
    std::string wanted;
    for (const TargetKind& target : targets) {
        if (!(kinds & target.bit)) continue;
        if (target.named) return;
        wanted += wanted.empty() ? "" : " or ";
        wanted += target.word;
    }
    warnings.add(name,
                 "its target " + std::to_string(id) + " names no " + wanted + ", so firing it does nothing");
}

void checkMover(Warnings& warnings, const LevelFile& level, std::size_t index) {
    const MoverRecord& mover = level.movers[index];
    const std::string name = record("mover", index, mover.id);
    bool carries = false, carriesSolids = false;
    for (const Polygon2D& polygon : Level::getPolygons()) {
        if (polygon.id != mover.id) continue;
        carries = true;
        carriesSolids = carriesSolids || polygon.collideable;
    }
    for (const ObjectRecord& object : level.objects) carries = carries || object.id == mover.id;
    if (!carries) {
        warnings.add(name, "it carries nothing: no polygon or object has id " + std::to_string(mover.id));
        return;
    }
    const double stride = std::fabs(static_cast<double>(mover.speed)) * Game::stepThreshold;
    if (!carriesSolids || stride <= MoverManager::pushStep) return;
    char text[256];
    std::snprintf(text, sizeof text,
                  "its polygons move %.2f units in a step of %.8g s, more than %.1f: the water they carry "
                  "is killed (a speed of at most %.1f keeps it)",
                  stride, static_cast<double>(Game::stepThreshold),
                  static_cast<double>(MoverManager::pushStep),
                  std::floor(MoverManager::pushStep / Game::stepThreshold * 10.0) / 10.0);
    warnings.add(name, text);
}

void checkWaterStart(Warnings& warnings, const LevelFile& level) {
    std::size_t index = 0;
    for (const Polygon2D& polygon : Level::getPolygons()) {
        if (polygon.collideable && polygon.triangleCount > 0 &&
            insideOutline(polygon, level.waterStart.toVector())) {
            warnings.add("water " + point(level.waterStart), "the water starts inside solid " +
                                                                 polygonName(index, polygon) +
                                                                 ", and is pushed out of it or killed");
            return;
        }
        ++index;
    }
}

}  // namespace

bool insideOutline(const Polygon2D& polygon, const Vector2D& q) {
    bool in = false;
    const std::size_t n = polygon.pointCount();
    for (std::size_t i = 0, j = n - 1; i < n; j = i++) {
        const Vector2D a = polygon.point(i), b = polygon.point(j);
        if ((a.y > q.y) != (b.y > q.y) && q.x < (b.x - a.x) * (q.y - a.y) / (b.y - a.y) + a.x) in = !in;
    }
    return in;
}

std::string polygonName(std::size_t index, const Polygon2D& polygon) {
    return record("polygon", index, polygon.id);
}

Warnings checkLevel(const LevelFile& level, const std::string& dataDirectory) {
    Warnings warnings;
    std::size_t index = 0;
    for (const Polygon2D& polygon : Level::getPolygons()) {
        const std::string name = polygonName(index, polygon);
        // The game neither draws nor collides with what it cannot triangulate.
        if (polygon.triangleCount == 0)
            warnings.add(name, "it has no triangles: it is neither drawn nor solid");
        if (index < level.polygons.size())
            checkFile(warnings, dataDirectory, name, "texture", level.polygons[index].textureName,
                      "it is drawn with the default picture");
        ++index;
    }
    checkTreeEdges(warnings);
    for (std::size_t i = 0; i < level.objects.size(); ++i)
        checkFile(warnings, dataDirectory, record("object", i, level.objects[i].id), "texture",
                  level.objects[i].textureName, "it is drawn with the default picture");
    for (std::size_t i = 0; i < level.movers.size(); ++i) checkMover(warnings, level, i);
    bool hasEnd = false;
    for (std::size_t i = 0; i < level.triggers.size(); ++i) {
        const TriggerRecord& trigger = level.triggers[i];
        const std::string name = triggerName(i, trigger);
        checkTriggerArea(warnings, name, trigger);
        checkTriggerTarget(warnings, name, trigger, level);
        hasEnd = hasEnd || trigger.type == levelEndType;
    }
    for (std::size_t i = 0; i < level.sounds.size(); ++i)
        checkFile(warnings, dataDirectory, record("sound", i, level.sounds[i].id), "sound",
                  level.sounds[i].soundName, "it stays silent");
    // Emitters are the last kind of record that names a file; a new kind that
    // names one is checked here in the same way.
    for (std::size_t i = 0; i < level.emitters.size(); ++i)
        checkFile(warnings, dataDirectory, record("emitter", i, level.emitters[i].id), "settings file",
                  level.emitters[i].settingsName, "it gives off nothing");
    if (!hasEnd) warnings.add("level", "it has no Level_end_a trigger, so it cannot be won");
    checkWaterStart(warnings, level);
    return warnings;
}

}  // namespace LevelChecks
