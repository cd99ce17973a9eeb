// Window geometry, modes and state: sizes, position, title, full screen.
#include "foundation/foundation.h"
#include "graphics/window/window_state.h"
#include "platform/window_backend.h"

namespace GLWindow {

namespace {
struct Borders {
    int left = 0, top = 0, right = 0, bottom = 0;
};

Borders borders() {
    Borders frame;
    WindowBackend::getBorders(frame.left, frame.top, frame.right, frame.bottom);
    return frame;
}
}  // namespace

void clientOrigin(int& x, int& y) {
    TRACE_LOCATION("GLWindow::clientOrigin");
    WindowBackend::getPosition(x, y);
}

int getClientWidth() {
    TRACE_LOCATION("GLWindow::getClientWidth");
    if (!realWindow()) return state().headless.clientWidth;
    int width = 0, height = 0;
    WindowBackend::getClientSize(width, height);
    return isMinimised() ? 0 : width;
}

int getClientHeight() {
    TRACE_LOCATION("GLWindow::getClientHeight");
    if (!realWindow()) return state().headless.clientHeight;
    int width = 0, height = 0;
    WindowBackend::getClientSize(width, height);
    return isMinimised() ? 0 : height;
}

int getX() {
    TRACE_LOCATION("GLWindow::getX");
    int x = 0, y = 0;
    clientOrigin(x, y);
    return x - borders().left;
}

int getY() {
    TRACE_LOCATION("GLWindow::getY");
    int x = 0, y = 0;
    clientOrigin(x, y);
    return y - borders().top;
}

int getWidth() {
    TRACE_LOCATION("GLWindow::getWidth");
    if (!realWindow()) return state().headless.clientWidth;
    int width = 0, height = 0;
    WindowBackend::getClientSize(width, height);
    const Borders frame = borders();
    return width + frame.left + frame.right;
}

int getHeight() {
    TRACE_LOCATION("GLWindow::getHeight");
    if (!realWindow()) return state().headless.clientHeight;
    int width = 0, height = 0;
    WindowBackend::getClientSize(width, height);
    const Borders frame = borders();
    return height + frame.top + frame.bottom;
}

int getScreenWidth() {
    TRACE_LOCATION("GLWindow::getScreenWidth");
    int width = 0, height = 0;
    WindowBackend::getDesktopSize(width, height);
    return width;
}

int getScreenHeight() {
    TRACE_LOCATION("GLWindow::getScreenHeight");
    int width = 0, height = 0;
    WindowBackend::getDesktopSize(width, height);
    return height;
}

int getClientCenterX() {
    TRACE_LOCATION("GLWindow::getClientCenterX");
    int x = 0, y = 0;
    clientOrigin(x, y);
    return x + getClientWidth() / 2 - 1;
}

int getClientCenterY() {
    TRACE_LOCATION("GLWindow::getClientCenterY");
    int x = 0, y = 0;
    clientOrigin(x, y);
    return y + getClientHeight() / 2 - 1;
}

void setPosition(int x, int y) {
    TRACE_LOCATION("GLWindow::setPosition");
    const Borders frame = borders();
    WindowBackend::setPosition(x + frame.left, y + frame.top);
}

void setSize(int width, int height) {
    TRACE_LOCATION("GLWindow::setSize");
    if (width < 1 || height < 1) return;
    const Borders frame = borders();
    const int clientWidth = width - frame.left - frame.right;
    const int clientHeight = height - frame.top - frame.bottom;
    if (clientWidth < 1 || clientHeight < 1) return;
    setClientSize(clientWidth, clientHeight);
}

void setClientSize(int width, int height) {
    TRACE_LOCATION("GLWindow::setClientSize");
    if (width < 1 || height < 1) return;
    if (!realWindow()) {
        state().headless.clientWidth = width;
        state().headless.clientHeight = height;
        return;
    }
    WindowBackend::setClientSize(width, height);
    resetViewport();
}

void center() {
    TRACE_LOCATION("GLWindow::center");
    if (!realWindow()) return;
    setPosition(getScreenWidth() / 2 - getWidth() / 2, getScreenHeight() / 2 - getHeight() / 2);
}

void setTitle(const char* newTitle) {
    TRACE_LOCATION("GLWindow::setTitle");
    state().title = newTitle ? newTitle : "";
    WindowBackend::setTitle(state().title.c_str());
}

std::string getTitle() {
    TRACE_LOCATION("GLWindow::getTitle");
    return state().title;
}

void setResizeable(bool resizeable) {
    TRACE_LOCATION("GLWindow::setResizeable");
    state().headless.resizeable = resizeable;
    WindowBackend::setResizeable(resizeable);
}

bool isResizeable() {
    TRACE_LOCATION("GLWindow::isResizeable");
    return realWindow() ? WindowBackend::isResizeable() : state().headless.resizeable;
}
bool isMinimised() {
    TRACE_LOCATION("GLWindow::isMinimised");
    return WindowBackend::isMinimised();
}
bool isMaximised() {
    TRACE_LOCATION("GLWindow::isMaximised");
    return WindowBackend::isMaximised();
}
bool hasFocus() {
    TRACE_LOCATION("GLWindow::hasFocus");
    return realWindow() ? WindowBackend::hasFocus() : state().headless.exists;
}
void minimize() {
    TRACE_LOCATION("GLWindow::minimize");
    WindowBackend::minimize();
}
void maximize() {
    TRACE_LOCATION("GLWindow::maximize");
    WindowBackend::maximize();
}
void restore() {
    TRACE_LOCATION("GLWindow::restore");
    WindowBackend::restore();
}
void giveFocous() {
    TRACE_LOCATION("GLWindow::giveFocous");
    WindowBackend::raise();
}
bool isFullscreen() {
    TRACE_LOCATION("GLWindow::isFullscreen");
    return state().fullscreen;
}

void setFullscreen(bool value, int width, int height) {
    TRACE_LOCATION("GLWindow::setFullscreen");
    if (!realWindow()) {
        setClientSize(width, height);
        state().fullscreen = value;
        return;
    }
    if (value) {
        setClientSize(width, height);
        // A mode that the display refuses leaves the window as it was.
        if (!WindowBackend::setFullscreen(true, width, height)) return;
        state().fullscreen = true;
        resetViewport();
        return;
    }
    if (!WindowBackend::setFullscreen(false, width, height)) return;
    setClientSize(width, height);
    center();
    state().fullscreen = false;
}

}  // namespace GLWindow
