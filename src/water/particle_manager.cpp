// The water's list, its constants and console commands, and the making and
// killing of particles.
#include <algorithm>
#include <cmath>

#include "console/console.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "water/water.h"

namespace ParticleManager {

namespace {

// More than this would take the machine's memory rather than make water.
constexpr int mostParticlesToMake = 1000000;

struct State {
    std::list<Particle> particles;
    Settings settings;
};

State& state() {
    return singleInstance<State>();
}

Settings& settings() {
    return state().settings;
}

float clampUnit(float value) {
    TRACE_LOCATION("ParticleManager::clampUnit");
    return std::clamp(value, 0.0f, 1.0f);
}

float conCmdHeatTransferRate(float value, bool set) {
    TRACE_LOCATION("ParticleManager::conCmdHeatTransferRate");
    if (set) settings().heatTransferRate = clampUnit(value);
    return settings().heatTransferRate;
}

void conCmdParticleCreate(std::string arguments) {
    TRACE_LOCATION("ParticleManager::conCmdParticleCreate");
    std::vector<std::string> args;
    if (!GLConsole::readArguments(arguments, "nnni",
                                  "\nUsage: ParticleCreate < x : number > < y : number > < radius : number > "
                                  "< amount : integer number > ",
                                  args))
        return;
    const int amount = slStringToInt(args[3]);
    if (amount < 1 || amount > mostParticlesToMake) {
        GLConsole::print("\nInvalid number of particles to make");
        return;
    }
    const float x = slStringToFloat(args[0]);
    const float y = slStringToFloat(args[1]);
    createParticles(x, y, slStringToFloat(args[2]), amount);
    Camera::setPosition(Vector2D(x, y));
}

int conCmdParticleCount() {
    TRACE_LOCATION("ParticleManager::conCmdParticleCount");
    return static_cast<int>(state().particles.size());
}

const GLConsoleCommand commands[] = {
    {"Gravity", GLConsole::settingCommand<settings, &Settings::gravity>},
    {"RoomTemperature", GLConsole::settingCommand<settings, &Settings::roomTemperature>},
    {"HeatTransferRate", conCmdHeatTransferRate},
    {"SteamRiseRate", GLConsole::settingCommand<settings, &Settings::steamRiseRate>},
    {"SteamScatterRate", GLConsole::settingCommand<settings, &Settings::steamScatterRate>},
    {"ParticleCreate", conCmdParticleCreate},
    {"ParticleCount", conCmdParticleCount},
};

void readSettings() {
    TRACE_LOCATION("ParticleManager::readSettings");
    const ConfigFile config("cfg\\water.cfg");
    Settings& s = settings();
    s.gravity = std::fabs(config.getVarAsFloat("gravity"));
    s.roomTemperature = config.getVarAsFloat("roomTemperature");
    s.heatTransferRate = clampUnit(config.getVarAsFloat("heatTransferRate"));
    s.steamRiseRate = config.getVarAsFloat("steamRiseRate");
    s.steamScatterRate = config.getVarAsFloat("steamScatterRate");
    s.particleKillTime = std::max(config.getVarAsFloat("particleKillTime"), shortestKillTime);
}

}  // namespace

void initialise() {
    TRACE_LOCATION("ParticleManager::initialise");
    shutdown();
    GLConsole::print("\nInitialising particle manager..");
    ParticleMover::initialise();
    ParticleGroupMover::initialise();
    GLConsole::addCommands(commands);
    readSettings();
}

void shutdown() {
    TRACE_LOCATION("ParticleManager::shutdown");
    GLConsole::print("\nShutting down particle manager..");
    ParticleMover::shutdown();
    ParticleGroupMover::shutdown();
    GLConsole::removeCommands(commands);
    state() = State();
}

void createParticles(float x, float y, float radius, int amount) {
    TRACE_LOCATION("ParticleManager::createParticles");
    for (int i = 0; i < amount; ++i) {
        const float distanceFromCentre = static_cast<float>(randomUnit()) * radius;
        const Vector2D direction = randomDirection();
        Particle particle;
        particle.position = Vector2D(x, y) + direction * distanceFromCentre;
        for (Vector2D& previous : particle.previousPosition) previous = particle.position;
        particle.temperature = settings().roomTemperature;
        state().particles.push_front(particle);
    }
}

void killParticle(Particle& particle) {
    TRACE_LOCATION("ParticleManager::killParticle");
    if (particle.dying) return;
    particle.dying = 1;
    particle.killTimer = settings().particleKillTime;
}

void removeAllParticles() {
    TRACE_LOCATION("ParticleManager::removeAllParticles");
    state().particles.clear();
}

std::list<Particle>& getParticles() {
    TRACE_LOCATION("ParticleManager::getParticles");
    return state().particles;
}

const Settings& getSettings() {
    TRACE_LOCATION("ParticleManager::getSettings");
    return state().settings;
}

}  // namespace ParticleManager
