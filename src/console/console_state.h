// The console's file-level state, shared by its source files only.
#pragma once

#include <cstdio>
#include <string>

#include "console/console.h"

namespace GLConsole::State {

struct Colour {
    float r = 0.0f, g = 0.0f, b = 0.0f, a = 0.0f;
};

extern char outputBuffer[outputBufferSize];
extern int outputPosition;
extern char inputBuffer[inputBufferSize];
extern int cursorPosition;
extern std::string history[historySize];
extern int historyPosition;
extern std::string completionPrefix;
extern std::map<std::string, GLConsoleCommand> commands;

extern int fontSize;
// The font in use, or null for none (then no text is drawn).
const GLTexture* font();
void freeFont();
extern Colour outputBackground, outputText, inputBackground, inputBorder, inputText;

extern FILE* logFile;
extern bool logging;
extern const char* const logFileName;

// Registry keys are listed and completed by their beginning.
inline bool keyStartsWith(const std::string& key, const std::string& prefix) {
    return key.compare(0, prefix.size(), prefix) == 0;
}

}  // namespace GLConsole::State
