// The rules of a level: the share of water in the end at one moment, the
// scores, the timer, and the water given back at the check point.

#include "console/console.h"
#include "game/game_state.h"
#include "support/dynamics_fixture.h"

namespace {

class GameRulesTest : public DynamicsTest {
protected:
    void SetUp() override {
        DynamicsTest::SetUp();
        folder.write("cfg/game.cfg", "finishWaterVolume = 0.5\nfinishAnimationTime = 2\n");
        GameRules::initialise();
        Camera::setState(Camera::following);
    }

    static void fillWater(int count) {
        ParticleManager::getParticles().clear();
        for (int i = 0; i < count; ++i) addParticle(Vector2D());
    }

    ManualClock clock;
};

}  // namespace

// The water in the end is counted step by step; a level is won when one step's
// count reaches the share of the water, and at least one particle.
TEST_F(GameRulesTest, TheShareOfWaterInTheEndAtOneMomentWins) {
    // Settings (null: the file of the fixture), water, the counts one a step, won.
    const std::tuple<const char*, int, std::vector<int>, bool> cases[] = {
        {nullptr, 40, {19}, false},       {nullptr, 40, {19, 1}, false},  // 19 and 1 in two steps are not 20
        {nullptr, 40, {19, 1, 20}, true}, {nullptr, 1, {0}, false},
        {nullptr, 1, {0, 1}, true},       {"", 100, {1}, true},  // without settings one particle wins
    };
    for (const auto& [settings, water, counts, won] : cases) {
        if (settings) folder.write("cfg/game.cfg", settings);
        GameRules::initialise();
        fillWater(water);
        for (int count : counts) {
            GameRules::incrementEndOfLevelTriggerParticleCount(count);
            GameRules::update(0.0001f);
        }
        EXPECT_EQ(GameRules::levelIsWon(), won) << water << " particles, " << counts.size() << " steps";
    }
    // Without settings the finish takes no time.
    GameRules::update(0.01f);
    EXPECT_TRUE(GameRules::gameIsFinished());
}

TEST_F(GameRulesTest, TheFinishStopsTheClockAndSoDoTheCameraGlideAndAPause) {
    fillWater(10);
    clock.advanceMilliseconds(1000);
    GameRules::update(0.5f);
    EXPECT_EQ(GameRules::getLevelTime(), 1000u);
    GameRules::incrementEndOfLevelTriggerParticleCount(5);
    GameRules::update(0.5f);
    ASSERT_TRUE(GameRules::levelIsWon());
    clock.advanceMilliseconds(1000);
    GameRules::update(1.0f);
    EXPECT_FALSE(GameRules::gameIsFinished());
    GameRules::update(1.0f);
    EXPECT_EQ(std::tuple(GameRules::gameIsFinished(), GameRules::getLevelTime()), std::tuple(true, 1000u));
    GameRules::initialise();
    clock.advanceMilliseconds(500);
    GameRules::update(0.01f);
    Camera::setState(Camera::movingToWaypoint);
    clock.advanceMilliseconds(700);
    GameRules::update(0.01f);
    Camera::setState(Camera::following);
    clock.advanceMilliseconds(300);
    GameRules::unpauseLevelTimer();
    clock.advanceMilliseconds(200);
    GameRules::update(0.01f);
    EXPECT_EQ(GameRules::getLevelTime(), 700u);
}

TEST_F(GameRulesTest, AllWaterLostComesBackAtTheStartOrTheLastCheckPoint) {
    ParticleManager::getParticles().clear();
    GameRules::update(0.01f);
    EXPECT_EQ(ParticleManager::getParticles().size(), 128u);
    EXPECT_EQ(Camera::getState(), Camera::movingToWaypoint);
    for (const Particle& particle : ParticleManager::getParticles())
        EXPECT_LE(length(particle.position - Level::getWaterStart()), 10.001f);
    fillWater(50);
    GameRules::setCheckPoint(300, 400);
    ParticleManager::getParticles().clear();
    GameRules::update(0.01f);
    EXPECT_EQ(ParticleManager::getParticles().size(), 50u);
    for (const Particle& particle : ParticleManager::getParticles())
        EXPECT_LE(length(particle.position - Vector2D(300, 400)), 10.001f);
}

TEST_F(GameRulesTest, TimePrintShowsTheLevelTimeEachFrame) {
    fillWater(10);
    clock.advanceMilliseconds(3723450);
    GameRules::update(0.01f);
    GLConsole::enterLine("TimePrint true");
    console.take();
    GameRules::draw();
    EXPECT_EQ(console.take(), "\n1:: 2::  3.  45");
    GameRules::initialise();
    EXPECT_FALSE(GameRules::state().timePrint);
}
