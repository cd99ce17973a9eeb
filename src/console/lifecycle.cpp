#include <cstring>

#include "console/console_state.h"
#include "foundation/foundation.h"
#include "graphics/graphics.h"
#include "platform/platform.h"

namespace GLConsole {

namespace State {
int fontSize = 1;
Colour outputBackground, outputText, inputBackground, inputBorder, inputText;
}  // namespace State

using namespace State;

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
    freeFont();
    loadConfiguration();
}

void clear() {
    TRACE_LOCATION("GLConsole::clear");
    std::memset(inputBuffer, 0, sizeof(inputBuffer));
    std::memset(outputBuffer, '\n', sizeof(outputBuffer));
    outputPosition = 0;
    cursorPosition = 0;
}

void loadConfiguration() {
    TRACE_LOCATION("GLConsole::loadConfiguration");
    ConfigFile config("cfg//console.cfg");
    freeFont();
    const std::string fontName = config.getVarAsString("fontTextureName");
    if (!fontName.empty()) setFontTexture(GLTexture(fontName));
    fontSize = config.getVarAsInt("fontSize");
    if (fontSize < 1) fontSize = 1;
    outputBackground = readColour(config, "output_background", true);
    outputText = readColour(config, "output_text", false);
    inputBackground = readColour(config, "input_background", false);
    inputBorder = readColour(config, "input_border", false);
    inputText = readColour(config, "input_text", false);
    if (config.getVarAsBool("enableLogging")) enableLogging();
}

void shutdown() {
    TRACE_LOCATION("GLConsole::shutdown");
    freeFont();
    commands.clear();
    for (std::string& line : history) line.clear();
    completionPrefix.clear();
    historyPosition = -1;
    disableLogging();
}

void enableLogging() {
    TRACE_LOCATION("GLConsole::enableLogging");
    if (logging) return;
    logFile = Platform::openFile(logFileName, "wb");
    if (!logFile || std::ferror(logFile)) {
        if (logFile) std::fclose(logFile);
        logFile = nullptr;
        print("\nUnable to write log to ");
        print(logFileName);
        return;
    }
    logging = true;
    print("\nCommencing console log to ");
    print(logFileName);
}

void disableLogging() {
    TRACE_LOCATION("GLConsole::disableLogging");
    if (!logging) return;
    std::fclose(logFile);
    logFile = nullptr;
    logging = false;
    print("\nLogging stopped. All output saved to ");
    print(logFileName);
}

bool isLogging() {
    TRACE_LOCATION("GLConsole::isLogging");
    return logging;
}

void clearCommands() {
    TRACE_LOCATION("GLConsole::clearCommands");
    commands.clear();
    addBasicGLConsoleCommands();
}

}  // namespace GLConsole
