// One simulation step of 128 water particles resting in a basin, in a level of
// 2,000 edges: the particles' collision tests walk the level's BSP tree.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include "game/game.h"
#include "graphics/window/window.h"
#include "level_fixture.h"
#include "level_tools/level_tools.h"
#include "water/water.h"

namespace {

constexpr int edgeCount = 2000;
constexpr float stepSeconds = 0.013333334f;

// A basin 120 wide at the origin, the rest of the edges in squares around it.
LevelFile basinLevel() {
    LevelFile level;
    PolygonRecord basin;
    basin.points = {{-80, -100}, {-80, 60}, {80, 60},  {80, -100},
                    {60, -100},  {60, 40},  {-60, 40}, {-60, -100}};
    level.polygons.push_back(basin);
    const int squares = (edgeCount - 8) / 4;
    for (int i = 0; i < squares; ++i) {
        const int ring = 3 + i / 40, place = i % 40;
        level.polygons.push_back(LevelBench::square((place - 20) * 40, ring * 40 + 60, 20));
    }
    return level;
}

class WaterInBasin : public benchmark::Fixture {
public:
    void SetUp(benchmark::State&) override {
        folder = new LevelBench::Folder;
        folder->write("cfg/water.cfg",
                      "gravity = 260\nroomTemperature = 20\nheatTransferRate = 0.15\n"
                      "particleKillTime = 0.6\nparticleGroupInterpolation = 0.02\n"
                      "groupExpandSpeed = 0.05\niceGravityStrenght = 1\n");
        folder->write("maps/basin.rill", LevelFileFormat::write(basinLevel()));
        Level::load("maps/basin.rill");
        GLWindow::Headless::setClientSize(800, 600);
        setRandomSeed(1);
        Camera::initialise();
        Camera::setPosition(Vector2D(0, 0));
        Camera::setState(Camera::following);
        ParticleManager::initialise();
        ParticleManager::createParticles(0, 0, 30, 128);
        for (int settle = 0; settle < 300; ++settle) ParticleManager::runSimulation(stepSeconds);
    }
    void TearDown(benchmark::State&) override {
        ParticleManager::shutdown();
        Level::clear();
        delete folder;
    }

    LevelBench::Folder* folder = nullptr;
};

BENCHMARK_DEFINE_F(WaterInBasin, Step128Particles)(benchmark::State& state) {
    for (auto _ : state) ParticleManager::runSimulation(stepSeconds);
    state.counters["particles"] = static_cast<double>(ParticleManager::getParticles().size());
    state.counters["edges"] = LevelBspTree::conCmdBspSize();
    state.counters["depth"] = LevelBspTree::conCmdBspDepth();
}

BENCHMARK_REGISTER_F(WaterInBasin, Step128Particles)->Unit(benchmark::kMicrosecond);

}  // namespace
