#include "text.h"

#include <ft2build.h>
#include FT_FREETYPE_H

namespace {

int lineWidth(FT_Face face, const std::string& text) {
    int width = 0;
    for (unsigned char c : text)
        if (FT_Load_Char(face, c, FT_LOAD_DEFAULT) == 0)
            width += static_cast<int>(face->glyph->advance.x >> 6);
    return width;
}

void blendGlyph(Image& image, const FT_Bitmap& bitmap, int left, int top, const Rgba& colour) {
    for (unsigned row = 0; row < bitmap.rows; ++row) {
        for (unsigned column = 0; column < bitmap.width; ++column) {
            const int x = left + static_cast<int>(column), y = top + static_cast<int>(row);
            if (x < 0 || y < 0 || x >= image.width || y >= image.height) continue;
            const float coverage = bitmap.buffer[row * bitmap.pitch + column] / 255.0f;
            image.at(x, y) = over(image.at(x, y), {colour.r, colour.g, colour.b, colour.a * coverage});
        }
    }
}

}  // namespace

bool drawTextLine(Image& image, const TextStyle& style, const std::string& text, int centreX, int baselineY) {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) return false;
    FT_Face face = nullptr;
    const bool opened = FT_New_Face(library, style.fontFile.c_str(), 0, &face) == 0;
    if (opened) {
        FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(style.pixelSize));
        int penX = centreX - lineWidth(face, text) / 2;
        for (unsigned char c : text) {
            if (FT_Load_Char(face, c, FT_LOAD_RENDER) != 0) continue;
            blendGlyph(image, face->glyph->bitmap, penX + face->glyph->bitmap_left,
                       baselineY - face->glyph->bitmap_top, style.colour);
            penX += static_cast<int>(face->glyph->advance.x >> 6);
        }
        FT_Done_Face(face);
    }
    FT_Done_FreeType(library);
    return opened;
}
