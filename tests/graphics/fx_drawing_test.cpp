// Effect particles in the frame: each fades by its alpha over its life and is
// blended or added as its emitter says, even where batches of one texture meet
// particles of the other mode.
#include "dynamics/dynamics.h"
#include "game/game_state.h"
#include "world_view.h"

namespace {

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
