// The ice's sound: knocks when the ice bodies lose speed, a scrape while they
// slide along the level, and a crackle that follows newly frozen water.
#include <algorithm>
#include <cmath>

#include "audio/audio_links.h"
#include "audio/game_sfx_state.h"
#include "water/water.h"

namespace GameSfx_Ice {

State& state() {
    return singleInstance<State>();
}

namespace {

float clampUnit(float value) {
    TRACE_LOCATION("GameSfx_Ice::clampUnit");
    return std::clamp(value, 0.0f, 1.0f);
}

Settings readSettings(const ConfigFile& config) {
    TRACE_LOCATION("GameSfx_Ice::readSettings");
    Settings settings;
    settings.disturbance = GameSfx::readDisturbanceSettings(config, "ice_disturbance_", false);
    settings.frictionChangeRate = clampUnit(config.getVarAsFloat("ice_frictionChangeRate"));
    settings.frictionSpeed = config.getVarAsFloat("ice_frictionSpeed");
    settings.freeze.effectSpeed = clampUnit(config.getVarAsFloat("ice_freezeEffectSpeed"));
    settings.freeze.volume = config.getVarAsFloat("ice_freezeVolume");
    settings.freeze.fadeRate = clampUnit(config.getVarAsFloat("ice_freezeVolumeFadeRate"));
    return settings;
}

}  // namespace

void initialise() {
    TRACE_LOCATION("GameSfx_Ice::initialise");
    State& s = state();
    const ConfigFile config("cfg\\game_sfx.cfg");
    s.settings = readSettings(config);
    GameSfx::makeSound(s.freeze, config, "iceSound_freeze");
    GameSfx::makeSound(s.friction, config, "iceSound_friction");
    GameSfx::makeBank(s.bank, config, "iceSound_disturbance_Level_");
    s.levels = Levels();
}

void shutdown() {
    TRACE_LOCATION("GameSfx_Ice::shutdown");
    state() = State();
}

void update(float dt) {
    TRACE_LOCATION("GameSfx_Ice::update");
    State& s = state();
    Levels& l = s.levels;
    const uint32_t count = getIceParticleCount();
    GameSfx::hearPhaseChanges(l.freeze, count, s.settings.freeze, dt);
    const float amount = static_cast<float>(count) / GameSfx::referenceParticleCount;
    float velocity = 0.0f;
    getAverageIceVelocity(velocity);
    const float loss = l.previousVelocity - velocity;
    l.previousVelocity = velocity;
    playDisturbanceSounds(loss, amount);
    calculateFrictionLevel(dt);
    const bool allowed = AudioLinks::soundAllowed();
    GameSfx::driveLoop(s.freeze.get(), l.freeze.level, allowed, false);
    GameSfx::driveLoop(s.friction.get(), l.frictionLevel, allowed, false);
}

uint32_t getIceParticleCount() {
    TRACE_LOCATION("GameSfx_Ice::getIceParticleCount");
    std::size_t count = 0;
    for (const ParticleGroup& group : ParticleGroupMover::getGroups()) count += group.particles.size();
    return static_cast<uint32_t>(count);
}

void getAverageIceVelocity(float& result) {
    TRACE_LOCATION("GameSfx_Ice::getAverageIceVelocity");
    float weighted = 0.0f;
    std::size_t count = 0;
    for (const ParticleGroup& group : ParticleGroupMover::getGroups()) {
        weighted += length(group.velocity) * static_cast<float>(group.particles.size());
        count += group.particles.size();
    }
    result = count > 0 ? weighted / static_cast<float>(count) : 0.0f;
}

// A big body sliding fast along the level is loud, a body in the air silent;
// the level drifts towards that sum at a rate independent of the frame rate.
void calculateFrictionLevel(float dt) {
    TRACE_LOCATION("GameSfx_Ice::calculateFrictionLevel");
    State& s = state();
    float sum = 0.0f;
    for (const ParticleGroup& group : ParticleGroupMover::getGroups()) {
        if (!group.touching) continue;
        const float share = static_cast<float>(group.particles.size()) / GameSfx::referenceParticleCount;
        sum += std::sqrt(share) * length(group.velocity) * s.settings.frictionSpeed;
    }
    const float kept = std::pow(s.settings.frictionChangeRate, dt);
    s.levels.frictionLevel = s.levels.frictionLevel * kept + (1.0f - kept) * sum;
}

void playDisturbanceSounds(float loss, float amount) {
    TRACE_LOCATION("GameSfx_Ice::playDisturbanceSounds");
    State& s = state();
    GameSfx::playDisturbance(loss, amount, s.settings.disturbance, s.bank);
}

}  // namespace GameSfx_Ice
