// Writes 16-bit mono PCM wave files: "RIFF", "WAVE", a 16-byte "fmt " chunk
// first, then "data", as the game's sound loader reads them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "synth.h"

std::vector<uint8_t> encodeWave(const Samples& samples);
bool writeWave(const std::string& path, const Samples& samples);
