#include "game/game.h"

#include "console/console.h"
#include "game/camera_state.h"
#include "game/game_state.h"
#include "support/level_fixtures.h"
#include "water/water.h"

namespace {

constexpr int consoleKey = 223;

// A level of one floor slab 60 units below where the water starts.
std::string levelWithFloor(int waterX) {
    const std::string x = std::to_string(waterX);
    return bytesFromText("water " + x + " 0\ncamera " + x + " -20\n" +
                         "polygon\n-300 60\n300 60\n300 120\n-300 120\nend\n");
}

class GameTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder.write("cfg/water.cfg", "gravity = 100\nroomTemperature = 20\n");
        folder.write("cfg/camera.cfg", "");
        folder.write("cfg/game.cfg", "background_r = 0.5\nmusic = river.ogg\n");
        folder.write("maps/test.rill", levelWithFloor(0));
        folder.write("maps/other.rill", levelWithFloor(100));
        GLWindow::Headless::setClientSize(800, 600);
        setRandomSeed(7);
        Game::initialise("maps\\test.rill");
    }
    void TearDown() override {
        if (GameState::state().paused) GLConsole::enterLine("Pause false");
        if (GameState::state().consoleVisible) Game().keyboardPressed(consoleKey);
        Game::shutdown();
    }

    // Lets the camera arrive at the water so that the simulation runs.
    static void startPlay() {
        Game::startPlaying();
        Camera::setState(Camera::following);
    }

    // One particle alone at the camera, whose velocity shows the length of each step.
    static Particle& loneParticle() {
        ParticleManager::getParticles().clear();
        ParticleMover::clearParticleGrid();
        const Vector2D at = Camera::getPosition();
        ParticleManager::createParticles(at.x, at.y, 0.0f, 1);
        return ParticleManager::getParticles().front();
    }

    // One forced frame of 0.02 seconds with the keys held down.
    static void frameWithKeys(std::initializer_list<int> keys) {
        for (int key : keys) GLWindow::Headless::setKeyDown(key, true);
        Game::runFrame(0.02f);
        for (int key : keys) GLWindow::Headless::setKeyDown(key, false);
    }

    // Frames of the given length in milliseconds, through the real loop.
    void frames(int count, unsigned milliseconds) {
        for (int i = 0; i < count; ++i) {
            clock.advanceMilliseconds(milliseconds);
            Game::gameLoop();
        }
    }

    ScratchFolder folder;
    ManualClock clock;
    ConsoleCapture console;
};

TEST_F(GameTest, TheViewShowsAtLeast800By600) {
    const std::tuple<int, int, float, float> cases[] = {{800, 600, 800, 600},
                                                        {1920, 1080, 1066.6666f, 600},
                                                        {600, 800, 800, 1066.6666f},
                                                        {500, 500, 800, 800}};
    for (const auto& [width, height, x, y] : cases) {
        GLWindow::Headless::setClientSize(width, height);
        EXPECT_FLOAT_EQ(Game::getViewAreaX(), x) << width << "x" << height;
        EXPECT_FLOAT_EQ(Game::getViewAreaY(), y) << width << "x" << height;
    }
    GLWindow::Headless::setClientSize(800, 600);
}

// Step timing.

TEST_F(GameTest, TheFirstStepComesAtOnceAndTheNextWhenTheMeanFrameTimeHasGathered) {
    startPlay();
    const Particle& particle = loneParticle();
    const uint64_t before = Game::getGameStepCount();
    frames(1, 10);
    EXPECT_EQ(Game::getGameStepCount(), before + 1);
    // The first step has the initial step time, with gravity 100.
    EXPECT_NEAR(particle.velocity.y, 100.0f * 0.013333334f, 1e-5f);
    frames(14, 10);
    EXPECT_EQ(GameState::state().frameTime, 0.0f);
    // The 16th frame ends the first batch, and a step needs two frames of 0.01 seconds.
    frames(1, 10);
    EXPECT_FLOAT_EQ(GameState::state().frameTime, 0.01f);
    EXPECT_EQ(Game::getGameStepCount(), before + 1);
    frames(1, 10);
    EXPECT_EQ(Game::getGameStepCount(), before + 2);
    frames(1, 10);
    EXPECT_EQ(Game::getGameStepCount(), before + 2);
}

TEST_F(GameTest, OneSlowFrameDoesNotMakeOneBigStep) {
    startPlay();
    frames(16, 10);
    frames(1, 500);
    EXPECT_FLOAT_EQ(GameState::state().frameTime, 0.01f);
    const uint64_t before = Game::getGameStepCount();
    frames(14, 10);
    // The batch with the slow frame ends: its mean, about 0.04 seconds, steps every frame.
    frames(1, 10);
    EXPECT_NEAR(GameState::state().frameTime, (0.5f + 15 * 0.01f) / 16, 1e-6f);
    frames(3, 10);
    EXPECT_EQ(Game::getGameStepCount(), before + 7 + 1 + 3);
}

TEST_F(GameTest, ALongStepIsCutTo30StepsASecondAndAForcedFrameStepsByItsOwnLength) {
    startPlay();
    const Particle& particle = loneParticle();
    Game::runSimulation(0.2f);
    EXPECT_NEAR(particle.velocity.y, 100.0f * 0.033333335f, 1e-5f);
    const uint64_t steps = GameState::state().simulationSteps;
    Game::runFrame(0.02f);
    Game::runFrame(0.005f);
    EXPECT_EQ(GameState::state().simulationSteps, steps + 2);
    EXPECT_NEAR(particle.velocity.y, 100.0f * (0.033333335f + 0.025f), 1e-5f);
    EXPECT_EQ(GameState::state().stepTime, 0.0f);
}

