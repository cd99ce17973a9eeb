#include <gtest/gtest.h>

#include "graphics/graphics.h"
#include "real_window.h"
#include "support/test_support.h"
#include "test_images.h"

namespace {

// Cells of 16 pixels, each in a colour of its own byte value.
Rgb cellColour(int c) {
    return {c, 255 - c, 128};
}

std::string colouredFont() {
    return makeRawTga(256, 256, true, [](int x, int y) {
        const int c = (y / 16) * 16 + x / 16;
        return Bgra{128, static_cast<uint8_t>(255 - c), static_cast<uint8_t>(c), 255};
    });
}

class FontDrawing : public ::testing::Test {
protected:
    ScratchFolder folder;
    RealWindow window{200, 120};
    FontDrawing() {
        folder.write("gfx/font.tga", colouredFont());
        GLTextureManager::initialise();
        GLWindow::clearScreen(0.0f, 0.0f, 0.0f);
        GLWindow::glBeginDraw2d();
    }
    ~FontDrawing() override { GLTextureManager::shutdown(); }
};

TEST_F(FontDrawing, EachByteDrawsItsCellAndNewlinesGoBackToTheStart) {
    GLFont font(GLTexture("gfx\\font.tga"));
    font.drawString("A\n\nB\xff", 10.0f, 20.0f, 16.0f, 1.0f, 1.0f, 1.0f, 1.0f);
    EXPECT_TRUE(near(readPixel(18, 28), cellColour('A')));
    EXPECT_TRUE(near(readPixel(18, 44), {0, 0, 0}));
    EXPECT_TRUE(near(readPixel(18, 60), cellColour('B')));
    EXPECT_TRUE(near(readPixel(34, 60), cellColour(255)));
    EXPECT_TRUE(near(readPixel(50, 60), {0, 0, 0}));
}

TEST_F(FontDrawing, TheColourMultipliesTheTexture) {
    GLFont font;
    font = "gfx\\font.tga";
    font.drawString("a", 0.0f, 0.0f, 16.0f, 1.0f, 0.0f, 1.0f, 1.0f);
    EXPECT_TRUE(near(readPixel(8, 8), {'a', 0, 128}));
}

TEST_F(FontDrawing, CentredTextFallsOnWholePixels) {
    GLFont font(GLTexture("gfx\\font.tga"));
    // x = round(50 - 16) = 34, y = round(25.5 - 8) = 18
    font.drawStringCentered("AB", 0.0f, 0.0f, 100.0f, 51.0f, 16.0f, 1.0f, 1.0f, 1.0f, 1.0f);
    EXPECT_TRUE(near(readPixel(34, 18), cellColour('A')));
    EXPECT_TRUE(near(readPixel(65, 33), cellColour('B')));
    EXPECT_TRUE(near(readPixel(33, 25), {0, 0, 0}));
    EXPECT_TRUE(near(readPixel(40, 17), {0, 0, 0}));
}

TEST_F(FontDrawing, NothingIsDrawnOrChangedForEmptyTextOrNoSize) {
    GLFont font(GLTexture("gfx\\font.tga"));
    glDisable(GL_BLEND);
    font.drawString("", 0.0f, 0.0f, 16.0f, 1.0f, 1.0f, 1.0f, 1.0f);
    font.drawString(nullptr, 0.0f, 0.0f, 16.0f, 1.0f, 1.0f, 1.0f, 1.0f);
    font.drawString("A", 0.0f, 0.0f, 0.0f, 1.0f, 1.0f, 1.0f, 1.0f);
    font.drawStringCentered(nullptr, 0.0f, 0.0f, 10.0f, 10.0f, 16.0f, 1.0f, 1.0f, 1.0f, 1.0f);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_TRUE(near(readPixel(8, 8), {0, 0, 0}));
}

}  // namespace
