// Drawing set-up of the window layer and the capabilities of its OpenGL context.
#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>

#include "foundation/foundation.h"
#include "graphics/pixel_view.h"
#include "graphics/window/window_state.h"
#include "platform/window_backend.h"

namespace GLWindow {

bool contextAvailable() {
    TRACE_LOCATION("GLWindow::contextAvailable");
    return drawingPossible();
}

void clearScreen(float r, float g, float b) {
    TRACE_LOCATION("GLWindow::clearScreen");
    if (!drawingPossible()) return;
    glClearColor(r, g, b, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
}

void glBeginDraw2d() {
    TRACE_LOCATION("GLWindow::glBeginDraw2d");
    if (!drawingPossible()) return;
    setPixelView(getClientWidth(), getClientHeight());
}

void glBeginDraw3d(float fieldOfView, float nearPlane, float farPlane) {
    TRACE_LOCATION("GLWindow::glBeginDraw3d");
    if (!drawingPossible()) return;
    float width = static_cast<float>(getClientWidth());
    float height = static_cast<float>(getClientHeight());
    // A minimised window has no client area; any aspect will do then.
    if (width <= 0.0f || height <= 0.0f) width = height = 0.01f;
    glViewport(0, 0, static_cast<int>(width), static_cast<int>(height));
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(fieldOfView, width / height, nearPlane, farPlane);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void glPushState() {
    TRACE_LOCATION("GLWindow::glPushState");
    if (!drawingPossible()) return;
    glPushAttrib(0xFFFFF);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
}

void glPopState() {
    TRACE_LOCATION("GLWindow::glPopState");
    if (!drawingPossible()) return;
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopClientAttrib();
    glPopAttrib();
}

void glVertex(const Vector2D& point) {
    TRACE_LOCATION("GLWindow::glVertex");
    glVertex2f(point.x, point.y);
}

void glCircle(float x, float y, float radius, int segments) {
    TRACE_LOCATION("GLWindow::glCircle");
    if (!drawingPossible() || segments < 1) return;
    const float step = fullTurn / static_cast<float>(segments);
    glBegin(GL_LINES);
    for (int i = 0; i < segments; ++i) {
        const float from = static_cast<float>(i) * step;
        const float to = static_cast<float>(i + 1) * step;
        glVertex2f(std::cos(from) * radius + x, std::sin(from) * radius + y);
        glVertex2f(std::cos(to) * radius + x, std::sin(to) * radius + y);
    }
    glEnd();
}

void getExtensionList(std::vector<std::string>& list) {
    TRACE_LOCATION("GLWindow::getExtensionList");
    if (!drawingPossible()) return;
    const GLubyte* extensions = glGetString(GL_EXTENSIONS);
    if (extensions) slSeparateArgs(reinterpret_cast<const char*>(extensions), list);
}

bool extensionSupported(const char* name) {
    TRACE_LOCATION("GLWindow::extensionSupported");
    if (!name || !drawingPossible()) return false;
    const GLubyte* extensions = glGetString(GL_EXTENSIONS);
    if (!extensions) return false;
    std::string wanted = name;
    std::string text = reinterpret_cast<const char*>(extensions);
    slStringUpper(wanted);
    slStringUpper(text);
    std::vector<std::string> entries;
    slSeparateArgs(text, entries);
    for (const std::string& entry : entries)
        if (entry == wanted) return true;
    return false;
}

void enableVsync(bool enabled) {
    TRACE_LOCATION("GLWindow::enableVsync");
    state().headless.vsync = enabled;
    WindowBackend::setSwapInterval(enabled ? 1 : 0);
}

bool vsyncEnabled() {
    TRACE_LOCATION("GLWindow::vsyncEnabled");
    if (!realWindow()) return state().headless.vsync;
    // A driver that cannot tell counts as synchronised.
    const int interval = WindowBackend::getSwapInterval();
    return interval < 0 || interval != 0;
}

}  // namespace GLWindow
