// The console's font texture, shared with the debug labels of other subsystems.
#include "console/console_state.h"
#include "foundation/foundation.h"
#include "graphics/graphics.h"

namespace GLConsole {

const GLTexture& getFontTexture() {
    TRACE_LOCATION("GLConsole::getFontTexture");
    if (state().font) return *state().font;
    // Made once, so that labels drawn every frame never load the default anew.
    if (!state().defaultFont) state().defaultFont = std::make_unique<GLTexture>();
    return *state().defaultFont;
}

void setFontTexture(const GLTexture& texture) {
    TRACE_LOCATION("GLConsole::setFontTexture");
    if (state().font)
        *state().font = texture;
    else
        state().font = std::make_unique<GLTexture>(texture);
}

}  // namespace GLConsole
