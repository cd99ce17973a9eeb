// One frame of the game: the frame time is smoothed over 16 frames, a game
// step runs when enough of it has gathered, and only after the frame is drawn
// are requests to stop, change the level or restart carried out.
#include <algorithm>

#include "audio/audio.h"
#include "console/console.h"
#include "dynamics/dynamics.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "game/game_state.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"
#include "platform/platform.h"
#include "water/water.h"

using GameState::state;

namespace {

void updateFrameSpeed() {
    TRACE_LOCATION("Game::updateFrameSpeed");
    state().clock.update();
    state().frameTimeSum += state().clock.deltaSeconds;
    if (++state().frameCounter < Game::frameBatch) return;
    state().frameTime = state().frameTimeSum * 0.0625f;
    state().frameTimeSum = 0.0f;
    state().frameCounter = 0;
    if (state().views.showGameSpeeds && state().frameTime > 0.0f) {
        GLConsole::print("\nGame - fps: ");
        GLConsole::print(1.0f / state().frameTime);
    }
}

// The water only runs while the player can watch it: no menu, no pause, the
// level not over and the camera not still gliding to the water.
bool simulationRuns() {
    TRACE_LOCATION("Game::simulationRuns");
    return !GameState::menuIsOpen() && !Camera::movingTowardsWaypoint() && !GameRules::gameIsFinished() &&
           !state().paused;
}

void moveCamera(float dt) {
    TRACE_LOCATION("Game::moveCamera");
    if (!state().views.freeCamera) {
        Camera::doMovements(!state().consoleVisible, dt);
        return;
    }
    Camera::doMovements(false, dt);
    GameState::checkFreeCameraInput();
}

void gameStep(float dt) {
    TRACE_LOCATION("Game::gameStep");
    ++state().gameSteps;
    if (simulationRuns()) Game::runSimulation(dt);
    if (!GameRules::gameIsFinished()) Game::soundUpdate(dt);
    if (!GameState::menuIsOpen()) moveCamera(dt);
    if (simulationRuns())
        GameRules::update(dt);
    else
        GameRules::unpauseLevelTimer();
    state().stepTime = 0.0f;
}

void carryOutRequests() {
    TRACE_LOCATION("Game::carryOutRequests");
    if (state().loop.stopRequested)
        state().loop.running = false;
    else if (state().loop.mapRequested)
        Game::initialise(state().mapName);
    else if (state().loop.restartRequested)
        Game::resetLevel();
}

void frame(bool stepForced, float forcedStepTime) {
    TRACE_LOCATION("Game::frame");
    updateFrameSpeed();
    if (GLWindow::mouseInClientArea()) GLWindow::setCursor(0);
    state().stepTime = stepForced ? forcedStepTime : state().stepTime + state().frameTime;
    if (stepForced || state().stepTime >= Game::stepThreshold) gameStep(state().stepTime);
    if (!GLWindow::isMinimised()) Game::draw();
    carryOutRequests();
}

}  // namespace

void GameState::recordTics(TicsMeter& meter, uint64_t tics, bool shown, const char* label) {
    TRACE_LOCATION("Game::recordTics");
    meter.sum += tics;
    if (++meter.count < Game::simulationTimingBatch) return;
    const uint64_t mean = static_cast<uint64_t>(static_cast<double>(meter.sum) * 0.03125);
    meter = TicsMeter();
    if (!shown) return;
    GLConsole::print(std::string("\n") + label + " - clock tics: ");
    GLConsole::print(static_cast<unsigned int>(mean));
}

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
    if (!state().paused && !GameState::menuIsOpen()) {
        const float step = std::min(dt, longestSimulationStep);
        // The water collides with the edges of the step's start plus what the movers pushed.
        MoverManager::updateCollideableNodes();
        MoverManager::runMovers(step);
        FxParticleManager::run(step);
        ParticleManager::runSimulation(step);
        TriggerManager::runTriggers(step);
        LevelObjectsManager::runAnimations(step);
        ++state().simulationSteps;
    }
    GameState::recordTics(state().simulationTics, Platform::clockMicroseconds() - start,
                          state().views.showSimSpeeds, "Simulation");
}

void Game::soundUpdate(float dt) {
    TRACE_LOCATION("Game::soundUpdate");
    SoundSourceManager::updateAllSounds();
    GameSfx_Ice::update(dt);
    GameSfx_Water::update();
    GameSfx_Steam::update(dt);
}
