// The headless runner: plays a level without a window or sound device, and
// without the menus unless asked,
// from script lines, with time simulated so that runs replay byte for byte.
#pragma once

#include <iosfwd>
#include <string>

#include "graphics/window/window.h"
#include "level/level.h"

namespace Headless {

struct Options {
    std::string dataDirectory;
    std::string levelName;
    std::string scriptName;  // empty: standard input
    bool window = false;
    bool menus = false;  // keep the menus as the game has them
    // --probe: the level played with simple strategies instead of a script.
    bool probe = false;
    // Where the runner was started: screenshots are written relative to it.
    std::string startDirectory;
};

// Reads the command line; on a mistake prints the usage and returns false.
bool parseOptions(int argc, char** argv, Options& options);

// Starts the console and the game on the level; false when the level failed to load.
bool startGame(const Options& options);
void stopGame();

// Runs every line of the script; returns when the script ends or the game stopped.
void runScript(std::istream& script, bool menus);
// One frame in which a game step of the given length is due, the clock moved on
// by as much; inside a screen's own loop, a frame of that screen.
void stepFrame(float seconds);

// The game's own listener, which receives the script's keys and mouse outside
// the loops that screens run on their own.
GLWindowEventListener& gameListener();

// Plays the level with every probe strategy and prints a line for each; the exit code.
int runProbe(const Options& options);

// A picture of the whole level with the water, the start points, the trigger
// areas, the movers' paths and the sound sources' ranges; false without a window.
bool drawOverview();

// Where the runner was started, which relative picture paths are taken from.
const std::string& startDirectory();

// Prints a line of the runner's own on standard output, on a line of its own
// between the console's messages.
void printLine(const std::string& line);

// The records of a level file as far as they can be read: the runner only
// looks again at what the game itself has loaded. None if it can't be opened.
LevelFile readLevelRecords(const std::string& levelName);

// One line of JSON describing the game now.
std::string describeState();

}  // namespace Headless
