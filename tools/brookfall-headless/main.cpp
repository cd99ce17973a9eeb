// brookfall-headless [--data DIR] [--window] [--menus] LEVEL [SCRIPT]
// brookfall-headless [--data DIR] --probe LEVEL
#include <fstream>
#include <iostream>

#include "headless.h"

int main(int argc, char** argv) {
    Headless::Options options;
    if (!Headless::parseOptions(argc, argv, options)) return 2;
    if (options.probe) return Headless::runProbe(options);

    std::ifstream scriptFile;
    if (!options.scriptName.empty()) {
        scriptFile.open(options.scriptName);
        if (!scriptFile) {
            std::cerr << "brookfall-headless: cannot read script " << options.scriptName << "\n";
            return 2;
        }
    }
    if (!Headless::startGame(options)) {
        Headless::stopGame();
        return 1;
    }
    Headless::runScript(options.scriptName.empty() ? std::cin : scriptFile, options.menus);
    Headless::stopGame();
    return 0;
}
