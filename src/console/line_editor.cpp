// The one-line editor: keys edit the zero-ended input line, Enter runs it and
// keeps it in a 16-line history, Up and Down walk that history, Tab completes.
// Typing overwrites by default and inserts while the Insert toggle is on.
#include <cstring>

#include "console/console_state.h"
#include "foundation/foundation.h"
#include "graphics/window/window.h"

namespace GLConsole {

namespace {

constexpr int longestLine = inputBufferSize - 1;

int lineLength() {
    return static_cast<int>(std::strlen(state().inputBuffer));
}

// Any edit of the line ends a running completion and leaves the history.
void endBrowsing() {
    state().completionPrefix.clear();
    state().historyPosition = -1;
}

void clearLine() {
    std::memset(state().inputBuffer, 0, sizeof(state().inputBuffer));
    state().cursorPosition = 0;
}

// Removes the character at index, moving the rest of the line (and its end) left.
void removeCharacterAt(int index) {
    std::memmove(state().inputBuffer + index, state().inputBuffer + index + 1, inputBufferSize - index - 1);
    state().inputBuffer[inputBufferSize - 1] = 0;
}

void backspace() {
    if (state().cursorPosition == 0) return;
    --state().cursorPosition;
    removeCharacterAt(state().cursorPosition);
    endBrowsing();
}

void deleteUnderCursor() {
    if (state().inputBuffer[state().cursorPosition]) removeCharacterAt(state().cursorPosition);
    endBrowsing();
}

void rememberLine(const char* line) {
    for (int slot = historySize - 1; slot > 0; --slot) state().history[slot] = state().history[slot - 1];
    state().history[0] = line;
}

void enter() {
    print("\n");
    print(state().inputBuffer);
    state().historyPosition = -1;
    rememberLine(state().inputBuffer);
    runCommand();
    clearLine();
    state().completionPrefix.clear();
}

void showHistorySlot(int slot) {
    if (slot < 0 || slot >= historySize || state().history[slot].empty()) return;
    state().historyPosition = slot;
    clearLine();
    state().history[slot].copy(state().inputBuffer, longestLine);
    state().completionPrefix.clear();
    state().cursorPosition = lineLength();
}

void typeCharacter(int key) {
    const char character = GLWindow::keyboardKeyToAscii(key);
    if (character == 0 || lineLength() >= longestLine) return;
    if (GLWindow::keyboardKeyToggled(VirtualKey::insert)) {
        // The line is shorter than the buffer, so only a zero falls off the end.
        std::memmove(state().inputBuffer + state().cursorPosition + 1,
                     state().inputBuffer + state().cursorPosition,
                     inputBufferSize - state().cursorPosition - 1);
    } else if (state().inputBuffer[state().cursorPosition] == 0) {
        state().inputBuffer[state().cursorPosition + 1] = 0;
    }
    state().inputBuffer[state().cursorPosition++] = character;
    endBrowsing();
}

}  // namespace

void keyPressed(int key) {
    TRACE_LOCATION("GLConsole::keyPressed");
    switch (key) {
        case VirtualKey::backspace:
            return backspace();
        case VirtualKey::tab:
            autoCompleteCommand();
            state().historyPosition = -1;
            return;
        case VirtualKey::enter:
            return enter();
        case VirtualKey::escape:
            clearLine();
            return endBrowsing();
        case VirtualKey::end:
            state().cursorPosition = lineLength();
            return;
        case VirtualKey::home:
            state().cursorPosition = 0;
            return;
        case VirtualKey::left:
            if (state().cursorPosition > 0) --state().cursorPosition;
            return;
        case VirtualKey::up:
            return showHistorySlot(state().historyPosition + 1);
        case VirtualKey::right:
            if (state().inputBuffer[state().cursorPosition]) ++state().cursorPosition;
            return;
        case VirtualKey::down:
            return showHistorySlot(state().historyPosition - 1);
        case VirtualKey::del:
            return deleteUnderCursor();
        default:
            return typeCharacter(key);
    }
}

void enterLine(const std::string& line) {
    TRACE_LOCATION("GLConsole::enterLine");
    clearLine();
    line.copy(state().inputBuffer, longestLine);
    state().cursorPosition = lineLength();
    enter();
}

}  // namespace GLConsole
