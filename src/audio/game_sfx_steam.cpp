// The steam's sound: a hiss that follows water boiling away and a murmur by
// the amount of steam in the air. Its rates are fixed, not configured.
#include <cmath>

#include "audio/audio_links.h"
#include "audio/game_sfx_state.h"
#include "water/water.h"

namespace GameSfx_Steam {

State& state() {
    return singleInstance<State>();
}

namespace {

// Boiled water is heard slowly and fades fast.
constexpr GameSfx::PhaseChangeSettings evaporateHiss{0.001f, 0.05f, 0.25f};
// Share of the murmur's distance from its target left after one second.
constexpr float ambientChangeRate = 0.05f;
// Fifty steam particles aim the murmur at level 1.
constexpr float ambientVolumePerParticle = 0.02f;

}  // namespace

void initialise() {
    TRACE_LOCATION("GameSfx_Steam::initialise");
    State& s = state();
    const ConfigFile config("cfg\\game_sfx.cfg");
    GameSfx::makeSound(s.evaporate, config, "steamEvaporate");
    GameSfx::makeSound(s.ambient, config, "steamAmbient");
    s.levels = Levels();
}

void shutdown() {
    TRACE_LOCATION("GameSfx_Steam::shutdown");
    state() = State();
}

void update(float dt) {
    TRACE_LOCATION("GameSfx_Steam::update");
    State& s = state();
    Levels& l = s.levels;
    const uint32_t count = getSteamParticleCount();
    GameSfx::hearPhaseChanges(l.evaporate, count, evaporateHiss, dt);
    const float kept = std::pow(ambientChangeRate, dt);
    l.ambientLevel =
        (1.0f - kept) * static_cast<float>(count) * ambientVolumePerParticle + kept * l.ambientLevel;
    const bool allowed = AudioLinks::soundAllowed();
    GameSfx::driveLoop(s.evaporate.get(), l.evaporate.level, allowed, false);
    GameSfx::driveLoop(s.ambient.get(), l.ambientLevel, allowed, false);
}

uint32_t getSteamParticleCount() {
    TRACE_LOCATION("GameSfx_Steam::getSteamParticleCount");
    uint32_t count = 0;
    for (const Particle& particle : ParticleManager::getParticles())
        if (particle.temperature >= ParticleManager::steamTemperature) ++count;
    return count;
}

}  // namespace GameSfx_Steam
