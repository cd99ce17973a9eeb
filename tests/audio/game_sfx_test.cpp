// The sound of the water, the ice and the steam: what the behaviours count,
// which sample a loss of speed picks, how the loops follow the water, and that
// a step allocates nothing.
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <new>

#include "audio/audio.h"
#include "audio/game_sfx_state.h"
#include "audio/listening.h"
#include "water/water.h"

using namespace Listening;

// Counts the allocations of the test's own thread while asked to.
namespace {
std::atomic<long> allocations{0};
thread_local bool countingAllocations = false;
}  // namespace

void* operator new(std::size_t size) {
    if (countingAllocations) ++allocations;
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

// The settings the game ships, with one level speed written negative: the
// water's settings are taken as absolute values.
const char* const settings = R"(
water_disturbance_level1_speed = -6
water_disturbance_level2_speed = 22
water_disturbance_level3_speed = 60
water_disturbance_randomness_pitch = 0.2
water_disturbance_randomness_volume = 0.3
waterSound_ambient_volume = 0.45
waterSound_ambient = snd\loop.wav
ice_disturbance_level1_speed = 8
ice_disturbance_level2_speed = 28
ice_disturbance_level3_speed = 80
ice_frictionChangeRate = 0.05
ice_frictionSpeed = 0.004
ice_freezeEffectSpeed = 0.1
ice_freezeVolume = 0.02
ice_freezeVolumeFadeRate = 0.3
iceSound_freeze = snd\loop.wav
iceSound_friction = snd\loop.wav
steamEvaporate = snd\loop.wav
steamAmbient = snd\loop.wav
)";

