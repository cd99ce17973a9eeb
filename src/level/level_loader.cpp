// Loading a level file: the whole file is read and checked before anything of
// the running level is touched, so a bad file leaves the old level standing.
#include <memory>

#include "console/console.h"
#include "graphics/window/window.h"
#include "level/level_handover.h"
#include "platform/platform.h"

namespace {

struct FileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};

Polygon2D buildPolygon(const PolygonRecord& record) {
    Polygon2D polygon;
    polygon.id = record.id;
    polygon.texture.emplace(record.textureName);
    polygon.setFrictionLevel(SurfaceTypeManager::getSurfaceTypeFriction(record.surfaceType));
    // Any mode but the three special ones is an ordinary drawn solid.
    polygon.collideable = record.collisionMode != 1 && record.collisionMode != 3;
    polygon.visible = record.collisionMode != 2 && record.collisionMode != 3;
    polygon.layer = record.layer;
    std::vector<Vector2D> points;
    points.reserve(record.points.size());
    for (const LevelPoint& p : record.points) points.push_back(p.toVector());
    polygon.addPoints(points);
    return polygon;
}

// Reads the emitter's settings file, and so its textures, as the file is read.
FxParticleEmitter buildEmitter(const EmitterRecord& record) {
    FxParticleEmitter emitter;
    emitter.id = record.id;
    emitter.position = record.position.toVector();
    emitter.setDirection(record.directionX, record.directionY);
    emitter.loadEmitterSettings(record.settingsName);
    return emitter;
}

}  // namespace

namespace LevelLoader {

bool loadLevel(const std::string& fileName) {
    TRACE_LOCATION("LevelLoader::loadLevel");
    std::unique_ptr<FILE, FileCloser> file(Platform::openFile(fileName, "rb"));
    if (!file) {
        GLConsole::print("\nUnable to open level file '" + fileName + "'");
        return false;
    }
    FrameClock clock;
    clock.update();
    LevelFile level;
    std::vector<Polygon2D> polygons;
    std::vector<FxParticleEmitter> emitters;
    try {
        LevelFileFormat::read(file.get(), level);
        polygons.reserve(level.polygons.size());
        for (const PolygonRecord& record : level.polygons) {
            polygons.push_back(buildPolygon(record));
            // Keeps the window answering during a long load.
            GLWindow::run();
        }
        emitters.reserve(level.emitters.size());
        for (const EmitterRecord& record : level.emitters) emitters.push_back(buildEmitter(record));
    } catch (const char* reason) {
        GLConsole::print("\nError reading level file '" + fileName + "'");
        GLConsole::print(std::string("\nReason: ") + reason);
        return false;
    }
    GLConsole::print("\nLevel '" + fileName + "' loaded successfully..");
    clock.update();
    GLConsole::print("\nLevel loading took ");
    GLConsole::print(clock.deltaSeconds);
    GLConsole::print(" seconds.");
    handOver(level, polygons, emitters);
    return true;
}

}  // namespace LevelLoader
