// The entry sequence: services start in a fixed order, the game runs, and the
// services stop again in reverse order. Command line and environment are ignored.
#include "console/console.h"
#include "foundation/foundation.h"
#include "graphics/window/window.h"

int main(int, char**) {
    LocationTrace::initialise();
    LocationTrace::push("WinMain");

    GLWindow::Headless::setEnabled(false);
    GLWindow::createWindow("Brookfall: Version 1.00", 800, 600);
    GLWindow::center();
    GLWindow::setCursor(0);
    const int screenHeight = GLWindow::getScreenHeight();
    const int screenWidth = GLWindow::getScreenWidth();
    GLWindow::setFullscreen(true, screenWidth, screenHeight);
    GLWindow::enableVsync(true);
    GLConsole::initialise();
    GLWindow::giveFocous();

    GLConsole::shutdown();

    LocationTrace::pop();
    return 0;
}