class GameSfxTest : public AudioTest {
protected:
    void SetUp() override {
        AudioTest::SetUp();
        std::string config = settings;
        for (const char* bank : {"waterSound_disturbance_level_", "iceSound_disturbance_Level_"})
            for (const char* variant :
                 {"1_1", "1_2", "1_3", "1_4", "2_1", "2_2", "2_3", "2_4", "3_1", "3_2", "3_3", "3_4"})
                config += std::string(bank) + variant + " = snd\\hit_" + variant + ".wav\n";
        write("cfg/game_sfx.cfg", config);
        write("snd/loop.wav", waveFile(tone(1.0, 0.3)));
        for (const char* variant :
             {"1_1", "1_2", "1_3", "1_4", "2_1", "2_2", "2_3", "2_4", "3_1", "3_2", "3_3", "3_4"})
            write(std::string("snd/hit_") + variant + ".wav", waveFile(tone(0.5, 0.3)));
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

    // count particles of water at a temperature, all moving at one speed.
    static void makeWater(int count, float temperature, float speed = 0.0f) {
        ParticleManager::createParticles(0.0f, 0.0f, 10.0f, count);
        for (Particle& particle : ParticleManager::getParticles()) {
            particle.temperature = temperature;
            particle.velocity = Vector2D(speed, 0.0f);
        }
    }
    static void setSpeed(float speed) {
        for (Particle& particle : ParticleManager::getParticles()) particle.velocity = Vector2D(speed, 0.0f);
    }
    static ParticleGroup& makeIce(int count, float speed, bool touching) {
        ParticleGroup group;
        group.particles.resize(static_cast<std::size_t>(count));
        group.velocity = Vector2D(0.0f, speed);
        group.touching = touching ? 1 : 0;
        ParticleGroupMover::getGroups().push_back(group);
        return ParticleGroupMover::getGroups().back();
    }
    // The bank samples that play, as level * 10 + variant.
    static std::vector<int> playing(const GameSfx::SoundBank& bank) {
        std::vector<int> found;
        for (std::size_t i = 0; i < bank.size(); ++i)
            if (bank[i]->isPlaying())
                found.push_back(static_cast<int>(i / 4 + 1) * 10 + static_cast<int>(i % 4 + 1));
        return found;
    }
};

struct PhaseCase {
    float temperature;
    uint32_t water;
    uint32_t steam;
};

class ParticlePhase : public GameSfxTest, public ::testing::WithParamInterface<PhaseCase> {};

TEST_P(ParticlePhase, IsCountedByTemperature) {
    makeWater(5, GetParam().temperature);
    EXPECT_EQ(GameSfx_Water::getWaterParticleCount(), GetParam().water);
    EXPECT_EQ(GameSfx_Steam::getSteamParticleCount(), GetParam().steam);
    EXPECT_EQ(GameSfx_Ice::getIceParticleCount(), 0u) << "only members of ice bodies are ice";
}

INSTANTIATE_TEST_SUITE_P(Audio, ParticlePhase,
                         ::testing::Values(PhaseCase{20.0f, 5, 0}, PhaseCase{0.1f, 5, 0},
                                           PhaseCase{99.9f, 5, 0}, PhaseCase{100.0f, 0, 5},
                                           PhaseCase{150.0f, 0, 5}, PhaseCase{0.0f, 0, 0},
                                           PhaseCase{-5.0f, 0, 0}));

TEST_F(GameSfxTest, IceIsEveryMemberOfAnIceBodyAndItsSpeedIsWeighedByThem) {
    makeIce(3, 10.0f, false);
    makeIce(1, 50.0f, false);
    EXPECT_EQ(GameSfx_Ice::getIceParticleCount(), 4u);
    float velocity = 0.0f;
    GameSfx_Ice::getAverageIceVelocity(velocity);
    EXPECT_FLOAT_EQ(velocity, (3 * 10.0f + 50.0f) / 4);
}

// The water runs at 300, then slows by the loss in one step.
struct LossCase {
    float loss;
    int level;
};

class WaterLoss : public GameSfxTest, public ::testing::WithParamInterface<LossCase> {};

TEST_P(WaterLoss, PlaysOneSampleOfItsLevel) {
    makeWater(128, 20.0f, 300.0f);
    GameSfx_Water::update();
    EXPECT_TRUE(playing(GameSfx_Water::state().bank).empty())
        << "the first step after a reset only gains speed";
    setSpeed(300.0f - GetParam().loss);
    GameSfx_Water::update();
    const std::vector<int> heard = playing(GameSfx_Water::state().bank);
    if (GetParam().level == 0) {
        EXPECT_TRUE(heard.empty());
    } else {
        ASSERT_EQ(heard.size(), 1u);
        EXPECT_EQ(heard[0] / 10, GetParam().level);
    }
}

INSTANTIATE_TEST_SUITE_P(Audio, WaterLoss,
                         ::testing::Values(LossCase{-10.0f, 0}, LossCase{5.9f, 0}, LossCase{6.0f, 1},
                                           LossCase{21.9f, 1}, LossCase{22.0f, 2}, LossCase{60.0f, 3},
                                           LossCase{250.0f, 3}));

TEST_F(GameSfxTest, OnlyOneSampleOfALevelSoundsAtATime) {
    makeWater(128, 20.0f, 300.0f);
    GameSfx_Water::update();
    for (const float speed : {290.0f, 280.0f, 270.0f}) {
        setSpeed(speed);
        GameSfx_Water::update();
    }
    const std::vector<int> levelOne = playing(GameSfx_Water::state().bank);
    ASSERT_EQ(levelOne.size(), 1u) << "the later losses of level 1 were dropped";
    setSpeed(200.0f);
    GameSfx_Water::update();
    const std::vector<int> both = playing(GameSfx_Water::state().bank);
    ASSERT_EQ(both.size(), 2u) << "a sample of another level may overlap";
    EXPECT_EQ(both[0], levelOne[0]);
    EXPECT_EQ(both[1] / 10, 3);
}

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
    EXPECT_FLOAT_EQ(ambient.getVolume(), 0.45f * 0.5f) << "a quarter of the water sounds at half the level";
    EXPECT_TRUE(playing(GameSfx_Water::state().bank).empty());
    for (Particle& particle : ParticleManager::getParticles()) particle.temperature = 0.0f;
    GameSfx_Water::update();
    EXPECT_FALSE(ambient.isPlaying());
    const std::vector<int> heard = playing(GameSfx_Water::state().bank);
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0] / 10, 3) << "the whole average speed of 100 was lost";
}

