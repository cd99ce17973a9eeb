// The window layer without a window: a fixed client area and key, mouse and
// toggle state set by hand. The game, the tools and the tests run against it
// until a real window is created.
#include <algorithm>
#include <cctype>
#include <set>

#include "foundation/foundation.h"
#include "graphics/window/window.h"

namespace {
GLWindowEventListener* eventListener = nullptr;
bool windowExists = false;
bool fullscreen = false;
bool resizeable = true;
int clientWidth = 800;
int clientHeight = 600;
int lastKey = 0;
int mouseX = 0;
int mouseY = 0;
int cursorMode = 1;
int antiAliasingMode = 1;
bool vsync = true;
std::string title = "Untitled window";
std::set<int> keysDown;
std::set<int> keysToggled;
std::set<int> buttonsDown;

constexpr int shiftKey = 16;

// US layout characters of the punctuation keys, unshifted and shifted.
char punctuation(int key, bool shifted) {
    switch (key) {
        case 186: return shifted ? ':' : ';';
        case 187: return shifted ? '+' : '=';
        case 188: return shifted ? '<' : ',';
        case 189: return shifted ? '_' : '-';
        case 190: return shifted ? '>' : '.';
        case 191: return shifted ? '?' : '/';
        case 192: return shifted ? '~' : '`';
        case 219: return shifted ? '{' : '[';
        case 220: return shifted ? '|' : '\\';
        case 221: return shifted ? '}' : ']';
        case 222: return shifted ? '"' : '\'';
        default: return 0;
    }
}
}  // namespace

namespace GLWindow {

void createWindow(const char* newTitle, int width, int height) {
    TRACE_LOCATION("GLWindow::createWindow");
    if (windowExists) return;
    windowExists = true;
    title = newTitle ? newTitle : "";
    setClientSize(width, height);
}

void close() {
    TRACE_LOCATION("GLWindow::close");
    if (!windowExists) return;
    if (eventListener) eventListener->windowClosed();
    windowExists = false;
    fullscreen = false;
    eventListener = nullptr;
    cursorMode = 1;
}

bool exists() { return windowExists; }
void run() {}
GLWindowEventListener* getEventListener() { return eventListener; }
void setEventListener(GLWindowEventListener* listener) { eventListener = listener; }
void requestRepaint() {}
void swapBuffers() {}

int getClientWidth() { return clientWidth; }
int getClientHeight() { return clientHeight; }
int getX() { return 0; }
int getY() { return 0; }
int getWidth() { return clientWidth; }
int getHeight() { return clientHeight; }
int getScreenWidth() { return 1920; }
int getScreenHeight() { return 1080; }
int getClientCenterX() { return clientWidth / 2 - 1; }
int getClientCenterY() { return clientHeight / 2 - 1; }
void setPosition(int, int) {}
void setSize(int width, int height) { setClientSize(width, height); }
void setClientSize(int width, int height) {
    if (width < 1 || height < 1) return;
    clientWidth = width;
    clientHeight = height;
}
void center() {}
void setTitle(const char* newTitle) { title = newTitle ? newTitle : ""; }
std::string getTitle() { return title; }
void setResizeable(bool value) { resizeable = value; }
bool isResizeable() { return resizeable; }
bool isMinimised() { return false; }
bool isMaximised() { return false; }
bool hasFocus() { return windowExists; }
void minimize() {}
void maximize() {}
void restore() {}
void giveFocous() {}
bool isFullscreen() { return fullscreen; }
void setFullscreen(bool value, int width, int height) {
    setClientSize(width, height);
    fullscreen = value;
}

bool keyboardKeyPressed(int key) { return keysDown.count(key) != 0; }
bool keyboardKeyToggled(int key) { return keysToggled.count(key) != 0; }

char keyboardKeyToAscii(int key) {
    const bool shifted = keyboardKeyPressed(shiftKey);
    if (key >= 'A' && key <= 'Z') {
        const bool upper = shifted != keyboardKeyToggled(20);
        return static_cast<char>(upper ? key : std::tolower(key));
    }
    if (key >= '0' && key <= '9') {
        static const char shiftedDigits[] = ")!@#$%^&*(";
        return shifted ? shiftedDigits[key - '0'] : static_cast<char>(key);
    }
    if (key == ' ') return ' ';
    return punctuation(key, shifted);
}

bool mouseButtonPressed(int button) {
    if (button != 1 && button != 2 && button != 4) return false;
    return buttonsDown.count(button) != 0;
}
int getLastKeyPressed() { return std::exchange(lastKey, 0); }
int getMouseX() { return mouseX; }
int getMouseY() { return mouseY; }
int getMouseScreenX() { return mouseX; }
int getMouseScreenY() { return mouseY; }
bool mouseInClientArea() { return mouseX >= 0 && mouseY >= 0 && mouseX < clientWidth && mouseY < clientHeight; }

int getCursor() { return cursorMode; }
void setCursor(int mode) {
    if (mode >= 0 && mode <= 2) cursorMode = mode;
}
void centerMouse() {
    mouseX = clientWidth / 2;
    mouseY = clientHeight / 2;
}
void moveMouse(int dx, int dy) {
    mouseX += dx;
    mouseY += dy;
}
void restrictMouse(int, int, int, int) {}
void unRestrictMouse() {}

void clearScreen(float, float, float) {}
void glBeginDraw2d() {}
void glBeginDraw3d(float, float, float) {}
void glPushState() {}
void glPopState() {}
void glCircle(float, float, float, int) {}

void showMessageBox(const char*, const char*) {}
bool showQuestionBox(const char*, const char*) { return false; }

void getExtensionList(std::vector<std::string>&) {}
bool extensionSupported(const char*) { return false; }
void enableVsync(bool enabled) { vsync = enabled; }
bool vsyncEnabled() { return vsync; }
int getAntiAliasingMode() { return antiAliasingMode; }
bool setAntiAliasingMode(int samples) {
    if (!windowExists) return false;
    antiAliasingMode = samples == 0 ? 1 : samples;
    return true;
}
bool antiAliasingModeAvailable(int samples) { return static_cast<unsigned>(samples) < 2; }
void setGamma(float) {}
void fadeScreen(float) {}
std::string showOpenFileBox(const char*, const char*, const FileFilters&) { return {}; }
std::string showSaveFileBox(const char*, const char*, const FileFilters&) { return {}; }

namespace Headless {
void setKeyDown(int key, bool down) {
    if (down)
        keysDown.insert(key);
    else
        keysDown.erase(key);
}
void setKeyToggled(int key, bool toggled) {
    if (toggled)
        keysToggled.insert(key);
    else
        keysToggled.erase(key);
}
void setMouse(int x, int y) {
    mouseX = x;
    mouseY = y;
}
void setMouseButtonDown(int button, bool down) {
    if (down)
        buttonsDown.insert(button);
    else
        buttonsDown.erase(button);
}
void setClientSize(int width, int height) { GLWindow::setClientSize(width, height); }
void pressKey(int key) {
    lastKey = key;
    if (eventListener) eventListener->keyboardPressed(key);
}
}  // namespace Headless

}  // namespace GLWindow
