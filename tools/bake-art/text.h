// Lines of text drawn into a picture with FreeType, for titles baked into art.
#pragma once

#include <string>

#include "image.h"

struct TextStyle {
    std::string fontFile;
    int pixelSize = 32;
    Rgba colour;
};

// Draws one line centred on centreX with its baseline at baselineY, blending
// over what is there. False if the font can't be read.
bool drawTextLine(Image& image, const TextStyle& style, const std::string& text, int centreX, int baselineY);
