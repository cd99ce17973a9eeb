// The table of trigger types. A name ending in "_1" fires once between two
// level resets; one ending in "_a" fires for every subject inside, every frame.
#include "dynamics/dynamics.h"
#include "dynamics/trigger_state.h"

namespace {

void addType(int32_t type, const char* name, TriggerFunction function, uint32_t fireLimit) {
    TriggerType entry;
    entry.name = name;
    entry.function = function;
    entry.refireDelay = 0.0f;
    entry.fireLimit = fireLimit;
    TriggerState::types[type] = entry;
}

}  // namespace

namespace TriggerManager {

void createTriggerTypeMap() {
    TRACE_LOCATION("TriggerManager::createTriggerTypeMap");
    addType(-1, "Null_a", trigFuncNull, 0);
    addType(0, "To_ice_a", trigFuncToIce, 0);
    addType(1, "To_water_a", trigFuncToWater, 0);
    addType(2, "To_steam_a", trigFuncToSteam, 0);
    addType(3, "Anim_play_loop_1", trigFuncAnimPlayLoop, 1);
    addType(4, "Anim_play_once_1", trigFuncAnimPlayOnce, 1);
    addType(5, "Anim_stop_1", trigFuncAnimStop, 1);
    addType(100, "Sound_play_1", trigFuncSoundPlay, 1);
    addType(101, "Sound_stop_1", trigFuncSoundStop, 1);
    addType(200, "Force_directional_a", trigFuncForceDirectional, 0);
    addType(201, "Force_instantenous_a", trigFuncForceInstantenous, 0);
    addType(202, "Force_multi_dir_pull_a", trigFuncForceMultiDirPull, 0);
    addType(203, "Force_multi_dir_push_a", trigFuncForceMultiDirPush, 0);
    addType(300, "Entity_remove_1", trigFuncEntityRemove, 1);
    addType(301, "Entity_add_1", trigFuncEntityAdd, 1);
    addType(401, "Mover_goto_start_1", trigFuncMoverGotoStart, 1);
    addType(402, "Mover_goto_end_1", trigFuncMoverGotoEnd, 1);
    addType(403, "Mover_stop_1", trigFuncMoverStop, 1);
    addType(404, "Mover_goto_start_a", trigFuncMoverGotoStart, 0);
    addType(405, "Mover_goto_end_a", trigFuncMoverGotoEnd, 0);
    addType(406, "Mover_stop_a", trigFuncMoverStop, 0);
    addType(410, "Mover_goto_end_loop_a", trigFuncMoverGotoEndLoop, 0);
    addType(409, "Mover_goto_start_loop_a", trigFuncMoverGotoStartLoop, 0);
    addType(408, "Mover_goto_end_loop_1", trigFuncMoverGotoEndLoop, 1);
    addType(407, "Mover_goto_start_loop_1", trigFuncMoverGotoStartLoop, 1);
    addType(501, "Emitter_create_burst_1", trigFuncEmitterCreateBurst, 1);
    addType(502, "Emitter_start_1", trigFuncEmitterStart, 1);
    addType(503, "Emitter_stop_1", trigFuncEmitterStop, 1);
    addType(601, "Camera_zoom_1", trigFuncCameraZoom, 1);
    addType(602, "Camera_zoom_a", trigFuncCameraZoom, 0);
    addType(603, "Camera_shake_1", trigFuncCameraShake, 1);
    addType(604, "Camera_shake_a", trigFuncCameraShake, 0);
    addType(701, "Particle_kill_a", trigFuncParticleKill, 0);
    addType(702, "Particle_kill_random_a", trigFuncParticleKillRandom, 0);
    addType(801, "Level_end_a", trigFuncLevelEnd, 0);
    addType(901, "Checkpoint_1", trigFuncCheckPoint, 1);
}

}  // namespace TriggerManager
