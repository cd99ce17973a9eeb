// The configuration the game ships: every key the game reads is there, no
// stray word of a note has turned into a key, and the values are ones the
// game accepts without clamping them into something else.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "foundation/foundation.h"
#include "platform/platform.h"
#include "support/content_support.h"

namespace {

std::set<std::string> upperCased(std::initializer_list<const char*> keys) {
    std::set<std::string> result;
    for (const char* key : keys) {
        std::string k = key;
        slStringUpper(k);
        result.insert(k);
    }
    return result;
}

std::set<std::string> keysOf(const ConfigFile& config) {
    std::set<std::string> keys;
    for (const auto& entry : config.variables()) keys.insert(entry.first);
    return keys;
}

const char* colourSuffixes[] = {"_r", "_g", "_b", "_a"};

void addColour(std::set<std::string>& keys, const std::string& stem, int channels) {
    for (int i = 0; i < channels; ++i) {
        std::string key = stem + colourSuffixes[i];
        slStringUpper(key);
        keys.insert(key);
    }
}

std::set<std::string> waterKeys() {
    std::set<std::string> keys = upperCased({"gravity",
                                             "roomTemperature",
                                             "heatTransferRate",
                                             "steamRiseRate",
                                             "steamScatterRate",
                                             "particleKillTime",
                                             "particleGroupInterpolation",
                                             "groupExpandSpeed",
                                             "iceGravityStrenght",
                                             "triggerTemperatureChangeSpeed",
                                             "triggerTemperatureChangeAmountIce",
                                             "triggerTemperatureChangeAmountSteam",
                                             "waterTexture",
                                             "steamTexture",
                                             "iceTexture",
                                             "water_outline_size",
                                             "steam_outline_size",
                                             "ice_outline_size",
                                             "steamExpansion",
                                             "iceExpansion",
                                             "velocityExpansion",
                                             "maxVelocityExpansion"});
    for (const char* kind : {"water", "steam", "ice"}) {
        addColour(keys, std::string(kind) + "_color", 4);
        addColour(keys, std::string(kind) + "_outline_color", 4);
    }
    return keys;
}

std::set<std::string> consoleKeys() {
    std::set<std::string> keys = upperCased({"fontTextureName", "fontSize", "enableLogging"});
    addColour(keys, "output_background", 4);
    addColour(keys, "output_text", 3);
    addColour(keys, "input_background", 3);
    addColour(keys, "input_border", 3);
    addColour(keys, "input_text", 3);
    return keys;
}

class BakedConfig : public ::testing::Test {
protected:
    WorkingFolder folder{bakedDataFolder()};

    ConfigFile load(const char* name) {
        EXPECT_TRUE(Platform::fileExists(name)) << name;
        return ConfigFile(name);
    }
};

// Names of pictures that a file names must reach a baked file.
void expectPictureExists(const ConfigFile& config, const char* key) {
    const std::string name = config.getVarAsString(key);
    EXPECT_TRUE(Platform::fileExists(name)) << key << " names " << name;
}

void expectNumbers(const ConfigFile& config, const std::set<std::string>& except) {
    for (const auto& [key, value] : config.variables()) {
        if (except.count(key)) continue;
        EXPECT_TRUE(slStringIsNumeric(value)) << key << " = " << value;
    }
}

}  // namespace

TEST_F(BakedConfig, WaterHasExactlyTheKeysTheGameReads) {
    const ConfigFile config = load("cfg\\water.cfg");
    EXPECT_EQ(keysOf(config), waterKeys());
    expectNumbers(config, upperCased({"waterTexture", "steamTexture", "iceTexture"}));
    for (const char* key : {"waterTexture", "steamTexture", "iceTexture"}) expectPictureExists(config, key);
}

TEST_F(BakedConfig, WaterBehavesLikeWater) {
    const ConfigFile config = load("cfg\\water.cfg");
    EXPECT_GT(config.getVarAsFloat("gravity"), 0.0f);
    const float room = config.getVarAsFloat("roomTemperature");
    EXPECT_GT(room, 0.0f) << "room temperature must keep water liquid";
    EXPECT_LT(room, 100.0f) << "room temperature must keep water liquid";
    const float rate = config.getVarAsFloat("heatTransferRate");
    EXPECT_GT(rate, 0.0f);
    EXPECT_LT(rate, 1.0f);
    EXPECT_GT(config.getVarAsFloat("steamRiseRate"), 0.0f) << "steam must rise";
    EXPECT_GT(config.getVarAsFloat("triggerTemperatureChangeAmountSteam"), 100.0f)
        << "steam areas must make steam";
    EXPECT_GT(config.getVarAsFloat("triggerTemperatureChangeAmountIce"), 0.0f) << "ice areas must freeze";
    EXPECT_GT(config.getVarAsFloat("triggerTemperatureChangeSpeed"), 0.0f);
    for (const char* key : {"particleGroupInterpolation", "groupExpandSpeed"}) {
        EXPECT_GT(config.getVarAsFloat(key), 0.0f) << key;
        EXPECT_LT(config.getVarAsFloat(key), 1.0f) << key;
    }
    for (const char* kind : {"water", "steam", "ice"})
        EXPECT_GT(config.getVarAsFloat(std::string(kind) + "_color_a"), 0.0f) << kind << " must be visible";
}

