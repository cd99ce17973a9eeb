#include <algorithm>
#include <cstring>

#include "console/console_state.h"
#include "foundation/foundation.h"
#include "graphics/graphics.h"
#include "platform/platform.h"

namespace GLConsole {

namespace {
Colour readColour(const ConfigFile& config, const std::string& prefix, bool withAlpha) {
    Colour colour;
    colour.r = config.getVarAsFloat(prefix + "_r");
    colour.g = config.getVarAsFloat(prefix + "_g");
    colour.b = config.getVarAsFloat(prefix + "_b");
    colour.a = withAlpha ? config.getVarAsFloat(prefix + "_a") : 1.0f;
    return colour;
}
}  // namespace

void initialise() {
    TRACE_LOCATION("GLConsole::initialise");
    clear();
    clearCommands();
    state().font.reset();
    loadConfiguration();
}

void clear() {
    TRACE_LOCATION("GLConsole::clear");
    std::memset(state().inputBuffer, 0, sizeof(state().inputBuffer));
    std::memset(state().outputBuffer, '\n', sizeof(state().outputBuffer));
    state().outputPosition = 0;
    state().cursorPosition = 0;
}

void loadConfiguration() {
    TRACE_LOCATION("GLConsole::loadConfiguration");
    ConfigFile config("cfg//console.cfg");
    state().font.reset();
    const std::string fontName = config.getVarAsString("fontTextureName");
    if (!fontName.empty()) setFontTexture(GLTexture(fontName));
    // Far beyond any screen, and small enough that the layout's sums stay in range.
    constexpr int largestFontSize = 4096;
    state().fontSize = std::clamp(config.getVarAsInt("fontSize"), 1, largestFontSize);
    state().outputBackground = readColour(config, "output_background", true);
    state().outputText = readColour(config, "output_text", false);
    state().inputBackground = readColour(config, "input_background", false);
    state().inputBorder = readColour(config, "input_border", false);
    state().inputText = readColour(config, "input_text", false);
    if (config.getVarAsBool("enableLogging")) enableLogging();
}

void shutdown() {
    TRACE_LOCATION("GLConsole::shutdown");
    state().font.reset();
    state().defaultFont.reset();
    state().commands.clear();
    for (std::string& line : state().history) line.clear();
    state().completionPrefix.clear();
    state().historyPosition = -1;
    disableLogging();
}

void enableLogging() {
    TRACE_LOCATION("GLConsole::enableLogging");
    if (state().logging) return;
    state().logFile = Platform::openFile(logFileName, "wb");
    if (!state().logFile || std::ferror(state().logFile)) {
        if (state().logFile) std::fclose(state().logFile);
        state().logFile = nullptr;
        print("\nUnable to write log to ");
        print(logFileName);
        return;
    }
    state().logging = true;
    print("\nCommencing console log to ");
    print(logFileName);
}

void disableLogging() {
    TRACE_LOCATION("GLConsole::disableLogging");
    if (!state().logging) return;
    std::fclose(state().logFile);
    state().logFile = nullptr;
    state().logging = false;
    print("\nLogging stopped. All output saved to ");
    print(logFileName);
}

bool isLogging() {
    TRACE_LOCATION("GLConsole::isLogging");
    return state().logging;
}

void clearCommands() {
    TRACE_LOCATION("GLConsole::clearCommands");
    state().commands.clear();
    addBasicGLConsoleCommands();
}

}  // namespace GLConsole
