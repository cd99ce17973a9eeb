// A real window on the test display (Xvfb under `run.sh test`) for the life of
// a test, and pixel readback of what was drawn into it.
#pragma once

#include <GL/gl.h>

#include <array>
#include <vector>

#include "graphics/window/window.h"

class RealWindow {
public:
    explicit RealWindow(int width = 320, int height = 240) {
        GLWindow::Headless::setEnabled(false);
        GLWindow::createWindow("Brookfall test", width, height);
        GLWindow::run();  // the window's own first events (exposure, the pointer over it)
    }
    ~RealWindow() {
        GLWindow::setEventListener(nullptr);  // the test's listener is gone by now
        GLWindow::close();
        GLWindow::Headless::setEnabled(true);
    }
    RealWindow(const RealWindow&) = delete;
    RealWindow& operator=(const RealWindow&) = delete;
};

using Rgb = std::array<int, 3>;

// The colour of a pixel in client coordinates (origin top left) of the back buffer.
inline Rgb readPixel(int x, int y) {
    unsigned char pixel[4] = {0, 0, 0, 0};
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(x, GLWindow::getClientHeight() - 1 - y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    return {pixel[0], pixel[1], pixel[2]};
}

// Colours compare with a little room for rounding in the software renderer.
inline bool near(const Rgb& a, const Rgb& b, int tolerance = 3) {
    for (int i = 0; i < 3; ++i)
        if (a[i] - b[i] > tolerance || b[i] - a[i] > tolerance) return false;
    return true;
}
