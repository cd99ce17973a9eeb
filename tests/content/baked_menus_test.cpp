// The menus' configuration: every screen has its buttons laid out on the 800
// by 600 screen without overlapping, and every file any configuration names
// is baked.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "foundation/foundation.h"
#include "platform/platform.h"
#include "support/content_support.h"

namespace {

struct Box {
    float x, y, w, h;
};

const std::map<std::string, std::vector<std::string>> screens = {
    {"cfg\\menu_main.cfg",
     {"startButton", "loadButton", "optionsButton", "instructionsButton", "highScoresButton", "creditsButton",
      "quitButton"}},
    {"cfg\\menu_inGame.cfg",
     {"continueButton", "restartButton", "loadButton", "optionsButton", "instructionsButton",
      "highScoresButton", "creditsButton", "quitButton"}},
    {"cfg\\menu_options.cfg", {"backButton"}},
    {"cfg\\menu_highScores.cfg", {"backButton"}},
    {"cfg\\menu_instructions.cfg", {"backButton"}},
    {"cfg\\menu_credits.cfg", {"backButton"}},
    {"cfg\\menu_quitGame.cfg", {"yesButton", "noButton"}},
    {"cfg\\menu_restart.cfg", {"yesButton", "noButton"}},
    {"cfg\\menu_loadMap.cfg", {"loadButton", "backButton"}},
    {"cfg\\menu_levelFinished.cfg", {"continueButton"}},
};

bool overlap(const Box& a, const Box& b) {
    return a.x < b.x + b.w && b.x < a.x + a.w && a.y < b.y + b.h && b.y < a.y + a.h;
}

// Values that name a file: a folder, a backslash and an extension.
bool namesFile(const std::string& value) {
    return value.find('\\') != std::string::npos && value.find('.') != std::string::npos;
}

}  // namespace

TEST(BakedMenus, EveryScreenHasItsButtonsOnTheScreenWithoutOverlap) {
    WorkingFolder folder(bakedDataFolder());
    for (const auto& [file, buttons] : screens) {
        SCOPED_TRACE(file);
        ASSERT_TRUE(Platform::fileExists(file));
        const ConfigFile config(file.c_str());
        std::vector<Box> boxes;
        for (const std::string& button : buttons) {
            const Box box{config.getVarAsFloat(button + "_x"), config.getVarAsFloat(button + "_y"),
                          config.getVarAsFloat(button + "_w"), config.getVarAsFloat(button + "_h")};
            EXPECT_TRUE(box.w > 0 && box.h > 0 && box.x >= 0 && box.y >= 0 && box.x + box.w <= 800 &&
                        box.y + box.h <= 600)
                << button << " at " << box.x << " " << box.y << " size " << box.w << " " << box.h;
            for (const Box& other : boxes)
                EXPECT_FALSE(overlap(box, other)) << button << " overlaps another button";
            boxes.push_back(box);
        }
    }
}

TEST(BakedMenus, EveryFileAnyConfigurationNamesIsBaked) {
    WorkingFolder folder(bakedDataFolder());
    int names = 0;
    for (const std::string folderName : {"cfg", "fx"}) {
        for (const std::string& file : listFiles(bakedDataFolder() / folderName)) {
            const ConfigFile config((folderName + "\\" + file).c_str());
            for (const auto& [key, value] : config.variables()) {
                if (!namesFile(value)) continue;
                EXPECT_TRUE(Platform::fileExists(value)) << file << ": " << key << " names " << value;
                ++names;
            }
        }
    }
    EXPECT_GT(names, 100);
}
