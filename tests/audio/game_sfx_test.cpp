// The sound of the water, the ice and the steam: what the behaviours count,
// which sample a loss of speed picks, how the loops follow the water, and that
// a step allocates nothing.
#include <cmath>

#include "audio/audio.h"
#include "audio/game_sfx_state.h"
#include "audio/listening.h"
#include "support/allocations/allocation_count.h"
#include "water/water.h"

using namespace Listening;

namespace {

// The shipped settings, with one speed written negative: the water's
// settings are taken as absolute values. Every sound is a tone.
const char* const settings = R"(
water_disturbance_level1_speed = -6
water_disturbance_level2_speed = 22
water_disturbance_level3_speed = 60
waterSound_ambient_volume = 0.45
ice_disturbance_level1_speed = 8
ice_frictionChangeRate = 0.05
ice_frictionSpeed = 0.004
ice_freezeEffectSpeed = 0.1
ice_freezeVolume = 0.02
ice_freezeVolumeFadeRate = 0.3
)";

class GameSfxTest : public AudioTest {
protected:
    void SetUp() override {
        AudioTest::SetUp();
        std::string config = settings;
        for (const char* key :
             {"waterSound_ambient", "iceSound_freeze", "iceSound_friction", "steamEvaporate", "steamAmbient"})
            config += std::string(key) + " = loop.wav\n";
        for (const char* bank : {"waterSound_disturbance_level_", "iceSound_disturbance_Level_"})
            for (int i = 0; i < 12; ++i)
                config += bank + std::to_string(i / 4 + 1) + "_" + std::to_string(i % 4 + 1) + " = hit.wav\n";
        write("cfg/game_sfx.cfg", config);
        write("loop.wav", waveFile(tone(1.0, 0.3)));
        write("hit.wav", waveFile(tone(0.5, 0.3)));
        ASSERT_TRUE(startSound());
        ParticleManager::initialise();
        GameSfx_Ice::initialise();
        GameSfx_Water::initialise();
        GameSfx_Steam::initialise();
    }
    void TearDown() override {
        ParticleManager::shutdown();
        AudioTest::TearDown();
    }
    static void makeWater(int count, float temperature, float speed = 0.0f) {
        ParticleManager::createParticles(0.0f, 0.0f, 10.0f, count);
        for (Particle& particle : ParticleManager::getParticles()) particle.temperature = temperature;
        setSpeed(speed);
    }
    static void setSpeed(float speed) {
        for (Particle& particle : ParticleManager::getParticles()) particle.velocity = Vector2D(speed, 0.0f);
    }
    static ParticleGroup& makeIce(int count, float speed, bool touching) {
        ParticleGroup& group = ParticleGroupMover::getGroups().emplace_back();
        group.particles.resize(static_cast<std::size_t>(count));
        group.velocity = Vector2D(0.0f, speed);
        group.touching = touching;
        return group;
    }
    // The levels (1 to 3) of the water's samples that play.
    static std::vector<int> playingLevels() {
        std::vector<int> levels;
        const GameSfx::SoundBank& bank = GameSfx_Water::state().bank;
        for (std::size_t i = 0; i < bank.size(); ++i)
            if (bank[i]->isPlaying()) levels.push_back(static_cast<int>(i / 4 + 1));
        return levels;
    }
};

// The water runs at 300, then slows by the loss in one step.
class WaterLoss : public GameSfxTest, public ::testing::WithParamInterface<std::pair<float, int>> {};

TEST_P(WaterLoss, PlaysOneSampleOfItsLevel) {
    makeWater(128, 20.0f, 300.0f);
    GameSfx_Water::update();
    EXPECT_TRUE(playingLevels().empty()) << "the first step after a reset only gains speed";
    setSpeed(300.0f - GetParam().first);
    GameSfx_Water::update();
    EXPECT_EQ(playingLevels(), GetParam().second ? std::vector<int>{GetParam().second} : std::vector<int>{});
}

INSTANTIATE_TEST_SUITE_P(Audio, WaterLoss,
                         ::testing::Values(std::pair(-10.0f, 0), std::pair(5.9f, 0), std::pair(6.0f, 1),
                                           std::pair(21.9f, 1), std::pair(22.0f, 2), std::pair(60.0f, 3)));

