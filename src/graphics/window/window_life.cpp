// Window life and event delivery: creation, closing, and the polled message
// pump that turns the window's events into calls on the one listener.
#include <GL/gl.h>

#include <cstdio>
#include <cstdlib>

#include "foundation/foundation.h"
#include "graphics/window/window_state.h"
#include "platform/platform.h"
#include "platform/window_backend.h"

namespace GLWindow {

State& state() {
    return singleInstance<State>();
}

bool realWindow() {
    TRACE_LOCATION("GLWindow::realWindow");
    return WindowBackend::exists();
}
bool drawingPossible() {
    TRACE_LOCATION("GLWindow::drawingPossible");
    return WindowBackend::hasContext();
}

// Each stage of making a window that can fail has its own message; the game
// cannot go on without a window, so the program ends.
void failUnlessCreated(const char* windowTitle, int width, int height) {
    TRACE_LOCATION("GLWindow::failUnlessCreated");
    using Stage = WindowBackend::CreateStage;
    std::string error;
    const Stage stage = WindowBackend::create(windowTitle, width, height, 1, error);
    if (stage == Stage::succeeded) return;
    static const struct {
        Stage stage;
        const char* text;
        const char* title;
    } messages[] = {
        {Stage::videoSystem, "Unable to create window: couldn't get program handle.", "Game error"},
        {Stage::glLibrary, "Unable to create window: couldn't register window class.", "Error"},
        {Stage::window, "Unable to create window.", "Error"},
        {Stage::glWindow, "Unable to create window: could not get the device context.", "Error"},
        {Stage::renderContext, "Unable to create window. Could not create an OpenGL rendering context.",
         "Error"},
    };
    std::fprintf(stderr, "%s\n", error.c_str());
    for (const auto& message : messages)
        if (message.stage == stage) Platform::showMessage(message.text, message.title);
    std::fflush(nullptr);
    std::exit(1);
}

void resetViewport() {
    TRACE_LOCATION("GLWindow::resetViewport");
    if (drawingPossible()) glViewport(0, 0, getClientWidth(), getClientHeight());
}
namespace {

void createHeadless(const char* newTitle, int width, int height) {
    state().headless.exists = true;
    state().title = newTitle ? newTitle : "";
    setClientSize(width, height);
}

void paint() {
    setCursor(mouseInClientArea() ? state().cursorMode : 1);
    if (state().eventListener) state().eventListener->windowRedrawing();
}

void storeMouse(const WindowBackend::Event& event) {
    state().mouseX = event.x & 0xFFFF;
    state().mouseY = event.y & 0xFFFF;
}

void loseFocus() {
    if (isMinimised()) return;
    WindowBackend::minimize();
    if (state().eventListener) state().eventListener->windowFocusLost();
}

void deliver(const WindowBackend::Event& event) {
    using Event = WindowBackend::Event;
    switch (event.type) {
        case Event::MouseMoved:
            storeMouse(event);
            if (state().eventListener) state().eventListener->mouseMoved(state().mouseX, state().mouseY);
            break;
        case Event::MousePressed:
            storeMouse(event);
            if (state().eventListener)
                state().eventListener->mousePressed(state().mouseX, state().mouseY, event.button);
            break;
        case Event::MouseReleased:
            storeMouse(event);
            if (state().eventListener)
                state().eventListener->mouseReleased(state().mouseX, state().mouseY, event.button);
            break;
        case Event::KeyPressed:
            state().lastKey = event.key;
            if (state().eventListener) state().eventListener->keyboardPressed(event.key);
            break;
        case Event::KeyReleased:
            if (state().eventListener) state().eventListener->keyboardReleased(event.key);
            break;
        case Event::Resized:
            // The listener still sees the old viewport.
            if (state().eventListener) state().eventListener->windowResized();
            resetViewport();
            break;
        case Event::Closing:
            // Closing always goes on to destroy the window, whatever the listener does.
            if (state().eventListener) state().eventListener->windowClosing();
            close();
            break;
        case Event::Exposed:
            state().repaintRequested = true;
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
    if (state().headless.enabled) return createHeadless(newTitle, width, height);
    failUnlessCreated(state().title.c_str(), width, height);
    setCursor(1);
    state().mouseX = state().mouseY = 0;
    state().antiAliasingMode = 1;
    resetViewport();
    glBeginDraw2d();
    state().lastKey = 0;
    WindowBackend::show();
    WindowBackend::raise();
    center();
    setTitle(newTitle ? newTitle : "");
    setClientSize(width, height);
}

void close() {
    TRACE_LOCATION("GLWindow::close");
    if (!exists()) return;
    if (state().eventListener) state().eventListener->windowClosed();
    if (state().fullscreen && realWindow()) WindowBackend::setFullscreen(false, 640, 480);
    state().fullscreen = false;
    WindowBackend::destroy();
    state().headless.exists = false;
    state().eventListener = nullptr;
    state().cursorMode = 1;
    state().repaintRequested = false;
}

bool exists() {
    TRACE_LOCATION("GLWindow::exists");
    return realWindow() || state().headless.exists;
}

void run() {
    TRACE_LOCATION("GLWindow::run");
    WindowBackend::Event event;
    while (realWindow() && WindowBackend::pollEvent(event)) deliver(event);
    if (state().repaintRequested && realWindow()) {
        state().repaintRequested = false;
        paint();
    }
    if (state().modalLoopDriver && !state().drivingModalLoop) {
        state().drivingModalLoop = true;
        state().modalLoopDriver();
        state().drivingModalLoop = false;
    }
}

GLWindowEventListener* getEventListener() {
    TRACE_LOCATION("GLWindow::getEventListener");
    return state().eventListener;
}
void setEventListener(GLWindowEventListener* listener) {
    TRACE_LOCATION("GLWindow::setEventListener");
    state().eventListener = listener;
}

void requestRepaint() {
    TRACE_LOCATION("GLWindow::requestRepaint");
    if (realWindow()) state().repaintRequested = true;
}

void swapBuffers() {
    TRACE_LOCATION("GLWindow::swapBuffers");
    WindowBackend::swapBuffers();
}

}  // namespace GLWindow
