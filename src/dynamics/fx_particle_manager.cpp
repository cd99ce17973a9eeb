// The level's effect emitters and the particles they give off: the store, the
// step and the console commands. Emitters away from the view give off nothing,
// so a level can hold many of them.
#include "console/console.h"
#include "dynamics/dynamics.h"
#include "dynamics/fx_particle_state.h"
#include "game/game.h"
#include "water/water.h"

namespace FxParticleManager {

State& state() {
    return singleInstance<State>();
}

namespace {

const GLConsoleCommand commands[] = {
    {"FxEmitterCreate", conCmdFxEmitterCreate},
    {"FxEmitterDraw", GLConsole::settingCommand<state, &State::emitterDraw>},
    {"FxEmitterCount", conCmdFxEmitterCount},
    {"FxParticleCount", conCmdFxParticleCount},
};
const GLConsole::Subsystem console("\nInitialising FX particle manager..",
                                   "\nShutting down FX particle manager..", commands);

// x, y, dir_x, dir_y, id and the settings file, which is taken as it stands.
// The square about the view's centre, shake included, that the view can reach at its zoom.
bool nearView(const Vector2D& point, const Vector2D& centre, float halfWidth) {
    return point.x >= centre.x - halfWidth && point.x <= centre.x + halfWidth &&
           point.y >= centre.y - halfWidth && point.y <= centre.y + halfWidth;
}

}  // namespace

void initalise() {
    TRACE_LOCATION("FxParticleManager::initalise");
    shutdown();
    GLConsole::startSubsystem(console);
}

// Particles first: they point at their emitters' textures.
void shutdown() {
    TRACE_LOCATION("FxParticleManager::shutdown");
    GLConsole::stopSubsystem(console);
    state().particles.clear();
    state().emitters.clear();
    state() = State();
}

void addEmitter(const FxParticleEmitter& emitter) {
    TRACE_LOCATION("FxParticleManager::addEmitter");
    state().emitters.push_back(emitter);
}

void addParticle(const FxParticle& particle) {
    TRACE_LOCATION("FxParticleManager::addParticle");
    state().particles.push_back(particle);
}

void removeAllParticles() {
    TRACE_LOCATION("FxParticleManager::removeAllParticles");
    state().particles.clear();
}

std::vector<FxParticleEmitter*> findEmitters(int32_t id) {
    TRACE_LOCATION("FxParticleManager::findEmitters");
    std::vector<FxParticleEmitter*> found;
    for (FxParticleEmitter& emitter : state().emitters)
        if (emitter.id == id) found.push_back(&emitter);
    return found;
}

std::size_t getParticleCount() {
    TRACE_LOCATION("FxParticleManager::getParticleCount");
    return state().particles.size();
}

// A particle at the end of its life goes before it moves. Particles born in
// this step move in it too. dt enters the fall twice: once in the gravity step
// and once here, which is what the tuned settings expect.
void run(float dt) {
    TRACE_LOCATION("FxParticleManager::run");
    State& s = state();
    const Vector2D centre = Camera::getViewCentre();
    const float halfWidth = Game::getViewAreaX() * 0.5f * Camera::getZoom();
    for (FxParticleEmitter& emitter : s.emitters)
        if (nearView(emitter.position, centre, halfWidth)) emitter.run(dt);
    const Vector2D fall = ParticleManager::gravityStep(dt);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < s.particles.size(); ++i) {
        FxParticle& particle = s.particles[i];
        particle.lifeLeft -= dt;
        if (particle.lifeLeft <= 0.0f) continue;
        particle.position += particle.velocity * dt;
        particle.velocity += fall * particle.gravity * dt;
        if (kept != i) s.particles[kept] = particle;
        ++kept;
    }
    s.particles.resize(kept);
}

void conCmdFxEmitterCreate(std::string arguments) {
    TRACE_LOCATION("FxParticleManager::conCmdFxEmitterCreate");
    std::vector<std::string> args;
    if (!GLConsole::readArguments(arguments, "nnnnis",
                                  "\nUSAGE: Emitter create < x : number > < y : number > < dir_x : number > "
                                  "< dir_y : number > < id : integer > < emitter settings : fileName > ",
                                  args))
        return;
    FxParticleEmitter emitter;
    emitter.position = Vector2D(slStringToFloat(args[0]), slStringToFloat(args[1]));
    emitter.setDirection(slStringToFloat(args[2]), slStringToFloat(args[3]));
    emitter.id = slStringToInt(args[4]);
    emitter.loadEmitterSettings(args[5]);
    addEmitter(emitter);
}

int conCmdFxEmitterCount() {
    TRACE_LOCATION("FxParticleManager::conCmdFxEmitterCount");
    return static_cast<int>(state().emitters.size());
}

int conCmdFxParticleCount() {
    TRACE_LOCATION("FxParticleManager::conCmdFxParticleCount");
    return static_cast<int>(state().particles.size());
}

}  // namespace FxParticleManager
