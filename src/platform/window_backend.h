// The real window behind GLWindow: one SDL window with an OpenGL compatibility
// context. GLWindow keeps the game's rules (listener, cursor modes, stored mouse
// position, last key); this layer only talks to SDL and turns its events into
// plain records with Windows virtual key codes.
#pragma once

#include <string>

namespace WindowBackend {

struct Event {
    enum Type {
        None,
        MouseMoved,
        MousePressed,
        MouseReleased,
        KeyPressed,
        KeyReleased,
        Resized,
        Closing,
        Exposed,
        FocusLost
    };
    Type type = None;
    int x = 0;
    int y = 0;
    int button = 0;  // 1 left, 2 right, 4 middle
    int key = 0;     // virtual key code
};

// Opens the window at the centre of the desktop, hidden until shown, with a
// double-buffered context of 8 bits per channel, 8-bit accumulation channels,
// 24 depth bits and 8 stencil bits; with samples above 1 also a multisample
// buffer. Returns the stage that failed, with SDL's reason, or succeeded.
enum class CreateStage {
    succeeded,
    videoSystem,    // the display cannot be reached at all
    glLibrary,      // no OpenGL driver to load
    window,         // the window itself
    glWindow,       // a window without OpenGL drawing
    renderContext,  // the OpenGL context
};
CreateStage create(const char* title, int clientWidth, int clientHeight, int samples, std::string& error);
void destroy();
bool exists();
// True when this thread has an OpenGL context current, so that GL calls reach a driver.
bool hasContext();
// Whether a window with that many samples could be made (tries a hidden one).
bool samplesAvailable(int samples);

// Takes the next pending event without waiting; false when none is left.
bool pollEvent(Event& event);
void swapBuffers();
// A second OpenGL context on the window that shares nothing with the first,
// made current on the calling thread; null when it can't be made. Deleting it
// releases it from the calling thread first.
void* createThreadContext();
void deleteThreadContext(void* context);

void getClientSize(int& width, int& height);
void getPosition(int& x, int& y);
void getBorders(int& left, int& top, int& right, int& bottom);
void setPosition(int x, int y);
void setClientSize(int width, int height);
void getDesktopSize(int& width, int& height);
void setTitle(const char* title);
std::string getTitle();
void setResizeable(bool resizeable);
bool isResizeable();
bool isMinimised();
bool isMaximised();
bool hasFocus();
void show();
void minimize();
void maximize();
void restore();
void raise();
// Full screen at the given size (the desktop's size keeps the desktop's mode), or back to a window.
bool setFullscreen(bool fullscreen, int width, int height);

bool keyDown(int virtualKey);
bool keyToggled(int virtualKey);
bool mouseButtonDown(int button);
// The pointer relative to the window's client area.
void getWindowMouse(int& x, int& y);
void warpMouse(int clientX, int clientY);
void restrictMouse(int x, int y, int width, int height);
void unRestrictMouse();
// 0 hides the pointer over the window, 1 arrow, 2 cross.
void setCursor(int mode);

bool setSwapInterval(int interval);
// -1 when the driver cannot tell.
int getSwapInterval();
void setGammaRamp(const unsigned short* ramp256);
void showMessage(const char* text, const char* title);
bool askQuestion(const char* text, const char* title);

// Synthetic input, queued as if it came from the devices, for tests and
// scripted runs. Keys are SDL key names such as "A", "Left", "`", "F1".
void queueKey(const char* keyName, bool down);
void queueMouseMotion(int x, int y);
void queueMouseButton(int x, int y, int button, bool down);
void queueClose();

// The Windows virtual key code for an SDL key symbol and scan code; 0 for none.
int virtualKeyFor(int sdlKeycode, int sdlScancode);

}  // namespace WindowBackend
