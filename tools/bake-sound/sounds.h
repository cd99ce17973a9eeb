// The catalogue of the game's sounds. Names are relative to the data folder.
#pragma once

#include <string>
#include <vector>

#include "synth.h"

struct BakedSound {
    std::string name;
    Samples samples;
};

// Jingles of the game's rules, the stand-in sound and the level sounds.
std::vector<BakedSound> bakeEventSounds();
// The loops and banks that follow the state of the water, ice and steam.
std::vector<BakedSound> bakeWaterSounds();
