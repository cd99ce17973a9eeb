// One simulation step of the water, at the size of a level (128 particles, as
// the game makes them) and at the sizes a designer reaches with ParticleCreate.
// Without a level the water neither falls away nor collides: what is measured is
// the grid refresh, the per-particle moves with their repulsion, and the
// cluster attraction. The step must stay well inside a 75 Hz frame (13.3 ms).
#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>

#include "console/console.h"
#include "game/game.h"
#include "level/level.h"
#include "level_tools/level_tools.h"
#include "water/water.h"

namespace {

constexpr float stepSeconds = 0.016666668f;
constexpr int settlingSteps = 30;

// Water settings as a level would have them, less gravity, which would carry
// the water out of view with no floor to stop it.
void writeSettings(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder / "cfg");
    std::ofstream(folder / "cfg" / "water.cfg")
        << "roomTemperature = 20\nheatTransferRate = 0.1\nparticleKillTime = 1\n";
}

class WaterBody {
public:
    explicit WaterBody(int amount) : previous(std::filesystem::current_path()) {
        const std::filesystem::path folder = std::filesystem::temp_directory_path() / "brookfall-bench-water";
        writeSettings(folder);
        std::filesystem::current_path(folder);
        setRandomSeed(1);
        Camera::initialise();
        ParticleManager::initialise();
        // Spread at about the density that repulsion gives water.
        const float radius = amount <= 128 ? 10.0f : 2.0f * std::sqrt(static_cast<float>(amount));
        if (amount > 0)
            GLConsole::enterLine("ParticleCreate 0 0 " + std::to_string(radius) + " " +
                                 std::to_string(amount));
        Camera::setState(Camera::following);
        for (int i = 0; i < settlingSteps; ++i) ParticleManager::runSimulation(stepSeconds);
    }
    ~WaterBody() {
        ParticleManager::shutdown();
        std::filesystem::current_path(previous);
    }

private:
    std::filesystem::path previous;
};

void BM_SimulationStep(benchmark::State& state) {
    WaterBody water(static_cast<int>(state.range(0)));
    for (auto _ : state) ParticleManager::runSimulation(stepSeconds);
    state.counters["particles"] = static_cast<double>(ParticleManager::getParticles().size());
}
BENCHMARK(BM_SimulationStep)->Arg(128)->Arg(2048)->Arg(10000)->Unit(benchmark::kMillisecond);

// A bowl 640 units wide round the view's centre, so that gravity can act and
// every particle's sub-steps meet the level's edges.
void loadBowl(const std::filesystem::path& folder) {
    LevelFile level;
    PolygonRecord floor;
    floor.points = {{-340, 200}, {340, 200}, {340, 260}, {-340, 260}};
    PolygonRecord left;
    left.points = {{-340, -250}, {-320, -250}, {-320, 200}, {-340, 200}};
    PolygonRecord right;
    right.points = {{320, -250}, {340, -250}, {340, 200}, {320, 200}};
    level.polygons = {floor, left, right};
    std::filesystem::create_directories(folder / "maps");
    std::ofstream(folder / "maps" / "bowl.rill", std::ios::binary) << LevelFileFormat::write(level);
    Level::load("maps\\bowl.rill");
}

void BM_SimulationStepInABowl(benchmark::State& state) {
    WaterBody water(0);
    loadBowl(std::filesystem::current_path());
    GLConsole::enterLine("Gravity 100");
    const int amount = static_cast<int>(state.range(0));
    Camera::setPosition(Vector2D());
    ParticleManager::createParticles(0, -50, 2.0f * std::sqrt(static_cast<float>(amount)), amount);
    for (int i = 0; i < 120; ++i) ParticleManager::runSimulation(stepSeconds);
    for (auto _ : state) ParticleManager::runSimulation(stepSeconds);
    state.counters["particles"] = static_cast<double>(ParticleManager::getParticles().size());
    Level::clear();
}
BENCHMARK(BM_SimulationStepInABowl)->Arg(128)->Arg(2048)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_AttractionPass(benchmark::State& state) {
    WaterBody water(static_cast<int>(state.range(0)));
    for (auto _ : state) ParticleMover::runParticleAttractions(stepSeconds);
}
BENCHMARK(BM_AttractionPass)->Arg(128)->Arg(2048)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
