// The art bake as a program: the same bytes on every run, the same as the
// baked data folder, and careful with bad input.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/content_support.h"
#include "support/test_support.h"

namespace fs = std::filesystem;

namespace {

int bakeArt(const std::string& arguments) {
    return runCommand(quoted(toolPath("bake-art")) + " " + arguments + " > /dev/null 2>&1");
}

}  // namespace

// The baked data came from an earlier run of the same program, so one fresh
// run that matches it byte for byte shows that runs agree.
TEST(BakeArtTool, AFreshRunGivesTheSameBytesAsTheBakedData) {
    ScratchFolder scratch;
    ASSERT_EQ(bakeArt(quoted(scratch.path() / "out")), 0);
    const std::vector<std::string> files = listFiles(scratch.path() / "out");
    std::vector<std::string> baked;
    for (const std::string& name : listFiles(bakedDataFolder() / "gfx")) baked.push_back("gfx/" + name);
    EXPECT_EQ(files, baked);
    for (const std::string& name : files)
        EXPECT_EQ(readBytes(scratch.path() / "out" / name), readBytes(bakedDataFolder() / name))
            << name << " differs from the baked data";
}

TEST(BakeArtTool, MissingFontsFailTheBakeButTheOtherArtIsWritten) {
    ScratchFolder scratch;
    EXPECT_EQ(bakeArt(quoted(scratch.path() / "out") + " " + quoted(scratch.path() / "no-fonts-here")), 1);
    EXPECT_TRUE(fs::is_regular_file(scratch.path() / "out" / "gfx" / "default.tga"));
    EXPECT_TRUE(fs::is_regular_file(scratch.path() / "out" / "gfx" / "surfaces" / "stone.tga"));
    EXPECT_FALSE(fs::exists(scratch.path() / "out" / "gfx" / "fonts" / "console.tga"));
}

TEST(BakeArtTool, WrongArgumentsGiveUsageAndWriteNothing) {
    ScratchFolder scratch;
    EXPECT_EQ(bakeArt(""), 2);
    EXPECT_EQ(bakeArt("a b c"), 2);
    EXPECT_TRUE(listFiles(scratch.path()).empty());
}

TEST(BakeArtTool, AnUnwritableFolderFailsWithoutACrash) {
    ScratchFolder scratch;
    scratch.write("blocker", "a file where a folder should be");
    EXPECT_EQ(bakeArt(quoted(scratch.path() / "blocker")), 1);
}
