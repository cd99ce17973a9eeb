// Starts the services the way the game's entry does (without the window unless
// asked for), and runs the clock by hand.
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "audio/audio.h"
#include "console/console.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"
#include "headless.h"
#include "level/level.h"
#include "menus/menus.h"
#include "platform/platform.h"

namespace Headless {

namespace {

char lastPrinted = '\n';
std::string startedIn;

void printToStandardOutput(const char* text, std::size_t length) {
    if (length == 0) return;
    std::fwrite(text, 1, length, stdout);
    std::fflush(stdout);
    lastPrinted = text[length - 1];
}

void printNothing(const char*, std::size_t) {}

// With --window the game draws every frame into a real window, as it does when
// played; the texture store needs that window's context.
void openWindow() {
    GLWindow::Headless::setEnabled(false);
    GLWindow::createWindow("Brookfall", 800, 600);
    GLTextureManager::initialise();
}

}  // namespace

void printLine(const std::string& line) {
    if (lastPrinted != '\n') std::fputc('\n', stdout);
    std::fputs(line.c_str(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
    lastPrinted = '\n';
}

const std::string& startDirectory() {
    return startedIn;
}

bool startGame(const Options& options) {
    startedIn = options.startDirectory;
    std::error_code error;
    std::filesystem::current_path(options.dataDirectory, error);
    if (error) {
        std::cerr << "brookfall-headless: cannot work in " << options.dataDirectory << "\n";
        return false;
    }
    LocationTrace::initialise();
    LocationTrace::push("WinMain");
    Platform::setManualClock(true);
    // A probe prints only its own lines.
    GLConsole::setPrintHook(options.probe ? printNothing : printToStandardOutput);
    // Without --window the window is the stand-in of 800 by 600, so that
    // screens with loops of their own have a window to run in.
    if (options.window)
        openWindow();
    else
        GLWindow::createWindow("Brookfall", 800, 600);
    GLConsole::initialise();
    // Sound and music start as the game starts them, on whatever device there
    // is: without one the game says so once and plays on silently. A probe
    // plays silently from the start, as the water does not hear.
    if (!options.probe) {
        MusicSystem::initialise();
        SoundSystem::initialise();
    }
    SoundManager::initialise();

    HighScores::loadScores();

    SurfaceTypeManager::initialise();
    GLWindow::setEventListener(&gameListener());
    Game::initialise(options.levelName);
    if (Game::getCurrentMapName() != options.levelName) return false;
    if (!options.menus) Game::startPlaying();
    return true;
}

GLWindowEventListener& gameListener() {
    static Game listener;
    return listener;
}

// As the game's entry ends, once its game has shut down.
void stopGame() {
    Game::shutdown();
    Game::stopServices();
    GLWindow::close();
    GLConsole::setPrintHook(nullptr);
    std::fflush(stdout);
    LocationTrace::pop();
}

}  // namespace Headless
