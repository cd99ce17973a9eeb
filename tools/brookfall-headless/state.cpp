// The game's state as one line of JSON, for scripts and tests to check.
#include <cstdio>
#include <string>

#include "dynamics/dynamics.h"
#include "game/game.h"
#include "headless.h"
#include "menus/menus.h"
#include "water/water.h"

namespace Headless {

namespace {

struct WaterCounts {
    std::size_t particles = 0;
    std::size_t water = 0;
    std::size_t steam = 0;
    std::size_t iceBodies = 0;
    std::size_t iceParticles = 0;
};

WaterCounts countWater() {
    WaterCounts counts;
    for (const Particle& particle : ParticleManager::getParticles()) {
        if (particle.temperature >= ParticleManager::steamTemperature)
            ++counts.steam;
        else
            ++counts.water;
    }
    for (const ParticleGroup& group : ParticleGroupMover::getGroups()) {
        ++counts.iceBodies;
        counts.iceParticles += group.particles.size();
    }
    counts.particles = counts.water + counts.steam + counts.iceParticles;
    return counts;
}

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof(text), "%.3f", value);
    return text;
}

}  // namespace

std::string describeState() {
    const WaterCounts counts = countWater();
    const Vector2D camera = Camera::getPosition();
    std::string json = "{";
    json += "\"step\":" + std::to_string(Game::getGameStepCount());
    json += ",\"particles\":" + std::to_string(counts.particles);
    json += ",\"ice_bodies\":" + std::to_string(counts.iceBodies);
    json += ",\"ice_particles\":" + std::to_string(counts.iceParticles);
    json += ",\"water\":" + std::to_string(counts.water);
    json += ",\"steam\":" + std::to_string(counts.steam);
    json += ",\"fx_particles\":" + std::to_string(FxParticleManager::getParticleCount());
    json += ",\"camera\":{\"x\":" + number(camera.x) + ",\"y\":" + number(camera.y) +
            ",\"tilt\":" + number(Camera::getTilt()) + ",\"state\":" + std::to_string(Camera::getState()) +
            "}";
    json += ",\"finished\":" + std::string(GameRules::levelIsWon() ? "true" : "false");
    json += ",\"level_ms\":" + std::to_string(GameRules::getLevelTime());
    json += ",\"score\":{\"water\":" + std::to_string(GameRules::getWaterScore()) +
            ",\"time\":" + std::to_string(GameRules::getTimeScore()) +
            ",\"total\":" + std::to_string(GameRules::getTotalScore()) + "}";
    json += ",\"menu\":" + std::to_string(GameMenus::getCurrentMenu());
    json += "}";
    return json;
}

}  // namespace Headless
