// Writes 32-bit TGA files in the layout the game's own loader reads fastest:
// true colour, blue-green-red-alpha bytes, first row at the top.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "image.h"

// The file's bytes. With runLength, rows are packed as run-length packets
// (image type 10) that never cross a row end; otherwise image type 2.
std::vector<uint8_t> encodeTga(const Image& image, bool runLength);

// Writes the bytes, making the folders on the way. False if it can't.
bool writeTga(const std::string& path, const Image& image, bool runLength = false);
