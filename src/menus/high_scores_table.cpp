// The ten best scores as a table of rank, name and score.
#include <GL/gl.h>

#include <cstring>
#include <string>

#include "menus/menus.h"

namespace {
constexpr float smallestFontSize = 4.0f;
}  // namespace

void GuiHighScores::setTitleFontSize(float size) {
    TRACE_LOCATION("GuiHighScores::setTitleFontSize");
    if (size >= smallestFontSize) titleFontSize = size;
}

void GuiHighScores::setEntryFontSize(float size) {
    TRACE_LOCATION("GuiHighScores::setEntryFontSize");
    if (size >= smallestFontSize) entryFontSize = size;
}

void GuiHighScores::drawTable(float red, float green, float blue, float alpha) const {
    TRACE_LOCATION("GuiHighScores::drawTable");
    const float t = titleFontSize;
    const float left = static_cast<float>(x);
    const float nameColumn = left + 6.0f * t;
    const float scoreColumn = left + 18.0f * t;
    float top = static_cast<float>(y);
    font.drawString("Rank", left, top, t, red, green, blue, alpha);
    font.drawString("Name", nameColumn, top, t, red, green, blue, alpha);
    font.drawString("Score", scoreColumn, top, t, red, green, blue, alpha);
    top += 2.0f * t;
    int rank = 1;
    for (const HighScoreEntry& entry : HighScores::getScores()) {
        const std::string name(entry.name, strnlen(entry.name, sizeof(entry.name)));
        font.drawString(std::to_string(rank++).c_str(), left, top, entryFontSize, red, green, blue, alpha);
        font.drawString(name.c_str(), nameColumn, top, entryFontSize, red, green, blue, alpha);
        font.drawString(std::to_string(entry.score).c_str(), scoreColumn, top, entryFontSize, red, green,
                        blue, alpha);
        top += t;
    }
}

void GuiHighScores::windowRedrawing() {
    TRACE_LOCATION("GuiHighScores::windowRedrawing");
    if (!GLWindow::contextAvailable()) return;
    if (dropShadow.on) {
        glPushMatrix();
        glTranslatef(dropShadow.offsetX, dropShadow.offsetY, 0.0f);
        drawTable(dropShadow.r, dropShadow.g, dropShadow.b, dropShadow.a);
        glPopMatrix();
    }
    drawTable(r, g, b, a);
}
