// Levels written in the text form, compiled with rillc and played to a win by
// the headless runner from script lines, as a level designer would try them.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/test_support.h"

namespace fs = std::filesystem;

namespace {

fs::path binaryFolder() {
    if (const char* given = std::getenv("BROOKFALL_BINARY_DIR")) return given;
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path().parent_path();
}

fs::path sourceFolder() {
    const char* given = std::getenv("BROOKFALL_SOURCE_DIR");
    return given ? fs::path(given) : fs::path(".");
}

std::string readFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

std::string quoted(const fs::path& path) {
    return "'" + path.string() + "'";
}

// The number after "key": in a state line, or -1 if it isn't there.
double field(const std::string& state, const std::string& key, std::size_t from = 0) {
    const std::size_t at = state.find("\"" + key + "\":", from);
    return at == std::string::npos ? -1.0 : std::atof(state.c_str() + at + key.size() + 3);
}

// A field of the state's score object.
double scoreField(const std::string& state, const std::string& key) {
    return field(state, key, state.find("\"score\":{"));
}

// A long floor between two walls; the water is poured in at its left end.
const char* const trough =
    "water 0 30\ncamera 0 0\n"
    "polygon\n  -200 60, 700 60, 700 120, -200 120\nend\n"
    "polygon\n  -240 -300, -200 -300, -200 120, -240 120\nend\n"
    "polygon\n  700 -300, 740 -300, 740 120, 700 120\nend\n";

class ScriptedWinTest : public ::testing::Test {
protected:
    void SetUp() override {
        runner = binaryFolder() / "brookfall-headless";
        compiler = binaryFolder() / "rillc";
        if (!fs::exists(runner) || !fs::exists(compiler)) GTEST_SKIP() << "the runner or rillc is not built";
        for (const char* name : {"water.cfg", "camera.cfg", "game.cfg", "surfaces.cfg"})
            folder.write(std::string("cfg/") + name, readFile(sourceFolder() / "data" / "cfg" / name));
    }

    // Compiles the level, plays the script on it, and returns the state lines it printed.
    std::vector<std::string> play(const std::string& levelText, const std::string& script) {
        folder.write("play.level", levelText);
        folder.write("play.script", script);
        fs::create_directories(folder.path() / "maps");
        const std::string compile = quoted(compiler) + " compile " + quoted(folder.path() / "play.level") +
                                    " " + quoted(folder.path() / "maps" / "play.rill") + " > /dev/null 2>&1";
        EXPECT_EQ(std::system(compile.c_str()), 0);
        const fs::path output = folder.path() / "play.out";
        const std::string run = quoted(runner) + " --data " + quoted(folder.path()) + " 'maps\\play.rill' " +
                                quoted(folder.path() / "play.script") + " > " + quoted(output) + " 2>&1";
        EXPECT_EQ(std::system(run.c_str()), 0) << readFile(output);
        std::istringstream lines(readFile(output));
        std::vector<std::string> states;
        for (std::string line; std::getline(lines, line);)
            if (!line.empty() && line[0] == '{') states.push_back(line);
        return states;
    }

    static void expectWon(const std::string& state) {
        EXPECT_NE(state.find("\"finished\":true"), std::string::npos) << state;
        EXPECT_GT(field(state, "level_ms"), 0.0) << state;
        EXPECT_EQ(scoreField(state, "total"), scoreField(state, "water") + scoreField(state, "time"))
            << state;
        EXPECT_LE(scoreField(state, "total"), 500000.0);
    }

    ScratchFolder folder;
    fs::path runner, compiler;
};

}  // namespace

TEST_F(ScriptedWinTest, WaterTiltedIntoTheEndWins) {
    const auto states = play(std::string(trough) + "trigger type Level_end_a rect 450 -100 700 60\n",
                             ":step 60\n:state\n:tilt -40\n:step 900\n:state\n");
    ASSERT_EQ(states.size(), 2u);
    EXPECT_NE(states[0].find("\"finished\":false"), std::string::npos) << states[0];
    expectWon(states[1]);
    EXPECT_EQ(scoreField(states[1], "total"), 500000.0) << states[1];
}

TEST_F(ScriptedWinTest, WaterFrozenByAnIceAreaAndMeltedOnTheWayWins) {
    const auto states = play(std::string(trough) +
                                 "trigger type To_ice_a rect -200 -100 60 60\n"
                                 "trigger type To_water_a rect 250 -100 450 60\n"
                                 "trigger type Level_end_a rect 500 -100 700 60\n",
                             ":step 150\n:state\n:tilt -40\n:step 1500\n:state\n");
    ASSERT_EQ(states.size(), 2u);
    EXPECT_GT(field(states[0], "ice_particles"), 64.0) << states[0];
    expectWon(states[1]);
    EXPECT_GT(field(states[1], "water"), 0.0) << states[1];
}

TEST_F(ScriptedWinTest, WaterRidingAMoverWins) {
    const auto states = play(std::string(trough) +
                                 "polygon id 5\n  -150 50, 50 50, 50 60, -150 60\nend\n"
                                 "mover id 5 speed 60 from 0 0 to 550 0\n"
                                 "trigger type Mover_goto_end_a target 5 rect -200 -100 100 50\n"
                                 "trigger type Level_end_a rect 500 -100 700 60\n",
                             ":step 1200\nMoverCount\n:state\n");
    ASSERT_EQ(states.size(), 1u);
    expectWon(states[0]);
}

TEST_F(ScriptedWinTest, WaterPushedByAForceWins) {
    const auto states = play(std::string(trough) +
                                 "force id 8 at 0 0 direction 1 0 strength 40\n"
                                 "trigger type Force_directional_a target 8 rect -200 -100 450 60\n"
                                 "trigger type Level_end_a rect 500 -100 700 60\n",
                             ":step 600\n:state\n");
    ASSERT_EQ(states.size(), 1u);
    expectWon(states[0]);
}
