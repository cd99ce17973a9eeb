// What the media bake makes: the level music, and the intro video with its
// sound track.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bake-common/bake_common.h"

// A fixed-seed generator, so that every bake gives the same noise.
class MediaRandom : public BakeRandom {
public:
    explicit MediaRandom(uint32_t seed) : BakeRandom(seed, 777u) {}
};

// Plucked notes over a slow pad, a loop of about three quarters of a minute.
std::vector<float> levelMusic();
// A swell, then the drop that lands as the title appears.
std::vector<float> introSoundTrack();

constexpr int introWidth = 640;
constexpr int introHeight = 480;
constexpr int introFramesPerSecond = 25;
constexpr int introFrames = 125;

// Frame i of the intro as RGB bytes; the logo is the baked "gfx/menu/logo.tga"
// (straight RGBA, top row first), or nothing if it is empty.
struct Logo {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> rgba;
};
Logo readLogo(const std::string& path);
std::vector<uint8_t> introFrame(int frame, const Logo& logo);
