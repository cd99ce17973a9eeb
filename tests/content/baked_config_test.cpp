// The configuration the game ships. The game itself says which keys it reads:
// a whole start is played (console, menus, every shipped level, the splash's
// picture, the name screen) and each configuration file must then hold exactly
// the keys that were asked of it, no fewer and no stray word of a note more.
// Values are then held to the ranges in which the game behaves as meant.
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

struct Range {
    const char* file;
    const char* key;
    float low, high;
    const char* why;
};

const Range ranges[] = {
    {"cfg\\water.cfg", "gravity", 1.0f, 1e6f, "water must fall"},
    {"cfg\\water.cfg", "roomTemperature", 1.0f, 99.0f, "room temperature must keep water liquid"},
    {"cfg\\water.cfg", "heatTransferRate", 0.001f, 0.999f, "heat must pass, and not at once"},
    {"cfg\\water.cfg", "steamRiseRate", 0.001f, 1e6f, "steam must rise"},
    {"cfg\\water.cfg", "triggerTemperatureChangeAmountSteam", 100.001f, 1e6f, "steam areas must make steam"},
    {"cfg\\water.cfg", "triggerTemperatureChangeAmountIce", 0.001f, 1e6f, "ice areas must freeze"},
    {"cfg\\water.cfg", "triggerTemperatureChangeSpeed", 0.001f, 1e6f, "areas must change temperature"},
    {"cfg\\water.cfg", "particleGroupInterpolation", 0.001f, 0.999f, "ice members must follow their body"},
    {"cfg\\water.cfg", "groupExpandSpeed", 0.001f, 0.999f, "ice bodies must grow to their size"},
    {"cfg\\water.cfg", "water_color_a", 0.1f, 1.0f, "water must be visible"},
    {"cfg\\water.cfg", "steam_color_a", 0.1f, 1.0f, "steam must be visible"},
    {"cfg\\water.cfg", "ice_color_a", 0.1f, 1.0f, "ice must be visible"},
    {"cfg\\camera.cfg", "rotationSmooth", 0.001f, 0.99f, "the camera must neither jump nor stand still"},
    {"cfg\\camera.cfg", "movementInterpolateSpeed", 0.001f, 0.99f,
     "the camera must neither jump nor stand still"},
    {"cfg\\camera.cfg", "waypointInterpolateSpeed", 0.001f, 0.99f,
     "the camera must neither jump nor stand still"},
    {"cfg\\camera.cfg", "maxAngle", 1.0f, 180.0f, "the world turns, at most upside down"},
    {"cfg\\camera.cfg", "keyboardTurnSpeed", 1.0f, 1e4f, "the keys must turn the world"},
    {"cfg\\camera.cfg", "waypointInterpolateDistance", 0.001f, 1e4f, "the glide to the water must end"},
    {"cfg\\game.cfg", "finishWaterVolume", 0.01f, 1.0f, "a share of the water must reach the end"},
    {"cfg\\game.cfg", "finishAnimationTime", 0.001f, 10.0f, "the finish must not drag on"},
    {"cfg\\game.cfg", "finishAnimationFrameRate", 1.0f, 100.0f, "the finish must move"},
    {"cfg\\surfaces.cfg", "surfaceFriction_metal", 0.01f, 1.0f, "friction is a share"},
    {"cfg\\surfaces.cfg", "surfaceFriction_sand", 0.01f, 0.99f, "sand must be rougher than metal"},
    {"cfg\\animation.cfg", "animationSpeeds", 1.0f, 100.0f, "sprites must move"},
    {"cfg\\console.cfg", "fontSize", 8.0f, 64.0f, "the console must be readable"},
    {"cfg\\checkPoints.cfg", "fadeTime", 0.01f, 10.0f, "a split must fade"},
    {"cfg\\checkPoints.cfg", "fontSize", 8.1f, 64.0f, "a split must be readable"},
    {"cfg\\checkPoints.cfg", "y_position", 0.0f, 536.0f, "the split must stand on the screen"},
    {"cfg\\splashScreen.cfg", "splashAnimationSpeed", 0.001f, 100.0f, "the splash must move"},
    {"cfg\\splashScreen.cfg", "splashAnimationX", 0.0f, 800.0f, "the drop stands on the screen"},
    {"cfg\\splashScreen.cfg", "splashAnimationY", 0.0f, 600.0f, "the drop stands on the screen"},
    {"cfg\\game_sfx.cfg", "ice_frictionChangeRate", 0.001f, 0.999f, "sounds must follow the ice"},
    {"cfg\\game_sfx.cfg", "ice_freezeEffectSpeed", 0.001f, 0.999f, "sounds must follow the ice"},
    {"cfg\\game_sfx.cfg", "ice_freezeVolumeFadeRate", 0.001f, 0.999f, "the crackle must fade"},
    {"cfg\\menu_general.cfg", "menuAnimationSpeeds", 1.0f, 100.0f, "buttons must move"},
    {"cfg\\menu_general.cfg", "menuFontColor_a", 0.5f, 1.0f, "menu text must be visible"},
    {"cfg\\menu_general.cfg", "timeDisplay_fontSize", 8.1f, 64.0f, "the time must be readable"},
};

TEST_F(BakedConfig, ValuesStandWhereTheGameBehavesAsMeant) {
    for (const Range& range : ranges) {
        const ConfigFile config(range.file);
        const std::string value = config.getVarAsString(range.key);
        EXPECT_TRUE(slStringIsNumeric(value)) << range.file << " " << range.key << " = " << value;
        const float number = config.getVarAsFloat(range.key);
        EXPECT_GE(number, range.low) << range.file << " " << range.key << ": " << range.why;
        EXPECT_LE(number, range.high) << range.file << " " << range.key << ": " << range.why;
    }
    const ConfigFile surfaces("cfg\\surfaces.cfg");
    EXPECT_GT(surfaces.getVarAsFloat("surfaceFriction_metal"), surfaces.getVarAsFloat("surfaceFriction_sand"))
        << "metal must be slicker than sand";
    const ConfigFile sounds("cfg\\game_sfx.cfg");
    for (const std::string kind : {"water", "ice"}) {
        const float one = sounds.getVarAsFloat(kind + "_disturbance_level1_speed");
        EXPECT_GT(one, 0.0f) << kind << ": water at rest must be quiet";
        EXPECT_LT(one, sounds.getVarAsFloat(kind + "_disturbance_level2_speed")) << kind;
        EXPECT_LT(sounds.getVarAsFloat(kind + "_disturbance_level2_speed"),
                  sounds.getVarAsFloat(kind + "_disturbance_level3_speed"))
            << kind;
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
