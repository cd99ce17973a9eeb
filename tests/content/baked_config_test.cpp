// The configuration the game ships. The game itself says which keys it reads:
// a whole start is played (console, menus, every shipped level, the splash's
// picture, the name screen) and each configuration file must then hold exactly
// the keys that were asked of it, no fewer and no stray word of a note more.
// Whether the values play as meant is for the shipped levels' solutions to show.
// Besides, every menu screen has its buttons laid out on the 800 by 600 screen
// without overlapping, and every file any configuration names is baked.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "console/console.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "level/level.h"
#include "menus/menus.h"
#include "menus/splash_picture.h"
#include "platform/platform.h"
#include "support/content_support.h"

namespace fs = std::filesystem;

namespace {

// Plays through everything that reads a configuration file, once.
void readEveryConfiguration() {
    GLConsole::initialise();
    SurfaceTypeManager::initialise();
    for (const std::string& file : listFiles(bakedDataFolder() / "maps")) {
        Game::initialise("maps\\" + fs::path(file).filename().string());
        Game::startPlaying();
    }
    SplashPicture().read();
    { const HighScores nameScreen(nullptr); }
    Game::shutdown();
    GLConsole::shutdown();
}

std::set<std::string> keysOf(const ConfigFile& config) {
    std::set<std::string> keys;
    for (const auto& entry : config.variables()) keys.insert(entry.first);
    return keys;
}

class BakedConfig : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        const WorkingFolder folder(bakedDataFolder());
        readEveryConfiguration();
    }
    WorkingFolder folder{bakedDataFolder()};
};

// A file name as the game may write it ("cfg\\x.cfg", "cfg//x.cfg"), in one form.
std::string gameName(const std::string& written) {
    std::string name;
    for (char c : written) {
        if (c == '/') c = '\\';
        if (c != '\\' || name.empty() || name.back() != '\\') name += c;
    }
    slStringUpper(name);
    return name;
}

}  // namespace

TEST_F(BakedConfig, EveryFileHoldsExactlyTheKeysTheGameAsks) {
    std::map<std::string, std::set<std::string>> asked;
    for (const auto& [file, keys] : ConfigFile::keysAsked())
        asked[gameName(file)].insert(keys.begin(), keys.end());
    for (const char* folderName : {"cfg", "fx"}) {
        for (const std::string& file : listFiles(bakedDataFolder() / folderName)) {
            const std::string name = gameName(std::string(folderName) + "/" + file);
            SCOPED_TRACE(name);
            const auto found = asked.find(name);
            ASSERT_NE(found, asked.end()) << "the game never reads it";
            const std::set<std::string> held = keysOf(ConfigFile(name.c_str()));
            for (const std::string& key : held)
                EXPECT_TRUE(found->second.count(key)) << key << " is never read";
            // Emitter settings name as many textures as they have; the game tries up to eight.
            if (std::string(folderName) == "cfg") {
                EXPECT_EQ(held, found->second);
            }
        }
    }
}

TEST_F(BakedConfig, TheSplashShowsItsWholeBackdrop) {
    const ConfigFile config("cfg\\splashScreen.cfg");
    const TgaPicture background =
        readTga(readBytes(Platform::resolvePath(config.getVarAsString("splashBackground"))));
    ASSERT_TRUE(background.ok()) << background.error;
    EXPECT_EQ(config.getVarAsFloat("splashBackgroundW"), background.width);
    EXPECT_EQ(config.getVarAsFloat("splashBackgroundH"), background.height);
}

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
