// One textured quad in immediate mode, from its top left to its bottom right,
// with texture coordinates (0, 0) at the top left unless given. Inline and
// without a trace, because the loading splash draws with it on its own thread.
#pragma once

#include <GL/gl.h>

// The four corners alone, for quads batched between one glBegin and glEnd.
inline void texturedQuadVertices(float left, float top, float right, float bottom, float s0 = 0.0f,
                                 float t0 = 0.0f, float s1 = 1.0f, float t1 = 1.0f) {
    glTexCoord2f(s0, t0);
    glVertex2f(left, top);
    glTexCoord2f(s1, t0);
    glVertex2f(right, top);
    glTexCoord2f(s1, t1);
    glVertex2f(right, bottom);
    glTexCoord2f(s0, t1);
    glVertex2f(left, bottom);
}

inline void drawTexturedQuad(float left, float top, float right, float bottom, float s0 = 0.0f,
                             float t0 = 0.0f, float s1 = 1.0f, float t1 = 1.0f) {
    glBegin(GL_QUADS);
    texturedQuadVertices(left, top, right, bottom, s0, t0, s1, t1);
    glEnd();
}
