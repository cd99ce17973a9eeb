// The table of trigger types. A name ending in "_1" fires once between two
// level resets; one ending in "_a" fires for every subject inside, every frame.
#include "dynamics/dynamics.h"
#include "dynamics/trigger_state.h"

namespace {

constexpr bool onSubject = true;
constexpr bool onTargets = false;

void addType(int32_t type, const char* name, TriggerFunction function, uint32_t fireLimit,
             bool needsSubject) {
    TRACE_LOCATION("TriggerManager::addType");
    TriggerType entry;
    entry.name = name;
    entry.function = function;
    entry.refireDelay = 0.0f;
    entry.fireLimit = fireLimit;
    entry.needsSubject = needsSubject;
    TriggerManager::state().types[type] = entry;
}

}  // namespace

namespace TriggerManager {

void createTriggerTypeMap() {
    TRACE_LOCATION("TriggerManager::createTriggerTypeMap");
    addType(-1, "Null_a", trigFuncNull, 0, onTargets);
    addType(0, "To_ice_a", trigFuncToIce, 0, onSubject);
    addType(1, "To_water_a", trigFuncToWater, 0, onSubject);
    addType(2, "To_steam_a", trigFuncToSteam, 0, onSubject);
    addType(3, "Anim_play_loop_1", trigFuncAnimPlayLoop, 1, onTargets);
    addType(4, "Anim_play_once_1", trigFuncAnimPlayOnce, 1, onTargets);
    addType(5, "Anim_stop_1", trigFuncAnimStop, 1, onTargets);
    addType(100, "Sound_play_1", trigFuncSoundPlay, 1, onTargets);
    addType(101, "Sound_stop_1", trigFuncSoundStop, 1, onTargets);
    addType(200, "Force_directional_a", trigFuncForceDirectional, 0, onSubject);
    addType(201, "Force_instantenous_a", trigFuncForceInstantenous, 0, onSubject);
    addType(202, "Force_multi_dir_pull_a", trigFuncForceMultiDirPull, 0, onSubject);
    addType(203, "Force_multi_dir_push_a", trigFuncForceMultiDirPush, 0, onSubject);
    addType(300, "Entity_remove_1", trigFuncEntityRemove, 1, onTargets);
    addType(301, "Entity_add_1", trigFuncEntityAdd, 1, onTargets);
    addType(401, "Mover_goto_start_1", trigFuncMoverGotoStart, 1, onTargets);
    addType(402, "Mover_goto_end_1", trigFuncMoverGotoEnd, 1, onTargets);
    addType(403, "Mover_stop_1", trigFuncMoverStop, 1, onTargets);
    addType(404, "Mover_goto_start_a", trigFuncMoverGotoStart, 0, onTargets);
    addType(405, "Mover_goto_end_a", trigFuncMoverGotoEnd, 0, onTargets);
    addType(406, "Mover_stop_a", trigFuncMoverStop, 0, onTargets);
    addType(410, "Mover_goto_end_loop_a", trigFuncMoverGotoEndLoop, 0, onTargets);
    addType(409, "Mover_goto_start_loop_a", trigFuncMoverGotoStartLoop, 0, onTargets);
    addType(408, "Mover_goto_end_loop_1", trigFuncMoverGotoEndLoop, 1, onTargets);
    addType(407, "Mover_goto_start_loop_1", trigFuncMoverGotoStartLoop, 1, onTargets);
    addType(501, "Emitter_create_burst_1", trigFuncEmitterCreateBurst, 1, onTargets);
    addType(502, "Emitter_start_1", trigFuncEmitterStart, 1, onTargets);
    addType(503, "Emitter_stop_1", trigFuncEmitterStop, 1, onTargets);
    addType(601, "Camera_zoom_1", trigFuncCameraZoom, 1, onTargets);
    addType(602, "Camera_zoom_a", trigFuncCameraZoom, 0, onTargets);
    addType(603, "Camera_shake_1", trigFuncCameraShake, 1, onTargets);
    addType(604, "Camera_shake_a", trigFuncCameraShake, 0, onTargets);
    addType(701, "Particle_kill_a", trigFuncParticleKill, 0, onSubject);
    addType(702, "Particle_kill_random_a", trigFuncParticleKillRandom, 0, onSubject);
    addType(801, "Level_end_a", trigFuncLevelEnd, 0, onTargets);
    addType(901, "Checkpoint_1", trigFuncCheckPoint, 1, onTargets);
}

}  // namespace TriggerManager
