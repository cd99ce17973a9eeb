// Script lines: ":step N [DT]", ":key CODE down|up", ":tilt DEGREES", ":state",
// ":screenshot FILE.png" (with --window); anything else is typed into the console.
#include <cstdint>
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
    const auto microseconds = static_cast<uint64_t>(static_cast<double>(seconds) * 1e6 + 0.5);
    for (long i = 0; i < count && Game::isRunning(); ++i) {
        Platform::advanceClock(microseconds);
        GLWindow::run();
        Game::runFrame(seconds);
    }
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

// The frame on screen, as a PNG file relative to the data directory.
void takeScreenshot(std::istringstream& words, const std::string& line) {
    std::string fileName;
    if (!(words >> fileName)) return report(line, "expected :screenshot FILE.png");
    // Drawn again without presenting, since a presented frame may be gone from the back buffer.
    Game::drawFrame();
    if (!GLWindow::saveScreenshot(fileName)) report(line, "no frame to save (run with --window)");
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
    else
        report(line, "unknown directive");
}

}  // namespace

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
