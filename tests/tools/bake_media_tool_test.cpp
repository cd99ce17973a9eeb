// The media bake as a program: two runs give the same bytes as each other and
// as the baked data folder, and wrong arguments give usage.
#include <gtest/gtest.h>

#include <string>

#include "support/content_support.h"
#include "support/test_support.h"

TEST(BakeMediaTool, TwoRunsGiveTheSameBytesAsTheBakedData) {
    ScratchFolder scratch;
    const std::string tool = quoted(toolPath("bake-media"));
    for (const char* run : {"first", "second"}) {
        scratch.write(std::string(run) + "/gfx/menu/logo.tga",
                      readBytes(bakedDataFolder() / "gfx" / "menu" / "logo.tga"));
        ASSERT_EQ(runCommand(tool + " " + quoted(scratch.path() / run) + " > /dev/null 2>&1"), 0);
    }
    for (const char* name : {"snd/music/brookfall.ogg", "vid/intro.avi", "vid/intro.ogg"}) {
        const std::string first = readBytes(scratch.path() / "first" / name);
        EXPECT_FALSE(first.empty()) << name;
        EXPECT_EQ(first, readBytes(scratch.path() / "second" / name)) << name;
        EXPECT_EQ(first, readBytes(bakedDataFolder() / name)) << name;
    }
    EXPECT_EQ(runCommand(tool + " > /dev/null 2>&1"), 2);
}
