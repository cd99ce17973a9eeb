// The bake tools as programs: a fresh run gives the same bytes as the baked
// data folder, an earlier run's, so runs agree; wrong arguments give usage;
// the art bake is careful with missing fonts and bad input.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/content_support.h"
#include "support/test_support.h"

namespace fs = std::filesystem;

namespace {

int bake(const char* tool, const std::string& arguments) {
    return runCommand(quoted(toolPath(tool)) + " " + arguments + " > /dev/null 2>&1");
}

}  // namespace

// Slow (a full bake, about 10 to 20 s sanitized): the fonts folder lacks the
// console's font, which fails the bake, and everything else must still come
// out byte for byte as the baked data.
TEST(BakeArtTool, AFreshRunGivesTheBakedBytesAndAMissingFontFailsOnlyItsOwnImage) {
    ScratchFolder scratch;
    const fs::path fonts = scratch.path() / "fonts";
    fs::create_directory(fonts);
    for (const char* font : {"DejaVuSans-Bold.ttf", "DejaVuSansCondensed-Bold.ttf"})
        fs::create_symlink(fs::path("/usr/share/fonts/truetype/dejavu") / font, fonts / font);
    ASSERT_EQ(bake("bake-art", quoted(scratch.path() / "out") + " " + quoted(fonts)), 1);
    std::vector<std::string> baked;
    for (const std::string& name : listFiles(bakedDataFolder() / "gfx"))
        if (name != "fonts/console.tga") baked.push_back("gfx/" + name);
    const std::vector<std::string> files = listFiles(scratch.path() / "out");
    EXPECT_EQ(files, baked);
    for (const std::string& name : files)
        EXPECT_EQ(readBytes(scratch.path() / "out" / name), readBytes(bakedDataFolder() / name))
            << name << " differs from the baked data";
}

TEST(BakeArtTool, WrongArgumentsOrAnUnwritableFolderFailWithoutACrashAndWriteNothing) {
    ScratchFolder scratch;
    EXPECT_EQ(bake("bake-art", ""), 2);
    EXPECT_EQ(bake("bake-art", "a b c"), 2);
    EXPECT_TRUE(listFiles(scratch.path()).empty());
    scratch.write("blocker", "a file where a folder should be");
    EXPECT_EQ(bake("bake-art", quoted(scratch.path() / "blocker")), 1);
}

// Slow (encoding takes several seconds sanitized). The media bake takes the
// menu logo from the art bake's output.
TEST(BakeMediaTool, AFreshRunGivesTheSameBytesAsTheBakedData) {
    ScratchFolder scratch;
    scratch.write("out/gfx/menu/logo.tga", readBytes(bakedDataFolder() / "gfx" / "menu" / "logo.tga"));
    ASSERT_EQ(bake("bake-media", quoted(scratch.path() / "out")), 0);
    for (const char* name : {"snd/music/brookfall.ogg", "vid/intro.avi", "vid/intro.ogg"}) {
        const std::string fresh = readBytes(scratch.path() / "out" / name);
        EXPECT_FALSE(fresh.empty()) << name;
        EXPECT_EQ(fresh, readBytes(bakedDataFolder() / name)) << name;
    }
    EXPECT_EQ(bake("bake-media", ""), 2);
}

TEST(BakeSoundTool, AFreshRunGivesTheSameBytesAsTheBakedData) {
    ScratchFolder scratch;
    ASSERT_EQ(bake("bake-sound", quoted(scratch.path() / "out")), 0);
    const std::vector<std::string> files = listFiles(scratch.path() / "out");
    EXPECT_EQ(files, bakedSounds());
    for (const std::string& name : files)
        EXPECT_EQ(readBytes(scratch.path() / "out" / name), readBytes(bakedDataFolder() / name)) << name;
    EXPECT_EQ(bake("bake-sound", ""), 2);
}
