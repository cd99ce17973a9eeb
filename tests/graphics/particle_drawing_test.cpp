// Particles in the frame: the water's, each phase in its colour, squares that
// grow with the speed, trails that fade; and the effects', each fading by its
// alpha over its life and blended or added as its emitter says, even where
// batches of one texture meet particles of the other mode.
#include "dynamics/dynamics.h"
#include "game/game_state.h"
#include "world_view.h"

namespace {

const Rgb black{0, 0, 0}, water{255, 0, 255}, steam{0, 255, 255}, ice{255, 255, 0};

const char* const settings =
    "waterTexture = gfx\\white.tga\nsteamTexture = gfx\\white.tga\niceTexture = gfx\\white.tga\n"
    "water_color_r = 1\nwater_color_b = 1\nwater_color_a = 1\n"
    "steam_color_g = 1\nsteam_color_b = 1\nsteam_color_a = 1\n"
    "ice_color_r = 1\nice_color_g = 1\nice_color_a = 1\n"
    "velocityExpansion = -2\nmaxVelocityExpansion = 10\n";

// No level: only the water on black.
class ParticleDrawing : public WorldView {
protected:
    ParticleDrawing() {
        folder.write("cfg/water.cfg", settings);
        ParticleManager::initialise();
        ParticleRenderer::initialise();
    }
    ~ParticleDrawing() override {
        ParticleRenderer::shutdown();
        ParticleManager::shutdown();
    }
};

TEST_F(ParticleDrawing, PhasesTakeTheirOwnColours) {
    auto& particles = ParticleManager::getParticles();
    particles.push_back(particleAt(-100, 0, 99.9f));
    particles.push_back(particleAt(0, 0, 100.0f));
    ParticleGroup body;
    body.particles.push_back(particleAt(100, 0, -5.0f));
    ParticleGroupMover::getGroups().push_back(body);
    Game::drawFrame();
    EXPECT_TRUE(near(world(-100, 0), water));
    EXPECT_TRUE(near(world(0, 0), steam));
    EXPECT_TRUE(near(world(100, 0), ice));
    EXPECT_TRUE(near(world(-50, 0), black));
    ParticleGroupMover::getGroups().clear();
}

TEST_F(ParticleDrawing, ADyingParticlePastItsTimeIsInvisibleAndTrailsFade) {
    Particle dying = particleAt(0, 0, 20.0f);
    dying.dying = 1;
    dying.killTimer = -1.0f;
    ParticleManager::getParticles().push_back(dying);
    Particle moving = particleAt(100, 0, 20.0f);
    moving.previousPosition[0] = Vector2D(120, 0);
    moving.previousPosition[1] = Vector2D(140, 0);
    moving.previousPosition[2] = Vector2D(160, 0);
    ParticleManager::getParticles().push_back(moving);
    Game::drawFrame();
    EXPECT_TRUE(near(world(0, 0), black));
    // Trail squares at half, a quarter and an eighth of the body's alpha: 128, 64, 32.
    for (int i = 1; i <= 3; ++i)
        EXPECT_TRUE(near(world(static_cast<float>(100 + 20 * i), 0), {256 >> i, 0, 256 >> i}, 4))
            << "trail square " << i;
    GLConsole::enterLine("ParticleDraw false");
    Game::drawFrame();
    EXPECT_TRUE(near(world(100, 0), black));
}

struct FxPixelCase {
    const char* what;
    bool alphaBlending;
    float r, g, b, a;
    float lifeShare;
    Rgb expected;  // over a background of mid grey
};

const FxPixelCase cases[] = {
    {"blended, at a quarter of its life", true, 1, 1, 1, 0.8f, 0.25f, {153, 153, 153}},
    {"added, at a quarter of its life", false, 1, 1, 1, 0.8f, 0.25f, {179, 179, 179}},
    {"blended red, newborn", true, 1, 0, 0, 1, 1, {255, 0, 0}},
    {"added red, newborn", false, 1, 0, 0, 1, 1, {255, 128, 128}},
    {"blended, at its end", true, 1, 1, 1, 1, 0.001f, {128, 128, 128}},
};

using FxDrawing = WorldView;

TEST_F(FxDrawing, EachParticleFadesAndBlendsByItsOwnMode) {
    FxParticleManager::initalise();
    {
        // Two texture entries, the modes mixed within each.
        FxParticleEmitter emitter;
        emitter.addTexture("gfx\\white.tga");
        emitter.addTexture("gfx\\white2.tga");
        FxParticleManager::addEmitter(emitter);
    }
    const FxParticleEmitter& emitter = *FxParticleManager::findEmitters(0).front();
    float x = -300.0f;
    for (std::size_t i = 0; i < 2 * std::size(cases); ++i, x += 60.0f) {
        const FxPixelCase& c = cases[i % std::size(cases)];
        FxParticle particle;
        particle.useAlphaBlending = c.alphaBlending;
        particle.position = Vector2D(x, 0);
        particle.color = {c.r, c.g, c.b, c.a};
        particle.size = 30.0f;
        particle.lifeTotal = 2.0f;
        particle.lifeLeft = 2.0f * c.lifeShare;
        particle.texture = &emitter.textures[i % 2];
        FxParticleManager::addParticle(particle);
    }
    GameState::state().background[0] = GameState::state().background[1] = GameState::state().background[2] =
        128.0f / 255.0f;
    Game::drawFrame();
    x = -300.0f;
    for (std::size_t i = 0; i < 2 * std::size(cases); ++i, x += 60.0f) {
        const FxPixelCase& c = cases[i % std::size(cases)];
        const Rgb shown = world(x, 0);
        EXPECT_TRUE(near(shown, c.expected))
            << c.what << " with texture " << i % 2 << ": " << shown[0] << " " << shown[1] << " " << shown[2];
    }
    GameState::state() = GameState::State();
    FxParticleManager::shutdown();
}

}  // namespace
