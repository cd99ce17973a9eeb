// The state of the three water behaviours, shared by their files (and tests
// that look inside), and the two ways of driving sound that they share.
#pragma once

#include <array>
#include <memory>

#include "audio/audio.h"

namespace GameSfx {

// Four variants of each of three levels, level first.
constexpr int disturbanceLevels = 3;
constexpr int disturbanceVariants = 4;
using SoundBank = std::array<std::unique_ptr<Sound>, disturbanceLevels * disturbanceVariants>;

// When a loss of average speed sounds, and how much each sample varies.
struct DisturbanceSettings {
    float level1Speed = 0.0f;
    float level2Speed = 0.0f;
    float level3Speed = 0.0f;
    float randomnessPitch = 0.0f;
    float randomnessVolume = 0.0f;
};

// The hiss that follows particles changing phase (water freezing, water
// boiling): each particle changed since the last step waits to be heard, a
// share of what waits is heard each second, and the level that raises fades.
struct PhaseChangeSettings {
    float effectSpeed = 0.0f;  // share of what waits still unheard after one second
    float volume = 0.0f;       // level that each heard particle adds
    float fadeRate = 0.0f;     // share of the level left after one second
};
struct PhaseChanges {
    float level = 0.0f;
    float pending = 0.0f;
    uint32_t lastCount = 0;
};
// Only a rise in the count of changed particles waits to be heard: particles
// changing back take nothing away from what waits.
void hearPhaseChanges(PhaseChanges& changes, uint32_t count, const PhaseChangeSettings& settings, float dt);

// Reads the bank's twelve names, "<prefix>L_N", and makes the handles that
// aren't made yet.
void makeBank(SoundBank& bank, const ConfigFile& config, const std::string& prefix);
// A handle on the name under the key, unless one is made already.
void makeSound(std::unique_ptr<Sound>& sound, const ConfigFile& config, const char* key);
// A loop at or above the quietest level plays at that level while sound is
// allowed, and is stopped otherwise. The water starts its loop before setting
// the level; the others set the level first.
void driveLoop(Sound* sound, float level, bool allowed, bool startFirst);
// Reads "<prefix>level1_speed" to "<prefix>randomness_volume"; the water
// takes them as absolute values, the ice as they stand.
DisturbanceSettings readDisturbanceSettings(const ConfigFile& config, const std::string& prefix,
                                            bool absolute);
// The level 1 to 3 of a loss, or 0 for none.
int disturbanceLevel(float loss, const DisturbanceSettings& settings);
void playDisturbance(float loss, float amount, const DisturbanceSettings& settings, SoundBank& bank);

}  // namespace GameSfx

namespace GameSfx_Water {

struct Levels {
    float previousVelocity = 0.0f;
};
struct Settings {
    GameSfx::DisturbanceSettings disturbance;
    float ambientVolume = 0.0f;
};
struct State {
    std::unique_ptr<Sound> ambient;
    GameSfx::SoundBank bank;
    Settings settings;
    Levels levels;
};
State& state();

}  // namespace GameSfx_Water

namespace GameSfx_Ice {

struct Levels {
    float frictionLevel = 0.0f;
    float previousVelocity = 0.0f;
    GameSfx::PhaseChanges freeze;
};
struct Settings {
    GameSfx::DisturbanceSettings disturbance;
    float frictionChangeRate = 0.0f;
    float frictionSpeed = 0.0f;
    GameSfx::PhaseChangeSettings freeze;
};
struct State {
    std::unique_ptr<Sound> freeze;
    std::unique_ptr<Sound> friction;
    GameSfx::SoundBank bank;
    Settings settings;
    Levels levels;
};
State& state();

}  // namespace GameSfx_Ice

namespace GameSfx_Steam {

struct Levels {
    float ambientLevel = 0.0f;
    GameSfx::PhaseChanges evaporate;
};
struct State {
    std::unique_ptr<Sound> evaporate;
    std::unique_ptr<Sound> ambient;
    Levels levels;
};
State& state();

}  // namespace GameSfx_Steam
