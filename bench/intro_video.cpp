// One frame of the shipped intro as the intro shows it: decoded, written into
// the texture and drawn over an 800 by 600 window, under whatever OpenGL the
// display offers (Mesa's software renderer under Xvfb: LIBGL_ALWAYS_SOFTWARE=1).
// The video has 25 frames a second; a machine slower than that plays it slower.
// Reads the build's baked data, or the folder BROOKFALL_DATA_DIR names.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "baked_data.h"
#include "graphics/graphics.h"

namespace {

void introFrames(benchmark::State& state) {
    std::error_code error;
    std::filesystem::current_path(bakedDataDirectory(), error);
    GLWindow::Headless::setEnabled(false);
    GLWindow::createWindow("Brookfall benchmark", 800, 600);
    GLWindow::enableVsync(false);
    {
        GLAviPlayer player("vid\\intro.avi");
        if (error || !player.loaded()) state.SkipWithError("no baked intro to play");
        uint32_t frame = 0;
        for (auto _ : state) {
            if (!player.loaded()) break;
            // Back to the start after the last frame, as a rewind does.
            frame = (frame + 1) % player.frameCount;
            player.getAviFrame(frame);
            player.draw();
        }
        state.counters["frames_per_second"] =
            benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
    }
    GLWindow::close();
}
BENCHMARK(introFrames)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
