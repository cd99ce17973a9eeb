// Keyboard and mouse queries, the cursor, and the hand-set input of the
// headless stand-in. Hand-set keys and buttons count alongside real ones, so a
// script can drive the game with or without a window.
#include <cctype>
#include <utility>

#include "foundation/foundation.h"
#include "graphics/window/window_state.h"
#include "platform/window_backend.h"

namespace GLWindow {

namespace {

// US layout characters of the punctuation and keypad keys, unshifted and shifted.
struct KeyCharacters {
    int key;
    char plain;
    char shifted;
};
constexpr KeyCharacters symbolKeys[] = {
    {186, ';', ':'}, {187, '=', '+'}, {188, ',', '<'},  {189, '-', '_'}, {190, '.', '>'},  {191, '/', '?'},
    {192, '`', '~'}, {219, '[', '{'}, {220, '\\', '|'}, {221, ']', '}'}, {222, '\'', '"'}, {106, '*', '*'},
    {107, '+', '+'}, {109, '-', '-'}, {110, '.', '.'},  {111, '/', '/'},
};

char symbol(int key, bool shifted) {
    if (key >= 96 && key <= 105) return static_cast<char>('0' + key - 96);  // the keypad's digits
    for (const KeyCharacters& entry : symbolKeys)
        if (entry.key == key) return shifted ? entry.shifted : entry.plain;
    return 0;
}

// The pointer is read relative to the window and placed at the client origin
// as it is reported, so that the centre and the pointer always agree: where
// the window is reported and where it stands can differ (full screen without
// a window manager), which would otherwise turn the view by itself.
std::pair<int, int> mouseOnScreen() {
    if (!realWindow()) return {state().mouseX, state().mouseY};
    int left = 0, top = 0, x = 0, y = 0;
    clientOrigin(left, top);
    WindowBackend::getWindowMouse(x, y);
    return {left + x, top + y};
}

void setMember(std::set<int>& members, int value, bool member) {
    if (member)
        members.insert(value);
    else
        members.erase(value);
}

}  // namespace

bool keyboardKeyPressed(int key) {
    TRACE_LOCATION("GLWindow::keyboardKeyPressed");
    return state().headless.keysDown.count(key) != 0 || WindowBackend::keyDown(key);
}

bool keyboardKeyToggled(int key) {
    TRACE_LOCATION("GLWindow::keyboardKeyToggled");
    return state().headless.keysToggled.count(key) != 0 || WindowBackend::keyToggled(key);
}

char keyboardKeyToAscii(int key) {
    TRACE_LOCATION("GLWindow::keyboardKeyToAscii");
    const bool shifted = keyboardKeyPressed(VirtualKey::shift);
    if (key >= 'A' && key <= 'Z') {
        const bool upper = shifted != keyboardKeyToggled(VirtualKey::capsLock);
        return static_cast<char>(upper ? key : std::tolower(key));
    }
    if (key >= '0' && key <= '9') {
        static const char shiftedDigits[] = ")!@#$%^&*(";
        return shifted ? shiftedDigits[key - '0'] : static_cast<char>(key);
    }
    if (key == ' ') return ' ';
    return symbol(key, shifted);
}

bool mouseButtonPressed(int button) {
    TRACE_LOCATION("GLWindow::mouseButtonPressed");
    if (button != 1 && button != 2 && button != 4) return false;
    return state().headless.buttonsDown.count(button) != 0 || WindowBackend::mouseButtonDown(button);
}

int getLastKeyPressed() {
    TRACE_LOCATION("GLWindow::getLastKeyPressed");
    return std::exchange(state().lastKey, 0);
}
int getMouseX() {
    TRACE_LOCATION("GLWindow::getMouseX");
    return state().mouseX;
}
int getMouseY() {
    TRACE_LOCATION("GLWindow::getMouseY");
    return state().mouseY;
}

int getMouseScreenX() {
    TRACE_LOCATION("GLWindow::getMouseScreenX");
    return mouseOnScreen().first;
}

int getMouseScreenY() {
    TRACE_LOCATION("GLWindow::getMouseScreenY");
    return mouseOnScreen().second;
}

bool mouseInClientArea() {
    TRACE_LOCATION("GLWindow::mouseInClientArea");
    int x = state().mouseX, y = state().mouseY;
    if (realWindow()) WindowBackend::getWindowMouse(x, y);
    return x >= 0 && y >= 0 && x < getClientWidth() && y < getClientHeight();
}

int getCursor() {
    TRACE_LOCATION("GLWindow::getCursor");
    return state().cursorMode;
}

void setCursor(int mode) {
    TRACE_LOCATION("GLWindow::setCursor");
    if (mode < 0 || mode > 2) return;
    state().cursorMode = mode;
    WindowBackend::setCursor(mode);
}

void centerMouse() {
    TRACE_LOCATION("GLWindow::centerMouse");
    // The pointer goes exactly where getClientCenterX/Y say the centre is. Mouse
    // turning measures the pointer against that centre every step, so a pointer
    // put one pixel off would turn the view by itself.
    if (!realWindow()) {
        state().mouseX = state().headless.clientWidth / 2 - 1;
        state().mouseY = state().headless.clientHeight / 2 - 1;
        return;
    }
    WindowBackend::warpMouse(getClientWidth() / 2 - 1, getClientHeight() / 2 - 1);
}

void moveMouse(int dx, int dy) {
    TRACE_LOCATION("GLWindow::moveMouse");
    if (!realWindow()) {
        state().mouseX += dx;
        state().mouseY += dy;
        return;
    }
    int left = 0, top = 0;
    clientOrigin(left, top);
    WindowBackend::warpMouse(getMouseScreenX() - left + dx, getMouseScreenY() - top + dy);
}

void restrictMouse(int x, int y, int width, int height) {
    TRACE_LOCATION("GLWindow::restrictMouse");
    WindowBackend::restrictMouse(x, y, width, height);
}
void unRestrictMouse() {
    TRACE_LOCATION("GLWindow::unRestrictMouse");
    WindowBackend::unRestrictMouse();
}

namespace Headless {
void setEnabled(bool enabled) {
    TRACE_LOCATION("GLWindow::Headless::setEnabled");
    state().headless.enabled = enabled;
}
void setKeyDown(int key, bool down) {
    TRACE_LOCATION("GLWindow::Headless::setKeyDown");
    setMember(state().headless.keysDown, key, down);
}
void setKeyToggled(int key, bool toggled) {
    TRACE_LOCATION("GLWindow::Headless::setKeyToggled");
    setMember(state().headless.keysToggled, key, toggled);
}
void setMouse(int x, int y) {
    TRACE_LOCATION("GLWindow::Headless::setMouse");
    state().mouseX = x;
    state().mouseY = y;
}
void setMouseButtonDown(int button, bool down) {
    TRACE_LOCATION("GLWindow::Headless::setMouseButtonDown");
    setMember(state().headless.buttonsDown, button, down);
}
void setClientSize(int width, int height) {
    TRACE_LOCATION("GLWindow::Headless::setClientSize");
    if (width < 1 || height < 1) return;
    state().headless.clientWidth = width;
    state().headless.clientHeight = height;
}
void pressKey(int key) {
    TRACE_LOCATION("GLWindow::Headless::pressKey");
    state().lastKey = key;
    if (state().eventListener) state().eventListener->keyboardPressed(key);
}
void setModalLoopDriver(void (*driver)()) {
    TRACE_LOCATION("GLWindow::Headless::setModalLoopDriver");
    state().modalLoopDriver = driver;
}
}  // namespace Headless

}  // namespace GLWindow
