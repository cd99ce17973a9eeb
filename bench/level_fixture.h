// Level files for the level benchmarks, written into a scratch folder.
#pragma once

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>

#include "level/level.h"

namespace LevelBench {

// Works in a fresh temporary folder for the life of the object.
class Folder {
public:
    Folder() : previous(std::filesystem::current_path()) {
        folder = std::filesystem::temp_directory_path() / ("brookfall-bench-" + std::to_string(::getpid()));
        std::filesystem::create_directories(folder / "maps");
        std::filesystem::create_directories(folder / "cfg");
        std::filesystem::current_path(folder);
    }
    ~Folder() {
        std::filesystem::current_path(previous);
        std::filesystem::remove_all(folder);
    }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder / name, std::ios::binary) << bytes;
    }

private:
    std::filesystem::path previous, folder;
};

inline PolygonRecord square(int x, int y, int size) {
    PolygonRecord polygon;
    polygon.points = {{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}};
    return polygon;
}

// Squares of 20 units on a 40-unit grid, four edges each, around the origin.
inline LevelFile gridOfSquares(int edges) {
    LevelFile level;
    const int squares = edges / 4;
    const int side = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(squares))));
    for (int i = 0; i < squares; ++i)
        level.polygons.push_back(
            square((i % side - side / 2) * 40 + 10, (i / side - side / 2) * 40 + 10, 20));
    return level;
}

// One concave outline: a circle of the given radius with a wavy rim.
inline LevelFile wavyDisc(int points, int radius) {
    LevelFile level;
    PolygonRecord polygon;
    for (int i = 0; i < points; ++i) {
        const double angle = 6.283185307179586 * i / points;
        const double r = radius + (i % 2 == 0 ? 0 : radius / 40);
        polygon.points.push_back({static_cast<int32_t>(std::lround(std::cos(angle) * r)),
                                  static_cast<int32_t>(std::lround(std::sin(angle) * r))});
    }
    level.polygons.push_back(polygon);
    return level;
}

}  // namespace LevelBench
