// One game step of the first level's 128 particles, with and without the sound
// that follows the water (the level's sources and the water, ice and steam
// behaviours) on a running sound device. Run with the baked data in place
// (the build's data folder) and a device that OpenAL can open, such as
// ALSOFT_DRIVERS=null.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "audio/audio.h"
#include "baked_data.h"
#include "console/console.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"
#include "level/level.h"

namespace {

constexpr float stepSeconds = 0.013333334f;

class FirstLevel : public benchmark::Fixture {
public:
    void SetUp(benchmark::State&) override {
        std::filesystem::current_path(bakedDataDirectory());
        GLWindow::Headless::setClientSize(800, 600);
        GLConsole::initialise();
        SoundSystem::initialise();
        SoundManager::initialise();
        SurfaceTypeManager::initialise();
        setRandomSeed(1);
        Game::initialise("maps\\testLevel.rill");
        Game::startPlaying();
        // As at the end of the camera's glide to the water.
        Camera::setPosition(Level::getWaterStart());
        Camera::setState(Camera::following);
        for (int settle = 0; settle < 200; ++settle) step(true);
    }
    void TearDown(benchmark::State&) override {
        Game::shutdown();
        SoundManager::shutdown();
        SoundSystem::shutdown();
        GLConsole::shutdown();
    }

    // The camera follows, so the water stays in the simulated view.
    static void step(bool withSound) {
        Game::runSimulation(stepSeconds);
        if (withSound) Game::soundUpdate(stepSeconds);
        Camera::doMovements(false, stepSeconds);
    }
};

BENCHMARK_DEFINE_F(FirstLevel, StepWithoutSound)(benchmark::State& state) {
    for (auto _ : state) step(false);
    state.counters["particles"] = GameRules::getParticleCount();
}
BENCHMARK_DEFINE_F(FirstLevel, StepWithSound)(benchmark::State& state) {
    for (auto _ : state) step(true);
    state.counters["particles"] = GameRules::getParticleCount();
}
BENCHMARK_REGISTER_F(FirstLevel, StepWithoutSound)->Unit(benchmark::kMicrosecond);
BENCHMARK_REGISTER_F(FirstLevel, StepWithSound)->Unit(benchmark::kMicrosecond);

}  // namespace
