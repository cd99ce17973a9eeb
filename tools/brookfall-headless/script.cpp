// Script lines: ":step N [DT]", ":key CODE down|up", ":tilt DEGREES", ":state",
// ":screenshot FILE.png" and ":overview FILE.png" (with --window); anything else
// is typed into the console.
#include <cstdint>
#include <filesystem>
#include <sstream>

#include "console/console.h"
#include "game/game.h"
#include "graphics/window/window.h"
#include "headless.h"
#include "platform/platform.h"

namespace Headless {

namespace {

constexpr float defaultStepSeconds = 0.013333334f;

// Receives the keys a script presses, as the game's own listener would.
Game keyListener;

void report(const std::string& line, const char* problem) {
    printLine(std::string("script: ") + problem + ": " + line);
}

void runSteps(std::istringstream& words, const std::string& line) {
    long count = 0;
    float seconds = defaultStepSeconds;
    if (!(words >> count) || count < 0) return report(line, "expected :step N [DT]");
    if (!(words >> seconds)) seconds = defaultStepSeconds;
    for (long i = 0; i < count && Game::isRunning(); ++i) stepFrame(seconds);
}

void setKey(std::istringstream& words, const std::string& line) {
    int code = 0;
    std::string direction;
    if (!(words >> code >> direction) || (direction != "down" && direction != "up"))
        return report(line, "expected :key CODE down|up");
    const bool down = direction == "down";
    GLWindow::Headless::setKeyDown(code, down);
    if (down)
        keyListener.keyboardPressed(code);
    else
        keyListener.keyboardReleased(code);
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
    Game::drawFrame();
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

}  // namespace

void stepFrame(float seconds) {
    Platform::advanceClock(static_cast<uint64_t>(static_cast<double>(seconds) * 1e6 + 0.5));
    GLWindow::run();
    Game::runFrame(seconds);
}

void runScript(std::istream& script) {
    std::string line;
    while (Game::isRunning() && std::getline(script, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty() && line[0] == ':')
            runDirective(line);
        else
            GLConsole::enterLine(line);
    }
}

}  // namespace Headless
