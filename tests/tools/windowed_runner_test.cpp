// The runner with a window: it draws each step and saves what is on screen.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "graphics/test_images.h"
#include "platform/image_loading.h"
#include "support/content_support.h"
#include "support/level_fixtures.h"

namespace {

const char* const redView =
    "polygon id 1 texture \"gfx\\red.tga\" layer 0\n  -400 -300  400 -300  400 300  -400 300\nend\n";

int runRed(const ScratchFolder& folder, const std::string& options, const std::string& script) {
    folder.write("maps/red.rill", bytesFromText(redView));
    folder.write("gfx/red.tga", makeRawTga(32, 32, true, solid(255, 0, 0)));
    folder.write("script.txt", script);
    return runCommand(quoted(toolPath("brookfall-headless")) + " --data " + quoted(folder.path()) + options +
                      " 'maps\\red.rill' " + quoted(folder.path() / "script.txt") + " > /dev/null 2>&1");
}

// Pixels are blue, green, red, alpha in memory.
bool red(const Platform::LoadedImage& image, int x, int y) {
    const uint8_t* p = &image.pixels[(static_cast<std::size_t>(y) * image.width + x) * 4];
    return p[2] > 200 && p[1] < 60;
}

TEST(WindowedRunner, DrawsEveryStepAndSavesTheFrameOnScreenButWithoutAWindowSavesNone) {
    ScratchFolder folder;
    ASSERT_EQ(runRed(folder, "", ":screenshot shot.png\n"), 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "shot.png"));
    ASSERT_EQ(runRed(folder, " --window", ":step 3\n:screenshot shot.png\n"), 0);
    Platform::LoadedImage shot;
    ASSERT_TRUE(Platform::loadImage("shot.png", shot));
    EXPECT_EQ(shot.width, 800);
    EXPECT_EQ(shot.height, 600);
    // The level's one polygon fills the view.
    EXPECT_EQ(shot.pixels[(10 * 800 + 10) * 4 + 2], 255);
    EXPECT_EQ(shot.pixels[(10 * 800 + 10) * 4 + 1], 0);
}

TEST(WindowedRunner, TheOverviewShowsTheWholeLevelWherePicturesAreTakenFromTheStart) {
    ScratchFolder folder;
    // Two red blocks much further apart than a view is wide.
    folder.write(
        "data/maps/wide.rill",
        bytesFromText("polygon texture \"gfx\\red.tga\"\n  -3000 0, -2800 0, -2800 200, -3000 200\nend\n"
                      "polygon texture \"gfx\\red.tga\"\n  2800 0, 3000 0, 3000 200, 2800 200\nend\n"));
    folder.write("data/gfx/red.tga", makeRawTga(32, 32, true, solid(255, 0, 0)));
    folder.write("script.txt", ":overview view.png\n:screenshot missing/shot.png\n");
    const ToolRun run = runTool(quoted(toolPath("brookfall-headless")) +
                                " --data data --window 'maps\\wide.rill' script.txt");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("\nscript: no folder "), std::string::npos) << run.output;
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "data" / "view.png"));
    Platform::LoadedImage view;
    ASSERT_TRUE(Platform::loadImage("view.png", view));
    // Red at both sides of the picture.
    auto redColumns = [&](int from, int to) {
        int count = 0;
        for (int x = from; x < to; ++x)
            for (int y = 0; y < view.height; ++y)
                if (red(view, x, y)) {
                    ++count;
                    break;
                }
        return count;
    };
    EXPECT_GT(redColumns(0, view.width / 5), 0);
    EXPECT_GT(redColumns(view.width * 4 / 5, view.width), 0);
}

}  // namespace
