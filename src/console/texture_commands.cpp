// Console commands that work on the texture store: what it holds, the memory it
// takes, reloading, and the quality settings that decide how textures are built.
#include <vector>

#include "console/console_commands.h"
#include "console/console_state.h"
#include "foundation/foundation.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"

namespace GLConsole {

void conCmdTextureList() {
    TRACE_LOCATION("GLConsole::conCmdTextureList");
    printTitle("Textures in use");
    std::vector<std::string> lines;
    GLTextureManager::getTextureList(lines);
    for (const std::string& line : lines) {
        print("\n");
        print(line);
    }
}

void conCmdTextureMemory() {
    TRACE_LOCATION("GLConsole::conCmdTextureMemory");
    printTitle("Texture memory used");
    // Lower detail levels keep half or a quarter of each image's bytes.
    const unsigned int bytes =
        GLTextureManager::getTextureBytesUsed() >> GLTextureManager::getTextureDetailLevel();
    // A full chain of mipmaps adds a third again.
    print(bytes + bytes / 3);
    print(" bytes");
}

void conCmdTextureReload() {
    TRACE_LOCATION("GLConsole::conCmdTextureReload");
    FrameClock clock;
    GLTextureManager::reloadAllTextures();
    clock.update();
    print("\nTexture refresh complete.");
    print("\nTime take to reload: ");
    print(clock.deltaSeconds);
}

int conCmdAntiAliasingSamples(int samples, bool set) {
    TRACE_LOCATION("GLConsole::conCmdAntiAliasingSamples");
    // A new sample count needs a new OpenGL context, which loses every texture
    // and the level's display lists.
    if (set && samples != 0) {
        GLWindow::setAntiAliasingMode(samples);
        GLTextureManager::reloadAllTextures();
        if (Game::isRunning()) LevelGeometryRenderer::initialise();
    }
    return GLWindow::getAntiAliasingMode();
}

int conCmdAnisotropicFilteringLevel(int level, bool set) {
    TRACE_LOCATION("GLConsole::conCmdAnisotropicFilteringLevel");
    if (set) GLTextureManager::setAnisotropicFilteringLevel(level);
    return GLTextureManager::getAnisotropicFilteringLevel();
}

int conCmdTextureQuality(int level, bool set) {
    TRACE_LOCATION("GLConsole::conCmdTextureQuality");
    if (set) GLTextureManager::setTextureDetailLevel(level);
    return GLTextureManager::getTextureDetailLevel();
}

}  // namespace GLConsole
