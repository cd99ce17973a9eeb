// Debug drawing of a polygon's outline and of its triangles.
#include <GL/gl.h>

#include "graphics/window/window.h"
#include "level/level.h"

void Polygon2D::drawOutline() const {
    TRACE_LOCATION("Polygon2D::drawOutline");
    if (!GLWindow::contextAvailable() || pointCount() == 0) return;
    glColor3f(1.0f, 1.0f, 1.0f);
    glLineWidth(2.0f);
    glBegin(GL_LINE_STRIP);
    glVertex2f(pointsX.back(), pointsY.back());
    for (std::size_t i = 0; i < pointCount(); ++i) glVertex2f(pointsX[i], pointsY[i]);
    glEnd();
}

void Polygon2D::drawTrianglesOutline() const {
    TRACE_LOCATION("Polygon2D::drawTrianglesOutline");
    if (!GLWindow::contextAvailable() || triangleCount == 0) return;
    // Plain red lines: with texturing or blending on they would take the
    // colour of whatever texture is bound.
    GLWindow::glPushState();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glColor3f(1.0f, 0.0f, 0.0f);
    glLineWidth(1.0f);
    for (uint32_t t = 0; t < triangleCount; ++t) {
        glBegin(GL_LINE_LOOP);
        for (uint32_t v = 0; v < 3; ++v)
            glVertex2f(triangleX[t * 3 + v] + offset.x, triangleY[t * 3 + v] + offset.y);
        glEnd();
    }
    GLWindow::glPopState();
}
