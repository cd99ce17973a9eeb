// The 2D view in window pixels. Inline and without a trace, because the
// loading splash sets it on its own thread.
#pragma once

#include <GL/gl.h>

// Viewport and matrices for drawing in pixels: (0, 0) is the top left pixel
// and (width, height) the bottom right.
inline void setPixelView(int width, int height) {
    const float w = static_cast<float>(width);
    const float h = static_cast<float>(height);
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glScalef(1.0f / (w * 0.5f), -1.0f / (h * 0.5f), 1.0f);
    glTranslatef(-w * 0.5f, -h * 0.5f, 0.0f);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}
