// The configuration the game ships. The game itself says which keys it reads:
// a whole start is played (console, menus, every shipped level, the splash's
// picture, the name screen) and each configuration file must then hold exactly
// the keys that were asked of it, no fewer and no stray word of a note more.
// Whether the values play as meant is for the shipped levels' solutions to show.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

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
