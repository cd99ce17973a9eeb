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
std::list<Particle> particles;
float gravity = 0.0f;
float roomTemperature = 0.0f;
float heatTransferRate = 0.0f;
float steamRiseRate = 0.0f;
float steamScatterRate = 0.0f;
float particleKillTime = 0.0001f;

constexpr float shortestKillTime = 0.0001f;
// More than this would take the machine's memory rather than make water.
constexpr int mostParticlesToMake = 1000000;

float clampUnit(float value) {
    TRACE_LOCATION("ParticleManager::clampUnit");
    return std::min(std::max(value, 0.0f), 1.0f);
}

float conCmdGravity(float value, bool set) {
    TRACE_LOCATION("ParticleManager::conCmdGravity");
    if (set) gravity = value;
    return gravity;
}

float conCmdRoomTemperature(float value, bool set) {
    TRACE_LOCATION("ParticleManager::conCmdRoomTemperature");
    if (set) roomTemperature = value;
    return roomTemperature;
}

float conCmdHeatTransferRate(float value, bool set) {
    TRACE_LOCATION("ParticleManager::conCmdHeatTransferRate");
    if (set) heatTransferRate = clampUnit(value);
    return heatTransferRate;
}

float conCmdSteamRiseRate(float value, bool set) {
    TRACE_LOCATION("ParticleManager::conCmdSteamRiseRate");
    if (set) steamRiseRate = value;
    return steamRiseRate;
}

float conCmdSteamScatterRate(float value, bool set) {
    TRACE_LOCATION("ParticleManager::conCmdSteamScatterRate");
    if (set) steamScatterRate = value;
    return steamScatterRate;
}

bool validCreateArguments(const std::vector<std::string>& args) {
    TRACE_LOCATION("ParticleManager::validCreateArguments");
    return args.size() == 4 && slStringIsNumeric(args[0]) && slStringIsNumeric(args[1]) &&
           slStringIsNumeric(args[2]) && slStringIsInteger(args[3]);
}

void conCmdParticleCreate(std::string arguments) {
    TRACE_LOCATION("ParticleManager::conCmdParticleCreate");
    std::vector<std::string> args;
    slSeparateArgs(arguments, args);
    if (!validCreateArguments(args)) {
        GLConsole::print(
            "\nUsage: ParticleCreate < x : number > < y : number > < radius : number > < amount : integer "
            "number > ");
        return;
    }
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
    return static_cast<int>(particles.size());
}

void addCommands() {
    TRACE_LOCATION("ParticleManager::addCommands");
    GLConsole::addCommand("Gravity", conCmdGravity);
    GLConsole::addCommand("RoomTemperature", conCmdRoomTemperature);
    GLConsole::addCommand("HeatTransferRate", conCmdHeatTransferRate);
    GLConsole::addCommand("SteamRiseRate", conCmdSteamRiseRate);
    GLConsole::addCommand("SteamScatterRate", conCmdSteamScatterRate);
    GLConsole::addCommand("ParticleCreate", conCmdParticleCreate);
    GLConsole::addCommand("ParticleCount", conCmdParticleCount);
}

void removeCommands() {
    TRACE_LOCATION("ParticleManager::removeCommands");
    for (const char* name : {"Gravity", "RoomTemperature", "HeatTransferRate", "SteamRiseRate",
                             "SteamScatterRate", "ParticleCreate", "ParticleCount"})
        GLConsole::removeCommand(name);
}

void readSettings() {
    TRACE_LOCATION("ParticleManager::readSettings");
    const ConfigFile config("cfg\\water.cfg");
    gravity = std::fabs(config.getVarAsFloat("gravity"));
    roomTemperature = config.getVarAsFloat("roomTemperature");
    heatTransferRate = clampUnit(config.getVarAsFloat("heatTransferRate"));
    steamRiseRate = config.getVarAsFloat("steamRiseRate");
    steamScatterRate = config.getVarAsFloat("steamScatterRate");
    particleKillTime = std::max(config.getVarAsFloat("particleKillTime"), shortestKillTime);
}

// A direction of two uniform randoms, which crowds new water towards the centre.
Vector2D randomDirection() {
    TRACE_LOCATION("ParticleManager::randomDirection");
    const float x = static_cast<float>(randomUnit() - 0.5);
    const float y = static_cast<float>(randomUnit() - 0.5);
    Vector2D direction(x, y);
    normalise(direction);
    return direction;
}
}  // namespace

void initialise() {
    TRACE_LOCATION("ParticleManager::initialise");
    shutdown();
    GLConsole::print("\nInitialising particle manager..");
    ParticleMover::initialise();
    ParticleGroupMover::initialise();
    addCommands();
    readSettings();
}

void shutdown() {
    TRACE_LOCATION("ParticleManager::shutdown");
    GLConsole::print("\nShutting down particle manager..");
    particles.clear();
    ParticleMover::shutdown();
    ParticleGroupMover::shutdown();
    removeCommands();
}

void createParticles(float x, float y, float radius, int amount) {
    TRACE_LOCATION("ParticleManager::createParticles");
    for (int i = 0; i < amount; ++i) {
        const float distanceFromCentre = static_cast<float>(randomUnit()) * radius;
        const Vector2D direction = randomDirection();
        Particle particle;
        particle.position = Vector2D(x, y) + direction * distanceFromCentre;
        for (Vector2D& previous : particle.previousPosition) previous = particle.position;
        particle.temperature = roomTemperature;
        particles.push_front(particle);
    }
}

void killParticle(Particle& particle) {
    TRACE_LOCATION("ParticleManager::killParticle");
    if (particle.dying) return;
    particle.dying = 1;
    particle.killTimer = particleKillTime;
}

std::list<Particle>& getParticles() {
    TRACE_LOCATION("ParticleManager::getParticles");
    return particles;
}

float getGravity() {
    TRACE_LOCATION("ParticleManager::getGravity");
    return gravity;
}

float getRoomTemperature() {
    TRACE_LOCATION("ParticleManager::getRoomTemperature");
    return roomTemperature;
}

float getHeatTransferRate() {
    TRACE_LOCATION("ParticleManager::getHeatTransferRate");
    return heatTransferRate;
}

float getSteamRiseRate() {
    TRACE_LOCATION("ParticleManager::getSteamRiseRate");
    return steamRiseRate;
}

float getSteamScatterRate() {
    TRACE_LOCATION("ParticleManager::getSteamScatterRate");
    return steamScatterRate;
}

float getParticleKillTime() {
    TRACE_LOCATION("ParticleManager::getParticleKillTime");
    return particleKillTime;
}

}  // namespace ParticleManager
