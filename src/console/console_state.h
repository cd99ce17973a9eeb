// The console's file-level state, shared by its source files only.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "console/console.h"
#include "graphics/graphics.h"

namespace GLConsole {

struct Colour {
    float r = 0.0f, g = 0.0f, b = 0.0f, a = 0.0f;
};

struct State {
    State();

    // The circular text store starts as newlines, so that text appears from the bottom.
    char outputBuffer[outputBufferSize];
    int outputPosition = 0;
    char inputBuffer[inputBufferSize] = {};
    int cursorPosition = 0;
    std::string history[historySize];
    int historyPosition = -1;
    std::string completionPrefix;
    std::map<std::string, GLConsoleCommand> commands;
    PrintHook printHook = nullptr;

    int fontSize = 1;
    // The font in use, or null for none (then no text is drawn).
    std::unique_ptr<GLTexture> font;
    std::unique_ptr<GLTexture> defaultFont;  // stands in for labels while there is no font
    Colour outputBackground, outputText, inputBackground, inputBorder, inputText;

    FILE* logFile = nullptr;
    bool logging = false;
};

State& state();

constexpr const char* logFileName = "ConsoleLog.txt";

// Registry keys are listed and completed by their beginning.
inline bool keyStartsWith(const std::string& key, const std::string& prefix) {
    return key.compare(0, prefix.size(), prefix) == 0;
}

}  // namespace GLConsole
