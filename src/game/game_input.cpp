// The window's events while a level runs: the console key, the menus, the
// pause key and the right mouse button.
#include <cctype>

#include "audio/audio.h"
#include "console/console.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "game/game_state.h"
#include "graphics/window/window.h"

using GameState::state;

namespace {

bool isPauseKey(int key) {
    TRACE_LOCATION("Game::isPauseKey");
    return key == VirtualKey::pause ||
           std::toupper(static_cast<unsigned char>(GLWindow::keyboardKeyToAscii(key))) == 'P';
}
}  // namespace

void GameState::setPaused(bool paused) {
    TRACE_LOCATION("Game::setPaused");
    state().paused = paused;
    if (paused)
        MusicSystem::pause();
    else
        MusicSystem::resume();
}

void Game::keyboardPressed(int key) {
    TRACE_LOCATION("Game::keyboardPressed");
    if (state().consoleVisible) {
        if (key == VirtualKey::console)
            state().consoleVisible = false;
        else
            GLConsole::keyPressed(key);
        return;
    }
    if (key == VirtualKey::console) {
        state().consoleVisible = true;
    } else if (GameLinks::menuIsOpen()) {
        GameLinks::sendKeyToMenu(key);
    } else if (key == VirtualKey::escape) {
        GameLinks::openInGameMenu();
    } else if (isPauseKey(key)) {
        GameState::setPaused(!state().paused);
    }
}

void Game::keyboardReleased(int key) {
    TRACE_LOCATION("Game::keyboardReleased");
    GameLinks::sendKeyReleaseToMenu(key);
}

void Game::mouseMoved(int x, int y) {
    TRACE_LOCATION("Game::mouseMoved");
    GameLinks::sendMouseMoveToMenu(x, y);
}

void Game::mousePressed(int x, int y, int button) {
    TRACE_LOCATION("Game::mousePressed");
    if (GameLinks::menuIsOpen())
        GameLinks::sendMousePressToMenu(x, y, button);
    else if (button == MouseButton::right && !GameRules::gameIsFinished())
        GameLinks::openInGameMenu();
}

void Game::mouseReleased(int x, int y, int button) {
    TRACE_LOCATION("Game::mouseReleased");
    GameLinks::sendMouseReleaseToMenu(x, y, button);
}

void Game::windowClosing() {
    TRACE_LOCATION("Game::windowClosing");
    GLWindow::close();
}

void Game::windowFocusLost() {
    TRACE_LOCATION("Game::windowFocusLost");
    if (!state().paused && !GameLinks::menuIsOpen()) GameState::setPaused(true);
}
