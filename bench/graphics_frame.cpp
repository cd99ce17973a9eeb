// One frame of the first level with its 128 water particles, drawn at 1920 by
// 1080 the way the game draws it, with and without a thousand effect particles
// in view, under whatever OpenGL the display offers (Mesa's software renderer
// under Xvfb: LIBGL_ALWAYS_SOFTWARE=1). Reports frames a second. Reads the
// build's baked data, or the folder BROOKFALL_DATA_DIR names.
#include <GL/gl.h>
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <filesystem>

#include "baked_data.h"
#include "console/console.h"
#include "dynamics/dynamics.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "level/level.h"
#include "menus/menus.h"
#include "water/water.h"

namespace {

// The game as WinMain starts it, on the test level, with the water let go.
bool startGame(int width, int height) {
    std::error_code error;
    std::filesystem::current_path(bakedDataDirectory(), error);
    if (error) return false;
    GLWindow::Headless::setEnabled(false);
    GLWindow::createWindow("Brookfall benchmark", width, height);
    GLWindow::enableVsync(false);
    GLTextureManager::initialise();
    GLConsole::initialise();
    SurfaceTypeManager::initialise();
    Game::initialise("maps\\testLevel.rill");
    Game::startPlaying();
    // The camera glides to the water and the water settles before measuring.
    for (int i = 0; i < 200; ++i) Game::runFrame(Game::stepThreshold);
    return Game::getCurrentMapName() == "maps\\testLevel.rill";
}

// CPU time of every thread of the process: the software renderer draws on
// threads of its own, and their time per frame stays the same on a busy machine.
double processCpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    auto seconds = [](const timeval& t) { return static_cast<double>(t.tv_sec) + t.tv_usec * 1e-6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void stopGame() {
    Game::shutdown();
    GLConsole::shutdown();
    GLTextureManager::shutdown();
    GLWindow::close();
}

// A thousand effect particles over the view: sparks added to the picture,
// smoke, drops and bubbles blended, 250 of each, flown out from the view's
// centre for a second so that they cover it as a busy level's would.
void addEffects() {
    const struct {
        const char* texture;
        bool alphaBlending;
    } kinds[] = {{"gfx\\fx\\spark.tga", false},
                 {"gfx\\fx\\smoke.tga", true},
                 {"gfx\\fx\\drop.tga", true},
                 {"gfx\\fx\\bubble.tga", true}};
    int32_t id = 1;
    for (const auto& kind : kinds) {
        FxParticleEmitter emitter;
        emitter.id = id++;
        emitter.position = Camera::getViewCentre();
        emitter.active = false;
        emitter.useAlphaBlending = kind.alphaBlending;
        emitter.spread = 6.2831855f;
        emitter.setBurstSize(250);
        emitter.velocity1 = 50.0f;
        emitter.velocity2 = 450.0f;
        emitter.size1 = 8.0f;
        emitter.size2 = 24.0f;
        emitter.setLiveTime(1000.0f, 1000.0f);
        emitter.addTexture(kind.texture);
        FxParticleManager::addEmitter(emitter);
        FxParticleManager::findEmitters(emitter.id).front()->createBurst();
    }
    for (int i = 0; i < 30; ++i) FxParticleManager::run(1.0f / 30.0f);
}

void frameAt(benchmark::State& state, int width, int height, bool effects, int menu = GameMenus::none) {
    if (!startGame(width, height)) {
        state.SkipWithError("no window or no level (run under a display, from the build folder)");
        return;
    }
    if (effects) addEffects();
    GameMenus::setCurrentMenu(menu);
    const double cpuBefore = processCpuSeconds();
    for (auto _ : state) {
        Game::draw();
        glFinish();
    }
    state.counters["cpu_ms_all_threads"] =
        (processCpuSeconds() - cpuBefore) * 1000.0 / static_cast<double>(state.iterations());
    state.counters["fps"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
    state.counters["particles"] = static_cast<double>(ParticleManager::getParticles().size());
    state.counters["fx_particles"] = static_cast<double>(FxParticleManager::getParticleCount());
    stopGame();
}

void BM_GameFrame1920x1080(benchmark::State& state) {
    frameAt(state, 1920, 1080, false);
}
// The level stands still under the menu, which is drawn over it with the pointer.
void BM_GameFrameUnderMainMenu1920x1080(benchmark::State& state) {
    frameAt(state, 1920, 1080, false, GameMenus::main);
}
void BM_GameFrameWithEffectsUnderMainMenu1920x1080(benchmark::State& state) {
    frameAt(state, 1920, 1080, true, GameMenus::main);
}
void BM_GameFrame800x600(benchmark::State& state) {
    frameAt(state, 800, 600, false);
}

}  // namespace

BENCHMARK(BM_GameFrame1920x1080)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3.0);
BENCHMARK(BM_GameFrameUnderMainMenu1920x1080)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3.0);
BENCHMARK(BM_GameFrameWithEffectsUnderMainMenu1920x1080)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MinTime(3.0);
BENCHMARK(BM_GameFrame800x600)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);
