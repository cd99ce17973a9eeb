// Debug drawing of the sound sources: the circle within which each is heard,
// its place and a label with its id and file.
#include <GL/gl.h>

#include <cmath>
#include <cstdio>

#include "audio/audio.h"
#include "audio/sound_source_state.h"
#include "console/console.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"

namespace {

constexpr int circleSegments = 64;
constexpr float pointSize = 4.0f;
constexpr float labelSize = 8.0f;
constexpr float labelOffset = 4.0f;

void drawSource(const SoundSource& source, const GLFont& font) {
    TRACE_LOCATION("SoundSourceManager::drawSource");
    glColor3f(1.0f, 1.0f, 1.0f);
    glBegin(GL_LINE_LOOP);
    for (int i = 0; i < circleSegments; ++i) {
        const float angle = fullTurn * static_cast<float>(i) / static_cast<float>(circleSegments);
        glVertex2f(source.position.x + std::cos(angle) * source.strength,
                   source.position.y + std::sin(angle) * source.strength);
    }
    glEnd();
    glPointSize(pointSize);
    glBegin(GL_POINTS);
    glVertex2f(source.position.x, source.position.y);
    glEnd();
    char text[256];
    std::snprintf(text, sizeof(text), "id: %1i sound: %1s", source.id, source.sound.getName().c_str());
    font.drawString(text, source.position.x, source.position.y + labelOffset, labelSize, 1.0f, 1.0f, 1.0f,
                    1.0f);
}

}  // namespace

namespace SoundSourceManager {

void debugDraw() {
    TRACE_LOCATION("SoundSourceManager::debugDraw");
    State& s = state();
    if (!s.draw || !GLWindow::contextAvailable()) return;
    GLWindow::glPushState();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    const GLFont font(GLConsole::getFontTexture());
    for (auto* store : {&s.looping, &s.oneShot})
        for (const auto& [id, list] : *store)
            for (const SoundSource& source : list) drawSource(source, font);
    GLWindow::glPopState();
}

}  // namespace SoundSourceManager
