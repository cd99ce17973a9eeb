// Images in every format but our own 32-bit TGA, read through SDL_image.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Platform {

struct LoadedImage {
    int width = 0;
    int height = 0;
    int bytesPerPixel = 0;        // depth of the source: 1, 2, 3 or 4
    bool hasAlpha = false;        // 32-bit sources, and palettes with a colour key
    std::vector<uint8_t> pixels;  // 4 bytes a pixel: blue, green, red, alpha; top row first
};

// False when the file can't be read or has no pixels.
bool loadImage(const std::string& gameName, LoadedImage& image);

// Writes 4 bytes a pixel (red, green, blue, alpha; top row first) as a PNG file.
bool savePng(const std::string& gameName, int width, int height, const std::vector<uint8_t>& pixels);

}  // namespace Platform
