// The level's dynamics in one simulation step: every particle tested against
// the triggers near the view, and a moving platform carrying the water. Both
// run every step beside the water itself, so each must stay a small share of
// a 75 Hz frame (13.3 ms) at a level's 128 particles and at designer sizes.
#include <benchmark/benchmark.h>

#include <cmath>

#include "dynamics/dynamics.h"
#include "game/game.h"
#include "graphics/window/window.h"
#include "level/level.h"
#include "water/water.h"

namespace {

constexpr float stepSeconds = 0.013333334f;

// Water spread over a square about the origin, none of it dying or moving.
void placeWater(int amount) {
    ParticleManager::removeAllParticles();
    const int side = static_cast<int>(std::ceil(std::sqrt(static_cast<float>(amount))));
    for (int i = 0; i < amount; ++i) {
        Particle particle;
        particle.position =
            Vector2D(static_cast<float>(i % side) * 4.0f, static_cast<float>(i / side) * 4.0f);
        particle.temperature = 20.0f;
        ParticleManager::getParticles().push_back(particle);
    }
}

void setUpStage() {
    GLWindow::Headless::setClientSize(800, 600);
    Camera::setPosition(Vector2D());
    Level::clear();
    ForceManager::initialise();
    MoverManager::initialise();
    TriggerManager::initialise();
}

// A grid of null areas over and around the water: every particle is tested
// against every trigger in view, none of them changes anything.
void BM_RunTriggers(benchmark::State& state) {
    setUpStage();
    placeWater(static_cast<int>(state.range(0)));
    const int triggers = static_cast<int>(state.range(1));
    for (int i = 0; i < triggers; ++i) {
        const float x = static_cast<float>(i % 20) * 40.0f - 400.0f,
                    y = static_cast<float>(i / 20) * 40.0f - 400.0f;
        TriggerManager::addTrigger(-1, 0, 0.0f, Vector2D(x, y), Vector2D(x + 30, y), Vector2D(x + 30, y + 30),
                                   Vector2D(x, y + 30));
    }
    for (auto _ : state) TriggerManager::runTriggers(stepSeconds);
    state.counters["particles"] = static_cast<double>(state.range(0));
    Level::clear();
}
BENCHMARK(BM_RunTriggers)->Args({128, 40})->Args({128, 400})->Args({1024, 400});

// A platform under the water that runs back and forth fast enough to need
// several strides a step, carrying every particle that stands on it.
void BM_MoverPush(benchmark::State& state) {
    setUpStage();
    const int amount = static_cast<int>(state.range(0));
    placeWater(amount);
    Polygon2D platform;
    platform.id = 1;
    const float width = std::sqrt(static_cast<float>(amount)) * 4.0f + 40.0f;
    platform.addPoints({Vector2D(-20, -10), Vector2D(width, -10), Vector2D(width, -3), Vector2D(-20, -3)});
    Level::addPolygon(platform);
    Mover mover;
    mover.id = 1;
    mover.speed = 400.0f;
    mover.setEndPoint(Vector2D(0, -100));
    MoverManager::addMover(mover);
    MoverManager::getMovers().front().state = Mover::loopToEnd;
    for (auto _ : state) {
        MoverManager::updateCollideableNodes();
        MoverManager::runMovers(stepSeconds);
    }
    state.counters["particles"] = static_cast<double>(ParticleManager::getParticles().size());
    ParticleManager::removeAllParticles();
    Level::clear();
}
BENCHMARK(BM_MoverPush)->Arg(128)->Arg(1024);

}  // namespace
