// rillc: the level compiler. Turns the readable text form of a level into a
// level file, prints a level file as text, and checks a level file with the
// game's own reader.
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

#include "console/console.h"
#include "level/level.h"
#include "level_tools/level_tools.h"
#include "platform/platform.h"

namespace {

int usage() {
    std::cerr << "usage: rillc compile SOURCE OUT.rill\n"
                 "       rillc dump LEVEL.rill\n"
                 "       rillc check LEVEL.rill\n";
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

// Polygons the game cannot triangulate are neither drawn nor collided with; a
// level designer wants to hear of them.
void reportUntriangulated() {
    std::size_t index = 0;
    for (const Polygon2D& polygon : Level::getPolygons()) {
        if (polygon.triangleCount == 0)
            std::cout << "\nwarning: polygon " << index << " (id " << polygon.id
                      << ") has no triangles: it is neither drawn nor solid";
        ++index;
    }
}

int check(const std::string& name) {
    GLConsole::setPrintHook(printToStdout);
    const bool loaded = LevelLoader::loadLevel(name);
    if (loaded) reportUntriangulated();
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
    if (command == "check" && argc == 3) return check(argv[2]);
    return usage();
}
