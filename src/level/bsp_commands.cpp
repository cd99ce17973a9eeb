// The tree's console commands: its size and depth, a cursor to walk it with,
// a ray-cast benchmark and the four debug drawing switches.
#include <algorithm>

#include "console/console.h"
#include "level/bsp_state.h"

namespace {

using LevelBspTree::state;
using LevelBspTree::testCastIterations;
using LevelBspTree::testRayCount;

// Size and depth in one walk with a stack of its own: trees can be deep.
void measure(const BspNode* root, int& size, int& depth) {
    size = depth = 0;
    std::vector<std::pair<const BspNode*, int>> pending;
    if (root) pending.emplace_back(root, 1);
    while (!pending.empty()) {
        const auto [node, level] = pending.back();
        pending.pop_back();
        ++size;
        depth = std::max(depth, level);
        if (node->negativeChild) pending.emplace_back(node->negativeChild, level + 1);
        if (node->positiveChild) pending.emplace_back(node->positiveChild, level + 1);
    }
}

void printWalkUsage() {
    GLConsole::print("\nUnrecognised tree walk command. Valid commands are: ");
    GLConsole::print("\n");
    for (const char* word : {"LEFT", "RIGHT", "PARENT", "ROOT"})
        GLConsole::print(std::string("\nBspWalk ") + word);
    GLConsole::print("\n");
}

void moveCursor(BspNode* target, const char* impossible) {
    if (target)
        state().cursor = target;
    else
        GLConsole::print(impossible);
}

void printWalkOptions() {
    std::string options;
    if (state().cursor != state().root) options += "ROOT ";
    if (state().cursor->parent) options += "PARENT ";
    if (state().cursor->negativeChild) options += "LEFT ";
    if (state().cursor->positiveChild) options += "RIGHT ";
    GLConsole::print("\nWalk options for current node: " + options);
}

void castTestRays(const Vector2D& from) {
    for (int pass = 0; pass < testCastIterations; ++pass) {
        for (int ray = 0; ray < testRayCount; ++ray) {
            state().testRayStart[ray] = from;
            const float dx = static_cast<float>((randomUnit() - 0.5) * 100000.0);
            const float dy = static_cast<float>((randomUnit() - 0.5) * 100000.0);
            state().testRayEnd[ray] = from + Vector2D(dx, dy);
            LevelBspTree::raycast(state().testRayStart[ray], state().testRayEnd[ray]);
        }
    }
}

}  // namespace

namespace LevelBspTree {

int conCmdBspSize() {
    TRACE_LOCATION("LevelBspTree::conCmdBspSize");
    int size, depth;
    measure(state().root, size, depth);
    return size;
}

int conCmdBspDepth() {
    TRACE_LOCATION("LevelBspTree::conCmdBspDepth");
    int size, depth;
    measure(state().root, size, depth);
    return depth;
}

void conCmdBspWalk(std::string argument) {
    TRACE_LOCATION("LevelBspTree::conCmdBspWalk");
    if (!state().root || !state().cursor) return;
    std::vector<std::string> words;
    slSeparateArgs(argument, words);
    std::string word = words.size() == 1 ? words[0] : argument;
    slStringUpper(word);
    if (word == "PARENT")
        moveCursor(state().cursor->parent, "\nNo parent node at current node.");
    else if (word == "LEFT")
        moveCursor(state().cursor->negativeChild, "\nNo left child node at current node.");
    else if (word == "RIGHT")
        moveCursor(state().cursor->positiveChild, "\nNo right child node at current node.");
    else if (word == "ROOT")
        moveCursor(state().cursor == state().root ? nullptr : state().root, "\nAlready at root node.");
    else
        printWalkUsage();
    printWalkOptions();
}

void conCmdBspCast(std::string arguments) {
    TRACE_LOCATION("LevelBspTree::conCmdBspCast");
    std::vector<std::string> args;
    if (!GLConsole::readArguments(arguments, "nn", "\nUSAGE: BspCast < number > < number >", args)) return;
    static FrameClock clock;
    const Vector2D from(slStringToFloat(args[0]), slStringToFloat(args[1]));
    clock.update();
    castTestRays(from);
    clock.update();
    const int totalRays = testRayCount * testCastIterations;
    GLConsole::printTitle("Test ray cast results");
    GLConsole::print("\nTest cast rays:              ");
    GLConsole::print(testRayCount);
    GLConsole::print("\nTest cast iterations:        ");
    GLConsole::print(testCastIterations);
    GLConsole::print("\nTotal rays cast:             ");
    GLConsole::print(totalRays);
    GLConsole::print("\nSeconds taken:               ");
    GLConsole::print(clock.deltaSeconds);
    GLConsole::print("\nClocks taken:                ");
    GLConsole::print(clock.deltaTicks);
    GLConsole::print("\nRays per second (average):   ");
    GLConsole::print(static_cast<float>(totalRays) / clock.deltaSeconds);
}

}  // namespace LevelBspTree

namespace LevelBspTree {

namespace {
const GLConsoleCommand commands[] = {
    {"BspSize", conCmdBspSize},
    {"BspDepth", conCmdBspDepth},
    {"BspWalk", conCmdBspWalk},
    {"BspWalkDraw", GLConsole::settingCommand<state, &State::walkDraw>},
    {"BspCast", conCmdBspCast},
    {"BspCastDraw", GLConsole::settingCommand<state, &State::castDraw>},
    {"BspSplitDraw", GLConsole::settingCommand<state, &State::splitDraw>},
    {"BspNodeDraw", GLConsole::settingCommand<state, &State::nodeDraw>},
};
}  // namespace

void registerCommands() {
    TRACE_LOCATION("LevelBspTree::registerCommands");
    GLConsole::addCommands(commands);
}

void removeCommands() {
    TRACE_LOCATION("LevelBspTree::removeCommands");
    GLConsole::removeCommands(commands);
}

}  // namespace LevelBspTree