TEST_F(GameTest, TheWaterWaitsUntilTheCameraHasArrived) {
    folder.write("cfg/camera.cfg", "waypointInterpolateSpeed = 0.1\nwaypointInterpolateDistance = 2\n");
    Game::resetLevel();
    Game::startPlaying();
    const uint64_t steps = GameState::state().simulationSteps;
    int frames = 0;
    for (; frames < 100 && Camera::movingTowardsWaypoint(); ++frames) {
        Game::runFrame(0.02f);
        ASSERT_EQ(GameState::state().simulationSteps, steps);
    }
    // The camera starts 20 units from the water and keeps a tenth of its distance a second.
    EXPECT_GT(frames, 10);
    EXPECT_EQ(Camera::getState(), Camera::following);
    Game::runFrame(0.02f);
    EXPECT_EQ(GameState::state().simulationSteps, steps + 1);
}

TEST_F(GameTest, SpeedReportsPrintWhenAskedForAndTheFreeCameraMovesByArrowsAndZoomsByPages) {
    startPlay();
    for (const char* line : {"ShowGameSpeeds true", "ShowSimSpeeds true"}) GLConsole::enterLine(line);
    console.take();
    frames(16, 10);
    const std::string prefix = "\nGame - fps: ";
    const size_t at = console.text().find(prefix);
    ASSERT_NE(at, std::string::npos);
    EXPECT_NEAR(std::stof(console.text().substr(at + prefix.size())), 100.0f, 0.01f);
    for (int i = 0; i < 32; ++i) Game::runSimulation(0.01f);
    EXPECT_NE(console.text().find("\nSimulation - clock tics: "), std::string::npos);
    GLConsole::enterLine("FreeCamera true");
    ASSERT_TRUE(GameState::state().views.freeCamera);
    frameWithKeys({39, 38});
    EXPECT_LT(distance(GameState::state().views.freeCameraPosition, Vector2D(5, -5)), 1e-5f);
    EXPECT_EQ(Camera::getTilt(), 0.0f);
    frameWithKeys({33});
    EXPECT_FLOAT_EQ(GameState::state().views.freeCameraZoom, 1.05f);
}

// Pause, console and focus.

TEST_F(GameTest, ThePauseKeyAndALostFocusStopTheWaterButNotTheCamera) {
    Game listener;
    listener.windowFocusLost();
    EXPECT_FALSE(GameState::state().paused) << "the main menu is open";
    startPlay();
    listener.keyboardPressed('P');
    EXPECT_TRUE(GameState::state().paused);
    const uint64_t steps = GameState::state().simulationSteps;
    Game::runFrame(0.02f);
    EXPECT_EQ(GameState::state().simulationSteps, steps);
    listener.keyboardPressed(19);
    EXPECT_FALSE(GameState::state().paused);
    Game::runFrame(0.02f);
    EXPECT_EQ(GameState::state().simulationSteps, steps + 1);
    listener.windowFocusLost();
    EXPECT_TRUE(GameState::state().paused);
    listener.windowFocusLost();
    EXPECT_TRUE(GameState::state().paused);
}

TEST_F(GameTest, WithTheConsoleOpenKeysGoToItAndTheCameraDoesNotTurnButZoomsAndShakesFromIt) {
    folder.write(
        "cfg/camera.cfg",
        "maxAngle = 90\nkeyboardTurnSpeed = 50\nshakeTime = 1\nshakeStrenght = 5\nshakeSpeed = 10\n");
    Game::resetLevel();
    startPlay();
    Game listener;
    listener.keyboardPressed(consoleKey);
    ASSERT_TRUE(GameState::state().consoleVisible);
    listener.keyboardPressed('P');
    EXPECT_FALSE(GameState::state().paused);
    const uint64_t steps = GameState::state().simulationSteps;
    frameWithKeys({37});
    EXPECT_EQ(std::tuple(GameState::state().simulationSteps, Camera::getTilt()), std::tuple(steps + 1, 0.0f));
    listener.keyboardPressed(consoleKey);
    EXPECT_FALSE(GameState::state().consoleVisible);
    frameWithKeys({37});
    EXPECT_FLOAT_EQ(Camera::getTilt(), 1.0f);
    for (const char* line : {"ZoomCamera", "ShakeCamera"}) GLConsole::enterLine(line);
    EXPECT_EQ(std::tuple(Camera::getState(), Camera::state().shaking), std::tuple(Camera::zoomingOut, true));
}

// Requests at the end of the frame.

TEST_F(GameTest, ALevelThatFailsToLoadLeavesTheOldOneStandingAndStopEndsTheRunAfterTheFrame) {
    Game::map("maps\\missing.rill");
    Game::runFrame(0.02f);
    EXPECT_EQ(
        std::tuple(Game::isRunning(), Game::getCurrentMapName(), ParticleManager::getParticles().size()),
        std::tuple(true, "maps\\test.rill", 128u));
    Game::stop();
    EXPECT_TRUE(Game::isRunning());
    Game::runFrame(0.02f);
    EXPECT_FALSE(Game::isRunning());
}

}  // namespace
