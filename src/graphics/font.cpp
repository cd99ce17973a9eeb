// GLFont: text from a texture of 16 by 16 square cells, one for each byte value.
#include <GL/gl.h>

#include <cstring>

#include "foundation/foundation.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"

namespace {
constexpr float cellShare = 0.0625f;  // one cell of the 16 by 16 grid

void drawCell(unsigned char c, float x, float y, float size) {
    const float s = static_cast<float>(c & 15) * cellShare;
    const float t = static_cast<float>((c >> 4) & 15) * cellShare;
    glTexCoord2f(s, t);
    glVertex3f(x, y, 0.0f);
    glTexCoord2f(s + cellShare, t);
    glVertex3f(x + size, y, 0.0f);
    glTexCoord2f(s + cellShare, t + cellShare);
    glVertex3f(x + size, y + size, 0.0f);
    glTexCoord2f(s, t + cellShare);
    glVertex3f(x, y + size, 0.0f);
}
}  // namespace

GLFont::GLFont(const GLTexture& texture) {
    *this = texture;
}
GLFont::GLFont(const GLFont& other) : GLTexture() {
    *this = other;
}

GLFont& GLFont::operator=(const GLFont& other) {
    return *this = static_cast<const GLTexture&>(other);
}

GLFont& GLFont::operator=(const GLTexture& texture) {
    if (this == &texture || id == texture.id) return *this;
    GLTexture::operator=(texture);
    return *this;
}

GLFont& GLFont::operator=(const char* textureName) {
    GLTexture::operator=(textureName);
    return *this;
}

GLFont& GLFont::operator=(const std::string& textureName) {
    GLTexture::operator=(textureName);
    return *this;
}

void GLFont::drawString(const char* text, float x, float y, float size, float r, float g, float b,
                        float a) const {
    TRACE_LOCATION("GLFont::drawString");
    if (!text || size <= 0.0f || !GLWindow::contextAvailable()) return;
    glPushAttrib(GL_ENABLE_BIT);
    glEnable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_ALPHA_TEST);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBindTexture(GL_TEXTURE_2D, id);
    float penX = x, penY = y;
    for (const char* c = text; *c; ++c) {
        if (*c == '\n') {
            penX = x;
            penY += size;
            continue;
        }
        glBegin(GL_QUADS);
        glColor4f(r, g, b, a);
        drawCell(static_cast<unsigned char>(*c), penX, penY, size);
        glEnd();
        penX += size;
    }
    glPopAttrib();
}

void GLFont::drawStringCentered(const char* text, float x, float y, float boxWidth, float boxHeight,
                                float size, float r, float g, float b, float a) const {
    if (!text || size <= 0.0f) return;
    const float length = static_cast<float>(std::strlen(text));
    // Centred text falls on whole pixels.
    const float left = roundToNearest(x + boxWidth * 0.5f - length * size * 0.5f);
    const float top = roundToNearest(y + boxHeight * 0.5f - size * 0.5f);
    drawString(text, left, top, size, r, g, b, a);
}