TEST_F(BakedConfig, CameraHasExactlyTheKeysTheGameReadsWithinTheirRanges) {
    const ConfigFile config = load("cfg\\camera.cfg");
    EXPECT_EQ(keysOf(config),
              upperCased({"rotationSmooth", "movementInterpolateSpeed", "maxAngle", "keyboardTurnSpeed",
                          "mouseTurnSpeed", "zoomSpeed", "zoomWait", "waypointInterpolateSpeed",
                          "waypointInterpolateDistance", "shakeTime", "shakeStrenght", "shakeSpeed"}));
    expectNumbers(config, {});
    for (const char* key : {"rotationSmooth", "movementInterpolateSpeed", "waypointInterpolateSpeed"}) {
        EXPECT_GT(config.getVarAsFloat(key), 0.0f) << key << " would make the camera jump";
        EXPECT_LT(config.getVarAsFloat(key), 0.99f) << key << " would make the camera stand still";
    }
    EXPECT_GT(config.getVarAsFloat("maxAngle"), 0.0f);
    EXPECT_LE(config.getVarAsFloat("maxAngle"), 180.0f);
    EXPECT_GT(config.getVarAsFloat("keyboardTurnSpeed"), 0.0f);
    EXPECT_GT(config.getVarAsFloat("waypointInterpolateDistance"), 0.0f)
        << "the glide to the water would never end";
}

TEST_F(BakedConfig, GameHasTheKeysOfTheLoopTheRulesAndTheScores) {
    const ConfigFile config = load("cfg\\game.cfg");
    EXPECT_EQ(keysOf(config),
              upperCased({"background_r", "background_g", "background_b", "music", "cursor", "font",
                          "finishAnimationTime", "finishWaterVolume", "finishAnimationFrames",
                          "finishAnimationFrameRate", "finishSound", "deadSound", "highScoreSound"}));
    expectPictureExists(config, "cursor");
    expectPictureExists(config, "font");
    expectPictureExists(config, "finishAnimationFrames");
    const float share = config.getVarAsFloat("finishWaterVolume");
    EXPECT_GT(share, 0.0f);
    EXPECT_LE(share, 1.0f);
    EXPECT_GE(config.getVarAsFloat("finishAnimationTime"), 0.001f);
    EXPECT_GT(config.getVarAsFloat("finishAnimationFrameRate"), 0.0f);
}

TEST_F(BakedConfig, SurfacesGiveEachTypeAFrictionBetweenZeroAndOne) {
    const ConfigFile config = load("cfg\\surfaces.cfg");
    EXPECT_EQ(keysOf(config),
              upperCased({"surfaceFriction_metal", "surfaceFriction_wood", "surfaceFriction_stone",
                          "surfaceFriction_cloth", "surfaceFriction_sand"}));
    for (const auto& [key, value] : config.variables()) {
        ASSERT_TRUE(slStringIsNumeric(value)) << key;
        EXPECT_GT(config.getVarAsFloat(key), 0.0f) << key;
        EXPECT_LE(config.getVarAsFloat(key), 1.0f) << key;
    }
    EXPECT_GT(config.getVarAsFloat("surfaceFriction_metal"), config.getVarAsFloat("surfaceFriction_sand"))
        << "metal must be slicker than sand";
}

TEST_F(BakedConfig, AnimationRunsAtAPositiveFrameRate) {
    const ConfigFile config = load("cfg\\animation.cfg");
    EXPECT_EQ(keysOf(config), upperCased({"animationSpeeds"}));
    EXPECT_GT(config.getVarAsFloat("animationSpeeds"), 0.0f);
}

TEST_F(BakedConfig, ConsoleHasItsFontColoursAndLogSwitch) {
    const ConfigFile config = load("cfg//console.cfg");
    EXPECT_EQ(keysOf(config), consoleKeys());
    expectNumbers(config, upperCased({"fontTextureName", "enableLogging"}));
    expectPictureExists(config, "fontTextureName");
    EXPECT_GE(config.getVarAsInt("fontSize"), 8) << "the console must be readable";
    EXPECT_TRUE(slStringIsBoolean(config.getVarAsString("enableLogging")));
    EXPECT_GT(config.getVarAsFloat("output_text_r") + config.getVarAsFloat("output_text_g") +
                  config.getVarAsFloat("output_text_b"),
              1.5f)
        << "text must stand out against the dark panel";
}

