// The trigger actions that work on the things named by the trigger's target
// id: sprites, polygons, forces, movers, effect emitters, the camera and the
// check point. Each walks the whole target list and passes over the kinds it
// doesn't act on.
#include "audio/audio.h"
#include "dynamics/dynamics.h"
#include "game/game.h"
#include "graphics/graphics.h"

namespace {

template <typename Thing, typename Apply>
void forEachTarget(Trigger& trigger, TriggerTargetKind kind, Apply&& apply) {
    for (const TriggerTarget& target : trigger.targets)
        if (target.kind == kind) apply(*static_cast<Thing*>(target.target));
}

void setMoverStates(Trigger& trigger, int32_t state) {
    forEachTarget<Mover>(trigger, targetMover, [state](Mover& mover) { mover.state = state; });
}

void setEntitiesPresent(Trigger& trigger, bool present) {
    forEachTarget<Polygon2D>(trigger, targetPolygon, [present](Polygon2D& polygon) {
        Level::setPolygonCollideable(&polygon, present);
        polygon.present = present;
    });
    forEachTarget<LevelObject>(trigger, targetObject,
                               [present](LevelObject& object) { object.visible = present; });
    forEachTarget<Force>(trigger, targetForce, [present](Force& force) { force.enabled = present; });
}

}  // namespace

void trigFuncAnimPlayLoop(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncAnimPlayLoop");
    forEachTarget<LevelObject>(trigger, targetObject, [](LevelObject& object) {
        object.repeatCount = 0;
        object.stopped = false;
    });
}

void trigFuncAnimPlayOnce(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncAnimPlayOnce");
    forEachTarget<LevelObject>(trigger, targetObject, [](LevelObject& object) {
        object.resetAnimation();
        object.repeatCount = 1;
        object.stopped = false;
    });
}

void trigFuncAnimStop(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncAnimStop");
    forEachTarget<LevelObject>(trigger, targetObject, [](LevelObject& object) { object.stopped = true; });
}

void trigFuncEntityRemove(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncEntityRemove");
    setEntitiesPresent(trigger, false);
}

void trigFuncEntityAdd(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncEntityAdd");
    setEntitiesPresent(trigger, true);
}

void trigFuncMoverStop(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncMoverStop");
    setMoverStates(trigger, Mover::stopped);
}

void trigFuncMoverGotoEnd(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncMoverGotoEnd");
    setMoverStates(trigger, Mover::toEnd);
}

void trigFuncMoverGotoStart(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncMoverGotoStart");
    setMoverStates(trigger, Mover::toStart);
}

void trigFuncMoverGotoStartLoop(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncMoverGotoStartLoop");
    setMoverStates(trigger, Mover::loopToStart);
}

void trigFuncMoverGotoEndLoop(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncMoverGotoEndLoop");
    setMoverStates(trigger, Mover::loopToEnd);
}

// Sound sources are found by id when the trigger fires, not as targets.
void trigFuncSoundPlay(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncSoundPlay");
    SoundSourceManager::playSounds(trigger.targetId);
}
void trigFuncSoundStop(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncSoundStop");
    SoundSourceManager::stopSounds(trigger.targetId);
}

// A burst comes whether or not the emitter runs by itself.
void trigFuncEmitterCreateBurst(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncEmitterCreateBurst");
    forEachTarget<FxParticleEmitter>(trigger, targetEmitter,
                                     [](FxParticleEmitter& emitter) { emitter.createBurst(); });
}
void trigFuncEmitterStart(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncEmitterStart");
    forEachTarget<FxParticleEmitter>(trigger, targetEmitter,
                                     [](FxParticleEmitter& emitter) { emitter.active = true; });
}
void trigFuncEmitterStop(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncEmitterStop");
    forEachTarget<FxParticleEmitter>(trigger, targetEmitter,
                                     [](FxParticleEmitter& emitter) { emitter.active = false; });
}

void trigFuncCameraZoom(Trigger&, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncCameraZoom");
    Camera::zoomOut();
}

void trigFuncCameraShake(Trigger&, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncCameraShake");
    Camera::shake();
}

// The mean of the six triangle corners: the two shared corners weigh double,
// so for a rectangle it is the centre and for other shapes it leans their way.
void trigFuncCheckPoint(Trigger& trigger, void*, TriggerSubjectKind, float) {
    TRACE_LOCATION("trigFuncCheckPoint");
    Vector2D sum;
    for (int i = 0; i < 3; ++i) sum += trigger.first.corners[i] + trigger.second.corners[i];
    GameRules::setCheckPoint(sum.x / 6.0f, sum.y / 6.0f);
    CheckPointTimesManager::recordTime(&trigger, GameRules::getLevelTime());
}
