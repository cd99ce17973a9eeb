// Every shipped level that has a solution script is replayed through the
// headless runner, and must still end with the water won through.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "content/level_source.h"
#include "support/content_support.h"
#include "support/test_support.h"

namespace fs = std::filesystem;

namespace {

fs::path sourceFolder() {
    return fs::path(std::getenv("BROOKFALL_SOURCE_DIR")) / "data";
}

// The number after "key": in the runner's state line, or -1e9 if it isn't there.
double field(const std::string& state, const std::string& key) {
    const size_t at = state.find("\"" + key + "\":");
    if (at == std::string::npos) return -1e9;
    return std::atof(state.c_str() + at + key.size() + 3);
}

std::string lastStateLine(const std::string& output) {
    std::istringstream lines(output);
    std::string line, last;
    while (std::getline(lines, line))
        if (!line.empty() && line[0] == '{') last = line;
    return last;
}

// A score this far below the best, 500,000, means water was lost on the way or
// the level took well over the 160 seconds that still score the best time.
constexpr double clearlyBelowBest = 480000;

// The camera follows the weighted middle of the water, so it stands where the water stands.
bool cameraInEnd(const std::string& state, const LevelSource& level) {
    const double x = field(state, "x"), y = field(state, "y");
    for (const TriggerArea& t : level.triggers)
        if (t.type == "Level_end_a" && x >= t.left - 20 && x <= t.right + 20 && y >= t.top - 20 &&
            y <= t.bottom + 20)
            return true;
    return false;
}

}  // namespace

TEST(LevelSolutions, EveryShippedLevelHasASolution) {
    for (const std::string& file : listFiles(sourceFolder() / "maps")) {
        if (fs::path(file).extension() != ".level") continue;
        const std::string name = fs::path(file).stem().string();
        EXPECT_TRUE(fs::is_regular_file(sourceFolder() / "solutions" / (name + ".script"))) << name;
    }
}

TEST(LevelSolutions, EverySolutionStillWinsItsLevel) {
    if (!fs::exists(levelRunner())) GTEST_SKIP() << "the headless runner is not built";
    ScratchFolder scratch;
    int replayed = 0;
    std::string lowScores;
    int lowScoreCount = 0;
    for (const std::string& file : listFiles(sourceFolder() / "solutions")) {
        const std::string name = fs::path(file).stem().string();
        SCOPED_TRACE(name);
        const fs::path output = scratch.path() / (name + ".out");
        const std::string command =
            quoted(levelRunner()) + " --data " + quoted(bakedDataFolder()) + " 'maps\\" + name + ".rill' " +
            quoted(sourceFolder() / "solutions" / file) + " > " + quoted(output) + " 2>&1";
        ASSERT_EQ(runCommand(command), 0) << readBytes(output);
        const std::string state = lastStateLine(readBytes(output));
        ASSERT_FALSE(state.empty()) << "the script must end with :state";
        const LevelSource level = readLevelSource(readBytes(sourceFolder() / "maps" / (name + ".level")));
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
