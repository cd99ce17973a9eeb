// Text in a real window: the console's bands, output and input line, and the
// fonts' cells. Beside the other drawing tests: the console program counts
// every allocation, which the GL driver's own allocations must not meet.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "console/console.h"
#include "console/console_state.h"
#include "graphics/graphics.h"
#include "graphics/real_window.h"
#include "graphics/test_images.h"
#include "support/test_support.h"

namespace {

const Rgb black{0, 0, 0};
const Rgb outputBackground{128, 0, 0};  // red at alpha 0.5 over black
const Rgb outputText{0, 255, 255};
const Rgb inputBackground{0, 128, 0};
const Rgb border{0, 0, 255};
const Rgb inputText{255, 255, 0};
const Rgb cursor{255, 255, 255};

// Every cell of the font is an opaque white square but the blank's, so each
// character shows as a block in the text colour.
std::string blockFont() {
    return makeRawTga(128, 128, true, [](int x, int y) {
        const int cell = (y / 8) * 16 + x / 8;
        return cell == ' ' ? Bgra{0, 0, 0, 0} : Bgra{255, 255, 255, 255};
    });
}

const char* const configuration =
    "fontTextureName = gfx\\console_font.tga\n"
    "fontSize = 8\n"
    "output_background_r = 1.0\noutput_background_a = 0.5\n"
    "output_text_g = 1.0\noutput_text_b = 1.0\n"
    "input_background_g = 0.5\n"
    "input_border_b = 1.0\n"
    "input_text_r = 1.0\ninput_text_g = 1.0\n";

// A window of 640 by 480 with a font of 8: 80 columns, 56 rows, the output area
// down to 448, the input area from 450 to 478.
class ConsoleDrawing : public ::testing::Test {
protected:
    ScratchFolder folder;
    RealWindow window{640, 480};

    ConsoleDrawing() {
        folder.write("gfx/console_font.tga", blockFont());
        folder.write("cfg/console.cfg", configuration);
        GLTextureManager::initialise();
        GLConsole::initialise();
    }
    ~ConsoleDrawing() override {
        GLConsole::shutdown();
        GLTextureManager::shutdown();
    }

    static void draw() {
        GLWindow::clearScreen(0.0f, 0.0f, 0.0f);
        GLConsole::draw();
    }
    // The middle of a character cell of the output area.
    static Rgb outputCell(int column, int line) { return readPixel(column * 8 + 4, line * 8 + 4); }
    static Rgb inputCell(int column) { return readPixel(column * 8 + 4, 57 * 8 + 4 + 4); }
};

// Printed text and the last three lines of the output as they must show, a
// blank where the background shows; each line is checked to one cell past its end.
TEST_F(ConsoleDrawing, TextFillsTheLastLinesAndWrapsAtTheColumnCount) {
    const std::string full(80, 'X'), x76(76, 'X');
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"\nolder line\nAB C", {"", "older line", "AB C"}},
        {"\n" + full + "XXXXX", {"", full, "XXXXX"}},
        // A line of exactly the column count adds no blank line.
        {"\n" + full + "Y", {"", full, "Y"}},
        // A tab that would not fit breaks the line; one that fits runs to the next stop.
        {"\n" + x76 + "\tZ", {"", x76, "Z"}},
        {"\nA\tB", {"", "", "A       B"}},
    };
    for (const auto& [printed, lines] : cases) {
        GLConsole::clear();
        GLConsole::print(printed);
        draw();
        for (int line = 0; line < 3; ++line)
            for (std::size_t column = 0; column <= std::min<std::size_t>(lines[line].size(), 79); ++column) {
                const bool text = column < lines[line].size() && lines[line][column] != ' ';
                EXPECT_TRUE(near(outputCell(static_cast<int>(column), 53 + line),
                                 text ? outputText : outputBackground))
                    << printed.substr(0, 12) << " at " << column << "," << 53 + line;
            }
    }
}

TEST_F(ConsoleDrawing, TheDisplayIsUnbrokenAcrossTheStoreWrap) {
    const std::string line = "\n" + std::string(40, 'W');
    while (GLConsole::state().outputPosition < GLConsole::outputBufferSize - 20) GLConsole::print(line);
    GLConsole::print("\n" + std::string(30, 'Q'));
    ASSERT_LT(GLConsole::state().outputPosition, 20);
    draw();
    EXPECT_TRUE(near(outputCell(29, 55), outputText));
    EXPECT_TRUE(near(outputCell(30, 55), outputBackground));
    EXPECT_TRUE(near(outputCell(39, 54), outputText));
    EXPECT_TRUE(near(outputCell(40, 54), outputBackground));
    EXPECT_TRUE(near(outputCell(39, 0), outputText));
}

TEST_F(ConsoleDrawing, TheInputLineAndItsCursor) {
    GLWindow::Headless::setKeyDown(16, true);
    GLConsole::keyPressed('H');
    GLConsole::keyPressed('I');
    GLWindow::Headless::setKeyDown(16, false);
    draw();
    EXPECT_TRUE(near(inputCell(0), inputText));
    EXPECT_TRUE(near(inputCell(1), inputText));
    EXPECT_TRUE(near(inputCell(2), inputBackground));
    // Overwrite mode: a block from 471 to 476 under column 2.
    EXPECT_TRUE(near(readPixel(2 * 8 + 4, 471), cursor));
    EXPECT_TRUE(near(readPixel(2 * 8 + 4, 475), cursor));
    EXPECT_TRUE(near(readPixel(1 * 8 + 4, 473), inputBackground));

    GLWindow::Headless::setKeyToggled(45, true);
    draw();
    GLWindow::Headless::setKeyToggled(45, false);
    EXPECT_TRUE(near(readPixel(2 * 8 + 4, 471), cursor));
    EXPECT_TRUE(near(readPixel(2 * 8 + 4, 473), inputBackground));
}

// A font size whose layout sums would overflow draws one huge cell, no more.
TEST_F(ConsoleDrawing, AnAbsurdFontSizeDrawsWithoutOverflow) {
    folder.write("cfg/console.cfg", "fontSize = 107374183\nfontTextureName = gfx\\console_font.tga\n");
    GLConsole::loadConfiguration();
    GLConsole::print("\nXXXX");
    draw();
    EXPECT_LE(GLConsole::state().fontSize, 4096);
}

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

// GLFont copies and assigns through its own code: each handle holds one reference.
TEST_F(FontDrawing, FontsAreTextureHandles) {
    GLFont font(GLTexture("gfx\\font.tga"));
    GLFont copy(font);
    EXPECT_EQ(copy.id, font.id);
    EXPECT_EQ(GLTextureManager::findTexture("gfx\\font.tga")->referenceCount, 2);
    copy = font;
    EXPECT_EQ(GLTextureManager::findTexture("gfx\\font.tga")->referenceCount, 2);
}

}  // namespace
