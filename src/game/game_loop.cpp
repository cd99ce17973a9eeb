// One frame of the game: the frame time is smoothed over 16 frames, a game
// step runs when enough of it has gathered, and only after the frame is drawn
// are requests to stop, change the level or restart carried out.
#include <algorithm>

#include "console/console.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "game/game_state.h"
#include "graphics/window/window.h"
#include "platform/platform.h"
#include "water/water.h"

using GameState::game;

namespace {

void updateFrameSpeed() {
    TRACE_LOCATION("Game::updateFrameSpeed");
    game.clock.update();
    game.frameTimeSum += game.clock.deltaSeconds;
    if (++game.frameCounter < Game::frameBatch) return;
    game.frameTime = game.frameTimeSum * 0.0625f;
    game.frameTimeSum = 0.0f;
    game.frameCounter = 0;
    if (game.showGameSpeeds && game.frameTime > 0.0f) {
        GLConsole::print("\nGame - fps: ");
        GLConsole::print(1.0f / game.frameTime);
    }
}

// The water only runs while the player can watch it: no menu, no pause, the
// level not over and the camera not still gliding to the water.
bool simulationRuns() {
    TRACE_LOCATION("Game::simulationRuns");
    return !GameLinks::menuIsOpen() && !Camera::movingTowardsWaypoint() && !GameLinks::gameIsFinished() &&
           !game.paused;
}

void moveCamera(float dt) {
    TRACE_LOCATION("Game::moveCamera");
    if (!game.freeCamera) {
        Camera::doMovements(!game.consoleVisible, dt);
        return;
    }
    Camera::doMovements(false, dt);
    GameState::checkFreeCameraInput();
}

void gameStep(float dt) {
    TRACE_LOCATION("Game::gameStep");
    ++game.gameSteps;
    if (simulationRuns()) Game::runSimulation(dt);
    if (!GameLinks::gameIsFinished()) Game::soundUpdate(dt);
    if (!GameLinks::menuIsOpen()) moveCamera(dt);
    if (simulationRuns())
        GameLinks::updateRules(dt);
    else
        GameLinks::unpauseLevelTimer();
    game.stepTime = 0.0f;
}

void carryOutRequests() {
    TRACE_LOCATION("Game::carryOutRequests");
    if (game.stopRequested)
        game.running = false;
    else if (game.mapRequested)
        Game::initialise(game.mapName);
    else if (game.restartRequested)
        Game::resetLevel();
}

void frame(bool stepForced, float forcedStepTime) {
    TRACE_LOCATION("Game::frame");
    updateFrameSpeed();
    if (GLWindow::mouseInClientArea()) GLWindow::setCursor(0);
    game.stepTime = stepForced ? forcedStepTime : game.stepTime + game.frameTime;
    if (stepForced || game.stepTime >= Game::stepThreshold) gameStep(game.stepTime);
    if (!GLWindow::isMinimised()) Game::draw();
    carryOutRequests();
}

void recordSimulationTime(uint64_t tics) {
    TRACE_LOCATION("Game::recordSimulationTime");
    game.simulationTicsSum += tics;
    if (++game.simulationTimings < Game::simulationTimingBatch) return;
    const uint64_t mean = static_cast<uint64_t>(static_cast<double>(game.simulationTicsSum) * 0.03125);
    game.simulationTicsSum = 0;
    game.simulationTimings = 0;
    if (!game.showSimSpeeds) return;
    GLConsole::print("\nSimulation - clock tics: ");
    GLConsole::print(static_cast<unsigned int>(mean));
}

}  // namespace

void Game::gameLoop() {
    TRACE_LOCATION("Game::gameLoop");
    frame(false, 0.0f);
}

void Game::runFrame(float stepSeconds) {
    TRACE_LOCATION("Game::runFrame");
    frame(true, stepSeconds);
}

// Below 30 frames a second the game slows down rather than taking bigger steps.
void Game::runSimulation(float dt) {
    TRACE_LOCATION("Game::runSimulation");
    const uint64_t start = Platform::clockMicroseconds();
    if (!game.paused && !GameLinks::menuIsOpen()) {
        const float step = std::min(dt, longestSimulationStep);
        GameLinks::stepLevelBeforeWater(step);
        ParticleManager::runSimulation(step);
        GameLinks::stepLevelAfterWater(step);
        ++game.simulationSteps;
    }
    recordSimulationTime(Platform::clockMicroseconds() - start);
}

void Game::soundUpdate(float dt) {
    TRACE_LOCATION("Game::soundUpdate");
    GameLinks::updateSounds(dt);
}
