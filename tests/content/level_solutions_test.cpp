// Every shipped level that has a solution script is replayed through the
// headless runner, and must still end with the water won through.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "support/content_support.h"
#include "support/level_fixtures.h"

namespace fs = std::filesystem;

namespace {

// The number after "key": in the runner's state line, or -1e9 if it isn't there.
double field(const std::string& state, const std::string& key) {
    const size_t at = state.find("\"" + key + "\":");
    if (at == std::string::npos) return -1e9;
    return std::atof(state.c_str() + at + key.size() + 3);
}

// A score this far below the best, 500,000, means water was lost on the way or
// the level took well over the 160 seconds that still score the best time.
constexpr double clearlyBelowBest = 480000;

// The camera follows the weighted middle of the water, so it stands where the
// water stands: within 20 units of the corners of a Level_end_a trigger (type 801).
bool cameraInEnd(const std::string& state, const LevelFile& level) {
    const double x = field(state, "x"), y = field(state, "y");
    for (const TriggerRecord& t : level.triggers) {
        const auto [left, right] =
            std::minmax({t.corners[0].x, t.corners[1].x, t.corners[2].x, t.corners[3].x});
        const auto [top, bottom] =
            std::minmax({t.corners[0].y, t.corners[1].y, t.corners[2].y, t.corners[3].y});
        if (t.type == 801 && x >= left - 20 && x <= right + 20 && y >= top - 20 && y <= bottom + 20)
            return true;
    }
    return false;
}

}  // namespace

TEST(LevelSolutions, EveryShippedLevelHasASolution) {
    for (const std::string& file : listFiles(sourceDataFolder() / "maps")) {
        if (fs::path(file).extension() != ".level") continue;
        const std::string name = fs::path(file).stem().string();
        EXPECT_TRUE(fs::is_regular_file(sourceDataFolder() / "solutions" / (name + ".script"))) << name;
    }
}

TEST(LevelSolutions, EverySolutionStillWinsItsLevel) {
    if (!fs::exists(levelRunner())) GTEST_SKIP() << "the headless runner is not built";
    int replayed = 0, lowScoreCount = 0;
    std::string lowScores;
    for (const std::string& file : listFiles(sourceDataFolder() / "solutions")) {
        const std::string name = fs::path(file).stem().string();
        SCOPED_TRACE(name);
        const ToolRun run =
            runTool(quoted(levelRunner()) + " --data " + quoted(bakedDataFolder()) + " 'maps\\" + name +
                    ".rill' " + quoted(sourceDataFolder() / "solutions" / file));
        ASSERT_EQ(run.exitCode, 0) << run.output;
        const std::vector<std::string> states = stateLines(run.output);
        ASSERT_FALSE(states.empty()) << "the script must end with :state";
        const std::string& state = states.back();
        const LevelFile level = levelFromText(readBytes(sourceDataFolder() / "maps" / (name + ".level")));
        EXPECT_GE(field(state, "particles"), 64) << state;
        EXPECT_TRUE(cameraInEnd(state, level)) << "the water ends outside the level's end: " << state;
        EXPECT_NE(state.find("\"finished\":true"), std::string::npos)
            << "the rules don't call it won: " << state;
        ++replayed;
        if (field(state, "total") <= clearlyBelowBest) {
            lowScores += " " + name;
            ++lowScoreCount;
        }
    }
    EXPECT_GE(replayed, 4);
    // The score must mean something: in at least half of the levels water is
    // lost or time runs on, so that a careful player scores more than a careless one.
    EXPECT_GE(2 * lowScoreCount, replayed)
        << "only these solutions score clearly below the best:" << lowScores;
}
