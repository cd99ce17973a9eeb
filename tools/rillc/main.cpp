// rillc: the level compiler. Turns the readable text form of a level into a
// level file, prints a level file as text, and checks a level file with the
// game's own reader.
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

#include "console/console.h"
#include "level/level.h"
#include "level_checks.h"
#include "level_tools/level_tools.h"
#include "platform/platform.h"

namespace {

int usage() {
    std::cerr << "usage: rillc compile SOURCE OUT.rill\n"
                 "       rillc dump LEVEL.rill\n"
                 "       rillc check [--data DIR] LEVEL.rill\n"
                 "  DIR  where the names in the level are looked up (default: the working directory)\n";
    return 2;
}

bool readFile(const std::string& name, std::string& bytes) {
    std::ifstream in(name, std::ios::binary);
    if (!in) return false;
    std::ostringstream text;
    text << in.rdbuf();
    bytes = text.str();
    return true;
}

void printToStdout(const char* text, std::size_t length) {
    std::fwrite(text, 1, length, stdout);
}

int compile(const std::string& source, const std::string& output) {
    std::string text;
    if (!readFile(source, text)) {
        std::cerr << "rillc: cannot read '" << source << "'\n";
        return 1;
    }
    LevelFile level;
    std::string error;
    if (!LevelText::parse(text, source, level, error)) {
        std::cerr << error << "\n";
        return 1;
    }
    std::ofstream out(output, std::ios::binary);
    out << LevelFileFormat::write(level);
    out.close();
    if (!out) {
        std::cerr << "rillc: cannot write '" << output << "'\n";
        return 1;
    }
    return 0;
}

int dump(const std::string& name) {
    FILE* file = Platform::openFile(name, "rb");
    if (!file) {
        std::cerr << "rillc: cannot open '" << name << "'\n";
        return 1;
    }
    LevelFile level;
    try {
        LevelFileFormat::read(file, level);
    } catch (const char* reason) {
        std::fclose(file);
        std::cerr << "rillc: '" << name << "': " << reason << "\n";
        return 1;
    }
    std::fclose(file);
    std::cout << LevelText::write(level);
    return 0;
}

// The records as the file holds them, for the warnings to name by index.
bool readRecords(const std::string& name, LevelFile& level) {
    FILE* file = Platform::openFile(name, "rb");
    if (!file) return false;
    bool whole = true;
    try {
        LevelFileFormat::read(file, level);
    } catch (const char*) {
        whole = false;
    }
    std::fclose(file);
    return whole;
}

// Loads the level as the game does, tree and all, then warns of what will not
// play as meant. Only a file the game refuses fails the check.
int check(const std::string& name, const std::string& dataDirectory) {
    GLConsole::setPrintHook(printToStdout);
    const bool loaded = Level::load(name);
    LevelFile level;
    if (loaded && readRecords(name, level))
        for (const std::string& line : LevelChecks::checkLevel(level, dataDirectory).lines)
            std::cout << "\nwarning: " << line;
    std::cout << "\n";
    std::cout.flush();
    GLConsole::setPrintHook(nullptr);
    Level::clear();
    return loaded ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return usage();
    const std::string command = argv[1];
    if (command == "compile" && argc == 4) return compile(argv[2], argv[3]);
    if (command == "dump" && argc == 3) return dump(argv[2]);
    if (command == "check" && argc == 3) return check(argv[2], "");
    if (command == "check" && argc == 5 && std::string(argv[2]) == "--data") return check(argv[4], argv[3]);
    return usage();
}
