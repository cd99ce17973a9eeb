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

constexpr float shortestKillTime = 0.0001f;
// More than this would take the machine's memory rather than make water.
constexpr int mostParticlesToMake = 1000000;

struct State {
    std::list<Particle> particles;
    float gravity = 0.0f;
    float roomTemperature = 0.0f;
    float heatTransferRate = 0.0f;
    float steamRiseRate = 0.0f;
    float steamScatterRate = 0.0f;
    float particleKillTime = shortestKillTime;
};

State& state() {
    return singleInstance<State>();
}

float clampUnit(float value) {
    TRACE_LOCATION("ParticleManager::clampUnit");
    return std::clamp(value, 0.0f, 1.0f);
}

float conCmdHeatTransferRate(float value, bool set) {
    TRACE_LOCATION("ParticleManager::conCmdHeatTransferRate");
    if (set) state().heatTransferRate = clampUnit(value);
    return state().heatTransferRate;
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
    {"Gravity", GLConsole::settingCommand<state, &State::gravity>},
    {"RoomTemperature", GLConsole::settingCommand<state, &State::roomTemperature>},
    {"HeatTransferRate", conCmdHeatTransferRate},
    {"SteamRiseRate", GLConsole::settingCommand<state, &State::steamRiseRate>},
    {"SteamScatterRate", GLConsole::settingCommand<state, &State::steamScatterRate>},
    {"ParticleCreate", conCmdParticleCreate},
    {"ParticleCount", conCmdParticleCount},
};

void readSettings() {
    TRACE_LOCATION("ParticleManager::readSettings");
    const ConfigFile config("cfg\\water.cfg");
    state().gravity = std::fabs(config.getVarAsFloat("gravity"));
    state().roomTemperature = config.getVarAsFloat("roomTemperature");
    state().heatTransferRate = clampUnit(config.getVarAsFloat("heatTransferRate"));
    state().steamRiseRate = config.getVarAsFloat("steamRiseRate");
    state().steamScatterRate = config.getVarAsFloat("steamScatterRate");
    state().particleKillTime = std::max(config.getVarAsFloat("particleKillTime"), shortestKillTime);
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
        particle.temperature = state().roomTemperature;
        state().particles.push_front(particle);
    }
}

void killParticle(Particle& particle) {
    TRACE_LOCATION("ParticleManager::killParticle");
    if (particle.dying) return;
    particle.dying = 1;
    particle.killTimer = state().particleKillTime;
}

void removeAllParticles() {
    TRACE_LOCATION("ParticleManager::removeAllParticles");
    state().particles.clear();
}

std::list<Particle>& getParticles() {
    TRACE_LOCATION("ParticleManager::getParticles");
    return state().particles;
}

float getGravity() {
    TRACE_LOCATION("ParticleManager::getGravity");
    return state().gravity;
}

float getRoomTemperature() {
    TRACE_LOCATION("ParticleManager::getRoomTemperature");
    return state().roomTemperature;
}

float getHeatTransferRate() {
    TRACE_LOCATION("ParticleManager::getHeatTransferRate");
    return state().heatTransferRate;
}

float getSteamRiseRate() {
    TRACE_LOCATION("ParticleManager::getSteamRiseRate");
    return state().steamRiseRate;
}

float getSteamScatterRate() {
    TRACE_LOCATION("ParticleManager::getSteamScatterRate");
    return state().steamScatterRate;
}

float getParticleKillTime() {
    TRACE_LOCATION("ParticleManager::getParticleKillTime");
    return state().particleKillTime;
}

}  // namespace ParticleManager
