#include "console/console_state.h"
#include "water_fixture.h"

namespace {

using ParticleManagerTest = WaterWorld;

size_t particleCount() {
    return ParticleManager::getParticles().size();
}

TEST_F(ParticleManagerTest, SettingsAreReadOnceAndMadeSafeAndMissingOnesLeaveStillWater) {
    useSettings(
        "gravity = -100\nroomTemperature = 25\nheatTransferRate = 3\nsteamRiseRate = 1.5\n"
        "steamScatterRate = 0.25\nparticleKillTime = 0.00001\n");
    const ParticleManager::Settings& water = ParticleManager::getSettings();
    EXPECT_EQ((std::vector<float>{water.gravity, water.roomTemperature, water.heatTransferRate,
                                  water.steamRiseRate, water.steamScatterRate, water.particleKillTime}),
              (std::vector<float>{100, 25, 1, 1.5f, 0.25f, 0.0001f}));
    std::filesystem::remove(folder.path() / "cfg/water.cfg");
    ParticleManager::initialise();
    EXPECT_EQ(ParticleManager::getSettings().gravity, 0.0f);
    EXPECT_FLOAT_EQ(ParticleManager::getSettings().particleKillTime, 0.0001f);
}

TEST_F(ParticleManagerTest, ConsoleReadsAndChangesTheConstants) {
    GLConsole::enterLine("Gravity -100");
    EXPECT_EQ(ParticleManager::getSettings().gravity, -100.0f);
    GLConsole::enterLine("HeatTransferRate 2");
    EXPECT_EQ(ParticleManager::getSettings().heatTransferRate, 1.0f);
    GLConsole::enterLine("HeatTransferRate -1");
    EXPECT_EQ(ParticleManager::getSettings().heatTransferRate, 0.0f);
    for (const char* line : {"SteamRiseRate 4", "SteamScatterRate 0.5"}) GLConsole::enterLine(line);
    EXPECT_EQ(ParticleManager::getSettings().steamRiseRate, 4.0f);
    EXPECT_EQ(ParticleManager::getSettings().steamScatterRate, 0.5f);
    Particle& particle = addParticle(Vector2D());
    console.take();
    GLConsole::enterLine("ParticleCount");
    EXPECT_NE(console.text().find("ParticleCount is 1"), std::string::npos);
    ParticleManager::runSimulation(0.02f);
    EXPECT_FLOAT_EQ(particle.velocity.y, -2.0f) << "gravity from the console may point up";
}

TEST_F(ParticleManagerTest, ParticleCreateChecksItsWordsAndMakesWaterInViewOfTheCamera) {
    const std::string usage =
        "\nUsage: ParticleCreate < x : number > < y : number > < radius : number > < amount : integer number "
        "> ";
    for (const char* line : {"ParticleCreate 1 2 3", "ParticleCreate a 2 3 4", "ParticleCreate 1 2 3 4.5",
                             "ParticleCreate 1 2 3 4 5"}) {
        console.take();
        GLConsole::enterLine(line);
        EXPECT_NE(console.text().find(usage), std::string::npos) << line;
    }
    for (const char* line :
         {"ParticleCreate 1 2 3 0", "ParticleCreate 1 2 3 -5", "ParticleCreate 1 2 3 2000000000"}) {
        console.take();
        GLConsole::enterLine(line);
        EXPECT_NE(console.text().find("\nInvalid number of particles to make"), std::string::npos) << line;
    }
    EXPECT_EQ(particleCount(), 0u);
    GLConsole::enterLine("ParticleCreate 300 -200 15 40");
    ASSERT_EQ(particleCount(), 40u);
    EXPECT_EQ(Camera::getPosition(), Vector2D(300, -200));
    for (const Particle& particle : ParticleManager::getParticles()) {
        EXPECT_LE(distance(particle.position, Vector2D(300, -200)), 15.0001f);
        EXPECT_EQ(std::tuple(particle.previousPosition[2], particle.velocity, particle.inGrid),
                  std::tuple(particle.position, Vector2D(), 0));
    }
}

TEST_F(ParticleManagerTest, NewParticlesGoToTheFrontAtRoomTemperature) {
    GLConsole::enterLine("RoomTemperature 42");
    ParticleManager::createParticles(5, 6, 0, 3);
    ParticleManager::createParticles(-5, -6, 0, 1);
    EXPECT_EQ(ParticleManager::getParticles().front().position, Vector2D(-5, -6));
    for (const Particle& particle : ParticleManager::getParticles()) EXPECT_EQ(particle.temperature, 42.0f);
    EXPECT_EQ(ParticleManager::getParticles().back().position, Vector2D(5, 6));
}

TEST_F(ParticleManagerTest, WaterFallsDownTheViewWhateverItsTilt) {
    const std::pair<float, Vector2D> cases[] = {{0, {0, 1}}, {90, {-1, 0}}, {-90, {1, 0}}, {180, {0, -1}}};
    for (const auto& [tilt, direction] : cases) {
        useSettings("gravity = 100", turningSettings(tilt));
        tiltCamera(tilt);
        ASSERT_FLOAT_EQ(Camera::getTilt(), tilt);
        Particle& particle = addParticle(Vector2D());
        ParticleManager::runSimulation(0.02f);
        EXPECT_NEAR(distance(particle.velocity, 2.0f * direction), 0.0f, 1e-5f) << tilt;
        EXPECT_NEAR(distance(particle.position, 0.04f * direction), 0.0f, 1e-5f) << tilt;
        EXPECT_EQ(particle.previousVelocity, Vector2D());
    }
}

TEST_F(ParticleManagerTest, HeatDriftsToRoomTemperatureAlikeAtAnyFrameRateAndTheRateHasEnds) {
    for (const int stepsPerSecond : {30, 60, 100}) {
        useSettings("roomTemperature = 20\nheatTransferRate = 0.5\n");
        Particle& particle = addParticle(Vector2D(), Vector2D(), 80.0f);
        for (int i = 0; i < stepsPerSecond; ++i)
            ParticleManager::runSimulation(1.0f / static_cast<float>(stepsPerSecond));
        EXPECT_NEAR(particle.temperature, 50.0f, 0.01f) << stepsPerSecond;
    }
    useSettings("roomTemperature = 20\nheatTransferRate = 0\n");
    Particle& kept = addParticle(Vector2D(), Vector2D(), 80.0f);
    ParticleManager::runSimulation(0.5f);
    EXPECT_EQ(kept.temperature, 80.0f);

    useSettings("roomTemperature = 20\nheatTransferRate = 1\n");
    Particle& lost = addParticle(Vector2D(), Vector2D(), 80.0f);
    ParticleManager::runSimulation(0.0f);
    EXPECT_EQ(lost.temperature, 80.0f);
    ParticleManager::runSimulation(0.001f);
    EXPECT_EQ(lost.temperature, 20.0f);
}

TEST_F(ParticleManagerTest, WaterThrownToInfinityIsErasedNotKept) {
    addParticle(Vector2D(), Vector2D(0, INFINITY));
    addParticle(Vector2D(10, 0), Vector2D(0, NAN));
    for (int i = 0; i < 2; ++i) ParticleManager::runSimulation(0.03f);
    EXPECT_EQ(particleCount(), 0u);
    Camera::doMovement(0.02f);
    EXPECT_TRUE(std::isfinite(Camera::getPosition().x));
}

TEST_F(ParticleManagerTest, KilledWaterFadesForItsKillTimeAndTakesNoFurtherPartOnceErased) {
    useSettings("particleKillTime = 0.1");
    Particle& particle = addParticle(Vector2D());
    ParticleManager::killParticle(particle);
    EXPECT_EQ(particle.dying, 1);
    EXPECT_FLOAT_EQ(particle.killTimer, 0.1f);
    ParticleManager::runSimulation(0.04f);
    ParticleManager::killParticle(particle);
    EXPECT_FLOAT_EQ(particle.killTimer, 0.06f);
    ParticleManager::runSimulation(0.04f);
    EXPECT_EQ(particleCount(), 1u);
    ParticleManager::runSimulation(0.04f);
    EXPECT_EQ(particleCount(), 0u);
    useSettings("particleKillTime = 0.01\nroomTemperature = 20\n");
    Particle& neighbour = addParticle(Vector2D(1, 0), Vector2D(1, 0), 10.0f);
    Particle& dying = addParticle(Vector2D(), Vector2D(), 90.0f);
    ParticleManager::killParticle(dying);
    ParticleManager::runSimulation(0.02f);
    ASSERT_EQ(particleCount(), 1u);
    // It went first in the list; had the neighbour still met it, they would have shared their heat.
    EXPECT_EQ(neighbour.temperature, 10.0f);
}

TEST_F(ParticleManagerTest, TheSameStartGivesTheSameWater) {
    std::vector<Vector2D> runs[2];
    for (std::vector<Vector2D>& positions : runs) {
        useSettings("gravity = 100\nroomTemperature = 20\nheatTransferRate = 0.2\n");
        ParticleManager::createParticles(0, 0, 10, 128);
        ParticleManager::getParticles().front().temperature = 150.0f;
        for (int i = 0; i < 60; ++i) ParticleManager::runSimulation(1.0f / 60);
        for (const Particle& particle : ParticleManager::getParticles())
            positions.push_back(particle.position);
    }
    EXPECT_EQ(runs[0], runs[1]);
}

}  // namespace
