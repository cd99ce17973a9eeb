// The sound bake as a program: the same bytes as the baked data folder on a
// fresh run, and usage on wrong arguments.
#include <gtest/gtest.h>

#include "support/content_support.h"
#include "support/test_support.h"

// The baked data came from an earlier run of the same program, so one fresh
// run that matches it shows that runs agree.
TEST(BakeSoundTool, AFreshRunGivesTheSameBytesAsTheBakedData) {
    ScratchFolder scratch;
    const std::string tool = quoted(toolPath("bake-sound"));
    ASSERT_EQ(runCommand(tool + " " + quoted(scratch.path() / "out") + " > /dev/null 2>&1"), 0);
    const std::vector<std::string> files = listFiles(scratch.path() / "out");
    EXPECT_EQ(files, bakedSounds());
    for (const std::string& name : files)
        EXPECT_EQ(readBytes(scratch.path() / "out" / name), readBytes(bakedDataFolder() / name)) << name;
    EXPECT_EQ(runCommand(tool + " > /dev/null 2>&1"), 2);
}
