#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "graphics/test_images.h"
#include "level/level.h"
#include "level_tools/level_tools.h"
#include "platform/image_loading.h"
#include "support/test_support.h"

namespace {

// The runner stands in the build folder, one level above this test program.
std::string runnerPath() {
    char self[4096] = {};
    const ssize_t length = readlink("/proc/self/exe", self, sizeof(self) - 1);
    const std::filesystem::path tests =
        std::filesystem::path(std::string(self, length > 0 ? length : 0)).parent_path();
    return (tests.parent_path() / "brookfall-headless").string();
}

const char* const levelText = R"(
polygon id 1 texture "gfx\red.tga" layer 0
  -400 -300  400 -300  400 300  -400 300
end
)";

TEST(WindowedRunner, DrawsEveryStepAndSavesTheFrameOnScreen) {
    ScratchFolder folder;
    LevelFile level;
    std::string error;
    ASSERT_TRUE(LevelText::parse(levelText, "test.level", level, error)) << error;
    folder.write("maps/red.rill", LevelFileFormat::write(level));
    folder.write("gfx/red.tga", makeRawTga(32, 32, true, solid(255, 0, 0)));
    folder.write("script.txt", ":step 3\n:screenshot shot.png\n");
    const std::string command = runnerPath() + " --data " + folder.path().string() +
                                " --window 'maps\\red.rill' " + (folder.path() / "script.txt").string() +
                                " > /dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;

    Platform::LoadedImage shot;
    ASSERT_TRUE(Platform::loadImage("shot.png", shot));
    EXPECT_EQ(shot.width, 800);
    EXPECT_EQ(shot.height, 600);
    // The level's one polygon fills the view: the corners are red (blue, green, red, alpha in memory).
    const uint8_t* corner = &shot.pixels[(10 * 800 + 10) * 4];
    EXPECT_EQ(corner[2], 255);
    EXPECT_EQ(corner[1], 0);
}

TEST(WindowedRunner, WithoutAWindowThereIsNoScreenshot) {
    ScratchFolder folder;
    folder.write("script.txt", ":screenshot shot.png\n");
    LevelFile level;
    std::string error;
    ASSERT_TRUE(LevelText::parse(levelText, "test.level", level, error)) << error;
    folder.write("maps/red.rill", LevelFileFormat::write(level));
    const std::string command = runnerPath() + " --data " + folder.path().string() + " 'maps\\red.rill' " +
                                (folder.path() / "script.txt").string() + " > /dev/null 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "shot.png"));
}

TEST(WindowedRunner, TheOverviewShowsTheWholeLevelWherePicturesAreTakenFromTheStart) {
    ScratchFolder folder;
    LevelFile level;
    std::string error;
    // Two red blocks much further apart than a view is wide.
    ASSERT_TRUE(
        LevelText::parse("polygon texture \"gfx\\red.tga\"\n  -3000 0, -2800 0, -2800 200, -3000 200\nend\n"
                         "polygon texture \"gfx\\red.tga\"\n  2800 0, 3000 0, 3000 200, 2800 200\nend\n",
                         "test.level", level, error))
        << error;
    folder.write("data/maps/wide.rill", LevelFileFormat::write(level));
    folder.write("data/gfx/red.tga", makeRawTga(32, 32, true, solid(255, 0, 0)));
    folder.write("script.txt", ":overview view.png\n:screenshot missing/shot.png\n");
    const std::string command =
        runnerPath() + " --data data --window 'maps\\wide.rill' script.txt > out.txt 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << folder.read("out.txt");
    EXPECT_NE(folder.read("out.txt").find("\nscript: no folder "), std::string::npos)
        << folder.read("out.txt");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "data" / "view.png"));

    Platform::LoadedImage view;
    ASSERT_TRUE(Platform::loadImage("view.png", view));
    // Red at both sides of the picture, blue, green, red, alpha in memory.
    auto redColumns = [&](int from, int to) {
        int count = 0;
        for (int x = from; x < to; ++x)
            for (int y = 0; y < view.height; ++y) {
                const uint8_t* p = &view.pixels[(static_cast<std::size_t>(y) * view.width + x) * 4];
                if (p[2] > 200 && p[1] < 60) {
                    ++count;
                    break;
                }
            }
        return count;
    };
    EXPECT_GT(redColumns(0, view.width / 5), 0);
    EXPECT_GT(redColumns(view.width * 4 / 5, view.width), 0);
}

}  // namespace
