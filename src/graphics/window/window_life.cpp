// Window life and event delivery: creation, closing, and the polled message
// pump that turns the window's events into calls on the one listener.
#include <GL/gl.h>

#include <cstdio>
#include <cstdlib>

#include "foundation/foundation.h"
#include "graphics/window/window_state.h"
#include "platform/window_backend.h"

namespace GLWindow {

namespace State {
GLWindowEventListener* eventListener = nullptr;
bool fullscreen = false;
int lastKey = 0;
int mouseX = 0;
int mouseY = 0;
int antiAliasingMode = 1;
int cursorMode = 1;
std::string title = "Untitled window";
bool repaintRequested = false;
HeadlessWindow headless;

bool realWindow() {
    return WindowBackend::exists();
}
bool drawingPossible() {
    return WindowBackend::hasContext();
}

void resetViewport() {
    if (drawingPossible()) glViewport(0, 0, getClientWidth(), getClientHeight());
}
}  // namespace State

using namespace State;

namespace {

void createHeadless(const char* newTitle, int width, int height) {
    headless.exists = true;
    title = newTitle ? newTitle : "";
    setClientSize(width, height);
}

void paint() {
    setCursor(mouseInClientArea() ? cursorMode : 1);
    if (eventListener) eventListener->windowRedrawing();
}

void storeMouse(const WindowBackend::Event& event) {
    mouseX = event.x & 0xFFFF;
    mouseY = event.y & 0xFFFF;
}

void loseFocus() {
    if (isMinimised()) return;
    WindowBackend::minimize();
    if (eventListener) eventListener->windowFocusLost();
}

void deliver(const WindowBackend::Event& event) {
    using Event = WindowBackend::Event;
    switch (event.type) {
        case Event::MouseMoved:
            storeMouse(event);
            if (eventListener) eventListener->mouseMoved(mouseX, mouseY);
            break;
        case Event::MousePressed:
            storeMouse(event);
            if (eventListener) eventListener->mousePressed(mouseX, mouseY, event.button);
            break;
        case Event::MouseReleased:
            storeMouse(event);
            if (eventListener) eventListener->mouseReleased(mouseX, mouseY, event.button);
            break;
        case Event::KeyPressed:
            lastKey = event.key;
            if (eventListener) eventListener->keyboardPressed(event.key);
            break;
        case Event::KeyReleased:
            if (eventListener) eventListener->keyboardReleased(event.key);
            break;
        case Event::Resized:
            // The listener still sees the old viewport.
            if (eventListener) eventListener->windowResized();
            resetViewport();
            break;
        case Event::Closing:
            // Closing always goes on to destroy the window, whatever the listener does.
            if (eventListener) eventListener->windowClosing();
            close();
            break;
        case Event::Exposed:
            repaintRequested = true;
            break;
        case Event::FocusLost:
            loseFocus();
            break;
        case Event::None:
            break;
    }
}

}  // namespace

void createWindow(const char* newTitle, int width, int height) {
    TRACE_LOCATION("GLWindow::createWindow");
    if (exists()) return;
    if (headless.enabled) return createHeadless(newTitle, width, height);
    std::string error;
    if (!WindowBackend::create(title.c_str(), width, height, 1, error)) {
        std::fprintf(stderr, "%s\n", error.c_str());
        showMessageBox("Unable to create window. Could not create an OpenGL rendering context.", "Error");
        std::exit(1);
    }
    setCursor(1);
    mouseX = mouseY = 0;
    antiAliasingMode = 1;
    resetViewport();
    glBeginDraw2d();
    lastKey = 0;
    WindowBackend::show();
    WindowBackend::raise();
    center();
    setTitle(newTitle ? newTitle : "");
    setClientSize(width, height);
}

void close() {
    TRACE_LOCATION("GLWindow::close");
    if (!exists()) return;
    if (eventListener) eventListener->windowClosed();
    if (fullscreen && realWindow()) WindowBackend::setFullscreen(false, 640, 480);
    fullscreen = false;
    WindowBackend::destroy();
    headless.exists = false;
    eventListener = nullptr;
    cursorMode = 1;
    repaintRequested = false;
}

bool exists() {
    return realWindow() || headless.exists;
}

void run() {
    TRACE_LOCATION("GLWindow::run");
    WindowBackend::Event event;
    while (realWindow() && WindowBackend::pollEvent(event)) deliver(event);
    if (repaintRequested && realWindow()) {
        repaintRequested = false;
        paint();
    }
}

GLWindowEventListener* getEventListener() {
    return eventListener;
}
void setEventListener(GLWindowEventListener* listener) {
    eventListener = listener;
}

void requestRepaint() {
    if (realWindow()) repaintRequested = true;
}

void swapBuffers() {
    WindowBackend::swapBuffers();
}

}  // namespace GLWindow
