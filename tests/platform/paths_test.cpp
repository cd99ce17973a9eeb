#include <gtest/gtest.h>

#include "platform/platform.h"
#include "support/test_support.h"

TEST(Paths, GameNamesReachFilesWhateverTheirCaseAndUnmatchedComponentsKeepTheirName) {
    ScratchFolder folder;
    folder.write("gfx/default.tga", "x");
    folder.write("Cfg/Game.cfg", "y");
    EXPECT_EQ(std::tuple(Platform::resolvePath("GFX\\DEFAULT.TGA"), Platform::resolvePath("cfg\\game.cfg"),
                         Platform::resolvePath("cfg//GAME.CFG")),
              std::tuple("gfx/default.tga", "Cfg/Game.cfg", "Cfg/Game.cfg"));
    EXPECT_TRUE(Platform::fileExists("CFG\\GAME.CFG"));
    EXPECT_FALSE(Platform::fileExists("cfg\\other.cfg"));
    folder.write("SAV/keep.txt", "");
    EXPECT_EQ(Platform::resolvePath("sav\\scores.sav"), "SAV/scores.sav");
    FILE* file = Platform::openFile("sav\\scores.sav", "wb");
    ASSERT_NE(file, nullptr);
    std::fclose(file);
    EXPECT_TRUE(Platform::fileExists("SAV\\SCORES.SAV"));
    EXPECT_TRUE(Platform::createDirectory("new"));
    EXPECT_FALSE(Platform::createDirectory("NEW")) << "an existing folder in another case is the same folder";
}

TEST(Paths, FindFilesMatchesPatternsSortedByNameAndFoldersNeverOpenAsFiles) {
    ScratchFolder folder;
    for (const char* name : {"anim_FRAME10.tga", "anim_FRAME02.tga", "ANIM_frame01.TGA", "other.tga"})
        folder.write(std::string("gfx/") + name, "");
    const std::vector<std::string> expected{"ANIM_frame01.TGA", "anim_FRAME02.tga", "anim_FRAME10.tga"};
    EXPECT_EQ(Platform::findFiles("GFX\\anim_FRAME*.tga"), expected);
    EXPECT_TRUE(Platform::findFiles("missing\\*.tga").empty());
    folder.write("maps/level.rill", "");
    EXPECT_EQ(Platform::openFile("maps", "rb"), nullptr);
    EXPECT_EQ(Platform::openFile("", "rb"), nullptr);
}
