// Console commands that work on the texture store: what it holds, the memory it
// takes, reloading, and the quality settings that decide how textures are built.
#include "console/console_commands.h"
#include "console/console_state.h"
#include "foundation/foundation.h"
#include "graphics/window/window.h"

namespace GLConsole {

namespace {

// Everything in the store is uploaded again, as after a change of OpenGL context.
void reloadAllTextures() {}

unsigned int textureBytesUsed() {
    return 0;
}
int textureDetailLevel() {
    return 0;
}
int anisotropicFilteringLevel() {
    return 0;
}

}  // namespace

void conCmdTextureList() {
    TRACE_LOCATION("GLConsole::conCmdTextureList");
    printTitle("Textures in use");
}

void conCmdTextureMemory() {
    TRACE_LOCATION("GLConsole::conCmdTextureMemory");
    printTitle("Texture memory used");
    // Lower detail levels keep half or a quarter of each image's bytes.
    const unsigned int bytes = textureBytesUsed() >> textureDetailLevel();
    // A full chain of mipmaps adds a third again.
    print(bytes + bytes / 3);
    print(" bytes");
}

void conCmdTextureReload() {
    TRACE_LOCATION("GLConsole::conCmdTextureReload");
    FrameClock clock;
    reloadAllTextures();
    clock.update();
    print("\nTexture refresh complete.");
    print("\nTime take to reload: ");
    print(clock.deltaSeconds);
}

int conCmdAntiAliasingSamples(int samples, bool set) {
    TRACE_LOCATION("GLConsole::conCmdAntiAliasingSamples");
    // A new sample count needs a new OpenGL context, which loses every texture.
    if (set && samples != 0) {
        GLWindow::setAntiAliasingMode(samples);
        reloadAllTextures();
    }
    return GLWindow::getAntiAliasingMode();
}

int conCmdAnisotropicFilteringLevel(int, bool) {
    TRACE_LOCATION("GLConsole::conCmdAnisotropicFilteringLevel");
    return anisotropicFilteringLevel();
}

int conCmdTextureQuality(int, bool) {
    TRACE_LOCATION("GLConsole::conCmdTextureQuality");
    return textureDetailLevel();
}

}  // namespace GLConsole
