// The screen on which a player who made the table types a name: letters,
// digits and blanks, up to 20. Enter, Escape or a click on the button ends it;
// the button then has 0.8 seconds to show its click before the screen goes.
#include <GL/gl.h>

#include <cctype>

#include "menus/menus.h"
#include "menus/screens/screens.h"

namespace {

bool allowedInName(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == ' ';
}

void drawTexts(const GLFont& font, const char* name, const float* color, float offsetX, float offsetY) {
    TRACE_LOCATION("HighScores::drawTexts");
    font.drawStringCentered("New high score!", offsetX, 32.0f + offsetY, 800.0f, 32.0f, 32.0f, color[0],
                            color[1], color[2], color[3]);
    font.drawStringCentered("Please enter name:", offsetX, 80.0f + offsetY, 800.0f, 32.0f, 32.0f, color[0],
                            color[1], color[2], color[3]);
    font.drawStringCentered(name, offsetX, 224.0f + offsetY, 800.0f, 16.0f, 24.0f, color[0], color[1],
                            color[2], color[3]);
}

}  // namespace

HighScores::HighScores(GuiScreen* backgroundScreen) : background(backgroundScreen) {
    TRACE_LOCATION("HighScores::HighScores");
    readSettings();
    clock.reset();
    sound->setVolume(1.0f);
    sound->play();
}

HighScores::~HighScores() = default;

void HighScores::readSettings() {
    TRACE_LOCATION("HighScores::readSettings");
    const ConfigFile game("cfg\\game.cfg");
    // The level-finished screen's own button, made as the menus make theirs.
    const MenuConfig menu("cfg\\menu_levelFinished.cfg");
    const ConfigFile& general = menu.general();
    cursor = std::make_unique<GLTexture>(game.getVarAsString("cursor"));
    sound = std::make_unique<Sound>(game.getVarAsString("highScoreSound"));
    font = std::make_unique<GLFont>(GLTexture(general.getVarAsString("menuFont")));
    const char* colorKeys[] = {"menuFontColor_r", "menuFontColor_g", "menuFontColor_b", "menuFontColor_a"};
    const char* shadowKeys[] = {"textDropShadowColor_r", "textDropShadowColor_g", "textDropShadowColor_b",
                                "textDropShadowColor_a"};
    for (int i = 0; i < 4; ++i) {
        fontColor[i] = general.getVarAsFloat(colorKeys[i]);
        shadowColor[i] = general.getVarAsFloat(shadowKeys[i]);
    }
    shadowOffset[0] = general.getVarAsFloat("textDropShadowOffset_x");
    shadowOffset[1] = general.getVarAsFloat("textDropShadowOffset_y");
    // Its callbacks stay empty: this screen acts on the press itself.
    continueButton.reset(menu.makeButton("continueButton", nullptr, nullptr));
}

void HighScores::finish() {
    TRACE_LOCATION("HighScores::finish");
    continueButton->mousePressed(0, 0, MouseButton::left);
    closing = true;
}

void HighScores::keyboardPressed(int key) {
    TRACE_LOCATION("HighScores::keyboardPressed");
    if (closing) return;
    if (key == VirtualKey::enter || key == VirtualKey::escape) {
        finish();
    } else if (key == VirtualKey::backspace) {
        if (nameLength != 0) name[--nameLength] = '\0';
    } else if (nameLength < maxNameLength) {
        const char c = GLWindow::keyboardKeyToAscii(key);
        if (allowedInName(c)) name[nameLength++] = c;
    }
}

void HighScores::mouseMoved(int windowX, int windowY) {
    TRACE_LOCATION("HighScores::mouseMoved");
    if (closing) return;
    GuiAnimatedButton& button = *continueButton;
    const int px = Gui::toVirtualX(windowX);
    const int py = Gui::toVirtualY(windowY);
    // The button's edges count as inside.
    const bool inside =
        px >= button.x && px <= button.x + button.width && py >= button.y && py <= button.y + button.height;
    if (inside && !button.focused) {
        button.focused = true;
        button.gainedFocus();
    } else if (!inside && button.focused) {
        button.focused = false;
        button.lostFocus();
    }
}

void HighScores::mousePressed(int windowX, int windowY, int button) {
    TRACE_LOCATION("HighScores::mousePressed");
    if (closing) return;
    const int px = Gui::toVirtualX(windowX);
    const int py = Gui::toVirtualY(windowY);
    GuiAnimatedButton& target = *continueButton;
    const bool inside =
        px >= target.x && px <= target.x + target.width && py >= target.y && py <= target.y + target.height;
    if (!inside || target.getState() != GuiAnimatedButton::inFocus) return;
    target.mousePressed(px, py, button);
    closing = true;
}

void HighScores::windowClosing() {
    TRACE_LOCATION("HighScores::windowClosing");
    GLWindow::close();
}

void HighScores::windowRedrawing() {
    TRACE_LOCATION("HighScores::windowRedrawing");
    clock.update();
    if (closing) {
        if (closeTimer <= 0.0f) running = false;
        closeTimer -= clock.deltaSeconds;
    }
    if (!GLWindow::contextAvailable()) {
        // The button's animation goes on without a picture.
        continueButton->windowRedrawing();
        return;
    }
    draw();
}

void HighScores::draw() const {
    TRACE_LOCATION("HighScores::draw");
    GLWindow::clearScreen(0.0f, 0.0f, 0.0f);
    if (background) background->windowRedrawing();
    GLWindow::glBeginDraw2d();
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    Gui::scaleToWindow();
    glColor4f(0.0f, 0.0f, 0.0f, 0.9f);
    glBegin(GL_QUADS);
    glVertex2f(0.0f, 0.0f);
    glVertex2f(800.0f, 0.0f);
    glVertex2f(800.0f, 600.0f);
    glVertex2f(0.0f, 600.0f);
    glEnd();
    drawTexts(*font, name, shadowColor, shadowOffset[0], shadowOffset[1]);
    drawTexts(*font, name, fontColor, 0.0f, 0.0f);
    continueButton->windowRedrawing();
    Gui::drawCursor(*cursor, false);
    GLWindow::swapBuffers();
}
