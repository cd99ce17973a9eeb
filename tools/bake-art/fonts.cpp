// Font images: 256 square cells in a 16 by 16 grid, cell c holding the
// character whose byte is c (Latin-1), white, with coverage as alpha.
#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>

#include "art.h"

namespace {

struct FontRecipe {
    const char* name;
    const char* file;
    int cell;
    // Glyph height as a share of the cell; the rest keeps letters apart.
    float scale;
};

const FontRecipe fonts[] = {
    {"gfx/fonts/console.tga", "DejaVuSansMono.ttf", 16, 0.9f},
    {"gfx/fonts/label.tga", "DejaVuSansCondensed-Bold.ttf", 32, 0.8f},
    {"gfx/fonts/menu.tga", "DejaVuSans-Bold.ttf", 64, 0.8f},
};

// The bytes that name printable characters; control codes stay empty cells.
bool printable(int c) {
    return (c >= 32 && c < 127) || c >= 160;
}

// Copies a rendered glyph into its cell, clipped to the cell.
void placeGlyph(Image& image, const FT_Bitmap& bitmap, int left, int top, int cellX, int cellY, int cell) {
    for (unsigned row = 0; row < bitmap.rows; ++row) {
        for (unsigned column = 0; column < bitmap.width; ++column) {
            const int x = left + static_cast<int>(column);
            const int y = top + static_cast<int>(row);
            if (x < cellX || y < cellY || x >= cellX + cell || y >= cellY + cell) continue;
            const float value = bitmap.buffer[row * bitmap.pitch + column] / 255.0f;
            Rgba& pixel = image.at(x, y);
            pixel.a = std::max(pixel.a, value);
        }
    }
}

bool renderFont(FT_Library library, const FontRecipe& recipe, const std::string& folder, Image& image) {
    FT_Face face = nullptr;
    if (FT_New_Face(library, (folder + "/" + recipe.file).c_str(), 0, &face) != 0) return false;
    const int pixelSize = static_cast<int>(static_cast<float>(recipe.cell) * recipe.scale);
    FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(pixelSize));
    const int ascender = static_cast<int>(face->size->metrics.ascender >> 6);
    const int descender = static_cast<int>(face->size->metrics.descender >> 6);
    const int baseline = (recipe.cell - (ascender - descender)) / 2 + ascender;
    image = Image(recipe.cell * 16, recipe.cell * 16, rgb(1.0f, 1.0f, 1.0f, 0.0f));
    for (int c = 0; c < 256; ++c) {
        if (!printable(c) || FT_Load_Char(face, static_cast<FT_ULong>(c), FT_LOAD_RENDER) != 0) continue;
        const FT_GlyphSlot glyph = face->glyph;
        const int cellX = (c & 15) * recipe.cell;
        const int cellY = ((c >> 4) & 15) * recipe.cell;
        const int advance = static_cast<int>(glyph->advance.x >> 6);
        const int penX = cellX + (recipe.cell - advance) / 2;
        placeGlyph(image, glyph->bitmap, penX + glyph->bitmap_left, cellY + baseline - glyph->bitmap_top,
                   cellX, cellY, recipe.cell);
    }
    FT_Done_Face(face);
    return true;
}

}  // namespace

ArtSet bakeFonts(const std::string& fontFolder, std::string& error) {
    ArtSet set;
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) {
        error = "FreeType could not be started";
        return set;
    }
    for (const FontRecipe& recipe : fonts) {
        Image image;
        if (renderFont(library, recipe, fontFolder, image)) {
            set.push_back({recipe.name, std::move(image), true});
        } else {
            error += std::string(error.empty() ? "" : "; ") + "cannot read " + fontFolder + "/" + recipe.file;
        }
    }
    FT_Done_FreeType(library);
    return set;
}
