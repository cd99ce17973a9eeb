// The level compiler's check warns of nothing in the shipped levels, and
// together they use every kind of trigger.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "level_tools/level_text_names.h"
#include "support/content_support.h"
#include "support/level_fixtures.h"

namespace fs = std::filesystem;

namespace {

std::vector<std::string> levelNames() {
    std::vector<std::string> names;
    for (const std::string& file : listFiles(sourceDataFolder() / "maps"))
        if (fs::path(file).extension() == ".level") names.push_back(fs::path(file).stem().string());
    return names;
}

}  // namespace

// The build keeps what "rillc check" said of each level beside the baked data;
// among others it warns of every file a level names that the bake lacks.
TEST(ShippedLevels, TheCheckWarnsOfNothing) {
    if (!fs::exists(toolPath("rillc"))) GTEST_SKIP() << "the level compiler is not built";
    for (const std::string& name : levelNames()) {
        const fs::path said = toolPath("level-checks") / (name + ".txt");
        ASSERT_TRUE(fs::is_regular_file(said)) << name;
        EXPECT_EQ(readBytes(said).find("warning:"), std::string::npos) << name << ":\n" << readBytes(said);
    }
}

TEST(ShippedLevels, TogetherTheyUseTheTriggersOfWaterStateForcesMoversAndRules) {
    std::set<std::string> used;
    for (const std::string& name : levelNames())
        for (const TriggerRecord& t :
             levelFromText(readBytes(sourceDataFolder() / "maps" / (name + ".level"))).triggers)
            if (const char* type = LevelTextNames::nameOf(LevelTextNames::triggerTypes,
                                                          LevelTextNames::triggerTypeCount, t.type))
                used.insert(type);
    std::istringstream types(
        "To_ice_a To_water_a To_steam_a Anim_play_loop_1 Anim_play_once_1 Anim_stop_1 Sound_play_1 "
        "Sound_stop_1 Force_directional_a Force_instantenous_a Force_multi_dir_pull_a Force_multi_dir_push_a "
        "Entity_remove_1 Entity_add_1 Mover_goto_start_1 Mover_goto_end_1 Emitter_create_burst_1 "
        "Emitter_start_1 Emitter_stop_1 Camera_zoom_1 Camera_zoom_a Camera_shake_1 Camera_shake_a "
        "Particle_kill_a Particle_kill_random_a Level_end_a Checkpoint_1");
    for (std::string type; types >> type;) EXPECT_TRUE(used.count(type)) << type << " is in no level";
}
