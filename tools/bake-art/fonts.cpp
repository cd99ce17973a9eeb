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
    // Glyphs drawn wider than the face has them, so that letters fill their
    // square cells instead of standing far apart.
    float widen;
    // Pixels of dark rim around each letter, which keeps it readable over a
    // bright level; the text colour tints the letter and leaves the rim dark.
    int rim;
};

const FontRecipe fonts[] = {
    {"gfx/fonts/console.tga", "DejaVuSansMono.ttf", 16, 0.9f, 1.0f, 0},
    {"gfx/fonts/label.tga", "DejaVuSansCondensed-Bold.ttf", 32, 0.8f, 1.0f, 0},
    {"gfx/fonts/menu.tga", "DejaVuSans-Bold.ttf", 64, 0.72f, 1.6f, 4},
};

// The bytes that name printable characters; control codes stay empty cells.
bool printable(int c) {
    return (c >= 32 && c < 127) || c >= 160;
}

// Copies a rendered glyph into its cell, clipped to the cell less a margin:
// what touches a cell's edge bleeds into its neighbour when the font is drawn small.
void placeGlyph(Image& image, const FT_Bitmap& bitmap, int left, int top, int cellX, int cellY, int cell,
                int margin) {
    for (unsigned row = 0; row < bitmap.rows; ++row) {
        for (unsigned column = 0; column < bitmap.width; ++column) {
            const int x = left + static_cast<int>(column);
            const int y = top + static_cast<int>(row);
            if (x < cellX + margin || y < cellY + margin || x >= cellX + cell - margin ||
                y >= cellY + cell - margin)
                continue;
            const float value = bitmap.buffer[row * bitmap.pitch + column] / 255.0f;
            Rgba& pixel = image.at(x, y);
            pixel.a = std::max(pixel.a, value);
        }
    }
}

// The letters' coverage becomes a white letter inside a dark rim of the given width.
void addRim(Image& image, int rim) {
    if (rim <= 0) return;
    const Image letters = image;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            float near = 0.0f;
            for (int dy = -rim; dy <= rim; ++dy)
                for (int dx = -rim; dx <= rim; ++dx) {
                    const int nx = x + dx, ny = y + dy;
                    if (dx * dx + dy * dy > rim * rim || nx < 0 || ny < 0 || nx >= image.width ||
                        ny >= image.height)
                        continue;
                    near = std::max(near, letters.at(nx, ny).a);
                }
            const float letter = letters.at(x, y).a;
            const float alpha = letter + near * (1.0f - letter);
            const float white = alpha > 0.0f ? letter / alpha : 1.0f;
            image.at(x, y) = rgb(white, white, white, alpha);
        }
    }
}

bool renderFont(FT_Library library, const FontRecipe& recipe, const std::string& folder, Image& image) {
    FT_Face face = nullptr;
    if (FT_New_Face(library, (folder + "/" + recipe.file).c_str(), 0, &face) != 0) return false;
    const int pixelSize = static_cast<int>(static_cast<float>(recipe.cell) * recipe.scale);
    FT_Set_Pixel_Sizes(face, static_cast<FT_UInt>(static_cast<float>(pixelSize) * recipe.widen),
                       static_cast<FT_UInt>(pixelSize));
    const int ascender = static_cast<int>(face->size->metrics.ascender >> 6);
    const int descender = static_cast<int>(face->size->metrics.descender >> 6);
    const int baseline = (recipe.cell - (ascender - descender)) / 2 + ascender;
    image = Image(recipe.cell * 16, recipe.cell * 16, rgb(1.0f, 1.0f, 1.0f, 0.0f));
    for (int c = 0; c < 256; ++c) {
        if (!printable(c) || FT_Load_Char(face, static_cast<FT_ULong>(c), FT_LOAD_RENDER) != 0) continue;
        // A letter widened past its cell is drawn again just narrow enough to fit.
        const int widest = recipe.cell - 2 * recipe.rim;
        const int wideAdvance = static_cast<int>(face->glyph->advance.x >> 6);
        if (wideAdvance > widest) {
            const float fit = static_cast<float>(widest) / static_cast<float>(wideAdvance);
            FT_Set_Pixel_Sizes(face, static_cast<FT_UInt>(static_cast<float>(pixelSize) * recipe.widen * fit),
                               static_cast<FT_UInt>(pixelSize));
            FT_Load_Char(face, static_cast<FT_ULong>(c), FT_LOAD_RENDER);
            FT_Set_Pixel_Sizes(face, static_cast<FT_UInt>(static_cast<float>(pixelSize) * recipe.widen),
                               static_cast<FT_UInt>(pixelSize));
        }
        const FT_GlyphSlot glyph = face->glyph;
        const int cellX = (c & 15) * recipe.cell;
        const int cellY = ((c >> 4) & 15) * recipe.cell;
        const int advance = static_cast<int>(glyph->advance.x >> 6);
        const int penX = cellX + (recipe.cell - advance) / 2;
        placeGlyph(image, glyph->bitmap, penX + glyph->bitmap_left, cellY + baseline - glyph->bitmap_top,
                   cellX, cellY, recipe.cell, recipe.rim > 0 ? recipe.rim + 2 : 0);
    }
    FT_Done_Face(face);
    addRim(image, recipe.rim);
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
