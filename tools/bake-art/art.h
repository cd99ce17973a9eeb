// The catalogue of everything the art bake makes. Names are relative to the
// data folder, with forward slashes; the game asks for them as "gfx\...".
#pragma once

#include <string>
#include <vector>

#include "image.h"

struct BakedImage {
    std::string name;
    Image image;
    // Large, mostly empty pictures (fonts) are stored run-length packed.
    bool runLength = false;
};

using ArtSet = std::vector<BakedImage>;

// Level surfaces for the five surface types, and decoration textures.
ArtSet bakeSurfaces();
// Water, steam and ice particle images, and effect particles.
ArtSet bakeParticles();
// Animated sprites, in sets of "_FRAMEnn" files.
ArtSet bakeSprites();
// The default checkerboard and the mouse cursor.
ArtSet bakeInterface();
// The loading splash's backdrop, titled with a font from fontFolder, and its
// animation. On failure, error says what was missing.
ArtSet bakeSplash(const std::string& fontFolder, std::string& error);
// Menu buttons, chooser arrows, the logo and the level-finished backdrop.
ArtSet bakeMenus(const std::string& fontFolder, std::string& error);
// Font images of 16 by 16 cells, drawn from the TrueType files in fontFolder.
// On failure, error says what was missing and the set holds what was made.
ArtSet bakeFonts(const std::string& fontFolder, std::string& error);
