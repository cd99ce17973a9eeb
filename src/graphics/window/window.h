// The one window of the program and its OpenGL context, as the game sees it:
// a listener that receives the window's events, keyboard and mouse queries,
// window and full-screen modes, and 2D and 3D drawing set-up.
//
// Two layers stand behind these operations. While a real window exists (an SDL
// window with an OpenGL compatibility context, see platform/window_backend.h)
// every operation works on it. Otherwise the layer runs headless: a client area
// of 800 by 600 that is never minimised, with key and mouse state set by hand,
// and drawing set-up does nothing. createWindow makes the headless stand-in
// while the headless switch is on, which is the start state, so that tools and
// tests never open a window by accident; the game and `--window` runs call
// Headless::setEnabled(false) first. Keys and buttons set by hand count beside
// the real ones, so scripts can drive a real window too.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "foundation/foundation.h"

// The virtual key codes and mouse buttons the game reads, as the window layer
// delivers them.
namespace VirtualKey {
constexpr int backspace = 8, tab = 9, enter = 13, shift = 16, pause = 19, capsLock = 20, escape = 27;
constexpr int pageUp = 33, pageDown = 34, end = 35, home = 36, left = 37, up = 38, right = 39, down = 40;
constexpr int insert = 45, del = 46, console = 223;
}  // namespace VirtualKey
namespace MouseButton {
constexpr int left = 1, right = 2, middle = 4;
}  // namespace MouseButton

class GLWindowEventListener {
public:
    virtual ~GLWindowEventListener() = default;
    virtual void mouseMoved(int, int) {}
    virtual void mousePressed(int, int, int) {}
    virtual void mouseReleased(int, int, int) {}
    virtual void keyboardPressed(int) {}
    virtual void keyboardReleased(int) {}
    virtual void windowResized() {}
    virtual void windowClosing() {}
    virtual void windowClosed() {}
    virtual void windowRedrawing() {}
    virtual void windowFocusLost() {}
};

namespace GLWindow {

// Window life.
void createWindow(const char* title, int width, int height);
void close();
bool exists();
void run();
GLWindowEventListener* getEventListener();
void setEventListener(GLWindowEventListener* listener);
void requestRepaint();
void swapBuffers();

// Geometry and state.
int getClientWidth();
int getClientHeight();
int getX();
int getY();
int getWidth();
int getHeight();
int getScreenWidth();
int getScreenHeight();
int getClientCenterX();
int getClientCenterY();
void setPosition(int x, int y);
void setSize(int width, int height);
void setClientSize(int width, int height);
void center();
void setTitle(const char* title);
std::string getTitle();
void setResizeable(bool resizeable);
bool isResizeable();
bool isMinimised();
bool isMaximised();
bool hasFocus();
void minimize();
void maximize();
void restore();
void giveFocous();
bool isFullscreen();
void setFullscreen(bool fullscreen, int width, int height);

// Input queries. Keys are Windows virtual key codes; buttons 1 left, 2 right, 4 middle.
bool keyboardKeyPressed(int key);
bool keyboardKeyToggled(int key);
char keyboardKeyToAscii(int key);
bool mouseButtonPressed(int button);
int getLastKeyPressed();
int getMouseX();
int getMouseY();
int getMouseScreenX();
int getMouseScreenY();
bool mouseInClientArea();

// Cursor and mouse control. Cursor modes: 0 none over the picture, 1 arrow, 2 cross.
int getCursor();
void setCursor(int mode);
void centerMouse();
void moveMouse(int dx, int dy);
void restrictMouse(int x, int y, int width, int height);
void unRestrictMouse();

// Drawing set-up.
void clearScreen(float r, float g, float b);
void glBeginDraw2d();
void glBeginDraw3d(float fieldOfView, float nearPlane, float farPlane);
void glPushState();
void glPopState();
void glCircle(float x, float y, float radius, int segments);
// One vertex of the primitive being drawn, at a world point.
void glVertex(const Vector2D& point);
// Writes the picture in the back buffer (a frame drawn but not yet presented)
// to a PNG file; false without a window or on a write error.
bool saveScreenshot(const std::string& fileName);
// OpenGL calls reach a driver: a real window's context is current on this thread.
bool contextAvailable();

// Message boxes.
void showMessageBox(const char* text, const char* title);
bool showQuestionBox(const char* text, const char* title);

// Capabilities.
void getExtensionList(std::vector<std::string>& list);
bool extensionSupported(const char* name);
void enableVsync(bool enabled);
bool vsyncEnabled();
int getAntiAliasingMode();
bool setAntiAliasingMode(int samples);
bool antiAliasingModeAvailable(int samples);
void setGamma(float gamma);
void fadeScreen(float seconds);
using FileFilters = std::vector<std::pair<std::string, std::string>>;
std::string showOpenFileBox(const char* title, const char* initialDirectory, const FileFilters& filters);
std::string showSaveFileBox(const char* title, const char* initialDirectory, const FileFilters& filters);

// Headless state, set by tools and tests in place of a real keyboard and mouse.
namespace Headless {
// Whether createWindow makes the stand-in (true at start) or a real window.
void setEnabled(bool enabled);
void setKeyDown(int key, bool down);
void setKeyToggled(int key, bool toggled);
void setMouse(int x, int y);
void setMouseButtonDown(int button, bool down);
void setClientSize(int width, int height);
// Delivers a key press through the listener, as a real key-down message would.
void pressKey(int key);
// Called by every run() (but not from within itself), so that a tool can feed
// the events and frames of a loop that a screen runs on its own, such as the
// name entry of a new high score.
void setModalLoopDriver(void (*driver)());
}  // namespace Headless

}  // namespace GLWindow
