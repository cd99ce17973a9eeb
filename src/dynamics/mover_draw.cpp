// Debug drawing of the movers' paths and of the moving polygons' edges.
#include <GL/gl.h>

#include <cstdio>

#include "console/console.h"
#include "dynamics/dynamics.h"
#include "dynamics/mover_state.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"

using MoverManager::state;

namespace {

constexpr float labelSize = 8.0f;
constexpr float tickLength = 8.0f;

void drawMover(const Mover& mover, const GLFont& font) {
    glDisable(GL_TEXTURE_2D);
    glColor3f(1.0f, 1.0f, 1.0f);
    glBegin(GL_LINES);
    GLWindow::glVertex(mover.start);
    GLWindow::glVertex(mover.end);
    glEnd();
    glPointSize(3.0f);
    glColor3f(0.0f, 1.0f, 0.0f);
    glBegin(GL_POINTS);
    GLWindow::glVertex(mover.start);
    GLWindow::glVertex(mover.end);
    glEnd();
    char text[128];
    std::snprintf(text, sizeof(text), "Id: %1i Speed: %2f", mover.id, mover.speed);
    const Vector2D at = mover.start - mover.direction * labelSize;
    font.drawString(text, at.x, at.y, labelSize, 1.0f, 1.0f, 1.0f, 1.0f);
}

void drawEdges(const DynamicPolygon& entry) {
    const Vector2D offset = entry.polygon->offset;
    glBegin(GL_LINES);
    for (const BspNode& edge : entry.edges) {
        const Vector2D from = edge.start + offset, to = edge.end + offset;
        const Vector2D middle = (from + to) * 0.5f;
        glColor3f(0.0f, 1.0f, 1.0f);
        GLWindow::glVertex(from);
        GLWindow::glVertex(to);
        glColor3f(0.0f, 0.0f, 1.0f);
        GLWindow::glVertex(middle);
        GLWindow::glVertex(middle + edge.normal * tickLength);
    }
    glEnd();
    glPointSize(2.0f);
    glColor3f(1.0f, 1.0f, 1.0f);
    glBegin(GL_POINTS);
    for (const BspNode& edge : entry.edges) {
        GLWindow::glVertex(edge.start + offset);
        GLWindow::glVertex(edge.end + offset);
    }
    glEnd();
}

}  // namespace

namespace MoverManager {

void debugDraw() {
    TRACE_LOCATION("MoverManager::debugDraw");
    if ((!state().moverDraw && !state().dynamicNodeDraw) || !GLWindow::contextAvailable()) return;
    GLWindow::glPushState();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    const GLFont font(GLConsole::getFontTexture());
    if (state().moverDraw)
        for (const Mover& mover : state().movers) drawMover(mover, font);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    if (state().dynamicNodeDraw)
        for (const DynamicPolygon& entry : state().dynamicPolygons) drawEdges(entry);
    GLWindow::glPopState();
}

}  // namespace MoverManager
