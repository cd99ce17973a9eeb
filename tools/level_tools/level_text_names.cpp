#include "level_tools/level_text_names.h"

#include "foundation/foundation.h"

namespace LevelTextNames {

const Named surfaces[] = {{1, "metal"}, {2, "wood"}, {3, "stone"}, {4, "cloth"}, {5, "sand"}};
const int surfaceCount = 5;

const Named collisionModes[] = {{0, "solid"}, {1, "scenery"}, {2, "invisible"}, {3, "caulk"}};
const int collisionModeCount = 4;

const Named triggerTypes[] = {
    {-1, "Null_a"},
    {0, "To_ice_a"},
    {1, "To_water_a"},
    {2, "To_steam_a"},
    {3, "Anim_play_loop_1"},
    {4, "Anim_play_once_1"},
    {5, "Anim_stop_1"},
    {100, "Sound_play_1"},
    {101, "Sound_stop_1"},
    {200, "Force_directional_a"},
    {201, "Force_instantenous_a"},
    {202, "Force_multi_dir_pull_a"},
    {203, "Force_multi_dir_push_a"},
    {300, "Entity_remove_1"},
    {301, "Entity_add_1"},
    {401, "Mover_goto_start_1"},
    {402, "Mover_goto_end_1"},
    {403, "Mover_stop_1"},
    {404, "Mover_goto_start_a"},
    {405, "Mover_goto_end_a"},
    {406, "Mover_stop_a"},
    {407, "Mover_goto_start_loop_1"},
    {408, "Mover_goto_end_loop_1"},
    {409, "Mover_goto_start_loop_a"},
    {410, "Mover_goto_end_loop_a"},
    {501, "Emitter_create_burst_1"},
    {502, "Emitter_start_1"},
    {503, "Emitter_stop_1"},
    {601, "Camera_zoom_1"},
    {602, "Camera_zoom_a"},
    {603, "Camera_shake_1"},
    {604, "Camera_shake_a"},
    {701, "Particle_kill_a"},
    {702, "Particle_kill_random_a"},
    {801, "Level_end_a"},
    {901, "Checkpoint_1"},
};
const int triggerTypeCount = sizeof(triggerTypes) / sizeof(triggerTypes[0]);

unsigned triggerActsOn(int32_t type) {
    TRACE_LOCATION("LevelTextNames::triggerActsOn");
    // The type numbers come in families of a hundred.
    if (type >= 0 && type <= 2) return actsOnWater;                     // To_ice_a, To_water_a, To_steam_a
    if (type >= 3 && type <= 5) return actsOnObjects;                   // Anim_*
    if (type == 100 || type == 101) return actsOnSounds;                // Sound_play_1, Sound_stop_1
    if (type >= 200 && type <= 203) return actsOnWater | actsOnForces;  // Force_*: the forces push the water
    if (type == 300 || type == 301) return actsOnPolygons | actsOnObjects | actsOnForces;  // Entity_*
    if (type >= 401 && type <= 410) return actsOnMovers;
    if (type >= 501 && type <= 503) return actsOnEmitters;
    if (type >= 601 && type <= 604) return actsOnCamera;
    if (type == 701 || type == 702) return actsOnWater;  // Particle_kill_*
    if (type == 801) return actsOnWater | actsOnRules;   // Level_end_a counts the water into the win
    if (type == 901) return actsOnRules;                 // Checkpoint_1
    return actsOnNothing;
}

const char* nameOf(const Named* table, int count, int32_t value) {
    TRACE_LOCATION("LevelTextNames::nameOf");
    for (int i = 0; i < count; ++i)
        if (table[i].value == value) return table[i].name;
    return nullptr;
}

// Names are matched without regard to case, as the console matches words.
bool valueOf(const Named* table, int count, const std::string& word, int32_t& value) {
    TRACE_LOCATION("LevelTextNames::valueOf");
    std::string upperWord = word;
    slStringUpper(upperWord);
    for (int i = 0; i < count; ++i) {
        std::string upperName = table[i].name;
        slStringUpper(upperName);
        if (upperName == upperWord) {
            value = table[i].value;
            return true;
        }
    }
    return false;
}

}  // namespace LevelTextNames