TEST_F(GameSfxTest, TenParticlesFreezingAtOnceAreHeardOverSecondsNotAtOnce) {
    const GameSfx_Ice::Levels& ice = GameSfx_Ice::state().levels;
    makeIce(10, 0.0f, false);
    GameSfx_Ice::update(0.1f);
    EXPECT_NEAR(ice.freezePending, 10.0f * std::pow(0.1f, 0.1f), 1e-4);
    EXPECT_TRUE(GameSfx_Ice::state().freeze->isLooping());
    for (int step = 1; step < 10; ++step) GameSfx_Ice::update(0.1f);
    EXPECT_NEAR(ice.freezePending, 1.0f, 1e-3) << "a tenth is still to be heard after a second";
    ParticleGroupMover::getGroups().clear();
    GameSfx_Ice::update(0.1f);
    EXPECT_NEAR(ice.freezePending, std::pow(0.1f, 1.1f) * 10.0f, 1e-3) << "melting takes nothing away";
    for (int step = 0; step < 100; ++step) GameSfx_Ice::update(0.1f);
    EXPECT_FALSE(GameSfx_Ice::state().freeze->isPlaying()) << "the crackle fades out";
}

// A body of 64 sliding at 100 along the level aims at sqrt(0.5) * 100 * 0.004.
TEST_F(GameSfxTest, IceFrictionFollowsTheBodiesThatTouchTheLevel) {
    ParticleGroup& body = makeIce(64, 100.0f, true);
    GameSfx_Ice::update(0.1f);
    for (int step = 0; step < 100; ++step) GameSfx_Ice::update(0.1f);
    EXPECT_NEAR(GameSfx_Ice::state().levels.frictionLevel, std::sqrt(0.5f) * 100.0f * 0.004f, 1e-4);
    EXPECT_TRUE(GameSfx_Ice::state().friction->isLooping());
    body.touching = 0;
    for (int step = 0; step < 100; ++step) GameSfx_Ice::update(0.1f);
    EXPECT_FALSE(GameSfx_Ice::state().friction->isPlaying()) << "a body in the air is silent";
}

TEST_F(GameSfxTest, FiftySteamParticlesAimTheMurmurAtLevelOneAndTheHissFades) {
    makeWater(50, 120.0f);
    const GameSfx_Steam::Levels& steam = GameSfx_Steam::state().levels;
    GameSfx_Steam::update(0.1f);
    EXPECT_TRUE(GameSfx_Steam::state().evaporate->isLooping());
    for (int step = 0; step < 100; ++step) GameSfx_Steam::update(0.1f);
    EXPECT_NEAR(steam.ambientLevel, 1.0f, 1e-3);
    EXPECT_FALSE(GameSfx_Steam::state().evaporate->isPlaying());
    EXPECT_TRUE(GameSfx_Steam::state().ambient->isLooping());
}

TEST_F(GameSfxTest, InitialiseReadsTheSettingsAgainButKeepsItsHandles) {
    const Sound* ambient = GameSfx_Water::state().ambient.get();
    EXPECT_FLOAT_EQ(GameSfx_Water::state().settings.disturbance.level1Speed, 6.0f);
    write("cfg/game_sfx.cfg", "waterSound_ambient_volume = 0.9\nwaterSound_ambient = snd\\other.wav\n");
    GameSfx_Water::initialise();
    EXPECT_FLOAT_EQ(GameSfx_Water::state().settings.ambientVolume, 0.9f);
    EXPECT_EQ(GameSfx_Water::state().ambient.get(), ambient);
    EXPECT_EQ(ambient->getName(), "snd\\loop.wav");
}

// Water, ice and steam that keep changing, for a hundred steps of each.
TEST_F(GameSfxTest, AStepAllocatesNothing) {
    makeWater(100, 20.0f, 100.0f);
    int i = 0;
    for (Particle& particle : ParticleManager::getParticles())
        if (i++ % 4 == 0) particle.temperature = 120.0f;
    ParticleGroup& body = makeIce(20, 50.0f, true);
    allocations = 0;
    countingAllocations = true;
    for (int step = 0; step < 100; ++step) {
        setSpeed(step % 10 == 0 ? 10.0f : 100.0f);
        body.velocity = Vector2D(0.0f, step % 7 == 0 ? 0.0f : 90.0f);
        GameSfx_Ice::update(0.0133f);
        GameSfx_Water::update();
        GameSfx_Steam::update(0.0133f);
    }
    countingAllocations = false;
    EXPECT_EQ(allocations.load(), 0);
    EXPECT_FALSE(playing(GameSfx_Water::state().bank).empty()) << "the water's samples were played meanwhile";
}

}  // namespace
