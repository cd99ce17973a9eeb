// The one-line editor: keys edit the zero-ended input line, Enter runs it and
// keeps it in a 16-line history, Up and Down walk that history, Tab completes.
// Typing overwrites by default and inserts while the Insert toggle is on.
#include <cstring>

#include "console/console_state.h"
#include "foundation/foundation.h"
#include "graphics/window/window.h"

namespace GLConsole {

namespace State {
char inputBuffer[inputBufferSize];
int cursorPosition = 0;
std::string history[historySize];
int historyPosition = -1;
std::string completionPrefix;
}  // namespace State

using namespace State;

namespace {

enum Key {
    Backspace = 8,
    Tab = 9,
    Enter = 13,
    Escape = 27,
    End = 35,
    Home = 36,
    Left = 37,
    Up = 38,
    Right = 39,
    Down = 40,
    Insert = 45,
    Delete = 46,
};

constexpr int longestLine = inputBufferSize - 1;

int lineLength() {
    return static_cast<int>(std::strlen(inputBuffer));
}

// Any edit of the line ends a running completion and leaves the history.
void endBrowsing() {
    completionPrefix.clear();
    historyPosition = -1;
}

void clearLine() {
    std::memset(inputBuffer, 0, sizeof(inputBuffer));
    cursorPosition = 0;
}

// Removes the character at index, moving the rest of the line (and its end) left.
void removeCharacterAt(int index) {
    std::memmove(inputBuffer + index, inputBuffer + index + 1, inputBufferSize - index - 1);
    inputBuffer[inputBufferSize - 1] = 0;
}

void backspace() {
    if (cursorPosition == 0) return;
    --cursorPosition;
    removeCharacterAt(cursorPosition);
    endBrowsing();
}

void deleteUnderCursor() {
    if (inputBuffer[cursorPosition]) removeCharacterAt(cursorPosition);
    endBrowsing();
}

void rememberLine(const char* line) {
    for (int slot = historySize - 1; slot > 0; --slot) history[slot] = history[slot - 1];
    history[0] = line;
}

void enter() {
    print("\n");
    print(inputBuffer);
    historyPosition = -1;
    rememberLine(inputBuffer);
    runCommand();
    clearLine();
    completionPrefix.clear();
}

void showHistorySlot(int slot) {
    if (slot < 0 || slot >= historySize || history[slot].empty()) return;
    historyPosition = slot;
    clearLine();
    history[slot].copy(inputBuffer, longestLine);
    completionPrefix.clear();
    cursorPosition = lineLength();
}

void typeCharacter(int key) {
    const char character = GLWindow::keyboardKeyToAscii(key);
    if (character == 0 || lineLength() >= longestLine) return;
    if (GLWindow::keyboardKeyToggled(Insert)) {
        // The line is shorter than the buffer, so only a zero falls off the end.
        std::memmove(inputBuffer + cursorPosition + 1, inputBuffer + cursorPosition,
                     inputBufferSize - cursorPosition - 1);
    } else if (inputBuffer[cursorPosition] == 0) {
        inputBuffer[cursorPosition + 1] = 0;
    }
    inputBuffer[cursorPosition++] = character;
    endBrowsing();
}

}  // namespace

void keyPressed(int key) {
    TRACE_LOCATION("GLConsole::keyPressed");
    switch (key) {
        case Backspace:
            return backspace();
        case Tab:
            autoCompleteCommand();
            historyPosition = -1;
            return;
        case Enter:
            return enter();
        case Escape:
            clearLine();
            return endBrowsing();
        case End:
            cursorPosition = lineLength();
            return;
        case Home:
            cursorPosition = 0;
            return;
        case Left:
            if (cursorPosition > 0) --cursorPosition;
            return;
        case Up:
            return showHistorySlot(historyPosition + 1);
        case Right:
            if (inputBuffer[cursorPosition]) ++cursorPosition;
            return;
        case Down:
            return showHistorySlot(historyPosition - 1);
        case Delete:
            return deleteUnderCursor();
        default:
            return typeCharacter(key);
    }
}

void enterLine(const std::string& line) {
    TRACE_LOCATION("GLConsole::enterLine");
    clearLine();
    line.copy(inputBuffer, longestLine);
    cursorPosition = lineLength();
    enter();
}

const char* getInputLine() {
    TRACE_LOCATION("GLConsole::getInputLine");
    return inputBuffer;
}

int getCursorPosition() {
    TRACE_LOCATION("GLConsole::getCursorPosition");
    return cursorPosition;
}

}  // namespace GLConsole
