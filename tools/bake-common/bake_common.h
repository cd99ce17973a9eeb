// What the bake tools share: the circle's constants, a generator that gives the
// same numbers on every run, and the writing of a baked file. Header-only, so that each bake tool
// stays a program of its own folder.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

constexpr float pi = 3.1415927f;
constexpr float twoPi = 2.0f * pi;

// Xorshift from a seed spread over the 32 bits; each kind of bake adds an
// offset of its own, so that equal seeds in two bakes give unrelated numbers.
class BakeRandom {
public:
    BakeRandom(uint32_t seed, uint32_t offset) : state(seed * 2654435761u + offset) {}
    // -1 to 1.
    float next() {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return static_cast<float>(state >> 8) / 8388607.5f - 1.0f;
    }

private:
    uint32_t state;
};

// Writes the bytes to the path, making its folders first; false if any of it failed.
inline bool writeBakedFile(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && written;
}
