// The console's font texture, shared with the debug labels of other subsystems.
#include <memory>

#include "console/console_state.h"
#include "foundation/foundation.h"
#include "graphics/graphics.h"

namespace GLConsole {

namespace {
std::unique_ptr<GLTexture> fontTexture;
}  // namespace

namespace State {
const GLTexture* font() {
    TRACE_LOCATION("GLConsole::font");
    return fontTexture.get();
}

void freeFont() {
    TRACE_LOCATION("GLConsole::freeFont");
    fontTexture.reset();
}
}  // namespace State

GLTexture getFontTexture() {
    TRACE_LOCATION("GLConsole::getFontTexture");
    return fontTexture ? *fontTexture : GLTexture();
}

void setFontTexture(const GLTexture& texture) {
    TRACE_LOCATION("GLConsole::setFontTexture");
    if (fontTexture)
        *fontTexture = texture;
    else
        fontTexture = std::make_unique<GLTexture>(texture);
}

}  // namespace GLConsole
