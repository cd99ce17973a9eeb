// The media bake as a program: the same bytes as the baked data folder, and
// usage on wrong arguments.
#include <gtest/gtest.h>

#include <string>

#include "support/content_support.h"
#include "support/test_support.h"

// Slow (encoding takes several seconds sanitized); the baked data came from an
// earlier run, so one fresh run that matches it shows that runs agree.
TEST(BakeMediaTool, AFreshRunGivesTheSameBytesAsTheBakedData) {
    ScratchFolder scratch;
    const std::string tool = quoted(toolPath("bake-media"));
    scratch.write("out/gfx/menu/logo.tga", readBytes(bakedDataFolder() / "gfx" / "menu" / "logo.tga"));
    ASSERT_EQ(runCommand(tool + " " + quoted(scratch.path() / "out") + " > /dev/null 2>&1"), 0);
    for (const char* name : {"snd/music/brookfall.ogg", "vid/intro.avi", "vid/intro.ogg"}) {
        const std::string fresh = readBytes(scratch.path() / "out" / name);
        EXPECT_FALSE(fresh.empty()) << name;
        EXPECT_EQ(fresh, readBytes(bakedDataFolder() / name)) << name;
    }
    EXPECT_EQ(runCommand(tool + " > /dev/null 2>&1"), 2);
}
