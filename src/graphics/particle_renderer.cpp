// ParticleRenderer: each particle a textured square much larger than its circle,
// over a larger, darker square, so that neighbours melt into one surface with an
// outline round the whole body. Fast particles grow; water and steam trail.
#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "console/console.h"
#include "graphics/graphics.h"
#include "graphics/textured_quad.h"
#include "graphics/window/window.h"
#include "water/water.h"

namespace ParticleRenderer {

namespace {
struct Colour {
    float r = 0.0f, g = 0.0f, b = 0.0f, a = 0.0f;
};

// How one phase looks: body and outline colours and the sizes added to the radius.
struct Look {
    Colour body;
    Colour outline;
    float outlineSize = 0.0f;
    float expansion = 0.0f;
};

struct Settings {
    Look water, steam, ice;
    float velocityExpansion = 0.0f;
    float maxVelocityExpansion = 0.0f;
};

struct State {
    Settings settings;
    std::unique_ptr<GLTexture> waterTexture, steamTexture, iceTexture;
    bool particleDraw = false;
};

State& state() {
    return singleInstance<State>();
}

constexpr float radius = ParticleMover::particleRadius;
constexpr float trailGrowth = 1.0f;
constexpr float waterTrail[3] = {0.5f, 0.25f, 0.125f};
// Steam's last trail square is all but invisible, unlike water's.
constexpr float steamTrail[3] = {0.5f, 0.25f, 0.0125f};

Colour readColour(const ConfigFile& config, const std::string& prefix) {
    return {config.getVarAsFloat(prefix + "_r"), config.getVarAsFloat(prefix + "_g"),
            config.getVarAsFloat(prefix + "_b"), config.getVarAsFloat(prefix + "_a")};
}

Look readLook(const ConfigFile& config, const std::string& phase, const char* expansionKey) {
    Look look;
    look.body = readColour(config, phase + "_color");
    look.outline = readColour(config, phase + "_outline_color");
    look.outlineSize = config.getVarAsFloat(phase + "_outline_size");
    look.expansion = expansionKey ? config.getVarAsFloat(expansionKey) : 0.0f;
    return look;
}

void readSettings() {
    ConfigFile config("cfg//water.cfg");
    state().settings.water = readLook(config, "water", nullptr);
    state().settings.steam = readLook(config, "steam", "steamExpansion");
    state().settings.ice = readLook(config, "ice", "iceExpansion");
    state().settings.velocityExpansion = std::fabs(config.getVarAsFloat("velocityExpansion"));
    state().settings.maxVelocityExpansion = std::fabs(config.getVarAsFloat("maxVelocityExpansion"));
    state().waterTexture = std::make_unique<GLTexture>(config.getVarAsString("waterTexture"));
    state().steamTexture = std::make_unique<GLTexture>(config.getVarAsString("steamTexture"));
    state().iceTexture = std::make_unique<GLTexture>(config.getVarAsString("iceTexture"));
}

float fadeOf(const Particle& particle) {
    if (!particle.dying) return 1.0f;
    const float killTime = ParticleManager::getSettings().particleKillTime;
    return killTime > 0.0f ? std::max(0.0f, particle.killTimer / killTime) : 0.0f;
}

float speedTerm(const Particle& particle) {
    return std::min(state().settings.velocityExpansion * particle.speed,
                    state().settings.maxVelocityExpansion);
}

void square(const Vector2D& at, float half, const Colour& colour, float alpha) {
    glColor4f(colour.r, colour.g, colour.b, alpha);
    texturedQuadVertices(at.x - half, at.y - half, at.x + half, at.y + half);
}

void drawOutlines(const std::vector<const Particle*>& particles, const Look& look, const GLTexture& texture) {
    glBindTexture(GL_TEXTURE_2D, texture.id);
    glBegin(GL_QUADS);
    for (const Particle* p : particles)
        square(p->position, speedTerm(*p) + look.outlineSize + radius + look.expansion, look.outline,
               look.outline.a * fadeOf(*p));
    glEnd();
}

void drawBodies(const std::vector<const Particle*>& particles, const Look& look, const GLTexture& texture,
                const float* trail) {
    glBindTexture(GL_TEXTURE_2D, texture.id);
    glBegin(GL_QUADS);
    for (const Particle* p : particles) {
        const float half = speedTerm(*p) + look.expansion + radius;
        const float alpha = look.body.a * fadeOf(*p);
        square(p->position, half, look.body, alpha);
        if (!trail) continue;
        for (int i = 0; i < 3; ++i)
            square(p->previousPosition[i], half + trailGrowth, look.body, alpha * trail[i]);
    }
    glEnd();
}
const GLConsoleCommand commands[] = {
    {"ParticleDraw", GLConsole::settingCommand<state, &State::particleDraw>},
};
const GLConsole::Subsystem console("\nInitialising particle renderer..",
                                   "\nShutting down particle renderer..", commands);
}  // namespace

void initialise() {
    TRACE_LOCATION("ParticleRenderer::initialise");
    shutdown();
    GLConsole::startSubsystem(console);
    state().particleDraw = true;
    readSettings();
}

void shutdown() {
    TRACE_LOCATION("ParticleRenderer::shutdown");
    GLConsole::stopSubsystem(console);
    state() = State();
}

void draw() {
    TRACE_LOCATION("ParticleRenderer::draw");
    if (!state().particleDraw || !state().waterTexture || !GLWindow::contextAvailable()) return;
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    // Each addition goes to the front, so the drawing order reverses the walk.
    std::vector<const Particle*> water, steam, ice;
    for (const Particle& particle : ParticleManager::getParticles())
        (particle.temperature >= ParticleManager::steamTemperature ? steam : water).push_back(&particle);
    for (const ParticleGroup& group : ParticleGroupMover::getGroups())
        for (const Particle& member : group.particles) ice.push_back(&member);
    for (auto* list : {&water, &steam, &ice}) std::reverse(list->begin(), list->end());
    // All outlines lie below all bodies, so an outline shows only round the whole mass.
    drawOutlines(water, state().settings.water, *state().waterTexture);
    drawOutlines(steam, state().settings.steam, *state().steamTexture);
    drawOutlines(ice, state().settings.ice, *state().iceTexture);
    drawBodies(water, state().settings.water, *state().waterTexture, waterTrail);
    drawBodies(steam, state().settings.steam, *state().steamTexture, steamTrail);
    drawBodies(ice, state().settings.ice, *state().iceTexture, nullptr);
}

}  // namespace ParticleRenderer