TEST_F(GameSfxTest, TheAmbientLoopFollowsTheAmountOfWaterAndTheLastWaterGoingIsALoss) {
    makeWater(128, 20.0f, 100.0f);
    const Sound& ambient = *GameSfx_Water::state().ambient;
    GameSfx_Water::update();
    EXPECT_TRUE(ambient.isLooping());
    EXPECT_FLOAT_EQ(ambient.getVolume(), 0.45f);
    int frozen = 0;
    for (Particle& particle : ParticleManager::getParticles())
        if (frozen++ < 96) particle.temperature = 0.0f;
    GameSfx_Water::update();
    EXPECT_FLOAT_EQ(ambient.getVolume(), 0.45f * 0.5f) << "a quarter of the water is half as loud";
    for (Particle& particle : ParticleManager::getParticles()) particle.temperature = 0.0f;
    GameSfx_Water::update();
    EXPECT_FALSE(ambient.isPlaying());
    EXPECT_EQ(playingLevels(), std::vector<int>{3}) << "the whole average speed of 100 was lost";
}

TEST_F(GameSfxTest, TenParticlesFreezingAtOnceAreHeardOverSecondsAndFrictionFollowsTouchingIce) {
    const GameSfx_Ice::Levels& ice = GameSfx_Ice::state().levels;
    ParticleGroup& body = makeIce(10, 100.0f, true);
    for (int step = 0; step < 10; ++step) GameSfx_Ice::update(0.1f);
    EXPECT_NEAR(ice.freeze.pending, 1.0f, 1e-3) << "a tenth is still to be heard after a second";
    EXPECT_TRUE(GameSfx_Ice::state().freeze->isLooping());
    for (int step = 0; step < 90; ++step) GameSfx_Ice::update(0.1f);
    EXPECT_NEAR(ice.frictionLevel, std::sqrt(10.0f / 128) * 100.0f * 0.004f, 1e-4);
    EXPECT_TRUE(GameSfx_Ice::state().friction->isLooping());
    EXPECT_FALSE(GameSfx_Ice::state().freeze->isPlaying()) << "the crackle has faded";
    body.touching = 0;
    for (int step = 0; step < 100; ++step) GameSfx_Ice::update(0.1f);
    EXPECT_FALSE(GameSfx_Ice::state().friction->isPlaying()) << "a body in the air is silent";
}

TEST_F(GameSfxTest, FiftySteamParticlesAimTheMurmurAtLevelOneAndTheHissFades) {
    makeWater(50, 120.0f);
    GameSfx_Steam::update(0.1f);
    EXPECT_TRUE(GameSfx_Steam::state().evaporate->isLooping());
    for (int step = 0; step < 100; ++step) GameSfx_Steam::update(0.1f);
    EXPECT_NEAR(GameSfx_Steam::state().levels.ambientLevel, 1.0f, 1e-3);
    EXPECT_FALSE(GameSfx_Steam::state().evaporate->isPlaying());
}

// Water, ice and steam that keep changing, while samples play.
TEST_F(GameSfxTest, AStepAllocatesNothing) {
    makeWater(100, 20.0f, 100.0f);
    int i = 0;
    for (Particle& particle : ParticleManager::getParticles())
        if (i++ % 4 == 0) particle.temperature = 120.0f;
    ParticleGroup& body = makeIce(20, 50.0f, true);
    // A first step makes what lives for the whole run (the states of the subsystems it asks).
    GameSfx_Water::update();
    const AllocationCount count;
    for (int step = 0; step < 100; ++step) {
        setSpeed(step % 10 == 0 ? 10.0f : 100.0f);
        body.velocity = Vector2D(0.0f, step % 7 == 0 ? 0.0f : 90.0f);
        GameSfx_Ice::update(0.0133f);
        GameSfx_Water::update();
        GameSfx_Steam::update(0.0133f);
    }
    EXPECT_EQ(count.made(), 0);
    EXPECT_FALSE(playingLevels().empty()) << "samples were played meanwhile";
}

}  // namespace
