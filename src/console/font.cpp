// The console's font texture, shared with the debug labels of other subsystems.
#include "console/console_state.h"
#include "foundation/foundation.h"
#include "graphics/graphics.h"

namespace GLConsole {

GLTexture getFontTexture() {
    TRACE_LOCATION("GLConsole::getFontTexture");
    return state().font ? *state().font : GLTexture();
}

void setFontTexture(const GLTexture& texture) {
    TRACE_LOCATION("GLConsole::setFontTexture");
    if (state().font)
        *state().font = texture;
    else
        state().font = std::make_unique<GLTexture>(texture);
}

}  // namespace GLConsole
