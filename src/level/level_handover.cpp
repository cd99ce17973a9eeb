// Handing a read level to its owners. Triggers come last, since they look their
// targets up in all the others; movers look up polygons and objects.
//
// Each slot below belongs to one owner. The level keeps the records as well,
// for what it derives from them itself (moveable and destructable polygons).
#include "level/level_handover.h"

#include "audio/audio.h"
#include "dynamics/dynamics.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"
#include "level/level_state.h"

namespace {

void handOverObjects(const std::vector<ObjectRecord>& objects) {
    TRACE_LOCATION("LevelLoader::handOverObjects");
    Level::state().records.objects = objects;
    LevelObjectsManager::initialise();
    for (const ObjectRecord& record : objects) {
        LevelObject object;
        object.id = record.id;
        object.layer = record.layer;
        object.position = record.position.toVector();
        object.mirrored = record.mirrored != 0;
        object.setTexture(record.textureName);
        LevelObjectsManager::addObject(object);
        GLWindow::run();
    }
}

void handOverForces(const std::vector<ForceRecord>& forces) {
    TRACE_LOCATION("LevelLoader::handOverForces");
    std::vector<ForceRecord>& kept = Level::state().records.forces;
    kept = forces;
    for (ForceRecord& force : kept) {
        Vector2D direction(force.directionX, force.directionY);
        normalise(direction);
        force.directionX = direction.x;
        force.directionY = direction.y;
        force.strength *= 10.0f;
    }
    ForceManager::initialise();
    for (const ForceRecord& force : kept)
        ForceManager::addForce(force.id, static_cast<float>(force.position.x),
                               static_cast<float>(force.position.y), force.directionX, force.directionY,
                               force.strength);
}

void handOverSoundSources(const std::vector<SoundSourceRecord>& sounds) {
    TRACE_LOCATION("LevelLoader::handOverSoundSources");
    Level::state().records.sounds = sounds;
    SoundSourceManager::initialise();
    for (const SoundSourceRecord& record : sounds) {
        const Vector2D at = record.position.toVector();
        SoundSourceManager::addSoundSource(SoundSource(Sound(record.soundName), at.x, at.y,
                                                       record.looping != 0, record.id,
                                                       static_cast<float>(record.strength)));
        // Keeps the window answering while the sounds load.
        GLWindow::run();
    }
}

void handOverMovers(const std::vector<MoverRecord>& movers) {
    TRACE_LOCATION("LevelLoader::handOverMovers");
    Level::state().records.movers = movers;
    MoverManager::initialise();
    for (const MoverRecord& record : movers) {
        Mover mover;
        mover.id = record.id;
        mover.speed = record.speed;
        mover.setStartPoint(record.start.toVector());
        mover.setEndPoint(record.end.toVector());
        MoverManager::addMover(mover);
    }
}

// The emitters were made, settings and all, while the file was read.
void handOverEmitters(const std::vector<EmitterRecord>& records,
                      const std::vector<FxParticleEmitter>& emitters) {
    TRACE_LOCATION("LevelLoader::handOverEmitters");
    Level::state().records.emitters = records;
    FxParticleManager::initalise();
    for (const FxParticleEmitter& emitter : emitters) FxParticleManager::addEmitter(emitter);
}

void handOverTriggers(const std::vector<TriggerRecord>& triggers) {
    TRACE_LOCATION("LevelLoader::handOverTriggers");
    Level::state().records.triggers = triggers;
    TriggerManager::initialise();
    for (const TriggerRecord& record : triggers)
        TriggerManager::addTrigger(record.type, record.targetId, record.delay, record.corners[0].toVector(),
                                   record.corners[1].toVector(), record.corners[2].toVector(),
                                   record.corners[3].toVector());
}

}  // namespace

namespace LevelLoader {

void handOver(const LevelFile& level, const std::vector<Polygon2D>& polygons,
              const std::vector<FxParticleEmitter>& emitters) {
    TRACE_LOCATION("LevelLoader::handOver");
    Level::clear();
    for (const Polygon2D& polygon : polygons) Level::addPolygon(polygon);
    Level::state().waterStart = level.waterStart.toVector();
    Level::state().cameraStart = level.cameraStart.toVector();
    handOverObjects(level.objects);
    handOverForces(level.forces);
    handOverSoundSources(level.sounds);
    handOverMovers(level.movers);
    handOverEmitters(level.emitters, emitters);
    handOverTriggers(level.triggers);
}

}  // namespace LevelLoader
