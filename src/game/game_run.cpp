// The game's own loop and the services' end after it, its requests, the size
// of the view, and read access to its state for the console, the drawing and
// the tools.
#include <algorithm>

#include "audio/audio.h"
#include "console/console.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "game/game_state.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"
#include "level/level.h"
#include "menus/menus.h"
#include "platform/platform.h"

using GameState::state;

void Game::run(const std::string& levelName) {
    TRACE_LOCATION("Game::run");
    if (!GLWindow::exists() || state().loop.running) return;
    SurfaceTypeManager::initialise();
    initialise(levelName);
    GLWindowEventListener* const savedListener = GLWindow::getEventListener();
    Game listener;
    GLWindow::setEventListener(&listener);
    state().clock.reset();
    while (GLWindow::exists() && state().loop.running) {
        GLWindow::run();
        gameLoop();
        if (GLWindow::isMinimised()) Platform::sleepMilliseconds(1);
    }
    GLWindow::setEventListener(savedListener);
    shutdown();
}

void Game::stopServices() {
    TRACE_LOCATION("Game::stopServices");
    HighScores::saveScores();
    SoundManager::shutdown();
    SoundSystem::shutdown();
    MusicSystem::shutdown();
    GLConsole::shutdown();
    GLTextureManager::shutdown();
}

void Game::stop() {
    TRACE_LOCATION("Game::stop");
    state().loop.stopRequested = true;
}

void Game::requestRestart() {
    TRACE_LOCATION("Game::requestRestart");
    state().loop.restartRequested = true;
}

void Game::map(const std::string& levelName) {
    TRACE_LOCATION("Game::map");
    state().loop.mapRequested = true;
    state().mapName = levelName;
}

// Play begins from the menus: they close, and the level's music starts looped.
// The mouse goes to the centre, so that the first step of play doesn't read
// wherever it stood over the menu as a turn.
void Game::startPlaying() {
    TRACE_LOCATION("Game::startPlaying");
    GameMenus::setCurrentMenu(GameMenus::none);
    MusicSystem::play(state().musicName, true);
    GLWindow::centerMouse();
}

namespace {
// A window shrunk to nothing still has a view of a pixel's shape.
float clientSide(int pixels) {
    TRACE_LOCATION("Game::clientSide");
    return static_cast<float>(std::max(pixels, 1));
}
}  // namespace

float Game::getViewAreaX() {
    TRACE_LOCATION("Game::getViewAreaX");
    const float width = clientSide(GLWindow::getClientWidth());
    const float height = clientSide(GLWindow::getClientHeight());
    return height >= width ? 800.0f : 600.0f / height * width;
}

float Game::getViewAreaY() {
    TRACE_LOCATION("Game::getViewAreaY");
    const float width = clientSide(GLWindow::getClientWidth());
    const float height = clientSide(GLWindow::getClientHeight());
    return height >= width ? 800.0f / width * height : 600.0f;
}

bool Game::isRunning() {
    TRACE_LOCATION("Game::isRunning");
    return state().loop.running;
}

bool Game::isPaused() {
    TRACE_LOCATION("Game::isPaused");
    return state().paused;
}

const std::string& Game::getCurrentMapName() {
    TRACE_LOCATION("Game::getCurrentMapName");
    return state().currentMapName;
}

uint64_t Game::getGameStepCount() {
    TRACE_LOCATION("Game::getGameStepCount");
    return state().gameSteps;
}
