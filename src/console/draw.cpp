// GLConsole::draw: the console over the picture. The output area shows the last
// lines of the circular text store, laid out in fixed cells of the font size;
// below it stands the input line with its cursor.
#include <GL/gl.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "console/console_state.h"
#include "foundation/foundation.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"

namespace GLConsole {

namespace {

struct Layout {
    int columns = 80;
    int rows = 16;
    int cell = 1;
};

// The output store as one history of bytes, oldest first.
char historyByte(int index) {
    return state().outputBuffer[(state().outputPosition + index) % outputBufferSize];
}

// The column after a byte, or -1 when the byte ends the display line.
int advance(char c, int column, int columns) {
    if (c == '\n') return -1;
    if (c == '\t') {
        const int next = (column / 8 + 1) * 8;
        return next >= columns ? -1 : next;
    }
    return column + 1 >= columns ? -1 : column + 1;
}

// Where each display line of a newline-free stretch of the history begins.
std::vector<int> displayLineStarts(int from, int to, int columns) {
    std::vector<int> starts{from};
    int column = 0;
    for (int i = from; i < to; ++i) {
        column = advance(historyByte(i), column, columns);
        if (column < 0) {
            column = 0;
            starts.push_back(i + 1);
        }
    }
    return starts;
}

// The first byte to draw so that the newest text ends on the last of `rows` lines.
int findStart(const Layout& layout) {
    int needed = layout.rows - 1;
    int end = outputBufferSize;
    while (true) {
        int newline = end - 1;
        while (newline >= 0 && historyByte(newline) != '\n') --newline;
        const std::vector<int> starts = displayLineStarts(newline + 1, end, layout.columns);
        const int wraps = static_cast<int>(starts.size()) - 1;
        if (wraps >= needed || newline < 0) return starts[std::max(0, wraps - needed)];
        needed -= wraps + 1;
        end = newline;
    }
}

void drawCell(unsigned char c, float x, float y, float size) {
    const float s = static_cast<float>(c & 15) * 0.0625f;
    const float t = static_cast<float>((c >> 4) & 15) * 0.0625f;
    glTexCoord2f(s, t);
    glVertex2f(x, y);
    glTexCoord2f(s + 0.0625f, t);
    glVertex2f(x + size, y);
    glTexCoord2f(s + 0.0625f, t + 0.0625f);
    glVertex2f(x + size, y + size);
    glTexCoord2f(s, t + 0.0625f);
    glVertex2f(x, y + size);
}

void band(float top, float bottom, float width, const Colour& colour, float alpha) {
    glColor4f(colour.r, colour.g, colour.b, alpha);
    glRectf(0.0f, top, width, bottom);
}

void drawBands(const Layout& layout, int width, int height) {
    const int f = layout.cell;
    const float w = static_cast<float>(width);
    const float outputBottom = static_cast<float>(f * layout.rows);
    const float inputBottom = static_cast<float>((layout.rows + 4) * f - 2);
    band(0.0f, outputBottom, w, state().outputBackground, state().outputBackground.a);
    glDisable(GL_BLEND);
    band(outputBottom, outputBottom + 2.0f, w, state().inputBorder, 1.0f);
    band(outputBottom + 2.0f, inputBottom, w, state().inputBackground, 1.0f);
    band(inputBottom, static_cast<float>(height), w, state().inputBorder, 1.0f);
}

void drawOutput(const Layout& layout) {
    const float size = static_cast<float>(layout.cell);
    glColor4f(state().outputText.r, state().outputText.g, state().outputText.b, 1.0f);
    glBegin(GL_QUADS);
    int line = 0, column = 0;
    for (int i = findStart(layout); i < outputBufferSize && line < layout.rows; ++i) {
        const char c = historyByte(i);
        if (c != 27 && c != '\t' && c != '\n' && c != '\r')
            drawCell(static_cast<unsigned char>(c), static_cast<float>(column) * size,
                     static_cast<float>(line) * size, size);
        column = advance(c, column, layout.columns);
        if (column < 0) {
            column = 0;
            ++line;
        }
    }
    glEnd();
}

void drawInput(const Layout& layout) {
    const int f = layout.cell;
    const int length = static_cast<int>(std::strlen(state().inputBuffer));
    const int first =
        length > layout.columns - 1 ? std::max(0, state().cursorPosition - layout.columns + 1) : 0;
    const float top = static_cast<float>((layout.rows + 1) * f + f / 2);
    glColor4f(state().inputText.r, state().inputText.g, state().inputText.b, 1.0f);
    glBegin(GL_QUADS);
    for (int i = first; i < length && i - first < layout.columns; ++i)
        drawCell(static_cast<unsigned char>(state().inputBuffer[i]), static_cast<float>((i - first) * f), top,
                 static_cast<float>(f));
    glEnd();
}

// A thick block while typing overwrites, a thin line while it inserts.
void drawCursor(const Layout& layout) {
    const int f = layout.cell;
    const int column = std::min(state().cursorPosition, layout.columns - 1);
    const int top = (layout.rows + 3) * f - 1;
    const int bottom =
        GLWindow::keyboardKeyToggled(VirtualKey::insert) ? (layout.rows + 3) * f : (layout.rows + 3) * f + 4;
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    glRectf(static_cast<float>(column * f), static_cast<float>(top), static_cast<float>((column + 1) * f),
            static_cast<float>(bottom));
}

void prepareState() {
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_LIGHTING);
    glDisable(GL_FOG);
    glDisable(GL_CULL_FACE);
    glDisable(GL_STENCIL_TEST);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

}  // namespace

void draw() {
    TRACE_LOCATION("GLConsole::draw");
    if (!GLWindow::contextAvailable()) return;
    const int width = GLWindow::getClientWidth();
    const int height = GLWindow::getClientHeight();
    Layout layout;
    layout.cell = std::max(1, state().fontSize);
    // Worked out at each draw, so the console follows the window.
    layout.columns = std::max(width / layout.cell, 80);
    layout.rows = std::max(height / layout.cell - 4, 16);

    GLWindow::glPushState();
    GLWindow::glBeginDraw2d();
    prepareState();
    drawBands(layout, width, height);
    // A window lower than four cells, as when minimised, shows no text.
    if (state().font && height >= 4 * layout.cell) {
        glEnable(GL_TEXTURE_2D);
        glEnable(GL_BLEND);
        glBindTexture(GL_TEXTURE_2D, state().font->id);
        drawOutput(layout);
        drawInput(layout);
    }
    if (height >= 4 * layout.cell) drawCursor(layout);
    GLWindow::glPopState();
}

}  // namespace GLConsole
