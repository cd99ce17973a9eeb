// Absurd values in small levels played through the game's own step with the
// shipped settings.
#include <gtest/gtest.h>

#include <cstdlib>

#include "console/console.h"
#include "dynamics/dynamics.h"
#include "game/game.h"
#include "level_tools/level_tools.h"
#include "platform/platform.h"
#include "support/content_support.h"
#include "support/level_fixtures.h"
#include "water/water.h"

namespace {

constexpr float step = 0.013333334f;

std::string shippedConfig(const std::string& name) {
    const char* source = std::getenv("BROOKFALL_SOURCE_DIR");
    return readBytes(std::filesystem::path(source ? source : ".") / "data" / "cfg" / name);
}

// A long floor between two walls, the water poured in at its left end and the
// level's end at its right.
const std::string trough =
    "water 0 30\ncamera 0 0\npolygon\n-200 60\n700 60\n700 120\n-200 120\nend\n"
    "polygon\n-240 -300\n-200 -300\n-200 120\n-240 120\nend\n"
    "polygon\n700 -300\n740 -300\n740 120\n700 120\nend\ntrigger type 801 rect 500 -100 700 60\n";

// Force 8 pushes and pulls the water over the whole floor.
const std::string forceOnTheFloor =
    "force id 8 direction 1 0 strength 1\n"
    "trigger type 200 target 8 rect -200 -100 450 60\ntrigger type 202 target 8 rect -200 -100 450 60\n";

class LevelPlayTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"water.cfg", "camera.cfg", "game.cfg"})
            folder.write(std::string("cfg/") + name, shippedConfig(name));
        GLWindow::Headless::setClientSize(800, 600);
        setRandomSeed(3);
    }
    void TearDown() override { Game::shutdown(); }

    void play(const LevelFile& level) {
        folder.write("maps/play.rill", LevelFileFormat::write(level));
        Game::initialise("maps\\play.rill");
        Game::startPlaying();
        Camera::setState(Camera::following);
    }

    void steps(int count) {
        for (int i = 0; i < count; ++i) {
            Platform::advanceClock(static_cast<uint64_t>(step * 1e6f));
            Game::runFrame(step);
        }
    }

    ScratchFolder folder;
    ManualClock clock;
    ConsoleCapture console;
};

// Absurd values in a level or on the console must neither freeze the game nor
// strand it: within a second of play the view is still a place, and a restart
// brings the water back.
// A name, records added to the trough, the strength and x direction of force 8
// where there is one, and a line typed on the console.
using AbsurdCase = std::tuple<const char*, std::string, float, float, const char*>;

class AbsurdInputTest : public LevelPlayTest, public ::testing::WithParamInterface<AbsurdCase> {};

TEST_P(AbsurdInputTest, TheGameGoesOnAndTheLevelCanBeRestarted) {
    const auto& [name, records, forceStrength, forceDirectionX, consoleLine] = GetParam();
    LevelFile level = levelFromText(trough + records);
    for (ForceRecord& force : level.forces) {
        force.strength = forceStrength;
        force.directionX = forceDirectionX;
    }
    play(level);
    steps(20);
    if (*consoleLine) GLConsole::enterLine(consoleLine);
    steps(75);
    EXPECT_TRUE(isFinite(Camera::getPosition()));
    for (const char* line : {"Gravity 1000", "Restart"}) GLConsole::enterLine(line);
    steps(2);
    EXPECT_EQ(GameRules::getParticleCount(), 128);
    steps(75);
    EXPECT_TRUE(isFinite(Camera::getPosition()));
}

INSTANTIATE_TEST_SUITE_P(EachCase, AbsurdInputTest,
                         ::testing::Values(
                             // A raft that comes home under the water from 30 million units away in one step.
                             AbsurdCase{"MoverFromFarAway",
                                        "polygon id 5\n-150 50\n50 50\n50 60\n-150 60\nend\n"
                                        "mover id 5 speed 2250000000 from 0 0 to 30000000 0\ntrigger type "
                                        "408 target 5 rect -200 -100 100 50\n",
                                        0, 0, ""},
                             AbsurdCase{"InfiniteForce", forceOnTheFloor, 1e38f, 1, ""},
                             AbsurdCase{"UndefinedForce", forceOnTheFloor, std::nanf(""), 1, ""},
                             AbsurdCase{"UndefinedDirection", forceOnTheFloor, 40, std::nanf(""), ""},
                             AbsurdCase{"IceFallingAtAbsurdSpeed", "trigger type 0 rect -200 -100 700 60\n",
                                        0, 0, "Gravity 100000000000000000"}),
                         [](const ::testing::TestParamInfo<AbsurdCase>& test) {
                             return std::string(std::get<0>(test.param));
                         });

}  // namespace
