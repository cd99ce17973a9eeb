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

}  // namespace
