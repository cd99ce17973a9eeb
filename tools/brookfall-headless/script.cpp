// Script lines: ":step N [DT]", ":key CODE down|up", ":mouse move X Y",
// ":mouse press|release X Y BUTTON", ":tilt DEGREES", ":state",
// ":screenshot FILE.png" and ":overview FILE.png" (with --window); anything
// else is typed into the console.
//
// A screen that runs a loop of its own (the name entry of a new high score)
// takes the following lines while it runs: keys and the mouse go to it, and
// ":step" runs its frames.
#include <cstdint>
#include <filesystem>
#include <sstream>

#include "console/console.h"
#include "game/game.h"
#include "graphics/window/window.h"
#include "headless.h"
#include "menus/menus.h"
#include "platform/platform.h"

namespace Headless {

namespace {

constexpr float defaultStepSeconds = 0.013333334f;

struct ScriptState {
    std::istream* script = nullptr;
    bool menus = false;
};

ScriptState& scriptState() {
    static ScriptState state;
    return state;
}

void report(const std::string& line, const char* problem) {
    printLine(std::string("script: ") + problem + ": " + line);
}

bool inScreenLoop() {
    return GLWindow::getEventListener() != &gameListener();
}

// Without --menus the level is played as soon as it is loaded, also after a
// Map line or a restart from the menus: the main menu never stays open.
void keepMainMenuClosed() {
    if (!scriptState().menus && GameMenus::getCurrentMenu() == GameMenus::main) Game::startPlaying();
}

void runSteps(std::istringstream& words, const std::string& line) {
    long count = 0;
    float seconds = defaultStepSeconds;
    if (!(words >> count) || count < 0) return report(line, "expected :step N [DT]");
    if (!(words >> seconds)) seconds = defaultStepSeconds;
    const bool screenLoop = inScreenLoop();
    // A frame that ends the screen's loop ends the steps too: the game takes the rest.
    for (long i = 0; i < count && Game::isRunning() && inScreenLoop() == screenLoop && GLWindow::exists();
         ++i)
        stepFrame(seconds);
}

void setKey(std::istringstream& words, const std::string& line) {
    int code = 0;
    std::string direction;
    if (!(words >> code >> direction) || (direction != "down" && direction != "up"))
        return report(line, "expected :key CODE down|up");
    const bool down = direction == "down";
    GLWindow::Headless::setKeyDown(code, down);
    GLWindowEventListener* listener = GLWindow::getEventListener();
    if (!listener) return;
    if (down)
        listener->keyboardPressed(code);
    else
        listener->keyboardReleased(code);
}

// Window pixels; the headless window is 800 by 600.
void moveMouse(std::istringstream& words, const std::string& line) {
    std::string action;
    int x = 0, y = 0, button = 0;
    words >> action >> x >> y;
    const bool clickAction = action == "press" || action == "release";
    if (!words || (action != "move" && !clickAction) || (clickAction && !(words >> button)))
        return report(line, "expected :mouse move X Y or :mouse press|release X Y BUTTON");
    GLWindow::Headless::setMouse(x, y);
    if (clickAction) GLWindow::Headless::setMouseButtonDown(button, action == "press");
    GLWindowEventListener* listener = GLWindow::getEventListener();
    if (!listener) return;
    if (action == "move")
        listener->mouseMoved(x, y);
    else if (action == "press")
        listener->mousePressed(x, y, button);
    else
        listener->mouseReleased(x, y, button);
}

void setTilt(std::istringstream& words, const std::string& line) {
    float degrees = 0.0f;
    if (!(words >> degrees)) return report(line, "expected :tilt DEGREES");
    Camera::setTilt(degrees);
}

// A picture's file, relative to where the runner was started (the game itself
// works in the data directory); empty, with the line reported, when its folder
// is missing.
std::string picturePath(std::istringstream& words, const std::string& line, const char* usage) {
    namespace fs = std::filesystem;
    std::string fileName;
    if (!(words >> fileName)) {
        report(line, usage);
        return "";
    }
    const fs::path path = fs::path(startDirectory()) / fileName;
    std::error_code error;
    if (!fs::is_directory(path.parent_path(), error)) {
        report(line, ("no folder " + path.parent_path().string() + " to save the picture in").c_str());
        return "";
    }
    return path.string();
}

// The frame on screen, as a PNG file.
void takeScreenshot(std::istringstream& words, const std::string& line) {
    const std::string path = picturePath(words, line, "expected :screenshot FILE.png");
    if (path.empty()) return;
    // Drawn again without presenting, since a presented frame may be gone from the back buffer.
    if (!inScreenLoop()) Game::drawFrame();
    if (!GLWindow::saveScreenshot(path)) report(line, "no frame to save (run with --window)");
}

// The whole level fitted into the window, as a PNG file.
void takeOverview(std::istringstream& words, const std::string& line) {
    const std::string path = picturePath(words, line, "expected :overview FILE.png");
    if (path.empty()) return;
    if (!drawOverview() || !GLWindow::saveScreenshot(path))
        report(line, "no frame to save (run with --window)");
}

void runDirective(const std::string& line) {
    std::istringstream words(line);
    std::string directive;
    words >> directive;
    if (directive == ":step")
        runSteps(words, line);
    else if (directive == ":key")
        setKey(words, line);
    else if (directive == ":mouse")
        moveMouse(words, line);
    else if (directive == ":tilt")
        setTilt(words, line);
    else if (directive == ":state")
        printLine(describeState());
    else if (directive == ":screenshot")
        takeScreenshot(words, line);
    else if (directive == ":overview")
        takeOverview(words, line);
    else
        report(line, "unknown directive");
}

// False at the end of the script.
bool runNextLine() {
    std::string line;
    if (!std::getline(*scriptState().script, line)) return false;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty() && line[0] == ':')
        runDirective(line);
    else
        GLConsole::enterLine(line);
    keepMainMenuClosed();
    return true;
}

// Feeds a screen's own loop one line each time round; at the end of the
// script the player closes the window, which ends every loop.
void driveScreenLoop() {
    if (!inScreenLoop()) return;
    if (!runNextLine()) GLWindow::close();
}

}  // namespace

void stepFrame(float seconds) {
    Platform::advanceClock(static_cast<uint64_t>(static_cast<double>(seconds) * 1e6 + 0.5));
    if (inScreenLoop()) {
        if (GLWindowEventListener* screen = GLWindow::getEventListener()) screen->windowRedrawing();
        return;
    }
    GLWindow::run();
    Game::runFrame(seconds);
    keepMainMenuClosed();
}

void runScript(std::istream& script, bool menus) {
    scriptState().script = &script;
    scriptState().menus = menus;
    GLWindow::Headless::setModalLoopDriver(driveScreenLoop);
    while (Game::isRunning() && GLWindow::exists() && runNextLine()) {
    }
    GLWindow::Headless::setModalLoopDriver(nullptr);
}

}  // namespace Headless
