// Where the benchmarks that play shipped content find the baked data.
#pragma once

#include <cstdlib>
#include <filesystem>

// BROOKFALL_DATA_DIR from the environment, else the build's own baked data.
inline std::filesystem::path bakedDataDirectory() {
    if (const char* given = std::getenv("BROOKFALL_DATA_DIR")) return given;
    return BROOKFALL_DATA_DIR;
}
