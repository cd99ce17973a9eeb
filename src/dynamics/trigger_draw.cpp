// Debug drawing of the triggers: both triangles of each, white near the view
// and red away from it, the edge normals, and a label with target and type.
#include <GL/gl.h>

#include <cstdio>

#include "console/console.h"
#include "dynamics/dynamics.h"
#include "dynamics/trigger_state.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"

using TriggerManager::ActiveBox;
using TriggerManager::activeBox;
using TriggerManager::state;

namespace {

constexpr float labelSize = 8.0f;

void drawOutline(const TriggerTriangle& triangle) {
    glBegin(GL_LINE_LOOP);
    for (const Vector2D& corner : triangle.corners) glVertex2f(corner.x, corner.y);
    glEnd();
}

Vector2D edgeMidpoint(const TriggerTriangle& triangle, int edge) {
    return (triangle.corners[edge] + triangle.corners[(edge + 1) % 3]) * 0.5f;
}

void drawNormals(const TriggerTriangle& triangle) {
    glColor3f(1.0f, 1.0f, 1.0f);
    glBegin(GL_LINES);
    for (int i = 0; i < 3; ++i) {
        const Vector2D from = edgeMidpoint(triangle, i);
        const Vector2D to = from + triangle.normals[i] * labelSize;
        glVertex2f(from.x, from.y);
        glVertex2f(to.x, to.y);
    }
    glEnd();
}

void drawLabel(const Trigger& trigger, const GLFont& font) {
    Vector2D centre;
    for (int i = 0; i < 3; ++i) centre += edgeMidpoint(trigger.first, i) + edgeMidpoint(trigger.second, i);
    centre /= 6.0f;
    char text[256];
    std::snprintf(text, sizeof(text), "id: %1i name: %2s ", trigger.targetId, trigger.typeInfo->name.c_str());
    font.drawString(text, centre.x, centre.y, labelSize, 1.0f, 1.0f, 1.0f, 1.0f);
}

void drawTrigger(const Trigger& trigger, const ActiveBox& box, const GLFont& font) {
    glDisable(GL_TEXTURE_2D);
    if (box.touches(trigger))
        glColor3f(1.0f, 1.0f, 1.0f);
    else
        glColor3f(1.0f, 0.0f, 0.0f);
    drawOutline(trigger.first);
    drawOutline(trigger.second);
    drawNormals(trigger.first);
    drawNormals(trigger.second);
    drawLabel(trigger, font);
}

}  // namespace

namespace TriggerManager {

void debugDraw() {
    TRACE_LOCATION("TriggerManager::debugDraw");
    if (!state().drawTriggers || !GLWindow::contextAvailable()) return;
    GLWindow::glPushState();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    const ActiveBox box = activeBox();
    const GLFont font(GLConsole::getFontTexture());
    for (const Trigger& trigger : state().triggers) drawTrigger(trigger, box, font);
    GLWindow::glPopState();
}

}  // namespace TriggerManager
