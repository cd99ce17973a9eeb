#include <filesystem>
#include <iostream>
#include <vector>

#include "headless.h"

namespace Headless {

namespace {

void printUsage() {
    std::cerr << "usage: brookfall-headless [--data DIR] [--window] [--menus] LEVEL [SCRIPT]\n"
                 "       brookfall-headless [--data DIR] --probe LEVEL\n"
                 "  DIR     the game's working directory (default: the baked data directory)\n"
                 "  LEVEL   a level name as the game writes it, e.g. maps\\testLevel.rill\n"
                 "  SCRIPT  script lines (default: standard input)\n"
                 "  --menus keeps the main menu open over the level, as the game has it\n"
                 "  --probe plays LEVEL with constant tilts and turns, one JSON line each\n";
}

}  // namespace

bool parseOptions(int argc, char** argv, Options& options) {
    options.dataDirectory = BROOKFALL_DATA_DIR;
    std::error_code error;
    options.startDirectory = std::filesystem::current_path(error).string();
    std::vector<std::string> positional;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--data" && i + 1 < argc) {
            options.dataDirectory = std::filesystem::absolute(argv[++i]).string();
        } else if (argument == "--window") {
            options.window = true;
        } else if (argument == "--menus") {
            options.menus = true;
        } else if (argument == "--probe") {
            options.probe = true;
        } else if (argument.rfind("--", 0) == 0) {
            printUsage();
            return false;
        } else {
            positional.push_back(argument);
        }
    }
    if (positional.empty() || positional.size() > (options.probe ? 1u : 2u) ||
        (options.probe && options.window)) {
        printUsage();
        return false;
    }
    options.levelName = positional[0];
    if (positional.size() == 2) options.scriptName = std::filesystem::absolute(positional[1]).string();
    return true;
}

}  // namespace Headless
