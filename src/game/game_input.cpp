// The window's events while a level runs: the console key, the menus, the
// pause key and the right mouse button.
#include <cctype>

#include "audio/audio.h"
#include "console/console.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "game/game_state.h"
#include "graphics/window/window.h"
#include "menus/menus.h"

using GameState::state;

namespace {

// Escape goes back to the menu before, except on the main menu, where it asks
// to quit, and at the level's end, where only the button leads on.
void menuKey(int key) {
    TRACE_LOCATION("Game::menuKey");
    if (key != VirtualKey::escape) {
        GameMenus::sendMenuEvent_keyboardPressed(key);
        return;
    }
    const int menu = GameMenus::getCurrentMenu();
    if (menu == GameMenus::main)
        GameMenus::setCurrentMenu(GameMenus::quitGame);
    else if (menu != GameMenus::levelFinished)
        GameMenus::setCurrentMenu(GameMenus::getLastMenu());
}

bool isPauseKey(int key) {
    TRACE_LOCATION("Game::isPauseKey");
    return key == VirtualKey::pause ||
           std::toupper(static_cast<unsigned char>(GLWindow::keyboardKeyToAscii(key))) == 'P';
}
}  // namespace

bool GameState::menuIsOpen() {
    TRACE_LOCATION("Game::menuIsOpen");
    return GameMenus::getCurrentMenu() != GameMenus::none;
}

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
    } else if (GameState::menuIsOpen()) {
        menuKey(key);
    } else if (key == VirtualKey::escape) {
        GameMenus::setCurrentMenu(GameMenus::inGame);
    } else if (isPauseKey(key)) {
        GameState::setPaused(!state().paused);
    }
}

void Game::keyboardReleased(int key) {
    TRACE_LOCATION("Game::keyboardReleased");
    GameMenus::sendMenuEvent_keyboardReleased(key);
}

void Game::mouseMoved(int x, int y) {
    TRACE_LOCATION("Game::mouseMoved");
    GameMenus::sendMenuEvent_mouseMoved(x, y);
}

void Game::mousePressed(int x, int y, int button) {
    TRACE_LOCATION("Game::mousePressed");
    if (GameState::menuIsOpen())
        GameMenus::sendMenuEvent_mousePressed(x, y, button);
    else if (button == MouseButton::right && !GameRules::gameIsFinished())
        GameMenus::setCurrentMenu(GameMenus::inGame);
}

void Game::mouseReleased(int x, int y, int button) {
    TRACE_LOCATION("Game::mouseReleased");
    GameMenus::sendMenuEvent_mouseReleased(x, y, button);
}

void Game::windowClosing() {
    TRACE_LOCATION("Game::windowClosing");
    GLWindow::close();
}

void Game::windowFocusLost() {
    TRACE_LOCATION("Game::windowFocusLost");
    if (!state().paused && !GameState::menuIsOpen()) GameState::setPaused(true);
}
