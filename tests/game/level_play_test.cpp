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
#include "support/test_support.h"
#include "water/water.h"

namespace {

constexpr float step = 0.013333334f;

std::string shippedConfig(const std::string& name) {
    const char* source = std::getenv("BROOKFALL_SOURCE_DIR");
    return readBytes(std::filesystem::path(source ? source : ".") / "data" / "cfg" / name);
}

PolygonRecord box(int left, int top, int right, int bottom, int32_t id = 0) {
    PolygonRecord polygon;
    polygon.id = id;
    polygon.points = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
    return polygon;
}

TriggerRecord area(int32_t type, int left, int top, int right, int bottom, int32_t target = 0) {
    TriggerRecord trigger;
    trigger.type = type;
    trigger.targetId = target;
    trigger.corners[0] = {left, top};
    trigger.corners[1] = {right, top};
    trigger.corners[2] = {right, bottom};
    trigger.corners[3] = {left, bottom};
    return trigger;
}

// A long floor between two walls, the water poured in at its left end.
LevelFile trough() {
    LevelFile level;
    level.waterStart = {0, 30};
    level.cameraStart = {0, 0};
    level.polygons = {box(-200, 60, 700, 120), box(-240, -300, -200, 120), box(700, -300, 740, 120)};
    return level;
}

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
struct AbsurdCase {
    const char* name;
    void (*change)(LevelFile& level);
    const char* consoleLine;
};

void moverFromFarAway(LevelFile& level) {
    // A raft that comes home under the water from 30 million units away in one step.
    level.polygons.push_back(box(-150, 50, 50, 60, 5));
    MoverRecord mover;
    mover.id = 5;
    mover.speed = 2.25e9f;
    mover.start = {0, 0};
    mover.end = {30000000, 0};
    level.movers = {mover};
    level.triggers = {area(408, -200, -100, 100, 50, 5)};
}

void forceOf(LevelFile& level, float strength, float directionX) {
    ForceRecord force;
    force.id = 8;
    force.directionX = directionX;
    force.strength = strength;
    level.forces = {force};
    level.triggers = {area(200, -200, -100, 450, 60, 8), area(202, -200, -100, 450, 60, 8)};
}

class AbsurdInputTest : public LevelPlayTest, public ::testing::WithParamInterface<AbsurdCase> {};

TEST_P(AbsurdInputTest, TheGameGoesOnAndTheLevelCanBeRestarted) {
    LevelFile level = trough();
    GetParam().change(level);
    level.triggers.push_back(area(801, 500, -100, 700, 60));
    play(level);
    steps(20);
    if (*GetParam().consoleLine) GLConsole::enterLine(GetParam().consoleLine);
    steps(75);
    EXPECT_TRUE(isFinite(Camera::getPosition()));
    GLConsole::enterLine("Gravity 1000");
    GLConsole::enterLine("Restart");
    steps(2);
    EXPECT_EQ(GameRules::getParticleCount(), 128);
    steps(75);
    EXPECT_TRUE(isFinite(Camera::getPosition()));
}

INSTANTIATE_TEST_SUITE_P(
    EachCase, AbsurdInputTest,
    ::testing::Values(AbsurdCase{"MoverFromFarAway", moverFromFarAway, ""},
                      AbsurdCase{"InfiniteForce", [](LevelFile& l) { forceOf(l, 1e38f, 1.0f); }, ""},
                      AbsurdCase{"UndefinedForce", [](LevelFile& l) { forceOf(l, std::nanf(""), 1.0f); }, ""},
                      AbsurdCase{"UndefinedDirection", [](LevelFile& l) { forceOf(l, 40.0f, std::nanf("")); },
                                 ""},
                      AbsurdCase{"IceFallingAtAbsurdSpeed",
                                 [](LevelFile& l) { l.triggers = {area(0, -200, -100, 700, 60)}; },
                                 "Gravity 100000000000000000"}),
    [](const ::testing::TestParamInfo<AbsurdCase>& test) { return std::string(test.param.name); });

}  // namespace
