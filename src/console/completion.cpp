// Tab completion of the command word. The first Tab remembers the line as the
// prefix and shows the first command that starts with it; each further Tab shows
// the next one in registry order, and after the last the cycle starts again.
// Any other edit of the line clears the prefix, so the next Tab starts afresh.
#include <cstring>

#include "console/console_state.h"
#include "foundation/foundation.h"

namespace GLConsole {

namespace {

using Registry = std::map<std::string, GLConsoleCommand>;

void setLine(const std::string& text) {
    if (text.size() >= inputBufferSize) return;
    std::memset(state().inputBuffer, 0, sizeof(state().inputBuffer));
    text.copy(state().inputBuffer, text.size());
    state().cursorPosition = static_cast<int>(text.size());
}

std::string upperCasedLine() {
    std::string line(state().inputBuffer);
    slStringUpper(line);
    return line;
}

void showCandidate(Registry::const_iterator candidate) {
    if (candidate != state().commands.end() && keyStartsWith(candidate->first, state().completionPrefix))
        setLine(candidate->second.name);
}

void startCompletion() {
    state().completionPrefix = upperCasedLine();
    showCandidate(state().commands.lower_bound(state().completionPrefix));
}

// Moves on from the command on the line; false when the line no longer holds a
// candidate (the user changed it) or the candidates are used up.
bool showNextCandidate() {
    const auto shown = state().commands.find(upperCasedLine());
    if (shown == state().commands.end()) return false;
    const auto next = std::next(shown);
    if (next == state().commands.end() || !keyStartsWith(next->first, state().completionPrefix)) {
        setLine(state().completionPrefix);
        return false;
    }
    setLine(next->second.name);
    return true;
}

}  // namespace

void autoCompleteCommand() {
    TRACE_LOCATION("GLConsole::autoCompleteCommand");
    if (!state().completionPrefix.empty() && showNextCandidate()) return;
    state().completionPrefix.clear();
    startCompletion();
}

}  // namespace GLConsole
