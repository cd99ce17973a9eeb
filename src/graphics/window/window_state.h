// File-level state of GLWindow, shared by the window layer's source files only.
#pragma once

#include <set>
#include <string>

#include "graphics/window/window.h"

namespace GLWindow::State {

// What the game keeps of the window whichever layer stands behind it.
extern GLWindowEventListener* eventListener;
extern bool fullscreen;
extern int lastKey;
extern int mouseX;
extern int mouseY;
extern int antiAliasingMode;
extern int cursorMode;
extern std::string title;
extern bool repaintRequested;

// The stand-in without a real window.
struct HeadlessWindow {
    bool enabled = true;
    bool exists = false;
    bool resizeable = true;
    bool vsync = true;
    int clientWidth = 800;
    int clientHeight = 600;
    std::set<int> keysDown;
    std::set<int> keysToggled;
    std::set<int> buttonsDown;
};
extern HeadlessWindow headless;

// A real SDL window with its OpenGL context stands.
bool realWindow();
// OpenGL calls reach a driver.
bool drawingPossible();
// The viewport over the whole client area.
void resetViewport();

}  // namespace GLWindow::State
