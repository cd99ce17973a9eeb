// Console commands that work on the window and its OpenGL context.
#include <GL/gl.h>

#include <vector>

#include "console/console_commands.h"
#include "console/console_state.h"
#include "foundation/foundation.h"
#include "graphics/window/window.h"

namespace GLConsole {

bool conCmdFullscreen(bool fullscreen, bool set) {
    TRACE_LOCATION("GLConsole::conCmdFullscreen");
    if (set && fullscreen) {
        GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    } else if (set) {
        GLWindow::setFullscreen(false, 800, 600);
        GLWindow::setResizeable(false);
    }
    return GLWindow::isFullscreen();
}

void conCmdRenderer() {
    TRACE_LOCATION("GLConsole::conCmdRenderer");
    printTitle("Graphics renderer");
    // Without a real window there is no driver to ask.
    if (!GLWindow::contextAvailable()) return;
    const GLubyte* renderer = glGetString(GL_RENDERER);
    if (renderer) print(reinterpret_cast<const char*>(renderer));
}

void conCmdExtensions() {
    TRACE_LOCATION("GLConsole::conCmdExtensions");
    printTitle("Supported OpenGL Extensions");
    std::vector<std::string> extensions;
    GLWindow::getExtensionList(extensions);
    for (const std::string& extension : extensions) {
        print(extension);
        print("\n");
    }
}

void conCmdIsExtension(std::string name) {
    TRACE_LOCATION("GLConsole::conCmdIsExtension");
    if (name.empty()) {
        print("\nUSAGE: IsExtension ");
        print(" < string >");
        return;
    }
    print(GLWindow::extensionSupported(name.c_str()) ? "\nExtension detected." : "\nExtension not found.");
}

bool conCmdVsyncEnable(bool enable, bool set) {
    TRACE_LOCATION("GLConsole::conCmdVsyncEnable");
    if (set) GLWindow::enableVsync(enable);
    return GLWindow::vsyncEnabled();
}

}  // namespace GLConsole
