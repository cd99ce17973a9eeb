// The art bake as a program: the same bytes as the baked data folder, and
// careful with missing fonts and bad input.
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

// Slow (a full bake, about 10 to 20 s sanitized), so it is the only one: the fonts
// folder lacks the console's font, which fails the bake, and everything else
// must still come out byte for byte as the baked data, an earlier run's.
TEST(BakeArtTool, AFreshRunGivesTheBakedBytesAndAMissingFontFailsOnlyItsOwnImage) {
    ScratchFolder scratch;
    const fs::path fonts = scratch.path() / "fonts";
    fs::create_directory(fonts);
    for (const char* font : {"DejaVuSans-Bold.ttf", "DejaVuSansCondensed-Bold.ttf"})
        fs::create_symlink(fs::path("/usr/share/fonts/truetype/dejavu") / font, fonts / font);
    ASSERT_EQ(bakeArt(quoted(scratch.path() / "out") + " " + quoted(fonts)), 1);
    const std::string missing = "gfx/fonts/console.tga";
    std::vector<std::string> baked;
    for (const std::string& name : listFiles(bakedDataFolder() / "gfx"))
        if ("gfx/" + name != missing) baked.push_back("gfx/" + name);
    const std::vector<std::string> files = listFiles(scratch.path() / "out");
    EXPECT_EQ(files, baked);
    for (const std::string& name : files)
        EXPECT_EQ(readBytes(scratch.path() / "out" / name), readBytes(bakedDataFolder() / name))
            << name << " differs from the baked data";
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
