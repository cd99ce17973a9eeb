// The water's sound: an ambient loop by the amount of water, and a splash
// whenever the water as a whole loses speed, as when it lands.
#include <cmath>

#include "audio/audio_links.h"
#include "audio/game_sfx_state.h"
#include "water/water.h"

namespace GameSfx_Water {

State& state() {
    return singleInstance<State>();
}

namespace {

bool isWater(const Particle& particle) {
    TRACE_LOCATION("GameSfx_Water::isWater");
    return particle.temperature > ParticleManager::freezingTemperature &&
           particle.temperature < ParticleManager::steamTemperature;
}

Settings readSettings(const ConfigFile& config) {
    TRACE_LOCATION("GameSfx_Water::readSettings");
    Settings settings;
    settings.disturbance = GameSfx::readDisturbanceSettings(config, "water_disturbance_", true);
    settings.ambientVolume = std::fabs(config.getVarAsFloat("waterSound_ambient_volume"));
    return settings;
}

}  // namespace

void initialise() {
    TRACE_LOCATION("GameSfx_Water::initialise");
    State& s = state();
    const ConfigFile config("cfg\\game_sfx.cfg");
    s.settings = readSettings(config);
    GameSfx::makeSound(s.ambient, config, "waterSound_ambient");
    GameSfx::makeBank(s.bank, config, "waterSound_disturbance_level_");
    s.levels = Levels();
}

void shutdown() {
    TRACE_LOCATION("GameSfx_Water::shutdown");
    state() = State();
}

void update() {
    TRACE_LOCATION("GameSfx_Water::update");
    State& s = state();
    float velocity = 0.0f;
    getAverageWaterVelocity(velocity);
    // Positive when the water has slowed down since the last step.
    const float loss = s.levels.previousVelocity - velocity;
    s.levels.previousVelocity = velocity;
    const float amount = static_cast<float>(getWaterParticleCount()) / GameSfx::referenceParticleCount;
    GameSfx::driveLoop(s.ambient.get(), std::sqrt(amount) * s.settings.ambientVolume,
                       AudioLinks::soundAllowed(), true);
    playDisturbanceSounds(loss, amount);
}

uint32_t getWaterParticleCount() {
    TRACE_LOCATION("GameSfx_Water::getWaterParticleCount");
    uint32_t count = 0;
    for (const Particle& particle : ParticleManager::getParticles())
        if (isWater(particle)) ++count;
    return count;
}

void getAverageWaterVelocity(float& result) {
    TRACE_LOCATION("GameSfx_Water::getAverageWaterVelocity");
    float sum = 0.0f;
    uint32_t count = 0;
    for (const Particle& particle : ParticleManager::getParticles()) {
        if (!isWater(particle)) continue;
        sum += length(particle.velocity);
        ++count;
    }
    result = count > 0 ? sum / static_cast<float>(count) : 0.0f;
}

void playDisturbanceSounds(float loss, float amount) {
    TRACE_LOCATION("GameSfx_Water::playDisturbanceSounds");
    State& s = state();
    GameSfx::playDisturbance(loss, amount, s.settings.disturbance, s.bank);
}

}  // namespace GameSfx_Water
