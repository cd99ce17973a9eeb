// The entry sequence: services start in a fixed order, the game runs, and the
// services stop again in reverse order. Command line and environment are ignored.
#include "audio/audio.h"
#include "console/console.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"
#include "menus/menus.h"

int main(int, char**) {
    LocationTrace::initialise();
    LocationTrace::push("WinMain");

    GLWindow::Headless::setEnabled(false);
    GLWindow::createWindow("Brookfall: Version 1.00", 800, 600);
    GLWindow::center();
    GLWindow::setCursor(0);
    const int screenHeight = GLWindow::getScreenHeight();
    const int screenWidth = GLWindow::getScreenWidth();
    GLWindow::setFullscreen(true, screenWidth, screenHeight);
    GLWindow::enableVsync(true);
    GLTextureManager::initialise();
    GLConsole::initialise();
    MusicSystem::initialise();
    SoundSystem::initialise();
    SoundManager::initialise();
    IntroScreen().run();
    HighScores::loadScores();
    GLWindow::giveFocous();

    // The player may have closed the window already; then there is no game to run.
    if (GLWindow::exists()) Game::run("maps\\testLevel.rill");

    Game::stopServices();

    LocationTrace::pop();
    return 0;
}
