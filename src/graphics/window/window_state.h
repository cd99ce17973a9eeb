// File-level state of GLWindow, shared by the window layer's source files only.
#pragma once

#include <set>
#include <string>

#include "graphics/window/window.h"

namespace GLWindow {

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

// What the game keeps of the window whichever layer stands behind it.
struct State {
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
    void (*modalLoopDriver)() = nullptr;
    bool drivingModalLoop = false;
};
State& state();

// A real SDL window with its OpenGL context stands.
bool realWindow();
// OpenGL calls reach a driver.
bool drawingPossible();
// The viewport over the whole client area.
void resetViewport();
// Top left of the client area on the screen.
void clientOrigin(int& x, int& y);
// Makes the real window with its context at one sample, or ends the program
// with the message of the stage that failed.
void failUnlessCreated(const char* windowTitle, int width, int height);

}  // namespace GLWindow
