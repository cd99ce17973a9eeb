// Encodes baked media with the FFmpeg libraries, bit-exact so that every bake
// gives the same bytes: Vorbis sound in Ogg, and Motion JPEG video in AVI.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

constexpr int audioRate = 44100;

// Mono samples from -1 to 1, written as a Vorbis stream in an Ogg file.
bool writeOgg(const std::string& path, const std::vector<float>& samples, std::string& error);

// One frame of video: width * height pixels of red, green, blue bytes, top row first.
using FrameSource = std::function<std::vector<uint8_t>(int frame)>;
bool writeAvi(const std::string& path, int width, int height, int framesPerSecond, int frameCount,
              const FrameSource& source, std::string& error);