TEST_F(BakedConfig, CheckPointsShowTheirSplitsReadably) {
    const ConfigFile config = load("cfg\\checkPoints.cfg");
    std::set<std::string> keys = upperCased({"font", "fontSize", "y_position", "fadeTime"});
    addColour(keys, "fontColor", 4);
    addColour(keys, "slowerFontColor", 4);
    addColour(keys, "fasterFontColor", 4);
    EXPECT_EQ(keysOf(config), keys);
    expectNumbers(config, upperCased({"font"}));
    expectPictureExists(config, "font");
    EXPECT_GE(config.getVarAsFloat("fadeTime"), 0.01f);
    EXPECT_GT(config.getVarAsFloat("fontSize"), 8.0f);
    const float y = config.getVarAsFloat("y_position");
    EXPECT_GE(y, 0.0f);
    EXPECT_LE(y + config.getVarAsFloat("fontSize"), 600.0f) << "the split must stand on the screen";
}

TEST_F(BakedConfig, SplashShowsItsWholeBackdropAndAMovingDrop) {
    const ConfigFile config = load("cfg\\splashScreen.cfg");
    EXPECT_EQ(keysOf(config),
              upperCased({"splashBackground", "splashBackgroundW", "splashBackgroundH", "splashAnimation",
                          "splashAnimationX", "splashAnimationY", "splashAnimationSpeed"}));
    expectNumbers(config, upperCased({"splashBackground", "splashAnimation"}));
    expectPictureExists(config, "splashBackground");
    expectPictureExists(config, "splashAnimation");
    const TgaPicture background =
        readTga(readBytes(Platform::resolvePath(config.getVarAsString("splashBackground"))));
    ASSERT_TRUE(background.ok()) << background.error;
    EXPECT_EQ(config.getVarAsFloat("splashBackgroundW"), background.width) << "the backdrop is shown whole";
    EXPECT_EQ(config.getVarAsFloat("splashBackgroundH"), background.height) << "the backdrop is shown whole";
    EXPECT_GT(config.getVarAsFloat("splashAnimationSpeed"), 0.0f);
    for (const char* key : {"splashAnimationX", "splashAnimationY"})
        EXPECT_GE(config.getVarAsFloat(key), 0.0f) << key;
    EXPECT_LE(config.getVarAsFloat("splashAnimationX"), 800.0f);
    EXPECT_LE(config.getVarAsFloat("splashAnimationY"), 600.0f);
}

TEST_F(BakedConfig, SoundEffectsHaveEveryKeyOfTheWaterIceAndSteam) {
    const ConfigFile config = load("cfg\\game_sfx.cfg");
    std::set<std::string> keys = upperCased(
        {"waterSound_ambient_volume", "waterSound_ambient", "ice_frictionChangeRate", "ice_frictionSpeed",
         "ice_freezeEffectSpeed", "ice_freezeVolume", "ice_freezeVolumeFadeRate", "iceSound_freeze",
         "iceSound_friction", "steamEvaporate", "steamAmbient"});
    auto addUpper = [&keys](std::string key) {
        slStringUpper(key);
        keys.insert(key);
    };
    for (const std::string kind : {"water", "ice"}) {
        for (const char* tail :
             {"_disturbance_level1_speed", "_disturbance_level2_speed", "_disturbance_level3_speed",
              "_disturbance_randomness_pitch", "_disturbance_randomness_volume"})
            addUpper(kind + tail);
        for (int level = 1; level <= 3; ++level)
            for (int take = 1; take <= 4; ++take)
                addUpper(kind + "Sound_disturbance_level_" + std::to_string(level) + "_" +
                         std::to_string(take));
    }
    EXPECT_EQ(keysOf(config), keys);
    for (const std::string kind : {"water", "ice"}) {
        const float one = config.getVarAsFloat(kind + "_disturbance_level1_speed");
        const float two = config.getVarAsFloat(kind + "_disturbance_level2_speed");
        const float three = config.getVarAsFloat(kind + "_disturbance_level3_speed");
        EXPECT_GT(one, 0.0f) << kind << ": water at rest must be quiet";
        EXPECT_LT(one, two) << kind;
        EXPECT_LT(two, three) << kind;
    }
    for (const char* key : {"ice_frictionChangeRate", "ice_freezeEffectSpeed", "ice_freezeVolumeFadeRate"}) {
        EXPECT_GT(config.getVarAsFloat(key), 0.0f) << key;
        EXPECT_LT(config.getVarAsFloat(key), 1.0f) << key;
    }
}
